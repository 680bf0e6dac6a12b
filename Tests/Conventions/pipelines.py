#!/usr/bin/env python3
"""Finds pipelines in shell scripts whose last part may stop reading before the part before it has written all.

That one is then ended by a broken pipe (SIGPIPE), and under pipefail the whole counts as failed: at random,
depending on who is quicker. What is read as a whole ("$(...)", then <<<) cannot die so.

pipelines.py ROOT         looks at every shell script, prints each such place as FILE:LINE: reason, status 1 if any
pipelines.py --self-test  expects each kind of such a place to be found, and nothing where all is read
"""

import re
import subprocess
import sys
from pathlib import Path

SHEBANG = re.compile(r"#!.*\b(ba|da|k|z)?sh\b")

# The command's name: which of its arguments make it stop early; None: always.
EARLY = {
    "head": None,
    "read": None,
    "true": None,
    ":": None,
    "grep": re.compile(r"-\w*[qlLm]\w*|--(quiet|silent|max-count|files-with)\S*"),
    "sed": re.compile(r".*(^|[\s;{'\"/0-9$])[qQ]\d*\s*($|[;}'\"])"),
    "awk": re.compile(r".*\bexit\b", re.DOTALL),
}
EARLY |= {"egrep": EARLY["grep"], "fgrep": EARLY["grep"], "gawk": EARLY["awk"], "mawk": EARLY["awk"]}
# What may stand before a command's name.
BEFORE = re.compile(r"\w+=\S*|!|command|env|exec|if|then|while|until|do|else|elif|\{|nice|sudo|time")


class Script:
    """A shell script taken apart just as far as it needs to find what stands behind a pipe."""

    def __init__(self, text):
        self._text = text
        self._at = 0
        # (line, words of the command) for each command that reads from a pipe.
        self.readers = []
        self._commands(end=None)

    def _line(self):
        return self._text.count("\n", 0, self._at) + 1

    def _take(self, count=1):
        taken = self._text[self._at : self._at + count]
        self._at += count
        return taken

    def _next(self, text):
        return self._text.startswith(text, self._at)

    def _commands(self, end):
        """Reads commands until the closing text, or to the end of the script."""
        words, word, reader = [], "", None
        depth = 0

        def finish_word():
            nonlocal word
            if word:
                words.append(word)
                word = ""

        def finish_command():
            nonlocal words, reader
            finish_word()
            if reader is not None and words:
                self.readers.append((reader, words))
                reader = None
            words = []

        while self._at < len(self._text):
            if end and not depth and self._next(end):
                finish_command()
                self._take(len(end))
                return
            character = self._text[self._at]
            if character == "\\":
                piece = self._take(2)
                word += "" if piece == "\\\n" else piece[1:]
            elif character == "'":
                word += self._single_quoted()
            elif character == '"':
                word += self._double_quoted()
            elif self._next("$(("):
                word += self._arithmetic()
            elif self._next("$(") or self._next("<(") or self._next(">("):
                self._take(2)
                self._commands(end=")")
                word += "$()"
            elif self._next("${"):
                word += self._parameter()
            elif character == "`":
                self._take()
                self._commands(end="`")
                word += "$()"
            elif character == "#" and not word:
                while self._at < len(self._text) and not self._next("\n"):
                    self._take()
            elif character == "(":
                # A subshell reads for its first command.
                depth += 1
                finish_word()
                words = []
                self._take()
            elif character == ")":
                depth = max(0, depth - 1)
                finish_command()
                self._take()
            elif self._next(">|"):
                finish_word()
                self._take(2)
            elif self._next("||") or self._next("&&") or self._next(";;"):
                finish_command()
                self._take(2)
            elif character == "|":
                finish_command()
                self._take(2 if self._next("|&") else 1)
                self._skip_to_command()
                reader = self._line()
            elif self._next(">&") or self._next("<&") or self._next("&>"):
                finish_word()
                self._take(2)
            elif character in ";&\n":
                finish_command()
                self._take()
            elif character in " \t":
                finish_word()
                self._take()
            else:
                word += self._take()
        finish_command()

    def _skip_to_command(self):
        self._at += re.match(r"(?:\s|\\\n)*", self._text[self._at :]).end()

    def _single_quoted(self):
        self._take()
        end = self._text.find("'", self._at)
        text = self._take((end if end >= 0 else len(self._text)) - self._at)
        self._take()
        return text

    def _double_quoted(self):
        self._take()
        text = ""
        while self._at < len(self._text) and not self._next('"'):
            if self._next("\\"):
                text += self._take(2)
            elif self._next("$(("):
                text += self._arithmetic()
            elif self._next("$("):
                self._take(2)
                self._commands(end=")")
                text += "$()"
            elif self._next("${"):
                text += self._parameter()
            else:
                text += self._take()
        self._take()
        return text

    def _arithmetic(self):
        end = self._text.find("))", self._at)
        return self._take((end + 2 if end >= 0 else len(self._text)) - self._at)

    def _parameter(self):
        text = self._take(2)
        while self._at < len(self._text) and not self._next("}"):
            if self._next("${"):
                text += self._parameter()
            elif self._next('"'):
                text += self._double_quoted()
            else:
                text += self._take(2 if self._next("\\") else 1)
        return text + self._take()


def early_readers(text):
    """(line, command) of each place."""
    found = []
    for line, words in Script(text).readers:
        while words and BEFORE.fullmatch(words[0]):
            words = words[1:]
        name = words[0].rsplit("/", 1)[-1] if words else ""
        if name in EARLY:
            stops = EARLY[name]
            if stops is None or any(stops.match(word) for word in words[1:]):
                found.append((line, " ".join(words)))
    return found


def scripts(root):
    listed = subprocess.run(
        ["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL,
        check=False,
    )
    if listed.returncode == 0:
        files = [Path(root) / name for name in listed.stdout.decode().split("\0") if name]
    else:
        files = [path for path in Path(root).rglob("*") if "build" not in path.relative_to(root).parts]
    for path in sorted(files):
        if not path.is_file() or path.is_symlink():
            continue
        with open(path, "rb") as file:
            first = file.readline(200).decode("utf-8", "replace")
        if path.suffix in (".sh", ".bash") or SHEBANG.match(first):
            yield path


def check(root):
    count = 0
    places = []
    for path in scripts(root):
        count += 1
        for line, command in early_readers(path.read_text(encoding="utf-8")):
            places.append(f"{path.relative_to(root)}:{line}: \"{command}\" may end what writes to it by a broken pipe")
    print("\n".join([*places, f"{count} scripts"]))
    assert count > 0, "no script was found: nothing was checked"
    return 1 if places else 0


STOPPING = r"""
a | grep -q x
a 2>/dev/null | grep -q 'x$'
a | b | grep -Fq x
a | grep x | head -1
if ! "$tool" --version | grep -q '19'; then
x="$(a | head -n 1)"
x=`a | head -n 1`
y <(a | sort | head)
a |
    head
a | \
    grep --quiet x
a |& grep -m1 x
a | sed 5q
a | sed -n '/x/{p;q}'
a | awk 'NR == 1 { print; exit }'
a | LC_ALL=C grep -q x
a | command grep -l x
a | read -r line
a | /usr/bin/head -c 3
[[ -n $(a | grep -q x) ]] && b
(a; b) | head
{ a; b; } | head
for x in $(a | head); do b; done
"${x:-"$(a | head)"}"
a | true
( (a | head -1) )
"""

READING = r"""
grep -q x <<<"$a"
grep -q x file
a | grep x
a | grep -v quiet
a | grep -c x
a || head -1 file
a; head -1 file
a && grep -q x file
a | sort | uniq
a | sed 's/q/x/; s/ q / /'
a | sed -n '/x/p'
a | awk '{ print }'
# a | head
echo 'a | head'
echo "a | head"
echo a \| head
case "$x" in
a | head1) b ;;
esac
a >|file
x=$((1 | 2))
[[ $x =~ (a|b) ]]
tail -1 file
head -1 file | tail -1
echo "${x//|/ }"
"""


def self_test():
    for line in re.split(r"\n(?=\S)", STOPPING.strip("\n")):
        assert len(early_readers(line)) == 1, f"nothing, or too much, was found in: {line} {early_readers(line)}"
    for line in READING.strip("\n").split("\n"):
        assert not early_readers(line), f"this reads all: {line}"
    assert early_readers("a\n\nb | head\n") == [(3, "head")]
    # One after the other they are not taken for each other's parts.
    assert len(early_readers(STOPPING)) == len(re.split(r"\n(?=\S)", STOPPING.strip("\n")))
    assert not early_readers(READING)
    print("each kind is found")
    return 0


if __name__ == "__main__":
    sys.exit(self_test() if sys.argv[1] == "--self-test" else check(sys.argv[1]))
