#include "Platform/Linux/Settings/SettingsText.h"

#include "Platform/Linux/Settings/TrimmedLine.h"

#include <algorithm>
#include <optional>

namespace tavro::linuxos {

namespace {

using Value = UserDefaults::Value;
using Data = UserDefaults::Data;

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

unsigned byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

/// How many bytes the UTF-8 character at the beginning has; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const auto lead = byteAt(text, 0);
    const std::size_t length = lead < 0x80                    ? 1
                               : lead >= 0xC2 && lead <= 0xDF ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 0;
    if (length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, i) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    if (length >= 3) {
        // Overlong forms, surrogates and what lies beyond the last code point.
        const auto second = byteAt(text, 1);
        if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
            (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) {
            return 0;
        }
    }
    return length;
}

void appendEscaped(std::string& result, unsigned byte) {
    switch (byte) {
    case '"':
        result += "\\\"";
        break;
    case '\\':
        result += "\\\\";
        break;
    case '\n':
        result += "\\n";
        break;
    case '\r':
        result += "\\r";
        break;
    case '\t':
        result += "\\t";
        break;
    default:
        result += "\\x";
        result += hexDigits[byte >> 4U];
        result += hexDigits[byte & 15U];
    }
}

std::string inQuotes(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const auto length = characterLength(text);
        const auto byte = byteAt(text, 0);
        if (length == 0 || byte < 0x20 || byte == 0x7F || byte == '"' || byte == '\\') {
            appendEscaped(result, byte);
            text.remove_prefix(1);
        } else {
            result += text.substr(0, length);
            text.remove_prefix(length);
        }
    }
    return result + '"';
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

bool readEntry(std::string_view line, std::map<std::string, Value>& values) {
    auto key = takeKey(line);
    line = trimmed(line);
    if (!key || !takePrefix(line, "=")) {
        return false;
    }
    auto value = valueOf(trimmed(line));
    if (!value) {
        return false;
    }
    values.insert_or_assign(*std::move(key), *std::move(value));
    return true;
}

std::string formatted(const Value& value) {
    if (const auto* const flag = std::get_if<bool>(&value); flag != nullptr) {
        return *flag ? "true" : "false";
    }
    if (const auto* const text = std::get_if<std::string>(&value); text != nullptr) {
        return inQuotes(*text);
    }
    return std::string(dataWord) + inQuotes(std::get<Data>(value).bytes);
}

} // namespace

SettingsText SettingsText::parse(std::string_view text) {
    SettingsText result;
    takePrefix(text, "\xEF\xBB\xBF");
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
            result.isWhole = result.isWhole && isInSection;
        } else if (!isInSection || !readEntry(line, result.values)) {
            result.isWhole = false;
        }
    }
    return result;
}

std::string SettingsText::format() const {
    std::string text = "; Written by TAVRO, which keeps the values but not comments.\n";
    text += heading;
    text += '\n';
    for (const auto& [key, value] : values) {
        text += (isPlainKey(key) ? key : inQuotes(key)) + '=' + formatted(value) + '\n';
    }
    return text;
}

} // namespace tavro::linuxos
