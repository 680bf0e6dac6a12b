#pragma once

#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>

#include <stdlib.h>

namespace tavro::linuxos {

/// An empty folder that is removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        auto name = (std::filesystem::temp_directory_path() / "tavro-settings-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }

    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// The names of everything in a folder, hidden files too.
    [[nodiscard]] static std::set<std::string> namesIn(const std::filesystem::path& folder) {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path path_;
};

} // namespace tavro::linuxos
