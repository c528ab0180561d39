"""Sway, which has a layer shell and no desktop program of its own."""
from desktop import HEIGHT, WaylandDesktop, WIDTH
from pointer import LEFT_BUTTON, RIGHT_BUTTON, WaylandPointer


class Sway(WaylandDesktop):
    name = "Sway"
    orders = ("last",)
    has_menu = False

    def start_display(self):
        session = self.session
        config = session.place / "sway.conf"
        config.write_text(f"output HEADLESS-1 resolution {WIDTH}x{HEIGHT}\n")
        session.environment.update({"SWAYSOCK": str(session.runtime / "sway.sock"), "XDG_CURRENT_DESKTOP": "sway"})
        self.start_compositor(["sway", "--config", str(config)], WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1",
                              WLR_RENDERER="pixman")
        self._pointer = WaylandPointer(self.socket, WIDTH, HEIGHT)

    def start_desktop(self):
        """It draws nothing but a colour, by itself."""

    def picture(self):
        return self.picture_by("grim")

    def click(self, x, y, right=False):
        self._pointer.click(x, y, RIGHT_BUTTON if right else LEFT_BUTTON)
