"""Global Play lets go of the keys while its login session is locked or not the active one."""

import unittest

from harness.global_play import ON, GlobalPlayTest
from harness.keys import PLAYING_KEYS
from harness.login_session import LoginSession, silent_bus

PAUSED = "Global Play paused: session locked or not in front"


class SessionTest(GlobalPlayTest):
    def setUp(self):
        super().setUp()
        self.session = LoginSession(self.sandbox)

    def assert_pauses(self, service, begin, end):
        """With a key held, the words begin a pause and the others end it."""
        self.typist.press("a")
        self.assert_played(on="a")
        service.tell(begin)
        self.assert_paused("a")
        self.typist.release("a")
        # A password, and the hotkey in it.
        self.typist.tap("s", "grave", "d")
        self.assert_typed(b"s`d")
        service.tell(end)
        self.assert_goes_on()

    def assert_paused(self, *held):
        self.application.wait_for_global_play(PAUSED)
        self.wait_until_released()
        self.assert_played(off=held)

    def assert_goes_on(self):
        self.application.wait_for_global_play(ON)
        self.wait_until_captured()
        self.typist.tap("f")
        self.assert_played("f")
        self.assert_typed(b"")


class LoginServiceTest(SessionTest):
    def test_locked_session(self):
        login = self.session.start("login")
        self.play_behind_the_terminal()
        self.assert_pauses(login, "locked on", "locked off")
        # Another session's lock is nobody's concern here.
        login.tell("other on")
        self.assert_pauses(login, "locked on", "locked off")

    def test_session_that_is_not_in_front(self):
        login = self.session.start("login")
        self.play_behind_the_terminal()
        self.assert_pauses(login, "active off", "active on")

    def test_request_to_lock(self):
        login = self.session.start("login")
        self.play_behind_the_terminal()
        self.assert_pauses(login, "lock", "unlock")
        # Who locks may tell the end by the hint alone.
        login.tell("lock")
        self.assert_paused()
        login.tell("locked on")
        login.tell("locked off")
        self.assert_goes_on()

    def test_process_of_the_users_service_manager(self):
        login = self.session.start("login", "none")
        self.play_behind_the_terminal()
        self.assert_pauses(login, "locked on", "locked off")

    def test_session_that_is_locked_at_the_start(self):
        login = self.session.start("login", "locked")
        self.play()
        self.typist.tap("grave")
        self.application.wait_for_global_play(PAUSED)
        self.display.activate(self.terminal.window)
        self.typist.tap("a")
        self.assert_typed(b"a")
        login.tell("locked off")
        self.assert_goes_on()

    def test_service_that_comes_late_and_returns(self):
        self.play_behind_the_terminal()
        login = self.session.start("login")
        self.assert_pauses(login, "active off", "active on")
        login.tell("locked on")
        self.assert_paused()
        login.end()
        # What it told last holds while it is away.
        login = self.session.start("login", "locked")
        self.typist.tap("a")
        self.assert_typed(b"a")
        login.tell("locked off")
        self.assert_goes_on()
        login.end()
        self.typist.tap("g")
        self.assert_played("g")
        login = self.session.start("login")
        self.assert_pauses(login, "locked on", "locked off")

    def test_silent_service(self):
        login = self.session.start("login")
        login.fall_silent()
        self.play_behind_the_terminal()
        self.typist.tap("a")
        self.assert_played("a")
        self.assert_typed(b"")
        login.speak_again()
        self.assert_pauses(login, "locked on", "locked off")


class ScreenSaverTest(SessionTest):
    def test_lock_screen(self):
        saver = self.session.start("screensaver")
        self.play_behind_the_terminal()
        self.assert_pauses(saver, "saver on", "saver off")

    def test_comes_late_and_goes(self):
        self.play_behind_the_terminal()
        saver = self.session.start("screensaver")
        self.assert_pauses(saver, "saver on", "saver off")
        saver.tell("saver on")
        self.assert_paused()
        saver.end()
        self.assert_goes_on()

    def test_both_have_to_agree(self):
        saver, login = self.session.start("screensaver"), self.session.start("login")
        self.play_behind_the_terminal()
        saver.tell("saver on")
        self.assert_paused()
        login.tell("locked on")
        saver.tell("saver off")
        self.typist.tap("a")
        self.assert_typed(b"a")
        login.tell("locked off")
        self.assert_goes_on()


class SilentBusTest(GlobalPlayTest):
    def test_program_plays(self):
        # The toolkit itself waits for a silent session bus.
        silent_bus(self.sandbox, "system")
        self.play_behind_the_terminal()
        self.typist.tap(*PLAYING_KEYS)
        self.assert_played(*PLAYING_KEYS)
        self.assert_typed(b"")


if __name__ == "__main__":
    unittest.main()
