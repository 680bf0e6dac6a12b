import re

from .sandbox import tool
from .waiting import wait_for

_ACTION = """<action name="NextWindow"><finalactions>
<action name="Focus"/><action name="Raise"/><action name="Unshade"/></finalactions></action>"""
_BINDING = f"<keyboard><keybind key='A-Tab'>{_ACTION}</keybind></keyboard>"


def bind_window_switcher(sandbox):
    """Has the window manager go through the windows with Alt and Tab, and take the keyboard meanwhile. That it
    has heard of it is to be waited for."""
    settings = sandbox.folder / "openbox.xml"
    before, rest = settings.read_text(encoding="utf-8").split("<keyboard>")
    settings.write_text(before + _BINDING + rest.split("</keyboard>")[1], encoding="utf-8")
    done = sandbox.run(tool("openbox"), "--reconfigure")
    if done.returncode != 0:
        raise AssertionError(f"openbox did not take its new settings: {done.stderr}")


def begin_switching(sandbox, typist, passed=lambda: False):
    """Presses Alt, which stays down, and Tab, and waits until the window manager shows what it goes through:
    when Alt is let go earlier, it does not notice. False when the keys have passed to a window instead."""

    def shown():
        # Of the windows on the list; the root's parent has the number 0, for which the tool would let one choose.
        listed = sandbox.run(tool("xwininfo"), "-root", "-children").stdout
        windows = re.findall(r"^ {5}(0x[0-9a-f]+)", listed, re.MULTILINE)
        return [w for w in windows if "IsViewable" in sandbox.run(tool("xwininfo"), "-id", w).stdout]

    before = shown()
    typist.press("Alt_L", "Tab")
    wait_for(lambda: passed() or set(shown()) - set(before), "the list of the windows")
    typist.release("Tab")
    return not passed()
