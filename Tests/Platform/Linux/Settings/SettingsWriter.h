#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace tavro::linuxos {

/// The program settings-writer, started with these arguments; killed with this when it still runs.
class SettingsWriter {
public:
    explicit SettingsWriter(const std::vector<std::string>& arguments);
    ~SettingsWriter();
    SettingsWriter(const SettingsWriter&) = delete;
    SettingsWriter& operator=(const SettingsWriter&) = delete;

    /// The next line it tells; empty when it has ended.
    [[nodiscard]] std::string nextLine();

    void sendSignal(int signal) const;

    /// Waits until it ends by itself or by a signal that was sent. The status as `waitpid` gives it.
    int wait();

private:
    pid_t process_ = -1;
    int output_ = -1;
};

} // namespace tavro::linuxos
