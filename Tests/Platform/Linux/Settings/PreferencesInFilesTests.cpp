#include "Platform/Linux/Settings/TemporaryFolder.h"
#include "Platform/Linux/Settings/UserDefaultsAdapter.h"
#include "Preferences/PreferencesFixture.h"

#include <fstream>

namespace tavro {
namespace {

class SettingsInFiles final : public StoredSettings {
public:
    [[nodiscard]] UserDefaults& standard() override { return defaults_; }

    void putInSuite(const std::string& suite, const std::string& key,
                    const UserDefaults::Value& value) override {
        std::ofstream file(home_.path() / (suite + ".ini"), std::ios::app);
        ASSERT_TRUE(file.is_open());
        file << "[Settings]\n" << key << '=' << iniValue(value) << '\n';
    }

    void refuseWrites() override {
        // Where the new contents would be collected.
        std::filesystem::create_directory(home_.path() / ".tavro.json.new");
        ASSERT_FALSE(defaults_.setValue("key", true));
    }

private:
    static std::string iniValue(const UserDefaults::Value& value) {
        if (const auto* const flag = std::get_if<bool>(&value); flag != nullptr) {
            return *flag ? "true" : "false";
        }
        const auto* const data = std::get_if<UserDefaults::Data>(&value);
        std::string escaped;
        for (const char character : data != nullptr ? data->bytes : std::get<std::string>(value)) {
            escaped += std::string_view("\"\\").find(character) != std::string_view::npos ? "\\" : "";
            escaped += character;
        }
        return (data != nullptr ? "data \"" : "\"") + escaped + '"';
    }

    linuxos::TemporaryFolder home_;
    linuxos::UserDefaultsAdapter defaults_{home_.path()};
};

INSTANTIATE_TEST_SUITE_P(InFiles, PreferencesTest,
                         testing::Values(StoredSettingsKind{"files", std::make_unique<SettingsInFiles>}));

} // namespace
} // namespace tavro
