#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavro {

/// A version "major.minor.patch" with an optional pre-release part behind a "-". Equality compares all four
/// fields. The order is weaker: "1.0.0-01" and "1.0.0-1" differ, and neither comes before the other.
struct SemanticVersion {
    /// None is negative.
    std::int64_t major = 0;
    std::int64_t minor = 0;
    std::int64_t patch = 0;
    /// Never empty when present; otherwise any text.
    std::optional<std::string> prerelease;

    /// Nothing when the text is no version. White space around it, one "v" before it and build metadata
    /// behind a "+" are skipped.
    [[nodiscard]] static std::optional<SemanticVersion> parse(std::string_view utf8);

    /// The text form. Build metadata is not kept, so there is none in it.
    [[nodiscard]] std::string description() const;

    /// -1, 0 or 1: numeric identifiers before others and by their value, others byte by byte, the shorter of
    /// two otherwise equal lists first.
    [[nodiscard]] static int comparePrerelease(std::string_view a, std::string_view b);

    friend bool operator==(const SemanticVersion&, const SemanticVersion&) = default;
    friend std::weak_ordering operator<=>(const SemanticVersion& a, const SemanticVersion& b);
};

} // namespace tavro
