#include "Updates/DebianPackageVerifier.h"

#include "Updates/EventLoop.h"
#include "Updates/QtChildProcesses.h"
#include "Updates/QtUpdateFiles.h"
#include "Updates/SignedPackages.h"
#include "Updates/UpdatesFixture.h"

#include <QFileInfo>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// With the real tools, real packages and real signatures; only the download of the signature is told by
/// hand.
class DebianPackageVerifierTest : public UpdatesFixture {
protected:
    static void SetUpTestSuite() { packages = std::make_unique<SignedPackages>(); }

    static void TearDownTestSuite() { packages.reset(); }

    /// What comes of a package with this signature.
    PlainOutcome verify(const QString& path, const QByteArray& signature) {
        return verify(path, served(signature));
    }

    PlainOutcome verify(const QString& path, const Outcome<HttpsClient::Response>& signature) {
        https.requests.clear();
        std::optional<PlainOutcome> outcome;
        const auto work = debian.verify({.address = QUrl(QStringLiteral("https://updates.example/tavro.deb")),
                                         .path = path,
                                         .version = version},
                                        [&](const PlainOutcome& told) { outcome = told; });
        EXPECT_FALSE(outcome.has_value()) << "told inside the call";
        https.answers.answer(signature);
        EventLoop::runUntil([&] { return outcome.has_value(); });
        return outcome.value_or(UpdateFailure::ofSystem(QStringLiteral("nothing was told")));
    }

    static void expectRefusal(const PlainOutcome& outcome, UpdateError::Kind kind, const std::string& part) {
        ASSERT_FALSE(outcome.isSuccess());
        ASSERT_TRUE(outcome.failure().error()) << outcome.failure();
        EXPECT_EQ(outcome.failure().error()->kind(), kind);
        EXPECT_THAT(outcome.failure().description().toStdString(), HasSubstr(part));
    }

    static inline std::unique_ptr<SignedPackages> packages;
    const QString version = QStringLiteral("1.4.0");
    const QString package = packages->package(QStringLiteral("tavro"), version);
    QtUpdateFiles realFiles;
    QtChildProcesses processes;
    DebianPackageVerifier debian{
        {.files = realFiles, .processes = processes, .https = https, .keyring = packages->keyring()}};
};

TEST_F(DebianPackageVerifierTest, takesTheLinuxPackage) {
    auto platforms = available().manifest.platforms;
    EXPECT_EQ(debian.packageIn(platforms), platforms.linuxos);
    platforms.linuxos.reset();
    EXPECT_EQ(debian.packageIn(platforms), std::nullopt);
}

TEST_F(DebianPackageVerifierTest, acceptsWhatTheMakerHasSigned) {
    const auto outcome = verify(package, packages->signature(package, SignedPackages::maker));
    EXPECT_TRUE(outcome.isSuccess()) << outcome.failure();
    ASSERT_THAT(https.requests, SizeIs(1));
    EXPECT_EQ(https.requests[0].address, QUrl(QStringLiteral("https://updates.example/tavro.deb.asc")));
    EXPECT_EQ(https.requests[0].longest, 65536);
    EXPECT_TRUE(QFileInfo::exists(package));
    EXPECT_FALSE(QFileInfo::exists(package + QLatin1String(".asc"))) << "only the package is left";
}

TEST_F(DebianPackageVerifierTest, refusesATamperedPackage) {
    const auto signature = packages->signature(package, SignedPackages::maker);
    QFile file(package);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("x");
    file.close();
    expectRefusal(verify(package, signature), UpdateError::Kind::commandFailed, "BAD signature");
}

TEST_F(DebianPackageVerifierTest, refusesTheSignatureOfAnotherPackage) {
    const auto other = packages->package(QStringLiteral("tavro"), QStringLiteral("1.3.0"));
    expectRefusal(verify(package, packages->signature(other, SignedPackages::maker)),
                  UpdateError::Kind::commandFailed, "BAD signature");
}

TEST_F(DebianPackageVerifierTest, refusesTheSignatureOfSomebodyElse) {
    expectRefusal(verify(package, packages->signature(package, SignedPackages::stranger)),
                  UpdateError::Kind::commandFailed, "No public key");
}

TEST_F(DebianPackageVerifierTest, refusesTheSignatureOfAnExpiredKey) {
    expectRefusal(verify(package, packages->signature(package, SignedPackages::formerMaker)),
                  UpdateError::Kind::commandFailed, "EXPKEYSIG");
}

TEST_F(DebianPackageVerifierTest, refusesAMessageThatIsSignedInItself) {
    expectRefusal(verify(package, packages->signedMessage(package, SignedPackages::maker)),
                  UpdateError::Kind::commandFailed, "gpgv");
}

TEST_F(DebianPackageVerifierTest, refusesWhatIsNoSignature) {
    for (const auto* text : {"<!DOCTYPE html><html><body>Not found</body></html>", "", "\n",
                             "-----BEGIN PGP SIGNATURE-----\n\n-----END PGP SIGNATURE-----\n",
                             "[GNUPG:] GOODSIG 0 Maker of TAVRO\n"}) {
        expectRefusal(verify(package, QByteArray(text)), UpdateError::Kind::commandFailed, "gpgv");
    }
}

TEST_F(DebianPackageVerifierTest, refusesWhatHasNoSignature) {
    for (const auto status : {404, 302, 500}) {
        expectRefusal(verify(package, served("page", status)), UpdateError::Kind::invalidFeed, "unavailable");
    }
    expectRefusal(verify(package, HttpsClient::Response{.status = 200, .body = {}, .isTooLong = true}),
                  UpdateError::Kind::invalidFeed, "unavailable");
    const auto outcome = verify(package, UpdateFailure::ofSystem(QStringLiteral("Connection refused")));
    ASSERT_FALSE(outcome.isSuccess());
    EXPECT_EQ(outcome.failure().description(), QStringLiteral("Connection refused"));
}

TEST_F(DebianPackageVerifierTest, refusesAnotherPackageOrVersion) {
    const auto refusalOf = [&](const char* name, const char* otherVersion) {
        const auto other = packages->package(QString::fromLatin1(name), QString::fromLatin1(otherVersion));
        expectRefusal(verify(other, packages->signature(other, SignedPackages::maker)),
                      UpdateError::Kind::invalidApplication,
                      "does not contain the expected TAVRO application");
    };
    refusalOf("tavro-evil", "1.4.0");
    refusalOf("tavr", "1.4.0");
    refusalOf("tavro", "1.4.1");
    refusalOf("tavro", "1.4.0-1");
    refusalOf("tavro", "1:1.4.0");
}

TEST_F(DebianPackageVerifierTest, refusesASignedFileThatIsNoPackage) {
    const TemporaryFolder folder;
    const auto noPackage = folder.file(QStringLiteral("tavro.deb"), "tavro\n1.4.0\n");
    expectRefusal(verify(noPackage, packages->signature(noPackage, SignedPackages::maker)),
                  UpdateError::Kind::commandFailed, "dpkg-deb");
}

TEST_F(DebianPackageVerifierTest, acceptsNothingWithoutAKeyring) {
    const auto signature = packages->signature(package, SignedPackages::maker);
    for (const auto& keyring : {QStringLiteral("/nonexistent/keyring.gpg"), QStringLiteral("/dev/null")}) {
        DebianPackageVerifier keyless(
            {.files = realFiles, .processes = processes, .https = https, .keyring = keyring});
        std::optional<PlainOutcome> outcome;
        const auto work =
            keyless.verify({.address = QUrl(QStringLiteral("https://updates.example/tavro.deb")),
                            .path = package,
                            .version = version},
                           [&](const PlainOutcome& told) { outcome = told; });
        https.answers.answer(served(signature));
        EventLoop::runUntil([&] { return outcome.has_value(); });
        expectRefusal(*outcome, UpdateError::Kind::commandFailed, "gpgv");
    }
}

/// With tools that only record.
class DebianPackageToolsTest : public UpdatesFixture {
protected:
    void begin() {
        work = debian.verify({.address = QUrl(QStringLiteral("https://updates.example/a%20b.deb?c=d")),
                              .path = QStringLiteral("/updates/tavro.deb"),
                              .version = QStringLiteral("1.4.0")},
                             [this](const PlainOutcome& told) { outcome = told; });
    }

    void exits(int status, const QByteArray& output) {
        EXPECT_TRUE(processes.exits.answer(ChildProcesses::Exit{.status = status, .output = output}));
    }

    headless::ChildProcessesAdapter processes;
    DebianPackageVerifier debian{{.files = files,
                                  .processes = processes,
                                  .https = https,
                                  .keyring = QStringLiteral("/usr/share/tavro/update-keyring.gpg")}};
    std::unique_ptr<PendingWork> work;
    std::optional<PlainOutcome> outcome;
};

TEST_F(DebianPackageToolsTest, looksIntoThePackageOnlyAfterItsSignature) {
    begin();
    ASSERT_THAT(https.requests, SizeIs(1));
    EXPECT_EQ(https.requests[0].address, QUrl(QStringLiteral("https://updates.example/a%20b.deb?c=d.asc")));
    EXPECT_THAT(processes.commands, IsEmpty());
    https.answers.answer(served("signature"));
    EXPECT_EQ(files.files[QStringLiteral("/updates/tavro.deb.asc")], QByteArray("signature"));
    const headless::ChildProcessesAdapter::Command gpgv{
        QStringLiteral("/usr/bin/gpgv"),
        {QStringLiteral("--status-fd"), QStringLiteral("1"), QStringLiteral("--weak-digest"),
         QStringLiteral("SHA1"), QStringLiteral("--keyring"),
         QStringLiteral("/usr/share/tavro/update-keyring.gpg"), QStringLiteral("/updates/tavro.deb.asc"),
         QStringLiteral("/updates/tavro.deb")}};
    EXPECT_THAT(processes.commands, ElementsAre(gpgv));
    exits(0, "gpgv: Good signature\n[GNUPG:] GOODSIG 0123 Maker\n[GNUPG:] VALIDSIG 0123\n");
    const headless::ChildProcessesAdapter::Command dpkg{
        QStringLiteral("/usr/bin/dpkg-deb"),
        {QStringLiteral("--show"), QStringLiteral("--showformat=${Package}\\n${Version}\\n"),
         QStringLiteral("/updates/tavro.deb")}};
    EXPECT_THAT(processes.commands, ElementsAre(gpgv, dpkg));
    exits(0, "tavro\n1.4.0\n");
    ASSERT_TRUE(outcome.has_value());
    EXPECT_TRUE(outcome->isSuccess());
    work.reset();
    EXPECT_THAT(files.files, IsEmpty());
}

TEST_F(DebianPackageToolsTest, believesNoExitStatusAlone) {
    for (const auto* output :
         {"", "gpgv: Good signature\n", "GOODSIG 0123 Maker\n", "[GNUPG:] GOODSIGN 0123\n",
          "gpgv: [GNUPG:] GOODSIG 0123\n", "[GNUPG:] GOODSIG 0123 Maker\n[GNUPG:] BADSIG 4567 Other\n",
          "[GNUPG:] REVKEYSIG 0123 Maker\n[GNUPG:] GOODSIG 0123 Maker\n"}) {
        outcome.reset();
        processes.commands.clear();
        begin();
        https.answers.answer(served("signature"));
        exits(0, output);
        EXPECT_THAT(processes.commands, SizeIs(1)) << output;
        ASSERT_TRUE(outcome.has_value()) << output;
        ASSERT_FALSE(outcome->isSuccess()) << output;
        EXPECT_EQ(outcome->failure().error()->kind(), UpdateError::Kind::commandFailed);
    }
}

TEST_F(DebianPackageToolsTest, endsWhenTheSignatureCannotBeSaved) {
    files.writeFailure = QStringLiteral("No space left on device");
    begin();
    https.answers.answer(served("signature"));
    ASSERT_TRUE(outcome.has_value());
    ASSERT_FALSE(outcome->isSuccess());
    EXPECT_EQ(outcome->failure().description(), QStringLiteral("No space left on device"));
    EXPECT_THAT(processes.commands, IsEmpty());
}

TEST_F(DebianPackageToolsTest, leavesNothingBehindWhenItIsDropped) {
    begin();
    https.answers.answer(served("signature"));
    work.reset();
    EXPECT_FALSE(processes.exits.isWaiting());
    EXPECT_THAT(files.files, IsEmpty());
    EXPECT_FALSE(outcome.has_value());
}

} // namespace
} // namespace tavro
