#pragma once

#include "Platform/Linux/Evdev/InputDevices.h"

#include <string>
#include <vector>

namespace tavro::evdev {

/// How far the user has come on the way to the keyboards: the group, the udev rule that opens the devices to
/// it, and a login since. As far as that can be seen without being let in.
struct AccessSteps {
    static constexpr auto group = "tavro-input";
    static constexpr auto ruleFile = "60-tavro-input.rules";

    bool hasGroup = false;
    /// By the system's list of users.
    bool isMember = false;
    /// This process has the group, as the login has given it.
    bool hasJoined = false;
    bool isRuleInstalled = false;
    /// The devices as they are let the group in.
    bool isRuleApplied = false;

    /// As things stand; of the rule, whether it lies in one of these folders.
    [[nodiscard]] static AccessSteps now(const InputDevices& devices,
                                         const std::vector<std::string>& ruleFolders = {
                                             "/etc/udev/rules.d", "/run/udev/rules.d",
                                             "/usr/local/lib/udev/rules.d", "/usr/lib/udev/rules.d",
                                             "/lib/udev/rules.d"});

    /// What is still to be done, for the user to read.
    [[nodiscard]] std::string advice() const;

    friend bool operator==(const AccessSteps&, const AccessSteps&) = default;
};

} // namespace tavro::evdev
