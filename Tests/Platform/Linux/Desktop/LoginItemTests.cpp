#include "Platform/Linux/Desktop/LoginItemServiceAdapter.h"

#include "Platform/Linux/Desktop/AutostartEntry.h"
#include "Platform/Linux/Desktop/DesktopEntryReader.h"
#include "Platform/Linux/Settings/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tavro::linuxos {
namespace {

using Status = LoginItemService::Status;
namespace fs = std::filesystem;

/// The path that a desktop starts, and nothing else with it.
std::string startedBy(const std::string& entry) {
    const DesktopEntryReader reader(entry);
    const auto command = reader.command();
    EXPECT_EQ(reader.value("TryExec"), command.back());
    if (command.size() > 1) {
        // The shell's $0 is the word behind its command.
        EXPECT_THAT(command, testing::ElementsAre("/bin/sh", "-c", "exec \"$0\"", command.back()));
    } else {
        EXPECT_EQ(command.front().find('%'), std::string::npos) << "GNOME would not find it";
    }
    return command.back();
}

TEST(AutostartEntry, startsTheProgramWhateverItsPath) {
    for (const auto* const path :
         {"/usr/bin/tavro", "/home/some body/my programs/tavro", "/a%b/%f/100%/tavro",
          "/\"quoted\"/it's/tavro", "/back\\slash\\\\/\\n/tavro", "/$HOME/`id`/tavro",
          "/tab\there/new\nline/return\r/tavro", "/Müsik/音楽/🎹/tavro", "/;&|<>*?#()~[]{}!/tavro",
          "/trailing blank/tavro ", "/a=b/tavro", "/a=b/50%/tavro"}) {
        EXPECT_EQ(startedBy(AutostartEntry::text(path).value_or("")), path);
    }
}

RC_GTEST_PROP(AutostartEntry, startsTheProgramWithAnyPathOfPrintableCharacters, ()) {
    const auto path = "/" + *rc::gen::container<std::string>(
                                rc::gen::oneOf(rc::gen::inRange<char>(' ', '\x7F'),
                                               rc::gen::element('\\', '"', '%', '$', '`', '\n', '\t', ' ')));
    RC_ASSERT(startedBy(AutostartEntry::text(path).value_or("")) == path);
}

TEST(AutostartEntry, refusesPathsThatNoEntryCanHold) {
    EXPECT_EQ(AutostartEntry::text("/not/\xFF/utf8"), std::nullopt);
}

TEST(AutostartEntry, isHiddenWhenADesktopSaysSo) {
    const auto isHidden = [](const std::string& lines) {
        const auto entry = AutostartEntry::parse("[Desktop Entry]\nType=Application\nExec=tavro\n" + lines);
        EXPECT_TRUE(entry) << lines;
        return entry && entry->isHidden;
    };
    EXPECT_FALSE(isHidden(""));
    EXPECT_TRUE(isHidden("Hidden=true\n"));
    EXPECT_TRUE(isHidden(" Hidden = true \r\n"));
    EXPECT_TRUE(isHidden("X-GNOME-Autostart-enabled=false\n"));
    EXPECT_TRUE(isHidden("X-GNOME-Autostart-enabled=true\nHidden=true"));
    EXPECT_FALSE(isHidden("Hidden=false\nX-GNOME-Autostart-enabled=true\n"));
    EXPECT_FALSE(isHidden("#Hidden=true\n"));
    EXPECT_FALSE(isHidden("[Desktop Action Other]\nHidden=true\n"));
}

TEST(AutostartEntry, mayConsistOfBeingHidden) {
    const auto entry = AutostartEntry::parse("[Desktop Entry]\nHidden=true\n");
    ASSERT_TRUE(entry);
    EXPECT_TRUE(entry->isHidden);
}

TEST(AutostartEntry, isNoneWhenNoDesktopCouldStartIt) {
    for (const auto* const text :
         {"", "Hidden=true\n", "nonsense", "[Other]\nType=Application\nExec=tavro\n", "[Desktop Entry]\n",
          "[Desktop Entry]\nType=Application\n", "[Desktop Entry]\nType=Application\nExec=\n",
          "[Desktop Entry]\nType=Link\nExec=tavro\n", "[Desktop Entry]\nExec=tavro\n"}) {
        EXPECT_FALSE(AutostartEntry::parse(text)) << text;
    }
}

class LoginItemInAutostartFolder : public testing::Test {
protected:
    TemporaryFolder home_;
    fs::path folder_ = home_.path() / "config" / "autostart";
    fs::path file_ = folder_ / "tavro.desktop";
    LoginItemServiceAdapter service_{folder_, "/opt/my tavro/tavro"};

    void put(const std::string& text) const {
        fs::create_directories(folder_);
        std::ofstream(file_) << text;
    }

    [[nodiscard]] std::string text() const {
        std::ostringstream text;
        text << std::ifstream(file_).rdbuf();
        return text.str();
    }
};

TEST_F(LoginItemInAutostartFolder, isRegisteredAndUnregistered) {
    EXPECT_EQ(service_.status(), Status::notRegistered);
    EXPECT_EQ(service_.registerItem(), std::nullopt);
    EXPECT_EQ(service_.status(), Status::enabled);
    EXPECT_EQ(startedBy(text()), "/opt/my tavro/tavro");
    EXPECT_EQ(TemporaryFolder::namesIn(folder_), (std::set<std::string>{"tavro.desktop"}));
    EXPECT_EQ(service_.unregisterItem(), std::nullopt);
    EXPECT_EQ(service_.status(), Status::notRegistered);
    EXPECT_TRUE(TemporaryFolder::namesIn(folder_).empty());
    EXPECT_EQ(service_.unregisterItem(), std::nullopt);
}

TEST_F(LoginItemInAutostartFolder, requiresApprovalWhenTheUserHidIt) {
    for (const auto* const hidden :
         {"[Desktop Entry]\nHidden=true\n", "[Desktop Entry]\nType=Application\nExec=tavro\n"
                                            "X-GNOME-Autostart-enabled=false\n"}) {
        put(hidden);
        EXPECT_EQ(service_.status(), Status::requiresApproval);
        EXPECT_EQ(service_.registerItem(), std::nullopt);
        EXPECT_EQ(service_.status(), Status::enabled);
        put(hidden);
        EXPECT_EQ(service_.unregisterItem(), std::nullopt);
        EXPECT_EQ(service_.status(), Status::notRegistered);
    }
}

TEST_F(LoginItemInAutostartFolder, isNotFoundWhenTheEntryIsBrokenAndCanBeRegisteredAgain) {
    put("");
    EXPECT_EQ(service_.status(), Status::notFound);
    EXPECT_EQ(service_.registerItem(), std::nullopt);
    EXPECT_EQ(service_.status(), Status::enabled);
}

TEST_F(LoginItemInAutostartFolder, tellsWhyItCannotBeChanged) {
    fs::create_directories(file_ / "something");
    EXPECT_EQ(service_.status(), Status::notFound);
    const auto registering = service_.registerItem();
    ASSERT_TRUE(registering);
    EXPECT_NE(registering->find(file_.string()), std::string::npos) << *registering;
    const auto unregistering = service_.unregisterItem();
    ASSERT_TRUE(unregistering);
    EXPECT_NE(unregistering->find("folder"), std::string::npos) << *unregistering;
    EXPECT_TRUE(fs::exists(file_ / "something"));
}

TEST_F(LoginItemInAutostartFolder, cannotBeRegisteredUnderAPathThatNoEntryCanHold) {
    LoginItemServiceAdapter service(folder_, "/\xFF/tavro");
    const auto reason = service.registerItem();
    ASSERT_TRUE(reason);
    EXPECT_NE(reason->find("UTF-8"), std::string::npos);
    EXPECT_FALSE(fs::exists(folder_));
    LoginItemServiceAdapter unknown(folder_, "");
    EXPECT_TRUE(unknown.registerItem().has_value());
    EXPECT_EQ(unknown.status(), Status::notRegistered);
}

TEST_F(LoginItemInAutostartFolder, cannotBeRegisteredWhereTheFolderIsAFile) {
    fs::create_directories(folder_.parent_path());
    std::ofstream(folder_) << "a file";
    EXPECT_TRUE(service_.registerItem().has_value());
    EXPECT_EQ(service_.status(), Status::notFound);
}

} // namespace
} // namespace tavro::linuxos
