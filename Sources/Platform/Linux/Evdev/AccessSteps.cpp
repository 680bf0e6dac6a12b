#include "Platform/Linux/Evdev/AccessSteps.h"

#include "Platform/Linux/Evdev/DeviceNode.h"
#include "Platform/Linux/Evdev/GroupAccess.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <algorithm>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace tavro::evdev {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(evdev::AccessSteps)
};

bool isMemberByList(gid_t group) {
    const auto* const user = getpwuid(getuid());
    if (user == nullptr) {
        return false;
    }
    int count = 0;
    getgrouplist(user->pw_name, user->pw_gid, nullptr, &count);
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    getgrouplist(user->pw_name, user->pw_gid, groups.data(), &count);
    return std::ranges::find(groups, group) != groups.end();
}

bool hasGroupNow(gid_t group) {
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, getgroups(0, nullptr))));
    const auto count = getgroups(static_cast<int>(groups.size()), groups.data());
    groups.resize(static_cast<std::size_t>(std::max(0, count)));
    return getegid() == group || std::ranges::find(groups, group) != groups.end();
}

bool areOpen(const InputDevices& devices, gid_t group) {
    const auto nodes = DeviceNode::list(devices.folder).value_or(std::vector<DeviceNode>());
    // What is missing cannot be opened to anybody, and is not what this is about.
    return (access(devices.uinputPath.c_str(), F_OK) != 0 ||
            GroupAccess::isOpen(devices.uinputPath, group)) &&
           std::ranges::none_of(nodes, [&](const DeviceNode& node) {
               return node.kind(devices.seat) == DeviceNode::Kind::keyboard &&
                      !GroupAccess::isOpen(node.path(), group);
           });
}

} // namespace

AccessSteps AccessSteps::now(const InputDevices& devices, const std::vector<std::string>& ruleFolders) {
    AccessSteps steps;
    steps.isRuleInstalled = std::ranges::any_of(ruleFolders, [](const std::string& folder) {
        return access((folder + '/' + ruleFile).c_str(), F_OK) == 0;
    });
    if (const auto* const known = getgrnam(group)) {
        const auto number = known->gr_gid;
        steps.hasGroup = true;
        steps.isMember = isMemberByList(number);
        steps.hasJoined = hasGroupNow(number);
        steps.isRuleApplied = areOpen(devices, number);
    }
    return steps;
}

std::string AccessSteps::advice() const {
    QStringList sentences{Words::tr("Global Play needs access to the input devices.")};
    if (!hasGroup) {
        sentences << Words::tr("Make the group: \"sudo groupadd --system tavro-input\".");
    }
    if (!isRuleInstalled && !isRuleApplied) {
        sentences << Words::tr("Install the udev rule 60-tavro-input.rules.");
    }
    if (!isRuleApplied) {
        sentences << Words::tr("Apply the rule: \"sudo udevadm control --reload && sudo udevadm trigger\".");
    }
    if (!isMember && !hasJoined) {
        sentences << Words::tr("Join the group: \"sudo usermod -aG tavro-input $USER\".");
    }
    if (!hasJoined) {
        sentences << Words::tr("Log in again: groups are given at the login.");
    }
    sentences << Words::tr("Never run TAVRO as root.");
    return sentences.join(QLatin1Char(' ')).toStdString();
}

} // namespace tavro::evdev
