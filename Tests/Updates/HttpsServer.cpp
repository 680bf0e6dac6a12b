#include "Updates/HttpsServer.h"

#include <gtest/gtest.h>

namespace tavro {

HttpsServer::HttpsServer(Certificate certificate) {
    makeCertificates(certificate);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(QStringLiteral(TAVRO_PYTHON),
                   {QStringLiteral(TAVRO_HTTPS_SERVER), folder_.path(QStringLiteral("server.pem")),
                    folder_.path(QStringLiteral("server.key"))});
    while (!process_.canReadLine() && process_.waitForReadyRead()) {
    }
    port_ = process_.readLine().trimmed().toInt();
    EXPECT_GT(port_, 0) << "the server does not start";
}

HttpsServer::~HttpsServer() {
    process_.closeWriteChannel();
    process_.waitForFinished();
}

QUrl HttpsServer::url(const QString& path) const {
    return QUrl(QStringLiteral("https://localhost:%1/%2").arg(port_).arg(path));
}

QList<QSslCertificate> HttpsServer::authority() const {
    return QSslCertificate::fromPath(folder_.path(QStringLiteral("authority.pem")));
}

void HttpsServer::openssl(const QStringList& arguments) {
    QProcess process;
    process.setWorkingDirectory(folder_.path());
    process.start(QStringLiteral("openssl"), arguments);
    process.waitForFinished();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
}

void HttpsServer::makeCertificates(Certificate certificate) {
    const QStringList newKey{QStringLiteral("-newkey"), QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                             QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes")};
    const auto host = certificate == Certificate::ofOtherHost ? QStringLiteral("elsewhere.example")
                                                              : QStringLiteral("localhost");
    openssl(QStringList{QStringLiteral("req"), QStringLiteral("-x509")} + newKey +
            QStringList{QStringLiteral("-keyout"), QStringLiteral("authority.key"), QStringLiteral("-out"),
                        QStringLiteral("authority.pem"), QStringLiteral("-days"), QStringLiteral("2"),
                        QStringLiteral("-subj"), QStringLiteral("/CN=Authority of one test")});
    const auto alternative = QStringLiteral("subjectAltName=DNS:%1").arg(host);
    if (certificate == Certificate::selfSigned) {
        openssl(QStringList{QStringLiteral("req"), QStringLiteral("-x509")} + newKey +
                QStringList{QStringLiteral("-keyout"), QStringLiteral("server.key"), QStringLiteral("-out"),
                            QStringLiteral("server.pem"), QStringLiteral("-days"), QStringLiteral("2"),
                            QStringLiteral("-subj"), QStringLiteral("/CN=localhost"),
                            QStringLiteral("-addext"), alternative});
        return;
    }
    openssl(QStringList{QStringLiteral("req"), QStringLiteral("-new")} + newKey +
            QStringList{QStringLiteral("-keyout"), QStringLiteral("server.key"), QStringLiteral("-out"),
                        QStringLiteral("server.csr"), QStringLiteral("-subj"),
                        QStringLiteral("/CN=%1").arg(host)});
    folder_.file(QStringLiteral("extensions"), alternative.toUtf8());
    // A negative number of days lies in the past.
    openssl({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"),
             QStringLiteral("server.csr"), QStringLiteral("-CA"), QStringLiteral("authority.pem"),
             QStringLiteral("-CAkey"), QStringLiteral("authority.key"), QStringLiteral("-CAcreateserial"),
             QStringLiteral("-extfile"), QStringLiteral("extensions"), QStringLiteral("-days"),
             certificate == Certificate::expired ? QStringLiteral("-1") : QStringLiteral("2"),
             QStringLiteral("-out"), QStringLiteral("server.pem")});
}

} // namespace tavro
