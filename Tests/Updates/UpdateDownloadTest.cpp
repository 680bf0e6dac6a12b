#include "Updates/UpdatesFixture.h"

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::Pair;
using testing::SizeIs;

class UpdateDownloadTest : public UpdatesFixture {
protected:
    void begin(const AvailableUpdate& update) {
        download = service.downloadAndOpen(
            update, [this](const HttpsClient::Progress& progress) { received = progress.received; },
            [this](const Outcome<QString>& told) { outcome = told; });
        EXPECT_FALSE(outcome.has_value()) << "told inside the call";
    }

    void arrives(const QByteArray& content, int status = 200) {
        ASSERT_THAT(https.requests, SizeIs(1));
        files.files[https.requests[0].file] = content;
        https.answers.answer(served(QByteArray(), status));
    }

    /// Up to the question whether the package is right.
    void arrivesWhole() {
        arrives("package");
        files.digests.answer(QString(64, QLatin1Char('b')));
    }

    QString failure() {
        main.runDue();
        EXPECT_TRUE(outcome.has_value());
        return !outcome ? QString() : outcome->isSuccess() ? QString() : outcome->failure().description();
    }

    std::unique_ptr<PendingWork> download;
    std::optional<Outcome<QString>> outcome;
    qint64 received = -1;
    const QString package = QStringLiteral("/support/TAVRO/Updates/1.4.0/TAVRO.dmg");
};

TEST_F(UpdateDownloadTest, opensWhatHasPassedEveryCheck) {
    begin(available());
    ASSERT_THAT(https.requests, SizeIs(1));
    EXPECT_EQ(https.requests[0].address, QUrl(QStringLiteral("https://updates.example/TAVRO.dmg")));
    EXPECT_EQ(https.requests[0].longest, 1024 * 1024 * 1024);
    https.requests[0].progress({.received = 5, .expected = 7});
    EXPECT_EQ(received, 5);

    arrives("package");
    EXPECT_THAT(files.files, ElementsAre(Key(package)));
    EXPECT_THAT(files.folders, ElementsAre(QStringLiteral("/support/TAVRO/Updates"),
                                           QStringLiteral("/support/TAVRO/Updates/1.4.0")));
    EXPECT_THAT(files.digested, ElementsAre(package));
    EXPECT_THAT(verifier.packages, IsEmpty());

    files.digests.answer(QString(64, QLatin1Char('b')));
    ASSERT_THAT(verifier.packages, SizeIs(1));
    EXPECT_EQ(verifier.packages[0].path, package);
    EXPECT_EQ(verifier.packages[0].version, QStringLiteral("1.4.0"));
    EXPECT_EQ(verifier.packages[0].address, https.requests[0].address);
    EXPECT_THAT(opener.opened, IsEmpty());

    verifier.verdicts.answer(std::monostate());
    EXPECT_THAT(opener.opened, ElementsAre(package));
    ASSERT_TRUE(outcome && outcome->isSuccess());
    EXPECT_EQ(outcome->value(), package);
}

TEST_F(UpdateDownloadTest, takesTheVersionAsItWasServed) {
    auto update = available();
    update.manifest.version = " v1.4.0+build\n";
    begin(update);
    arrivesWhole();
    ASSERT_THAT(verifier.packages, SizeIs(1));
    EXPECT_EQ(verifier.packages[0].path, QStringLiteral("/support/TAVRO/Updates/ v1.4.0+build\n/TAVRO.dmg"));
    EXPECT_EQ(verifier.packages[0].version, QStringLiteral(" v1.4.0+build\n"));
}

TEST_F(UpdateDownloadTest, comparesTheChecksumHoweverItIsWritten) {
    auto update = available();
    update.package.sha256 = "B:" + std::string(63, 'b') + " ";
    begin(update);
    arrivesWhole();
    EXPECT_THAT(verifier.packages, SizeIs(1));
}

TEST_F(UpdateDownloadTest, removesWhatHasAnotherChecksum) {
    begin(available());
    arrives("package");
    files.digests.answer(QString(64, QLatin1Char('c')));
    EXPECT_EQ(failure(), QStringLiteral("The downloaded update failed its security check."));
    EXPECT_THAT(files.files, IsEmpty());
    EXPECT_THAT(verifier.packages, IsEmpty());
    EXPECT_THAT(opener.opened, IsEmpty());
}

TEST_F(UpdateDownloadTest, keepsWhatFailsTheVerificationUnopened) {
    begin(available());
    arrivesWhole();
    verifier.verdicts.answer(UpdateError::invalidApplication());
    EXPECT_EQ(failure(),
              QStringLiteral("The downloaded installer does not contain the expected TAVRO application."));
    EXPECT_THAT(files.files, ElementsAre(Key(package)));
    EXPECT_THAT(opener.opened, IsEmpty());
}

TEST_F(UpdateDownloadTest, tellsThatTheSystemDeclined) {
    opener.declines = true;
    begin(available());
    arrivesWhole();
    verifier.verdicts.answer(std::monostate());
    EXPECT_EQ(failure(), QStringLiteral("macOS could not open the verified TAVRO installer."));
    EXPECT_EQ(outcome->failure().error()->kind(), UpdateError::Kind::commandFailed);
}

TEST_F(UpdateDownloadTest, takesNoAnswerButTwoHundred) {
    for (const auto status : {204, 206, 302, 304, 404, 500}) {
        outcome.reset();
        https.requests.clear();
        begin(available());
        arrives("page", status);
        EXPECT_EQ(
            failure(),
            QStringLiteral("The TAVRO update service is temporarily unavailable. Please try again later."));
        EXPECT_THAT(files.files, IsEmpty());
    }
    EXPECT_THAT(files.digested, IsEmpty());
}

TEST_F(UpdateDownloadTest, refusesWhatIsTooLong) {
    begin(available());
    https.answers.answer(HttpsClient::Response{.status = 200, .body = {}, .isTooLong = true});
    EXPECT_EQ(failure(), QStringLiteral("The downloaded update failed its security check."));
    EXPECT_THAT(files.files, IsEmpty());
}

TEST_F(UpdateDownloadTest, leavesNothingBehindWhenTheConnectionFails) {
    begin(available());
    EXPECT_THAT(files.files, SizeIs(1));
    https.answers.answer(UpdateFailure::ofSystem(QStringLiteral("No space left on device")));
    EXPECT_EQ(failure(), QStringLiteral("No space left on device"));
    EXPECT_THAT(files.files, IsEmpty());
}

TEST_F(UpdateDownloadTest, removesWhatAnEarlierRunHasLeft) {
    const auto left = QStringLiteral("/support/TAVRO/Updates/.download-killed");
    files.files[left] = "half";
    files.files[package] = "whole";
    auto wrong = available();
    wrong.package.fileName = "../x.dmg";
    begin(wrong);
    EXPECT_THAT(files.files, ElementsAre(Pair(left, QByteArray("half")), Pair(package, QByteArray("whole"))));
    EXPECT_EQ(failure(), QStringLiteral("The update filename is invalid."));
    outcome.reset();
    begin(available());
    EXPECT_THAT(files.files, ElementsAre(Key(https.requests.at(0).file), Pair(package, QByteArray("whole"))));
}

TEST_F(UpdateDownloadTest, writesNothingBeforeEveryNameIsRight) {
    const auto failureOf = [&](const AvailableUpdate& update) {
        outcome.reset();
        begin(update);
        return failure();
    };
    auto update = available();
    update.package.url = "http://updates.example/x";
    EXPECT_EQ(failureOf(update),
              QStringLiteral("The TAVRO update service is temporarily unavailable. Please try again later."));
    update = available();
    update.manifest.version = "1.0.0-/../../x";
    EXPECT_EQ(failureOf(update), QStringLiteral("The update manifest version is invalid."));
    update = available();
    update.package.fileName = "../x.dmg";
    EXPECT_EQ(failureOf(update), QStringLiteral("The update filename is invalid."));
    EXPECT_THAT(https.requests, IsEmpty());
    EXPECT_THAT(files.files, IsEmpty());
    EXPECT_THAT(files.folders, IsEmpty());
}

TEST_F(UpdateDownloadTest, passesOnWhatTheFilesSay) {
    const auto reason = QStringLiteral("Permission denied");
    const auto failureWithWholeDownload = [&] {
        outcome.reset();
        https.requests.clear();
        begin(available());
        if (!https.requests.empty()) {
            arrives("package");
            files.digests.answer(UpdateFailure::ofSystem(QStringLiteral("Input/output error")));
        }
        return failure();
    };
    EXPECT_EQ(failureWithWholeDownload(), QStringLiteral("Input/output error"));
    files.files.clear();
    files.supportFailure = reason;
    EXPECT_EQ(failureWithWholeDownload(), reason);
    files.supportFailure.reset();
    files.folderFailures[QStringLiteral("/support/TAVRO/Updates/1.4.0")] = reason;
    EXPECT_EQ(failureWithWholeDownload(), reason);
    files.folderFailures = {{QStringLiteral("/support"), reason}};
    EXPECT_EQ(failureWithWholeDownload(), reason);
    files.folderFailures.clear();
    files.replaceFailure = reason;
    EXPECT_EQ(failureWithWholeDownload(), reason);
    EXPECT_THAT(files.files, IsEmpty());
}

TEST_F(UpdateDownloadTest, endsAndLeavesNothingWhenItIsDropped) {
    begin(available());
    download.reset();
    EXPECT_FALSE(https.answers.isWaiting());
    EXPECT_THAT(files.files, IsEmpty());

    https.requests.clear();
    begin(available());
    arrives("package");
    download.reset();
    EXPECT_FALSE(files.digests.isWaiting());

    https.requests.clear();
    begin(available());
    arrivesWhole();
    download.reset();
    EXPECT_FALSE(verifier.verdicts.isWaiting());
    EXPECT_FALSE(outcome);
}

} // namespace
} // namespace tavro
