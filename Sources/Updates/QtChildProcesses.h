#pragma once

#include "Updates/ChildProcesses.h"

#include <QObject>

namespace tavro {

/// Child processes with Qt. Their standard input is empty; what was dropped and still dies, dies at the
/// latest with this.
class QtChildProcesses final : public ChildProcesses {
public:
    /// Of a tool's output this much is kept, in bytes.
    static constexpr qint64 longestOutput = 1 << 20;

    [[nodiscard]] std::unique_ptr<PendingWork> run(const QString& executable, const QStringList& arguments,
                                                   Completion<Exit> completion) override;
    void start(const QString& executable, const QStringList& arguments) override;

private:
    QObject processes_;
};

} // namespace tavro
