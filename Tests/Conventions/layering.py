#!/usr/bin/env python3
"""Checks what may know what in Sources/: see docs/decisions/0002-layers-and-a-library-for-each-folder.md.

Every folder with a CMakeLists.txt is a room, and what its libraries and programs link is what its files may include:
the rooms of those libraries, and on from them over PUBLIC links. That, and what links cannot say, is held here.

layering.py ROOT         checks the tree, prints every violation as FILE:LINE: reason, status 1 if there is one
layering.py --self-test  plants every kind of violation in a small tree and expects each to be reported
"""

import re
import sys
import tempfile
from pathlib import Path, PurePosixPath

# The library that stands for all that does without Qt and without a platform.
CORE = "tavro_core"
# Adapters know this room, its sub-folders and each other, and nothing else but what those interfaces are made of.
INTERFACES = "PlatformInterfaces"
# The only rooms of adapters, of system headers and of questions for the platform; programs choose among adapters.
ADAPTERS = "Platform"
PROGRAMS = "Programs"
# The only room, besides the programs, that draws.
WINDOW = "UserInterface"

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
CMAKE_COMMAND = re.compile(r"\b(\w+)\s*\(([^()]*(?:\([^()]*\)[^()]*)*)\)")
TARGET_COMMANDS = {"add_library", "add_executable", "qt_add_qml_module", "target_sources"}
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


def is_under(folder, top):
    return folder == top or folder.startswith(top + "/")


class Rooms:
    """The folders that have libraries or programs of their own, and what these link."""

    def __init__(self, sources):
        self.folders = set()
        # Library: its folder, what it links, and what of that it hands on.
        self.home, self.links, self.handed_on = {}, {}, {}
        # (folder, file) that a CMakeLists.txt names although it belongs to another room.
        self.strangers = []
        texts = {
            script.parent.relative_to(sources).as_posix(): re.sub(r"#.*", "", script.read_text(encoding="utf-8"))
            for script in sorted(sources.rglob("CMakeLists.txt"))
        }
        self.folders = {folder for folder, text in texts.items() if re.search(r"\badd_(library|executable)\b", text)}
        for folder, text in texts.items():
            for command, arguments in CMAKE_COMMAND.findall(text):
                self.read(folder, command, arguments.split())

    def read(self, folder, command, words):
        if command in TARGET_COMMANDS:
            if command.startswith("add_"):
                self.home[words[0]] = folder
            for word in words[1:]:
                file = PurePosixPath(word.strip('"'))
                if file.suffix in SOURCE_SUFFIXES and "$" not in word and self.of(folder, file) != folder:
                    self.strangers.append((folder, word))
        elif command == "target_link_libraries":
            links = self.links.setdefault(words[0], set())
            handed_on = self.handed_on.setdefault(words[0], set())
            kind = "PUBLIC"
            for word in words[1:]:
                if word in ("PUBLIC", "PRIVATE", "INTERFACE"):
                    kind = word
                    continue
                links.add(word)
                if kind != "PRIVATE":
                    handed_on.add(word)

    def of(self, folder, file):
        """The room of a file that is named in a folder."""
        place = (PurePosixPath("/") / folder / file).parent
        if ".." in file.parts:
            return None
        while place != PurePosixPath("/"):
            if place.relative_to("/").as_posix() in self.folders:
                return place.relative_to("/").as_posix()
            place = place.parent
        return "." if "." in self.folders else None

    def reached(self, names):
        """The libraries, and those that come with them."""
        found, waiting = set(), list(names)
        while waiting:
            name = waiting.pop()
            if name not in found:
                found.add(name)
                waiting += self.handed_on.get(name, ())
        return found

    def known_to(self, folder):
        """The folders that the files of a folder may include."""
        linked = set()
        for target, home in self.home.items():
            if home == folder:
                linked |= self.links.get(target, set())
        return {self.home[name] for name in self.reached(linked) if name in self.home} | {folder}


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
    rooms = Rooms(sources)
    violations = []

    def report(file, number, reason):
        violations.append(f"Sources/{file}:{number}: {reason}")

    core = {rooms.home[name] for name in rooms.reached([CORE]) if name in rooms.home} - {"."}
    if not core:
        report("CMakeLists.txt", 1, f"no room of {CORE} found: nothing was checked")
    for folder, file in rooms.strangers:
        report(f"{folder}/CMakeLists.txt", 1, f"{file} belongs to another folder")
    check_reach(rooms, report)

    for file, text in texts.items():
        room = rooms.of(".", PurePosixPath(file))
        if room is None:
            report(file, 1, "no CMakeLists.txt on its way up makes a library or a program")
            continue
        sees_system = is_under(room, ADAPTERS) or is_under(room, PROGRAMS)
        known = rooms.known_to(room)
        for number, path, is_quoted in includes[file]:
            if is_quoted:
                check_project_include(file, room, known, number, path, includes, rooms, report)
            elif not sees_system and not (
                STANDARD_HEADER.fullmatch(path) or CORE_LIBRARY_HEADER.fullmatch(path) or QT_HEADER.fullmatch(path)
            ):
                report(file, number, f"<{path}> is a system header; only Platform/ includes those")
            elif room in core and QT_HEADER.fullmatch(path):
                report(file, number, f"<{path}> in {CORE}: the core does without Qt")
            elif QUICK_HEADER.fullmatch(path) and not is_under(room, WINDOW) and not is_under(room, PROGRAMS):
                report(file, number, f"<{path}>: only the window knows Qt Quick")
        if not sees_system:
            for number, line in logical_lines(text):
                condition = CONDITION.match(line)
                question = condition and PLATFORM_QUESTION.search(condition.group(2))
                if question:
                    report(file, number, f"asks for the platform ({question.group(1)}) outside Platform/")

    for cycle in include_cycles(includes):
        report(cycle[0], 1, f"includes itself: {' -> '.join(cycle)}")
    return violations


def check_reach(rooms, report):
    """Who may link adapters, and what these may link."""
    for folder in sorted(rooms.folders):
        known = rooms.known_to(folder)
        adapters = sorted(room for room in known if is_under(room, ADAPTERS))
        if is_under(folder, ADAPTERS):
            beneath = set().union(*(rooms.known_to(room) for room in rooms.folders if is_under(room, INTERFACES)))
            for room in sorted(known - set(adapters) - beneath):
                report(f"{folder}/CMakeLists.txt", 1, f"an adapter links {room}; it knows {INTERFACES} alone")
        elif adapters and not is_under(folder, PROGRAMS):
            report(f"{folder}/CMakeLists.txt", 1, f"{folder} links {adapters[0]}; only programs choose adapters")


def check_project_include(file, room, known, number, path, includes, rooms, report):
    if path not in includes:
        # Headers that the build makes (moc) are included by their plain names.
        if "/" in path or not re.fullmatch(r"\w+\.moc|moc_\w+\.cpp", path):
            report(file, number, f'"{path}" is no file under Sources/; project includes are rooted there')
        return
    target = rooms.of(".", PurePosixPath(path))
    if target not in known:
        report(file, number, f'"{path}": {room} does not link {target}')


GOOD_TREE = {
    "CMakeLists.txt": "add_library(tavro_core INTERFACE)\ntarget_link_libraries(tavro_core INTERFACE tavro_model)\n",
    "Model/CMakeLists.txt": "add_library(tavro_model STATIC # the core\n    Scale.cpp)\n",
    "Model/Scale.h": "#pragma once\n#include <vector>\n",
    "Model/Scale.cpp": '#include "Model/Scale.h"\n#include <nlohmann/json.hpp>\n',
    "PlatformInterfaces/CMakeLists.txt": "add_library(tavro_interfaces INTERFACE)\n"
    "target_link_libraries(tavro_interfaces INTERFACE tavro_model)\n",
    "PlatformInterfaces/Midi.h": '#pragma once\n#include "Model/Scale.h"\n',
    "Output/CMakeLists.txt": "add_library(tavro_output STATIC Output.cpp Deep/More.cpp)\n"
    "target_link_libraries(tavro_output PUBLIC tavro_interfaces Qt6::Core PRIVATE tavro_hidden)\n",
    "Output/Output.h": '#pragma once\n#include "Model/Scale.h"\n#include <QObject>\n',
    "Output/Output.cpp": '#include "Output/Output.h"\n#include "Hidden/Hidden.h"\n#include "moc_Output.cpp"\n',
    "Output/Deep/More.cpp": '#include "Output/Output.h"\n',
    "Hidden/CMakeLists.txt": "add_library(tavro_hidden INTERFACE)\n",
    "Hidden/Hidden.h": "#pragma once\n",
    "UserInterface/CMakeLists.txt": "add_library(tavro_ui STATIC)\n"
    "target_link_libraries(tavro_ui PUBLIC tavro_output Qt6::Quick)\n",
    "UserInterface/View.h": '#include "Output/Output.h"\n#include <QQuickItem>\n',
    "Platform/Linux/CMakeLists.txt": "add_library(tavro_linux STATIC)\n"
    "target_link_libraries(tavro_linux PUBLIC tavro_interfaces PkgConfig::jack)\n",
    "Platform/Linux/Midi.h": '#include "PlatformInterfaces/Midi.h"\n#include <jack/jack.h>\n#ifdef __linux__\n#endif\n',
    "Programs/CMakeLists.txt": "add_executable(tavro Main.cpp)\n"
    "target_link_libraries(tavro PRIVATE tavro_linux tavro_ui)\n",
    "Programs/Main.cpp": '#include "Platform/Linux/Midi.h"\n#include "UserInterface/View.h"\n'
    "#if defined(__linux__)\n#endif\n",
}

# What is added to which file of the good tree, and what the report must then say about it.
PLANTED = [
    ("Model/Scale.cpp", "#include <QString>", "Sources/Model/Scale.cpp:3: <QString> in tavro_core"),
    ("Model/Scale.h", "#include <QtCore/QObject>", "<QtCore/QObject> in tavro_core"),
    ("PlatformInterfaces/Midi.h", "#include <QSize>", "the core does without Qt", "Model/CMakeLists.txt",
     "target_link_libraries(tavro_core INTERFACE tavro_interfaces)"),
    ("Model/Scale.h", "#include <unistd.h>", "Sources/Model/Scale.h:3: <unistd.h> is a system header"),
    ("Output/Output.cpp", "#include <jack/jack.h>", "<jack/jack.h> is a system header"),
    ("Output/Output.cpp", "#include <alsa/asoundlib.h>", "<alsa/asoundlib.h> is a system header"),
    ("UserInterface/View.h", "#include <X11/Xlib.h>", "<X11/Xlib.h> is a system header"),
    ("UserInterface/View.h", "#include <xcb/xcb.h>", "<xcb/xcb.h> is a system header"),
    ("UserInterface/View.h", "#  include <linux/input.h>", "<linux/input.h> is a system header"),
    ("UserInterface/View.h", "#import <AppKit/AppKit.h>", "<AppKit/AppKit.h> is a system header"),
    ("UserInterface/View.h", "#include <QuartzCore/CALayer.h>", "<QuartzCore/CALayer.h> is a system header"),
    ("Output/Output.h", "#include <QtQuick/QQuickItem>", "only the window knows Qt Quick"),
    ("Output/Deep/More.cpp", "#include <QQmlEngine>", "only the window knows Qt Quick"),
    ("Output/Output.cpp", "#ifdef Q_OS_LINUX\n#endif", "asks for the platform (Q_OS_LINUX)"),
    ("Output/Output.cpp", "#if defined(__APPLE__)\n#endif", "asks for the platform (__APPLE__)"),
    ("Output/Output.cpp", "#if 1\n#elif \\\n  _WIN32\n#endif", "asks for the platform (_WIN32)"),
    ("UserInterface/View.h", "# ifndef __linux__\n#endif", "asks for the platform (__linux__)"),
    ("Output/Output.cpp", '#include "Platform/Linux/Midi.h"', "Output does not link Platform/Linux"),
    ("Output/Deep/More.cpp", '#include "UserInterface/View.h"', "Output does not link UserInterface"),
    ("UserInterface/View.h", '#include "Hidden/Hidden.h"', "UserInterface does not link Hidden"),
    ("Model/Scale.cpp", '#include "Output/Output.h"', "Model does not link Output"),
    ("UserInterface/CMakeLists.txt", "target_link_libraries(tavro_ui PRIVATE tavro_linux)",
     "only programs choose adapters"),
    ("Platform/Linux/CMakeLists.txt", "target_link_libraries(tavro_linux PRIVATE tavro_output)",
     "an adapter links Output"),
    ("Model/CMakeLists.txt", "target_sources(tavro_model PRIVATE ../Output/Output.cpp)", "belongs to another folder"),
    ("CMakeLists.txt", "add_library(tavro_all STATIC Output/Output.cpp)", "belongs to another folder"),
    ("Model/Scale.cpp", '#include "Scale.h"', "is no file under Sources/"),
    ("Model/Scale.h", '#include "Model/Scale.h"', "includes itself"),
    ("CMakeLists.txt", None, "no room of tavro_core found"),
]


def self_test():
    failures = 0
    cases = [(None, "", None)] + PLANTED
    for file, addition, expected, *more in cases:
        with tempfile.TemporaryDirectory() as folder:
            for path, text in GOOD_TREE.items():
                target = Path(folder) / "Sources" / path
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_text(text, encoding="utf-8")
            for planted, added in [(file, addition)] * bool(file) + [tuple(more)] * bool(more):
                target = Path(folder) / "Sources" / planted
                target.write_text("" if added is None else f"{target.read_text(encoding='utf-8')}{added}\n",
                                  encoding="utf-8")
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
