#include "ApplicationShell/ControllerFixture.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <utility>

namespace tavro {
namespace {

/// Notes that sound at the receiver: how many more note-ons than note-offs, by channel and note.
using Balance = std::map<std::pair<int, int>, int>;

void count(Balance& balance, std::pair<int, int> note, int change) {
    if ((balance[note] += change) == 0) {
        balance.erase(note);
    }
}

/// A controller whose wire is watched.
class WatchedController {
public:
    WatchedController() {
        fixture_.midiSystem.recordsMessages = false;
        fixture_.midiSystem.onMessage = [this](const auto& message) {
            const auto kind = message.bytes[0] & 0xF0;
            const auto note = std::pair(message.bytes[0] & 0x0F, int{message.bytes[1]});
            if (kind == 0x90) {
                count(wire_, note, 1);
            } else if (kind == 0x80) {
                count(wire_, note, -1);
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
                count(notes, {channel, note}, 1);
            }
        }
        if (const auto bass = engine.currentBassNote()) {
            count(notes, {channel, *bass}, 1);
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

template <class Field>
void change(WatchedController& watched, Field PerformanceState::* field, Field value) {
    watched.fixture().change([&](auto& state) { state.*field = value; });
}

void changeASetting(WatchedController& watched) {
    using State = PerformanceState;
    const auto number = [](int lowest, int highest) {
        return static_cast<std::int64_t>(*rc::gen::inRange(lowest, highest + 1));
    };
    auto& controller = watched.controller();
    switch (*rc::gen::inRange(0, 19)) {
    case 0:
        return change(watched, &State::rootSemitone, number(0, 11));
    case 1: {
        const auto& scale = ScaleEngine::scales()[static_cast<std::size_t>(number(0, 12))];
        return change(watched, &State::scaleName, std::string(scale.name));
    }
    case 2:
        return change(watched, &State::baseMidiC, number(36, 84));
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
        return controller.setChordEnabledBinding(*rc::gen::arbitrary<bool>());
    case 12:
        return controller.setHoldBinding(*rc::gen::arbitrary<bool>());
    case 13:
        return controller.setSmartHoldBinding(*rc::gen::arbitrary<bool>());
    case 14:
        return change(watched, &State::bassNoteEnabled, *rc::gen::arbitrary<bool>());
    case 15:
        return change(watched, &State::bassOctaveDown, number(1, 2));
    case 16:
        return controller.setSplitModeBinding(*rc::gen::arbitrary<bool>());
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
        watched.controller().handleKeyDown(anyKey());
    } else if (kind < 13) {
        watched.controller().handleKeyUp(anyKey());
    } else if (kind < 16) {
        watched.runFor(*rc::gen::inRange(0, 120));
    } else if (kind < 19) {
        changeASetting(watched);
    } else {
        watched.controller().panic();
    }
}

void actForAWhile(WatchedController& watched) {
    const auto actions = *rc::gen::inRange(1, 60);
    for (int action = 0; action < actions; ++action) {
        act(watched);
    }
}

RC_GTEST_PROP(WireBalance, isWhatTheEngineBelievesWhenEveryStrumIsOver, ()) {
    WatchedController watched;
    actForAWhile(watched);
    watched.settle();
    RC_ASSERT(watched.wire() == watched.believed());
}

RC_GTEST_PROP(WireBalance, isEmptyAfterAPanicAndStaysSo, ()) {
    WatchedController watched;
    actForAWhile(watched);
    watched.controller().panic();
    RC_ASSERT(watched.wire().empty());
    RC_ASSERT(watched.believed().empty());
    watched.settle();
    RC_ASSERT(watched.wire().empty());
}

RC_GTEST_PROP(WireBalance, isEmptyAtTheOldChannelAfterAChannelChange, ()) {
    WatchedController watched;
    actForAWhile(watched);
    const auto other = watched.controller().state().midiChannel % 16 + 1;
    change(watched, &PerformanceState::midiChannel, other);
    RC_ASSERT(watched.wire().empty());
    watched.settle();
    RC_ASSERT(watched.wire().empty());
}

RC_GTEST_PROP(WireBalance, theDisplayShowsTheKeysThatTheEngineHolds, ()) {
    WatchedController watched;
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
