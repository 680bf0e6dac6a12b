#include "Updates/UpdateService.h"

#include "Updates/Manifest/SemanticVersion.h"
#include "Updates/UpdateCheck.h"
#include "Updates/UpdateDownload.h"

#include <utility>

namespace tavro {

UpdateService::UpdateService(const Environment& environment, QString defaultFeed)
    : environment_(environment), defaultFeed_(std::move(defaultFeed)) {}

QString UpdateService::installedVersion() const {
    const auto text = environment_.information(QStringLiteral("CFBundleShortVersionString"));
    const auto version = SemanticVersion::parse(text.value_or(QString()).toStdString());
    return QString::fromStdString(version.value_or(SemanticVersion()).description());
}

QString UpdateService::feedAddress() const {
    for (const auto& key : {QStringLiteral("TAVROUpdateFeedURL"), QStringLiteral("PelmontUpdateFeedURL")}) {
        if (const auto address = environment_.information(key)) {
            return *address;
        }
    }
    return defaultFeed_;
}

std::unique_ptr<PendingWork> UpdateService::check(Completion<std::optional<AvailableUpdate>> completion) {
    return std::make_unique<UpdateCheck>(
        UpdateCheck::Question{.feedAddress = feedAddress(), .installedVersion = installedVersion()},
        environment_, std::move(completion));
}

std::unique_ptr<PendingWork> UpdateService::downloadAndOpen(const AvailableUpdate& update,
                                                            HttpsClient::ProgressHandler progress,
                                                            Completion<QString> completion) {
    return std::make_unique<UpdateDownload>(update, environment_, std::move(progress), std::move(completion));
}

} // namespace tavro
