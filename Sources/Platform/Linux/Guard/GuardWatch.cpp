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
    const auto oldest = oldestBeat();
    const auto isLate = oldest && now - *oldest >= keyboardPatience;
    due.givesKeyboardBack = isLate && !hasGivenBack_;
    hasGivenBack_ = isLate;
    if (mainBeat_ && now - *mainBeat_ >= notePatience && !hasSilenced_) {
        due.silences = true;
        hasSilenced_ = true;
    }
    return due;
}

std::optional<GuardWatch::Time> GuardWatch::nextJudgement() const {
    std::optional<Time> next;
    if (const auto oldest = oldestBeat(); oldest && !hasGivenBack_) {
        next = *oldest + keyboardPatience;
    }
    if (mainBeat_ && !hasSilenced_) {
        const auto silence = *mainBeat_ + notePatience;
        next = next ? std::min(*next, silence) : silence;
    }
    return next;
}

GuardWatch::Due GuardWatch::atEnd() const {
    return {.restoresRepeats = true, .silences = !hasFarewell_};
}

std::optional<GuardWatch::Time> GuardWatch::oldestBeat() const {
    return mainBeat_ && tapBeat_ ? std::min(*mainBeat_, *tapBeat_) : mainBeat_ ? mainBeat_ : tapBeat_;
}

} // namespace tavro::guard
