#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavro::guard {

/// What the program has entrusted to its guard, as a whole; each new one replaces the one before it.
struct GuardOrders {
    /// X key codes whose repeating was turned off.
    std::vector<unsigned> repeats{};
    /// Any resource of the X connection on which keys are grabbed; 0 for none.
    std::uint32_t connection = 0;
    /// The program's files of the keyboards that it may have grabbed, and of the copies that it types on.
    std::vector<int> keyboards{};
    std::vector<int> copies{};
    /// In the words of `MidiSystem::receivers`.
    std::vector<std::string> receivers{};
    /// Whose beats are waited for.
    bool expectsMain = false;
    bool expectsTap = false;

    friend bool operator==(const GuardOrders&, const GuardOrders&) = default;

    /// One message of the program.
    [[nodiscard]] std::string text() const;

    /// The orders of such a message; nothing for any other text.
    [[nodiscard]] static std::optional<GuardOrders> read(std::string_view text);
};

/// The messages besides the orders, one character each.
namespace message {

/// Of the program.
inline constexpr char mainBeat = 'M';
inline constexpr char tapBeat = 'T';
inline constexpr char restoreRepeats = 'R';
/// It ends in order, and nothing is to be done in its place.
inline constexpr char farewell = 'F';

/// Of the guard: the answer to a beat of the main thread, and what it does.
inline constexpr char answer = 'A';
inline constexpr char keyboardGivenBack = 'K';
inline constexpr char silenced = 'S';
/// What was asked for by `restoreRepeats` is done.
inline constexpr char repeatsRestored = 'r';

} // namespace message

} // namespace tavro::guard
