#!/usr/bin/env python3
"""Checks what may know what in Sources/: see docs/decisions/0002-layers-and-three-libraries.md.

layering.py ROOT         checks the tree, prints every violation as FILE:LINE: reason, status 1 if there is one
layering.py --self-test  plants every kind of violation in a small tree and expects each to be reported
"""

import os
import re
import sys
import tempfile
from pathlib import Path

# Folder: the folders that its files may include. Lower layers first; none includes an upper one.
ALLOWED_FOLDERS = {
    "Concurrency": {"Concurrency"},
    "PerformanceModel": {"PerformanceModel"},
    "KeyboardMapping": {"PerformanceModel", "KeyboardMapping"},
    "NoteEngine": {"PerformanceModel", "KeyboardMapping", "NoteEngine"},
    "MidiOutput": {"Concurrency", "PerformanceModel", "MidiOutput"},
    "KeyboardInput": {"Concurrency", "PerformanceModel", "KeyboardMapping", "KeyboardInput"},
    "Updates": {"Concurrency", "PerformanceModel", "Updates"},
}
LOWER = set(ALLOWED_FOLDERS)
ALLOWED_FOLDERS["ApplicationShell"] = LOWER | {"ApplicationShell"}
ALLOWED_FOLDERS["UserInterface"] = LOWER | {"ApplicationShell", "UserInterface"}
ALLOWED_FOLDERS["Player"] = LOWER | {"ApplicationShell", "Player"}
ALLOWED_FOLDERS["Platform"] = LOWER | {"ApplicationShell", "Platform"}

# File: single headers of an upper folder that it may include, each for a reason.
ALLOWED_FILES = {
    # The layout is one of the settings; the header is an enumeration and nothing else.
    "PerformanceModel/PerformanceState.h": {"KeyboardMapping/KeyboardLayoutKind.h"},
    # Which keys stand for a chord's notes can only be told by asking what each key would play.
    "KeyboardMapping/KeyboardHighlightResolver.cpp": {"NoteEngine/ChordVoicing.h"},
}

# The places that choose the adapters: they may include every folder, and ask for the platform.
COMPOSITION_ROOT = re.compile(r"ApplicationShell/AppMain\w*\.\w+|Player/(main|PlayerMain)\.cpp")

STANDARD_HEADER = re.compile(r"[a-z_0-9]+")
CORE_LIBRARY_HEADER = re.compile(r"nlohmann/json(_fwd)?\.hpp|utf8proc\.h")
QT_HEADER = re.compile(r"Qt?[A-Z]\w*|Qt[A-Z]\w*/\w+(\.h)?")
QUICK_HEADER = re.compile(r"(QQuick|QQml|QJS)\w*|Qt(Quick|Qml)\w*(/.*)?")

PLATFORM_QUESTION = re.compile(
    r"\b(__linux__|__linux|linux|__gnu_linux__|__unix__|__APPLE__|__MACH__|_WIN32|_WIN64|__FreeBSD__"
    r"|Q_OS_\w+|Q_WS_\w+|TARGET_OS_\w+|__has_include)\b"
)
CONDITION = re.compile(r"\s*#\s*(if|ifdef|ifndef|elif|elifdef|elifndef)\b(.*)")
INCLUDE = re.compile(r'\s*#\s*(?:include|import)\s*(?:"([^"]+)"|<([^>]+)>)')
CMAKE_TARGET = re.compile(
    r"\b(?:(?:qt6?_)?add_(?:library|executable|qml_module)|target_sources)\s*\(\s*(\w+)([^)]*)\)"
)
SOURCE_SUFFIXES = {".h", ".hpp", ".cpp", ".mm"}


def logical_lines(text):
    """Numbered lines, a line continued by a backslash taken as one."""
    number, start, pending = 0, 1, ""
    for line in text.split("\n"):
        number += 1
        if not pending:
            start = number
        if line.endswith("\\"):
            pending += line[:-1] + " "
            continue
        yield start, pending + line
        pending = ""


def includes_of(text):
    """(line number, path, whether in quotes) of every include."""
    for number, line in logical_lines(text):
        found = INCLUDE.match(line)
        if found:
            yield number, found.group(1) or found.group(2), found.group(1) is not None


def library_sources(sources, library):
    """The source files that CMake lists for the library, relative to Sources/."""
    listed = set()
    for script in sorted(sources.rglob("CMakeLists.txt")):
        text = re.sub(r"#.*", "", script.read_text(encoding="utf-8"))
        for target, arguments in CMAKE_TARGET.findall(text):
            if target != library:
                continue
            for word in arguments.split():
                file = Path(os.path.normpath(script.parent / word.strip('"')))
                if file.suffix in SOURCE_SUFFIXES and file.is_file():
                    listed.add(file.relative_to(os.path.normpath(sources)).as_posix())
    return listed


def with_everything_included(files, includes):
    """The files and every file of the project that they reach, with the chain that leads there."""
    chains = {file: [file] for file in sorted(files)}
    waiting = sorted(files)
    while waiting:
        file = waiting.pop()
        for _, path, is_quoted in includes[file]:
            if is_quoted and path in includes and path not in chains:
                chains[path] = chains[file] + [path]
                waiting.append(path)
    return chains


def include_cycles(includes):
    """Each cycle of includes once, as the list of its files."""
    finished, cycles = set(), []

    def visit(file, chain):
        if file in chain:
            cycles.append(chain[chain.index(file):] + [file])
            return
        if file in finished:
            return
        for _, path, is_quoted in includes[file]:
            if is_quoted and path in includes:
                visit(path, chain + [file])
        finished.add(file)

    for file in sorted(includes):
        visit(file, [])
    return cycles


def check(root):
    """Every violation in the tree, as one line each."""
    sources = Path(root) / "Sources"
    texts = {
        file.relative_to(sources).as_posix(): file.read_text(encoding="utf-8")
        for file in sorted(sources.rglob("*"))
        if file.suffix in SOURCE_SUFFIXES
    }
    includes = {file: list(includes_of(text)) for file, text in texts.items()}
    violations = []

    def report(file, number, reason):
        violations.append(f"Sources/{file}:{number}: {reason}")

    for file, text in texts.items():
        folder = file.split("/")[0]
        is_root = COMPOSITION_ROOT.fullmatch(file) is not None
        if folder not in ALLOWED_FOLDERS:
            report(file, 1, f"the folder {folder} has no place in the layers")
            continue
        for number, path, is_quoted in includes[file]:
            if is_quoted:
                check_project_include(file, folder, is_root, number, path, includes, report)
            elif folder != "Platform" and not is_root and not (
                STANDARD_HEADER.fullmatch(path) or CORE_LIBRARY_HEADER.fullmatch(path) or QT_HEADER.fullmatch(path)
            ):
                report(file, number, f"<{path}> is a system header; only Platform/ includes those")
        if folder != "Platform" and not is_root:
            for number, line in logical_lines(text):
                condition = CONDITION.match(line)
                question = condition and PLATFORM_QUESTION.search(condition.group(2))
                if question:
                    report(file, number, f"asks for the platform ({question.group(1)}) outside Platform/")

    for library, forbidden, reason in (
        ("tavro_core", lambda path: not (STANDARD_HEADER.fullmatch(path) or CORE_LIBRARY_HEADER.fullmatch(path)),
         "the core knows the C++ library, nlohmann/json and utf8proc only"),
        ("tavro_shell", QUICK_HEADER.fullmatch, "the shell does without Qt Quick"),
    ):
        listed = library_sources(sources, library)
        if not listed:
            violations.append(f"Sources/CMakeLists.txt:1: no source file of {library} found: nothing was checked")
        for file, chain in with_everything_included(listed, includes).items():
            for number, path, is_quoted in includes[file]:
                if not is_quoted and forbidden(path):
                    road = "" if len(chain) == 1 else f" (reached by {' -> '.join(chain)})"
                    report(file, number, f"<{path}> in {library}: {reason}{road}")

    for cycle in include_cycles(includes):
        report(cycle[0], 1, f"includes itself: {' -> '.join(cycle)}")
    return violations


def check_project_include(file, folder, is_root, number, path, includes, report):
    if path not in includes:
        # Headers that the build makes (moc) are included by their plain names.
        if "/" in path or not re.fullmatch(r"\w+\.moc|moc_\w+\.cpp", path):
            report(file, number, f'"{path}" is no file under Sources/; project includes are rooted there')
        return
    target = path.split("/")[0]
    if is_root or target in ALLOWED_FOLDERS[folder] or path in ALLOWED_FILES.get(file, ()):
        return
    if target == "Platform":
        report(file, number, f'"{path}": only AppMain and the player\'s main choose adapters')
    else:
        report(file, number, f'"{path}": {folder} does not know {target}')


GOOD_TREE = {
    "CMakeLists.txt": "add_library(tavro_core STATIC # the core\n    PerformanceModel/Scale.cpp)\n"
    "add_library(tavro_shell STATIC MidiOutput/Output.cpp)\n",
    "PerformanceModel/Scale.h": "#pragma once\n#include <vector>\n",
    "PerformanceModel/Scale.cpp": '#include "PerformanceModel/Scale.h"\n#include <nlohmann/json.hpp>\n',
    "MidiOutput/Output.h": '#pragma once\n#include "PerformanceModel/Scale.h"\n#include <QObject>\n',
    "MidiOutput/Output.cpp": '#include "MidiOutput/Output.h"\n#include "moc_Output.cpp"\n',
    "ApplicationShell/AppMain.cpp": '#include "Platform/Linux/Midi.h"\n#include "UserInterface/View.h"\n'
    "#if defined(__linux__)\n#endif\n",
    "UserInterface/View.h": '#include "MidiOutput/Output.h"\n#include <QQuickItem>\n',
    "Platform/Linux/Midi.h": '#include "MidiOutput/Output.h"\n#include <jack/jack.h>\n#ifdef __linux__\n#endif\n',
}

# What is added to which file of the good tree, and what the report must then say about it.
PLANTED = [
    ("PerformanceModel/Scale.cpp", "#include <QString>", "Sources/PerformanceModel/Scale.cpp:3: <QString> in tavro_core"),
    ("PerformanceModel/Scale.h", "#include <QtCore/QObject>", "<QtCore/QObject> in tavro_core"),
    ("PerformanceModel/Scale.h", "#include <unistd.h>", "Sources/PerformanceModel/Scale.h:3: <unistd.h> is a system header"),
    ("MidiOutput/Output.cpp", "#include <jack/jack.h>", "<jack/jack.h> is a system header"),
    ("MidiOutput/Output.cpp", "#include <alsa/asoundlib.h>", "<alsa/asoundlib.h> is a system header"),
    ("UserInterface/View.h", "#include <X11/Xlib.h>", "<X11/Xlib.h> is a system header"),
    ("UserInterface/View.h", "#include <xcb/xcb.h>", "<xcb/xcb.h> is a system header"),
    ("UserInterface/View.h", "#  include <linux/input.h>", "<linux/input.h> is a system header"),
    ("UserInterface/View.h", "#import <AppKit/AppKit.h>", "<AppKit/AppKit.h> is a system header"),
    ("UserInterface/View.h", "#include <QuartzCore/CALayer.h>", "<QuartzCore/CALayer.h> is a system header"),
    ("MidiOutput/Output.h", "#include <QtQuick/QQuickItem>", "the shell does without Qt Quick"),
    ("MidiOutput/Output.cpp", "#include <QQmlEngine>", "the shell does without Qt Quick"),
    ("MidiOutput/Output.cpp", "#ifdef Q_OS_LINUX\n#endif", "asks for the platform (Q_OS_LINUX)"),
    ("MidiOutput/Output.cpp", "#if defined(__APPLE__)\n#endif", "asks for the platform (__APPLE__)"),
    ("MidiOutput/Output.cpp", "#if 1\n#elif \\\n  _WIN32\n#endif", "asks for the platform (_WIN32)"),
    ("UserInterface/View.h", "# ifndef __linux__\n#endif", "asks for the platform (__linux__)"),
    ("MidiOutput/Output.cpp", '#include "Platform/Linux/Midi.h"', "choose adapters"),
    ("UserInterface/View.h", '#include "Platform/Linux/Midi.h"', "choose adapters"),
    ("Platform/Linux/Midi.h", '#include "UserInterface/View.h"', "Platform does not know UserInterface"),
    ("MidiOutput/Output.cpp", '#include "UserInterface/View.h"', "MidiOutput does not know UserInterface"),
    ("PerformanceModel/Scale.cpp", '#include "MidiOutput/Output.h"', "PerformanceModel does not know MidiOutput"),
    ("PerformanceModel/Scale.cpp", '#include "MidiOutput/Output.h"', "reached by PerformanceModel/Scale.cpp"),
    ("PerformanceModel/Scale.cpp", '#include "Scale.h"', "is no file under Sources/"),
    ("PerformanceModel/Scale.h", '#include "PerformanceModel/Scale.h"', "includes itself"),
    ("Helpers/Things.h", "#include <vector>", "the folder Helpers has no place"),
    ("CMakeLists.txt", None, "no source file of tavro_core found"),
]


def self_test():
    failures = 0
    cases = [(None, "", None)] + PLANTED
    for file, addition, expected in cases:
        with tempfile.TemporaryDirectory() as folder:
            for path, text in GOOD_TREE.items():
                target = Path(folder) / "Sources" / path
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text(text, encoding="utf-8")
            if file:
                target = Path(folder) / "Sources" / file
                target.parent.mkdir(parents=True, exist_ok=True)
                old = target.read_text(encoding="utf-8") if target.exists() else ""
                target.write_text("" if addition is None else f"{old}{addition}\n", encoding="utf-8")
            found = check(folder)
        if expected is None:
            is_right = not found
        else:
            is_right = any(expected in line for line in found)
        if not is_right:
            failures += 1
            print(f"{file}: {addition!r}: expected {expected or 'no violation'}, reported {found}")
    print(f"{len(cases)} trees checked, {failures} wrong")
    return 1 if failures else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    if len(arguments) != 1 or arguments[0].startswith("-"):
        print(__doc__, file=sys.stderr)
        return 2
    violations = check(arguments[0])
    for violation in violations:
        print(violation)
    print(f"{len(violations)} violations")
    return 1 if violations else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
