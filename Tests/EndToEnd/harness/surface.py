from .places import SLIDERS, Layout
from .waiting import wait_for

LEFT_BUTTON, WHEEL_UP, WHEEL_DOWN = 1, 4, 5


class Surface:
    """The controls of the window, found by the names of their places, whatever its size is."""

    def __init__(self, display, window):
        self._display = display
        self._window = window
        self._layout = Layout()

    def height(self):
        """Of the whole, in the measure in which it is drawn."""
        return self._layout.height

    def place(self, name):
        """In the window."""
        return self.place_at(self._layout.place(name))

    def place_at(self, place):
        return self._layout.in_window(place, self._display.size(self._window))

    def wait_until_drawn(self):
        """Waits until the window shows everything where it belongs. Before, a click may meet something else."""
        wait_for(self._is_drawn, lambda: f"the surface to be drawn in a window of {self._display.size(self._window)}")

    def _is_drawn(self):
        above, top, bottom, below = (self._colour(place) for place in self._layout.first_key())
        if None in (above, top) or not above == below != top == bottom:
            return False
        # Of the panel that opens below everything else, one of the switches.
        return not self._layout.settings or self._has_drawing("Global Play")

    def _colour(self, place):
        return self._display.screen.colour(self._window, *self.place_at(place))

    def _has_drawing(self, name, size=24):
        x, y = self.place(name)
        part = (x - size // 2, y - size // 2, size, size)
        return len(set(self._display.screen.colours(self._window, *part))) > 1

    def click(self, name, *modifiers):
        self._click_at(self.place(name), LEFT_BUTTON, modifiers=modifiers)

    def double_click_slider(self, name, value, *modifiers):
        self._click_at(self._slider_place(name, value), LEFT_BUTTON, times=2, modifiers=modifiers)

    def turn_wheel(self, name, steps):
        """Over the middle of a slider; up is more."""
        slider = SLIDERS[name]
        middle = self.place_at(((slider.left + slider.right) / 2, slider.y))
        self._click_at(middle, WHEEL_UP if steps > 0 else WHEEL_DOWN, times=abs(steps))

    def point_at_slider(self, name):
        slider = SLIDERS[name]
        self._display.move_pointer(self._window, *self.place_at(((slider.left + slider.right) / 2, slider.y)))

    def drag_slider(self, name, first, last):
        self.slide(self._slider_place(name, first), self._slider_place(name, last))

    def slide(self, first, *others):
        """Presses at the first place, and goes over the others to the last one, where it lets go."""
        self._display.move_pointer(self._window, *first)
        self.hold_button()
        before = first
        for place in others:
            middle = tuple((a + b) // 2 for a, b in zip(before, place))
            self._display.move_pointer(self._window, *middle)
            self._display.move_pointer(self._window, *place)
            before = place
        self.release_button()

    def point_at(self, name):
        self._display.move_pointer(self._window, *self.place(name))

    def hold_button(self):
        self._display.at_once("mousedown", LEFT_BUTTON)

    def release_button(self):
        self._display.at_once("mouseup", LEFT_BUTTON)

    def type_into(self, name, text):
        """Into a field with a number, and takes it over."""
        self.click(name)
        self._display.type(text)
        self._display.tap("Return")

    def choose(self, name, steps):
        """Goes so many entries down, or up, from the one that is chosen, in a picker's list."""
        self.click(name)
        self._display.tap(*["Down" if steps > 0 else "Up"] * abs(steps), "Return")

    def toggle_advanced(self):
        self._toggle("Advanced", self._layout._replace(advanced=not self._layout.advanced))

    def toggle_settings(self):
        self._toggle("Settings", self._layout._replace(settings=not self._layout.settings))

    def _toggle(self, title, layout):
        before = self._display.size(self._window)
        self.click(title)
        wait_for(lambda: self._display.size(self._window) != before, "the window to be fitted")
        self._layout = layout
        self.wait_until_drawn()

    def _slider_place(self, name, value):
        slider = SLIDERS[name]
        return self.place_at((slider.x(value), slider.y))

    def _click_at(self, place, button, times=1, modifiers=()):
        down, up = ([word for key in modifiers for word in (what, key)] for what in ("keydown", "keyup"))
        self._display.move_pointer(self._window, *place)
        self._display.at_once(*down, "click", "--repeat", times, "--delay", 20, button, *up)
