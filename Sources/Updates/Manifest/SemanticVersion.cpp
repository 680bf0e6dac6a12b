#include "Updates/Manifest/SemanticVersion.h"

#include "PerformanceModel/Text.h"

#include <charconv>
#include <tuple>

namespace tavro {

namespace {

/// A whole decimal number with or without its sign.
std::optional<std::int64_t> integer(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        // The conversion would take a second sign.
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    std::int64_t value = 0;
    const auto* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

std::optional<std::int64_t> versionNumber(std::string_view text) {
    const auto number = integer(text);
    return number && *number >= 0 ? number : std::nullopt;
}

/// The text before the separator; `rest` becomes what stands behind it, or nothing.
std::string_view cutAt(char separator, std::optional<std::string_view>& rest) {
    const auto text = rest.value_or(std::string_view());
    const auto place = text.find(separator);
    rest = place == std::string_view::npos ? std::nullopt : std::optional(text.substr(place + 1));
    return text.substr(0, place);
}

int compareIdentifiers(std::string_view a, std::string_view b) {
    const auto numberA = integer(a);
    const auto numberB = integer(b);
    if (numberA && numberB) {
        return *numberA == *numberB ? 0 : *numberA < *numberB ? -1 : 1;
    }
    if (numberA || numberB) {
        return numberA ? -1 : 1;
    }
    const auto order = a.compare(b);
    return order == 0 ? 0 : order < 0 ? -1 : 1;
}

} // namespace

std::optional<SemanticVersion> SemanticVersion::parse(std::string_view utf8) {
    auto text = trimmed(utf8);
    if (text.starts_with('v')) {
        text.remove_prefix(1);
    }
    std::optional<std::string_view> prerelease = text.substr(0, text.find('+'));
    std::optional<std::string_view> core = cutAt('-', prerelease);
    if (prerelease && prerelease->empty()) {
        return std::nullopt;
    }
    const auto major = versionNumber(cutAt('.', core));
    const auto minor = core ? versionNumber(cutAt('.', core)) : std::nullopt;
    const auto patch = core ? versionNumber(cutAt('.', core)) : std::nullopt;
    if (core || !major || !minor || !patch) {
        return std::nullopt;
    }
    return SemanticVersion{.major = *major,
                           .minor = *minor,
                           .patch = *patch,
                           .prerelease = prerelease ? std::optional(std::string(*prerelease)) : std::nullopt};
}

std::string SemanticVersion::description() const {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch) +
           (prerelease ? "-" + *prerelease : "");
}

int SemanticVersion::comparePrerelease(std::string_view a, std::string_view b) {
    std::optional restA(a);
    std::optional restB(b);
    while (restA && restB) {
        const auto identifierA = cutAt('.', restA);
        const auto order = compareIdentifiers(identifierA, cutAt('.', restB));
        if (order != 0) {
            return order;
        }
    }
    return restA ? 1 : restB ? -1 : 0;
}

std::weak_ordering operator<=>(const SemanticVersion& a, const SemanticVersion& b) {
    const auto cores = std::tie(a.major, a.minor, a.patch) <=> std::tie(b.major, b.minor, b.patch);
    if (cores != 0) {
        return cores;
    }
    if (!a.prerelease || !b.prerelease) {
        // What comes before a release has a part more than the release.
        return b.prerelease.has_value() <=> a.prerelease.has_value();
    }
    return SemanticVersion::comparePrerelease(*a.prerelease, *b.prerelease) <=> 0;
}

} // namespace tavro
