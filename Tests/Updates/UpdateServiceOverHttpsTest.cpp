#include "Updates/EventLoop.h"
#include "Updates/HttpsServer.h"
#include "Updates/QtHttpsClient.h"
#include "Updates/QtUpdateFiles.h"
#include "Updates/UpdatesFixture.h"

#include <QDir>
#include <QTcpServer>

#include <memory>
#include <optional>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

/// The service with real connections and real files; only who verifies and opens are recorders.
class UpdateServiceOverHttpsTest : public UpdatesFixture {
protected:
    static void SetUpTestSuite() { server = std::make_unique<HttpsServer>(); }

    static void TearDownTestSuite() { server.reset(); }

    UpdateFailure failureOfCheck(const QString& path) {
        information.values[QStringLiteral("TAVROUpdateFeedURL")] = server->url(path).toString();
        std::optional<Answer> answer;
        const auto check = real.check([&](const Answer& given) { answer = given; });
        EventLoop::runUntil([&] { return answer.has_value(); });
        return failureOf(answer);
    }

    UpdateFailure failureOfDownload(const QString& path) {
        auto update = available();
        update.package.url = server->url(path).toString().toStdString();
        std::optional<Outcome<QString>> outcome;
        const auto download =
            real.downloadAndOpen(update, {}, [&](const Outcome<QString>& told) { outcome = told; });
        EventLoop::runUntil([&] { return outcome.has_value(); });
        EXPECT_THAT(everythingKept(), IsEmpty()) << path.toStdString();
        EXPECT_THAT(verifier.packages, IsEmpty());
        EXPECT_THAT(opener.opened, IsEmpty());
        return failureOf(outcome);
    }

    static std::optional<UpdateError::Kind> kindOf(const UpdateFailure& failure) {
        return failure.error() ? std::optional(failure.error()->kind()) : std::nullopt;
    }

    /// What stands in the folder of the updates.
    QStringList everythingKept() {
        const auto base = realFiles.applicationSupportFolder();
        EXPECT_TRUE(base.isSuccess());
        const auto folder = base.value() + QLatin1String("/TAVRO/Updates");
        EXPECT_TRUE(QDir(folder).exists());
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    static inline std::unique_ptr<HttpsServer> server;
    QtHttpsClient client{{.patience = 20s, .additionalAuthorities = server->authority()}};
    QtUpdateFiles realFiles;
    UpdateService real{{.https = client,
                        .files = realFiles,
                        .information = std::cref(information),
                        .verifier = verifier,
                        .open = std::ref(opener),
                        .mainActor = main},
                       QString()};

private:
    template <typename Told>
    static UpdateFailure failureOf(const Told& told) {
        const auto isFailure = told && !told->isSuccess();
        EXPECT_TRUE(isFailure);
        return isFailure ? told->failure() : UpdateFailure::ofSystem(QStringLiteral("no failure"));
    }
};

TEST_F(UpdateServiceOverHttpsTest, takesARedirectOutOfHttpsForABrokenFeed) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    const auto path = QStringLiteral("redirect/http/%1").arg(plain.serverPort());
    EXPECT_EQ(kindOf(failureOfCheck(path)), UpdateError::Kind::invalidFeed);
    EXPECT_EQ(kindOf(failureOfDownload(path)), UpdateError::Kind::invalidFeed);
    EXPECT_FALSE(plain.waitForNewConnection(0));
}

TEST_F(UpdateServiceOverHttpsTest, takesEveryOtherStatusForABrokenFeed) {
    for (const auto* path : {"status/304", "status/404", "status/500", "status/503"}) {
        EXPECT_EQ(kindOf(failureOfCheck(QString::fromLatin1(path))), UpdateError::Kind::invalidFeed) << path;
        EXPECT_EQ(kindOf(failureOfDownload(QString::fromLatin1(path))), UpdateError::Kind::invalidFeed)
            << path;
    }
}

TEST_F(UpdateServiceOverHttpsTest, passesOnWhatBreaksTheConnection) {
    for (const auto* path : {"redirect/loop", "truncated/1000/999", "chunks/300/700"}) {
        for (const auto& failure :
             {failureOfCheck(QString::fromLatin1(path)), failureOfDownload(QString::fromLatin1(path))}) {
            EXPECT_EQ(kindOf(failure), std::nullopt) << path;
            EXPECT_NE(failure.description(), QString()) << path;
        }
    }
}

TEST_F(UpdateServiceOverHttpsTest, readsNoManifestOfMoreThanAMebibyte) {
    const auto mebibyte = QStringLiteral("chunks/262144/262144/262144/262144");
    EXPECT_EQ(kindOf(failureOfCheck(mebibyte + QStringLiteral("/1/0"))), UpdateError::Kind::invalidFeed);
    // The rest never comes.
    EXPECT_EQ(kindOf(failureOfCheck(QStringLiteral("stalled/1048577/1"))), UpdateError::Kind::invalidFeed);
    const auto read = failureOfCheck(mebibyte + QStringLiteral("/0"));
    EXPECT_EQ(kindOf(read), std::nullopt) << "as long as it may be: it was read, and is no manifest";
    EXPECT_EQ(read.description(), QStringLiteral("not UTF-8"));
}

TEST_F(UpdateServiceOverHttpsTest, loadsNoPackageOfMoreThanAGibibyte) {
    // The rest never comes.
    EXPECT_EQ(kindOf(failureOfDownload(QStringLiteral("stalled/1073741825/1"))),
              UpdateError::Kind::integrityCheckFailed);
}

TEST_F(UpdateServiceOverHttpsTest, verifiesNothingOfAnotherChecksum) {
    auto update = available();
    update.package.url = server->url(QStringLiteral("overlong/1000/2000")).toString().toStdString();
    std::optional<Outcome<QString>> outcome;
    const auto download =
        real.downloadAndOpen(update, {}, [&](const Outcome<QString>& told) { outcome = told; });
    EventLoop::runUntil([&] { return outcome.has_value(); });
    ASSERT_FALSE(outcome->isSuccess());
    EXPECT_EQ(kindOf(outcome->failure()), UpdateError::Kind::integrityCheckFailed);
    EXPECT_THAT(everythingKept(), SizeIs(1)) << "the folder of the version";
    ASSERT_TRUE(
        QDir(realFiles.applicationSupportFolder().value() + QLatin1String("/TAVRO")).removeRecursively());
    EXPECT_THAT(verifier.packages, IsEmpty());
}

} // namespace
} // namespace tavro
