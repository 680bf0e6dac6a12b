#include "Check.h"
#include "ChildProcess.h"
#include "Expectations.h"
#include "InputFolder.h"
#include "Platform/Linux/Evdev/AccessSteps.h"
#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"
#include "TestKeyboard.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavro::proof {

namespace {

constexpr uid_t someUser = 65534;
constexpr gid_t noGroup = 65534;
constexpr gid_t ownGroup = 4242;
constexpr gid_t othersGroup = 4343;

std::string contentOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The system's list of groups, with the one of the rule, as long as this exists.
class GroupOfRule {
public:
    GroupOfRule() {
        std::ofstream(path, std::ios::app) << '\n' << evdev::AccessSteps::group << ":x:" << ownGroup << ":\n";
    }

    ~GroupOfRule() { std::ofstream(path) << before_; }

    GroupOfRule(const GroupOfRule&) = delete;
    GroupOfRule& operator=(const GroupOfRule&) = delete;

private:
    static constexpr auto path = "/etc/group";
    std::string before_ = contentOf(path);
};

/// Does what the rule has udev do about a device of that kernel name.
void applyRule(const std::string& kernelName, const std::string& device) {
    std::ifstream rules(TAVRO_INPUT_RULES);
    int count = 0;
    for (std::string line; std::getline(rules, line);) {
        const auto command = line.find("RUN+=\"");
        if (line.starts_with('#') || line.find("KERNEL==\"" + kernelName + '"') == std::string::npos ||
            command == std::string::npos) {
            continue;
        }
        auto text = line.substr(command + 6);
        text.resize(text.find('"'));
        const std::string word = "$devnode";
        const auto place = text.find(word);
        expect(place != std::string::npos, "the rule does not name the device");
        text.replace(place, word.size(), device);
        expect(std::system(text.c_str()) == 0, "failed: " + text);
        ++count;
    }
    expectEqual(std::to_string(count), "1", "the lines for " + kernelName);
}

/// Whether somebody of that group alone is trusted, and may read the device.
std::string rightsOf(gid_t group, const evdev::InputDevices& devices, const std::string& keyboard) {
    ChildProcess child([&] {
        if (setgroups(0, nullptr) != 0 || setgid(group) != 0 || setuid(someUser) != 0) {
            return 100;
        }
        evdev::KeyboardTapAdapter tap(devices);
        const auto mayRead = open(keyboard.c_str(), O_RDONLY | O_NONBLOCK) >= 0;
        return (tap.isTrusted(true) ? 1 : 0) + (mayRead ? 2 : 0);
    });
    return std::to_string(child.wait());
}

std::string adviceFor(gid_t group, const evdev::InputDevices& devices) {
    // Through a file, since only a number comes back from a process.
    const std::string path = "/dev/shm/advice";
    {
        std::ofstream file(path);
        chmod(path.c_str(), 0666);
    }
    ChildProcess child([&] {
        if (setgroups(0, nullptr) != 0 || setgid(group) != 0 || setuid(someUser) != 0) {
            return 100;
        }
        std::ofstream(path) << evdev::KeyboardTapAdapter(devices).adviceOnTrust();
        return 0;
    });
    expectEqual(std::to_string(child.wait()), "0", "whoever is advised");
    const auto advice = contentOf(path);
    unlink(path.c_str());
    return advice;
}

void expectAdvice(const std::string& advice, const std::string& words, bool isThere) {
    expect((advice.find(words) != std::string::npos) == isThere,
           (isThere ? "missing: " : "superfluous: ") + words + " in: " + advice);
}

void ruleAddsAccessAndTakesNoneAway() {
    const GroupOfRule group;
    const TestKeyboard keyboard("A");
    InputFolder folder;
    folder.add(keyboard, 0660);
    const auto path = folder.pathOf(keyboard.path());
    // As the program's own, beside the kernel's, which all the others use.
    const auto uinput = folder.path() + "/uinput";
    struct stat status{};
    expect(stat("/dev/uinput", &status) == 0 && mknod(uinput.c_str(), S_IFCHR | 0600, status.st_rdev) == 0,
           "cannot make a file for uinput");
    expect(chown(path.c_str(), 0, othersGroup) == 0, "cannot give the device to a group");
    const evdev::InputDevices devices{.folder = folder.path(), .uinputPath = uinput};
    expectEqual(rightsOf(ownGroup, devices, path), "0", "a member before the rule");
    expectEqual(rightsOf(othersGroup, devices, path), "2", "a member of the device's group before the rule");
    expectAdvice(adviceFor(ownGroup, devices), "udevadm trigger", true);
    expectAdvice(adviceFor(ownGroup, devices), "Log in again", false);

    applyRule("event*", path);
    applyRule("uinput", uinput);
    expectEqual(rightsOf(ownGroup, devices, path), "3", "a member");
    expectEqual(rightsOf(othersGroup, devices, path), "2", "a member of the device's group");
    expectEqual(rightsOf(noGroup, devices, path), "0", "somebody else");
    expectAdvice(adviceFor(noGroup, devices), "udevadm trigger", false);
    expectAdvice(adviceFor(noGroup, devices), "usermod", true);
    expectAdvice(adviceFor(noGroup, devices), "groupadd", false);
    expect(stat(path.c_str(), &status) == 0 && status.st_gid == othersGroup, "the device has another group");

    // What udev does at the next event before the rule's turn.
    expect(chmod(uinput.c_str(), 0600) == 0, "cannot set the mode");
    applyRule("uinput", uinput);
    expectEqual(rightsOf(ownGroup, devices, path), "3", "a member after another event");
}

void ruleAssignsNoOwner() {
    std::ifstream rules(TAVRO_INPUT_RULES);
    for (std::string line; std::getline(rules, line);) {
        for (const auto* const assigned : {"GROUP=", "GROUP:=", "OWNER=", "OWNER:=", "MODE=", "MODE:="}) {
            expect(line.starts_with('#') || line.find(assigned) == std::string::npos, line);
        }
    }
}

void missingGroupIsTold() {
    const TestKeyboard keyboard("A");
    InputFolder folder;
    folder.add(keyboard);
    const auto advice = adviceFor(noGroup, {.folder = folder.path()});
    for (const auto* const words : {"groupadd", "udevadm trigger", "usermod", "Log in again"}) {
        expectAdvice(advice, words, true);
    }
}

} // namespace

std::vector<Check> ruleChecks() {
    return {
        {"rule_adds_access_and_takes_none_away", ruleAddsAccessAndTakesNoneAway},
        {"rule_assigns_no_owner", ruleAssignsNoOwner},
        {"missing_group_is_told", missingGroupIsTold},
    };
}

} // namespace tavro::proof
