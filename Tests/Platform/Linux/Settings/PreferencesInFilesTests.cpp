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
        const std::ofstream file(home_.path() / (suite + ".ini"), std::ios::app);
        ASSERT_TRUE(file.is_open());
        ASSERT_TRUE(defaults_.suite(suite)->setValue(key, value));
    }

    void refuseWrites() override {
        // Where the new contents would be collected.
        std::filesystem::create_directory(home_.path() / ".tavro.ini.new");
        ASSERT_FALSE(defaults_.setValue("key", true));
    }

private:
    linuxos::TemporaryFolder home_;
    linuxos::UserDefaultsAdapter defaults_{home_.path()};
};

INSTANTIATE_TEST_SUITE_P(InFiles, PreferencesTest,
                         testing::Values(StoredSettingsKind{"files", std::make_unique<SettingsInFiles>}));

} // namespace
} // namespace tavro
