#pragma once

#include "Updates/Outcome.h"

#include <QByteArray>
#include <QUrl>

#include <memory>
#include <optional>

namespace tavro {

/// Requests over HTTPS, and over nothing else. A refused connection, an unknown host, an unacceptable
/// certificate, a body that ends too early or stops coming is a failure; an answer of whatever status is
/// none. Redirects are followed as long as they stay with HTTPS. Main thread only.
class HttpsClient {
public:
    struct Response {
        /// Of the last answer; that of a redirect which leaves HTTPS is not followed and so the last.
        int status = 0;
        /// That of an answer with what was asked for.
        static constexpr int ok = 200;
        /// Only of a fetch, and only with the status 200.
        QByteArray body;
        /// Reading stopped because the body is longer than allowed, or than was announced.
        bool isTooLong = false;
    };

    struct Progress {
        qint64 received = 0;
        /// Nothing when the server does not tell.
        std::optional<qint64> expected;

        friend bool operator==(const Progress&, const Progress&) = default;
    };

    using ProgressHandler = std::function<void(const Progress&)>;

    HttpsClient() = default;
    HttpsClient(const HttpsClient&) = delete;
    HttpsClient& operator=(const HttpsClient&) = delete;
    virtual ~HttpsClient() = default;

    /// Reads a body of at most so many bytes.
    [[nodiscard]] virtual std::unique_ptr<PendingWork> fetch(const QUrl& address, qint64 longest,
                                                             Completion<Response> completion) = 0;

    /// Writes a body of at most so many bytes to a file, which must exist and is emptied. What stands in it
    /// is of use only after the status 200.
    [[nodiscard]] virtual std::unique_ptr<PendingWork> download(const QUrl& address, const QString& file,
                                                                qint64 longest, ProgressHandler progress,
                                                                Completion<Response> completion) = 0;
};

} // namespace tavro
