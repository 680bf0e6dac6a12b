#include "Updates/Manifest/UpdateManifest.h"

#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"
#include "Updates/Manifest/ManifestTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Json = nlohmann::ordered_json;

std::string decodingErrorOf(const Json& json) {
    try {
        static_cast<void>(UpdateManifest::decode(json.dump()));
    } catch (const DecodingError& error) {
        return error.what();
    }
    return "no error";
}

TEST(UpdateManifestTest, readsEveryField) {
    const auto manifest = UpdateManifest::decode(ManifestTexts::whole().dump());
    EXPECT_EQ(manifest.schemaVersion, 1);
    EXPECT_EQ(manifest.version, "1.4.0");
    EXPECT_EQ(manifest.publishedAt.time_since_epoch().count(), 1740821400);
    EXPECT_THAT(manifest.releaseNotes, ElementsAre("Better chords", "Fewer faults"));
    EXPECT_EQ(manifest.platforms.windows.fileName, "TAVRO.exe");
    EXPECT_EQ(manifest.platforms.windows.minimumOS, std::nullopt);
    EXPECT_EQ(manifest.platforms.macos.url, "https://updates.example/TAVRO.dmg");
    EXPECT_EQ(manifest.platforms.macos.sha256, std::string(64, 'b'));
    EXPECT_EQ(manifest.platforms.macos.fileName, "TAVRO.dmg");
    EXPECT_EQ(manifest.platforms.macos.minimumOS, "13.0");
    ASSERT_TRUE(manifest.platforms.linuxos);
    EXPECT_EQ(manifest.platforms.linuxos->url, "https://updates.example/tavro.deb");
}

TEST(UpdateManifestTest, doesWithoutWhatIsOptional) {
    auto json = ManifestTexts::whole();
    json["platforms"].erase("linux");
    json["platforms"]["macos"]["minimumOS"] = nullptr;
    json["releaseNotes"] = Json::array();
    json["somethingNew"] = {{"a", 1}};
    const auto manifest = UpdateManifest::decode(json.dump());
    EXPECT_FALSE(manifest.platforms.linuxos);
    EXPECT_FALSE(manifest.platforms.macos.minimumOS);
    EXPECT_THAT(manifest.releaseNotes, IsEmpty());
    json["platforms"]["linux"] = nullptr;
    EXPECT_EQ(UpdateManifest::decode(json.dump()), manifest);
}

TEST(UpdateManifestTest, leavesItToOthersToJudgeTheValues) {
    auto json = ManifestTexts::whole();
    json["schemaVersion"] = -7;
    json["version"] = "";
    json["platforms"]["macos"]["url"] = "nowhere";
    const auto manifest = UpdateManifest::decode(json.dump());
    EXPECT_EQ(manifest.schemaVersion, -7);
    EXPECT_EQ(manifest.platforms.macos.url, "nowhere");
}

TEST(UpdateManifestTest, needsEveryRequiredKey) {
    for (const auto* key : {"schemaVersion", "version", "publishedAt", "releaseNotes", "platforms"}) {
        auto json = ManifestTexts::whole();
        json.erase(key);
        EXPECT_EQ(decodingErrorOf(json), "expected the key \"" + std::string(key) + "\", found an object");
    }
    for (const auto* platform : {"windows", "macos", "linux"}) {
        for (const auto* key : {"url", "sha256", "fileName"}) {
            auto json = ManifestTexts::whole();
            json["platforms"][platform].erase(key);
            EXPECT_EQ(decodingErrorOf(json), "\"platforms." + std::string(platform) +
                                                 "\": expected the key \"" + key + "\", found an object");
        }
    }
    for (const auto* platform : {"windows", "macos"}) {
        auto json = ManifestTexts::whole();
        json["platforms"].erase(platform);
        EXPECT_EQ(decodingErrorOf(json),
                  "\"platforms\": expected the key \"" + std::string(platform) + "\", found an object");
    }
}

TEST(UpdateManifestTest, refusesOtherTypesAndNamesThePlace) {
    const auto errorWith = [](const char* pointer, const Json& value) {
        auto json = ManifestTexts::whole();
        json[Json::json_pointer(pointer)] = value;
        return decodingErrorOf(json);
    };
    EXPECT_EQ(errorWith("/schemaVersion", "1"), "\"schemaVersion\": expected an integer, found \"1\"");
    EXPECT_EQ(errorWith("/schemaVersion", 1.5), "\"schemaVersion\": expected an integer, found 1.5");
    EXPECT_EQ(errorWith("/version", 1), "\"version\": expected a text, found 1");
    EXPECT_EQ(errorWith("/version", nullptr), "\"version\": expected a text, found null");
    EXPECT_EQ(errorWith("/releaseNotes", "one"), "\"releaseNotes\": expected a list of texts, found \"one\"");
    EXPECT_EQ(errorWith("/releaseNotes/1", false), "\"releaseNotes\": expected a text, found false");
    EXPECT_EQ(errorWith("/platforms", Json::array()), "\"platforms\": expected an object, found an array");
    EXPECT_EQ(errorWith("/platforms/macos", nullptr), "\"platforms.macos\": expected an object, found null");
    EXPECT_EQ(errorWith("/platforms/linux", true), "\"platforms.linux\": expected an object, found true");
    EXPECT_EQ(errorWith("/platforms/macos/url", 5), "\"platforms.macos.url\": expected a text, found 5");
    EXPECT_EQ(errorWith("/platforms/macos/minimumOS", 13),
              "\"platforms.macos.minimumOS\": expected a text, found 13");
    EXPECT_EQ(errorWith("/publishedAt", 1740821400), "\"publishedAt\": expected a text, found 1740821400");
    EXPECT_EQ(errorWith("/publishedAt", "today"),
              "\"publishedAt\": expected a date such as \"2025-03-01T09:30:00Z\", found \"today\"");
    EXPECT_EQ(errorWith("", 1), "expected an object, found 1");
}

TEST(UpdateManifestTest, takesAWholeNumberThatIsWrittenWithAFraction) {
    auto json = ManifestTexts::whole();
    json["schemaVersion"] = 1.0;
    EXPECT_EQ(UpdateManifest::decode(json.dump()).schemaVersion, 1);
}

TEST(UpdateManifestTest, refusesWhatIsNoJson) {
    for (const auto* text : {"", "<html></html>", "{", "\xFF"}) {
        EXPECT_THROW(static_cast<void>(UpdateManifest::decode(text)), JsonTextError) << text;
    }
    const auto whole = ManifestTexts::whole().dump();
    EXPECT_THROW(static_cast<void>(UpdateManifest::decode(whole.substr(0, whole.size() - 1))), JsonTextError);
}

} // namespace
} // namespace tavro
