#pragma once

#include "Updates/ChildProcesses.h"
#include "Updates/HttpsClient.h"
#include "Updates/PackageVerifier.h"
#include "Updates/UpdateFiles.h"

namespace tavro {

/// Verifies Debian packages: a detached signature, which is served beside the package under its address with
/// ".asc" behind it, must be of a key in the keyring that came with the program; then the package must be
/// called "tavro" and have the offered version.
class DebianPackageVerifier final : public PackageVerifier {
public:
    /// All of it must outlive the verifier and the work that it gives.
    struct Environment {
        UpdateFiles& files;
        ChildProcesses& processes;
        HttpsClient& https;
        /// An absolute path. Without the file every package is refused.
        QString keyring;
    };

    explicit DebianPackageVerifier(Environment environment) : environment_(std::move(environment)) {}

    [[nodiscard]] std::optional<UpdatePlatform> packageIn(const UpdatePlatforms& platforms) const override;

    [[nodiscard]] std::unique_ptr<PendingWork> verify(const Package& package,
                                                      Completion<std::monostate> completion) override;

private:
    Environment environment_;
};

} // namespace tavro
