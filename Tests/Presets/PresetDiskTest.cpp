#include "Presets/LibraryFixture.h"
#include "Presets/PresetFile.h"
#include "Presets/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

namespace tavro {
namespace {

using testing::ElementsAre;

/// A file system of 64 KiB of its own, in a process of its own that has it mounted; it goes away with the
/// process. Nobody else sees it.
class SmallDisk {
public:
    enum class Result { passed, failed, mayNotMount };

    /// Runs the checks in the process; expectations that fail there are printed there.
    Result run(const std::function<void(const TemporaryFolder&)>& checks) const {
        std::fflush(nullptr);
        const auto process = fork();
        if (process == 0) {
            auto result = Result::mayNotMount;
            if (mounts()) {
                checks(folder_);
                result = testing::Test::HasFailure() ? Result::failed : Result::passed;
            }
            std::fflush(nullptr);
            // No destructor: the folder belongs to the parent.
            _exit(static_cast<int>(result));
        }
        int status = 0;
        if (process < 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status)) {
            return Result::failed;
        }
        return static_cast<Result>(WEXITSTATUS(status));
    }

    static bool makeReadOnly(const QString& path) {
        return mount("tavro", QFile::encodeName(path).constData(), "tmpfs", MS_REMOUNT | MS_RDONLY,
                     nullptr) == 0;
    }

private:
    bool mounts() const {
        if (unshare(CLONE_NEWNS) != 0 && !becomesAdministratorOfItsOwn()) {
            return false;
        }
        return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               mount("tavro", QFile::encodeName(folder_.path()).constData(), "tmpfs", 0, "size=64k") == 0;
    }

    /// Where the system allows it to everybody.
    static bool becomesAdministratorOfItsOwn() {
        const auto user = std::to_string(geteuid());
        return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writes("/proc/self/setgroups", "deny") &&
               writes("/proc/self/uid_map", "0 " + user + " 1");
    }

    static bool writes(const char* path, const std::string& text) {
        QFile file(QString::fromLatin1(path));
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
               file.write(text.data(), static_cast<qint64>(text.size())) == static_cast<qint64>(text.size());
    }

    TemporaryFolder folder_;
};

void fill(const QString& path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    const QByteArray page(4096, 'x');
    while (file.write(page) == page.size()) {
    }
}

/// Saving must fail, and leave the disk, the presets and the settings as they are.
void expectSavingToFail(const TemporaryFolder& folder, const std::string& reason,
                        const std::string& reasonForNew) {
    LibraryFixture fixture;
    const auto path = folder.path(QStringLiteral("song.tvp"));
    const auto before = TemporaryFolder::contentOf(path);
    const auto names = folder.names();
    EXPECT_FALSE(fixture.library().savePresetToFile(path));
    EXPECT_THAT(fixture.alerts,
                ElementsAre("The preset could not be saved | " + path.toStdString() + ": " + reason));
    EXPECT_EQ(fixture.beeps, 1);
    EXPECT_EQ(TemporaryFolder::contentOf(path), before);
    EXPECT_EQ(folder.names(), names);
    EXPECT_EQ(fixture.library().presets().size(), 1U);
    EXPECT_EQ(fixture.selectedID(), "default");
    EXPECT_TRUE(fixture.defaults.writes.empty());
    const auto other = folder.path(QStringLiteral("other.tvp"));
    EXPECT_FALSE(fixture.library().savePresetToFile(other));
    EXPECT_EQ(fixture.alerts.back(),
              "The preset could not be saved | " + other.toStdString() + ": " + reasonForNew);
    EXPECT_FALSE(QFile::exists(other));
}

void expectPassed(SmallDisk::Result result) {
    if (result == SmallDisk::Result::mayNotMount) {
        GTEST_SKIP() << "the system lets this user mount nothing";
    }
    EXPECT_EQ(result, SmallDisk::Result::passed);
}

TEST(PresetDisks, thatAreFullKeepTheOldFileWhole) {
    expectPassed(SmallDisk().run([](const TemporaryFolder& folder) {
        PresetFile::write(TAVROPreset::defaultPreset(), folder.path(QStringLiteral("song.tvp")));
        fill(folder.path(QStringLiteral("filler")));
        const std::string reason = "No space left on device";
        expectSavingToFail(folder, reason, reason);
    }));
}

TEST(PresetDisks, thatAreReadOnlyKeepTheOldFileWhole) {
    expectPassed(SmallDisk().run([](const TemporaryFolder& folder) {
        PresetFile::write(TAVROPreset::defaultPreset(), folder.path(QStringLiteral("song.tvp")));
        ASSERT_TRUE(SmallDisk::makeReadOnly(folder.path()));
        expectSavingToFail(folder, "the file, or its disk, is read-only", "Read-only file system");
    }));
}

TEST(PresetDisks, takeAPresetWhenThereIsRoom) {
    expectPassed(SmallDisk().run([](const TemporaryFolder& folder) {
        LibraryFixture fixture;
        EXPECT_TRUE(fixture.library().savePresetToFile(folder.path(QStringLiteral("song.tvp"))));
        EXPECT_EQ(PresetFile::read(folder.path(QStringLiteral("song.tvp"))).name, "song");
    }));
}

} // namespace
} // namespace tavro
