#include "Presets/PresetStore.h"
#include "PerformanceModel/ArbitraryPerformanceState.h"
#include "PerformanceModel/JsonDecoding.h"
#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"
#include "Preferences/AppPreferences.h"
#include "Presets/PresetFile.h"
#include "Presets/TemporaryFolder.h"

#include <QFileInfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using Data = UserDefaults::Data;

const std::string listKey = "TAVRO.CustomPresets.v1";

TAVROPreset custom(const std::string& id, const std::string& name) {
    return {.id = id, .name = name, .state = {}, .isBuiltIn = false};
}

class PresetStores : public testing::Test {
protected:
    void storeText(const std::string& list) { defaults.setValue(listKey, Data{list}); }

    std::string storedText() const {
        const auto data = defaults.data(listKey);
        return data ? data->bytes : "nothing";
    }

    headless::UserDefaultsAdapter defaults;
    headless::BootClockAdapter bootClock;
    Preferences preferences{defaults, bootClock};
    PresetStore store{defaults, preferences};
};

TEST(TAVROPresets, theBuiltInOneHoldsTheDefaults) {
    const auto& preset = TAVROPreset::defaultPreset();
    EXPECT_EQ(preset.id, "default");
    EXPECT_EQ(preset.name, "Default");
    EXPECT_EQ(preset.state, PerformanceState());
    EXPECT_TRUE(preset.isBuiltIn);
    EXPECT_EQ(&TAVROPreset::defaultPreset(), &preset);
}

TEST(TAVROPresets, areEncodedInTheOrderOfTheFields) {
    std::vector<std::string> keys;
    const auto json = TAVROPreset::defaultPreset().encode();
    for (const auto& entry : json.items()) {
        keys.push_back(entry.key());
    }
    EXPECT_THAT(keys, ElementsAre("id", "name", "state", "isBuiltIn"));
}

TEST(TAVROPresets, needEveryKey) {
    for (const auto* key : {"id", "name", "state", "isBuiltIn"}) {
        auto json = TAVROPreset::defaultPreset().encode();
        EXPECT_EQ(TAVROPreset::decode(json), TAVROPreset::defaultPreset());
        json[key] = nullptr;
        EXPECT_THROW((void)TAVROPreset::decode(json), DecodingError) << key;
        json.erase(key);
        EXPECT_THROW((void)TAVROPreset::decode(json), DecodingError) << key;
    }
}

TEST_F(PresetStores, withoutAnythingStoredOfferTheBuiltInPreset) {
    EXPECT_THAT(store.load(), ElementsAre(TAVROPreset::defaultPreset()));
    EXPECT_EQ(store.storedPresetData(), std::nullopt);
    EXPECT_TRUE(defaults.values().empty());
}

TEST_F(PresetStores, offerTheStoredOnesBehindIt) {
    const std::vector presets{custom("b", "B"), TAVROPreset::defaultPreset(), custom("a", "A")};
    EXPECT_TRUE(store.save(presets));
    EXPECT_THAT(store.load(), ElementsAre(TAVROPreset::defaultPreset(), custom("b", "B"), custom("a", "A")));
}

TEST_F(PresetStores, storeInOneLineWithTheKeysInOrder) {
    store.save(std::vector{TAVROPreset::defaultPreset(), custom("1", "Größe")});
    const auto text = storedText();
    EXPECT_EQ(text.substr(0, text.find("state")), R"([{"id":"1","name":"Größe",")");
    EXPECT_TRUE(text.ends_with(R"(,"keyboardLayout":"QWERTZ"},"isBuiltIn":false}])"));
}

TEST_F(PresetStores, storeAnEmptyListAsOne) {
    storeText("[1]");
    EXPECT_TRUE(store.save(std::vector{TAVROPreset::defaultPreset()}));
    EXPECT_EQ(storedText(), "[]");
    EXPECT_THAT(store.load(), ElementsAre(TAVROPreset::defaultPreset()));
}

TEST_F(PresetStores, dropWhatClaimsToBeBuiltIn) {
    auto impostor = custom("1", "One");
    impostor.isBuiltIn = true;
    storeText("[" + impostor.encode().dump() + "," + custom("2", "Two").encode().dump() + "]");
    const auto presets = store.load();
    EXPECT_THAT(presets, ElementsAre(TAVROPreset::defaultPreset(), custom("2", "Two")));
    store.save(presets);
    EXPECT_EQ(storedText(), "[" + custom("2", "Two").encode().dump() + "]");
}

TEST_F(PresetStores, offerNoneOfAListThatCannotBeRead) {
    auto incomplete = custom("2", "Two").encode();
    incomplete.erase("isBuiltIn");
    const auto one = custom("1", "One").encode().dump();
    for (const std::string& list :
         {std::string(), std::string("{"), std::string("{}"), std::string("null"), std::string("\xFF"),
          std::string(100'000, '['), "[" + one + "," + incomplete.dump() + "]", "[" + one + ",",
          "[" + one + ",1]"}) {
        storeText(list);
        EXPECT_THAT(store.load(), ElementsAre(TAVROPreset::defaultPreset())) << list.substr(0, 300);
        EXPECT_EQ(storedText(), list);
    }
}

TEST_F(PresetStores, readOnlyDataAsAList) {
    defaults.setValue(listKey, "[" + custom("1", "One").encode().dump() + "]");
    EXPECT_THAT(store.load(), ElementsAre(TAVROPreset::defaultPreset()));
}

TEST_F(PresetStores, takeOverTheListOfAnEarlierGeneration) {
    const auto old = "[" + custom("1", "Old").encode().dump() + "]";
    defaults.setValue("Sarvik.CustomPresets.v1", Data{old});
    EXPECT_THAT(store.load(), ElementsAre(TAVROPreset::defaultPreset(), custom("1", "Old")));
    EXPECT_EQ(storedText(), old);
    EXPECT_EQ(defaults.data("Sarvik.CustomPresets.v1"), Data{old});
}

TEST_F(PresetStores, lookForItInTheEarlierSuitesInTheirOrder) {
    const auto listOf = [](const char* name) { return Data{"[" + custom("1", name).encode().dump() + "]"}; };
    defaults.addSuite("com.vessiron.sarvik", {{"Pelmont.CustomPresets.v1", listOf("later")}});
    EXPECT_EQ(store.load().back().name, "later");
    headless::UserDefaultsAdapter both;
    both.addSuite("com.vessiron.sarvik", {{"Pelmont.CustomPresets.v1", listOf("later")}});
    both.addSuite("com.vessiron.sarvik.experimental", {{"Sarvik.CustomPresets.v1", listOf("first")}});
    Preferences otherPreferences(both, bootClock);
    EXPECT_EQ(PresetStore(both, otherPreferences).load().back().name, "first");
}

TEST_F(PresetStores, writeNothingWhenATextIsNotUtf8) {
    store.save(std::vector{custom("1", "One")});
    const auto before = storedText();
    EXPECT_FALSE(store.save(std::vector{custom("1", "\xFF")}));
    EXPECT_EQ(storedText(), before);
}

TEST_F(PresetStores, tellWhenNothingCouldBeStored) {
    defaults.refusesWrites = true;
    EXPECT_FALSE(store.save(std::vector{custom("1", "One")}));
}

RC_GTEST_FIXTURE_PROP(PresetStores, loadWhatTheySaved, ()) {
    const auto text = rc::gen::container<std::string>(rc::gen::inRange<char>(0, 127));
    std::vector<TAVROPreset> presets{TAVROPreset::defaultPreset()};
    const auto count = *rc::gen::inRange(0, 5);
    for (int number = 0; number < count; ++number) {
        presets.push_back({.id = *text, .name = *text, .state = *wildState(), .isBuiltIn = false});
    }
    RC_ASSERT(store.save(presets));
    RC_ASSERT(store.load() == presets);
}

std::string nextName(const std::vector<std::string>& customNames) {
    std::vector presets{TAVROPreset::defaultPreset()};
    for (const auto& name : customNames) {
        presets.push_back(custom("id of " + name, name));
    }
    return PresetStore::nextPresetName(presets);
}

TEST_F(PresetStores, proposeNamesThatAreFree) {
    EXPECT_EQ(nextName({}), "Preset 1");
    EXPECT_EQ(nextName({"Preset 1", "Preset 2"}), "Preset 3");
    EXPECT_EQ(nextName({"Preset 2"}), "Preset 3");
    EXPECT_EQ(nextName({"Preset 2", "Preset 3"}), "Preset 4");
    EXPECT_EQ(nextName({"Default"}), "Preset 2");
    EXPECT_EQ(nextName({"Soft", "Loud", "Preset 1"}), "Preset 4");
    EXPECT_EQ(nextName({"preset 2"}), "Preset 2");
    EXPECT_EQ(PresetStore::nextPresetName({}), "Preset 1");
}

TEST_F(PresetStores, proposeNamesThatNotEvenTheBuiltInPresetHas) {
    auto builtIn = TAVROPreset::defaultPreset();
    builtIn.name = "Preset 1";
    EXPECT_EQ(PresetStore::nextPresetName(std::vector{builtIn}), "Preset 2");
}

TEST_F(PresetStores, writeFilesThatBeginWithTheIdentifier) {
    const TemporaryFolder folder;
    const auto path = folder.path(QStringLiteral("one.tvp"));
    PresetStore::write(custom("1", "One"), path);
    EXPECT_TRUE(TemporaryFolder::contentOf(path).startsWith("{\n  \"id\": \"1\",\n  \"isBuiltIn\": false,"));
    EXPECT_THROW(PresetStore::write(custom("1", "One"), folder.path()), PresetFileError);
}

TEST_F(PresetStores, nameTheirFiles) {
    EXPECT_EQ(PresetStore::fileType().extension, QStringLiteral("tvp"));
    EXPECT_TRUE(PresetStore::fileType().nameFilter.endsWith(QStringLiteral(" (*.tvp)")));
}

class PresetFolder : public testing::Test {
protected:
    PresetFolder() {
        qputenv("HOME", QFile::encodeName(home.path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path(QStringLiteral("config"))));
    }

    ~PresetFolder() override {
        restore("HOME", oldHome);
        restore("XDG_CONFIG_HOME", oldConfig);
    }

    static void restore(const char* variable, const QByteArray& value) {
        if (value.isNull()) {
            qunsetenv(variable);
        } else {
            qputenv(variable, value);
        }
    }

    const QByteArray oldHome = qgetenv("HOME");
    const QByteArray oldConfig = qgetenv("XDG_CONFIG_HOME");
    const TemporaryFolder home;
};

TEST_F(PresetFolder, isMadeAmongTheDocuments) {
    const auto folder = PresetStore::defaultPresetDirectory();
    EXPECT_EQ(folder, home.path(QStringLiteral("Documents/TAVRO Presets")));
    EXPECT_TRUE(QFileInfo(folder).isDir());
    EXPECT_EQ(PresetStore::defaultPresetDirectory(), folder);
}

TEST_F(PresetFolder, followsTheUsersOwnChoiceOfFolders) {
    QDir().mkpath(home.path(QStringLiteral("config")));
    home.file(QStringLiteral("config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
    EXPECT_EQ(PresetStore::defaultPresetDirectory(), home.path(QStringLiteral("Papers/TAVRO Presets")));
}

TEST_F(PresetFolder, isNamedEvenWhenItCannotBeMade) {
    home.file(QStringLiteral("Documents"), "no folder");
    EXPECT_EQ(PresetStore::defaultPresetDirectory(), home.path(QStringLiteral("Documents/TAVRO Presets")));
    EXPECT_FALSE(QFileInfo::exists(PresetStore::defaultPresetDirectory()));
}

} // namespace
} // namespace tavro
