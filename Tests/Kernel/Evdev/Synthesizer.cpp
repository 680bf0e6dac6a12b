#include "Synthesizer.h"

namespace tavro::proof {

namespace {

constexpr int noteOff = 0x80;
constexpr int noteOn = 0x90;
constexpr int controlChange = 0xB0;
constexpr int allSoundOff = 120;
constexpr int allNotesOff = 123;

} // namespace

const std::set<std::pair<int, int>>& Synthesizer::sounding() {
    for (const auto& message : peer_.take()) {
        const int kind = message.at(0) & 0xF0;
        const int channel = message.at(0) & 0x0F;
        const int first = message.at(1);
        if (kind == noteOn && message.at(2) != 0) {
            sounding_.emplace(channel, first);
        } else if (kind == noteOn || kind == noteOff) {
            sounding_.erase({channel, first});
        } else if (kind == controlChange && (first == allSoundOff || first == allNotesOff)) {
            std::erase_if(sounding_, [channel](const auto& note) { return note.first == channel; });
        }
    }
    return sounding_;
}

} // namespace tavro::proof
