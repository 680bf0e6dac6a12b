"""The machine that the other tests here run in tells the truth about what happens inside."""

import os
import pathlib
import sys
import tempfile
import unittest

from kernel import Kernel


class KernelTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.kernel = Kernel(os.environ["TAVRO_KERNEL_CACHE"])

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tavro-share-")
        self.addCleanup(folder.cleanup)
        self.share = pathlib.Path(folder.name)

    def test_status_output_and_share_come_back_and_the_host_stays_as_it_is(self):
        host = pathlib.Path(__file__).with_name("written-inside")
        (self.share / "given").write_text("from outside", encoding="utf-8")
        result = self.kernel.run(
            f"""
            cat given; echo; echo error >&2
            uname -s; id -u; pwd
            test -c /dev/snd/seq && test -c /dev/uinput && echo devices
            echo inside >taken
            echo inside >'{host}' && cat '{host}'
            exit 7
            """,
            share=self.share,
        )
        self.assertEqual(result.status, 7, result)
        expected = ["from outside", "error", "Linux", "0", str(self.share.resolve()), "devices", "inside"]
        self.assertEqual(result.output.splitlines(), expected)
        self.assertEqual((self.share / "taken").read_text(encoding="utf-8"), "inside\n")
        self.assertFalse(host.exists())

    def test_machine_that_dies_is_a_failure_though_an_old_status_is_there(self):
        (self.share / "status").write_text("0\n", encoding="utf-8")
        with self.assertRaisesRegex(AssertionError, "did not end: QEMU ended with"):
            self.kernel.run("echo c >/proc/sysrq-trigger", share=self.share)

    def test_script_that_hangs_is_ended(self):
        with self.assertRaisesRegex(AssertionError, "longer than 4 s"):
            self.kernel.run("sleep 1000", share=self.share, timeout=4)

    def test_unknown_module_is_told(self):
        with self.assertRaisesRegex(AssertionError, "no-such-module"):
            self.kernel.run("true", modules=("no-such-module",))


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
