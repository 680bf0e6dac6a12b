#pragma once

#include "Updates/UpdateService.h"

namespace tavro {

/// One look at the update feed.
class UpdateCheck final : public PendingWork {
public:
    struct Question {
        QString feedAddress;
        QString installedVersion;
    };

    /// Nobody's manifest is longer, in bytes; reading on would only fill the memory.
    static constexpr qint64 longestManifest = 1 << 20;

    using Answer = std::optional<AvailableUpdate>;

    /// Begins at once. The environment must outlive this.
    UpdateCheck(Question question, const UpdateService::Environment& environment,
                Completion<Answer> completion);

private:
    void take(const Outcome<HttpsClient::Response>& response);
    [[nodiscard]] Outcome<Answer> answerIn(const Outcome<HttpsClient::Response>& response) const;
    [[nodiscard]] Outcome<Answer> answerFor(const UpdateManifest& manifest) const;

    Question question_;
    const PackageVerifier& verifier_;
    Completion<Answer> completion_;
    std::unique_ptr<PendingWork> fetch_;
    ScheduledTask refusal_;
};

} // namespace tavro
