#pragma once

#include "Concurrency/MainActor.h"
#include "PlatformInterfaces/Application/BundleReader.h"
#include "Updates/ChildProcesses.h"
#include "Updates/PackageVerifier.h"
#include "Updates/UpdateFiles.h"

namespace tavro {

/// Verifies disk images: mounted read-only where nobody looks, it must hold the application with its
/// identifier, the offered version and an intact signature.
class DiskImageVerifier final : public PackageVerifier {
public:
    /// All of it must outlive the verifier and the work that it gives.
    struct Environment {
        UpdateFiles& files;
        ChildProcesses& processes;
        const BundleReader& bundles;
        MainActor& mainActor;
    };

    explicit DiskImageVerifier(const Environment& environment) : environment_(environment) {}

    [[nodiscard]] std::optional<UpdatePlatform> packageIn(const UpdatePlatforms& platforms) const override;

    [[nodiscard]] std::unique_ptr<PendingWork> verify(const Package& package,
                                                      Completion<std::monostate> completion) override;

private:
    Environment environment_;
};

} // namespace tavro
