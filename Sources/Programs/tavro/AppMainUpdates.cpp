#include "Programs/tavro/AppMainUpdates.h"

#include "Updates/QtChildProcesses.h"
#include "Updates/QtHttpsClient.h"
#include "Updates/QtUpdateFiles.h"
#include "Updates/UpdateCoordinator.h"
#include "UserInterface/UpdateQuickAlert.h"
#include "UserInterface/UpdateQuickWindow.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QUrl>

#include <optional>
#include <utility>

#if defined(Q_OS_LINUX)
#include "Updates/DebianPackageVerifier.h"
#elif defined(Q_OS_MACOS)
#include "Platform/MacOS/BundleReaderAdapter.h"
#include "Platform/MacOS/BundleValues.h"
#include "Updates/DiskImageVerifier.h"
#else
#error "There is no package verifier for this platform: configure with TAVRO_SELF_UPDATE=OFF"
#endif

namespace tavro {

namespace {

std::optional<QString> information(const QString& key) {
#if defined(Q_OS_LINUX)
    // What was built into the program; environment variables of the same names stand above it.
    const auto variable = key.toLatin1();
    if (qEnvironmentVariableIsSet(variable.constData())) {
        return qEnvironmentVariable(variable.constData());
    }
    const bool isVersion = key == QLatin1String("CFBundleShortVersionString");
    return isVersion ? std::optional(QStringLiteral(TAVRO_VERSION)) : std::nullopt;
#elif defined(Q_OS_MACOS)
    return macos::BundleValues::ownText(key);
#endif
}

class UpdatesOfThisPlatform final : public AppMainUpdates {
public:
    UpdatesOfThisPlatform(MainActor& mainActor, std::function<void()> terminate)
        :
#if defined(Q_OS_LINUX)
          verifier_({.files = files_,
                     .processes = processes_,
                     .https = https_,
                     .keyring = QCoreApplication::applicationDirPath() +
                                QLatin1String("/../share/tavro/update-keyring.gpg")}),
#elif defined(Q_OS_MACOS)
          verifier_({.files = files_, .processes = processes_, .bundles = bundles_, .mainActor = mainActor}),
#endif
          service_(
              {.https = https_,
               .files = files_,
               .information = information,
               .verifier = verifier_,
               .open =
                   [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); },
               .mainActor = mainActor},
              QStringLiteral(TAVRO_UPDATE_FEED_URL)),
          coordinator_({.service = service_, .window = window_, .alert = alert_, .mainActor = mainActor},
                       std::move(terminate)) {
    }

    void checkAutomatically() override { coordinator_.checkAutomatically(); }

    void checkManually() override { coordinator_.checkManually(); }

private:
    QtHttpsClient https_;
    QtUpdateFiles files_;
    QtChildProcesses processes_;
#if defined(Q_OS_LINUX)
    DebianPackageVerifier verifier_;
#elif defined(Q_OS_MACOS)
    macos::BundleReaderAdapter bundles_;
    DiskImageVerifier verifier_;
#endif
    UpdateService service_;
    UpdateQuickWindow window_;
    UpdateQuickAlert alert_;
    UpdateCoordinator coordinator_;
};

} // namespace

std::unique_ptr<AppMainUpdates> AppMainUpdates::make(MainActor& mainActor, std::function<void()> terminate) {
    return std::make_unique<UpdatesOfThisPlatform>(mainActor, std::move(terminate));
}

} // namespace tavro
