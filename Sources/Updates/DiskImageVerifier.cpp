#include "Updates/DiskImageVerifier.h"

#include "Updates/ExternalTool.h"

#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace tavro {

namespace {

QString diskImageTool() {
    return QStringLiteral("/usr/bin/hdiutil");
}

QString signatureTool() {
    return QStringLiteral("/usr/bin/codesign");
}

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

DiskImageInspection::DiskImageInspection(const PackageVerifier::Package& package,
                                         const DiskImageVerifier::Environment& environment,
                                         Completion<std::monostate> completion)
    : environment_(environment), version_(package.version), completion_(std::move(completion)),
      mountPoint_(environment.files.temporaryFolder() + QLatin1String("/pelmont-update-") +
                  QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()) {
    if (const auto made = environment_.files.makePrivateFolder(mountPoint_); !made.isSuccess()) {
        refusal_ = environment_.mainActor.after(
            {}, [this, failure = made.failure()] { std::exchange(completion_, {})(failure); });
        return;
    }
    needsCleanUp_ = true;
    step_ = ExternalTool::run(environment_.processes, diskImageTool(),
                              {QStringLiteral("attach"), package.path, QStringLiteral("-readonly"),
                               QStringLiteral("-nobrowse"), QStringLiteral("-mountpoint"), mountPoint_},
                              [this](const Outcome<QString>& attached) { inspect(attached); });
}

DiskImageInspection::~DiskImageInspection() {
    step_.reset();
    if (needsCleanUp_) {
        // Nobody is there to wait for it; should the folder stay behind, it is empty.
        environment_.processes.start(diskImageTool(), detachArguments());
        environment_.files.removeFolder(mountPoint_);
    }
}

void DiskImageInspection::inspect(const Outcome<QString>& attached) {
    if (!attached.isSuccess()) {
        cleanUp(attached.failure());
        return;
    }
    const auto application = expectedApplication();
    if (!application) {
        cleanUp(UpdateError::invalidApplication());
        return;
    }
    step_ = ExternalTool::run(environment_.processes, signatureTool(),
                              {QStringLiteral("--verify"), QStringLiteral("--deep"),
                               QStringLiteral("--strict"), QStringLiteral("--verbose=2"), *application},
                              [this](const Outcome<QString>& checked) {
                                  cleanUp(checked.isSuccess() ? PlainOutcome(std::monostate())
                                                              : checked.failure());
                              });
}

std::optional<QString> DiskImageInspection::expectedApplication() const {
    const auto names = environment_.files.names(mountPoint_);
    const auto name = std::ranges::find(names, QLatin1String("app"),
                                        [](const QString& entry) { return QFileInfo(entry).suffix(); });
    if (name == names.end()) {
        return std::nullopt;
    }
    const auto path = mountPoint_ + QLatin1Char('/') + *name;
    const auto bundle = environment_.bundles.read(path);
    const bool isExpected = bundle && bundle->identifier == QLatin1String("com.vessiron.pelmont") &&
                            bundle->shortVersion == version_;
    return isExpected ? std::optional(path) : std::nullopt;
}

void DiskImageInspection::cleanUp(const PlainOutcome& outcome) {
    step_ = environment_.processes.run(diskImageTool(), detachArguments(),
                                       [this, outcome](const Outcome<ChildProcesses::Exit>&) {
                                           needsCleanUp_ = false;
                                           environment_.files.removeFolder(mountPoint_);
                                           // Whoever is told may drop this.
                                           std::exchange(completion_, {})(outcome);
                                       });
}

QStringList DiskImageInspection::detachArguments() const {
    return {QStringLiteral("detach"), mountPoint_, QStringLiteral("-quiet")};
}

} // namespace

std::optional<UpdatePlatform> DiskImageVerifier::packageIn(const UpdatePlatforms& platforms) const {
    return platforms.macos;
}

std::unique_ptr<PendingWork> DiskImageVerifier::verify(const Package& package,
                                                       Completion<std::monostate> completion) {
    return std::make_unique<DiskImageInspection>(package, environment_, std::move(completion));
}

} // namespace tavro
