"""Drives tavro-play from outside: options, exit statuses, errors, and the MIDI files that it writes."""

import json
import os
import pathlib
import resource
import signal
import subprocess
import tempfile
import unittest

import mido

PLAYER = os.environ["TAVRO_PLAY"]
EXAMPLES = pathlib.Path(os.environ["TAVRO_EXAMPLES"])


def play(*arguments, script=""):
    return subprocess.run(
        [PLAYER, *arguments], input=script, capture_output=True, text=True, timeout=60, check=False
    )


def messages_printed(output):
    lines = [json.loads(line) for line in output.splitlines()]
    return [(line["t"], line["midi"]) for line in lines if "midi" in line]


class Usage(unittest.TestCase):
    def test_help_and_version(self):
        result = play("--help")
        self.assertEqual(result.returncode, 0)
        for option in (
            *("--format", "--out", "--preset", "--version", "SCRIPT"),
            *("--live", "--destination", "--list-destinations"),
        ):
            self.assertIn(option, result.stdout)
        result = play("--version")
        self.assertEqual(result.returncode, 0)
        self.assertRegex(result.stdout, r"^tavro-play \d+\.\d+\.\d+\n$")

    def test_wrong_usage(self):
        for arguments, reason in (
            (["--loud"], "loud"),
            (["--format", "xml"], '--format is text or jsonl, not "xml"'),
            (["a.keys", "b.keys"], "b.keys"),
            (["--out"], "out"),
            (["--live"], "live"),
            (["--live", "oss"], '--live is auto, alsa or jack, not "oss"'),
            (["--live", ""], '--live is auto, alsa or jack, not ""'),
            (["--destination", "Synth"], "--destination needs --live"),
            (["--live", "jack", "--destination", ""], "--destination needs a name"),
            (["--list-destinations", "a.keys"], "--list-destinations plays nothing"),
            (["--list-destinations", "--destination", "Synth"], "--list-destinations plays nothing"),
        ):
            with self.subTest(arguments=arguments):
                result = play(*arguments)
                self.assertEqual(result.returncode, 2)
                self.assertIn(reason, result.stderr)
                self.assertEqual(result.stdout, "")

    def test_a_bad_line_stops_before_anything_runs(self):
        result = play("--format", "jsonl", "-", script="down a\nup a\ndown aa\n")
        self.assertEqual(result.returncode, 2)
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.stderr, 'tavro-play: line 3: a key is exactly one character, not "aa"\n')

    def test_a_bad_line_leaves_an_old_file_as_it_was(self):
        with tempfile.TemporaryDirectory() as folder:
            target = pathlib.Path(folder, "old.mid")
            target.write_bytes(b"old")
            result = play("--out", str(target), script="boom")
            self.assertEqual(result.returncode, 2)
            self.assertEqual(target.read_bytes(), b"old")

    def test_files_that_cannot_be_read_or_written(self):
        with tempfile.TemporaryDirectory() as folder:
            for arguments in (
                [f"{folder}/missing.keys"],
                [folder],
                ["--preset", f"{folder}/missing.tvp", "-"],
                ["--out", f"{folder}/missing/out.mid", "-"],
            ):
                with self.subTest(arguments=arguments):
                    result = play(*arguments)
                    self.assertEqual(result.returncode, 1)
                    self.assertIn(folder, result.stderr)

    def test_a_file_that_cannot_be_written_whole_leaves_the_old_one(self):
        def small_files():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (10, 10))

        with tempfile.TemporaryDirectory() as folder:
            target = pathlib.Path(folder, "old.mid")
            target.write_bytes(b"old")
            result = subprocess.run(
                [PLAYER, "--out", str(target)], input="down a", capture_output=True, text=True, timeout=60,
                check=False, preexec_fn=small_files,
            )
            self.assertEqual(result.returncode, 1)
            self.assertEqual(result.stderr, f"tavro-play: {target}: File too large\n")
            self.assertEqual(target.read_bytes(), b"old")
            self.assertEqual(os.listdir(folder), ["old.mid"])

    def test_formats(self):
        script = "set humanizeVelocity 0\ndown a\n"
        self.assertEqual(play("--format", "jsonl", script=script).stdout, '{"t":0,"midi":[144,60,100]}\n')
        self.assertIn("90 3C 64  Note On C4", play(script=script).stdout)


class Presets(unittest.TestCase):
    STATE = {"velocity": 33, "humanizeVelocity": 0}

    def preset(self, content):
        file = tempfile.NamedTemporaryFile(suffix=".tvp")
        self.addCleanup(file.close)
        if not isinstance(content, (str, bytes)):
            content = json.dumps(content)
        file.write(content if isinstance(content, bytes) else content.encode())
        file.flush()
        return file.name

    def test_starts_with_its_settings(self):
        name = self.preset({"id": "1", "name": "Soft", "state": self.STATE, "isBuiltIn": False})
        result = play("--format", "jsonl", "--preset", name, script="down a")
        self.assertEqual(result.stdout, '{"t":0,"midi":[144,60,33]}\n')

    def test_bad_presets_are_named_with_the_reason(self):
        for content, reason in (
            ("", "empty"),
            ("{\n", "not JSON: the text ends too early, at line 2, column 1"),
            ("{\n x", "not JSON at line 2, column 2"),
            (b"\xff\xfe{", "not UTF-8"),
            (b"[" * 1000000, "objects and arrays more than 32 deep in each other"),
            (b" " * (1024 * 1024 + 1), "larger than 1 MiB, which no preset is"),
            ([], "expected a preset object"),
            ({"id": "1", "name": "Soft", "state": self.STATE}, '"isBuiltIn"'),
            ({"id": "1", "name": "Soft", "state": {"velocity": "3"}, "isBuiltIn": False}, '"velocity"'),
        ):
            with self.subTest(reason=reason):
                self.assert_refused(self.preset(content), reason)

    def assert_refused(self, name, reason):
        result = play("--preset", name, script="down a")
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stderr.startswith(f"tavro-play: {name}: "), result.stderr)
        self.assertIn(reason, result.stderr)
        self.assertEqual(result.stdout, "")

    def test_what_is_no_file_is_never_waited_for(self):
        with tempfile.TemporaryDirectory() as folder:
            pipe, dangling = f"{folder}/pipe.tvp", f"{folder}/dangling.tvp"
            os.mkfifo(pipe)
            os.symlink(f"{folder}/gone", dangling)
            self.assert_refused(pipe, "a device or a pipe, not a file")
            self.assert_refused("/dev/zero", "a device or a pipe, not a file")
            self.assert_refused(folder, "a folder, not a file")
            self.assert_refused(dangling, f"a link to {folder}/gone, which is not there")
            self.assert_refused(f"{folder}/none.tvp", "No such file or directory")

    def test_a_preset_from_standard_input(self):
        preset = {"id": "1", "name": "Soft", "state": self.STATE, "isBuiltIn": False}
        with tempfile.NamedTemporaryFile("w", suffix=".keys") as script:
            script.write("down a")
            script.flush()
            arguments = ("--format", "jsonl", "--preset", "-", script.name)
            result = play(*arguments, script="\ufeff" + json.dumps(preset))
            self.assertEqual(result.stdout, '{"t":0,"midi":[144,60,33]}\n', result.stderr)
            result = play(*arguments, script="{")
            self.assertEqual(result.returncode, 1)
            self.assertIn("tavro-play: -: not JSON", result.stderr)
            with open("/dev/zero", "rb") as endless:
                command = subprocess.run(
                    [PLAYER, *arguments], stdin=endless, capture_output=True, text=True, timeout=60, check=False
                )
            self.assertEqual(command.returncode, 1)
            self.assertIn("tavro-play: -: larger than 1 MiB", command.stderr)

    def test_the_examples_are_heard(self):
        script = "set humanizeVelocity 0\ndown y\nat 500\nup y\nat 600\ndown q\n"
        for name, notes in (
            # A ninth chord over its bass; Smart Hold keeps it, and the next cluster takes its place.
            ("dorian-pads", [50, 38, 60, 64, 65, 74, 62, 84, 88, 89]),
            # A triad over its bass, then a single melody note.
            ("songwriter-split", [55, 43, 59, 62, 91]),
        ):
            with self.subTest(name=name):
                result = play("--format", "jsonl", "--preset", str(EXAMPLES / f"{name}.tvp"), script=script)
                self.assertEqual(result.returncode, 0, result.stderr)
                messages = messages_printed(result.stdout)
                self.assertEqual([m[1] for _, m in messages if m[0] & 0xF0 == 0x90], notes)


class MidiFiles(unittest.TestCase):
    def scripts(self):
        found = sorted(EXAMPLES.glob("*.keys"))
        self.assertGreaterEqual(len(found), 3)
        return found

    def test_an_independent_reader_finds_every_message_at_its_time(self):
        for script in self.scripts():
            with self.subTest(script=script.name), tempfile.TemporaryDirectory() as folder:
                target = pathlib.Path(folder, "out.mid")
                result = play("--format", "jsonl", "--out", str(target), str(script))
                self.assertEqual(result.returncode, 0, result.stderr)
                file = mido.MidiFile(target)
                self.assertEqual(file.type, 0)
                self.assertEqual(len(file.tracks), 1)
                tempo = [m.tempo for m in file.tracks[0] if m.type == "set_tempo"]
                self.assertEqual(len(tempo), 1)
                ticks, read = 0, []
                for message in file.tracks[0]:
                    ticks += message.time
                    if not message.is_meta:
                        seconds = mido.tick2second(ticks, file.ticks_per_beat, tempo[0])
                        read.append((round(seconds * 1000), message.bytes()))
                self.assertEqual(read, messages_printed(result.stdout))

    def test_the_examples_leave_no_note_on(self):
        for script in self.scripts():
            with self.subTest(script=script.name):
                result = play("--format", "jsonl", str(script))
                sounding = {}
                for _, (status, note, _) in messages_printed(result.stdout):
                    change = {0x90: 1, 0x80: -1}.get(status & 0xF0, 0)
                    sounding[status & 0x0F, note] = sounding.get((status & 0x0F, note), 0) + change
                self.assertTrue(sounding)
                self.assertEqual({key: count for key, count in sounding.items() if count != 0}, {})


if __name__ == "__main__":
    unittest.main()
