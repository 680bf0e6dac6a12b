from .keys import HOTKEYS, PLAYING_KEYS
from .random_typing import FOREIGN_KEYS, SHIFT, RandomTyping

RESERVED = "F5"


class DisturbedTyping(RandomTyping):
    """Types at random while other programs reserve keys or take the keyboard, windows come to the front and the
    keymap changes; knows besides which keys went to the program that had taken the keyboard."""

    def __init__(self, random, typist, is_on, stage):
        super().__init__(random, typist, is_on)
        self.counts |= dict.fromkeys(("reserved", "locked", "shown", "symbols", "keymaps"), 0)
        # The presses that other programs must have seen.
        self.taken = {stage.desktop: [], stage.lock: []}
        self._stage = stage
        self._taker = None
        self._is_application_in_front = False

    def step(self):
        if self._random.random() > 0.02:
            super().step()
            return
        self._release_modifiers()
        self._random.choice(
            (
                self._reserve_keyboard,
                self._lock_keyboard,
                self._change_front,
                self._change_symbols,
                self._change_keymap,
            )
        )()

    def end_round(self):
        self._release_modifiers()
        if self._is_application_in_front:
            self._change_front()
        self.release_all()

    def _release_modifiers(self):
        for modifier in sorted(self._modifiers):
            self._set_modifier(modifier, False)

    def _reserve_keyboard(self):
        """Holds a key that is another program's: with it, that program has the keyboard."""
        self.counts["reserved"] += 1
        self._send(RESERVED, True)
        self.taken[self._stage.desktop].append(RESERVED)
        self._type_into(self._stage.desktop)
        self._send(RESERVED, False)

    def _lock_keyboard(self):
        self.counts["locked"] += 1
        self._typist.synchronize()
        self._stage.lock.hold_all_soon()
        self._type_into(self._stage.lock)
        self._typist.synchronize()
        self._stage.lock.let_all_go()

    def _type_into(self, taker):
        self._taker = taker
        for _ in range(self._random.randint(0, 8)):
            super().step()
        self._release_modifiers()
        self._taker = None

    def _change_front(self):
        self.counts["shown"] += 1
        # Only then it can be seen from outside when the program knows: by that the keys are taken when the terminal
        # is in front, and not when it is not.
        if not self.is_on:
            self._press_hotkey_alone()
        self._typist.synchronize()
        if not self._is_application_in_front:
            self._stage.wait_until_captured()
        self._is_application_in_front = not self._is_application_in_front
        (self._stage.show_application if self._is_application_in_front else self._stage.show_terminal)()

    def _change_symbols(self):
        self.counts["symbols"] += 1
        self._typist.synchronize()
        self._stage.change_symbols(self._random)

    def _change_keymap(self):
        self.counts["keymaps"] += 1
        self.release_all()
        self._typist.synchronize()
        self._stage.change_keymap(self._random)

    def _press_hotkey_alone(self):
        self._release_modifiers()
        key = next((key for key in HOTKEYS if key not in self._held), HOTKEYS[0])
        if key in self._held:
            self._release(key)
        self._press(key)
        self._toggle()

    def _press_for_the_taker(self, key):
        if key not in self._held:
            self._press(key)
            self.taken[self._taker].append(key)

    def _set_modifier(self, modifier, is_held):
        super()._set_modifier(modifier, is_held)
        if is_held and self._taker:
            self.taken[self._taker].append(modifier)

    def _change_modifier(self):
        if self._taker or not self._is_application_in_front:
            super()._change_modifier()
        else:
            self._set_modifier(SHIFT, SHIFT not in self._modifiers)

    def _type_shortcut(self):
        # In the program's own window they are the program's.
        if self._taker or not self._is_application_in_front:
            super()._type_shortcut()

    def _press_foreign_key(self):
        if self._taker:
            self._press_for_the_taker(self._random.choice(list(FOREIGN_KEYS)))
        elif not self._is_application_in_front:
            super()._press_foreign_key()

    def _press_hotkey(self):
        if self._taker:
            self._press_for_the_taker(self._random.choice(HOTKEYS))
        elif not self._is_application_in_front:
            super()._press_hotkey()
        elif not self._modifiers:
            free = [key for key in HOTKEYS if key not in self._held]
            if free:
                self._press(self._random.choice(free))
                self._toggle()

    def _press_playing_key(self, key):
        if self._taker:
            self._press_for_the_taker(key)
        elif not self._is_application_in_front:
            super()._press_playing_key(key)
        elif key not in self._held:
            assert key in PLAYING_KEYS
            self._press(key)
            self._begin_note(key)
