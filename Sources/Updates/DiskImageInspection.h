#pragma once

#include "Updates/DiskImageVerifier.h"

namespace tavro {

/// One disk image that is mounted, looked at and unmounted again. Dropped in between, it is unmounted too.
class DiskImageInspection final : public PendingWork {
public:
    /// Begins at once. The environment must outlive this.
    DiskImageInspection(const PackageVerifier::Package& package,
                        const DiskImageVerifier::Environment& environment,
                        Completion<std::monostate> completion);
    ~DiskImageInspection() override;

private:
    void inspect(const Outcome<QString>& attached);
    /// The path of the application in the image when it is the expected one.
    [[nodiscard]] std::optional<QString> expectedApplication() const;
    /// Tells the outcome when everything is cleaned up.
    void cleanUp(const PlainOutcome& outcome);
    [[nodiscard]] QStringList detachArguments() const;

    DiskImageVerifier::Environment environment_;
    QString version_;
    Completion<std::monostate> completion_;
    QString mountPoint_;
    /// Whether the mount point is there.
    bool needsCleanUp_ = false;
    std::unique_ptr<PendingWork> step_;
    ScheduledTask refusal_;
};

} // namespace tavro
