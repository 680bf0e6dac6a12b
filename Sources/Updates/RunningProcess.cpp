#include "Updates/RunningProcess.h"

#include "Updates/QtChildProcesses.h"

#include <utility>

namespace tavro {

RunningProcess::RunningProcess(QObject& owner, const QString& executable, const QStringList& arguments,
                               Completion<ChildProcesses::Exit> completion)
    : completion_(std::move(completion)), process_(new QProcess(&owner)) {
    process_->setProcessChannelMode(QProcess::MergedChannels);
    process_->setStandardInputFile(QProcess::nullDevice());
    connect(process_, &QProcess::readyRead, this, &RunningProcess::read);
    connect(process_, &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
        read();
        tell(ChildProcesses::Exit{.status = how == QProcess::NormalExit ? status : -1, .output = output_});
    });
    // Some failures are found inside the call that starts.
    connect(
        process_, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                tell(UpdateFailure::ofSystem(process_->errorString()));
            }
        },
        Qt::QueuedConnection);
    process_->start(executable, arguments);
}

RunningProcess::~RunningProcess() {
    if (process_ == nullptr) {
        return;
    }
    process_->disconnect(this);
    if (process_->state() == QProcess::NotRunning) {
        process_->deleteLater();
        return;
    }
    connect(process_, &QProcess::finished, process_, &QObject::deleteLater);
    connect(process_, &QProcess::errorOccurred, process_, &QObject::deleteLater);
    process_->kill();
}

void RunningProcess::read() {
    const auto bytes = process_->readAll();
    output_ += bytes.left(QtChildProcesses::longestOutput - output_.size());
}

void RunningProcess::tell(const Outcome<ChildProcesses::Exit>& outcome) {
    // Whoever is told may drop this.
    std::exchange(completion_, {})(outcome);
}

} // namespace tavro
