#pragma once

#include "Updates/Outcome.h"

#include <QObject>
#include <QString>
#include <QThread>

#include <memory>

namespace tavro {

/// The SHA-256 of one file, worked out on a thread of its own: a large file takes seconds.
class FileDigest final : public QObject, public PendingWork {
    Q_OBJECT

public:
    /// Begins at once.
    FileDigest(const QString& path, Completion<QString> completion);
    ~FileDigest() override;

private:
    /// Runs on the thread.
    [[nodiscard]] static Outcome<QString> digestOf(const QString& path);

    Completion<QString> completion_;
    /// The thread's until it has ended.
    std::optional<Outcome<QString>> result_;
    std::unique_ptr<QThread> thread_;
};

} // namespace tavro
