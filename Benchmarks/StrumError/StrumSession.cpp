#include "StrumError/StrumSession.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <iostream>
#include <iterator>
#include <utility>

namespace tavro::bench {

namespace {

constexpr Character chordKey = U'd';

double microseconds(jack_nframes_t frames, jack_nframes_t rate) {
    // Differences of a counter that wraps around are signed.
    return static_cast<double>(static_cast<std::int32_t>(frames)) * 1e6 / rate;
}

} // namespace

StrumSession::StrumSession(Collaborators collaborators, unsigned chords, std::vector<int> steps)
    : with_(collaborators) {
    // Alternating, so that whatever else the machine does meets all ways alike.
    for (auto chord = 0U; chord < chords; ++chord) {
        for (const auto step : steps) {
            for (const auto way : {Way::exact, Way::timers, Way::bare}) {
                chords_.push_back({.way = way, .stepMilliseconds = step});
            }
        }
    }
}

void StrumSession::start(std::function<void()> onEnd) {
    onEnd_ = std::move(onEnd);
    after(randomPause(), [this] { playNext(); });
}

void StrumSession::playNext() {
    if (next_ == chords_.size()) {
        onEnd_();
        return;
    }
    const auto chord = chords_[next_++];
    static_cast<void>(with_.recorder.takeArrivals());
    static_cast<void>(with_.recorder.takeLateness());
    xrunsBefore_ = with_.recorder.xruns();
    lostBefore_ = with_.recorder.lost();
    absencesBefore_ = with_.recorder.absences();
    press(chord);
    const auto length = std::chrono::milliseconds(chord.stepMilliseconds) * expectedNotes_;
    after(length + std::chrono::milliseconds(100), [this, chord] { finish(chord); });
}

void StrumSession::press(const Chord& chord) {
    if (chord.way == Way::bare) {
        // As many notes as the chords before.
        const auto step = static_cast<jack_nframes_t>(chord.stepMilliseconds) * with_.recorder.rate() / 1000;
        pressFrame_ = with_.recorder.frame();
        with_.bareStrum.play(static_cast<std::uint32_t>(expectedNotes_), step);
        return;
    }
    auto state = with_.controller.state();
    state.strumMilliseconds = chord.stepMilliseconds;
    with_.controller.changeState(state);
    with_.scheduling.setExact(chord.way == Way::exact);
    pressFrame_ = with_.recorder.frame();
    with_.controller.handleKeyDown(chordKey);
    const auto& sounding = with_.controller.engine().activeNotesByKey();
    const auto notes = sounding.find(chordKey);
    expectedNotes_ = notes == sounding.end() ? 0 : notes->second.size();
}

void StrumSession::finish(const Chord& chord) {
    auto arrivals = with_.recorder.takeArrivals();
    std::erase_if(arrivals, [](const auto& arrival) { return !arrival.isNoteOn(); });
    print(chord, arrivals);
    with_.controller.handleKeyUp(chordKey);
    after(randomPause(), [this] { playNext(); });
}

void StrumSession::print(const Chord& chord, const std::vector<ArrivalRecorder::Arrival>& noteOns) const {
    const auto rate = with_.recorder.rate();
    auto errors = nlohmann::ordered_json::array();
    for (std::size_t index = 1; index < noteOns.size(); ++index) {
        const auto planned = 1e3 * chord.stepMilliseconds * static_cast<double>(index);
        errors.push_back(microseconds(noteOns[index].frame - noteOns.front().frame, rate) - planned);
    }
    constexpr std::array<const char*, 3> names{"exact", "timers", "bare"};
    nlohmann::ordered_json line{{"way", names[static_cast<std::size_t>(chord.way)]},
                                {"step_ms", chord.stepMilliseconds},
                                {"errors_us", errors},
                                {"missing", static_cast<long>(expectedNotes_) - std::ssize(noteOns)},
                                {"xruns", with_.recorder.xruns() - xrunsBefore_},
                                {"lost", with_.recorder.lost() - lostBefore_},
                                {"absences", with_.recorder.absences() - absencesBefore_},
                                {"late_us", with_.recorder.takeLateness()}};
    if (!noteOns.empty()) {
        line["delay_us"] = microseconds(noteOns.front().frame - pressFrame_, rate);
    }
    std::cout << line << std::endl;
}

void StrumSession::after(std::chrono::microseconds delay, MainActor::Action action) {
    task_ = with_.mainActor.after(delay, std::move(action));
}

std::chrono::microseconds StrumSession::randomPause() {
    return std::chrono::microseconds(std::uniform_int_distribution(40'000, 80'000)(random_));
}

} // namespace tavro::bench
