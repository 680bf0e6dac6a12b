#include "Updates/QtHttpsClient.h"

#include "Updates/HttpsExchange.h"

#include <QNetworkRequest>
#include <QSslConfiguration>

#include <utility>

namespace tavro {

QNetworkRequest QtHttpsClient::requestFor(const QUrl& address) const {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    if (!settings_.additionalAuthorities.isEmpty()) {
        auto configuration = QSslConfiguration::defaultConfiguration();
        configuration.addCaCertificates(settings_.additionalAuthorities);
        request.setSslConfiguration(configuration);
    }
    return request;
}

std::unique_ptr<PendingWork> QtHttpsClient::fetch(const QUrl& address, qint64 longest,
                                                  Completion<Response> completion) {
    return std::make_unique<HttpsExchange>(
        manager_, requestFor(address),
        HttpsExchange::Limits{.longest = longest, .patience = settings_.patience}, HttpsExchange::Target{},
        std::move(completion));
}

std::unique_ptr<PendingWork> QtHttpsClient::download(const QUrl& address, const QString& file, qint64 longest,
                                                     ProgressHandler progress,
                                                     Completion<Response> completion) {
    auto request = requestFor(address);
    // Packed on the way, the body would have another length than the one announced.
    request.setRawHeader("Accept-Encoding", "identity");
    return std::make_unique<HttpsExchange>(
        manager_, request, HttpsExchange::Limits{.longest = longest, .patience = settings_.patience},
        HttpsExchange::Target{.file = file, .progress = std::move(progress)}, std::move(completion));
}

} // namespace tavro
