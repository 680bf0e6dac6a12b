#pragma once

#include "Platform/Posix/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tavro::linuxos {

/// Which virtual terminal has the screen. Main thread only.
class ActiveTerminal {
public:
    /// Tells every change. `ownName` is the terminal of this process, as "tty2", and empty when it has none.
    explicit ActiveTerminal(std::function<void()> onChange, std::string ownName = nameOfOwn());

    /// Whether it is the one of this process; nothing when either is not known.
    [[nodiscard]] std::optional<bool> isOwn() const { return isOwn_; }

    /// By what the login has left in the environment, or else the terminal that controls this process; empty
    /// when that is no virtual one.
    [[nodiscard]] static std::string nameOfOwn();

private:
    void read();

    std::function<void()> onChange_;
    const std::string ownName_;
    posix::FileDescriptor file_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::optional<bool> isOwn_;
};

} // namespace tavro::linuxos
