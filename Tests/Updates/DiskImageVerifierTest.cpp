#include "Updates/DiskImageVerifier.h"

#include "Updates/Doubles/BundleReaderAdapter.h"
#include "Updates/UpdatesFixture.h"

#include <QRegularExpression>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class DiskImageVerifierTest : public UpdatesFixture {
protected:
    DiskImageVerifierTest() {
        files.contents[QStringLiteral("/temporary/pelmont-update-")] = {
            QStringLiteral(".background"), QStringLiteral("Applications"), QStringLiteral("TAVRO.app")};
        bundles.bundles[QStringLiteral("TAVRO.app")] = right;
    }

    void begin() {
        work =
            images.verify({.address = {}, .path = QStringLiteral("/updates/TAVRO.dmg"), .version = version},
                          [this](const PlainOutcome& told) { outcome = told; });
        EXPECT_FALSE(outcome.has_value()) << "told inside the call";
        mountPoint = files.folders.empty() ? QString() : *files.folders.begin();
    }

    void exits(int status, const QByteArray& output = {}) {
        EXPECT_TRUE(processes.exits.answer(ChildProcesses::Exit{.status = status, .output = output}));
    }

    headless::ChildProcessesAdapter::Command attach() const {
        return {QStringLiteral("/usr/bin/hdiutil"),
                {QStringLiteral("attach"), QStringLiteral("/updates/TAVRO.dmg"), QStringLiteral("-readonly"),
                 QStringLiteral("-nobrowse"), QStringLiteral("-mountpoint"), mountPoint}};
    }

    headless::ChildProcessesAdapter::Command
    check(const QString& application = QStringLiteral("TAVRO.app")) const {
        return {QStringLiteral("/usr/bin/codesign"),
                {QStringLiteral("--verify"), QStringLiteral("--deep"), QStringLiteral("--strict"),
                 QStringLiteral("--verbose=2"), mountPoint + QLatin1Char('/') + application}};
    }

    headless::ChildProcessesAdapter::Command detach() const {
        return {QStringLiteral("/usr/bin/hdiutil"),
                {QStringLiteral("detach"), mountPoint, QStringLiteral("-quiet")}};
    }

    /// That the image which holds this is refused once it is attached, and detached again.
    void expectInvalidApplication() {
        processes.commands.clear();
        outcome.reset();
        begin();
        exits(0);
        EXPECT_THAT(processes.commands, ElementsAre(attach(), detach()));
        EXPECT_FALSE(outcome.has_value()) << "told before it is cleaned up";
        exits(0);
        expectFailure(UpdateError::invalidApplication());
    }

    void expectFailure(const UpdateFailure& failure) {
        ASSERT_TRUE(outcome.has_value());
        ASSERT_FALSE(outcome->isSuccess());
        EXPECT_EQ(outcome->failure(), failure);
        EXPECT_THAT(files.folders, IsEmpty());
        EXPECT_FALSE(processes.exits.isWaiting());
    }

    const BundleReader::Bundle right{.identifier = QStringLiteral("com.vessiron.pelmont"),
                                     .shortVersion = QStringLiteral("1.4.0")};
    QString version = QStringLiteral("1.4.0");
    headless::ChildProcessesAdapter processes;
    headless::BundleReaderAdapter bundles;
    DiskImageVerifier images{{.files = files, .processes = processes, .bundles = bundles, .mainActor = main}};
    std::unique_ptr<PendingWork> work;
    std::optional<PlainOutcome> outcome;
    QString mountPoint;
};

TEST_F(DiskImageVerifierTest, takesTheMacOSPackage) {
    EXPECT_EQ(images.packageIn(available().manifest.platforms), available().manifest.platforms.macos);
}

TEST_F(DiskImageVerifierTest, acceptsTheExpectedApplication) {
    begin();
    const QRegularExpression name(
        QStringLiteral("^/temporary/pelmont-update-[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"));
    EXPECT_TRUE(name.match(mountPoint).hasMatch()) << mountPoint.toStdString();
    EXPECT_THAT(processes.commands, ElementsAre(attach()));
    exits(0, "/dev/disk4");
    EXPECT_THAT(processes.commands, ElementsAre(attach(), check()));
    exits(0);
    EXPECT_THAT(processes.commands, ElementsAre(attach(), check(), detach()));
    EXPECT_FALSE(outcome.has_value()) << "told before it is cleaned up";
    EXPECT_THAT(files.folders, SizeIs(1));
    exits(0);
    ASSERT_TRUE(outcome.has_value());
    EXPECT_TRUE(outcome->isSuccess());
    EXPECT_THAT(files.folders, IsEmpty());
    work.reset();
    EXPECT_THAT(processes.started, IsEmpty());
}

TEST_F(DiskImageVerifierTest, mountsEachImageElsewhere) {
    begin();
    const auto first = mountPoint;
    work.reset();
    begin();
    EXPECT_NE(mountPoint, first);
}

TEST_F(DiskImageVerifierTest, endsWithoutAMountPoint) {
    files.folderFailures[QStringLiteral("/temporary")] = QStringLiteral("Read-only file system");
    begin();
    main.runDue();
    expectFailure(UpdateFailure::ofSystem(QStringLiteral("Read-only file system")));
    EXPECT_THAT(processes.commands, IsEmpty());
    work.reset();
    EXPECT_THAT(processes.started, IsEmpty());
}

TEST_F(DiskImageVerifierTest, cleansUpWhenAttachingFails) {
    begin();
    exits(1, "\n hdiutil: attach failed - image not recognized \n");
    EXPECT_THAT(processes.commands, ElementsAre(attach(), detach()));
    exits(1);
    expectFailure(
        UpdateError::commandFailed(QStringLiteral("hdiutil: attach failed - image not recognized")));
}

TEST_F(DiskImageVerifierTest, cleansUpWhenTheToolCannotBeStarted) {
    begin();
    const auto reason = UpdateFailure::ofSystem(QStringLiteral("No such file or directory"));
    processes.exits.answer(reason);
    EXPECT_THAT(processes.commands, ElementsAre(attach(), detach()));
    processes.exits.answer(reason);
    expectFailure(reason);
}

TEST_F(DiskImageVerifierTest, refusesAnImageWithoutAnApplication) {
    for (const auto& names :
         {QStringList(), QStringList{QStringLiteral("TAVRO")}, QStringList{QStringLiteral("TAVRO.APP")},
          QStringList{QStringLiteral("TAVRO.app.zip")}, QStringList{QStringLiteral("app")}}) {
        files.contents[QStringLiteral("/temporary/pelmont-update-")] = names;
        expectInvalidApplication();
    }
}

TEST_F(DiskImageVerifierTest, refusesEveryOtherApplication) {
    auto& bundle = bundles.bundles[QStringLiteral("TAVRO.app")];
    for (const auto& identifier : {std::optional<QString>(), std::optional(QString()),
                                   std::optional(QStringLiteral("com.vessiron.Pelmont")),
                                   std::optional(QStringLiteral("com.vessiron.pelmont.evil"))}) {
        bundle = {.identifier = identifier, .shortVersion = right.shortVersion};
        expectInvalidApplication();
    }
    for (const auto& shortVersion :
         {std::optional<QString>(), std::optional(QString()), std::optional(QStringLiteral("1.4")),
          std::optional(QStringLiteral("v1.4.0")), std::optional(QStringLiteral("1.4.0 "))}) {
        bundle = {.identifier = right.identifier, .shortVersion = shortVersion};
        expectInvalidApplication();
    }
    bundle = right;
    version = QStringLiteral("v1.4.0");
    expectInvalidApplication();
    bundles.bundles.clear();
    expectInvalidApplication();
}

TEST_F(DiskImageVerifierTest, looksAtTheFirstApplicationOnly) {
    files.contents[QStringLiteral("/temporary/pelmont-update-")] = {QStringLiteral("Other.app"),
                                                                    QStringLiteral("TAVRO.app")};
    expectInvalidApplication();
    bundles.bundles[QStringLiteral("Other.app")] = right;
    processes.commands.clear();
    outcome.reset();
    begin();
    exits(0);
    EXPECT_THAT(processes.commands, ElementsAre(attach(), check(QStringLiteral("Other.app"))));
}

TEST_F(DiskImageVerifierTest, refusesABrokenSignature) {
    begin();
    exits(0);
    exits(1, "TAVRO.app: a sealed resource is missing or invalid\n");
    EXPECT_THAT(processes.commands, ElementsAre(attach(), check(), detach()));
    exits(0);
    expectFailure(
        UpdateError::commandFailed(QStringLiteral("TAVRO.app: a sealed resource is missing or invalid")));
}

TEST_F(DiskImageVerifierTest, takesOutputThatIsNoTextAsNone) {
    begin();
    exits(0);
    exits(-1, "crash \xFF\xFE");
    exits(0);
    expectFailure(UpdateError::commandFailed({}));
}

TEST_F(DiskImageVerifierTest, acceptsAlthoughDetachingFails) {
    begin();
    exits(0);
    exits(0);
    exits(16, "hdiutil: couldn't eject \"disk4\" - Resource busy");
    ASSERT_TRUE(outcome.has_value());
    EXPECT_TRUE(outcome->isSuccess());
}

TEST_F(DiskImageVerifierTest, detachesWhateverItIsDroppedAt) {
    for (const auto steps : {0, 1, 2}) {
        processes.started.clear();
        begin();
        for (int step = 0; step < steps; ++step) {
            exits(0);
        }
        work.reset();
        EXPECT_THAT(processes.started, ElementsAre(detach())) << steps;
        EXPECT_FALSE(processes.exits.isWaiting());
        EXPECT_THAT(files.folders, IsEmpty());
    }
    EXPECT_FALSE(outcome.has_value());
}

TEST_F(DiskImageVerifierTest, mayBeDroppedByWhoIsTold) {
    bool isAccepted = false;
    work = images.verify({.address = {}, .path = QStringLiteral("/updates/TAVRO.dmg"), .version = version},
                         [&](const PlainOutcome& told) {
                             work.reset();
                             isAccepted = told.isSuccess();
                         });
    exits(0);
    exits(0);
    exits(0);
    EXPECT_TRUE(isAccepted);
    EXPECT_THAT(processes.started, IsEmpty());
}

} // namespace
} // namespace tavro
