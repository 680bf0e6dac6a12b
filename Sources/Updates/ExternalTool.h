#pragma once

#include "Updates/ChildProcesses.h"

namespace tavro {

/// An external tool as a step that gives its output or fails.
class ExternalTool {
public:
    ExternalTool() = delete;

    /// Gives the output when the tool exits with status 0. Otherwise fails as a command, with the output
    /// without white space around it. Output that is not UTF-8 counts as none.
    [[nodiscard]] static std::unique_ptr<PendingWork> run(ChildProcesses& processes,
                                                          const QString& executable,
                                                          const QStringList& arguments,
                                                          Completion<QString> completion);
};

} // namespace tavro
