#include "Performance/ControllerFixture.h"
#include "PerformanceModel/PerformanceStateCoding.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <rapidcheck/gtest.h>

#include <map>
#include <utility>

namespace tavro {
namespace {

/// How often each note sounds at the receiver, by channel and note. A note-off for a silent note is nothing
/// there, and a note-on that comes after its note-off sounds for ever.
using Balance = std::map<std::pair<int, int>, int>;

void startNote(Balance& balance, std::pair<int, int> note) {
    ++balance[note];
}

void endNote(Balance& balance, std::pair<int, int> note) {
    if (const auto found = balance.find(note); found != balance.end() && --found->second == 0) {
        balance.erase(found);
    }
}

/// A controller whose wire is watched.
class WatchedController {
public:
    explicit WatchedController(const PerformanceState& state) : fixture_(state) {
        fixture_.midiSystem.recordsMessages = false;
        fixture_.midiSystem.onMessage = [this](const auto& message) {
            const auto kind = message.bytes[0] & 0xF0;
            const auto note = std::pair(message.bytes[0] & 0x0F, int{message.bytes[1]});
            if (kind == 0x90) {
                startNote(wire_, note);
            } else if (kind == 0x80) {
                endNote(wire_, note);
            }
        };
    }

    PerformanceController& controller() { return fixture_.controller; }

    ControllerFixture& fixture() { return fixture_; }

    const Balance& wire() const { return wire_; }

    void runFor(int milliseconds) {
        fixture_.mainActor.runUntil(fixture_.mainActor.now() + std::chrono::milliseconds(milliseconds));
    }

    void settle() { fixture_.mainActor.runToEnd(); }

    Balance believed() const {
        Balance notes;
        const auto& engine = fixture_.controller.engine();
        const auto channel = static_cast<int>(clampedChannel(fixture_.controller.state().midiChannel)) - 1;
        for (const auto& [key, sounding] : engine.activeNotesByKey()) {
            for (const auto note : sounding) {
                startNote(notes, {channel, note});
            }
        }
        if (const auto bass = engine.currentBassNote()) {
            startNote(notes, {channel, *bass});
        }
        return notes;
    }

private:
    ControllerFixture fixture_;
    Balance wire_;
};

Character anyKey() {
    static const std::u32string keys =
        U"yxcvbnm,.-asdfghjkl\u00F6\u00E4qwertzuiop\u00FC+1234567890\u00DF\u00B4/;A^";
    return *rc::gen::elementOf(keys);
}

std::int64_t number(std::int64_t lowest, std::int64_t highest) {
    // Small trials would be drawn near the lower end otherwise.
    return *rc::gen::resize(100, rc::gen::inRange<std::int64_t>(lowest, highest + 1));
}

bool coin() {
    return *rc::gen::arbitrary<bool>();
}

std::string anyScale() {
    return std::string(ScaleEngine::scales()[static_cast<std::size_t>(number(0, 12))].name);
}

/// Everything on at once is where rules meet; changing settings one by one would seldom get there.
PerformanceState anyState() {
    PerformanceState state;
    state.rootSemitone = number(0, 11);
    state.scaleName = anyScale();
    state.globalOctaveOffset = number(-3, 3);
    state.velocity = number(1, 127);
    state.strumMilliseconds = number(-50, 50);
    state.voicingComplexity = number(0, 100);
    state.maxChordNotes = number(0, 16);
    state.midiChannel = number(1, 16);
    state.chordMode = *rc::gen::elementOf(allChordModes);
    state.holdMode = coin();
    state.smartHoldMode = coin();
    state.bassNoteEnabled = coin();
    state.bassOctaveDown = number(1, 2);
    state.splitModeEnabled = coin();
    state.melodyOctaveOffset = number(-3, 3);
    return state;
}

template <class Field>
void change(WatchedController& watched, Field PerformanceState::* field, Field value) {
    watched.fixture().change([&](auto& state) { state.*field = value; });
}

void changeASetting(WatchedController& watched) {
    using State = PerformanceState;
    auto& controller = watched.controller();
    switch (*rc::gen::inRange(0, 19)) {
    case 0:
        return change(watched, &State::rootSemitone, number(0, 11));
    case 1:
        return change(watched, &State::scaleName, anyScale());
    case 2:
        return change(watched, &State::baseMidiC, std::int64_t{60});
    case 3:
        return change(watched, &State::globalOctaveOffset, number(-3, 3));
    case 4:
        return change(watched, &State::velocity, number(1, 127));
    case 5:
        return change(watched, &State::humanizeVelocity, number(0, 30));
    case 6:
    case 7:
        return change(watched, &State::strumMilliseconds, number(-50, 50));
    case 8:
        return controller.setChordComplexityBinding(number(0, 100));
    case 9:
        return change(watched, &State::maxChordNotes, number(0, 16));
    case 10:
        return change(watched, &State::midiChannel, number(1, 16));
    case 11:
        return controller.setChordEnabledBinding(coin());
    case 12:
        return controller.setHoldBinding(coin());
    case 13:
        return controller.setSmartHoldBinding(coin());
    case 14:
        return change(watched, &State::bassNoteEnabled, coin());
    case 15:
        return change(watched, &State::bassOctaveDown, number(1, 2));
    case 16:
        return controller.setSplitModeBinding(coin());
    case 17:
        return change(watched, &State::melodyOctaveOffset, number(-3, 3));
    default:
        return change(watched, &State::keyboardLayout,
                      *rc::gen::element(KeyboardLayoutKind::qwertz, KeyboardLayoutKind::qwerty));
    }
}

void act(WatchedController& watched) {
    const auto kind = *rc::gen::inRange(0, 20);
    if (kind < 8) {
        const auto key = anyKey();
        RC_LOG() << "down " << toUtf8(key) << '\n';
        watched.controller().handleKeyDown(key);
    } else if (kind < 13) {
        const auto key = anyKey();
        RC_LOG() << "up " << toUtf8(key) << '\n';
        watched.controller().handleKeyUp(key);
    } else if (kind < 16) {
        const auto milliseconds = *rc::gen::inRange(0, 120);
        RC_LOG() << "wait " << milliseconds << '\n';
        watched.runFor(milliseconds);
    } else if (kind < 19) {
        changeASetting(watched);
        RC_LOG() << "settings " << PerformanceStateCoding::encode(watched.controller().state()) << '\n';
    } else {
        RC_LOG() << "panic\n";
        watched.controller().panic();
    }
}

void actForAWhile(WatchedController& watched) {
    RC_LOG() << "settings " << PerformanceStateCoding::encode(watched.controller().state()) << '\n';
    const auto actions = *rc::gen::inRange(1, 60);
    for (int action = 0; action < actions; ++action) {
        act(watched);
    }
}

TEST(WireBalance, ofABassNoteThatTheNextPressEndsBeforeItSounds) {
    // So low that the bass lies within an octave of the chord, where a strum takes it for one of its notes.
    PerformanceState state;
    state.chordMode = ChordMode::ninth;
    state.voicingComplexity = 65;
    state.globalOctaveOffset = -3;
    state.maxChordNotes = 0;
    state.bassNoteEnabled = true;
    state.strumMilliseconds = 1;
    WatchedController watched(state);
    for (const auto key : {U'p', U'-', U's'}) {
        watched.controller().handleKeyDown(key);
    }
    watched.settle();
    EXPECT_EQ(watched.wire(), watched.believed());
}

RC_GTEST_PROP(WireBalance, isWhatTheEngineBelievesWhenEveryStrumIsOver, ()) {
    WatchedController watched(anyState());
    actForAWhile(watched);
    watched.settle();
    RC_ASSERT(watched.wire() == watched.believed());
}

RC_GTEST_PROP(WireBalance, isEmptyAfterAPanicAndStaysSo, ()) {
    WatchedController watched(anyState());
    actForAWhile(watched);
    watched.controller().panic();
    RC_ASSERT(watched.wire().empty());
    RC_ASSERT(watched.believed().empty());
    watched.settle();
    RC_ASSERT(watched.wire().empty());
}

RC_GTEST_PROP(WireBalance, isEmptyAtTheOldChannelAfterAChannelChange, ()) {
    WatchedController watched(anyState());
    actForAWhile(watched);
    const auto other = watched.controller().state().midiChannel % 16 + 1;
    change(watched, &PerformanceState::midiChannel, other);
    RC_ASSERT(watched.wire().empty());
    watched.settle();
    RC_ASSERT(watched.wire().empty());
}

RC_GTEST_PROP(WireBalance, theDisplayShowsTheKeysThatTheEngineHolds, ()) {
    WatchedController watched(anyState());
    actForAWhile(watched);
    watched.settle();
    std::set<Character> held;
    for (const auto& entry : watched.controller().engine().activeNotesByKey()) {
        held.insert(entry.first);
    }
    RC_ASSERT(watched.controller().activeKeys() == held);
    for (const auto key : held) {
        RC_ASSERT(watched.controller().highlightedKeys().contains(key));
    }
}

} // namespace
} // namespace tavro
