#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"
#include "QueueState.h"
#include "Seeds.h"
#include "StrumInstrument.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <random>
#include <stdexcept>
#include <thread>
#include <utility>

namespace tavro::proof {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int notes = StrumInstrument::notesOfKey;

/// The output and a listener of it.
class Stage {
public:
    explicit Stage(StrumInstrument::Way way = StrumInstrument::Way::queue) : instrument(way) {
        listener_.listenTo(Instrument::source());
    }

    /// All that has been heard so far.
    const std::vector<Bytes>& heard() {
        for (auto& message : listener_.take()) {
            heard_.push_back(std::move(message));
        }
        return heard_;
    }

    void waitForHeard(std::size_t count) {
        waitFor([&] { return heard().size() >= count; }, std::to_string(count) + " messages");
    }

    void waitForEnd() {
        waitFor([&] { return !instrument.manager().hasPendingNoteOns(); }, "the end of the strums");
    }

    /// Lets more time pass than any strum takes.
    static void waitLonger() {
        const QDeadlineTimer deadline(std::chrono::milliseconds(1000));
        waitFor([&] { return deadline.hasExpired(); }, "time to pass");
    }

    StrumInstrument instrument;

private:
    SequencerPeer listener_{"Listener"};
    std::vector<Bytes> heard_;
};

/// Strums in both directions, by one key and by several, let go after their end, and panic. Nothing when the
/// machine was busy with something else in the middle of a press: a note's delay counts from when it is
/// handed over, so that their order may be another one then.
std::optional<std::vector<Bytes>> playedBy(StrumInstrument::Way way) {
    Stage stage(way);
    auto& instrument = stage.instrument;
    auto longest = Clock::duration::zero();
    const auto quickly = [&](const auto& action) {
        const auto begin = Clock::now();
        action();
        longest = std::max(longest, Clock::now() - begin);
    };
    for (const auto step : {50, -50, 30, -30, 0}) {
        quickly([&] { instrument.press(1, step); });
        stage.waitForEnd();
        instrument.release(1);
        quickly([&] {
            instrument.press(2, step);
            instrument.press(3, step);
            instrument.release(3);
        });
        stage.waitForEnd();
        instrument.release(2);
    }
    instrument.press(4, 20);
    stage.waitForEnd();
    instrument.manager().sendAllNotesOff(1);
    Stage::waitLonger();
    return longest < std::chrono::milliseconds(20) ? std::optional(stage.heard()) : std::nullopt;
}

std::vector<Bytes> playedUndisturbedBy(StrumInstrument::Way way) {
    for (auto attempt = 0; attempt < 10; ++attempt) {
        if (auto played = playedBy(way)) {
            return std::move(*played);
        }
    }
    throw std::runtime_error("no press was undisturbed");
}

void strumSoundsAsByTimers() {
    const auto byTimers = playedUndisturbedBy(StrumInstrument::Way::timers);
    expectEqual(byTimers.size(), 155, "messages by timers");
    expectEqual(playedUndisturbedBy(StrumInstrument::Way::queue), byTimers, "the listener");
}

void notesWaitInTheQueueUntilTheirTimes() {
    Stage stage;
    stage.instrument.pressSlowly(1);
    expectEqual(stage.heard(), {on(1, 0)}, "at the press");
    const auto state = QueueState::read();
    expect(state.isRunning && state.isTicking, "the queue does not run");
    expectEqual(static_cast<std::uint64_t>(state.waiting), 8, "notes and marks in the queue");
    // Nothing of the main thread runs meanwhile.
    std::this_thread::sleep_for(std::chrono::milliseconds(1200));
    expectEqual(stage.heard(), {on(1, 0), on(1, 1), on(1, 2), on(1, 3), on(1, 4)}, "once it is over");
    stage.waitForEnd();
    expectRest("after the strum");
}

/// Messages of each note, in order.
std::map<std::uint8_t, std::vector<Bytes>> byNote(const std::vector<Bytes>& messages) {
    std::map<std::uint8_t, std::vector<Bytes>> sorted;
    for (const auto& message : messages) {
        sorted[message[1]].push_back(message);
    }
    return sorted;
}

/// Each note that was heard was heard once, and then its end.
void expectBalance(const std::vector<Bytes>& heard, int key, std::size_t atLeast) {
    const auto sorted = byNote(heard);
    expect(sorted.size() >= atLeast,
           std::to_string(sorted.size()) + " notes, less than " + std::to_string(atLeast));
    for (const auto& [number, messages] : sorted) {
        const auto note = number - key * notes;
        expectEqual(messages, {on(key, note), off(key, note)}, "note " + std::to_string(number));
    }
}

void releaseBetweenTheNotesTakesBackTheRest() {
    for (std::size_t count = 1; count <= notes; ++count) {
        Stage stage;
        stage.instrument.pressSlowly(1);
        stage.waitForHeard(count);
        stage.instrument.release(1);
        expectRest("after the release");
        Stage::waitLonger();
        expectBalance(stage.heard(), 1, count);
    }
}

void releaseBeforeTheFirstNoteTakesBackAll() {
    Stage stage;
    stage.instrument.pressSlowly(1);
    stage.instrument.release(1);
    Stage::waitLonger();
    expectEqual(stage.heard(), {on(1, 0), off(1, 0)}, "the listener");
    expectRest("after the release");
}

void releaseAtTheVeryMomentLeavesNothingRinging() {
    Stage stage;
    using namespace std::chrono_literals;
    for (auto offset = -1000us; offset < 1000us; offset += 10us) {
        const auto before = stage.heard().size();
        const auto due = Clock::now() + 4ms + offset;
        stage.instrument.press(1, 2);
        while (Clock::now() < due) {
        }
        stage.instrument.release(1);
        expectRest("after the release");
        const auto& heard = stage.heard();
        expectBalance({heard.begin() + static_cast<std::ptrdiff_t>(before), heard.end()}, 1, 1);
    }
    const auto count = stage.heard().size();
    Stage::waitLonger();
    expectEqual(stage.heard().size(), count, "messages, later");
}

void panicInAStrumIsTheLastThingHeard() {
    for (std::size_t count = 1; count < notes; ++count) {
        Stage stage;
        stage.instrument.pressSlowly(1);
        stage.waitForHeard(count);
        stage.instrument.manager().sendAllNotesOff(1);
        expectRest("after the panic");
        Stage::waitLonger();
        const auto& heard = stage.heard();
        const auto panic = StrumInstrument::panic();
        expect(heard.size() >= count + panic.size(), "the panic is not whole");
        expectEqual({heard.end() - static_cast<std::ptrdiff_t>(panic.size()), heard.end()}, panic,
                    "the end of what was heard");
    }
}

void randomPlayingLosesNothingAndDoublesNothing() {
    Stage stage;
    std::mt19937 random(seedOr(20261122));
    const auto upTo = [&](int end) { return std::uniform_int_distribution(0, end - 1)(random); };
    std::vector<bool> isDown(StrumInstrument::keys);
    for (auto turn = 0; turn < 3000; ++turn) {
        const auto key = upTo(StrumInstrument::keys);
        if (upTo(100) == 0) {
            stage.instrument.manager().cancelPendingNoteOns();
        }
        if (isDown[static_cast<std::size_t>(key)]) {
            stage.instrument.release(key);
        } else {
            stage.instrument.press(key, upTo(13) - 6);
        }
        isDown[static_cast<std::size_t>(key)] = !isDown[static_cast<std::size_t>(key)];
        const auto pause = Clock::now() + std::chrono::microseconds(upTo(3000));
        do {
            QCoreApplication::processEvents();
        } while (Clock::now() < pause);
        stage.heard();
    }
    stage.waitForEnd();
    Stage::waitLonger();
    expectRest("at the end");
    const auto heard = byNote(stage.heard());
    const auto told = byNote(stage.instrument.told());
    expect(stage.heard().size() > 5000, "too little was played: " + std::to_string(stage.heard().size()));
    for (const auto& [note, messages] : told) {
        const auto found = heard.find(note);
        expectEqual(found == heard.end() ? std::vector<Bytes>() : found->second, messages,
                    "note " + std::to_string(note));
    }
    expectEqual(stage.heard().size(), stage.instrument.told().size(), "messages");
}

} // namespace

std::vector<Check> strumChecks() {
    return {
        {"strum_sounds_as_by_timers", strumSoundsAsByTimers},
        {"notes_wait_in_the_queue_until_their_times", notesWaitInTheQueueUntilTheirTimes},
        {"release_between_the_notes_takes_back_the_rest", releaseBetweenTheNotesTakesBackTheRest},
        {"release_before_the_first_note_takes_back_all", releaseBeforeTheFirstNoteTakesBackAll},
        {"release_at_the_very_moment_leaves_nothing_ringing", releaseAtTheVeryMomentLeavesNothingRinging},
        {"panic_in_a_strum_is_the_last_thing_heard", panicInAStrumIsTheLastThingHeard},
        {"random_playing_loses_nothing_and_doubles_nothing", randomPlayingLosesNothingAndDoublesNothing},
    };
}

} // namespace tavro::proof
