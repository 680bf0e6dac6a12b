#include "Programs/tavro/AppMainUpdates.h"

#include "Updates/QtChildProcesses.h"
#include "Updates/QtFileOpener.h"
#include "Updates/QtHttpsClient.h"
#include "Updates/QtUpdateFiles.h"
#include "Updates/UpdateCoordinator.h"
#include "UserInterface/UpdateQuickAlert.h"
#include "UserInterface/UpdateQuickWindow.h"

#include <QCoreApplication>

#include <map>
#include <utility>

#if defined(Q_OS_LINUX)
#include "Platform/Linux/Desktop/ApplicationInformationAdapter.h"
#include "Updates/DebianPackageVerifier.h"
#elif defined(Q_OS_MACOS)
#include "Platform/MacOS/ApplicationInformationAdapter.h"
#include "Platform/MacOS/BundleReaderAdapter.h"
#include "Updates/DiskImageVerifier.h"
#else
#error "There is no package verifier for this platform: configure with TAVRO_SELF_UPDATE=OFF"
#endif

namespace tavro {

namespace {

#if defined(Q_OS_LINUX)
std::map<QString, QString> builtIn() {
    return {{QStringLiteral("CFBundleShortVersionString"), QStringLiteral(TAVRO_VERSION)}};
}
#endif

class UpdatesOfThisPlatform final : public AppMainUpdates {
public:
    UpdatesOfThisPlatform(MainActor& mainActor, std::function<void()> terminate)
        :
#if defined(Q_OS_LINUX)
          information_(builtIn()),
          verifier_({.files = files_,
                     .processes = processes_,
                     .https = https_,
                     .keyring = QCoreApplication::applicationDirPath() +
                                QLatin1String("/../share/tavro/update-keyring.gpg")}),
#elif defined(Q_OS_MACOS)
          verifier_({.files = files_, .processes = processes_, .bundles = bundles_, .mainActor = mainActor}),
#endif
          service_({.https = https_,
                    .files = files_,
                    .information = information_,
                    .verifier = verifier_,
                    .opener = opener_,
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
    QtFileOpener opener_;
#if defined(Q_OS_LINUX)
    linuxos::ApplicationInformationAdapter information_;
    DebianPackageVerifier verifier_;
#elif defined(Q_OS_MACOS)
    macos::ApplicationInformationAdapter information_;
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
