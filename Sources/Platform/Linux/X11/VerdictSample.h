#pragma once

#include "Platform/Linux/X11/PressTable.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <vector>

namespace tavro::x11 {

/// A few verdicts by which it is told, quickly enough for every note, whether the client has changed its mind
/// about the playing keys.
class VerdictSample {
public:
    /// Before a table is known, nothing ever changes.
    VerdictSample() = default;

    /// The table holds the client's verdicts at this time.
    explicit VerdictSample(const PressTable& wanted);

    [[nodiscard]] bool hasChanged(const KeyboardTap::Client& client) const;

private:
    /// Presses that the client wanted swallowed.
    std::vector<KeyboardTap::Event> presses_;
};

} // namespace tavro::x11
