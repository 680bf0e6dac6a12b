#pragma once

#include "Updates/Doubles/HeldCompletions.h"
#include "Updates/HttpsClient.h"

#include <vector>

namespace tavro::headless {

/// Reaches nobody, and records what it is asked. The requests are answered by hand, in their order.
class HttpsClientAdapter final : public HttpsClient {
public:
    struct Request {
        QUrl address;
        /// Empty for a fetch.
        QString file;
        qint64 longest = 0;
        ProgressHandler progress;
    };

    std::vector<Request> requests;
    HeldCompletions<Response> answers;

    [[nodiscard]] std::unique_ptr<PendingWork> fetch(const QUrl& address, qint64 longest,
                                                     Completion<Response> completion) override {
        requests.push_back({.address = address, .file = {}, .longest = longest, .progress = {}});
        return answers.hold(std::move(completion));
    }

    [[nodiscard]] std::unique_ptr<PendingWork> download(const QUrl& address, const QString& file,
                                                        qint64 longest, ProgressHandler progress,
                                                        Completion<Response> completion) override {
        requests.push_back(
            {.address = address, .file = file, .longest = longest, .progress = std::move(progress)});
        return answers.hold(std::move(completion));
    }
};

} // namespace tavro::headless
