#include "Platform/Linux/Desktop/DesktopEntryReader.h"

#include "PerformanceModel/Character.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace tavro::linuxos {

namespace {

[[noreturn]] void fail(const std::string& reason) {
    throw std::runtime_error(reason);
}

std::string unescaped(std::string_view value) {
    static const std::map<char, char> escapes{
        {'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}};
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\') {
            result += value[i];
            continue;
        }
        const auto found = i + 1 < value.size() ? escapes.find(value[++i]) : escapes.end();
        if (found == escapes.end()) {
            fail("an unknown escape in a value");
        }
        result += found->second;
    }
    return result;
}

/// Takes one argument in quotation marks, the first of which is gone already.
std::string takeQuoted(std::string_view& rest) {
    std::string argument;
    while (!rest.empty() && rest.front() != '"') {
        if (rest.front() == '`' || rest.front() == '$') {
            fail("a character that must be escaped is not");
        }
        if (rest.front() == '\\') {
            rest.remove_prefix(1);
            if (rest.empty() || std::string_view("\"`$\\").find(rest.front()) == std::string_view::npos) {
                fail("a backslash before a character that needs none");
            }
        }
        argument += rest.front();
        rest.remove_prefix(1);
    }
    if (rest.empty()) {
        fail("no closing quotation mark");
    }
    rest.remove_prefix(1);
    return argument;
}

std::string takePlain(std::string_view& rest) {
    const auto end = std::min(rest.find(' '), rest.size());
    const auto argument = rest.substr(0, end);
    rest.remove_prefix(end);
    if (argument.find_first_of("\t\n\"'\\><~|&;$*?#()`") != std::string_view::npos) {
        fail("a reserved character outside quotation marks");
    }
    return std::string(argument);
}

std::string withoutFieldCodes(std::string_view argument) {
    std::string result;
    for (std::size_t i = 0; i < argument.size(); ++i) {
        result += argument[i];
        if (argument[i] == '%' && (++i == argument.size() || argument[i] != '%')) {
            fail("a field code in an entry that is given no files");
        }
    }
    return result;
}

} // namespace

DesktopEntryReader::DesktopEntryReader(std::string_view text) {
    if (!charactersOf(text) || text.empty() || text.back() != '\n') {
        fail("not a text of whole lines in UTF-8");
    }
    bool isInGroup = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = text.substr(0, end);
        text.remove_prefix(end + 1);
        if (line == "[Desktop Entry]" && !isInGroup) {
            isInGroup = true;
        } else if (line.empty() || line.front() == '#') {
            continue;
        } else if (!isInGroup || line.front() == '[') {
            fail("an entry outside the group, or another group");
        } else {
            readEntry(line);
        }
    }
    checkKnownKeys();
}

void DesktopEntryReader::readEntry(std::string_view line) {
    const auto equals = line.find('=');
    const auto key = std::string(line.substr(0, equals));
    if (equals == std::string_view::npos || key.empty() ||
        key.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-") !=
            std::string::npos) {
        fail("no key in: " + std::string(line));
    }
    const auto value = line.substr(equals + 1);
    if (!value.empty() && (value.front() == ' ' || value.front() == '\t')) {
        fail("blanks at the beginning of a value are dropped by readers");
    }
    for (const char character : value) {
        if (static_cast<unsigned char>(character) < ' ') {
            fail("a control character in " + key);
        }
    }
    if (!values_.emplace(key, unescaped(value)).second) {
        fail("twice: " + key);
    }
}

void DesktopEntryReader::checkKnownKeys() const {
    static const std::set<std::string> known{"Type", "Version", "Name", "Comment", "TryExec", "Exec", "Icon"};
    static const std::set<std::string> flags{"Terminal", "Hidden", "NoDisplay", "StartupNotify",
                                             "X-GNOME-Autostart-enabled"};
    for (const auto& [key, value] : values_) {
        if (flags.contains(key) ? value != "true" && value != "false" : !known.contains(key)) {
            fail("an unknown key, or no boolean: " + key);
        }
    }
    if (value("Type") != "Application" || value("Name").empty() || command().empty()) {
        fail("a required key is missing");
    }
    if (const auto version = value("Version"); !version.empty() && version != "1.0") {
        fail("an unknown version of the format: " + version);
    }
}

std::string DesktopEntryReader::value(const std::string& key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::string() : found->second;
}

std::vector<std::string> DesktopEntryReader::command() const {
    const auto line = value("Exec");
    std::string_view rest = line;
    std::vector<std::string> arguments;
    while (!rest.empty()) {
        if (rest.front() == ' ') {
            rest.remove_prefix(1);
        } else if (rest.front() == '"') {
            rest.remove_prefix(1);
            arguments.push_back(withoutFieldCodes(takeQuoted(rest)));
            if (!rest.empty() && rest.front() != ' ') {
                fail("something right behind a quotation mark");
            }
        } else {
            arguments.push_back(withoutFieldCodes(takePlain(rest)));
        }
    }
    if (!arguments.empty() && arguments.front().find('=') != std::string::npos) {
        fail("an equals sign in the program");
    }
    return arguments;
}

} // namespace tavro::linuxos
