import ctypes
import json
import os
import signal
import subprocess
import threading

from .waiting import wait_for

_LIBC = ctypes.CDLL(None)


def _prepare_the_process():
    """Makes the kernel end a started program when the test itself is killed, so that nothing stays behind; and
    undoes what a shell ignores for its background jobs."""
    for ignored in (signal.SIGINT, signal.SIGQUIT, signal.SIGHUP, signal.SIGTSTP):
        signal.signal(ignored, signal.SIG_DFL)
    set_parent_death_signal = 1
    _LIBC.prctl(set_parent_death_signal, signal.SIGTERM)


class Program:
    """A running program whose standard output is kept line by line and whose errors go to a log file."""

    def __init__(self, name, arguments, environment, log_path, pass_fds=()):
        self.name = name
        # Whether it ends by itself, and in order, when its standard input is closed.
        self.ends_with_input = False
        # Called before the program is asked to end, and once it has ended.
        self.before_end = lambda: None
        self.after_end = lambda: None
        self._log_path = log_path
        self._lines = []
        # Of the lines so far; each is read as JSON once.
        self._objects = []
        self._read_as_objects = 0
        with open(log_path, "wb") as log:
            self.process = subprocess.Popen(
                [str(argument) for argument in arguments],
                env=environment,
                stdin=subprocess.PIPE,
                stdout=subprocess.PIPE,
                stderr=log,
                pass_fds=pass_fds,
                cwd=os.path.dirname(log_path),
                preexec_fn=_prepare_the_process,
            )
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def _read(self):
        for line in self.process.stdout:
            self._lines.append(line.decode("utf-8", "replace").rstrip("\n"))

    @property
    def pid(self):
        return self.process.pid

    @property
    def lines(self):
        return list(self._lines)

    @property
    def objects(self):
        """The lines that are JSON objects, read; not to be changed."""
        lines = self._lines[self._read_as_objects :]
        self._read_as_objects += len(lines)
        self._objects += [json.loads(line) for line in lines if line.startswith("{")]
        return self._objects

    def is_running(self):
        return self.process.poll() is None

    def write(self, line):
        self.process.stdin.write((line + "\n").encode())
        self.process.stdin.flush()

    def wait_for_line(self, condition, what):
        return self._wait_for(lambda: [line for line in self.lines if condition(line)], what)

    def wait_for_object(self, condition, what):
        return self._wait_for(lambda: [line for line in self.objects if condition(line)], what)

    def _wait_for(self, find, what):
        def look():
            # Asked first: what it wrote before its end has been read then.
            has_ended = not self.is_running() and not self._reader.is_alive()
            found = find()
            if not found and has_ended:
                raise AssertionError(f"{self.name} ended with {self.process.returncode} before {what}")
            return found

        return wait_for(look, f"{what} from {self.name}")[0]

    def wait_for_end(self):
        """The exit status, once the program has ended by itself and its whole output was read."""
        wait_for(lambda: not self.is_running(), f"the end of {self.name}")
        self._reader.join()
        return self.process.returncode

    def end(self):
        """Ends the program if it still runs, by force when requests do not help."""
        if self.is_running():
            self.before_end()
        if self.ends_with_input:
            self.process.stdin.close()
            self._wait(30)
        if self.is_running():
            self.process.terminate()
            self._wait(30)
        if self.is_running():
            self.process.kill()
            self.process.wait()
        self._reader.join()
        self.process.stdin.close()
        self.process.stdout.close()
        self.after_end()

    def _wait(self, seconds):
        try:
            self.process.wait(seconds)
        except subprocess.TimeoutExpired:
            pass

    def errors(self):
        with open(self._log_path, encoding="utf-8", errors="replace") as log:
            return log.read()

    def log(self):
        output = "\n".join(self._lines)
        return f"--- {self.name} (ended with {self.process.returncode})\n{output}\n{self.errors()}"
