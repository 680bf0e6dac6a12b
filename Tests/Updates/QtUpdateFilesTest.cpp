#include "Updates/QtUpdateFiles.h"

#include "Presets/TemporaryFolder.h"
#include "Updates/EventLoop.h"
#include "Updates/UpdatesFixture.h"

#include <QFileInfo>

#include <optional>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class QtUpdateFilesTest : public testing::Test {
protected:
    static constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                                   QFile::WriteOther | QFile::ExeOther;

    Outcome<QString> digest(const QString& path) {
        std::optional<Outcome<QString>> outcome;
        const auto work = files.digest(path, [&](const Outcome<QString>& told) { outcome = told; });
        EXPECT_FALSE(outcome.has_value()) << "told inside the call";
        EventLoop::runUntil([&] { return outcome.has_value(); });
        return outcome.value_or(UpdateFailure::ofSystem(QStringLiteral("nothing was told")));
    }

    TemporaryFolder folder;
    QtUpdateFiles files;
};

TEST_F(QtUpdateFilesTest, makesTheFolderOfTheUsersData) {
    const auto path = files.applicationSupportFolder();
    ASSERT_TRUE(path.isSuccess());
    EXPECT_TRUE(QFileInfo(path.value()).isDir());
    EXPECT_TRUE(path.value().startsWith(qEnvironmentVariable("XDG_DATA_HOME"))) << path.value().toStdString();
}

TEST_F(QtUpdateFilesTest, makesFoldersForTheUserAlone) {
    const auto path = folder.path(QStringLiteral("a/b/c"));
    ASSERT_TRUE(files.makePrivateFolder(path).isSuccess());
    EXPECT_TRUE(QFileInfo(path).isDir());
    EXPECT_FALSE(QFileInfo(path).permissions() & others);
    // One that was open to others is closed.
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | others));
    ASSERT_TRUE(files.makePrivateFolder(path).isSuccess());
    EXPECT_FALSE(QFileInfo(path).permissions() & others);
}

TEST_F(QtUpdateFilesTest, followsNoLinkInstead) {
    const auto target = folder.path(QStringLiteral("target"));
    ASSERT_TRUE(QDir().mkdir(target));
    const auto link = folder.path(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(target, link));
    EXPECT_FALSE(files.makePrivateFolder(link).isSuccess());
    const auto file = folder.file(QStringLiteral("file"), "content");
    const auto outcome = files.makePrivateFolder(file);
    ASSERT_FALSE(outcome.isSuccess());
    EXPECT_EQ(outcome.failure().description(),
              QStringLiteral("The folder \"%1\" could not be made.").arg(file));
}

TEST_F(QtUpdateFilesTest, makesFilesForTheUserAlone) {
    const auto first = files.makePrivateFile(folder.path());
    const auto second = files.makePrivateFile(folder.path());
    ASSERT_TRUE(first.isSuccess());
    ASSERT_TRUE(second.isSuccess());
    EXPECT_NE(first.value(), second.value());
    EXPECT_TRUE(QFileInfo(first.value()).isFile());
    EXPECT_EQ(QFileInfo(first.value()).size(), 0);
    EXPECT_FALSE(QFileInfo(first.value()).permissions() & others);
    EXPECT_FALSE(files.makePrivateFile(folder.path(QStringLiteral("missing"))).isSuccess());
}

TEST_F(QtUpdateFilesTest, removesNothingButItsOwnLeftovers) {
    ASSERT_TRUE(files.makePrivateFile(folder.path()).isSuccess());
    ASSERT_TRUE(files.makePrivateFile(folder.path()).isSuccess());
    const auto package = folder.file(QStringLiteral("package"), "package");
    for (const auto* name :
         {".download", ".download-", ".download-abcde", ".download-abcdefg", "download-abcdef",
          ".download-abcdef.asc", "x.download-abcdef", ".DOWNLOAD-abcdef"}) {
        folder.file(QString::fromLatin1(name), "of somebody else");
    }
    ASSERT_TRUE(QDir().mkdir(folder.path(QStringLiteral(".download-FOLDER"))));
    ASSERT_TRUE(QFile::link(package, folder.path(QStringLiteral(".download-LINKED"))));
    ASSERT_TRUE(QDir().mkdir(folder.path(QStringLiteral("1.4.0"))));
    folder.file(QStringLiteral("1.4.0/.download-abcdef"), "of somebody else");
    const auto all = files.names(folder.path());
    files.removeLeftovers(folder.path());
    EXPECT_EQ(files.names(folder.path()).size(), all.size() - 2) << "the two that were made";
    EXPECT_EQ(TemporaryFolder::contentOf(package), QByteArray("package"));
    EXPECT_THAT(files.names(folder.path(QStringLiteral("1.4.0"))), SizeIs(1));
    files.removeLeftovers(folder.path(QStringLiteral("missing")));
}

TEST_F(QtUpdateFilesTest, replacesWhateverIsThere) {
    const auto target = folder.path(QStringLiteral("target"));
    ASSERT_TRUE(files.replace(target, folder.file(QStringLiteral("one"), "one")).isSuccess());
    ASSERT_TRUE(files.replace(target, folder.file(QStringLiteral("two"), "two")).isSuccess());
    EXPECT_EQ(TemporaryFolder::contentOf(target), QByteArray("two"));
    ASSERT_TRUE(QFile::remove(target));
    ASSERT_TRUE(QDir().mkpath(target + QLatin1String("/within")));
    ASSERT_TRUE(files.replace(target, folder.file(QStringLiteral("three"), "three")).isSuccess());
    EXPECT_EQ(TemporaryFolder::contentOf(target), QByteArray("three"));
    EXPECT_THAT(folder.names(), ElementsAre(QStringLiteral("target")));
    const auto outcome = files.replace(target, folder.path(QStringLiteral("missing")));
    ASSERT_FALSE(outcome.isSuccess());
    EXPECT_EQ(outcome.failure().description(), QStringLiteral("No such file or directory"));
}

TEST_F(QtUpdateFilesTest, writesAndRemoves) {
    const auto path = folder.path(QStringLiteral("file"));
    ASSERT_TRUE(files.write(path, "content").isSuccess());
    EXPECT_EQ(TemporaryFolder::contentOf(path), QByteArray("content"));
    EXPECT_FALSE(files.write(path + QLatin1String("/x"), "content").isSuccess());
    files.removeFile(path);
    files.removeFile(path);
    const auto sub = folder.path(QStringLiteral("sub"));
    ASSERT_TRUE(QDir().mkdir(sub));
    folder.file(QStringLiteral("sub/file"), "x");
    files.removeFolder(sub);
    EXPECT_THAT(files.names(folder.path()), ElementsAre(QStringLiteral("sub"))) << "it is not empty";
    files.removeFile(sub + QLatin1String("/file"));
    files.removeFolder(sub);
    EXPECT_THAT(files.names(folder.path()), IsEmpty());
}

TEST_F(QtUpdateFilesTest, namesEverythingInOrder) {
    folder.file(QStringLiteral("b"), "");
    folder.file(QStringLiteral(".hidden"), "");
    ASSERT_TRUE(QDir().mkdir(folder.path(QStringLiteral("a.app"))));
    EXPECT_THAT(files.names(folder.path()),
                ElementsAre(QStringLiteral(".hidden"), QStringLiteral("a.app"), QStringLiteral("b")));
    EXPECT_THAT(files.names(folder.path(QStringLiteral("missing"))), IsEmpty());
}

TEST_F(QtUpdateFilesTest, worksOutDigests) {
    const auto empty = digest(folder.file(QStringLiteral("empty"), ""));
    ASSERT_TRUE(empty.isSuccess());
    EXPECT_EQ(empty.value(),
              QStringLiteral("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"));
    // More than is read in one go.
    const auto large = digest(folder.file(QStringLiteral("large"), QByteArray(3000000, 'a')));
    ASSERT_TRUE(large.isSuccess());
    EXPECT_EQ(large.value(),
              QStringLiteral("2a152c894398719c0570f83fac34ac03a0f6e8e474b995c2403aa5434f7b9dd4"));
    const auto missing = digest(folder.path(QStringLiteral("missing")));
    ASSERT_FALSE(missing.isSuccess());
    EXPECT_EQ(missing.failure().description(), QStringLiteral("No such file or directory"));
}

TEST_F(QtUpdateFilesTest, dropsADigestUnderWay) {
    const auto path = folder.file(QStringLiteral("large"), QByteArray(50000000, 'a'));
    bool isTold = false;
    auto work = files.digest(path, [&](const Outcome<QString>&) { isTold = true; });
    work.reset();
    QCoreApplication::processEvents();
    EXPECT_FALSE(isTold);
}

} // namespace
} // namespace tavro
