#include "SimulatedQueue.h"

#include <algorithm>
#include <utility>

namespace tavro::alsa {

void SimulatedQueue::runOut() {
    while (hasWork()) {
        step();
    }
}

void SimulatedQueue::loseMarks() {
    areMarksLost_ = !arrivedMarks_.empty();
    arrivedMarks_.clear();
}

bool SimulatedQueue::start() {
    isRunning = canStart;
    return canStart;
}

void SimulatedQueue::stop() {
    isRunning = false;
}

bool SimulatedQueue::add(snd_seq_event_t& event, Time time, Tag tag) {
    return put({.time = time, .tag = tag, .isMark = false, .value = event.data.note.note});
}

bool SimulatedQueue::addMark(std::uint32_t number, Time time, Tag tag) {
    return put({.time = time, .tag = tag, .isMark = true, .value = number});
}

bool SimulatedQueue::put(Cell cell) {
    letOthersWork();
    if (room == 0) {
        return false;
    }
    --room;
    cells_.insert(std::ranges::upper_bound(cells_, cell.time, {}, &Cell::time), cell);
    letOthersWork();
    if (passTime_) {
        isAskedAgain_ = true;
    } else {
        // Nobody is at it, so this one lets out what is due before it returns.
        while (isSomeDue(time_)) {
            deliver(cells_.front());
            cells_.erase(cells_.begin());
        }
    }
    return true;
}

void SimulatedQueue::remove(Tag tag) {
    letOthersWork();
    room += std::erase_if(cells_, [tag](const Cell& cell) { return cell.tag == tag; });
}

void SimulatedQueue::read() {
    letOthersWork();
    if (std::exchange(areMarksLost_, false)) {
        scheduled->marksWereLost();
    }
    for (const auto mark : std::exchange(arrivedMarks_, {})) {
        scheduled->markHasCome(mark);
    }
}

void SimulatedQueue::await() {
    ++waits;
    runOut();
    read();
}

bool SimulatedQueue::hasWork() const {
    return onItsWay_ || passTime_ || (isRunning && isSomeDue(time_));
}

void SimulatedQueue::step() {
    if (onItsWay_) {
        deliver(*onItsWay_);
        onItsWay_.reset();
        return;
    }
    if (!passTime_) {
        passTime_ = time_;
    }
    if (isSomeDue(*passTime_)) {
        onItsWay_ = cells_.front();
        cells_.erase(cells_.begin());
    } else {
        passTime_.reset();
        if (std::exchange(isAskedAgain_, false)) {
            passTime_ = time_;
        }
    }
}

void SimulatedQueue::letOthersWork() {
    while (hasWork() && isQuick()) {
        step();
    }
}

bool SimulatedQueue::isSomeDue(Time time) const {
    return !cells_.empty() && cells_.front().time <= time;
}

void SimulatedQueue::deliver(const Cell& cell) {
    ++room;
    if (cell.isMark) {
        arrivedMarks_.push_back(cell.value);
    } else {
        heard.push_back(static_cast<int>(cell.value));
    }
}

} // namespace tavro::alsa
