#pragma once

#include "KeyboardInput/ToggleHotkey.h"
#include "PerformanceModel/KeyboardLayoutKind.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

/// Decides by what it was told, and writes what it hears to the standard output, one JSON object a line.
/// Every function may be called on any thread.
class ScriptedTapClient final : public tavro::KeyboardTap::Client {
public:
    using Event = tavro::KeyboardTap::Event;
    using Verdict = tavro::KeyboardTap::Verdict;

    /// Whether the keys of the layout are wanted, and nothing but the hotkey otherwise.
    void setPlaying(bool isPlaying);
    /// In front, nothing is wanted.
    void setInFront(bool isInFront);
    /// Toggles `isPlaying` within the call that hears it.
    void setHotkey(std::int64_t keyCode, tavro::HotkeyModifiers modifiers);
    /// From now on, what is wanted is passed when it comes, as if the verdict had just changed.
    void setRefusing(bool isRefusing);

    /// Waits until the tap has begun to ask anew for every verdict; false if that takes 10 s.
    [[nodiscard]] bool awaitQuestions(std::uint64_t roundsBefore);
    /// How often it has begun so far.
    [[nodiscard]] std::uint64_t rounds() const;

    Verdict handle(const Event& event) override;
    [[nodiscard]] Verdict verdict(const Event& event) const override;
    void reportTaken(std::vector<Event> presses) override;
    void tapEnded(tavro::KeyboardTap::End end) override;

private:
    [[nodiscard]] bool isHotkey(const Event& event) const;
    [[nodiscard]] bool isPlayed(const Event& event) const;
    [[nodiscard]] bool isWanted(const Event& event) const;

    mutable std::mutex mutex_;
    mutable std::condition_variable questionsBegan_;
    mutable std::uint64_t rounds_ = 0;
    bool isPlaying_ = false;
    bool isInFront_ = false;
    bool isRefusing_ = false;
    std::optional<std::int64_t> hotkeyCode_;
    tavro::HotkeyModifiers hotkeyModifiers_;
};
