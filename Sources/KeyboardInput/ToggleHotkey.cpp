#include "KeyboardInput/ToggleHotkey.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"
#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"
#include "PerformanceModel/Text.h"

#include <nlohmann/json.hpp>

namespace tavro {

Character ToggleHotkey::characterOf(std::string_view text) {
    auto characters = charactersOf(text).value_or(std::u32string());
    while (!characters.empty() && isWhiteSpace(characters.back())) {
        characters.pop_back();
    }
    return characters.empty() ? U'^' : lowercased(characters.back());
}

bool ToggleHotkey::isCaretKey(std::int64_t keyCode) {
    return keyCode == 10 || keyCode == 50;
}

bool ToggleHotkey::matches(std::int64_t pressedKeyCode, HotkeyModifiers pressedModifiers,
                           KeyboardLayoutKind layoutKind) const {
    if (pressedModifiers != modifiers) {
        return false;
    }
    if (keyCode) {
        return pressedKeyCode == *keyCode;
    }
    if (character == U'^') {
        return isCaretKey(pressedKeyCode);
    }
    return PhysicalKeyMapper::character(pressedKeyCode, layoutKind) == character;
}

std::string ToggleHotkey::encode() const {
    nlohmann::ordered_json json{{"key", toUtf8(character)}};
    if (keyCode) {
        json["keyCode"] = *keyCode;
    }
    json["modifiersRawValue"] = modifiers.rawValue();
    return json.dump();
}

std::optional<ToggleHotkey> ToggleHotkey::decode(std::string_view json) {
    try {
        const auto parsed = BoundedJson::parse(json);
        if (!parsed.is_object() || !parsed.contains("key") || !parsed.contains("modifiersRawValue")) {
            return std::nullopt;
        }
        ToggleHotkey decoded{.character = characterOf(JsonDecoding::text("key", parsed["key"])),
                             .keyCode = std::nullopt,
                             .modifiers = HotkeyModifiers(
                                 JsonDecoding::integer("modifiersRawValue", parsed["modifiersRawValue"]))};
        // A null is how some writers say that there is none.
        if (const auto found = parsed.find("keyCode"); found != parsed.end() && !found->is_null()) {
            decoded.keyCode = JsonDecoding::integer("keyCode", *found);
        }
        return decoded;
    } catch (const JsonTextError&) {
        return std::nullopt;
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

} // namespace tavro
