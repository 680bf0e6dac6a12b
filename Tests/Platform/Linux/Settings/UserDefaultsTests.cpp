#include "Platform/Linux/Settings/UserDefaultsAdapter.h"

#include "Platform/Linux/Settings/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tavro::linuxos {
namespace {

using Data = UserDefaults::Data;
using Value = UserDefaults::Value;
namespace fs = std::filesystem;

class UserDefaultsInFiles : public testing::Test {
protected:
    TemporaryFolder home_;
    fs::path folder_ = home_.path() / "config" / "tavro";
    fs::path file_ = folder_ / "tavro.json";
    UserDefaultsAdapter defaults_{folder_};

    static void write(const fs::path& file, const std::string& text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    static std::string read(const fs::path& file) {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    }

    /// Whether it is true in a child process that is prepared first. A program that runs as the superuser is
    /// allowed everything, so that only another user meets closed folders.
    static bool inAnotherProcess(const std::function<void()>& prepare,
                                 const std::function<bool()>& question) {
        const auto child = fork();
        if (child == 0) {
            prepare();
            _exit(question() ? 1 : 0);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status));
        return WEXITSTATUS(status) == 1;
    }

    void giveHomeToTheOrdinaryUser() {
        if (geteuid() == 0) {
            for (const auto& entry : fs::recursive_directory_iterator(home_.path())) {
                ASSERT_EQ(lchown(entry.path().c_str(), ordinaryUser, ordinaryUser), 0);
            }
            ASSERT_EQ(chown(home_.path().c_str(), ordinaryUser, ordinaryUser), 0);
        }
    }

    static void becomeTheOrdinaryUser() {
        if (geteuid() == 0 && (setgid(ordinaryUser) != 0 || setuid(ordinaryUser) != 0)) {
            _exit(2);
        }
    }

    static constexpr uid_t ordinaryUser = 65534;
};

TEST_F(UserDefaultsInFiles, isEmptyWithoutAFileAndMakesNone) {
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
    EXPECT_FALSE(fs::exists(home_.path() / "config"));
}

TEST_F(UserDefaultsInFiles, makesTheFileForTheUserAloneAndNothingElse) {
    ASSERT_TRUE(defaults_.setValue("key", "text"));
    EXPECT_EQ(defaults_.string("key"), "text");
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.json"}));
    EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(folder_).permissions(), fs::perms::owner_all);
}

TEST_F(UserDefaultsInFiles, tellsTheTypesApart) {
    ASSERT_TRUE(defaults_.setValue("data", Data{"true"}));
    ASSERT_TRUE(defaults_.setValue("text", "true"));
    ASSERT_TRUE(defaults_.setValue("flag", true));
    ASSERT_TRUE(defaults_.setValue("number", std::int64_t{1}));
    const UserDefaultsAdapter other(folder_);
    EXPECT_EQ(other.value("data"), Value(Data{"true"}));
    EXPECT_EQ(other.value("text"), Value("true"));
    EXPECT_EQ(other.value("flag"), Value(true));
    EXPECT_EQ(other.value("number"), Value(std::int64_t{1}));
    EXPECT_EQ(other.string("data"), std::nullopt);
    EXPECT_EQ(other.data("text"), std::nullopt);
}

RC_GTEST_FIXTURE_PROP(UserDefaultsInFiles, returnsEveryValueAsItWas, ()) {
    const auto bytes = *rc::gen::arbitrary<std::string>();
    // One byte is always a character: those of more come from the tests of the text.
    const auto text = *rc::gen::container<std::string>(rc::gen::inRange('\0', '\x7F'));
    const auto number = *rc::gen::arbitrary<std::int64_t>();
    const auto value = *rc::gen::element<Value>(Data{bytes}, text, number, !bytes.empty());
    RC_ASSERT(defaults_.setValue(text, value));
    RC_ASSERT(defaults_.value(text) == value);
}

TEST_F(UserDefaultsInFiles, opensASuiteThatExists) {
    EXPECT_EQ(defaults_.suite("other"), nullptr);
    write(folder_ / "other.ini", "[Settings]\nkey=\"in the suite\"\n");
    ASSERT_NE(defaults_.suite("other"), nullptr);
    EXPECT_EQ(defaults_.suite("other")->string("key"), "in the suite");
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
    EXPECT_FALSE(defaults_.suite("other")->setValue("key", false));
}

TEST_F(UserDefaultsInFiles, opensNoSuiteUnderANameThatIsNone) {
    ASSERT_TRUE(defaults_.setValue("key", true));
    write(home_.path() / "config" / "outside.ini", "");
    fs::create_directory(folder_ / "folder.ini");
    write(folder_ / ".ini", "");
    for (const auto& name : {std::string(), std::string("tavro"), std::string("../outside"),
                             std::string("folder"), std::string("tavro\0", 6), std::string(5000, 'a')}) {
        EXPECT_EQ(defaults_.suite(name), nullptr) << name;
    }
}

TEST_F(UserDefaultsInFiles, takesOverTheSettingsOfAnEarlierVersionOnce) {
    const auto earlier = folder_ / "tavro.ini";
    const std::string text = "[Settings]\nold=\"text\"\nlist=data \"[]\"\nflag=true\nbad=\"cut o\n";
    write(earlier, text);
    EXPECT_EQ(defaults_.string("old"), "text");
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.ini"}));
    ASSERT_TRUE(defaults_.setValue("flag", false));
    EXPECT_EQ(defaults_.string("old"), "text");
    EXPECT_EQ(defaults_.data("list"), Data{"[]"});
    EXPECT_EQ(defaults_.boolean("flag"), false);
    write(earlier, "[Settings]\nold=\"changed\"\n");
    EXPECT_EQ(defaults_.string("old"), "text");
    ASSERT_TRUE(defaults_.setValue("flag", true));
    EXPECT_EQ(read(earlier), "[Settings]\nold=\"changed\"\n");
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.ini", "tavro.json"}));
}

TEST_F(UserDefaultsInFiles, storesNothingWhileThoseOfAnEarlierVersionCannotBeRead) {
    fs::create_directories(folder_ / "tavro.ini");
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
    EXPECT_FALSE(defaults_.setValue("key", true));
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.ini"}));
}

TEST_F(UserDefaultsInFiles, refusesATextThatIsNotUtf8) {
    ASSERT_TRUE(defaults_.setValue("key", "old"));
    EXPECT_FALSE(defaults_.setValue("key", "\xFF"));
    EXPECT_EQ(defaults_.string("key"), "old");
}

TEST_F(UserDefaultsInFiles, keepsALinkALink) {
    const auto target = home_.path() / "dotfiles" / "settings.json";
    write(target, R"({"old":true})");
    fs::create_directories(folder_);
    fs::create_symlink("../../dotfiles/settings.json", file_);
    ASSERT_TRUE(defaults_.setValue("new", true));
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(target)));
    EXPECT_EQ(defaults_.boolean("old"), true);
    EXPECT_EQ(UserDefaultsAdapter(folder_).boolean("new"), true);
    EXPECT_EQ(TemporaryFolder::namesIn(target.parent_path()), (std::set<std::string>{"settings.json"}));
}

TEST_F(UserDefaultsInFiles, fillsADanglingLinkAndRefusesACircularOne) {
    fs::create_directories(folder_);
    fs::create_symlink("elsewhere.json", file_);
    ASSERT_TRUE(defaults_.setValue("key", true));
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_TRUE(fs::exists(folder_ / "elsewhere.json"));
    fs::remove(folder_ / "elsewhere.json");
    fs::create_symlink("tavro.json", folder_ / "elsewhere.json");
    EXPECT_FALSE(defaults_.setValue("key", true));
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
}

TEST_F(UserDefaultsInFiles, keepsWhatAnotherCopyHasWrittenMeanwhile) {
    UserDefaultsAdapter other(folder_);
    ASSERT_TRUE(defaults_.setValue("mine", "1"));
    ASSERT_TRUE(other.setValue("theirs", "1"));
    ASSERT_TRUE(defaults_.setValue("mine", "2"));
    EXPECT_EQ(defaults_.string("theirs"), "1");
    EXPECT_EQ(other.string("mine"), "2");
}

TEST_F(UserDefaultsInFiles, takesUpTheFileOfAKilledWriter) {
    ASSERT_TRUE(defaults_.setValue("key", "old"));
    const auto left = folder_ / ".tavro.json.new";
    write(left, std::string(100'000, ' ') + R"({"stray":true,"broken)");
    fs::permissions(left, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    EXPECT_EQ(defaults_.string("key"), "old");
    ASSERT_TRUE(defaults_.setValue("another", true));
    EXPECT_EQ(defaults_.string("key"), "old");
    EXPECT_EQ(defaults_.value("stray"), std::nullopt);
    EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    ASSERT_TRUE(defaults_.setValue("another", false));
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.json"}));
}

TEST_F(UserDefaultsInFiles, keepsABrokenFileBesideBeforeTheFirstWrite) {
    const std::string broken = R"({"good":true,"bad":"cut o)";
    write(file_, broken);
    EXPECT_EQ(defaults_.value("bad"), std::nullopt);
    EXPECT_EQ(defaults_.boolean("good"), true);
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.json"}));
    ASSERT_TRUE(defaults_.setValue("new", true));
    EXPECT_EQ(read(folder_ / "tavro.json.broken"), broken);
    EXPECT_EQ(defaults_.boolean("good"), true);
    EXPECT_EQ(defaults_.boolean("new"), true);
    ASSERT_TRUE(defaults_.setValue("newer", true));
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.json", "tavro.json.broken"}));
}

TEST_F(UserDefaultsInFiles, keepsEveryBrokenFileOnce) {
    for (const auto* const broken : {"first", "second", "first", "third", "second"}) {
        write(file_, broken);
        ASSERT_TRUE(defaults_.setValue("key", true));
    }
    EXPECT_EQ(read(folder_ / "tavro.json.broken"), "first");
    EXPECT_EQ(read(folder_ / "tavro.json.broken-2"), "second");
    EXPECT_EQ(read(folder_ / "tavro.json.broken-3"), "third");
    EXPECT_EQ(TemporaryFolder::namesIn(folder_).size(), 4U);
}

TEST_F(UserDefaultsInFiles, writesNothingWhenTheBrokenFileCannotBeKept) {
    write(file_, "broken");
    fs::create_directory(folder_ / ".tavro.json.broken.new");
    EXPECT_FALSE(defaults_.setValue("key", true));
    EXPECT_EQ(read(file_), "broken");
}

TEST_F(UserDefaultsInFiles, readsAndReplacesNothingThatIsNoFile) {
    fs::create_directories(file_);
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
    EXPECT_FALSE(defaults_.setValue("key", true));
    EXPECT_TRUE(fs::is_directory(file_));
    fs::remove(file_);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
    EXPECT_FALSE(defaults_.setValue("key", true));
    EXPECT_TRUE(fs::is_fifo(file_));
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.json"}));
}

TEST_F(UserDefaultsInFiles, refusesWhenTheFolderIsAFile) {
    write(folder_, "not a folder");
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
    EXPECT_FALSE(defaults_.setValue("key", true));
    EXPECT_EQ(read(folder_), "not a folder");
}

TEST_F(UserDefaultsInFiles, refusesAFileThatIsFarTooLarge) {
    ASSERT_TRUE(defaults_.setValue("key", true));
    fs::resize_file(file_, 1UL << 40U);
    EXPECT_EQ(defaults_.value("key"), std::nullopt);
    EXPECT_FALSE(defaults_.setValue("key", true));
    EXPECT_EQ(fs::file_size(file_), 1UL << 40U);
}

TEST_F(UserDefaultsInFiles, keepsTheOldFileInAClosedFolder) {
    ASSERT_TRUE(defaults_.setValue("key", "old"));
    giveHomeToTheOrdinaryUser();
    EXPECT_TRUE(inAnotherProcess(becomeTheOrdinaryUser, [&] { return defaults_.setValue("other", true); }));
    fs::permissions(folder_, fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(inAnotherProcess(becomeTheOrdinaryUser, [&] { return defaults_.setValue("key", "new"); }));
    fs::permissions(folder_, fs::perms::owner_all);
    EXPECT_EQ(defaults_.string("key"), "old");
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.json"}));
}

TEST_F(UserDefaultsInFiles, leavesAFileAloneThatTheUserHasClosed) {
    ASSERT_TRUE(defaults_.setValue("key", "old"));
    giveHomeToTheOrdinaryUser();
    fs::permissions(file_, fs::perms::owner_read);
    EXPECT_FALSE(inAnotherProcess(becomeTheOrdinaryUser, [&] { return defaults_.setValue("key", "new"); }));
    EXPECT_EQ(defaults_.string("key"), "old");
}

TEST_F(UserDefaultsInFiles, doesNotReplaceWhatItMayNotRead) {
    ASSERT_TRUE(defaults_.setValue("key", "old"));
    giveHomeToTheOrdinaryUser();
    fs::permissions(file_, fs::perms::owner_write);
    EXPECT_FALSE(inAnotherProcess(becomeTheOrdinaryUser, [&] { return defaults_.value("key").has_value(); }));
    EXPECT_FALSE(inAnotherProcess(becomeTheOrdinaryUser, [&] { return defaults_.setValue("key", "new"); }));
    fs::permissions(file_, fs::perms::owner_read);
    EXPECT_EQ(defaults_.string("key"), "old");
}

TEST_F(UserDefaultsInFiles, keepsTheOldFileWhenThereIsNoRoomForTheNewOne) {
    ASSERT_TRUE(defaults_.setValue("key", std::string(10'000, 'o')));
    const auto before = read(file_);
    const auto allowLittleRoom = [] {
        // The kernel then stops a write in the middle, as it does on a full disk.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = 20'000, .rlim_max = 20'000};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    EXPECT_TRUE(inAnotherProcess(allowLittleRoom, [&] { return defaults_.setValue("little", true); }));
    const auto withLittle = read(file_);
    EXPECT_NE(withLittle, before);
    EXPECT_FALSE(inAnotherProcess(allowLittleRoom,
                                  [&] { return defaults_.setValue("much", std::string(100'000, 'm')); }));
    EXPECT_EQ(read(file_), withLittle);
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.json"}));
}

} // namespace
} // namespace tavro::linuxos
