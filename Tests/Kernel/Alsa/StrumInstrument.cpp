#include "StrumInstrument.h"

#include "PlatformInterfaces/PanicMessages.h"

namespace tavro::proof {

namespace {

constexpr int velocity = 100;

std::uint8_t noteNumber(int key, int note) {
    return static_cast<std::uint8_t>(key * StrumInstrument::notesOfKey + note);
}

} // namespace

StrumInstrument::StrumInstrument(Way way) {
    observed_.mayGoAhead = [way](auto /*delay*/) { return way == Way::queue; };
    observed_.onMessage = [this](auto message) { told_.emplace_back(message.begin(), message.end()); };
}

void StrumInstrument::press(int key, int stepMilliseconds) {
    manager_.send(events(NoteEvent::EventType::noteOn, key), stepMilliseconds);
}

void StrumInstrument::pressSlowly(int key) {
    auto delay = 0;
    for (const auto& event : events(NoteEvent::EventType::noteOn, key)) {
        if (delay == 0) {
            manager_.send(event);
        } else {
            manager_.sendNoteOn(event, delay);
        }
        delay += slowStep;
    }
}

void StrumInstrument::release(int key) {
    manager_.send(events(NoteEvent::EventType::noteOff, key), 0);
}

Bytes on(int key, int note) {
    return {0x90, noteNumber(key, note), velocity};
}

Bytes off(int key, int note) {
    return {0x80, noteNumber(key, note), 0};
}

std::vector<Bytes> StrumInstrument::panic() {
    std::vector<Bytes> all;
    for (const auto& message : panicMessages()) {
        all.emplace_back(message.begin(), message.end());
    }
    return all;
}

std::vector<NoteEvent> StrumInstrument::events(NoteEvent::EventType type, int key) {
    std::vector<NoteEvent> events;
    for (int note = 0; note < notesOfKey; ++note) {
        events.push_back({type, noteNumber(key, note), type == NoteEvent::EventType::noteOn ? velocity : 0, 1,
                          static_cast<Character>(U'a' + static_cast<unsigned>(key))});
    }
    return events;
}

} // namespace tavro::proof
