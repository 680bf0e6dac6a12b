#include "Stage.h"

#include "Expectations.h"

#include <algorithm>

namespace tavro::proof {

Stage::Stage(TestKeyboard::Kind kind) : keyboard("A", kind) {
    waitForDevice("A");
}

void Stage::start() {
    expect(tap.create(client), "the tap cannot be made");
    tap.enable(true);
    waitForDevice("A'");
    settle();
    expectTold({});
    static_cast<void>(takeSeen());
}

void Stage::play() {
    client.setPlaying(true);
    tap.updateVerdicts();
    waitUntilGrabbed(keyboard);
    static_cast<void>(takeSeen());
}

void Stage::stopPlaying() {
    client.setPlaying(false);
    tap.updateVerdicts();
}

bool Stage::settle(TestKeyboard& marked) {
    const auto told = client.markers();
    const auto seen = spectator.count(ScriptedClient::marker, 0);
    marked.tap(ScriptedClient::marker);
    waitFor(
        [&] {
            spectator.look();
            return spectator.count(ScriptedClient::marker, 0) > seen && client.markers() > told;
        },
        "the keys to come through");
    return spectator.latestDeviceOf(ScriptedClient::marker) == marked.name() + "'";
}

void Stage::waitUntilGrabbed(TestKeyboard& marked) {
    waitFor([&] { return settle(marked); }, "the grab of " + marked.name());
}

void Stage::waitUntilFree(TestKeyboard& marked) {
    waitFor([&] { return !settle(marked); }, "the end of the grab of " + marked.name());
}

void Stage::waitForDevice(const std::string& device) {
    waitFor(
        [&] {
            spectator.look();
            return spectator.has(device);
        },
        "the device " + device);
}

void Stage::waitForNoDevice(const std::string& device) {
    waitFor(
        [&] {
            spectator.look();
            return !spectator.has(device);
        },
        "the end of the device " + device);
}

void Stage::expectSeen(const std::vector<std::string>& keys) {
    settle();
    expectEqual(takeSeen(), keys, "what others see");
}

void Stage::expectTold(const std::vector<std::string>& keys) {
    expectEqual(client.takeTold(), keys, "what the client is told");
}

std::vector<std::string> Stage::takeSeen() {
    auto keys = spectator.takeKeys();
    const auto marker = std::to_string(ScriptedClient::marker);
    std::erase_if(keys, [&](const std::string& key) {
        return key.find(' ' + marker + ' ') != std::string::npos || key.ends_with(" raw " + marker);
    });
    return keys;
}

} // namespace tavro::proof
