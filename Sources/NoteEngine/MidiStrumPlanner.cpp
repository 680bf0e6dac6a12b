#include "NoteEngine/MidiStrumPlanner.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>

namespace tavro {

namespace {

constexpr std::int64_t longestStep = 50;
constexpr std::int64_t bassDistance = 12;

/// What one key contributes to a batch.
class Strum {
public:
    void addNote(std::int64_t note) { notes_.push_back(note); }

    /// To be called when all notes are known.
    void findBass() {
        auto sorted = notes_;
        std::ranges::sort(sorted);
        steps_ = static_cast<std::int64_t>(sorted.size());
        if (sorted.size() >= 2 && sorted[1] - sorted[0] >= bassDistance) {
            bass_ = sorted.front();
            --steps_;
        }
    }

    [[nodiscard]] std::int64_t delayOfNext(std::int64_t note, std::int64_t step) {
        if (note == bass_) {
            return 0;
        }
        const auto index = played_++;
        const auto position = step >= 0 ? index : steps_ - 1 - index;
        return position < 1 ? 0 : std::abs(step) * position;
    }

private:
    std::vector<std::int64_t> notes_;
    std::optional<std::int64_t> bass_;
    std::int64_t steps_ = 0;
    std::int64_t played_ = 0;
};

bool isStrummed(const NoteEvent& event) {
    return event.type == NoteEvent::EventType::noteOn && event.sourceKey != noKey;
}

} // namespace

std::vector<PlannedMidiEvent> MidiStrumPlanner::plan(std::span<const NoteEvent> events,
                                                     std::int64_t strumMilliseconds) {
    const auto step = std::clamp(strumMilliseconds, -longestStep, longestStep);
    std::map<Character, Strum> strums;
    for (const auto& event : events) {
        if (isStrummed(event)) {
            strums[event.sourceKey].addNote(event.note);
        }
    }
    for (auto& entry : strums) {
        entry.second.findBass();
    }
    std::vector<PlannedMidiEvent> plan;
    plan.reserve(events.size());
    for (const auto& event : events) {
        plan.push_back(
            {event, isStrummed(event) ? strums[event.sourceKey].delayOfNext(event.note, step) : 0});
    }
    return plan;
}

} // namespace tavro
