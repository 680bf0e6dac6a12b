#include "Updates/UpdateDownload.h"

#include "Updates/ManifestValidation.h"

#include <QCoreApplication>

#include <utility>

namespace tavro {

UpdateDownload::UpdateDownload(const AvailableUpdate& update, const UpdateService::Environment& environment,
                               HttpsClient::ProgressHandler progress, Completion<QString> completion)
    : update_(update), environment_(environment), completion_(std::move(completion)) {
    if (const auto failure = begin(std::move(progress))) {
        refusal_ = environment_.mainActor.after({}, [this, reason = *failure] { finish(reason); });
    }
}

UpdateDownload::~UpdateDownload() {
    // First what still writes to the file.
    step_.reset();
    if (!partialFile_.isEmpty()) {
        environment_.files.removeFile(partialFile_);
    }
}

std::optional<UpdateFailure> UpdateDownload::begin(HttpsClient::ProgressHandler progress) {
    const auto address = ManifestValidation::secureUrl(QString::fromStdString(update_.package.url));
    if (!address.isSuccess()) {
        return address.failure();
    }
    address_ = address.value();
    // Both names come from the feed; nothing is written before they are known to stay in their folder.
    const auto version =
        ManifestValidation::safeVersionFolder(QString::fromStdString(update_.manifest.version));
    if (!version.isSuccess()) {
        return version.failure();
    }
    const auto name = ManifestValidation::safeFileName(QString::fromStdString(update_.package.fileName));
    if (!name.isSuccess()) {
        return name.failure();
    }
    const auto folder = makeUpdatesFolder();
    if (!folder.isSuccess()) {
        return folder.failure();
    }
    updatesFolder_ = folder.value();
    package_ = updatesFolder_ + QLatin1Char('/') + version.value() + QLatin1Char('/') + name.value();
    // A run of the program that ended in the middle of a download could not remove its own.
    environment_.files.removeLeftovers(updatesFolder_);
    // On the same disk as its final place, where it is only renamed.
    const auto file = environment_.files.makePrivateFile(updatesFolder_);
    if (!file.isSuccess()) {
        return file.failure();
    }
    partialFile_ = file.value();
    step_ = environment_.https.download(
        address_, partialFile_, longestPackage, std::move(progress),
        [this](const Outcome<HttpsClient::Response>& response) { keep(response); });
    return std::nullopt;
}

Outcome<QString> UpdateDownload::makeUpdatesFolder() {
    const auto base = environment_.files.applicationSupportFolder();
    if (!base.isSuccess()) {
        return base.failure();
    }
    const auto folder = base.value() + QLatin1String("/TAVRO/Updates");
    const auto made = environment_.files.makePrivateFolder(folder);
    return made.isSuccess() ? Outcome<QString>(folder) : made.failure();
}

void UpdateDownload::keep(const Outcome<HttpsClient::Response>& response) {
    if (const auto failure = save(response)) {
        finish(*failure);
        return;
    }
    step_ = environment_.files.digest(package_, [this](const Outcome<QString>& digest) { compare(digest); });
}

std::optional<UpdateFailure> UpdateDownload::save(const Outcome<HttpsClient::Response>& response) {
    if (!response.isSuccess()) {
        return response.failure();
    }
    if (response.value().status != HttpsClient::Response::ok) {
        return UpdateError::invalidFeed();
    }
    if (response.value().isTooLong) {
        return UpdateError::integrityCheckFailed();
    }
    const auto folder = package_.left(package_.lastIndexOf(QLatin1Char('/')));
    if (const auto made = environment_.files.makePrivateFolder(folder); !made.isSuccess()) {
        return made.failure();
    }
    if (const auto moved = environment_.files.replace(package_, partialFile_); !moved.isSuccess()) {
        return moved.failure();
    }
    partialFile_.clear();
    return std::nullopt;
}

void UpdateDownload::compare(const Outcome<QString>& digest) {
    if (!digest.isSuccess()) {
        finish(digest.failure());
        return;
    }
    const auto expected = ManifestValidation::normalizedHash(QString::fromStdString(update_.package.sha256));
    if (digest.value().compare(expected, Qt::CaseInsensitive) != 0) {
        environment_.files.removeFile(package_);
        finish(UpdateError::integrityCheckFailed());
        return;
    }
    step_ = environment_.verifier.verify(
        {.address = address_, .path = package_, .version = QString::fromStdString(update_.manifest.version)},
        [this](const PlainOutcome& verification) { open(verification); });
}

void UpdateDownload::open(const PlainOutcome& verification) {
    if (!verification.isSuccess()) {
        finish(verification.failure());
    } else if (!environment_.open(package_)) {
        finish(UpdateError::commandFailed(QCoreApplication::translate(
            "UpdateError", "macOS could not open the verified TAVRO installer.")));
    } else {
        finish(package_);
    }
}

void UpdateDownload::finish(const Outcome<QString>& outcome) {
    if (!partialFile_.isEmpty()) {
        environment_.files.removeFile(partialFile_);
        partialFile_.clear();
    }
    // Whoever is told may drop this.
    std::exchange(completion_, {})(outcome);
}

} // namespace tavro
