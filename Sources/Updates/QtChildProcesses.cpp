#include "Updates/QtChildProcesses.h"

#include "Updates/RunningProcess.h"

#include <QProcess>

#include <utility>

namespace tavro {

std::unique_ptr<PendingWork> QtChildProcesses::run(const QString& executable, const QStringList& arguments,
                                                   Completion<Exit> completion) {
    return std::make_unique<RunningProcess>(processes_, executable, arguments, std::move(completion));
}

void QtChildProcesses::start(const QString& executable, const QStringList& arguments) {
    QProcess process;
    process.setProgram(executable);
    process.setArguments(arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

} // namespace tavro
