"""The camera's picture, and the recognition of it on pictures of the screen."""
from PIL import Image, ImageChops

LEFT, RIGHT = (220, 0, 160), (0, 170, 60)
COVER = (240, 200, 40)
_TOLERANCE = 24     # of 255: video formats round colours
_MENU_SIZE = 3000   # pixels: the smallest menu has more, a pointer or a highlighted icon has not
_MENU_REACH = 250   # pixels to each side of the place


def write_camera(path):
    """Two colours side by side, so that no desktop's own background is taken for them."""
    image = Image.new("RGB", (640, 480), LEFT)
    image.paste(RIGHT, (320, 0, 640, 480))
    image.save(path)


def _is(pixel, color):
    return all(abs(a - b) <= _TOLERANCE for a, b in zip(pixel, color))


def _share(image, color_at):
    """The share, from 0 to 1, of a grid of points that have the colour that `color_at` gives for their place across."""
    columns, rows = 32, 20
    points = [((2 * x + 1) / (2 * columns), (2 * y + 1) / (2 * rows)) for x in range(columns) for y in range(rows)]
    hits = sum(_is(image.getpixel((int(x * image.width), int(y * image.height))), color_at(x)) for x, y in points)
    return hits / len(points)


def wallpaper_share(image):
    return _share(image, lambda x: LEFT if x < 0.5 else RIGHT)


def cover_share(image):
    return _share(image, lambda _: COVER)


def shows_menu_at(before, after, x, y):
    """Returns whether something as large as a menu has come up with a corner or an edge at the place."""
    around = (x - _MENU_REACH, y - _MENU_REACH, x + _MENU_REACH, y + _MENU_REACH)
    changes = ImageChops.difference(before.crop(around), after.crop(around)).convert("L")
    changes = changes.point(lambda value: 255 if value > _TOLERANCE else 0)
    at_place = changes.crop((_MENU_REACH - 20, _MENU_REACH - 20, _MENU_REACH + 20, _MENU_REACH + 20))
    return changes.histogram()[255] >= _MENU_SIZE and at_place.getbbox() is not None


def is_whole(image):
    """Returns whether both halves of the wallpaper are seen alike, as in a window that no edge of the screen cuts."""
    left, right = (_box(image, color) for color in (LEFT, RIGHT))
    if not left or not right:
        return False
    widths = [box[2] - box[0] for box in (left, right)]
    return abs(widths[0] - widths[1]) <= 0.05 * sum(widths) and left[1] == right[1] and left[3] == right[3]


def _box(image, color):
    """The box around all pixels of a colour, or None."""
    distance = ImageChops.difference(image, Image.new("RGB", image.size, color)).convert("L")
    return distance.point(lambda value: 255 if value <= _TOLERANCE else 0).getbbox()
