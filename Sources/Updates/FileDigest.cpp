#include "Updates/FileDigest.h"

#include <QCryptographicHash>
#include <QFile>

#include <utility>

namespace tavro {

FileDigest::FileDigest(const QString& path, Completion<QString> completion)
    : completion_(std::move(completion)),
      thread_(QThread::create([this, path] { result_ = digestOf(path); })) {
    connect(
        thread_.get(), &QThread::finished, this,
        [this] {
            // It may still be on its way out.
            thread_->wait();
            const auto result = *std::exchange(result_, std::nullopt);
            // Whoever is told may drop this.
            std::exchange(completion_, {})(result);
        },
        Qt::QueuedConnection);
    thread_->start(QThread::LowPriority);
}

FileDigest::~FileDigest() {
    thread_->requestInterruption();
    thread_->wait();
}

Outcome<QString> FileDigest::digestOf(const QString& path) {
    constexpr qint64 pieceSize = 1 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return UpdateFailure::ofSystem(file.errorString());
    }
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QByteArray piece(pieceSize, Qt::Uninitialized);
    // Nobody asks for the result of an interrupted one.
    while (!QThread::currentThread()->isInterruptionRequested()) {
        const auto size = file.read(piece.data(), piece.size());
        if (size < 0) {
            return UpdateFailure::ofSystem(file.errorString());
        }
        if (size == 0) {
            break;
        }
        hash.addData(QByteArrayView(piece.constData(), size));
    }
    return QString::fromLatin1(hash.result().toHex());
}

} // namespace tavro
