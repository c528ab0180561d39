"""A mouse on a Wayland compositor that lets programs play one: KWin's fake input, or wlroots' virtual pointer. Speaks the wire protocol itself, as no library for it is packaged."""
import socket
import struct
import time

LEFT_BUTTON, RIGHT_BUTTON = 0x110, 0x111  # linux/input-event-codes.h
_DISPLAY = 1


def _text(value):
    data = value.encode() + b"\0"
    return struct.pack("=I", len(data)) + data.ljust((len(data) + 3) // 4 * 4, b"\0")


def _fixed(value):
    return struct.pack("=i", int(value * 256))


class WaylandPointer:
    """Raises OSError if the compositor has gone, and LookupError if it offers neither protocol."""

    def __init__(self, path, width, height):
        self._size = (width, height)
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.settimeout(10)
        self._socket.connect(str(path))
        self._last = _DISPLAY
        self._globals = {}
        self._registry = self._new()
        self._send(_DISPLAY, 1, struct.pack("=I", self._registry))
        self._round_trip()
        self._kwin = "org_kde_kwin_fake_input" in self._globals
        if self._kwin:
            self._pointer = self._bind("org_kde_kwin_fake_input", 4)
            self._send(self._pointer, 0, _text("tests") + _text("clicks on the desktop"))
        elif "zwlr_virtual_pointer_manager_v1" in self._globals:
            seat = self._bind("wl_seat", 1)
            manager = self._bind("zwlr_virtual_pointer_manager_v1", 1)
            self._pointer = self._new()
            self._send(manager, 0, struct.pack("=II", seat, self._pointer))
        else:
            raise LookupError("the compositor lets no program play a mouse")
        self._round_trip()

    def _new(self):
        """A number for a new object. Compositors want them to be consecutive."""
        self._last += 1
        return self._last

    def _send(self, target, request, arguments=b""):
        self._socket.sendall(struct.pack("=IHH", target, request, 8 + len(arguments)) + arguments)

    def _bind(self, interface, version):
        identity = self._new()
        name = struct.pack("=I", self._globals[interface])
        self._send(self._registry, 0, name + _text(interface) + struct.pack("=II", version, identity))
        return identity

    def _receive(self, size):
        data = b""
        while len(data) < size:
            part = self._socket.recv(size - len(data))
            if not part:
                raise OSError("the compositor has gone")
            data += part
        return data

    def _round_trip(self):
        callback = self._new()
        self._send(_DISPLAY, 0, struct.pack("=I", callback))
        while True:
            sender, event, size = struct.unpack("=IHH", self._receive(8))
            data = self._receive(size - 8)
            if sender == _DISPLAY and event == 0:
                raise OSError(f"the compositor reports an error: {data!r}")
            if sender == self._registry and event == 0:
                name, length = struct.unpack("=II", data[:8])
                self._globals[data[8:8 + length - 1].decode()] = name
            if sender == callback:
                return

    @staticmethod
    def _now():
        return struct.pack("=I", int(time.monotonic() * 1000) & 0xFFFFFFFF)

    def move(self, x, y):
        if self._kwin:
            self._send(self._pointer, 9, _fixed(x) + _fixed(y))
        else:
            self._send(self._pointer, 1, self._now() + struct.pack("=IIII", x, y, *self._size))
            self._send(self._pointer, 4)
        self._round_trip()

    def click(self, x, y, button):
        # Two moves, as a compositor may take the first one for the mouse's appearance only.
        self.move(x - 5, y - 5)
        self.move(x, y)
        for state in (1, 0):
            if self._kwin:
                self._send(self._pointer, 2, struct.pack("=II", button, state))
            else:
                self._send(self._pointer, 2, self._now() + struct.pack("=II", button, state))
                self._send(self._pointer, 4)
            self._round_trip()
            time.sleep(0.1)
