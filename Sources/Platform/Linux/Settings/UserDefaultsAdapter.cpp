#include "Platform/Linux/Settings/UserDefaultsAdapter.h"

#include "Platform/Linux/Settings/ConfigFolder.h"
#include "Platform/Linux/Settings/IniSettings.h"
#include "Platform/Posix/FileReplacement.h"
#include "Platform/Posix/WholeFile.h"

#include <system_error>

namespace tavro::linuxos {

namespace {

/// Whether the copy has these contents now.
bool isKeptAs(const std::filesystem::path& copy, const std::string& contents) {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(copy, error))) {
        posix::FileReplacement(copy).commit(contents);
        return true;
    }
    try {
        return posix::WholeFile::read(copy) == contents;
    } catch (const std::system_error&) {
        return false;
    }
}

void keepBeside(const std::filesystem::path& file, const std::string& contents) {
    const auto first = file.string() + ".broken";
    auto copy = first;
    for (int number = 2; !isKeptAs(copy, contents); ++number) {
        copy = first + "-" + std::to_string(number);
    }
}

} // namespace

UserDefaultsAdapter::UserDefaultsAdapter() : UserDefaultsAdapter(ConfigFolder::ofUser() / "tavro") {}

SettingsText UserDefaultsAdapter::textOf(const std::optional<std::string>& contents) const {
    return contents ? SettingsText::parse(*contents)
                    : SettingsText{.values = IniSettings::read(folder_ / "tavro.ini")};
}

std::optional<UserDefaults::Value> UserDefaultsAdapter::value(const std::string& key) const {
    try {
        const auto values = textOf(posix::WholeFile::read(file_)).values;
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

bool UserDefaultsAdapter::setValue(const std::string& key, const Value& value) {
    try {
        posix::FileReplacement replacement(file_);
        // Only now, when no other copy of the program writes, can its values not be lost.
        const auto contents = posix::WholeFile::read(file_);
        auto settings = textOf(contents);
        settings.values[key] = value;
        const auto text = settings.format();
        if (!text) {
            return false;
        }
        if (!settings.isWhole) {
            keepBeside(file_, contents.value_or(""));
        }
        replacement.commit(*text);
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

std::unique_ptr<UserDefaults> UserDefaultsAdapter::suite(const std::string& name) const {
    if (name.empty() || name == "tavro" ||
        name.find_first_of(std::string_view("/\0", 2)) != std::string::npos) {
        return nullptr;
    }
    const auto file = folder_ / (name + ".ini");
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) ? std::make_unique<IniSettings>(file) : nullptr;
}

} // namespace tavro::linuxos
