#!/usr/bin/env python3
"""cover.py RED GREEN BLUE: a maximised window of one colour, another program's to the wallpaper."""
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

window = Gtk.Window(title="cover")
style = Gtk.CssProvider()
style.load_from_data(f"window {{ background: rgb({', '.join(sys.argv[1:4])}); }}".encode())
window.get_style_context().add_provider(style, Gtk.STYLE_PROVIDER_PRIORITY_USER)
window.set_decorated(False)
window.set_default_size(400, 300)
window.maximize()
window.show()
Gtk.main()
