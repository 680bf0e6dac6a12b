#include "Updates/ExternalTool.h"

#include <QStringDecoder>

#include <utility>

namespace tavro {

namespace {

QString textOf(const QByteArray& output) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(output);
    return decoder.hasError() ? QString() : text;
}

Outcome<QString> outcomeOf(const Outcome<ChildProcesses::Exit>& exit) {
    if (!exit.isSuccess()) {
        return exit.failure();
    }
    const auto output = textOf(exit.value().output);
    if (exit.value().status != 0) {
        return UpdateError::commandFailed(output.trimmed());
    }
    return output;
}

} // namespace

std::unique_ptr<PendingWork> ExternalTool::run(ChildProcesses& processes, const QString& executable,
                                               const QStringList& arguments, Completion<QString> completion) {
    return processes.run(executable, arguments,
                         [completion = std::move(completion)](const Outcome<ChildProcesses::Exit>& exit) {
                             completion(outcomeOf(exit));
                         });
}

} // namespace tavro
