#pragma once

#include "Concurrency/MainActor.h"
#include "PlatformInterfaces/Application/ApplicationInformation.h"
#include "Updates/AvailableUpdate.h"
#include "Updates/FileOpener.h"
#include "Updates/HttpsClient.h"
#include "Updates/PackageVerifier.h"
#include "Updates/UpdateFiles.h"

#include <memory>
#include <optional>

namespace tavro {

/// Looks for a newer version, and fetches, checks and opens its package. It keeps nothing: every call starts
/// afresh. Main thread only.
class UpdateService {
public:
    /// All of it must outlive the service and the work that it gives.
    struct Environment {
        HttpsClient& https;
        UpdateFiles& files;
        const ApplicationInformation& information;
        PackageVerifier& verifier;
        FileOpener& opener;
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
