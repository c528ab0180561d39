"""The traits that all desktops have in common."""
import pathlib

from PIL import Image

from pictures import COVER
from session import CannotCheck, wait_for

WIDTH, HEIGHT = 1280, 800
_COVER_PROGRAM = pathlib.Path(__file__).with_name("cover.py")


class Desktop:
    """One desktop without a screen. A subclass sets `name` and starts the programs; those that cannot do something raise
    CannotCheck with the reason."""

    name = ""
    orders = ("first", "last")  # the wallpaper starts before, or after, what draws the desktop's own background
    is_window = False   # the wallpaper is shown in a window here
    is_xwayland = False  # an X11 program among Wayland windows
    admitted = {}       # of a check that may fail here: the words with which the wallpaper's log says so
    has_menu = True     # a right click on the bare desktop opens one

    def __init__(self, session):
        self.session = session

    def start_display(self):
        """Starts what the wallpaper needs to be shown, with the session's bus."""
        raise NotImplementedError

    def start_desktop(self):
        """Starts what draws the desktop's own background, and waits for it."""
        raise NotImplementedError

    def picture(self):
        """Returns what the screen shows, as an RGB image."""
        raise NotImplementedError

    def picture_by(self, *command):
        """Returns the picture that the command writes to the file that is its last argument."""
        path = self.session.place / "screen.png"
        self.session.run(*command, str(path))
        if not path.exists():
            raise CannotCheck(f"{command[0]} takes no picture of the screen")
        with Image.open(path) as image:
            picture = image.convert("RGB")
        path.unlink()
        return picture

    def click(self, x, y, right=False):
        raise NotImplementedError

    def press_escape(self):
        raise NotImplementedError

    def cover(self, **environment):
        """Starts a maximised window of another program and returns its process."""
        # /usr/bin/python3 is the interpreter that the system's packages, GTK's among them, are for.
        return self.session.start("cover", ["/usr/bin/python3", str(_COVER_PROGRAM), *map(str, COVER)], **environment)


class WaylandDesktop(Desktop):
    """A desktop whose compositor is a Wayland server."""

    socket = None  # the server's, once it runs

    def start_compositor(self, command, **environment):
        """Starts the session's bus and the compositor."""
        session = self.session
        session.environment["XDG_SESSION_TYPE"] = "wayland"
        session.start_bus()
        process = session.start("compositor", command, **environment)

        def opened():
            return [path for path in session.runtime.glob("wayland-?") if path.is_socket()]

        wait_for(lambda: process.poll() is not None or opened(), 30)
        if process.poll() is not None:
            raise CannotCheck(f"the compositor ended with status {process.returncode}; see compositor.log")
        if not opened():
            raise CannotCheck("the compositor opens no socket; see compositor.log")
        self.socket = opened()[0]
        session.environment["WAYLAND_DISPLAY"] = self.socket.name
        session.run("dbus-update-activation-environment", "WAYLAND_DISPLAY")
