"""Updates in the real window: the feed and the package come from a real HTTPS server of the test, whose
authority the program finds where the system keeps those that it trusts, in a mount of its own."""

import os
import pathlib
import shutil
import signal
import stat
import unittest

from harness.application import Application
from harness.display import Display
from harness.jack_server import JackServer
from harness.recorder import Recorder
from harness.sandbox import built_program, tool
from harness.signed_package import SignedPackages
from harness.testcase import EndToEndTest
from harness.update_feed import UpdateFeed
from harness.waiting import wait_for
from harness.x_client import WindowList

UPDATE_WINDOW = "TAVRO Update"
# The program comes from a folder with the keyring beside it, and not from where it was built.
START = """
mount --bind "$1" /etc/ssl/certs
program="$2"
shift 3
exec "$program" "$@"
"""
# Of the desktop; it only notes what it should have opened.
OPENER = """#!/bin/sh
printf '%s\\n' "$1" >> "{record}.part"
mv "{record}.part" "{record}"
"""


class UpdatesTest(EndToEndTest):
    def setUp(self):
        super().setUp()
        self.feed = UpdateFeed(self.sandbox.folder / "feed")
        self.addCleanup(self.feed.close)
        self.packages = SignedPackages(self.sandbox.folder / "packages")
        self.addCleanup(self.packages.close)
        self.display = Display(self.sandbox)
        self.record = self.sandbox.folder / "opened"
        self._install()
        self.sandbox.environment["TAVROUpdateFeedURL"] = f"{self.feed.address}/latest.json"

    def _install(self):
        programs = self.sandbox.folder / "installed" / "bin"
        programs.mkdir(parents=True)
        self.program = shutil.copy2(built_program("TAVRO_PROGRAM"), programs)
        shared = self.sandbox.folder / "installed" / "share" / "tavro"
        shared.mkdir(parents=True)
        (shared / "update-keyring.gpg").write_bytes(self.packages.keyring())
        tools = self.sandbox.folder / "tools"
        tools.mkdir()
        opener = tools / "xdg-open"
        opener.write_text(OPENER.format(record=self.record), encoding="utf-8")
        opener.chmod(0o755)
        self.sandbox.environment["PATH"] = f"{tools}:{self.sandbox.environment['PATH']}"

    def _start(self, authorities=None):
        own = [] if os.geteuid() == 0 else ["--map-root-user"]
        wrapper = [tool("unshare"), "--mount", *own, "--", "/bin/sh", "-ec", START, "start",
                   authorities or self.feed.authorities, self.program]
        self.application = Application(self.sandbox, self.display, wrapper=wrapper)

    def _offer(self, key="maker", version="1.4.0"):
        package = self.packages.package(version)
        self.feed.offer(package, self.packages.signature(package, key))
        return package

    def _wait_for_offer(self):
        window = self.display.wait_for_window(UPDATE_WINDOW)
        self.display.wait_for_focus(window)
        return window

    def _asked_for(self, path):
        return self.feed.requests.count(path)

    def _downloads(self):
        return pathlib.Path(self.sandbox.environment["XDG_DATA_HOME"]) / "TAVRO" / "Updates"

    def _everything_downloaded(self):
        return [path for path in self._downloads().rglob("*") if not path.is_dir()]

    def _check_manually(self):
        # The first item of the menu.
        self.display.activate(self.application.window)
        self.application.surface.click("menu")
        self.display.tap("Down", "Return")

    def test_an_update_is_offered_installed_and_opened(self):
        package = self._offer()
        self._start()
        window = self._wait_for_offer()
        self.assertEqual(self.display.size(window), (520, 410))
        self.display.tap("Return")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        file = self._downloads() / "1.4.0" / "tavro.deb"
        self.assertEqual(file.read_bytes(), package)
        self.assertEqual(self._everything_downloaded(), [file])
        self.assertEqual(stat.S_IMODE(file.stat().st_mode), 0o600)
        for folder in (file.parent, file.parent.parent):
            self.assertEqual(stat.S_IMODE(folder.stat().st_mode), 0o700)
        wait_for(self.record.exists, "the package to be opened")
        self.assertIn(self.record.read_text(encoding="utf-8").strip(), (str(file), f"file://{file}"))

    def test_a_package_of_somebody_else_is_not_opened(self):
        self._offer(key="stranger")
        self._start()
        self._wait_for_offer()
        self.display.tap("Return")
        # The button answers again only when the first attempt has ended.
        wait_for(lambda: self._try_again() > 1, "a second attempt")
        self.assertTrue(self.application.program.is_running())
        self.assertFalse(self.record.exists())

    def _try_again(self):
        self.display.tap("Return")
        return self._asked_for("/tavro.deb")

    def test_quitting_ends_a_download_and_leaves_nothing(self):
        self._offer()
        self.feed.answers["/tavro.deb"] = None
        self._start()
        self._wait_for_offer()
        self.display.tap("Return")
        wait_for(lambda: self._asked_for("/tavro.deb"), "the download")
        self.display.activate(self.application.window)
        self.display.tap("ctrl+q")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.assertEqual(self._everything_downloaded(), [])
        self.assertFalse(self.record.exists())

    def test_closing_the_main_window_ends_the_program_with_the_offer_open(self):
        self._offer()
        self._start()
        self._wait_for_offer()
        # Not by keys: which of the two windows has them may still change right after the offer's appearance.
        panel = WindowList(self.sandbox)
        self.addCleanup(panel.close)
        panel.close_window(self.application.window)
        self.assertEqual(self.application.program.wait_for_end(), 0)

    def test_a_download_that_stalls_leaves_the_keys_to_play(self):
        JackServer(self.sandbox)
        recorder = Recorder(self.sandbox)
        self._offer()
        self.feed.stall("/tavro.deb", 100)
        self._start()
        recorder.wait_for_connection()
        self._download_until_it_stalls()
        self.display.activate(self.application.window)
        self.display.press("a")
        recorder.wait_for_messages(1)
        self.display.release("a")
        messages = recorder.wait_for_messages(2)
        self.assertEqual([message[:2] for message in messages], [[0x90, 60], [0x80, 60]])
        self.assertEqual([file.stat().st_size for file in self._everything_downloaded()], [100])
        self.display.tap("ctrl+q")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.assertEqual(self._everything_downloaded(), [])
        self.assertFalse(self.record.exists())

    def test_the_next_download_removes_what_a_killed_program_has_left(self):
        package = self._offer()
        self.feed.stall("/tavro.deb", 100)
        self._start()
        self._download_until_it_stalls()
        left = self._everything_downloaded()
        os.kill(self.application.program.pid, signal.SIGKILL)
        self.application.program.wait_for_end()
        self.assertEqual(self._everything_downloaded(), left)
        self.feed.answer("/tavro.deb", 200, package)
        self._start()
        self._wait_for_offer()
        self.display.tap("Return")
        self.assertEqual(self.application.program.wait_for_end(), 0)
        self.assertEqual(self._everything_downloaded(), [self._downloads() / "1.4.0" / "tavro.deb"])
        wait_for(self.record.exists, "the package to be opened")

    def _download_until_it_stalls(self):
        self._wait_for_offer()
        self.display.tap("Return")
        wait_for(
            lambda: [file.stat().st_size for file in self._everything_downloaded()] == [100],
            "the part that comes",
        )
        self.assertRegex(self._everything_downloaded()[0].name, r"^\.download-")

    def test_an_authority_that_the_system_does_not_know_is_not_trusted(self):
        self._offer()
        nobody = self.sandbox.folder / "nobody"
        nobody.mkdir()
        self._start(authorities=nobody)
        self._check_manually()
        wait_for(lambda: len(self._alerts()) == 1, "the alert")
        self.assertEqual(self.feed.requests, [])
        self.assertEqual(self.display.windows(UPDATE_WINDOW), [])

    def test_the_user_is_told_of_a_failure_only_when_he_has_asked(self):
        self.feed.answer("/latest.json", 503, b"later")
        self._start()
        wait_for(lambda: self._asked_for("/latest.json"), "the automatic check")
        # An answer over loopback is there long before the menu has been opened.
        self.application.surface.click("menu")
        self.assertEqual(self._alerts(), [])
        self.display.tap("Escape")
        self._check_manually()
        wait_for(lambda: self._asked_for("/latest.json") == 2, "the second check")
        wait_for(lambda: len(self._alerts()) == 1, "the alert")
        self.display.wait_for_focus(self._alerts()[0])
        self.display.tap("Return")
        wait_for(lambda: not self._alerts(), "the alert to be closed")
        self.assertTrue(self.application.program.is_running())

    def _alerts(self):
        return [window for window in self.display.windows("TAVRO") if window != self.application.window]


if __name__ == "__main__":
    unittest.main()
