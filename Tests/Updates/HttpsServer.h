#pragma once

#include "Presets/TemporaryFolder.h"

#include <QList>
#include <QProcess>
#include <QSslCertificate>
#include <QUrl>

namespace tavro {

/// An HTTPS server of the test's own: https_server.py, with certificates that were made for it.
class HttpsServer {
public:
    enum class Certificate { ofAuthority, selfSigned, ofOtherHost, expired };

    explicit HttpsServer(Certificate certificate = Certificate::ofAuthority);
    ~HttpsServer();

    HttpsServer(const HttpsServer&) = delete;
    HttpsServer& operator=(const HttpsServer&) = delete;

    [[nodiscard]] QUrl url(const QString& path) const;

    [[nodiscard]] int port() const { return port_; }

    /// The one that has signed the server's certificate; nobody else knows it.
    [[nodiscard]] QList<QSslCertificate> authority() const;

private:
    void makeCertificates(Certificate certificate);
    void openssl(const QStringList& arguments);

    TemporaryFolder folder_;
    QProcess process_;
    int port_ = 0;
};

} // namespace tavro
