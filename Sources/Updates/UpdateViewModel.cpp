#include "Updates/UpdateViewModel.h"

#include <QLocale>

#include <utility>

namespace tavro {

UpdateViewModel::UpdateViewModel(AvailableUpdate update, UpdateService& service,
                                 std::function<void()> terminate)
    : update_(std::move(update)), service_(service), terminate_(std::move(terminate)) {}

QString UpdateViewModel::installedVersion() const {
    return QString::fromStdString(update_.installedVersion);
}

QString UpdateViewModel::offeredVersion() const {
    return QString::fromStdString(update_.manifest.version);
}

QStringList UpdateViewModel::releaseNotes() const {
    QStringList notes;
    for (const auto& note : update_.manifest.releaseNotes) {
        notes.append(QString::fromStdString(note));
    }
    return notes;
}

double UpdateViewModel::progress() const {
    const auto expected = progress_.expected.value_or(0);
    return expected > 0 ? static_cast<double>(progress_.received) / static_cast<double>(expected) : -1;
}

QString UpdateViewModel::progressText() const {
    if (progress_.received == 0) {
        return {};
    }
    const QLocale locale;
    const auto received = locale.formattedDataSize(progress_.received);
    return progress_.expected ? tr("%1 of %2").arg(received, locale.formattedDataSize(*progress_.expected))
                              : received;
}

void UpdateViewModel::install() {
    if (isInstalling_) {
        return;
    }
    setProgress({});
    download_ = service_.downloadAndOpen(
        update_, [this](const HttpsClient::Progress& progress) { setProgress(progress); },
        [this](const Outcome<QString>& outcome) { finish(outcome); });
    setInstalling(true);
    setStatus(tr("Downloading and verifying the TAVRO installer..."));
}

void UpdateViewModel::finish(const Outcome<QString>& outcome) {
    if (outcome.isSuccess()) {
        setStatus(tr("The verified installer is ready."));
        terminate_();
    } else {
        setStatus(outcome.failure().description());
        setInstalling(false);
    }
}

void UpdateViewModel::setStatus(const QString& status) {
    if (status_ != status) {
        status_ = status;
        Q_EMIT statusChanged();
    }
}

void UpdateViewModel::setInstalling(bool isInstalling) {
    if (isInstalling_ != isInstalling) {
        isInstalling_ = isInstalling;
        Q_EMIT isInstallingChanged();
    }
}

void UpdateViewModel::setProgress(const HttpsClient::Progress& progress) {
    if (progress_ != progress) {
        progress_ = progress;
        Q_EMIT progressChanged();
    }
}

} // namespace tavro
