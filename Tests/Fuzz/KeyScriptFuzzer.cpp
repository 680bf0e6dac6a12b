#include "Platform/Headless/MidiSystemAdapter.h"
#include "Player/KeyScript.h"
#include "Player/Pacer.h"
#include "Player/ScriptPlayer.h"
#include "Require.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace {

using namespace tavro;

/// Takes what is played, and looks whether it is MIDI and in order.
class CheckedOutput final : public PlayerOutput {
public:
    void midi(std::chrono::milliseconds time, std::span<const std::uint8_t> message) override {
        requireOrder(time);
        constexpr std::uint8_t kind = 0xF0;
        require(message.size() == 3, "a message has three bytes");
        require((message[0] & kind) == 0x80 || (message[0] & kind) == 0x90 || (message[0] & kind) == 0xB0,
                "a message is a note or a control");
        require(message[1] < 0x80 && message[2] < 0x80, "data bytes have seven bits");
    }

    void show(std::chrono::milliseconds time, const ReadOuts& readOuts) override {
        requireOrder(time);
        require(!readOuts.chord.empty(), "there is always a text for the chord");
    }

private:
    void requireOrder(std::chrono::milliseconds time) {
        require(time >= last_, "the time never goes back");
        last_ = time;
    }

    std::chrono::milliseconds last_{0};
};

std::optional<KeyScript> parsed(std::string_view text) {
    try {
        return KeyScript::parse(text);
    } catch (const KeyScriptError& error) {
        require(error.line() >= 1 && error.line() <= text.size() + 1, "the line is one of the text");
        return std::nullopt;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto script = parsed({reinterpret_cast<const char*>(data), size});
    if (script) {
        CheckedOutput output;
        headless::MidiSystemAdapter midiSystem;
        midiSystem.recordsMessages = false;
        VirtualPacer pacer;
        ScriptPlayer player(output, midiSystem, pacer);
        player.play(*script);
        player.runOut();
        player.quit();
    }
    return 0;
}
