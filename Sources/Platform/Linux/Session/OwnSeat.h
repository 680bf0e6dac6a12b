#pragma once

#include <string>

namespace tavro::linuxos {

/// The seat at which the user of this process sits.
class OwnSeat {
public:
    OwnSeat() = delete;

    /// By what the login has left in the environment, or else by logind's records of the process and of its
    /// user; that of every computer with a single seat when none of them tells.
    [[nodiscard]] static std::string name();
};

} // namespace tavro::linuxos
