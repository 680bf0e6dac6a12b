import pathlib
import subprocess
import tempfile

from .initramfs import build_initramfs
from .package import unpacked_kernel
from .result import Result
from .tools import tool

# What the machine itself needs: the way to the host's files.
BASE_MODULES = ("virtio_pci", "9pnet_virtio", "9p", "overlay")

# For tests: the sequencer with a fine clock and Midi Through; keyboards made and read by programs.
MODULES = ("snd-seq", "snd-hrtimer", "snd-seq-dummy", "uinput", "evdev")

CONSOLE_LINES = 60


class Kernel:
    """Runs scripts inside the distribution's kernel, as root, each in a machine of its own.

    A script sees the host's files, may change them without anybody noticing, and finds no network, no user's
    files in its home and no other program. Starting a process takes many times as long as outside.
    """

    def __init__(self, cache):
        """`cache` is a folder in which the unpacked kernel is kept for the next time."""
        self._files = unpacked_kernel(cache)

    def run(self, script, share=None, modules=MODULES, timeout=60, memory=256):
        """Runs a shell script and returns its result. The folder `share`, which is the current one inside and
        has the same path there, keeps what is written to it; without it there is one for the time of the run.
        `timeout` is in seconds, `memory` in megabytes. A script whose end was not seen is an AssertionError.
        """
        with tempfile.TemporaryDirectory(prefix="tavro-kernel-") as temporary:
            folder = pathlib.Path(share or temporary).resolve()
            for name in ("output", "status"):
                (folder / name).unlink(missing_ok=True)
            (folder / "command").write_text(script, encoding="utf-8")
            initramfs = pathlib.Path(temporary) / "initramfs"
            build_initramfs(self._files, (*BASE_MODULES, *modules), folder, initramfs)
            console, end = self._boot(initramfs, folder, timeout, memory)
            try:
                # The machine's own status says nothing about what happened inside.
                status = int((folder / "status").read_text(encoding="utf-8"))
            except (OSError, ValueError):
                written = self._output(folder)
                tail = "\n".join(console.splitlines()[-CONSOLE_LINES:])
                raise AssertionError(
                    f"the script inside the kernel did not end: {end}\n--- its output\n{written}\n"
                    f"--- the console\n{tail}"
                ) from None
            return Result(status, self._output(folder), console)

    @staticmethod
    def _output(folder):
        try:
            return (folder / "output").read_text(encoding="utf-8", errors="replace")
        except OSError:
            return ""

    def _boot(self, initramfs, share, timeout, memory):
        image = next(path for name in ("vmlinux", "vmlinuz") if (path := self._files / name).exists())
        command = [
            tool("qemu-system-x86_64"),
            *("-machine", "q35", "-cpu", "max", "-smp", "1", "-m", str(memory)),
            # A kernel under hardware acceleration hangs where the host is a virtual machine itself.
            *("-accel", "tcg"),
            *("-nodefaults", "-no-user-config", "-no-reboot", "-display", "none", "-serial", "stdio"),
            *("-kernel", str(image), "-initrd", str(initramfs)),
            *("-append", "console=ttyS0 panic=-1 quiet"),
            *self._folder("host", "/", ",readonly=on"),
            *self._folder("share", share, ""),
        ]
        try:
            ended = subprocess.run(
                command,
                stdin=subprocess.DEVNULL,
                stdout=subprocess.PIPE,
                stderr=subprocess.STDOUT,
                timeout=timeout,
                check=False,
            )
        except subprocess.TimeoutExpired as expired:
            return (expired.stdout or b"").decode(errors="replace"), f"it took longer than {timeout} s"
        console = ended.stdout.decode(errors="replace")
        return console, f"QEMU ended with {ended.returncode}"

    @staticmethod
    def _folder(tag, path, options):
        # A comma separates options and is written twice where it is meant.
        quoted = str(path).replace(",", ",,")
        return (
            "-fsdev",
            f"local,id={tag},path={quoted},security_model=none,multidevs=remap{options}",
            "-device",
            f"virtio-9p-pci,fsdev={tag},mount_tag={tag}",
        )
