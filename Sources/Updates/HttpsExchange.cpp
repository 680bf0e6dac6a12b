#include "Updates/HttpsExchange.h"

#include <utility>

namespace tavro {

namespace {

/// What waits in memory before it is read, in bytes.
constexpr qint64 readAhead = 1 << 20;

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

std::optional<qint64> announcedLength(const QNetworkReply& reply) {
    const auto length = reply.header(QNetworkRequest::ContentLengthHeader);
    // What was packed on the way is longer than announced.
    return length.isValid() && !reply.hasRawHeader("Content-Encoding") ? std::optional(length.toLongLong())
                                                                       : std::nullopt;
}

} // namespace

HttpsExchange::HttpsExchange(QNetworkAccessManager& manager, const QNetworkRequest& request,
                             const Limits& limits, Target target,
                             Completion<HttpsClient::Response> completion)
    : limits_(limits), target_(std::move(target)), completion_(std::move(completion)) {
    if (request.url().scheme() != QLatin1String("https")) {
        refuse(tr("The address is not one of HTTPS."));
        return;
    }
    if (!target_.file.isEmpty()) {
        file_.setFileName(target_.file);
        // Without a buffer, so that a full disk is noticed at once.
        if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::ExistingOnly |
                        QIODevice::Unbuffered)) {
            refuse(file_.errorString());
            return;
        }
    }
    begin(manager, request);
}

HttpsExchange::~HttpsExchange() {
    letGo();
}

void HttpsExchange::begin(QNetworkAccessManager& manager, const QNetworkRequest& request) {
    patience_.setSingleShot(true);
    patience_.setInterval(limits_.patience);
    connect(&patience_, &QTimer::timeout, this,
            [this] { tell(UpdateFailure::ofSystem(tr("The request timed out."))); });
    patience_.start();
    reply_ = manager.get(request);
    reply_->setReadBufferSize(readAhead);
    connect(reply_, &QNetworkReply::redirected, &patience_, qOverload<>(&QTimer::start));
    connect(reply_, &QNetworkReply::metaDataChanged, &patience_, qOverload<>(&QTimer::start));
    connect(reply_, &QNetworkReply::readyRead, this, &HttpsExchange::read);
    // A refused request may be finished already when it is given back.
    connect(reply_, &QNetworkReply::finished, this, &HttpsExchange::finish, Qt::QueuedConnection);
}

void HttpsExchange::refuse(const QString& reason) {
    QTimer::singleShot(0, this, [this, reason] { tell(UpdateFailure::ofSystem(reason)); });
}

void HttpsExchange::read() {
    if (reply_ == nullptr) {
        return;
    }
    patience_.start();
    const auto bytes = reply_->readAll();
    if (statusOf(*reply_) != HttpsClient::Response::ok || bytes.isEmpty()) {
        return;
    }
    const auto announced = announcedLength(*reply_);
    received_ += bytes.size();
    if (received_ > limits_.longest || announced.value_or(0) > limits_.longest ||
        (announced && received_ > *announced)) {
        tell(HttpsClient::Response{.status = HttpsClient::Response::ok, .body = {}, .isTooLong = true});
        return;
    }
    if (!keep(bytes)) {
        tell(UpdateFailure::ofSystem(file_.errorString()));
        return;
    }
    if (target_.progress) {
        target_.progress({.received = received_, .expected = announced});
    }
}

bool HttpsExchange::keep(const QByteArray& bytes) {
    if (!file_.isOpen()) {
        body_ += bytes;
        return true;
    }
    qint64 written = 0;
    while (written < bytes.size()) {
        // What does not fit in one go tells the reason at the next.
        const auto part = file_.write(bytes.constData() + written, bytes.size() - written);
        if (part <= 0) {
            return false;
        }
        written += part;
    }
    return true;
}

void HttpsExchange::finish() {
    // What reading tells may drop this.
    const QPointer<HttpsExchange> self(this);
    read();
    if (self != nullptr && reply_ != nullptr) {
        tell(outcomeOf(*reply_));
    }
}

Outcome<HttpsClient::Response> HttpsExchange::outcomeOf(const QNetworkReply& reply) const {
    constexpr int firstRedirect = 300;
    constexpr int firstError = 400;
    const auto status = statusOf(reply);
    // One without encryption; one that names no place, or a place for which Qt Network knows no way.
    const bool leadsOutOfHttps =
        status >= firstRedirect && (reply.error() == QNetworkReply::InsecureRedirectError ||
                                    reply.error() == QNetworkReply::ProtocolUnknownError);
    if (leadsOutOfHttps || status >= firstError) {
        return HttpsClient::Response{.status = status, .body = {}, .isTooLong = false};
    }
    if (reply.error() != QNetworkReply::NoError) {
        return UpdateFailure::ofSystem(reply.errorString());
    }
    return HttpsClient::Response{.status = status, .body = body_, .isTooLong = false};
}

void HttpsExchange::tell(const Outcome<HttpsClient::Response>& outcome) {
    letGo();
    file_.close();
    // Whoever is told may drop this.
    std::exchange(completion_, {})(outcome);
}

void HttpsExchange::letGo() {
    patience_.stop();
    if (reply_ == nullptr) {
        return;
    }
    auto* const reply = std::exchange(reply_, nullptr).data();
    reply->disconnect(this);
    reply->disconnect(&patience_);
    reply->abort();
    reply->deleteLater();
}

} // namespace tavro
