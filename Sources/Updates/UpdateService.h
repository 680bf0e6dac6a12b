#pragma once

#include "Concurrency/MainActor.h"
#include "Updates/HttpsClient.h"
#include "Updates/Manifest/UpdateManifest.h"
#include "Updates/PackageVerifier.h"
#include "Updates/UpdateFiles.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tavro {

/// A version that is newer than the one that runs, and its package for this system.
struct AvailableUpdate {
    /// The text form of the version that runs.
    std::string installedVersion;
    UpdateManifest manifest;
    UpdatePlatform package;

    friend bool operator==(const AvailableUpdate&, const AvailableUpdate&) = default;
};

/// Looks for a newer version, and fetches, checks and opens its package. It keeps nothing: every call starts
/// afresh. Main thread only.
class UpdateService {
public:
    /// All of it must outlive the service and the work that it gives.
    struct Environment {
        HttpsClient& https;
        UpdateFiles& files;
        /// What the program tells about itself, by key, such as "CFBundleShortVersionString". Nothing when
        /// there is no value, or one that is no text.
        std::function<std::optional<QString>(const QString& key)> information;
        PackageVerifier& verifier;
        /// Hands a file to the system, to be opened with whatever it uses for such files. False when the
        /// system declines; what comes of it later is not told.
        std::function<bool(const QString& path)> open;
        MainActor& mainActor;
    };

    /// The address is that of the feed where the application's information names none.
    UpdateService(const Environment& environment, QString defaultFeed);

    /// The text form of the version that runs; "0.0.0" when it is not known.
    [[nodiscard]] QString installedVersion() const;

    /// Gives the update that the feed offers for this system, or nothing when there is none that is newer.
    [[nodiscard]] std::unique_ptr<PendingWork> check(Completion<std::optional<AvailableUpdate>> completion);

    /// Gives the path of the package, which was opened after it had passed every check. A package that fails
    /// its verification stays where it is saved, unopened; the next attempt replaces it.
    [[nodiscard]] std::unique_ptr<PendingWork> downloadAndOpen(const AvailableUpdate& update,
                                                               HttpsClient::ProgressHandler progress,
                                                               Completion<QString> completion);

private:
    [[nodiscard]] QString feedAddress() const;

    Environment environment_;
    QString defaultFeed_;
};

} // namespace tavro
