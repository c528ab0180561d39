"""Plasma on Wayland."""
import os
import shutil
import threading

from gi.repository import Gio, GLib
from PIL import Image

from desktop import HEIGHT, WaylandDesktop, WIDTH
from pointer import LEFT_BUTTON, RIGHT_BUTTON, WaylandPointer
from session import CannotCheck, wait_for


class Plasma(WaylandDesktop):
    name = "Plasma (KWin, plasmashell; Wayland)"
    admitted = {"covered": "KWin does not tell which windows cover the wallpaper"}

    def start_display(self):
        session = self.session
        session.environment.update({
            "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5",
            "QT_QUICK_BACKEND": "software", "QT_QPA_PLATFORM": "wayland"})
        # The packaged program has a file capability, which some containers cannot grant; a copy has none.
        program = session.place / "kwin_wayland"
        installed = shutil.which("kwin_wayland")
        if not installed:
            raise CannotCheck("kwin_wayland is not installed")
        shutil.copy(installed, program)
        # KWin takes pictures only where it composites with OpenGL; in software Mesa does that without a graphics card.
        self.start_compositor(
            [str(program), "--virtual", "--width", str(WIDTH), "--height", str(HEIGHT), "--no-lockscreen"],
            QT_QPA_PLATFORM="", KWIN_COMPOSE="O2", KWIN_WAYLAND_NO_PERMISSION_CHECKS="1",
            KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1")
        if not wait_for(lambda: session.bus_knows("org.kde.KWin")):
            raise CannotCheck("KWin does not appear on the bus; see compositor.log")
        self._bus = Gio.DBusConnection.new_for_address_sync(
            session.environment["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self._pointer = WaylandPointer(self.socket, WIDTH, HEIGHT)

    def start_desktop(self):
        self.session.start("desktop", ["plasmashell"])
        if not wait_for(lambda: self.session.bus_knows("org.kde.plasmashell"), 60):
            raise CannotCheck("plasmashell does not appear on the bus; see desktop.log")
        if not wait_for(self._has_panel, 60):
            raise CannotCheck("plasmashell draws no panel; see desktop.log")

    def _has_panel(self):
        """Plasma's panel, at the bottom, is the last that it draws when it starts."""
        bottom = self.picture().crop((0, HEIGHT - 20, WIDTH, HEIGHT))
        return len(bottom.getcolors(WIDTH * 20)) > 20

    def picture(self):
        read, write = os.pipe()
        descriptors = Gio.UnixFDList.new()
        handle = descriptors.append(write)
        os.close(write)
        pixels = []

        def receive():
            with os.fdopen(read, "rb") as pipe:
                pixels.append(pipe.read())

        receiver = threading.Thread(target=receive)
        receiver.start()
        arguments = GLib.Variant("(iiuua{sv}h)", (0, 0, WIDTH, HEIGHT, {}, handle))
        try:
            self._bus.call_with_unix_fd_list_sync(
                "org.kde.KWin", "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2", "CaptureArea", arguments,
                None, Gio.DBusCallFlags.NONE, 30000, descriptors, None)
        except GLib.Error as error:
            raise CannotCheck(f"KWin takes no picture: {error.message}") from error
        finally:
            del descriptors  # its copy of the pipe's end would keep the receiver waiting
            receiver.join()
        return Image.frombuffer("RGB", (WIDTH, HEIGHT), pixels[0], "raw", "BGRX", 0, 1)

    def click(self, x, y, right=False):
        self._pointer.click(x, y, RIGHT_BUTTON if right else LEFT_BUTTON)
