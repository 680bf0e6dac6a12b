#pragma once

#include "Updates/ChildProcesses.h"

#include <QObject>
#include <QPointer>
#include <QProcess>

namespace tavro {

/// One child process up to its end.
class RunningProcess final : public QObject, public PendingWork {
    Q_OBJECT

public:
    /// Starts at once. Dropped, it leaves the dying process to `owner`.
    RunningProcess(QObject& owner, const QString& executable, const QStringList& arguments,
                   Completion<ChildProcesses::Exit> completion);
    ~RunningProcess() override;

private:
    void read();
    void tell(const Outcome<ChildProcesses::Exit>& outcome);

    Completion<ChildProcesses::Exit> completion_;
    QPointer<QProcess> process_;
    QByteArray output_;
};

} // namespace tavro
