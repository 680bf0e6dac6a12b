#include "Platform/Linux/Session/ActiveTerminal.h"

#include <QtGlobal>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#include <fcntl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace tavro::linuxos {

namespace {

/// The kernel wakes whoever polls it when another terminal gets the screen.
constexpr auto activeFile = "/sys/class/tty/tty0/active";
constexpr unsigned int majorOfTerminals = 4;
constexpr unsigned int lastVirtualTerminal = 63;

std::string nameOf(unsigned int number) {
    return number >= 1 && number <= lastVirtualTerminal ? "tty" + std::to_string(number) : std::string();
}

/// 0 without one.
dev_t controllingTerminal() {
    std::ifstream file("/proc/self/stat");
    const std::string line(std::istreambuf_iterator<char>(file), {});
    // The name of the program, in parentheses, may hold anything.
    const auto behindName = line.rfind(')');
    if (behindName == std::string::npos) {
        return 0;
    }
    std::array<char, 2> state{};
    int parent = 0;
    int group = 0;
    int session = 0;
    int terminal = 0;
    const auto read = std::sscanf(line.c_str() + behindName + 1, " %1s %d %d %d %d", state.data(), &parent,
                                  &group, &session, &terminal);
    return read == 5 ? static_cast<dev_t>(terminal) : 0;
}

} // namespace

ActiveTerminal::ActiveTerminal(std::function<void()> onChange, std::string ownName)
    : onChange_(std::move(onChange)), ownName_(std::move(ownName)),
      file_(ownName_.empty() ? -1 : open(activeFile, O_RDONLY | O_CLOEXEC)) {
    if (!file_.isOpen()) {
        return;
    }
    read();
    notifier_ = std::make_unique<QSocketNotifier>(file_.number(), QSocketNotifier::Exception);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        read();
        onChange_();
    });
}

void ActiveTerminal::read() {
    std::array<char, 32> content{};
    const auto length = pread(file_.number(), content.data(), content.size(), 0);
    std::string name(content.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    if (name.ends_with('\n')) {
        name.pop_back();
    }
    isOwn_ = name.empty() ? std::nullopt : std::optional(name == ownName_);
}

std::string ActiveTerminal::nameOfOwn() {
    bool isNumber = false;
    const auto number = qEnvironmentVariableIntValue("XDG_VTNR", &isNumber);
    if (isNumber && number > 0) {
        return nameOf(static_cast<unsigned int>(number));
    }
    const auto terminal = controllingTerminal();
    return major(terminal) == majorOfTerminals ? nameOf(minor(terminal)) : std::string();
}

} // namespace tavro::linuxos
