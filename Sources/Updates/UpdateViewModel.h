#pragma once

#include "Updates/UpdateService.h"

#include <QObject>
#include <QStringList>

#include <functional>

namespace tavro {

/// What the update window shows, and its button. Main thread only.
class UpdateViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString installedVersion READ installedVersion CONSTANT)
    Q_PROPERTY(QString offeredVersion READ offeredVersion CONSTANT)
    Q_PROPERTY(QStringList releaseNotes READ releaseNotes CONSTANT)
    Q_PROPERTY(bool isInstalling READ isInstalling NOTIFY isInstallingChanged)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)

public:
    /// The service must outlive this. `terminate` ends the application: the installer is to replace it.
    UpdateViewModel(AvailableUpdate update, UpdateService& service, std::function<void()> terminate);

    [[nodiscard]] QString installedVersion() const;
    [[nodiscard]] QString offeredVersion() const;
    [[nodiscard]] QStringList releaseNotes() const;

    /// Whether a download is under way.
    [[nodiscard]] bool isInstalling() const { return isInstalling_; }

    /// How far it is, or why it failed; empty at first.
    [[nodiscard]] const QString& status() const { return status_; }

    /// The received part of the package, 0 to 1; negative while that is not known.
    [[nodiscard]] double progress() const;

    /// The received bytes for the reader; empty while nothing is known of them.
    [[nodiscard]] QString progressText() const;

    /// Begins the download, and ends the application when the installer is open. Does nothing while a
    /// download is under way.
    Q_INVOKABLE void install();

Q_SIGNALS:
    void isInstallingChanged();
    void statusChanged();
    void progressChanged();

private:
    void finish(const Outcome<QString>& outcome);
    void setStatus(const QString& status);
    void setInstalling(bool isInstalling);
    void setProgress(const HttpsClient::Progress& progress);

    AvailableUpdate update_;
    UpdateService& service_;
    std::function<void()> terminate_;
    bool isInstalling_ = false;
    QString status_;
    HttpsClient::Progress progress_;
    std::unique_ptr<PendingWork> download_;
};

} // namespace tavro
