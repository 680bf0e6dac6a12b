#pragma once

#include <cstdint>

namespace tavro {

/// Tells which press of the left mouse button is the double click with the wanted modifier keys. Holds no
/// window, so that the rule is tried without one.
class ModifierDoubleClickRules {
public:
    /// How near two presses must be to count as one series. Positions are in the unit of the presses.
    struct Nearness {
        std::int64_t milliseconds = 400;
        double distance = 5;
    };

    /// One press of the left button.
    struct Press {
        /// Any clock that does not run backwards.
        std::int64_t milliseconds = 0;
        /// Relative to the watched area.
        double x = 0;
        double y = 0;
        bool isInside = false;
        /// The modifier keys held, one bit each, in any numbering.
        std::uint32_t modifiers = 0;
    };

    ModifierDoubleClickRules() = default;

    explicit ModifierDoubleClickRules(Nearness nearness) : nearness_(nearness) {}

    /// All of these must be held; others may be. In the numbering of the presses.
    std::uint32_t requiredModifiers = 0;

    /// Counts the press. True when it is exactly the second of its series, inside, with the modifiers: the
    /// action is due and the press ends here. The third and later ones of a series never are.
    [[nodiscard]] bool isDoubleClick(const Press& press);

private:
    [[nodiscard]] bool continuesSeries(const Press& press) const;

    Nearness nearness_;
    Press last_;
    int clickCount_ = 0;
};

} // namespace tavro
