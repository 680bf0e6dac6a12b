#include "Platform/Linux/ConfigFolder.h"

#include "Platform/Linux/BootClockAdapter.h"
#include "Platform/Linux/Settings/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>

#include <stdlib.h>

namespace tavro::linuxos {
namespace {

/// Sets an environment variable for the life of this; nothing removes it.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* const old = getenv(name); old != nullptr) {
            old_ = old;
        }
        set(value);
    }

    ~Variable() { set(old_ ? old_->c_str() : nullptr); }

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void set(const char* value) { value != nullptr ? setenv(name_, value, 1) : unsetenv(name_); }

    const char* name_;
    std::optional<std::string> old_;
};

TEST(ConfigFolder, isWhatTheEnvironmentNames) {
    const Variable home("HOME", "/homes/somebody");
    const Variable config("XDG_CONFIG_HOME", "/configs/somebody");
    EXPECT_EQ(ConfigFolder::ofUser(), "/configs/somebody");
}

TEST(ConfigFolder, isInTheHomeWhenTheEnvironmentNamesNoneOrARelativeOne) {
    const Variable home("HOME", "/homes/somebody");
    for (const char* const value : {static_cast<const char*>(nullptr), "", "relative/config"}) {
        const Variable config("XDG_CONFIG_HOME", value);
        EXPECT_EQ(ConfigFolder::ofUser(), "/homes/somebody/.config");
    }
}

TEST(ConfigFolder, isAbsoluteWithoutAnyEnvironment) {
    const Variable home("HOME", nullptr);
    const Variable config("XDG_CONFIG_HOME", nullptr);
    EXPECT_TRUE(ConfigFolder::ofUser().is_absolute());
    EXPECT_EQ(ConfigFolder::ofUser().filename(), ".config");
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
