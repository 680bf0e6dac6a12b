#pragma once

#include "Updates/Manifest/UpdatePlatform.h"
#include "Updates/Outcome.h"

#include <QUrl>

#include <memory>
#include <optional>

namespace tavro {

/// Knows the packages of one platform: which it is in a manifest, and whether a downloaded one is what it
/// should be. Main thread only.
class PackageVerifier {
public:
    struct Package {
        QUrl address;
        /// Where it was saved; its folder is for the user alone.
        QString path;
        /// As the manifest has it.
        QString version;
    };

    PackageVerifier() = default;
    PackageVerifier(const PackageVerifier&) = delete;
    PackageVerifier& operator=(const PackageVerifier&) = delete;
    virtual ~PackageVerifier() = default;

    /// Nothing when there is none for the platform.
    [[nodiscard]] virtual std::optional<UpdatePlatform> packageIn(const UpdatePlatforms& platforms) const = 0;

    /// A success says that the package comes from the maker and holds this version of the application.
    /// However it ends, also by being dropped, nothing but the package is left behind.
    [[nodiscard]] virtual std::unique_ptr<PendingWork> verify(const Package& package,
                                                              Completion<std::monostate> completion) = 0;
};

} // namespace tavro
