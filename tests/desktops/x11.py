"""Desktops on X11: a window manager, and a program whose window is the desktop."""
import os
import re

from desktop import Desktop, HEIGHT, WIDTH
from session import CannotCheck, wait_for


class X11Desktop(Desktop):
    manager = ()
    desktop = ()

    def start_display(self):
        read, write = os.pipe()
        session = self.session
        screen = f"{WIDTH}x{HEIGHT}x24"
        server = session.start("xvfb", ["Xvfb", "-displayfd", str(write), "-screen", "0", screen, "-nolisten", "tcp"],
                               pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as numbers:
            number = numbers.readline().strip()
        if server.poll() is not None or not number:
            raise CannotCheck("Xvfb does not start; see xvfb.log")
        session.environment["DISPLAY"] = f":{number}"
        session.environment["XDG_SESSION_TYPE"] = "x11"
        session.start_bus()

    def start_desktop(self):
        self.session.start("manager", list(self.manager))
        if not wait_for(lambda: "0x" in self.session.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK")):
            raise CannotCheck(f"{self.manager[0]} does not manage windows; see manager.log")
        self.session.start("desktop", list(self.desktop))
        if not wait_for(self._desktop_window, 30):
            raise CannotCheck(f"{self.desktop[0]} opens no desktop window; see desktop.log")

    def _desktop_window(self):
        """The desktop's own window, which the window manager lists; ours has a class of its own."""
        listed = re.findall(r"0x[0-9a-f]+", self.session.run("xprop", "-root", "_NET_CLIENT_LIST"))
        for window in listed:
            properties = self.session.run("xprop", "-id", window, "_NET_WM_WINDOW_TYPE", "WM_CLASS")
            if "_NET_WM_WINDOW_TYPE_DESKTOP" in properties and "nivlo" not in properties:
                return window
        return None

    def picture(self):
        return self.picture_by("import", "-window", "root")

    def click(self, x, y, right=False):
        self.session.run("xdotool", "mousemove", str(x), str(y), "sleep", "0.2", "click", "3" if right else "1")


class Xfce(X11Desktop):
    name = "Xfce (xfwm4, xfdesktop)"
    manager = ("xfwm4",)
    desktop = ("xfdesktop",)


class Mate(X11Desktop):
    name = "MATE (marco, caja)"
    manager = ("marco",)
    desktop = ("caja", "--no-default-window", "--force-desktop")


class LXQt(X11Desktop):
    name = "LXQt (openbox, pcmanfm-qt)"
    manager = ("openbox",)
    desktop = ("pcmanfm-qt", "--desktop")


class Cinnamon(X11Desktop):
    name = "Cinnamon (muffin, nemo-desktop)"
    manager = ("muffin", "--x11")
    desktop = ("nemo-desktop",)
