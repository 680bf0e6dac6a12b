#pragma once

#include "Platform/Linux/GuardDeeds/ForeignFiles.h"

#include <vector>

#include <sys/types.h>

namespace tavro::guard {

/// Gives keyboards back that a process has grabbed. What it needs of the files it takes at that moment: a
/// duplicate that was held beforehand would keep the grab alive beyond the end of the process, and with a
/// guard that is stopped, for ever.
class DeviceRelief {
public:
    /// The process that has the files. One that has ended already is none.
    explicit DeviceRelief(pid_t process);

    /// Ends the grabs of the keyboards and lets go of whatever is held on the copies.
    void giveBack(const std::vector<int>& keyboards, const std::vector<int>& copies) const;

private:
    ForeignFiles files_;
};

} // namespace tavro::guard
