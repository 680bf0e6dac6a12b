#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavro {

/// The JSON form of the Global Play hotkey.
struct StoredGlobalPlayHotkey {
    /// UTF-8.
    std::string key;
    /// Left out of the JSON when there is none.
    std::optional<std::int64_t> keyCode;
    /// Every bit is kept, known or not.
    std::int64_t modifiersRawValue = 0;

    /// One line without white space.
    [[nodiscard]] std::string encode() const;

    /// Nothing when the text is not JSON, a field is missing or one has the wrong type.
    [[nodiscard]] static std::optional<StoredGlobalPlayHotkey> decode(std::string_view json);

    friend bool operator==(const StoredGlobalPlayHotkey&, const StoredGlobalPlayHotkey&) = default;
};

} // namespace tavro
