#include "Updates/UpdateViewModel.h"

#include "Updates/UpdatesFixture.h"

#include <QLocale>
#include <QSignalSpy>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class UpdateViewModelTest : public UpdatesFixture {
protected:
    int terminations = 0;
    UpdateViewModel model{available(), service, [this] { ++terminations; }};
};

TEST_F(UpdateViewModelTest, showsTheOffer) {
    EXPECT_EQ(model.installedVersion(), QStringLiteral("1.3.0"));
    EXPECT_EQ(model.offeredVersion(), QStringLiteral("1.4.0"));
    EXPECT_THAT(model.releaseNotes(),
                ElementsAre(QStringLiteral("Better chords"), QStringLiteral("Fewer faults")));
    EXPECT_FALSE(model.isInstalling());
    EXPECT_EQ(model.status(), QString());
    EXPECT_LT(model.progress(), 0);
    EXPECT_EQ(model.progressText(), QString());
}

TEST_F(UpdateViewModelTest, installsAndEndsTheApplication) {
    QSignalSpy changes(&model, &UpdateViewModel::isInstallingChanged);
    QSignalSpy statuses(&model, &UpdateViewModel::statusChanged);
    model.install();
    EXPECT_TRUE(model.isInstalling());
    EXPECT_EQ(model.status(), QStringLiteral("Downloading and verifying the TAVRO installer..."));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(statuses.count(), 1);
    https.answers.answer(served(QByteArray()));
    files.digests.answer(QString(64, QLatin1Char('b')));
    verifier.verdicts.answer(std::monostate());
    EXPECT_EQ(model.status(), QStringLiteral("The verified installer is ready."));
    EXPECT_TRUE(model.isInstalling()) << "nothing is left to press";
    EXPECT_EQ(terminations, 1);
    EXPECT_EQ(statuses.count(), 2);
}

TEST_F(UpdateViewModelTest, tellsWhyItFailedAndTriesAgain) {
    model.install();
    https.answers.answer(served(QByteArray()));
    files.digests.answer(QStringLiteral("00"));
    EXPECT_EQ(model.status(), QStringLiteral("The downloaded update failed its security check."));
    EXPECT_FALSE(model.isInstalling());
    EXPECT_EQ(terminations, 0);
    model.install();
    EXPECT_TRUE(model.isInstalling());
    EXPECT_EQ(model.status(), QStringLiteral("Downloading and verifying the TAVRO installer..."));
    EXPECT_THAT(https.requests, SizeIs(2));
}

TEST_F(UpdateViewModelTest, installsOnceAtATime) {
    model.install();
    model.install();
    EXPECT_THAT(https.requests, SizeIs(1));
}

TEST_F(UpdateViewModelTest, showsWhatHasArrived) {
    QLocale::setDefault(QLocale::c());
    QSignalSpy changes(&model, &UpdateViewModel::progressChanged);
    model.install();
    EXPECT_LT(model.progress(), 0);
    https.requests[0].progress({.received = 512, .expected = 2048});
    EXPECT_EQ(model.progress(), 0.25);
    EXPECT_EQ(model.progressText(), QStringLiteral("512 bytes of 2.00 KiB"));
    EXPECT_EQ(changes.count(), 1);
    https.requests[0].progress({.received = 1024, .expected = std::nullopt});
    EXPECT_LT(model.progress(), 0);
    EXPECT_EQ(model.progressText(), QStringLiteral("1.00 KiB"));
    https.answers.answer(served(QByteArray(), 500));
    model.install();
    EXPECT_EQ(model.progressText(), QString()) << "the next attempt begins at nothing";
}

TEST_F(UpdateViewModelTest, endsTheDownloadWithItself) {
    {
        UpdateViewModel other(available(), service, [] {});
        other.install();
        EXPECT_TRUE(https.answers.isWaiting());
    }
    EXPECT_FALSE(https.answers.isWaiting());
    EXPECT_TRUE(files.files.empty());
}

} // namespace
} // namespace tavro
