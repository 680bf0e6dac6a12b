#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavro::naive {

/// One row of the chord table, kept as plain as it can be: the tests compare the detector with a second,
/// slow reading of its rules.
struct Pattern {
    std::set<int> required;
    std::set<int> optional;
    std::string suffix;
    int priority;
    bool allowsExtensionNaming;
};

struct Match {
    std::string name;
    int root;
    int score;
};

const std::vector<Pattern>& patterns();

/// Nothing for no notes and for notes that no pattern fits.
std::optional<Match> bestMatch(const std::vector<int>& notes, bool preferFlats);

/// The read-out.
std::string displayName(const std::vector<int>& notes, bool preferFlats);

std::string pitchName(int pitchClass, bool preferFlats);

} // namespace tavro::naive
