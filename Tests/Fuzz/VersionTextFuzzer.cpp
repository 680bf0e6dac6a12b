#include "Require.h"
#include "Updates/Manifest/SemanticVersion.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

using tavro::require;
using tavro::SemanticVersion;

namespace {

void checkOrder(const SemanticVersion& a, const SemanticVersion& b) {
    require((a < b) + (b < a) + std::is_eq(a <=> b) == 1, "two versions are in one order");
    require(!(a == b) || std::is_eq(a <=> b), "equal versions are not ordered");
    const auto release = [](SemanticVersion version) {
        version.prerelease.reset();
        return version;
    };
    require(a <= release(a), "a release comes last");
    require(!(release(a) < release(b)) || a < b, "the numbers decide first");
}

} // namespace

/// Two versions, with a line feed between them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto middle = text.find('\n');
    const auto first = SemanticVersion::parse(text.substr(0, middle));
    const auto second =
        SemanticVersion::parse(middle == std::string_view::npos ? text : text.substr(middle + 1));
    if (first) {
        require(first->major >= 0 && first->minor >= 0 && first->patch >= 0, "no number is negative");
        require(!first->prerelease || !first->prerelease->empty(), "a pre-release is not empty");
        // White space at the end would be trimmed.
        const auto& prerelease = first->prerelease;
        if (!prerelease || (prerelease->back() > ' ' && prerelease->back() <= '~')) {
            require(SemanticVersion::parse(first->description()) == first, "the text form is read again");
        }
    }
    if (first && second) {
        checkOrder(*first, *second);
        checkOrder(*second, *first);
    }
    const auto order = SemanticVersion::comparePrerelease(text.substr(0, size / 2), text.substr(size / 2));
    require(order == -SemanticVersion::comparePrerelease(text.substr(size / 2), text.substr(0, size / 2)),
            "the other way round the order is the opposite");
    return 0;
}
