#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tavro {

/// The physical layouts of the typing keyboard that are served.
enum class KeyboardLayoutKind { qwertz, qwerty };

/// In the order of the picker.
inline constexpr std::array allKeyboardLayoutKinds{KeyboardLayoutKind::qwertz, KeyboardLayoutKind::qwerty};

/// The stored name: "QWERTZ" or "QWERTY".
[[nodiscard]] std::string_view rawValue(KeyboardLayoutKind kind);

/// The kind of a stored name, compared exactly; nothing for any other text.
[[nodiscard]] std::optional<KeyboardLayoutKind> keyboardLayoutKindFromRawValue(std::string_view rawValue);

/// The name in the layout picker.
[[nodiscard]] std::string_view label(KeyboardLayoutKind kind);

} // namespace tavro
