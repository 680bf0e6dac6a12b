#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tavro::linuxos {

/// Reads a desktop entry by the rules of freedesktop.org, more strictly than desktops do.
/// Everything that breaks a rule throws `std::runtime_error`.
class DesktopEntryReader {
public:
    explicit DesktopEntryReader(std::string_view text);

    /// Empty when the key is missing.
    [[nodiscard]] std::string value(const std::string& key) const;

    /// The arguments of the key Exec, the program first.
    [[nodiscard]] std::vector<std::string> command() const;

private:
    void readEntry(std::string_view line);
    void checkKnownKeys() const;

    std::map<std::string, std::string> values_;
};

} // namespace tavro::linuxos
