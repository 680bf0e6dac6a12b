#pragma once

#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"
#include "ScriptedClient.h"
#include "Spectator.h"
#include "TestKeyboard.h"

#include <string>
#include <vector>

namespace tavro::proof {

/// A keyboard "A", the tap with its client, and the spectator, who sees them all.
class Stage {
public:
    explicit Stage(TestKeyboard::Kind kind = TestKeyboard::Kind::keyboard);

    TestKeyboard keyboard;
    ScriptedClient client;
    Spectator spectator;
    evdev::KeyboardTapAdapter tap;

    /// Makes the tap and switches it on; returns when it reads the keyboard.
    void start();

    /// Lets the client play, and returns when the keyboard is grabbed.
    void play();

    /// Tells the tap that the client does not play any more.
    void stopPlaying();

    /// Returns when all that was typed on the keyboard has come where it goes. True when the keyboard is
    /// grabbed.
    bool settle(TestKeyboard& keyboard);

    bool settle() { return settle(keyboard); }

    void waitUntilGrabbed(TestKeyboard& keyboard);
    void waitUntilFree(TestKeyboard& keyboard);

    /// Waits for a device, as the spectator names it, to come or go.
    void waitForDevice(const std::string& device);
    void waitForNoDevice(const std::string& device);

    /// Settles, and expects that since the last time others have seen these keys and no more.
    void expectSeen(const std::vector<std::string>& keys);

    /// Expects that since the last time the client was told these keys and no more.
    void expectTold(const std::vector<std::string>& keys);

    /// What was seen since the last time, without the marker.
    [[nodiscard]] std::vector<std::string> takeSeen();
};

} // namespace tavro::proof
