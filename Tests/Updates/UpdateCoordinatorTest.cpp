#include "Updates/UpdateCoordinator.h"

#include "Updates/Doubles/UpdateAlertAdapter.h"
#include "Updates/Doubles/UpdateWindowAdapter.h"
#include "Updates/UpdatesFixture.h"

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Alert = headless::UpdateAlertAdapter::Alert;

class UpdateCoordinatorTest : public UpdatesFixture {
protected:
    void feedAnswers(const Outcome<HttpsClient::Response>& response) {
        EXPECT_TRUE(https.answers.answer(response)) << "nobody asks";
        main.runDue();
    }

    headless::UpdateWindowAdapter window;
    headless::UpdateAlertAdapter alert;
    int terminations = 0;
    UpdateCoordinator coordinator{{.service = service, .window = window, .alert = alert, .mainActor = main},
                                  [this] { ++terminations; }};
};

TEST_F(UpdateCoordinatorTest, looksOnceTwoSecondsAfterTheStart) {
    coordinator.checkAutomatically();
    main.runUntil(1999999999ns);
    EXPECT_THAT(https.requests, IsEmpty());
    main.runUntil(2s);
    EXPECT_THAT(https.requests, SizeIs(1));
    feedAnswers(servedManifest(ManifestTexts::whole()));
    EXPECT_THAT(window.models, SizeIs(1));
    EXPECT_EQ(window.broughtToFront, 1);
    EXPECT_FALSE(main.hasWork()) << "there is no second look";
    EXPECT_THAT(https.requests, SizeIs(1));
}

TEST_F(UpdateCoordinatorTest, keepsQuietWhenNobodyAsked) {
    coordinator.checkAutomatically();
    main.runUntil(2s);
    feedAnswers(UpdateFailure::ofSystem(QStringLiteral("Host not found")));
    coordinator.check(false);
    feedAnswers(served("", 503));
    information.values[QStringLiteral("CFBundleShortVersionString")] = QStringLiteral("1.4.0");
    coordinator.check(false);
    feedAnswers(servedManifest(ManifestTexts::whole()));
    EXPECT_THAT(alert.alerts, IsEmpty());
    EXPECT_THAT(window.models, IsEmpty());
}

TEST_F(UpdateCoordinatorTest, looksNoMoreWhenItIsGone) {
    {
        UpdateCoordinator other({.service = service, .window = window, .alert = alert, .mainActor = main},
                                [] {});
        other.checkAutomatically();
        EXPECT_TRUE(main.hasWork());
    }
    EXPECT_FALSE(main.hasWork());
    {
        UpdateCoordinator other({.service = service, .window = window, .alert = alert, .mainActor = main},
                                [] {});
        other.checkManually();
        EXPECT_TRUE(https.answers.isWaiting());
    }
    EXPECT_FALSE(https.answers.isWaiting());
}

TEST_F(UpdateCoordinatorTest, tellsThatThereIsNothingNewer) {
    information.values[QStringLiteral("CFBundleShortVersionString")] = QStringLiteral("v1.4.0");
    coordinator.checkManually();
    feedAnswers(servedManifest(ManifestTexts::whole()));
    EXPECT_THAT(alert.alerts,
                ElementsAre(Alert{QStringLiteral("TAVRO is up to date"),
                                  QStringLiteral("Version 1.4.0 is the newest available version.")}));
    EXPECT_THAT(window.models, IsEmpty());
}

TEST_F(UpdateCoordinatorTest, tellsWhyItIsNotKnown) {
    coordinator.checkManually();
    feedAnswers(served("", 503));
    coordinator.checkManually();
    feedAnswers(UpdateFailure::ofSystem(QStringLiteral("Host not found")));
    EXPECT_THAT(
        alert.alerts,
        ElementsAre(
            Alert{QStringLiteral("Could not check for updates"),
                  QStringLiteral(
                      "The TAVRO update service is temporarily unavailable. Please try again later.")},
            Alert{QStringLiteral("Could not check for updates"), QStringLiteral("Host not found")}));
}

TEST_F(UpdateCoordinatorTest, showsTheSameWindowAgain) {
    coordinator.checkManually();
    feedAnswers(servedManifest(ManifestTexts::whole()));
    auto newer = ManifestTexts::whole();
    newer["version"] = "1.5.0";
    coordinator.checkManually();
    feedAnswers(servedManifest(newer));
    ASSERT_THAT(window.models, SizeIs(1));
    EXPECT_EQ(window.broughtToFront, 2);
    EXPECT_EQ(window.models[0]->offeredVersion(), QStringLiteral("1.4.0"));
    EXPECT_THAT(alert.alerts, IsEmpty());
}

TEST_F(UpdateCoordinatorTest, looksOnceAtATime) {
    coordinator.checkManually();
    coordinator.checkManually();
    EXPECT_THAT(https.requests, SizeIs(1));
    feedAnswers(served("", 404));
    EXPECT_THAT(alert.alerts, SizeIs(1));
    coordinator.checkManually();
    EXPECT_THAT(https.requests, SizeIs(2));
}

TEST_F(UpdateCoordinatorTest, letsTheUserLookWhileItLooksByItself) {
    coordinator.check(false);
    coordinator.checkManually();
    EXPECT_THAT(https.requests, SizeIs(2));
    feedAnswers(served("", 404));
    EXPECT_THAT(alert.alerts, IsEmpty());
    feedAnswers(served("", 404));
    EXPECT_THAT(alert.alerts, SizeIs(1));
}

TEST_F(UpdateCoordinatorTest, endsTheApplicationWhenTheInstallerIsOpen) {
    coordinator.present(available());
    ASSERT_THAT(window.models, SizeIs(1));
    window.models[0]->install();
    EXPECT_TRUE(https.answers.answer(served(QByteArray())));
    files.digests.answer(QString(64, QLatin1Char('b')));
    EXPECT_EQ(terminations, 0);
    verifier.verdicts.answer(std::monostate());
    EXPECT_EQ(terminations, 1);
}

} // namespace
} // namespace tavro
