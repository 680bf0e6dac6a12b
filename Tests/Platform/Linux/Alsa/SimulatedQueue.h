#pragma once

#include "Platform/Linux/Alsa/ScheduledEvents.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tavro::alsa {

/// A queue as the kernel has it on two processors: beside the main thread, which this is called by, another
/// processor lets out what is due, one step at a time. Whether it makes one more before what a call does is
/// asked of `isQuick`.
class SimulatedQueue final : public EventQueue {
public:
    /// Who is told of marks; to be set before the first call.
    ScheduledEvents* scheduled = nullptr;
    std::function<bool()> isQuick = [] { return false; };
    /// What has reached the receivers: the events' first data byte.
    std::vector<int> heard;
    /// How many more events it takes.
    std::size_t room = 1000;
    bool canStart = true;
    bool isRunning = false;
    unsigned waits = 0;

    /// Lets time pass.
    void advance(Time time) { time_ += time; }

    /// Lets the other processor do all it can.
    void runOut();

    /// Throws away the marks that have come and were not read.
    void loseMarks();

    [[nodiscard]] bool isEmpty() const { return cells_.empty() && !onItsWay_; }

    [[nodiscard]] bool start() override;
    void stop() override;

    [[nodiscard]] Time now() const override { return time_; }

    [[nodiscard]] bool add(snd_seq_event_t& event, Time time, Tag tag) override;
    [[nodiscard]] bool addMark(std::uint32_t number, Time time, Tag tag) override;
    void remove(Tag tag) override;
    void read() override;
    void await() override;

private:
    struct Cell {
        Time time;
        Tag tag;
        bool isMark;
        std::uint32_t value;
    };

    [[nodiscard]] bool put(Cell cell);
    /// One step of the other processor: it takes an event out, delivers the one it took, or sees that it is
    /// done.
    void step();
    [[nodiscard]] bool hasWork() const;
    void letOthersWork();
    [[nodiscard]] bool isSomeDue(Time time) const;
    void deliver(const Cell& cell);

    Time time_{0};
    std::vector<Cell> cells_;
    std::optional<Cell> onItsWay_;
    /// The time up to which the other processor lets out events; set while it is at it.
    std::optional<Time> passTime_;
    bool isAskedAgain_ = false;
    std::vector<std::uint32_t> arrivedMarks_;
    bool areMarksLost_ = false;
};

} // namespace tavro::alsa
