import json
import os
import pathlib
import shutil
import subprocess
import tempfile

from .program import Program

PACKAGES = {
    "Xvfb": "xvfb",
    "dbus-daemon": "dbus-daemon",
    "dpkg-deb": "dpkg",
    "fluidsynth": "fluidsynth",
    "gpg": "gnupg",
    "gpgconf": "gnupg",
    "jack_connect": "jackd2",
    "jack_lsp": "jackd2",
    "jack_property": "jackd2",
    "jackd": "jackd2",
    "openbox": "openbox",
    "openssl": "openssl",
    "pipewire": "pipewire",
    "pw-dump": "pipewire-bin",
    "pw-jack": "pipewire-jack",
    "pw-link": "pipewire-bin",
    "pw-metadata": "pipewire-bin",
    "xdotool": "xdotool",
    "setpriv": "util-linux",
    "setsid": "util-linux",
    "sway": "sway",
    "swaymsg": "sway",
    "unshare": "util-linux",
    "wireplumber": "wireplumber",
    "setxkbmap": "x11-xkb-utils",
    "xev": "x11-utils",
    "xmodmap": "x11-xserver-utils",
    "xprop": "x11-utils",
    "xset": "x11-xserver-utils",
    "xterm": "xterm",
    "xwininfo": "x11-utils",
}

# What a sanitizer or a coverage build needs to know; nothing else of the caller's environment is handed on.
HANDED_ON = ("ASAN_", "TSAN_", "UBSAN_", "LSAN_", "GCOV_", "LLVM_PROFILE_")


def tool(name):
    """The path of a tool. One that is missing is a failure: a test that did not run has shown nothing."""
    path = shutil.which(name)
    if path is None:
        raise AssertionError(f"{name} is not installed; this test needs the package {PACKAGES[name]}")
    return path


def built_program(variable):
    """The path of a program under test, which the build hands over in an environment variable."""
    path = os.environ.get(variable)
    if not path or not os.access(path, os.X_OK):
        raise AssertionError(f"{variable} names no program ({path!r}); ctest sets it")
    return path


class Sandbox:
    """Folders and an environment of its own, and the programs that were started in it."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tavro-e2e-"))
        self._programs = []
        self._at_close = []
        self.environment = {
            name: value for name, value in os.environ.items() if name.startswith(HANDED_ON)
        } | {
            "PATH": os.environ.get("PATH", os.defpath),
            "LANG": "C.UTF-8",
            "HOME": self._make_folder("home"),
            "XDG_CONFIG_HOME": self._make_folder("home/.config"),
            "XDG_DATA_HOME": self._make_folder("home/.local/share"),
            "XDG_CACHE_HOME": self._make_folder("home/.cache"),
            "XDG_STATE_HOME": self._make_folder("home/.local/state"),
            "XDG_RUNTIME_DIR": self._make_folder("runtime"),
            "TMPDIR": self._make_folder("tmp"),
            # What the session of whoever runs the tests does meanwhile is not for the programs in here.
            "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self.folder}/no-system-bus",
            "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.folder}/no-session-bus",
        }
        self._end_the_tour()

    def settings_file(self):
        """Where the program keeps its settings; there is none before it has stored one."""
        return pathlib.Path(self.environment["XDG_CONFIG_HOME"]) / "tavro" / "tavro.json"

    def settings(self):
        """What is stored."""
        return json.loads(self.settings_file().read_text(encoding="utf-8"))

    def store(self, settings):
        """Puts these settings in place of what is stored."""
        self.settings_file().write_text(json.dumps(settings), encoding="utf-8")

    def begin_as_new_user(self):
        """Forgets the settings, so that the program greets whoever starts it."""
        self.settings_file().unlink()

    def _end_the_tour(self):
        # The quick tour, which a new user is shown, would have the keys.
        self.settings_file().parent.mkdir()
        self.store({"TAVRO.TutorialCompleted.v1": True})

    def _make_folder(self, name):
        folder = self.folder / name
        folder.mkdir(parents=True, mode=0o700)
        return str(folder)

    def start(self, name, arguments, pass_fds=()):
        log_path = self.folder / f"{len(self._programs)}-{name}.log"
        program = Program(name, arguments, self.environment, str(log_path), pass_fds)
        self._programs.append(program)
        return program

    def run(self, *arguments, environment=None):
        """Runs a short program to its end; the result carries its status and output. A program that hangs
        is ended and has failed."""
        command = [str(argument) for argument in arguments]
        try:
            return subprocess.run(
                command,
                env=self.environment | (environment or {}),
                stdin=subprocess.DEVNULL,
                capture_output=True,
                text=True,
                timeout=30,
                check=False,
            )
        except subprocess.TimeoutExpired:
            return subprocess.CompletedProcess(command, 1, "", f"{command[0]} did not end by itself")

    def at_close(self, action):
        """Has something done before the programs are ended."""
        self._at_close.append(action)

    def close(self):
        """Ends what still runs, the last started first, and removes the folders. Returns all logs."""
        for action in reversed(self._at_close):
            action()
        for program in reversed(self._programs):
            program.end()
        logs = "\n".join(program.log() for program in self._programs)
        shutil.rmtree(self.folder, ignore_errors=True)
        return logs
