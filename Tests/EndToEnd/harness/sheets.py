"""What the program shows in front of everything else in its window: file dialogs and alerts."""

from .waiting import wait_for


class _Sheet:
    """Places are those in a window as it opens; sheets stand in its middle."""

    def __init__(self, application):
        self._display = application.display
        self._window = application.window

    def _only_colour(self, *part):
        return self._display.screen.only_colour(self._window, *part)


class FileDialog(_Sheet):
    _FILE_NAME = (580, 546)
    _ACCEPT = (787, 579)
    _FIRST_FILE = (440, 307)
    # Each has one colour, as long as the dialog is there: (left, top, width, height).
    _BELOW_THE_BUTTONS = (345, 597, 590, 1)
    _IN_ACCEPT = (755, 588, 64, 1)
    _IN_FILE_NAME = (445, 555, 275, 1)
    _IN_FIRST_FILE = (500, 331, 400, 1)
    _IN_THE_LIST = (500, 450, 400, 1)

    def save_as(self, name, has_files):
        """Waits for the dialog, and until it lists the files that are there, and saves under a name."""
        wait_for(lambda: self._has_parts(self._IN_ACCEPT, self._IN_FILE_NAME), "the dialog to save to a file")
        if has_files:
            # A list that comes later may put a name of its own into the field.
            self._wait_for_list()
        self._click(self._FILE_NAME)
        self._display.tap("ctrl+a")
        self._display.type(name)
        self._click(self._ACCEPT)
        self._wait_until_gone()

    def load_first(self):
        """Waits for the dialog and for its list, and loads the first file of it."""
        wait_for(lambda: self._has_parts(self._IN_ACCEPT), "the dialog to load a file")
        self._wait_for_list()
        self._click(self._FIRST_FILE)
        self._click(self._ACCEPT)
        self._wait_until_gone()

    def _wait_for_list(self):
        empty = self._IN_THE_LIST
        wait_for(
            lambda: self._only_colour(*self._IN_FIRST_FILE) not in (None, self._only_colour(*empty)),
            "the list of the files",
        )

    def _wait_until_gone(self):
        wait_for(lambda: self._only_colour(*self._BELOW_THE_BUTTONS) is None, "the end of the dialog")

    def _has_parts(self, *parts):
        """Whether these are drawn, on the dialog's ground."""
        ground = self._only_colour(*self._BELOW_THE_BUTTONS)
        return ground is not None and all(self._only_colour(*part) not in (None, ground) for part in parts)

    def _click(self, place):
        self._display.click(self._window, *place)


class Alert(_Sheet):
    # Beside its text: the keys behind it would show here.
    _LEFT_MARGIN = (405, 365, 12, 75)

    def read(self):
        """Waits for the alert and closes it."""
        self.wait_until_shown()
        self._display.tap("Return")
        wait_for(lambda: not self.is_shown(), "the end of the alert")

    def wait_until_shown(self):
        wait_for(self.is_shown, "an alert")

    def is_shown(self):
        return self._only_colour(*self._LEFT_MARGIN) is not None
