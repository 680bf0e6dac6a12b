#include "Platform/Linux/Settings/NumberedList.h"
#include "Platform/Linux/Settings/SettingsWriter.h"
#include "Platform/Linux/Settings/StoredAtLast.h"
#include "Platform/Linux/Settings/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <random>
#include <thread>

#include <sys/wait.h>

namespace tavro::linuxos {
namespace {

using std::chrono::steady_clock;

bool endedWell(int status) {
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int numberOf(const std::string& line) {
    return std::stoi(line.substr(line.find(' ')));
}

TEST(SettingsWriters, loseNothingWhenTwoWriteAtOnce) {
    constexpr int count = 60;
    const TemporaryFolder home;
    UserDefaultsAdapter defaults(home.path());
    SettingsWriter left({home.path(), "keys", "left", std::to_string(count)});
    SettingsWriter right({home.path(), "keys", "right", std::to_string(count)});
    for (int i = 0; i < count; ++i) {
        ASSERT_TRUE(storedAtLast(defaults, "middle" + std::to_string(i), std::to_string(i)));
    }
    EXPECT_TRUE(endedWell(left.wait()));
    EXPECT_TRUE(endedWell(right.wait()));
    for (int i = 0; i < count; ++i) {
        for (const auto* const prefix : {"left", "middle", "right"}) {
            EXPECT_EQ(defaults.string(prefix + std::to_string(i)), std::to_string(i)) << prefix << i;
        }
    }
    EXPECT_EQ(TemporaryFolder::namesIn(home.path()), (std::set<std::string>{"tavro.json"}));
}

TEST(SettingsWriters, areReadWholeWhileTheyWrite) {
    const TemporaryFolder home;
    const UserDefaultsAdapter defaults(home.path());
    SettingsWriter writer({home.path(), "lists", "1"});
    ASSERT_EQ(writer.nextLine(), "begin 1");
    ASSERT_EQ(writer.nextLine(), "end 1");
    int stored = 1;
    for (int reading = 0; reading < 200; ++reading) {
        const auto list = defaults.data("list");
        ASSERT_TRUE(list);
        // Lists are stored in the order of their numbers.
        while (list->bytes != numberedList(stored)) {
            ++stored;
            ASSERT_LT(stored, 100'000) << "what was read is no list";
        }
    }
}

TEST(SettingsWriters, leaveTheOldOrTheNewListWhenTheyAreKilled) {
    constexpr int rounds = 200;
    const TemporaryFolder home;
    UserDefaultsAdapter defaults(home.path());
    int stored = 0;
    ASSERT_TRUE(defaults.setValue("list", UserDefaults::Data{numberedList(stored)}));
    ASSERT_TRUE(defaults.setValue("untouched", true));

    const auto before = steady_clock::now();
    ASSERT_TRUE(defaults.setValue("list", UserDefaults::Data{numberedList(stored)}));
    std::uniform_int_distribution<std::int64_t> anyMoment(0, (steady_clock::now() - before).count());
    std::mt19937 random(20'240'229);
    std::set<std::string> names;
    int killedWhileSaving = 0;
    int foundOld = 0;
    for (int round = 0; round < rounds; ++round) {
        SettingsWriter writer({home.path(), "lists", std::to_string(stored + 1)});
        ASSERT_EQ(writer.nextLine(), "begin " + std::to_string(stored + 1));
        // Nothing is waited for: this only chooses a moment somewhere in the saving.
        std::this_thread::sleep_for(steady_clock::duration(anyMoment(random)));
        writer.sendSignal(SIGKILL);
        ASSERT_TRUE(WIFSIGNALED(writer.wait()));

        int begun = stored + 1;
        bool isSaving = true;
        for (auto line = writer.nextLine(); !line.empty(); line = writer.nextLine()) {
            begun = numberOf(line);
            isSaving = line.starts_with("begin");
        }
        const auto list = defaults.data("list");
        ASSERT_TRUE(list) << "none after round " << round;
        const bool isNew = list->bytes == numberedList(begun);
        ASSERT_TRUE(isNew || (isSaving && list->bytes == numberedList(begun - 1)))
            << "another in round " << round;
        ASSERT_EQ(defaults.boolean("untouched"), true);
        killedWhileSaving += isSaving ? 1 : 0;
        foundOld += isNew ? 0 : 1;
        stored = isNew ? begun : begun - 1;
        names.merge(TemporaryFolder::namesIn(home.path()));
    }
    RecordProperty("killedWhileSaving", killedWhileSaving);
    RecordProperty("foundOld", foundOld);
    // Otherwise the moments were badly chosen, and nothing was shown.
    EXPECT_GE(killedWhileSaving, rounds / 4);
    EXPECT_GT(foundOld, 0);
    // What a killed writer leaves has one name, and the next one that saves takes it up.
    EXPECT_EQ(names, (std::set<std::string>{".tavro.json.new", "tavro.json"}));
    ASSERT_TRUE(defaults.setValue("afterwards", true));
    EXPECT_EQ(TemporaryFolder::namesIn(home.path()), (std::set<std::string>{"tavro.json"}));
    EXPECT_EQ(defaults.data("list"), UserDefaults::Data{numberedList(stored)});
}

} // namespace
} // namespace tavro::linuxos
