#pragma once

#include "PlatformInterfaces/KeyboardTap.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tavro::proof {

/// Swallows the keys of the playing area while it plays, and its hotkey F9 at any time, which lets it play or
/// ends that. Calls come on the tap's thread, everything else on the test's.
class ScriptedClient : public KeyboardTap::Client {
public:
    static constexpr std::uint16_t hotkey = 67;
    /// Always passes, and is not recorded but counted.
    static constexpr std::uint16_t marker = 119;

    [[nodiscard]] static bool isPlayingKey(std::uint16_t key);

    void setPlaying(bool isPlaying);
    [[nodiscard]] bool isPlaying() const;

    /// What it was told since the last call: "down 30", "repeat 30", "up 30"; modifiers follow as letters,
    /// "down 30 S". Keys that play are followed by "!" when they were swallowed to be played.
    [[nodiscard]] std::vector<std::string> takeTold();

    /// How many releases of the marker it was told.
    [[nodiscard]] int markers() const;

    [[nodiscard]] std::optional<KeyboardTap::End> end() const;

    /// Holds the tap's thread inside the next call until it is let go.
    void block();
    void unblock();
    /// Whether the thread is held.
    [[nodiscard]] bool isBlocking() const;

    KeyboardTap::Verdict handle(const KeyboardTap::Event& event) override;
    [[nodiscard]] KeyboardTap::Verdict verdict(const KeyboardTap::Event& event) const override;
    void reportTaken(std::vector<KeyboardTap::Event> presses) override;
    void tapEnded(KeyboardTap::End end) override;

private:
    [[nodiscard]] KeyboardTap::Verdict verdictLocked(const KeyboardTap::Event& event) const;

    mutable std::mutex mutex_;
    std::condition_variable unblocked_;
    bool isPlaying_ = false;
    bool shallBlock_ = false;
    bool isBlocking_ = false;
    int markers_ = 0;
    std::vector<std::string> told_;
    std::optional<KeyboardTap::End> end_;
};

} // namespace tavro::proof
