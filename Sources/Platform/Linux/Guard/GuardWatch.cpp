#include "Platform/Linux/Guard/GuardWatch.h"

#include <algorithm>

namespace tavro::guard {

GuardWatch::Due GuardWatch::take(std::string_view text, Time now) {
    if (const auto orders = GuardOrders::read(text)) {
        follow(*orders, now);
        return {};
    }
    if (text.size() != 1) {
        return {};
    }
    switch (text.front()) {
    case message::mainBeat:
        if (mainBeat_) {
            mainBeat_ = now;
            hasSilenced_ = false;
        }
        break;
    case message::tapBeat:
        if (tapBeat_) {
            tapBeat_ = now;
        }
        break;
    case message::restoreRepeats:
        return {.restoresRepeats = true};
    case message::farewell:
        hasFarewell_ = true;
        break;
    default:
        break;
    }
    return {};
}

void GuardWatch::follow(const GuardOrders& orders, Time now) {
    orders_ = orders;
    auto follow = [now](std::optional<Time>& beat, bool isExpected) {
        if (!isExpected) {
            beat.reset();
        } else if (!beat) {
            beat = now;
        }
    };
    follow(mainBeat_, orders.expectsMain);
    follow(tapBeat_, orders.expectsTap);
    if (!mainBeat_) {
        hasSilenced_ = false;
    }
}

GuardWatch::Due GuardWatch::judge(Time now) {
    Due due;
    const auto keyboard = keyboardDeadline();
    const auto isLate = keyboard && now >= *keyboard;
    due.givesKeyboardBack = isLate && !hasGivenBack_;
    hasGivenBack_ = isLate;
    if (const auto notes = noteDeadline(); notes && now >= *notes && !hasSilenced_) {
        due.silences = true;
        hasSilenced_ = true;
    }
    return due;
}

std::optional<GuardWatch::Time> GuardWatch::nextJudgement() const {
    std::optional<Time> next;
    if (!hasGivenBack_) {
        next = keyboardDeadline();
    }
    if (const auto notes = noteDeadline(); notes && !hasSilenced_) {
        next = next ? std::min(*next, *notes) : *notes;
    }
    return next;
}

GuardWatch::Due GuardWatch::atEnd() const {
    return {.restoresRepeats = true, .silences = !hasFarewell_};
}

std::optional<GuardWatch::Time> GuardWatch::keyboardDeadline() const {
    std::optional<Time> deadline;
    if (tapBeat_) {
        deadline = *tapBeat_ + tapPatience;
    }
    if (mainBeat_) {
        const auto mains = *mainBeat_ + mainPatience;
        deadline = deadline ? std::min(*deadline, mains) : mains;
    }
    return deadline;
}

std::optional<GuardWatch::Time> GuardWatch::noteDeadline() const {
    return mainBeat_ ? std::optional(*mainBeat_ + notePatience) : std::nullopt;
}

} // namespace tavro::guard
