import array
import pathlib
import sys

from . import pitch
from .sandbox import tool
from .waiting import wait_for

SOUNDS = pathlib.Path("/usr/share/sounds/sf2/TimGM6mb.sf2")
SOUNDS_PACKAGE = "timgm6mb-soundfont"
NAME = "Synth"
PORT = f"{NAME}:midi_00"

RECORDED_RATE = 48000
# Every second sample carries pitch enough, at a quarter of the work.
STEP = 2
RATE = RECORDED_RATE // STEP
BYTES_PER_FRAME = 4
PIECE_FRAMES = round(pitch.PIECE_SECONDS * RECORDED_RATE)


class Synthesizer:
    """FluidSynth, which listens at a JACK MIDI port and renders to a file what it would make sound.

    It renders by a clock of its own, which is neither the server's nor the wall's. So the recording alone
    tells how long a note has sounded in it, and the waiting below goes by the recording.
    """

    def __init__(self, sandbox, server):
        if not SOUNDS.is_file():
            raise AssertionError(f"{SOUNDS} is not there; this test needs the package {SOUNDS_PACKAGE}")
        self._sandbox = sandbox
        self._recording = sandbox.folder / "recording.raw"
        # Up to where the recording was silent when it was looked at last.
        self._silent_frames = 0
        settings = {
            "midi.jack.id": NAME,
            "midi.jack.server": server.name,
            "midi.autoconnect": 0,
            "audio.file.name": self._recording,
            "audio.file.type": "raw",
            "audio.file.format": "s16",
            "audio.file.endian": sys.byteorder,
            "synth.sample-rate": RECORDED_RATE,
            # As loud as a single note can be without danger of being clipped.
            "synth.gain": 1.0,
        }
        command = [tool("fluidsynth"), "-q", "-m", "jack", "-a", "file"]
        for setting, value in settings.items():
            command += ["-o", f"{setting}={value}"]
        # Reverberation and chorus would blur the silences and the pitches.
        command += ["-R", 0, "-C", 0, SOUNDS]
        self.program = sandbox.start("fluidsynth", command)
        self.program.ends_with_input = True
        wait_for(lambda: PORT in server.ports(), f"the port {PORT}")

    def connect(self, source):
        """Connects a port to the synthesizer's."""
        done = self._sandbox.run(tool("jack_connect"), source, PORT)
        if done.returncode != 0:
            raise AssertionError(f"jack_connect {source} {PORT}: {done.stdout}{done.stderr}")

    def wait_for_sound(self, seconds):
        """Until a sound began so many seconds ago, or longer, in the recording; it may have faded since. The
        one that is waited for begins after the last silence that was waited for."""

        def is_there():
            end = self._frames()
            levels = pitch.levels(self._samples(self._silent_frames, end), RATE)
            first = next((index for index, level in enumerate(levels) if level > pitch.SILENCE), None)
            if first is None:
                self._silent_frames += len(levels) * PIECE_FRAMES
                return False
            return (len(levels) - first) * pitch.PIECE_SECONDS >= seconds

        wait_for(is_there, lambda: self._complaint(f"{seconds:g} s of sound"))

    def wait_for_silence(self, seconds):
        """Until the last so many seconds of the recording are silent."""
        count = round(seconds * RECORDED_RATE)

        def is_there():
            end = self._frames()
            levels = pitch.levels(self._samples(max(0, end - count), end), RATE)
            if end < count or max(levels) > pitch.SILENCE:
                return False
            self._silent_frames = end
            return True

        wait_for(is_there, lambda: self._complaint(f"{seconds:g} s of silence"))

    def _complaint(self, what):
        return f"{what} in a recording of {self._frames() / RECORDED_RATE:.2f} s"

    def stop(self):
        """Ends the program in order; the recording is complete then. Returns its samples, RATE a second."""
        self.program.write("quit")
        status = self.program.wait_for_end()
        if status != 0:
            raise AssertionError(f"fluidsynth ended with {status}")
        return self._samples(0, self._frames())

    def _frames(self):
        # The file comes to be a little after the port.
        return self._recording.stat().st_size // BYTES_PER_FRAME if self._recording.exists() else 0

    def _samples(self, start, end):
        """Those of the frames from `start` to `end`. STEP frames, both channels, make one, from -1 to 1."""
        whole = (end - start) // STEP * STEP
        if whole == 0:
            return []
        with open(self._recording, "rb") as recording:
            recording.seek(start * BYTES_PER_FRAME)
            values = array.array("h", recording.read(whole * BYTES_PER_FRAME))
        count = 2 * STEP
        full = count * 32768
        return [sum(values[first : first + count]) / full for first in range(0, len(values), count)]
