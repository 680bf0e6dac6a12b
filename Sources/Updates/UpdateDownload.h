#pragma once

#include "Updates/UpdateService.h"

namespace tavro {

/// One package on its way: download, checksum, verification, opening. Dropped before the download has its
/// final name, it leaves nothing behind.
class UpdateDownload final : public PendingWork {
public:
    /// No package is longer, in bytes; reading on would only fill the disk.
    static constexpr qint64 longestPackage = 1 << 30;

    /// Begins at once. The environment must outlive this.
    UpdateDownload(const AvailableUpdate& update, const UpdateService::Environment& environment,
                   HttpsClient::ProgressHandler progress, Completion<QString> completion);
    ~UpdateDownload() override;

private:
    [[nodiscard]] std::optional<UpdateFailure> begin(HttpsClient::ProgressHandler progress);
    /// Where every update is kept, below the user's folder for applications.
    [[nodiscard]] Outcome<QString> makeUpdatesFolder();
    void keep(const Outcome<HttpsClient::Response>& response);
    [[nodiscard]] std::optional<UpdateFailure> save(const Outcome<HttpsClient::Response>& response);
    void compare(const Outcome<QString>& digest);
    void open(const PlainOutcome& verification);
    void finish(const Outcome<QString>& outcome);

    AvailableUpdate update_;
    UpdateService::Environment environment_;
    Completion<QString> completion_;
    QUrl address_;
    QString updatesFolder_;
    QString partialFile_;
    QString package_;
    std::unique_ptr<PendingWork> step_;
    ScheduledTask refusal_;
};

} // namespace tavro
