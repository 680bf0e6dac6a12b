#include "Check.h"
#include "Expectations.h"
#include "Stage.h"

#include <filesystem>
#include <fstream>

#include <linux/input-event-codes.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace tavro::proof {

namespace {

/// What udev keeps of devices, written by nobody else here.
class UdevRecords {
public:
    UdevRecords() { std::filesystem::create_directories(folder_ + "/data"); }

    ~UdevRecords() { std::filesystem::remove_all(folder_); }

    UdevRecords(const UdevRecords&) = delete;
    UdevRecords& operator=(const UdevRecords&) = delete;

    /// From now on udev seems to run, so that a device without a record is one it has not come to.
    void run() const { std::ofstream(folder_ + "/control"); }

    void settle(const TestKeyboard& keyboard, const std::string& seat = {}) const {
        struct stat status{};
        expect(stat(keyboard.path().c_str(), &status) == 0, "the device has no file");
        const auto file = folder_ + "/data/c" + std::to_string(major(status.st_rdev)) + ':' +
                          std::to_string(minor(status.st_rdev));
        // Whole at once, as the service does it.
        std::ofstream(file + ".new") << "I:1\n" << (seat.empty() ? "" : "E:ID_SEAT=" + seat + "\n");
        std::filesystem::rename(file + ".new", file);
    }

private:
    const std::string folder_ = "/run/udev";
};

/// What is typed on a keyboard that is not opened goes where it always went, grabbed or not.
void expectLeftAlone(Stage& stage, TestKeyboard& other) {
    const auto name = other.name();
    other.tap(KEY_S);
    stage.keyboard.tap(KEY_ENTER);
    waitFor(
        [&] {
            stage.spectator.look();
            return stage.spectator.count(KEY_ENTER, 0) > 0;
        },
        "the key behind it");
    expectEqual(stage.spectator.latestDeviceOf(KEY_S), name, "the device of the other seat's key");
    expect(!stage.spectator.has(name + "'"), "the keyboard of another seat was opened");
}

void keyboardsOfOtherSeatsAreNotOpened() {
    const UdevRecords records;
    Stage stage;
    TestKeyboard other("B");
    stage.waitForDevice("B");
    records.settle(stage.keyboard);
    records.settle(other, "seat1");
    stage.start();
    stage.play();
    expectLeftAlone(stage, other);
}

void keyboardsOfTheOwnSeatAreOpened() {
    const UdevRecords records;
    Stage stage;
    TestKeyboard other("B");
    records.settle(other, "seat1");
    evdev::KeyboardTapAdapter tap({.seat = "seat1"});
    stage.client.setPlaying(true);
    expect(tap.create(stage.client), "the tap cannot be made");
    tap.enable(true);
    stage.waitForDevice("B'");
    stage.waitUntilGrabbed(other);
    expect(!stage.spectator.has("A'"), "a keyboard of the main seat was opened");
}

void onlyAnotherSeatsKeyboardIsNoTap() {
    const UdevRecords records;
    const TestKeyboard other("B");
    records.settle(other, "seat1");
    Stage stage;
    records.settle(stage.keyboard, "seat1");
    evdev::KeyboardTapAdapter tap({.seat = "seat2"});
    expect(!tap.create(stage.client), "a tap was made without a keyboard");
}

void newKeyboardWaitsForItsSeat() {
    const UdevRecords records;
    Stage stage;
    records.settle(stage.keyboard);
    records.run();
    stage.start();
    stage.play();
    TestKeyboard other("B");
    TestKeyboard own("C");
    stage.waitForDevice("C");
    expectLeftAlone(stage, own);
    records.settle(other, "seat1");
    records.settle(own);
    stage.waitForDevice("C'");
    stage.waitUntilGrabbed(own);
    expect(!stage.spectator.has("B'"), "the keyboard of another seat was opened");
}

} // namespace

std::vector<Check> seatChecks() {
    return {
        {"keyboards_of_other_seats_are_not_opened", keyboardsOfOtherSeatsAreNotOpened},
        {"keyboards_of_the_own_seat_are_opened", keyboardsOfTheOwnSeatAreOpened},
        {"only_another_seats_keyboard_is_no_tap", onlyAnotherSeatsKeyboardIsNoTap},
        {"new_keyboard_waits_for_its_seat", newKeyboardWaitsForItsSeat},
    };
}

} // namespace tavro::proof
