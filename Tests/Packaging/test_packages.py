"""Packaging/packages.sh on machines whose package managers are recorded."""

import os
import shutil
import unittest

from machine import PROJECT, Machine

LIST = """# A comment.
[debian build]
g++
cmake
new-name | old-name

[debian run]
fonts
g++

[debian test]
lib:amd64

[homebrew build]
cmake
qt
"""
ARCHIVE = {"g++": "amd64", "cmake": "amd64", "new-name": "amd64", "old-name": "all", "fonts": "all", "lib": "amd64"}
GERMAN = {"LANG": "de_DE.UTF-8", "LANGUAGE": "de"}


def without(*names):
    return {name: architecture for name, architecture in ARCHIVE.items() if name not in names}


class PackagesTest(unittest.TestCase):
    def machine(self, package_list=LIST, **state):
        machine = Machine(package_list, **({"archive": ARCHIVE} | state))
        self.addCleanup(machine.close)
        return machine

    def assert_went_on(self, result):
        self.assertEqual(result.returncode, 0, result.stdout)
        self.assertEqual(result.stdout.splitlines()[-1], "==> Afterwards")

    def assert_stopped(self, result, *texts):
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertNotIn("==> Afterwards", result.stdout)
        for text in texts:
            self.assertIn(text, result.stdout)


class DebianTest(PackagesTest):
    def test_bare_machine_gets_each_package_once(self):
        machine = self.machine()
        self.assert_went_on(machine.ensure("build", "run"))
        self.assertEqual(machine.installations(), [["g++", "cmake", "new-name", "fonts"]])
        self.assert_went_on(machine.ensure("build", "run"))
        self.assertEqual(len(machine.installations()), 1)

    def test_everything_installed_changes_nothing_and_needs_no_right(self):
        machine = self.machine(installed=dict(ARCHIVE), user=1000)
        result = machine.ensure("build", "run")
        self.assert_went_on(result)
        self.assertIn("everything is installed", result.stdout)
        self.assertEqual(machine.calls("apt-get"), [])
        self.assertEqual(machine.calls("sudo"), [])

    def test_only_what_is_missing_is_installed(self):
        machine = self.machine(installed=without("cmake"))
        self.assert_went_on(machine.ensure("build", "run"))
        self.assertEqual(machine.installations(), [["cmake"]])

    def test_answers_longer_than_a_pipe_holds(self):
        # Some 300 kB for each package, where a pipe holds 64.
        machine = self.machine(versions=4000)
        self.assert_went_on(machine.ensure("build", "run"))
        self.assertEqual(machine.installations(), [["g++", "cmake", "new-name", "fonts"]])

    def test_another_language(self):
        for environment in (GERMAN, {"LC_ALL": "de_DE.UTF-8"}, {"LC_MESSAGES": "de_DE.UTF-8"}):
            with self.subTest(environment):
                machine = self.machine(dependencies=9)
                result = machine.ensure("build", "run", **environment)
                self.assert_went_on(result)
                self.assertEqual(machine.installations(), [["g++", "cmake", "new-name", "fonts"]])
                self.assertIn("13 packages with what they need, 22.9 MB to download", result.stdout)

    def test_another_language_does_not_hide_what_is_not_offered(self):
        machine = self.machine(virtual=["cmake"])
        self.assert_stopped(machine.ensure("build", **GERMAN), "does not offer:\n      cmake\n")

    def test_first_alternative_is_taken_where_both_are_offered(self):
        machine = self.machine(installed=without("new-name", "old-name"))
        self.assert_went_on(machine.ensure("build"))
        self.assertEqual(machine.installations(), [["new-name"]])

    def test_second_alternative_is_taken_where_the_first_is_not_offered(self):
        machine = self.machine(archive=without("new-name"), installed=without("new-name", "old-name"))
        self.assert_went_on(machine.ensure("build"))
        self.assertEqual(machine.installations(), [["old-name"]])

    def test_second_alternative_is_taken_where_the_first_is_but_a_name(self):
        machine = self.machine(virtual=["new-name"], installed=without("new-name", "old-name"))
        self.assert_went_on(machine.ensure("build"))
        self.assertEqual(machine.installations(), [["old-name"]])

    def test_second_alternative_does_where_the_first_is_not_known(self):
        machine = self.machine(archive=without("new-name"), installed=without("new-name"))
        machine.state["lists"] = machine.state["archive"]
        self.assert_went_on(machine.ensure("build"))
        self.assertEqual(machine.installations(), [])

    def test_second_alternative_does_not_do_where_the_first_is_known(self):
        machine = self.machine(installed=without("new-name"), lists=ARCHIVE)
        self.assert_went_on(machine.ensure("build"))
        self.assertEqual(machine.installations(), [["new-name"]])

    def test_unknown_packages_are_named_and_nothing_is_installed(self):
        machine = self.machine(archive=without("cmake", "new-name", "old-name"))
        result = machine.ensure("build", "run")
        self.assert_stopped(result, "does not offer:\n      cmake\n      new-name | old-name\n    Debian 12")
        self.assertEqual(machine.installations(), [])

    def test_names_with_an_architecture(self):
        for installed in ({}, {"lib": "i386"}):
            with self.subTest(installed=installed):
                machine = self.machine(installed=installed)
                self.assert_went_on(machine.ensure("test"))
                self.assertEqual(len(machine.calls("apt-get", "install", "-y", "lib:amd64")), 1)
        machine = self.machine(installed={"lib": "amd64"})
        self.assert_went_on(machine.ensure("test"))
        self.assertEqual(machine.calls("apt-get"), [])

    def test_name_of_a_foreign_architecture(self):
        machine = self.machine("[debian run]\nlib:i386\n", archive={"lib": "i386"})
        self.assert_went_on(machine.ensure("run"))
        self.assertEqual(len(machine.calls("apt-get", "install", "-y", "lib:i386")), 1)

    def test_foreign_package_does_not_stand_for_the_own_one(self):
        machine = self.machine(installed=without("cmake") | {"cmake": "i386"})
        self.assert_went_on(machine.ensure("build"))
        self.assertEqual(machine.installations(), [["cmake"]])

    def test_name_without_an_architecture_does_for_packages_that_have_none(self):
        machine = self.machine("[debian run]\nfonts:all\n", installed={"fonts": "all"})
        self.assert_went_on(machine.ensure("run"))
        self.assertEqual(machine.calls("apt-get"), [])

    def test_says_how_much_before_it_installs(self):
        machine = self.machine(dependencies=209, load="1,234 kB/182 MB", disk="725 MB")
        result = machine.ensure("build", "run")
        self.assert_went_on(result)
        lines = result.stdout.splitlines()
        told = lines.index("==> Packages: 213 packages with what they need, 1,234 kB to download, 725 MB on the disk")
        self.assertGreater(lines.index("The following NEW packages will be installed:"), told)
        self.assertIn("==> Packages: installing g++ cmake new-name fonts", lines[:told])

    def test_what_apt_cannot_count_is_tried_all_the_same_and_its_failure_told(self):
        machine = self.machine(broken=True)
        self.assert_stopped(
            machine.ensure("build"), "cannot tell", "held broken packages", "apt-get could not install them"
        )

    def test_nothing_that_somebody_asked_for_gives_way(self):
        there = {"other": "amd64", "library": "amd64"}
        machine = self.machine(installed=dict(there), conflicting=list(there), automatic=["library"])
        self.assert_stopped(
            machine.ensure("build"),
            "somebody asked for them:\n      other\n",
            "remove is disabled",
            "apt-get could not install them",
        )
        self.assertEqual(machine.state["installed"], there)

    def test_what_only_came_along_gives_way(self):
        machine = self.machine(installed={"library": "amd64"}, conflicting=["library"], automatic=["library"])
        result = machine.ensure("build")
        self.assert_went_on(result)
        self.assertIn("give way: library\n", result.stdout)
        self.assertEqual(set(machine.state["installed"]), {"g++", "cmake", "new-name"})

    def test_package_that_two_lines_choose_is_named_once(self):
        machine = self.machine(LIST + "\n[debian more]\nabsent | fonts\n")
        self.assert_went_on(machine.ensure("run", "more"))
        self.assertEqual(machine.installations(), [["fonts", "g++"]])


class RightsTest(PackagesTest):
    def test_sudo_that_asks_nothing_does(self):
        machine = self.machine(user=1000, sudo=True)
        self.assert_went_on(machine.ensure("build", "run"))
        self.assertEqual(machine.installations(), [["g++", "cmake", "new-name", "fonts"]])

    def test_no_right_prints_the_list_and_how_much_it_is(self):
        machine = self.machine(user=1000, lists=without("new-name"), dependencies=9)
        result = machine.ensure("build", "run", **GERMAN)
        self.assert_stopped(
            result,
            "apt-get install --no-install-recommends g++ cmake old-name fonts\n",
            "13 packages with what they need, 22.9 MB to download, 85.0 MB on the disk",
        )
        self.assertEqual(machine.calls("apt-get", "update"), [])
        self.assertEqual(machine.installations(), [])

    def test_no_right_and_no_lists_prints_the_first_alternatives(self):
        machine = self.machine(user=1000)
        self.assert_stopped(
            machine.ensure("build"),
            "      apt-get update\n      apt-get install --no-install-recommends g++ cmake new-name\n",
        )

    def test_no_right_and_no_sudo_at_all(self):
        machine = self.machine(user=1000, managers=("apt-get", "apt-cache", "dpkg", "dpkg-query"))
        self.assert_stopped(machine.ensure("build"), "needs an administrator")


class RefreshTest(PackagesTest):
    def test_failing_refresh_is_told_and_the_lists_from_before_do(self):
        machine = self.machine(network=False, lists=ARCHIVE)
        result = machine.ensure("build", "run")
        self.assert_went_on(result)
        self.assertIn("E: Failed to fetch", result.stdout)
        self.assertIn("the lists could not be refreshed", result.stdout)
        self.assertEqual(machine.installations(), [["g++", "cmake", "new-name", "fonts"]])

    def test_failing_refresh_is_the_reason_where_the_lists_do_not_do(self):
        machine = self.machine(network=False, lists={"g++": "amd64"})
        result = machine.ensure("build")
        self.assert_stopped(result, "E: Failed to fetch", "could not be refreshed", "      cmake\n", "Is there a network")
        self.assertNotIn("does not offer", result.stdout)
        self.assertEqual(machine.installations(), [])


class OtherSystemsTest(PackagesTest):
    def test_homebrew_gets_what_is_missing(self):
        machine = self.machine(managers=("brew",), installed={"cmake": "all"}, archive={"qt": "all"})
        result = machine.ensure("build", **GERMAN)
        self.assert_went_on(result)
        self.assertIn("installing 1 and what they need: qt", result.stdout)
        self.assertEqual(machine.calls("brew", "install"), [["install", "qt"]])
        self.assertIn("everything is installed", machine.ensure("build").stdout)

    def test_homebrew_that_fails_is_told(self):
        machine = self.machine(managers=("brew",), archive={})
        self.assert_stopped(machine.ensure("build"), "No available formula", "Homebrew could not install them")

    def test_without_a_package_manager_the_names_are_told(self):
        machine = self.machine(managers=())
        result = machine.ensure("build", "run")
        self.assert_went_on(result)
        self.assertIn("      g++\n      cmake\n      new-name | old-name\n      fonts\n", result.stdout)


class RunTest(PackagesTest):
    """./run with a compiler that only writes down that it was asked."""

    def machine_with_run(self, **state):
        machine = self.machine(**state)
        shutil.copy(PROJECT / "run", machine.folder)
        machine.add_program("cmake", '#!/usr/bin/env bash\necho "cmake $*"\n')
        programs = machine.folder / "build" / "release" / "bin"
        programs.mkdir(parents=True)
        for name in ("tavro", "tavro-play"):
            (programs / name).write_text(f'#!/usr/bin/env bash\necho "{name} $*"\n')
            os.chmod(programs / name, 0o755)
        return machine

    def test_tells_installs_builds_and_plays_in_this_order(self):
        result = self.machine_with_run().run(["bash", "./run"])
        self.assertEqual(result.returncode, 0, result.stdout)
        steps = ["4 packages with what they need", "==> Configure", "==> Build", "tavro-play --out demo.mid"]
        places = [result.stdout.find(step) for step in steps]
        self.assertEqual(places, sorted(places), result.stdout)
        self.assertNotIn(-1, places, result.stdout)

    def test_builds_nothing_without_the_packages(self):
        result = self.machine_with_run(user=1000).run(["bash", "./run"])
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertIn("needs an administrator", result.stdout)
        self.assertNotIn("==> Configure", result.stdout)


class FreshTest(PackagesTest):
    """Where no bare system can be made, ./test --fresh says so and fails."""

    def fresh(self, *arguments, archive="exit 0", **state):
        machine = self.machine("[debian fresh]\ncmake\n", installed={"cmake": "amd64"}, **state)
        for path in ("test", "Tests/Fresh/fresh.sh"):
            (machine.folder / path).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(PROJECT / path, machine.folder / path)
        (machine.folder / "sources").write_text("deb http://archive.example/debian bookworm main\n")
        machine.add_program("git", '#!/bin/sh\ncase "$*" in *rev-parse*) echo 0123abcd ;; esac\n')
        # Whatever would be done in namespaces of its own needs the archive first.
        machine.add_program("unshare", f'#!/bin/sh\ncase "$*" in *mmdebstrap*) {archive} ;; esac\n')
        result = machine.run(
            ["bash", "./test", "--fresh", *arguments], TAVRO_FRESH_SOURCES=str(machine.folder / "sources")
        )
        self.assertEqual(list(machine.temporary.iterdir()), [])
        return result

    def test_needs_root(self):
        self.assert_stopped(self.fresh(user=1000), "a bare system can only be made as root")

    def test_knows_two_suites(self):
        self.assert_stopped(self.fresh("sid"), 'bookworm or trixie, not "sid"')

    def test_needs_the_archive_and_removes_what_it_began(self):
        result = self.fresh("trixie", archive="echo E: cannot fetch; exit 25")
        self.assert_stopped(result, "E: cannot fetch", "failed: a bare trixie (status 25)", "is removed")


if __name__ == "__main__":
    unittest.main()
