#include "Platform/Linux/Settings/ConfigFolder.h"

#include "Platform/Linux/Desktop/BootClockAdapter.h"
#include "Platform/Linux/Desktop/DesktopEntryReader.h"
#include "Platform/Linux/Desktop/LoginItemServiceAdapter.h"
#include "Platform/Linux/Settings/EnvironmentVariable.h"
#include "Platform/Linux/Settings/TemporaryFolder.h"
#include "Platform/Linux/Settings/UserDefaultsAdapter.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <sstream>

namespace tavro::linuxos {
namespace {

TEST(ConfigFolder, isWhatTheEnvironmentNames) {
    const EnvironmentVariable home("HOME", "/homes/somebody");
    const EnvironmentVariable config("XDG_CONFIG_HOME", "/configs/somebody");
    EXPECT_EQ(ConfigFolder::ofUser(), "/configs/somebody");
}

TEST(ConfigFolder, isInTheHomeWhenTheEnvironmentNamesNoneOrARelativeOne) {
    const EnvironmentVariable home("HOME", "/homes/somebody");
    for (const char* const value : {static_cast<const char*>(nullptr), "", "relative/config"}) {
        const EnvironmentVariable config("XDG_CONFIG_HOME", value);
        EXPECT_EQ(ConfigFolder::ofUser(), "/homes/somebody/.config");
    }
}

TEST(ConfigFolder, isAbsoluteWithoutAnyEnvironment) {
    const EnvironmentVariable home("HOME", nullptr);
    const EnvironmentVariable config("XDG_CONFIG_HOME", nullptr);
    EXPECT_TRUE(ConfigFolder::ofUser().is_absolute());
    EXPECT_EQ(ConfigFolder::ofUser().filename(), ".config");
}

TEST(ConfigFolder, holdsTheUsersSettings) {
    const TemporaryFolder home;
    const EnvironmentVariable config("XDG_CONFIG_HOME", home.path().c_str());
    ASSERT_TRUE(UserDefaultsAdapter().setValue("key", true));
    EXPECT_TRUE(std::filesystem::is_regular_file(home.path() / "tavro" / "tavro.json"));
    EXPECT_EQ(UserDefaultsAdapter().boolean("key"), true);
}

TEST(ConfigFolder, holdsTheEntryThatStartsTheRunningProgram) {
    const TemporaryFolder home;
    const EnvironmentVariable config("XDG_CONFIG_HOME", home.path().c_str());
    ASSERT_EQ(LoginItemServiceAdapter().registerItem(), std::nullopt);
    std::ostringstream text;
    text << std::ifstream(home.path() / "autostart" / "tavro.desktop").rdbuf();
    EXPECT_EQ(DesktopEntryReader(text.str()).command().back(),
              std::filesystem::read_symlink("/proc/self/exe").string());
    EXPECT_EQ(LoginItemServiceAdapter().status(), LoginItemService::Status::enabled);
}

TEST(BootClock, readsTheKernelsIdentifierAlwaysTheSame) {
    const auto identifier = BootClockAdapter().identifier();
    ASSERT_TRUE(identifier);
    EXPECT_EQ(identifier->size(), 36U);
    EXPECT_EQ(identifier->find_first_not_of("0123456789abcdef-"), std::string::npos);
    EXPECT_EQ(BootClockAdapter().identifier(), identifier);
}

TEST(BootClock, hasNoIdentifierWithoutOneInTheFile) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "boot_id";
    EXPECT_EQ(BootClockAdapter(file).identifier(), std::nullopt);
    std::ofstream(file) << "\n";
    EXPECT_EQ(BootClockAdapter(file).identifier(), std::nullopt);
    EXPECT_EQ(BootClockAdapter(folder.path()).identifier(), std::nullopt);
    std::ofstream(file) << "abc\n";
    EXPECT_EQ(BootClockAdapter(file).identifier(), "abc");
}

TEST(BootClock, hasBootedAfter1970) {
    const BootClockAdapter clock;
    EXPECT_GT(clock.secondsUp(), 0);
    EXPECT_GT(clock.secondsSince1970(), clock.secondsUp());
}

} // namespace
} // namespace tavro::linuxos
