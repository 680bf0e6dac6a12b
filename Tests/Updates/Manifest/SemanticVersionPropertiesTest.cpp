#include "Updates/Manifest/SemanticVersion.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <string>

namespace tavro {
namespace {

/// Short and from few letters, so that equal beginnings, numbers and empty identifiers meet often.
rc::Gen<std::string> prereleases() {
    return rc::gen::nonEmpty(
        rc::gen::container<std::string>(rc::gen::element('0', '1', '2', '.', '-', '+', 'a', 'B')));
}

rc::Gen<SemanticVersion> versions() {
    const auto number = rc::gen::map(rc::gen::inRange(0, 3), [](int value) { return std::int64_t{value}; });
    return rc::gen::map(
        rc::gen::tuple(number, number, number, rc::gen::maybe(prereleases())), [](const auto& parts) {
            const auto& [major, minor, patch, prerelease] = parts;
            return SemanticVersion{major, minor, patch,
                                   prerelease ? std::optional<std::string>(*prerelease) : std::nullopt};
        });
}

/// Often with the same core: then the pre-releases decide.
rc::Gen<SemanticVersion> siblings() {
    return rc::gen::oneOf(versions(), rc::gen::map(prereleases(), [](const std::string& text) {
                              return SemanticVersion{1, 0, 0, text};
                          }));
}

RC_GTEST_PROP(SemanticVersionOrder, exactlyOneOfLessGreaterAndEquivalentHolds, ()) {
    const auto a = *siblings();
    const auto b = *siblings();
    const bool isEquivalent = (a <=> b) == 0;
    RC_ASSERT((a < b) + (b < a) + isEquivalent == 1);
    RC_ASSERT((a <= b) == !(b < a));
    RC_ASSERT((a > b) == (b < a));
    RC_ASSERT((a >= b) == !(a < b));
}

RC_GTEST_PROP(SemanticVersionOrder, isTransitive, ()) {
    const auto a = *siblings();
    const auto b = *siblings();
    const auto c = *siblings();
    if (a <= b && b <= c) {
        RC_ASSERT(a <= c);
        if (a < b || b < c) {
            RC_ASSERT(a < c);
        }
    }
    if ((a <=> b) == 0 && (b <=> c) == 0) {
        RC_ASSERT(std::is_eq(a <=> c));
    }
}

RC_GTEST_PROP(SemanticVersionOrder, equalVersionsAreEquivalent, ()) {
    const auto a = *siblings();
    const auto copy = a;
    RC_ASSERT(a == copy);
    RC_ASSERT(std::is_eq(a <=> copy));
}

RC_GTEST_PROP(SemanticVersionOrder, everyPrereleaseComesBeforeItsRelease, ()) {
    auto a = *versions();
    a.prerelease = *prereleases();
    auto release = a;
    release.prerelease.reset();
    RC_ASSERT(a < release);
}

RC_GTEST_PROP(SemanticVersionText, isReadAgain, ()) {
    auto version = *versions();
    if (version.prerelease) {
        // Behind it build metadata would begin.
        std::erase(*version.prerelease, '+');
        RC_PRE(!version.prerelease->empty());
    }
    RC_ASSERT(SemanticVersion::parse(version.description()) == version);
    RC_ASSERT(SemanticVersion::parse(" v" + version.description() + "+build-1\n") == version);
}

} // namespace
} // namespace tavro
