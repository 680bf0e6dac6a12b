// The least that brings a key typed elsewhere to JACK: the program's keyboard tap and its JACK adapter, so
// that the rules, the main thread and the instrument are all that the program adds. The keys that play in the
// program are swallowed; every one plays the same note.
// Usage: bare_tap CLIENT-NAME GUARD (its port is "Out"). Takes "on" and "off" on standard input, off at
// first, and ends with it.

#include "Common/DeafActor.h"
#include "KeyboardMapping/PhysicalKeyMapper.h"
#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Linux/Jack/MidiSystemAdapter.h"
#include "Platform/Linux/X11/KeyboardTapAdapter.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

using tavro::KeyboardTap;

constexpr std::uint8_t note = 60;
constexpr std::array<std::uint8_t, 3> noteOn{0x90, note, 100};
constexpr std::array<std::uint8_t, 3> noteOff{0x80, note, 0};

/// Plays on the tap's own thread.
class Player final : public KeyboardTap::Client {
public:
    Player(tavro::MidiSystem& midi, tavro::MidiObjectRef source) : midi_(midi), source_(source) {}

    KeyboardTap::Verdict handle(const KeyboardTap::Event& event) override {
        const auto answer = verdict(event);
        if (answer == KeyboardTap::Verdict::swallow && !event.isAutorepeat) {
            midi_.received(source_, event.type == KeyboardTap::Event::Type::keyDown ? noteOn : noteOff);
        }
        return answer;
    }

    [[nodiscard]] KeyboardTap::Verdict verdict(const KeyboardTap::Event& event) const override {
        const auto isKey =
            event.type == KeyboardTap::Event::Type::keyDown || event.type == KeyboardTap::Event::Type::keyUp;
        const auto isPlayed =
            isKey && !event.modifiers.makesShortcut() &&
            tavro::PhysicalKeyMapper::character(event.keyCode, tavro::KeyboardLayoutKind::qwertz);
        return isPlayed ? KeyboardTap::Verdict::swallow : KeyboardTap::Verdict::pass;
    }

    void reportTaken(std::vector<KeyboardTap::Event> /*presses*/) override {}

    void tapEnded(KeyboardTap::End /*end*/) override {}

private:
    tavro::MidiSystem& midi_;
    tavro::MidiObjectRef source_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bare_tap CLIENT-NAME GUARD\n", stderr);
        return 2;
    }
    tavro::bench::DeafActor actor;
    tavro::jack::MidiSystemAdapter midi(actor);
    const auto client = midi.createClient(argv[1], {});
    const auto source = midi.createSource(client.reference, "Out");
    Player player(midi, source.reference);
    const char* const display = std::getenv("DISPLAY");
    tavro::guard::GuardProcess guard(argv[2], display != nullptr ? display : "");
    tavro::x11::KeyboardTapAdapter tap(guard);
    if (source.status != 0 || !tap.create(player)) {
        std::fputs("bare_tap: no JACK server or no display\n", stderr);
        return 1;
    }
    std::string command;
    while (std::getline(std::cin, command)) {
        tap.enable(command == "on");
    }
    tap.dispose();
    return 0;
}
