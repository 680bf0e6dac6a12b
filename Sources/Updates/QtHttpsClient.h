#pragma once

#include "Updates/HttpsClient.h"

#include <QList>
#include <QNetworkAccessManager>
#include <QSslCertificate>

#include <chrono>

namespace tavro {

/// HTTPS with Qt Network. Certificates must lead to an authority that the system trusts.
class QtHttpsClient final : public HttpsClient {
public:
    struct Settings {
        /// How long nothing may come.
        std::chrono::milliseconds patience{60000};
        /// Trusted besides the system's; for servers of one's own.
        QList<QSslCertificate> additionalAuthorities;
    };

    /// After the application object.
    QtHttpsClient() : QtHttpsClient(Settings()) {}

    explicit QtHttpsClient(Settings settings) : settings_(std::move(settings)) {}

    [[nodiscard]] std::unique_ptr<PendingWork> fetch(const QUrl& address, qint64 longest,
                                                     Completion<Response> completion) override;
    [[nodiscard]] std::unique_ptr<PendingWork> download(const QUrl& address, const QString& file,
                                                        qint64 longest, ProgressHandler progress,
                                                        Completion<Response> completion) override;

private:
    [[nodiscard]] QNetworkRequest requestFor(const QUrl& address) const;

    Settings settings_;
    QNetworkAccessManager manager_;
};

} // namespace tavro
