import pathlib
import socket
import struct

_DISPLAY = 1


def words(*numbers):
    return struct.pack(f"={len(numbers)}I", *numbers)


def text(characters):
    data = characters.encode() + b"\0"
    return words(len(data)) + data + b"\0" * (-len(data) % 4)


class WaylandClient:
    """A connection to a compositor, whose protocol a test speaks itself."""

    def __init__(self, sandbox, session):
        path = pathlib.Path(sandbox.environment["XDG_RUNTIME_DIR"]) / session.name
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.settimeout(60)
        self._socket.connect(str(path))
        self._latest = _DISPLAY
        self._received = b""
        self._globals = {}
        # What is told of an object goes to these, as the number of the event and its content.
        self._listeners = {_DISPLAY: self._listen_to_display}
        self._registry = self._new(self._listen_to_registry)
        self._request(_DISPLAY, 1, words(self._registry))
        self.synchronize()

    def close(self):
        self._socket.close()

    def synchronize(self):
        """Waits until everything before has been done, and what it has brought was heard."""
        answers = []
        callback = self._new(lambda *event: answers.append(event))
        self._request(_DISPLAY, 0, words(callback))
        while not answers:
            number, operation, content = self._event()
            self._listeners.get(number, lambda *_: None)(operation, content)

    def _listen_to_display(self, operation, content):
        if operation == 0:
            raise AssertionError(f"the compositor refused a request: {content}")

    def _listen_to_registry(self, operation, content):
        if operation == 0:
            name, length = struct.unpack_from("=II", content)
            self._globals[content[8 : 8 + length - 1].decode()] = name

    def _new(self, listener=None):
        """The number of the next object; none may be left out."""
        self._latest += 1
        if listener is not None:
            self._listeners[self._latest] = listener
        return self._latest

    def _bind(self, interface, listener=None):
        if interface not in self._globals:
            raise AssertionError(f"the compositor has no {interface}")
        number, version = self._new(listener), 1
        where = words(self._globals[interface]) + text(interface)
        self._request(self._registry, 0, where + words(version, number))
        return number

    def _request(self, number, operation, arguments=b"", *files):
        message = words(number, (8 + len(arguments)) << 16 | operation) + arguments
        socket.send_fds(self._socket, [message], files)

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
