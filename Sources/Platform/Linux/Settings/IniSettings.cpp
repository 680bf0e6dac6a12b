#include "Platform/Linux/Settings/IniSettings.h"

#include "PerformanceModel/Text.h"
#include "Platform/Posix/WholeFile.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>

namespace tavro::linuxos {

namespace {

using Value = UserDefaults::Value;
using Data = UserDefaults::Data;
using Values = IniSettings::Values;

constexpr std::string_view heading = "[Settings]";
constexpr std::string_view dataWord = "data ";
constexpr std::string_view hexDigits = "0123456789abcdef";

bool takePrefix(std::string_view& text, std::string_view prefix) {
    const bool isThere = text.substr(0, prefix.size()) == prefix;
    if (isThere) {
        text.remove_prefix(prefix.size());
    }
    return isThere;
}

bool isPlainKey(std::string_view key) {
    return !key.empty() && std::all_of(key.begin(), key.end(), [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' ||
               c == '-' || c == '_';
    });
}

std::optional<char> takeHexByte(std::string_view& text) {
    if (text.size() < 2) {
        return std::nullopt;
    }
    const auto high = hexDigits.find(text[0]);
    const auto low = hexDigits.find(text[1]);
    if (high == std::string_view::npos || low == std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(2);
    return static_cast<char>(high * 16 + low);
}

/// Takes the character that an escape stands for, its backslash gone already.
std::optional<char> takeEscaped(std::string_view& text) {
    if (text.empty()) {
        return std::nullopt;
    }
    const char letter = text.front();
    text.remove_prefix(1);
    switch (letter) {
    case '"':
    case '\\':
        return letter;
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case 'x':
        return takeHexByte(text);
    default:
        return std::nullopt;
    }
}

/// Takes a text in quotation marks, which must be complete.
std::optional<std::string> takeQuoted(std::string_view& text) {
    if (!takePrefix(text, "\"")) {
        return std::nullopt;
    }
    std::string result;
    for (;;) {
        const auto plain = text.find_first_of("\"\\");
        if (plain == std::string_view::npos) {
            return std::nullopt;
        }
        result += text.substr(0, plain);
        text.remove_prefix(plain);
        if (takePrefix(text, "\"")) {
            return result;
        }
        text.remove_prefix(1);
        const auto escaped = takeEscaped(text);
        if (!escaped) {
            return std::nullopt;
        }
        result += *escaped;
    }
}

std::optional<std::string> takeKey(std::string_view& text) {
    if (!text.empty() && text.front() == '"') {
        return takeQuoted(text);
    }
    const auto end = std::min(text.find_first_of("= \t"), text.size());
    const auto key = text.substr(0, end);
    text.remove_prefix(end);
    return isPlainKey(key) ? std::optional(std::string(key)) : std::nullopt;
}

std::optional<Value> valueOf(std::string_view text) {
    if (text == "true" || text == "false") {
        return text == "true";
    }
    const bool isData = takePrefix(text, dataWord);
    if (isData) {
        text = trimmed(text);
    }
    auto bytes = takeQuoted(text);
    if (!bytes || !text.empty()) {
        return std::nullopt;
    }
    return isData ? Value(Data{*std::move(bytes)}) : Value(*std::move(bytes));
}

void readEntry(std::string_view line, Values& values) {
    auto key = takeKey(line);
    line = trimmed(line);
    if (!key || !takePrefix(line, "=")) {
        return;
    }
    auto value = valueOf(trimmed(line));
    // No version has stored a text that is not UTF-8.
    const auto* const text = value ? std::get_if<std::string>(&*value) : nullptr;
    if (value && charactersOf(*key) && (text == nullptr || charactersOf(*text))) {
        values.insert_or_assign(*std::move(key), *std::move(value));
    }
}

} // namespace

Values IniSettings::parse(std::string_view text) {
    Values values;
    text = withoutByteOrderMark(text);
    bool isInSection = false;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == ';' || line.front() == '#') {
            continue;
        }
        if (line.front() == '[') {
            isInSection = line == heading;
        } else if (isInSection) {
            readEntry(line, values);
        }
    }
    return values;
}

Values IniSettings::read(const std::filesystem::path& file) {
    return parse(posix::WholeFile::read(file).value_or(""));
}

std::optional<Value> IniSettings::value(const std::string& key) const {
    try {
        const auto values = read(file_);
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

} // namespace tavro::linuxos
