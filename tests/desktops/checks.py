"""The checks that each desktop goes through."""
import json

import pictures
from desktop import HEIGHT, WIDTH
from session import CannotCheck, wait_for

# Panels and icons of the desktop may stay above the wallpaper.
_ENOUGH = 0.85
_NOTHING = 0.05
_SPOT = (WIDTH * 2 // 3, HEIGHT // 2)        # bare desktop
_OTHER_SPOT = (WIDTH // 3, HEIGHT * 3 // 4)  # bare desktop, beyond a menu at the first


class Failed(Exception):
    """A check has failed; the text says what was there instead."""


class Wallpaper:
    """The program under test in one session, showing a picture as its camera's."""

    def __init__(self, session, program):
        self._session = session
        self._program = program
        camera = session.place / "camera.png"
        pictures.write_camera(camera)
        self._command = [str(program), "--qr", "off", "--source", f"back=file:{camera}"]
        self._process = None

    def start(self):
        self._process = self._session.start("nivlo", self._command)

    def stop(self):
        self._session.stop(self._process)

    def is_running(self):
        return self._process.poll() is None

    def log(self):
        return (self._session.folder / "nivlo.log").read_text(errors="replace")

    def camera_is_open(self):
        text = self._session.run(str(self._program), "ctl", "status", "--json")
        try:
            return json.loads(text)["camera"] is not None
        except ValueError as error:
            raise Failed(f"'nivlo ctl status --json' answers: {text or 'nothing'}") from error


class Checks:
    """The checks of one run. Each method named in COLUMNS is one of them: it returns if all is well, and raises Failed, or
    CannotCheck with the reason. They follow one another on the same screen."""

    COLUMNS = {
        "seen": "seen", "after_click": "seen after a click", "menu": "desktop's menu opens above it",
        "covered": "camera closes when covered", "uncovered": "opens when uncovered",
        "covered_natively": "closes below Wayland windows too", "fits": "window fits", "escape": "Escape closes it",
        "gone": "desktop is back without it"}

    def __init__(self, desktop, wallpaper, folder):
        self._desktop = desktop
        self._wallpaper = wallpaper
        self._folder = folder
        self._cover = None
        self._has_closed = False

    def applies(self, check):
        """Returns whether the check means anything on this desktop."""
        desktop = self._desktop
        return {"after_click": not desktop.is_window, "menu": desktop.has_menu and not desktop.is_window,
                "covered_natively": desktop.is_xwayland, "fits": desktop.is_window, "escape": desktop.is_window,
                "gone": not desktop.is_window}.get(check, True)

    def _wait_for_picture(self, name, is_right, seconds=20):
        """Keeps the last picture that was looked at, and returns it if it is right."""
        last = None

        def look():
            nonlocal last
            last = self._desktop.picture()
            return is_right(last)

        right = wait_for(look, seconds)
        last.save(self._folder / f"{name}.png")
        return last if right else None

    def _expect_wallpaper(self, name):
        if not self._wallpaper.is_running():
            raise Failed("it has ended: " + self._wallpaper.log()[-200:])
        if not self._wait_for_picture(name, lambda image: pictures.wallpaper_share(image) >= _ENOUGH):
            raise Failed(f"it is not what the screen shows: {name}.png")

    def seen(self):
        self._expect_wallpaper("seen")

    def fits(self):
        if not self._wait_for_picture("fits", pictures.is_whole):
            raise Failed("a part of the window is beyond the screen: fits.png")

    def after_click(self):
        self._desktop.click(*_SPOT)
        self._expect_wallpaper("after-click")

    def menu(self):
        before = self._desktop.picture()
        for _ in range(2):  # some desktops take the first click only to become active
            self._desktop.click(*_SPOT, right=True)
            if self._wait_for_picture("menu", lambda image: pictures.shows_menu_at(before, image, *_SPOT), 6):
                break
        else:
            raise Failed("no menu comes up: menu.png")
        for _ in range(2):  # a click that follows the opening of a menu too soon may be ignored
            self._desktop.click(*_OTHER_SPOT)
            if self._wait_for_picture("after-menu", lambda image: not pictures.shows_menu_at(before, image, *_SPOT), 6):
                break
        else:
            raise Failed("the menu does not close: after-menu.png")

    def covered(self):
        self._expect_closed("covered", self._desktop.cover())

    def covered_natively(self):
        try:
            self._expect_closed("covered-natively", self._desktop.cover(GDK_BACKEND="wayland"))
        finally:
            self._desktop.session.stop(self._cover)

    def _expect_closed(self, name, cover):
        self._cover = cover
        if not self._wait_for_picture(name, lambda image: pictures.cover_share(image) >= _ENOUGH):
            raise Failed(f"the other window is not above it: {name}.png")
        self._has_closed = bool(wait_for(lambda: not self._wallpaper.camera_is_open()))
        if not self._has_closed:
            raise Failed(f"the camera stays open: {name}.png")

    def uncovered(self):
        if self._cover:
            self._desktop.session.stop(self._cover)
        if not self._has_closed:
            raise CannotCheck("the camera was not closed")
        if not wait_for(self._wallpaper.camera_is_open):
            raise Failed("the camera stays closed")
        self._expect_wallpaper("uncovered")

    def escape(self):
        self._desktop.click(*_SPOT)  # the keyboard belongs to the window that was clicked last

        def ends():
            self._desktop.press_escape()
            return wait_for(lambda: not self._wallpaper.is_running(), 2)

        if not wait_for(ends, 10):
            raise Failed("it still runs")

    def gone(self):
        """Last: what the screen shows without it is the desktop's own background, so that the rest means something."""
        self._wallpaper.stop()
        if not self._wait_for_picture("gone", lambda image: pictures.wallpaper_share(image) <= _NOTHING):
            raise Failed("its picture is still there: gone.png")
