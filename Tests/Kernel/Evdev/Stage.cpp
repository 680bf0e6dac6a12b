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
    const auto keys = spectator.takeKeys();
    auto wasGrabbed = false;
    // What is not the marker is seen another time.
    for (const auto& key : keys) {
        if (key == marked.name() + "' " + std::to_string(ScriptedClient::marker) + " 0") {
            wasGrabbed = true;
        }
    }
    spectator.putBack(keys);
    return wasGrabbed;
}

} // namespace tavro::proof
