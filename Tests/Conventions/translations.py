#!/usr/bin/env python3
"""Counts the texts that a user sees and that no translator would: see docs/languages.md.

A text is a literal with words in it, in QML one that a visible property is given too. It counts unless it stands in a
call that lupdate finds: qsTr, tr, QCoreApplication::translate, QT_TRANSLATE_NOOP, with the text itself in the call. A
call of tr or translate without a text in it counts as well, since lupdate finds nothing there; QT_TRANSLATE_NOOP
where the text is makes up for it.

translations.py ROOT         looks at Sources/, prints each such place as FILE:LINE: text, status 1 if there is one
translations.py --self-test  expects each kind of such a place to be found, and nothing where all is well
"""

import re
import sys
from pathlib import Path

# What lupdate reads.
FOUND = {"tr", "translate", "qsTr", "qsTranslate", "QT_TRANSLATE_NOOP", "QT_TR_NOOP"}
# For developers, or for a terminal.
OF_THE_LOG = {"qCritical", "qWarning", "qInfo", "qDebug", "qFatal", "QML_UNCREATABLE", "static_assert", "Error"}
OF_THE_LOG |= {"runtime_error", "range_error", "KeyScriptError", "SceneSelfTest"}

# A file, or with a slash behind it a folder, wherever it stands: why its texts stay as they are.
ALLOWED = {
    "Player/": "a tool for the terminal, where texts are English",
    "ApplicationOptions.cpp": "printed in the terminal before there is a translator",
    "MidiSystemTable.cpp": "printed in the terminal",
    "Headless/": "what tests are told",
    "AutostartEntry.cpp": "a file of the desktop, with its own way to be translated",
    "SceneSelfTest.cpp": "printed in the terminal",
    "MainWindowLoader.cpp": "names of fonts",
    "MidiOutputManager.cpp": "the status texts, which are German in every language",
    "ScaleEngine.cpp": "names that are stored; the picker shows them",
    "PerformanceStateCoding.cpp": "the core, which has no Qt: what is wrong in a JSON text",
    "JsonDecoding.h": "the core, which has no Qt: what is wrong in a JSON text",
    "JsonDecoding.cpp": "the core, which has no Qt: what is wrong in a JSON text",
    "BoundedJson.cpp": "the core, which has no Qt: what is wrong in a JSON text",
    "TAVROPreset.cpp": "what is wrong in a JSON text, as the core says it",
    "UpdateManifest.cpp": "the core, which has no Qt: what is wrong in a JSON text",
    "ManifestKeys.cpp": "the core, which has no Qt: what is wrong in a JSON text",
    "KeyboardLayoutKind.cpp": "the core, which has no Qt: what is printed on keyboards",
    "KeyNames.cpp": "the core, which has no Qt: what is printed on keys",
}
# Texts that are no language.
PROPER = re.compile(r"/TAVRO Presets|import QtQml.*|pragma Singleton|/bin/sh -c |\[Desktop Entry\]|TAVRO( System| Guard)?", re.DOTALL)

WORDS = re.compile(r"[A-Za-z]{2,}[,.:;]? +[%A-Za-z(]")
LITERAL = re.compile(r'(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*"')
TOKEN = re.compile(
    r"//[^\n]*|/\*.*?\*/|(?P<string>(?:u8|u|U|L)?\"(?:[^\"\\\n]|\\.)*\")|'(?:[^'\\\n]|\\.)+'"
    r"|(?P<name>[A-Za-z_]\w*)|(?P<open>[({\[])|(?P<close>[)}\]])|(?P<other>\S)",
    re.DOTALL,
)
RAW = re.compile(r'R"(\w*)\((.*?)\)\1"', re.DOTALL)
PREPROCESSOR = re.compile(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", re.MULTILINE)
# The terminal's texts stay English.
TO_THE_TERMINAL = re.compile(r"std::(cerr|cout)\b")
# A QML property that is shown or read out.
VISIBLE = re.compile(r"(?:^|[\n;{])\s*(?:\w+\.)?(text|title|label|summary|acceptLabel|placeholderText|name|description)\s*:\s*$")


def untranslated(text, is_qml):
    """(line, text) of each place."""
    found = []
    blank = lambda match: re.sub(r"[^\n]", " ", match.group(0))
    if not is_qml:
        text = PREPROCESSOR.sub(blank, RAW.sub(blank, text))
    calls = []  # [name before the bracket, whether it is a call, line, how many literals stood in it]
    last_name = ""
    statement = 0
    for match in TOKEN.finditer(text):
        line = text.count("\n", 0, match.start()) + 1
        if match[0] in ";{}":
            statement = match.end()
        if match["string"]:
            content = match["string"][match["string"].index('"') + 1 : -1]
            for call in calls:
                call[3] += 1
            names = {call[0] for call in calls if call[1]}
            is_text = bool(WORDS.search(content))
            if is_qml:
                before = text[max(0, match.start() - 60) : match.start()]
                shown = VISIBLE.search(before)
                is_drawing = shown and shown.group(1) == "name" and not before.rstrip().endswith("Accessible.name:")
                is_text = is_text or (bool(shown) and not is_drawing and bool(re.search(r"[A-Za-z]{2}", content)))
            is_text = is_text and not TO_THE_TERMINAL.search(text, statement, match.start())
            if is_text and not names & (FOUND | OF_THE_LOG) and not PROPER.fullmatch(content):
                found.append((line, content))
            last_name = ""
        elif match["name"]:
            last_name = match["name"]
        elif match["open"]:
            calls.append([last_name, match["open"] == "(" and bool(last_name), line, 0])
            last_name = ""
        elif match["close"]:
            if calls:
                name, is_call, start, literals = calls.pop()
                # The first one of some is the context.
                has_text = literals > (1 if name in {"translate", "qsTranslate", "QT_TRANSLATE_NOOP"} else 0)
                is_declared = text[match.end() :].lstrip()[:5].startswith(("const", "{", "=", "overr"))
                if is_call and name in FOUND and not has_text and not is_declared:
                    found.append((start, name + " without a text"))
            last_name = ""
        elif match["other"]:
            last_name = ""
    return found


def is_allowed(name):
    *folders, file = name.split("/")
    return file in ALLOWED or any(folder + "/" in ALLOWED for folder in folders)


def check(root):
    sources = Path(root) / "Sources"
    count = 0
    texts = 0
    for path in sorted(sources.rglob("*")):
        name = str(path.relative_to(sources))
        if path.suffix not in {".cpp", ".h", ".mm", ".qml"} or is_allowed(name):
            continue
        content = path.read_text(encoding="utf-8")
        texts += len(re.findall(r"\b(?:tr|translate|qsTr|QT_TRANSLATE_NOOP)\s*\(", content))
        for line, text in untranslated(content, path.suffix == ".qml"):
            # These take what QT_TRANSLATE_NOOP has marked in the same file.
            if text == "translate without a text" and "QT_TRANSLATE_NOOP(" in content:
                continue
            # Of key events, and nobody's language.
            if text == "translate without a text" and re.search(r"KeyEvent|KeyboardEventMonitor", name):
                continue
            print(f"{path}:{line}: {text}")
            count += 1
    print(f"{count} texts that no translator would see, beside {texts} that one would")
    return 1 if count else 0


LACKING = {
    "cpp": [
        'auto a = QStringLiteral("The file is gone");',
        'show("Nothing listens yet");',
        'std::cerr << 1; show("Nothing listens yet");',
        'label = QString::fromUtf8("Close Window");',
        'a = b ? tr("Global On") : QStringLiteral("Global is off");',
        'return QCoreApplication::translate("MainMenu", text);',
        "return translate(text);",
        "return tr(text);",
        'throw PresetFileError(kind, path, QStringLiteral("a folder, not a file"));',
        '// tr("\nauto a = "The file is gone";',
    ],
    "qml": [
        'Text { text: "Open" }',
        'Item { Accessible.name: "Menu" }',
        'Text { text: on ? qsTr("On") : "It is off" }',
        'Tile { title: "MIDI" }',
    ],
}
FINE = {
    "cpp": [
        'auto a = tr("The file is gone");',
        'auto a = tr("The file %1 "\n        "is gone").arg(path);',
        'return QCoreApplication::translate("MainMenu", "Close Window");',
        'return translated(QT_TRANSLATE_NOOP("MainMenu", "Close Window"));',
        'qWarning("There is no symbol named %s", name);',
        '#include "Some File.h"\n// The file is gone\n/* "The file is gone" */',
        'auto a = QStringLiteral("https");',
        'std::cerr << "tavro: the window; it could "\n    << "not be made";',
        "QString tr(const char* text) const;",
    ],
    "qml": ['Text { text: qsTr("Open") }', 'Symbol { name: "chevron.down" }', 'Item { objectName: "message" }'],
}


def self_test():
    for kind, places in LACKING.items():
        for place in places:
            assert len(untranslated(place, kind == "qml")) == 1, f"{place}: {untranslated(place, kind == 'qml')}"
    for kind, places in FINE.items():
        for place in places:
            assert not untranslated(place, kind == "qml"), f"{place}: {untranslated(place, kind == 'qml')}"
    assert untranslated('\n\nshow("It is gone");', False) == [(3, "It is gone")]
    print("each kind is found")
    return 0


if __name__ == "__main__":
    sys.exit(self_test() if sys.argv[1] == "--self-test" else check(sys.argv[1]))
