import os
import pathlib
import socket
import struct
import tempfile
import time

from .keys import CODES

# The kernel's codes are those of X without this.
_X_OFFSET = 8
_KEYMAP = """xkb_keymap {
    xkb_keycodes { include "evdev+aliases(qwerty)" };
    xkb_types { include "complete" };
    xkb_compat { include "complete" };
    xkb_symbols { include "pc+us+inet(evdev)" };
};
"""
_DISPLAY = 1
_XKB_FORMAT = 1


def _string(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


class WaylandKeyboard:
    """A keyboard of a Wayland session, with the us layout, whose keys a test presses. It speaks the compositor's
    protocol itself: the tools that type text do not press the keys on which the letters stand."""

    def __init__(self, sandbox, session):
        path = pathlib.Path(sandbox.environment["XDG_RUNTIME_DIR"]) / session.name
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.settimeout(60)
        self._socket.connect(str(path))
        self._latest = _DISPLAY
        self._received = b""
        self._globals = {}
        self._registry = self._new()
        self._request(_DISPLAY, 1, struct.pack("=I", self._registry))
        self._synchronize()
        seat, manager = self._bind("wl_seat"), self._bind("zwp_virtual_keyboard_manager_v1")
        self._keyboard = self._new()
        self._request(manager, 0, struct.pack("=II", seat, self._keyboard))
        with tempfile.TemporaryFile() as keymap:
            keymap.write(_KEYMAP.encode() + b"\0")
            keymap.flush()
            size = os.fstat(keymap.fileno()).st_size
            self._request(self._keyboard, 0, struct.pack("=II", _XKB_FORMAT, size), keymap.fileno())
        self._synchronize()

    def tap(self, *keys):
        """Presses and releases each; keys are named as in CODES."""
        for key in keys:
            for is_pressed in (1, 0):
                now = int(time.monotonic() * 1000) & 0xFFFFFFFF
                self._request(self._keyboard, 1, struct.pack("=III", now, CODES[key] - _X_OFFSET, is_pressed))
        self._synchronize()

    def close(self):
        self._socket.close()

    def _new(self):
        """The number of the next object; none may be left out."""
        self._latest += 1
        return self._latest

    def _bind(self, interface):
        if interface not in self._globals:
            raise AssertionError(f"the compositor has no {interface}")
        words = struct.pack("=I", self._globals[interface]) + _string(interface)
        number, version = self._new(), 1
        self._request(self._registry, 0, words + struct.pack("=II", version, number))
        return number

    def _request(self, number, operation, arguments, *files):
        message = struct.pack("=II", number, (8 + len(arguments)) << 16 | operation) + arguments
        socket.send_fds(self._socket, [message], files)

    def _synchronize(self):
        """Waits until everything before has been done."""
        callback = self._new()
        self._request(_DISPLAY, 0, struct.pack("=I", callback))
        while True:
            number, operation, content = self._event()
            if number == callback:
                return
            if number == _DISPLAY and operation == 0:
                raise AssertionError(f"the compositor refused a request: {content}")
            if number == self._registry and operation == 0:
                name, length = struct.unpack_from("=II", content)
                self._globals[content[8 : 8 + length - 1].decode()] = name

    def _event(self):
        number, word = struct.unpack("=II", self._read(8))
        return number, word & 0xFFFF, self._read((word >> 16) - 8)

    def _read(self, size):
        while len(self._received) < size:
            more = self._socket.recv(65536)
            if not more:
                raise AssertionError("the compositor has ended the connection")
            self._received += more
        part, self._received = self._received[:size], self._received[size:]
        return part
