import os
import threading
import tty

from .sandbox import tool
from .waiting import wait_for


class Terminal:
    """A terminal in front, and the bytes that a program in it receives.

    The test itself is that program. The terminal is told to start none: it would want to change the owner of
    its device, which it may not where the test runs with users of its own.
    """

    RESOURCES = ("XTerm*metaSendsEscape: true", "XTerm*eightBitInput: false")

    def __init__(self, sandbox, display):
        self._received = bytearray()
        terminals, self._device = os.openpty()
        tty.setraw(self._device)
        resources = [word for resource in self.RESOURCES for word in ("-xrm", resource)]
        command = [tool("xterm"), "-T", "Terminal", *resources, f"-Stest/{terminals}"]
        self._program = sandbox.start("xterm", command, pass_fds=(terminals,))
        os.close(terminals)
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        self.window = display.wait_for_window("Terminal")
        # It begins with a line that says which window it is.
        wait_for(lambda: b"\n" in self._received, "the beginning of the terminal")
        self.forget()
        display.activate(self.window)

    def _read(self):
        while True:
            try:
                received = os.read(self._device, 4096)
            except OSError:
                received = b""
            if not received:
                os.close(self._device)
                return
            self._received += received

    def received(self):
        return bytes(self._received)

    def forget(self):
        self._received.clear()
