#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavro {

/// One key of the typing keyboard, named by the character that its layout prints on it: a single
/// Unicode scalar in composed form.
using Character = char32_t;

/// The character of events that no key caused.
inline constexpr Character noKey = U'\0';

/// The lower-case form, by the simple (one to one) case mapping; characters without one are returned
/// unchanged.
[[nodiscard]] Character lowercased(Character character);

/// The character in UTF-8. A value that is no Unicode scalar yields the empty string.
[[nodiscard]] std::string toUtf8(Character character);

/// The characters of a UTF-8 text, composed first, so that "o" with a combining diaeresis is one
/// character. Nothing when the text is not valid UTF-8.
[[nodiscard]] std::optional<std::u32string> charactersOf(std::string_view utf8);

} // namespace tavro
