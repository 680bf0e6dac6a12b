#pragma once

#include "Common/ArrivalRecorder.h"
#include "Concurrency/MainActor.h"
#include "Performance/PerformanceController.h"
#include "StrumError/BareStrum.h"
#include "StrumError/SwitchableScheduling.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

namespace tavro::bench {

/// Plays strummed chords one after the other, each once with exact scheduling, once with timers and once by a
/// bare client, and prints where their notes arrived: see `StrumPlayer.cpp` for the output.
class StrumSession {
public:
    struct Collaborators {
        PerformanceController& controller;
        SwitchableScheduling& scheduling;
        ArrivalRecorder& recorder;
        BareStrum& bareStrum;
        MainActor& mainActor;
    };

    /// All collaborators must outlive this.
    StrumSession(Collaborators collaborators, unsigned chords, std::vector<int> steps);

    /// `onEnd` is called once everything has been played.
    void start(std::function<void()> onEnd);

private:
    enum class Way : std::uint8_t { exact, timers, bare };

    struct Chord {
        Way way;
        int stepMilliseconds;
    };

    void playNext();
    void press(const Chord& chord);
    void finish(const Chord& chord);
    void print(const Chord& chord, const std::vector<ArrivalRecorder::Arrival>& noteOns) const;
    void after(std::chrono::microseconds delay, MainActor::Action action);
    [[nodiscard]] std::chrono::microseconds randomPause();

    Collaborators with_;
    std::vector<Chord> chords_;
    std::size_t next_ = 0;
    std::function<void()> onEnd_;
    ScheduledTask task_;
    std::mt19937 random_{std::random_device{}()};
    jack_nframes_t pressFrame_ = 0;
    std::size_t expectedNotes_ = 0;
    unsigned xrunsBefore_ = 0;
    unsigned lostBefore_ = 0;
    unsigned absencesBefore_ = 0;
};

} // namespace tavro::bench
