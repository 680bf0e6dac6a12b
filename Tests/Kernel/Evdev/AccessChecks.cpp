#include "Check.h"
#include "ChildProcess.h"
#include "Expectations.h"
#include "InputFolder.h"
#include "Stage.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tavro::proof {

namespace {

constexpr uid_t nobody = 65534;

/// What a tap answers, as one number: whether it is trusted and whether it can be made.
int answersOf(evdev::KeyboardTapAdapter& tap) {
    ScriptedClient client;
    const auto isTrusted = tap.isTrusted(true);
    const auto isMade = tap.create(client);
    // Without a tap all of these do nothing.
    tap.enable(true);
    tap.updateVerdicts();
    tap.enable(false);
    tap.dispose();
    return (isTrusted ? 1 : 0) + (isMade ? 2 : 0);
}

constexpr auto neither = 0;
constexpr auto trustedOnly = 1;
constexpr auto madeOnly = 2;
constexpr auto both = 3;

/// The same in a process of a user with no rights.
int answersToNobody(const std::string& folder, const std::string& uinput = "/dev/uinput") {
    ChildProcess child([&] {
        if (setgid(nobody) != 0 || setuid(nobody) != 0) {
            return 100;
        }
        evdev::KeyboardTapAdapter tap({.folder = folder, .uinputPath = uinput});
        return answersOf(tap);
    });
    return child.wait();
}

void expectAnswers(int actual, int expected, const std::string& who) {
    expectEqual(std::to_string(actual), std::to_string(expected), who);
}

/// Lets everybody make keyboards as long as this exists.
class OpenUinput {
public:
    OpenUinput() { chmod(path, 0666); }

    ~OpenUinput() { chmod(path, 0600); }

    OpenUinput(const OpenUinput&) = delete;
    OpenUinput& operator=(const OpenUinput&) = delete;

private:
    static constexpr auto path = "/dev/uinput";
};

void administratorIsTrusted() {
    const Stage stage;
    evdev::KeyboardTapAdapter tap;
    expectAnswers(answersOf(tap), both, "the administrator");
}

void userWithoutRightsIsNotTrusted() {
    const Stage stage;
    expectAnswers(answersToNobody("/dev/input"), neither, "a user without rights");
}

void keyboardsWithoutUinputAreNotEnough() {
    const Stage stage;
    InputFolder folder;
    folder.add(stage.keyboard, 0666);
    expectAnswers(answersToNobody(folder.path()), neither, "a user who may not make keyboards");
}

void uinputWithoutKeyboardsIsNotEnough() {
    const Stage stage;
    const OpenUinput uinput;
    InputFolder folder;
    folder.add(stage.keyboard);
    expectAnswers(answersToNobody(folder.path()), neither, "a user who may not read the keyboard");
}

void readingAloneIsNotEnough() {
    const Stage stage;
    const OpenUinput uinput;
    InputFolder folder;
    folder.add(stage.keyboard, 0644);
    expectAnswers(answersToNobody(folder.path()), neither, "a user who may not write to the keyboard");
}

void oneForbiddenKeyboardIsReported() {
    const Stage stage;
    const TestKeyboard other("B");
    const OpenUinput uinput;
    InputFolder folder;
    folder.add(stage.keyboard, 0666);
    folder.add(other);
    expectAnswers(answersToNobody(folder.path()), madeOnly, "a user who may read one of two keyboards");
}

void onlyKeyboardsMatter() {
    const Stage stage;
    const TestKeyboard mouse("M", TestKeyboard::Kind::mouse);
    const OpenUinput uinput;
    InputFolder folder;
    folder.add(stage.keyboard, 0666);
    folder.add(mouse);
    expectAnswers(answersToNobody(folder.path()), both, "a user who may read the keyboards alone");
}

void copiesDoNotMatter() {
    Stage stage;
    const OpenUinput uinput;
    InputFolder folder;
    folder.add(stage.keyboard, 0666);
    ChildProcess owner([&] {
        ScriptedClient client;
        evdev::KeyboardTapAdapter tap({.folder = folder.path()});
        if (!tap.create(client)) {
            return 1;
        }
        tap.enable(true);
        pause();
        return 2;
    });
    stage.waitForDevice("A'");
    // Nobody may open the copy, and nobody needs to.
    folder.addFile(stage.spectator.pathOf("A'"), 0600);
    expectAnswers(answersToNobody(folder.path()), both, "a user who may not read the copy");
}

void devicesWithoutAKeyboardAreNoTap() {
    const TestKeyboard mouse("M", TestKeyboard::Kind::mouse);
    InputFolder folder;
    evdev::KeyboardTapAdapter tap({.folder = folder.path()});
    expectAnswers(answersOf(tap), trustedOnly, "no device at all");
    folder.add(mouse);
    expectAnswers(answersOf(tap), trustedOnly, "a mouse alone");
}

void whatIsMissingIsNotForbidden() {
    const Stage stage;
    evdev::KeyboardTapAdapter withoutFolder({.folder = "/dev/shm/no-such-folder"});
    expectAnswers(answersOf(withoutFolder), trustedOnly, "no folder");
    evdev::KeyboardTapAdapter withoutUinput({.uinputPath = "/dev/shm/no-such-file"});
    expectAnswers(answersOf(withoutUinput), trustedOnly, "no uinput");
}

void folderThatMayNotBeReadIsForbidden() {
    InputFolder folder;
    const OpenUinput uinput;
    expect(chmod(folder.path().c_str(), 0700) == 0, "cannot close the folder to others");
    expectAnswers(answersToNobody(folder.path()), neither, "a user who may not read the folder");
}

void keyboardThatBecomesAllowedJoins() {
    // A new device belongs to the administrator alone until the system's rules have been applied to it.
    const OpenUinput uinput;
    Stage stage;
    InputFolder folder;
    folder.add(stage.keyboard, 0666);
    TestKeyboard other("B");
    folder.add(other, 0600);
    ChildProcess child([&] {
        if (setgid(nobody) != 0 || setuid(nobody) != 0) {
            return 100;
        }
        ScriptedClient client;
        client.setPlaying(true);
        evdev::KeyboardTapAdapter tap({.folder = folder.path()});
        if (!tap.create(client)) {
            return 1;
        }
        tap.enable(true);
        pause();
        return 2;
    });
    stage.waitForDevice("A'");
    expect(!stage.spectator.has("B'"), "a keyboard was opened that may not be");
    folder.allow(other, 0666);
    stage.waitForDevice("B'");
}

} // namespace

std::vector<Check> accessChecks() {
    return {
        {"administrator_is_trusted", administratorIsTrusted},
        {"user_without_rights_is_not_trusted", userWithoutRightsIsNotTrusted},
        {"keyboards_without_uinput_are_not_enough", keyboardsWithoutUinputAreNotEnough},
        {"uinput_without_keyboards_is_not_enough", uinputWithoutKeyboardsIsNotEnough},
        {"reading_alone_is_not_enough", readingAloneIsNotEnough},
        {"one_forbidden_keyboard_is_reported", oneForbiddenKeyboardIsReported},
        {"only_keyboards_matter", onlyKeyboardsMatter},
        {"copies_do_not_matter", copiesDoNotMatter},
        {"devices_without_a_keyboard_are_no_tap", devicesWithoutAKeyboardAreNoTap},
        {"what_is_missing_is_not_forbidden", whatIsMissingIsNotForbidden},
        {"folder_that_may_not_be_read_is_forbidden", folderThatMayNotBeReadIsForbidden},
        {"keyboard_that_becomes_allowed_joins", keyboardThatBecomesAllowedJoins},
    };
}

} // namespace tavro::proof
