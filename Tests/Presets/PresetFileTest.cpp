#include "Presets/PresetFile.h"
#include "Presets/TemporaryFolder.h"

#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <string>

namespace tavro {
namespace {

using Kind = PresetFileError::Kind;

const TAVROPreset soft{
    .id = "1", .name = "Größe \"1/2\"", .state = {.scaleName = "Dorian", .velocity = 33}, .isBuiltIn = false};

template <class Action>
PresetFileError errorOf(Action&& action) {
    try {
        action();
    } catch (const PresetFileError& error) {
        return error;
    }
    ADD_FAILURE() << "no error";
    return {Kind::unreadable, {}, {}};
}

PresetFileError readingError(const QString& path) {
    return errorOf([&] { (void)PresetFile::read(path); });
}

class PresetFiles : public testing::Test {
protected:
    /// The reason why a file with this content is refused; the error has to begin with the file's name.
    std::string reasonFor(const QByteArray& content, Kind kind) {
        const auto path = folder.file(QStringLiteral("bad.tvp"), content);
        return reasonAt(path, kind);
    }

    static std::string reasonAt(const QString& path, Kind kind) {
        const auto error = readingError(path);
        EXPECT_EQ(error.kind(), kind);
        EXPECT_EQ(error.text().toStdString(), error.what());
        const auto start = path.toStdString() + ": ";
        const std::string text = error.what();
        EXPECT_EQ(text.substr(0, start.size()), start);
        return text.substr(std::min(start.size(), text.size()));
    }

    TemporaryFolder folder;
};

TEST_F(PresetFiles, readWhatWasWritten) {
    const auto path = folder.path(QStringLiteral("soft.tvp"));
    PresetFile::write(soft, path);
    EXPECT_EQ(PresetFile::read(path), soft);
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("soft.tvp")});
}

TEST_F(PresetFiles, areIndentedAndSortedAtEveryLevel) {
    const auto path = folder.path(QStringLiteral("soft.tvp"));
    PresetFile::write(soft, path);
    EXPECT_EQ(TemporaryFolder::contentOf(path).toStdString(), R"({
  "id": "1",
  "isBuiltIn": false,
  "name": "Größe \"1/2\"",
  "state": {
    "baseMidiC": 60,
    "bassNoteEnabled": false,
    "bassOctaveDown": 1,
    "chordMode": "Off",
    "globalOctaveOffset": 0,
    "holdMode": false,
    "humanizeVelocity": 7,
    "keyboardLayout": "QWERTZ",
    "maxChordNotes": 8,
    "melodyOctaveOffset": 0,
    "midiChannel": 1,
    "rootSemitone": 0,
    "scaleName": "Dorian",
    "smartHoldMode": false,
    "splitModeEnabled": false,
    "strumMilliseconds": 0,
    "velocity": 33,
    "voicingComplexity": 0
  }
}
)");
}

TEST_F(PresetFiles, mayBeginWithAByteOrderMark) {
    const auto path =
        folder.file(QStringLiteral("bom.tvp"),
                    "\xEF\xBB\xBF{\"id\":\"1\",\"name\":\"n\",\"state\":{},\"isBuiltIn\":false}");
    EXPECT_EQ(PresetFile::read(path).name, "n");
}

TEST_F(PresetFiles, areRefusedWithTheReason) {
    EXPECT_EQ(reasonFor("", Kind::notJson), "empty");
    EXPECT_EQ(reasonFor(" \n", Kind::notJson), "empty");
    EXPECT_EQ(reasonFor("{\n \"id\"", Kind::notJson),
              "not JSON: the text ends too early, at line 2, column 6");
    EXPECT_EQ(reasonFor("MThd", Kind::notJson), "not JSON at line 1, column 1");
    EXPECT_EQ(reasonFor("\xFF\xFE{\0", Kind::notJson), "not UTF-8");
    EXPECT_EQ(reasonFor("{\"name\":\"Gr\xF6\xDF"
                        "e\"}",
                        Kind::notJson),
              "not UTF-8");
    EXPECT_EQ(reasonFor(QByteArray(1'000'000, '['), Kind::notJson),
              "objects and arrays more than 32 deep in each other");
    EXPECT_EQ(reasonFor("[]", Kind::wrongContent), "expected a preset object, found an array");
    EXPECT_EQ(reasonFor("{}", Kind::wrongContent), "\"id\": expected this key in a preset, found null");
    EXPECT_EQ(reasonFor(R"({"id":"1","name":"n","state":{}})", Kind::wrongContent),
              "\"isBuiltIn\": expected this key in a preset, found null");
    EXPECT_EQ(reasonFor(R"({"id":1,"name":"n","state":{},"isBuiltIn":false})", Kind::wrongContent),
              "\"id\": expected a text, found 1");
    EXPECT_EQ(
        reasonFor(R"({"id":"1","name":"n","state":{"velocity":"3"},"isBuiltIn":false})", Kind::wrongContent),
        "\"velocity\": expected an integer, found \"3\"");
    EXPECT_EQ(reasonFor(R"({"id":"1","name":"n","state":{},"isBuiltIn":0})", Kind::wrongContent),
              "\"isBuiltIn\": expected true or false, found 0");
}

TEST_F(PresetFiles, areRefusedOverOneMebibyteWhateverTheyHold) {
    QByteArray preset = R"({"id":"1","name":"n","state":{},"isBuiltIn":false})";
    preset.append(PresetFile::mostBytes - preset.size(), ' ');
    EXPECT_EQ(PresetFile::read(folder.file(QStringLiteral("large.tvp"), preset)).name, "n");
    preset.append(' ');
    EXPECT_EQ(reasonFor(preset, Kind::tooLarge), "larger than 1 MiB, which no preset is");
    // Sparse: it takes no room, and reading it all would take long.
    const auto sparse = folder.file(QStringLiteral("sparse.tvp"), {});
    ASSERT_TRUE(QFile::resize(sparse, qint64{1} << 36));
    EXPECT_EQ(reasonAt(sparse, Kind::tooLarge), "larger than 1 MiB, which no preset is");
}

TEST_F(PresetFiles, thatAreNoneAreNeverOpened) {
    EXPECT_EQ(reasonAt(folder.path(), Kind::notAFile), "a folder, not a file");
    EXPECT_EQ(reasonAt(QStringLiteral("/dev/zero"), Kind::notAFile), "a device or a pipe, not a file");
    const auto pipe = folder.path(QStringLiteral("pipe.tvp"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(reasonAt(pipe, Kind::notAFile), "a device or a pipe, not a file");
    const auto link = folder.path(QStringLiteral("link.tvp"));
    ASSERT_TRUE(QFile::link(pipe, link));
    EXPECT_EQ(reasonAt(link, Kind::notAFile), "a device or a pipe, not a file");
}

TEST_F(PresetFiles, thatAreNotThereSaySo) {
    EXPECT_EQ(reasonAt(folder.path(QStringLiteral("none.tvp")), Kind::unreadable),
              "No such file or directory");
    const auto link = folder.path(QStringLiteral("dangling.tvp"));
    const auto target = folder.path(QStringLiteral("gone"));
    ASSERT_TRUE(QFile::link(target, link));
    EXPECT_EQ(reasonAt(link, Kind::unreadable), "a link to " + target.toStdString() + ", which is not there");
    const auto loop = folder.path(QStringLiteral("loop.tvp"));
    ASSERT_TRUE(QFile::link(loop, loop));
    EXPECT_NE(reasonAt(loop, Kind::unreadable), "");
}

TEST_F(PresetFiles, thatMayNotBeReadSaySo) {
    const auto path = folder.path(QStringLiteral("secret.tvp"));
    PresetFile::write(soft, path);
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    if (geteuid() != 0) {
        EXPECT_EQ(reasonAt(path, Kind::unreadable), "Permission denied");
        return;
    }
    // Permissions do not stop the administrator; being somebody else for a moment brings them back.
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::Permissions(0x7777)));
    constexpr uid_t nobody = 65534;
    ASSERT_EQ(seteuid(nobody), 0);
    const auto error = readingError(path);
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_EQ(error.kind(), Kind::unreadable);
    EXPECT_EQ(error.what(), path.toStdString() + ": Permission denied");
}

TEST_F(PresetFiles, replaceAnOldFileAndKeepItsPermissions) {
    const auto path = folder.file(QStringLiteral("old.tvp"), "something much longer than any preset");
    const auto permissions =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser | QFile::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path, permissions));
    PresetFile::write(soft, path);
    EXPECT_EQ(PresetFile::read(path), soft);
    EXPECT_EQ(QFile::permissions(path) & ~(QFile::ReadUser | QFile::WriteUser),
              permissions & ~(QFile::ReadUser | QFile::WriteUser));
}

TEST_F(PresetFiles, areReplacedWhereALinkLeads) {
    const auto target = folder.file(QStringLiteral("target"), "old");
    const auto link = folder.path(QStringLiteral("link.tvp"));
    ASSERT_TRUE(QFile::link(target, link));
    PresetFile::write(soft, link);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_FALSE(QFileInfo(target).isSymLink());
    EXPECT_EQ(PresetFile::read(target), soft);
}

TEST_F(PresetFiles, areReplacedWhereALinkToALinkLeads) {
    const auto target = folder.file(QStringLiteral("target"), "old");
    const auto middle = folder.path(QStringLiteral("middle"));
    const auto link = folder.path(QStringLiteral("link.tvp"));
    ASSERT_TRUE(QFile::link(target, middle));
    ASSERT_TRUE(QFile::link(middle, link));
    PresetFile::write(soft, link);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_TRUE(QFileInfo(middle).isSymLink());
    EXPECT_EQ(PresetFile::read(target), soft);
}

TEST_F(PresetFiles, neverReplaceWhatIsNoFile) {
    const auto pipe = folder.path(QStringLiteral("pipe.tvp"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const auto error = errorOf([&] { PresetFile::write(soft, pipe); });
    EXPECT_EQ(error.kind(), Kind::notAFile);
    EXPECT_EQ(error.what(), pipe.toStdString() + ": a device or a pipe, not a file");
    EXPECT_FALSE(QFileInfo(pipe).isFile());
    EXPECT_EQ(errorOf([&] { PresetFile::write(soft, folder.path()); }).kind(), Kind::notAFile);
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("pipe.tvp")});
}

TEST_F(PresetFiles, thatCannotBeMadeSayWhy) {
    const auto path = folder.path(QStringLiteral("missing/soft.tvp"));
    const auto error = errorOf([&] { PresetFile::write(soft, path); });
    EXPECT_EQ(error.kind(), Kind::unwritable);
    EXPECT_EQ(error.what(), path.toStdString() + ": No such file or directory");
}

TEST_F(PresetFiles, withTextsThatAreNotUtf8AreNotWritten) {
    auto preset = soft;
    preset.name = "Gr\xF6\xDF"
                  "e";
    const auto path = folder.file(QStringLiteral("old.tvp"), "old");
    const auto error = errorOf([&] { PresetFile::write(preset, path); });
    EXPECT_EQ(error.kind(), Kind::unwritable);
    EXPECT_NE(std::string(error.what()).find("UTF-8"), std::string::npos);
    EXPECT_EQ(TemporaryFolder::contentOf(path), "old");
}

/// Files cannot grow beyond a few bytes while it lives: as with a full disk, it is the write that fails.
class SmallFiles {
public:
    SmallFiles() {
        std::signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &old_), 0);
        auto small = old_;
        constexpr rlim_t fewBytes = 100;
        small.rlim_cur = fewBytes;
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    }

    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

    ~SmallFiles() {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &old_), 0);
        std::signal(SIGXFSZ, SIG_DFL);
    }

private:
    rlimit old_{};
};

TEST_F(PresetFiles, stayWholeWhenTheNewContentCannotBeWritten) {
    const auto path = folder.file(QStringLiteral("old.tvp"), "old");
    const auto error = [&] {
        const SmallFiles limit;
        return errorOf([&] { PresetFile::write(soft, path); });
    }();
    EXPECT_EQ(error.kind(), Kind::unwritable);
    EXPECT_EQ(error.what(), path.toStdString() + ": File too large");
    EXPECT_EQ(TemporaryFolder::contentOf(path), "old");
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("old.tvp")});
}

} // namespace
} // namespace tavro
