#pragma once

#include "Updates/ChildProcesses.h"
#include "Updates/Doubles/HeldCompletions.h"

#include <vector>

namespace tavro::headless {

/// Starts nothing, and records what it is asked. How the tools end is said by hand, in their order.
class ChildProcessesAdapter final : public ChildProcesses {
public:
    struct Command {
        QString executable;
        QStringList arguments;

        friend bool operator==(const Command&, const Command&) = default;
    };

    std::vector<Command> commands;
    /// Those that nobody waits for.
    std::vector<Command> started;
    HeldCompletions<Exit> exits;

    [[nodiscard]] std::unique_ptr<PendingWork> run(const QString& executable, const QStringList& arguments,
                                                   Completion<Exit> completion) override {
        commands.push_back({executable, arguments});
        return exits.hold(std::move(completion));
    }

    void start(const QString& executable, const QStringList& arguments) override {
        started.push_back({executable, arguments});
    }
};

} // namespace tavro::headless
