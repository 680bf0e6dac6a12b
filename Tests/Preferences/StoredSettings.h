#pragma once

#include "PlatformInterfaces/UserDefaults.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>

namespace tavro {

/// A database of one kind, and how a test prepares it.
class StoredSettings {
public:
    StoredSettings() = default;
    StoredSettings(const StoredSettings&) = delete;
    StoredSettings& operator=(const StoredSettings&) = delete;
    virtual ~StoredSettings() = default;

    [[nodiscard]] virtual UserDefaults& standard() = 0;

    /// Stores it in the suite, which is made when there is none.
    virtual void putInSuite(const std::string& suite, const std::string& key,
                            const UserDefaults::Value& value) = 0;

    /// Makes every later write fail.
    virtual void refuseWrites() = 0;
};

/// The kinds of databases for which the same tests are run.
struct StoredSettingsKind {
    const char* name;
    std::function<std::unique_ptr<StoredSettings>()> make;

    friend void PrintTo(const StoredSettingsKind& kind, std::ostream* stream) { *stream << kind.name; }
};

} // namespace tavro
