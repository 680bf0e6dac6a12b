#pragma once

#include "Updates/Outcome.h"

#include <QByteArray>
#include <QStringList>

#include <memory>

namespace tavro {

/// Runs external tools without waiting for them: notes keep playing meanwhile. Main thread only.
class ChildProcesses {
public:
    struct Exit {
        /// Negative when the tool did not end by itself.
        int status = 0;
        /// What it wrote to its standard output and its standard error, in that order of time. Only the
        /// beginning when it wrote very much.
        QByteArray output;
    };

    ChildProcesses() = default;
    ChildProcesses(const ChildProcesses&) = delete;
    ChildProcesses& operator=(const ChildProcesses&) = delete;
    virtual ~ChildProcesses() = default;

    /// Starts the executable and tells how it ended; a failure is that it did not start. Dropping the work
    /// kills it.
    [[nodiscard]] virtual std::unique_ptr<PendingWork>
    run(const QString& executable, const QStringList& arguments, Completion<Exit> completion) = 0;

    /// Starts the executable and leaves it alone: it may outlive the program.
    virtual void start(const QString& executable, const QStringList& arguments) = 0;
};

} // namespace tavro
