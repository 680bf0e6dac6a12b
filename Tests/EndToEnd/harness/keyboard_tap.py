import re

from .adapter_probe import Probe
from .sandbox import built_program, tool
from .terminal import Terminal
from .waiting import wait_for

# Places of keys, as the tap names them, and the modifiers it tells.
KEY_CODES = {"a": 0, "s": 1, "d": 2, "f": 3, "g": 5, "c": 8, "q": 12, "w": 13, "1": 18, "l": 37, "F9": 101}
PLAIN, CONTROL, ALT, SHIFT = 0, 2, 4, 8


class TapProbe(Probe):
    """The keyboard tap alone, with a client that does as it is told."""

    VARIABLE = "TAVRO_KEYBOARD_TAP_PROBE"
    FIRST_WORD = "made"

    def __init__(self, sandbox, guard=None, wrapper=()):
        command = [*wrapper, built_program(self.VARIABLE), guard or built_program("TAVRO_GUARD")]
        self.program = sandbox.start("KeyboardTapProbe", command)
        self.program.ends_with_input = True
        self.creations = self.program.wait_for_object(lambda line: self.FIRST_WORD in line, "its beginning")

    def set(self, **values):
        """Tells the values and waits until the tap has obeyed."""
        for name, value in values.items():
            self.tell(name, *(value if isinstance(value, tuple) else [int(value)]))
        if not self.ask("settled", "settle"):
            raise AssertionError("the tap does not ask for its verdicts")

    def switch_off(self):
        self.tell("enable", 0)
        self.tell("dispose")
        wait_for(lambda: self.answers("disposed"), "the end of the tap")

    def events(self, *kinds):
        """The events of these kinds, "down" or "up", in order."""
        return [line for line in self.program.objects if any(kind in line for kind in kinds)]

    def downs(self):
        """The swallowed presses, without repeats."""
        return [
            line["down"] for line in self.events("down") if line["isSwallowed"] and not line["isAutorepeat"]
        ]

    def ups(self):
        return [line["up"] for line in self.events("up")]

    def wait_for_downs(self, keys):
        self._wait_for(self.downs, [KEY_CODES[key] for key in keys], "pressed keys")

    def wait_for_ups(self, keys):
        self._wait_for(self.ups, [KEY_CODES[key] for key in keys], "released keys")

    def _wait_for(self, look, wanted, what):
        wait_for(lambda: len(look()) >= len(wanted), lambda: f"{what} {wanted}; the tap told {look()}")
        if look() != wanted:
            raise AssertionError(f"{what}: wanted {wanted}, the tap told {look()}")


class TapTerminal(Terminal):
    """The terminal in front of the tap, which compares what it receives."""

    def __init__(self, sandbox, display):
        super().__init__(sandbox, display)
        self._display = display

    def wait_for(self, wanted):
        """Waits for what was typed so far, and for a line break typed behind it, and compares."""
        self._display.tap("Return")
        wait_for(lambda: self.received().endswith(b"\r"), lambda: f"{wanted}; received {self.received()}")
        if self.received() != wanted + b"\r":
            raise AssertionError(f"the terminal wanted {wanted!r}, received {self.received()!r}")
        self.forget()


def repeating_keys(sandbox):
    """The server's flags of the keys that repeat, in the words of its own tool."""
    words = sandbox.run(tool("xset"), "q").stdout
    found = re.search(r"auto repeating keys:((?:\s+[0-9a-f]{16})+)", words)
    if not found:
        raise AssertionError(f"xset did not tell the repeats: {words}")
    return "".join(found.group(1).split())
