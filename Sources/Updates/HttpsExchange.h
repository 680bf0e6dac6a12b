#pragma once

#include "Updates/HttpsClient.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

namespace tavro {

/// One request with Qt Network, up to its outcome.
class HttpsExchange final : public QObject, public PendingWork {
    Q_OBJECT

public:
    struct Limits {
        qint64 longest = 0;
        /// How long nothing may come.
        std::chrono::milliseconds patience;
    };

    struct Target {
        /// Empty: the body goes into the response.
        QString file;
        /// May be empty.
        HttpsClient::ProgressHandler progress;
    };

    /// Begins at once. The manager must outlive this.
    HttpsExchange(QNetworkAccessManager& manager, const QNetworkRequest& request, const Limits& limits,
                  Target target, Completion<HttpsClient::Response> completion);
    ~HttpsExchange() override;

private:
    void begin(QNetworkAccessManager& manager, const QNetworkRequest& request);
    /// Tells the failure from the event loop.
    void refuse(const QString& reason);
    void read();
    [[nodiscard]] bool keep(const QByteArray& bytes);
    void finish();
    [[nodiscard]] Outcome<HttpsClient::Response> outcomeOf(const QNetworkReply& reply) const;
    /// Ends the request as well, where it still runs.
    void tell(const Outcome<HttpsClient::Response>& outcome);
    void letGo();

    Limits limits_;
    Target target_;
    Completion<HttpsClient::Response> completion_;
    QPointer<QNetworkReply> reply_;
    QTimer patience_;
    QFile file_;
    QByteArray body_;
    qint64 received_ = 0;
};

} // namespace tavro
