"""GNOME on Wayland, which has no layer shell."""
import os
import pathlib

from gi.repository import Gio, GLib
from PIL import Image

from desktop import HEIGHT, WaylandDesktop, WIDTH
from pointer import LEFT_BUTTON, RIGHT_BUTTON
from session import CannotCheck, wait_for

_ESCAPE = 1  # linux/input-event-codes.h
_X11_SOCKETS = pathlib.Path("/tmp/.X11-unix")


class Gnome(WaylandDesktop):
    """GNOME Shell with XWayland. The shell is the compositor and draws the background too, so nothing can be started
    before it."""

    name = "GNOME Shell (Wayland, X11 windows)"
    orders = ("last",)
    is_xwayland = True
    admitted = {"covered_natively": "does not tell which Wayland windows cover the wallpaper",
                "menu": "the desktop's menu does not open"}
    with_x11 = True

    def start_display(self):
        session = self.session
        session.environment.update({"XDG_CURRENT_DESKTOP": "GNOME", "GSETTINGS_BACKEND": "memory"})
        if not _X11_SOCKETS.exists():
            _X11_SOCKETS.mkdir()
            _X11_SOCKETS.chmod(0o1777)
        others = set(os.listdir(_X11_SOCKETS))
        self.start_compositor(["gnome-shell", "--headless", "--virtual-monitor", f"{WIDTH}x{HEIGHT}",])
        if not wait_for(lambda: session.bus_knows("org.gnome.Shell.Screenshot"), 60):
            raise CannotCheck("GNOME Shell does not appear on the bus; see compositor.log")
        if self.with_x11:
            # The lower of its two X11 displays is the programs'.
            session.environment["DISPLAY"] = f":{min(set(os.listdir(_X11_SOCKETS)) - others)[1:]}"
            session.environment["XAUTHORITY"] = str(next(session.runtime.glob(".mutter-Xwaylandauth.*")))
        self._bus = Gio.DBusConnection.new_for_address_sync(
            session.environment["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        # The shell takes pictures only for the program of this name.
        self._call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
                   "(su)", "org.gnome.Screenshot", 0)
        self._remote = self._call("org.gnome.Mutter.RemoteDesktop", "/org/gnome/Mutter/RemoteDesktop",
                                  "org.gnome.Mutter.RemoteDesktop", "CreateSession")[0]
        self._remotely("Start")

    def start_desktop(self):
        """The shell begins with an overview of all windows, and says in its log when that can be left."""
        log = self.session.folder / "compositor.log"
        if not wait_for(lambda: "GNOME Shell started" in log.read_text(errors="replace"), 60):
            raise CannotCheck("GNOME Shell does not finish its start; see compositor.log")
        self._call("org.gnome.Shell", "/org/gnome/Shell", "org.freedesktop.DBus.Properties", "Set", "(ssv)",
                   "org.gnome.Shell", "OverviewActive", GLib.Variant("b", False))

    def _call(self, service, path, interface, method, signature="()", *arguments):
        try:
            return self._bus.call_sync(service, path, interface, method, GLib.Variant(signature, arguments), None,
                                       Gio.DBusCallFlags.NONE, 30000, None).unpack()
        except GLib.Error as error:
            raise CannotCheck(f"{method} fails: {error.message}") from error

    def _remotely(self, method, signature="()", *arguments):
        return self._call("org.gnome.Mutter.RemoteDesktop", self._remote, "org.gnome.Mutter.RemoteDesktop.Session",
                          method, signature, *arguments)

    def picture(self):
        path = self.session.place / "screen.png"
        self._call("org.gnome.Shell.Screenshot", "/org/gnome/Shell/Screenshot", "org.gnome.Shell.Screenshot",
                   "Screenshot", "(bbs)", False, False, str(path))
        with Image.open(path) as image:
            return image.convert("RGB")

    def click(self, x, y, right=False):
        # Only movements are understood without a recording of the screen, so they begin at a corner. It is the lower right
        # one, as the upper left one opens the overview.
        self._remotely("NotifyPointerMotionRelative", "(dd)", 2.0 * WIDTH, 2.0 * HEIGHT)
        self._remotely("NotifyPointerMotionRelative", "(dd)", x - (WIDTH - 1.0), y - (HEIGHT - 1.0))
        for pressed in (True, False):
            self._remotely("NotifyPointerButton", "(ib)", RIGHT_BUTTON if right else LEFT_BUTTON, pressed)

    def press_escape(self):
        for pressed in (True, False):
            self._remotely("NotifyKeyboardKeycode", "(ub)", _ESCAPE, pressed)

    def cover(self, **environment):
        return super().cover(**{"GDK_BACKEND": "x11", **environment})


class GnomeWithoutX11(Gnome):
    """To a program that is not told of an X11 display, the session has none. The wallpaper is an ordinary window there."""

    name = "GNOME Shell (Wayland, without XWayland)"
    is_window = True
    is_xwayland = False
    with_x11 = False

    def cover(self, **environment):
        return super().cover(GDK_BACKEND="wayland", **environment)
