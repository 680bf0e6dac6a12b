"""package_managers.py NAME ARGUMENT...: stands for the package managers of Debian and Homebrew, sudo and id.

It answers in the words that the real ones were heard to use (apt 2.6.2, dpkg 1.21, sudo 1.9.13), in the
language that the locale asks for, from the machine that the file in RECORDED_MACHINE describes; and it writes
down how it was called.
"""

import json
import os
import signal
import sys

WORDS = {
    "en": {
        "installed": "Installed: ",
        "candidate": "Candidate: ",
        "versions": "Version table:",
        "none": "(none)",
        "unknown": "E: Unable to locate package {}",
        "absent": "dpkg-query: no packages found matching {}",
        "lock": "E: Could not open lock file /var/lib/dpkg/lock-frontend - open (13: Permission denied)",
        "fetch": "E: Failed to fetch http://archive.example/debian/dists/bookworm/InRelease",
        "plan": (
            "The following NEW packages will be installed:\n  {names}\n"
            "0 upgraded, {count} newly installed, 0 to remove and 0 not upgraded.\n"
            "Need to get {load} of archives.\n"
            "After this operation, {disk} of additional disk space will be used.\n"
        ),
        "decline": "Do you want to continue? [Y/n] N\nAbort.",
        "password": "sudo: a password is required",
    },
    "de": {
        "installed": "Installiert:           ",
        "candidate": "Installationskandidat: ",
        "versions": "Versionstabelle:",
        "none": "(keine)",
        "unknown": "E: Paket {} kann nicht gefunden werden.",
        "absent": "dpkg-query: Kein Paket gefunden, das auf {} passt",
        "lock": (
            "E: Sperrdatei /var/lib/dpkg/lock-frontend konnte nicht geöffnet werden. - open (13: Keine Berechtigung)"
        ),
        "fetch": (
            "E: Fehlschlag beim Holen von http://archive.example/debian/dists/bookworm/InRelease"
        ),
        "plan": (
            "Die folgenden NEUEN Pakete werden installiert:\n  {names}\n"
            "0 aktualisiert, {count} neu installiert, 0 zu entfernen und 0 nicht aktualisiert.\n"
            "Es müssen {load} an Archiven heruntergeladen werden.\n"
            "Nach dieser Operation werden {disk} Plattenplatz zusätzlich benutzt.\n"
        ),
        "decline": "Möchten Sie fortfahren? [J/n] N\nAbbruch.",
        "password": "sudo: Ein Passwort ist notwendig",
    },
}


class Answers:
    def __init__(self, machine):
        self.machine = machine
        locale = next((os.environ[name] for name in ("LC_ALL", "LC_MESSAGES", "LANG") if os.environ.get(name)), "C")
        self.words = WORDS["de" if locale.startswith("de") else "en"]

    def _may_change(self):
        return self.machine["user"] == 0 or "RECORDED_SUDO" in os.environ

    def _parted(self, name):
        name, _, architecture = name.partition(":")
        return name, architecture or self.machine["architecture"]

    def _is_installed(self, name):
        name, architecture = self._parted(name)
        return self.machine["installed"].get(name) in (architecture, "all")

    def _is_offered(self, name):
        name, architecture = self._parted(name)
        return self.machine["lists"].get(name) in (architecture, "all")

    def id(self, arguments):
        print(self.machine["user"])

    def sudo(self, arguments):
        assert arguments[0] == "-n", arguments
        if not self.machine["sudo"]:
            return f"{self.words['password']}", 1
        os.execvpe(arguments[1], arguments[1:], os.environ | {"RECORDED_SUDO": "1"})

    def dpkg(self, arguments):
        assert arguments == ["--print-architecture"], arguments
        print(self.machine["architecture"])

    def dpkg_query(self, arguments):
        absent = []
        form = next(word for word in arguments if word.startswith("--showformat=")).removeprefix("--showformat=")
        for name in (word for word in arguments if not word.startswith("--")):
            if self._is_installed(name):
                bare = self._parted(name)[0]
                values = {
                    "${Package}": bare,
                    "${Architecture}": self.machine["installed"][bare],
                    "${Status}": "install ok installed",
                    "\\n": "\n",
                }
                line = form
                for field, value in values.items():
                    line = line.replace(field, value)
                sys.stdout.write(line)
            else:
                absent.append(self.words["absent"].format(name))
        if absent:
            return "\n".join(absent), 1

    def apt_cache(self, arguments):
        assert arguments[0] == "policy", arguments
        for name in arguments[1:]:
            if not self._is_offered(name):
                continue
            bare, architecture = self._parted(name)
            print(bare if architecture == self.machine["architecture"] else f"{bare}:{architecture}", end=":\n")
            version = self.words["none"] if bare in self.machine["virtual"] else "1.0-1"
            there = "1.0-1" if self._is_installed(name) else self.words["none"]
            print(f"  {self.words['installed']}{there}\n  {self.words['candidate']}{version}")
            print(f"  {self.words['versions']}")
            for number in range(self.machine["versions"]):
                print(f"     1.0-{number} 500\n        500 http://archive.example/debian bookworm/main Packages")

    def apt_mark(self, arguments):
        assert arguments[0] == "showauto", arguments
        for name in arguments[1:]:
            if name in self.machine["automatic"]:
                print(name)

    def apt_get(self, arguments):
        action = next(word for word in arguments if not word.startswith("-"))
        return {"update": self._update, "install": self._install}[action](arguments)

    def _update(self, arguments):
        if not self._may_change():
            return self.words["lock"], 100
        if not self.machine["network"]:
            # As it is: without the option it only warns.
            return self.words["fetch"], 100 if "--error-on=any" in arguments else 0
        self.machine["lists"] = self.machine["archive"]

    def _install(self, arguments):
        if not self._may_change() and "Debug::NoLocking=1" not in arguments:
            return self.words["lock"], 100
        behind_option = {position + 1 for position, word in enumerate(arguments) if word == "-o"}
        names = [
            word
            for position, word in enumerate(arguments)
            if not word.startswith("-") and position not in behind_option and word != "install"
        ]
        for name in names:
            if not self._is_offered(name):
                return self.words["unknown"].format(name), 100
        if self.machine["broken"]:
            return "E: Unable to correct problems, you have held broken packages.", 100
        wanted = [name for name in names if not self._is_installed(name)]
        count = len(wanted) + self.machine["dependencies"]
        print(
            self.words["plan"].format(
                names=" ".join(wanted), count=count, load=self.machine["load"], disk=self.machine["disk"]
            ),
            end="",
        )
        if "--simulate" in arguments:
            for name in self.machine["conflicting"]:
                print(f"Remv {name} [1.0-1]")
            return
        if "--assume-no" in arguments:
            print(self.words["decline"])
            return "", 1
        assert "-y" in arguments, arguments
        for name in self.machine["conflicting"]:
            if "--no-remove" in arguments:
                return "E: Packages need to be removed but remove is disabled.", 100
            del self.machine["installed"][name]
        for name in wanted:
            bare, _ = self._parted(name)
            self.machine["installed"][bare] = self.machine["lists"][bare]

    def brew(self, arguments):
        if arguments[0] == "list":
            name = arguments[-1]
            if name not in self.machine["installed"]:
                return "", 1
            print(name, "1.0")
        elif arguments[0] == "install":
            for name in arguments[1:]:
                if name not in self.machine["archive"]:
                    return f'Warning: No available formula with the name "{name}".', 1
                self.machine["installed"][name] = "all"


def main():
    # As programs that know nothing of it: a broken pipe ends them.
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)
    program, *arguments = sys.argv[1:]
    path = os.environ["RECORDED_MACHINE"]
    with open(path, encoding="utf-8") as file:
        machine = json.load(file)
    machine["calls"].append([program, *arguments])
    with open(path, "w", encoding="utf-8") as file:
        json.dump(machine, file)
    error, status = getattr(Answers(machine), program.replace("-", "_"))(arguments) or ("", 0)
    with open(path, "w", encoding="utf-8") as file:
        json.dump(machine, file)
    if error:
        print(error, file=sys.stderr)
    return status


if __name__ == "__main__":
    sys.exit(main())
