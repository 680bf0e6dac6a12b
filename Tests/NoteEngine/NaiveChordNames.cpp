#include "NoteEngine/NaiveChordNames.h"

#include <algorithm>

namespace tavro::naive {

const std::vector<Pattern>& patterns() {
    static const std::vector<Pattern> table{
        {{0, 4, 7, 10, 2}, {5, 9}, "9", 126, true},       {{0, 4, 7, 11, 2}, {5, 9}, "maj9", 125, true},
        {{0, 3, 7, 10, 2}, {5, 9}, "m9", 124, true},      {{0, 4, 10, 2}, {5, 7, 9}, "9", 121, true},
        {{0, 4, 11, 2}, {5, 7, 9}, "maj9", 120, true},    {{0, 3, 10, 2}, {5, 7, 9}, "m9", 119, true},
        {{0, 4, 7, 9, 2}, {5}, "6/9", 123, true},         {{0, 4, 7, 11}, {2, 5, 9}, "maj7", 114, true},
        {{0, 4, 7, 10}, {2, 5, 9}, "7", 113, true},       {{0, 3, 7, 10}, {2, 5, 9}, "m7", 112, true},
        {{0, 3, 6, 10}, {2, 5, 9}, "m7b5", 111, true},    {{0, 3, 6, 9}, {}, "dim7", 110, false},
        {{0, 3, 7, 11}, {2, 5, 9}, "mMaj7", 109, true},   {{0, 4, 8, 10}, {2, 5}, "7#5", 108, true},
        {{0, 4, 8, 11}, {2, 5}, "maj7#5", 107, true},     {{0, 4, 7, 9}, {2, 5}, "6", 99, true},
        {{0, 3, 7, 9}, {2, 5}, "m6", 98, true},           {{0, 2, 4, 7}, {5, 9, 10, 11}, "add2", 94, true},
        {{0, 4, 5, 7}, {2, 9, 10, 11}, "add4", 93, true}, {{0, 4, 7}, {2, 5, 9, 10, 11}, "", 88, true},
        {{0, 3, 7}, {2, 5, 9, 10}, "m", 87, true},        {{0, 3, 6}, {2, 5, 9, 10}, "dim", 86, true},
        {{0, 4, 8}, {2, 5, 10, 11}, "aug", 85, true},     {{0, 2, 5, 7}, {9, 10}, "sus2add4", 82, true},
        {{0, 2, 5}, {7, 9, 10}, "sus2add4", 76, true},    {{0, 2, 7}, {5, 9, 10}, "sus2", 75, true},
        {{0, 5, 7}, {2, 9, 10}, "sus4", 74, true},        {{0, 4}, {2, 5, 7, 9, 10, 11}, "", 66, false},
        {{0, 3}, {2, 5, 7, 9, 10}, "m", 65, false},       {{0, 7}, {2, 5, 9, 10}, "5", 45, true},
    };
    return table;
}

std::string pitchName(int pitchClass, bool preferFlats) {
    const std::string sharp = "C C#D D#E F F#G G#A A#B ";
    const std::string flat = "C DbD EbE F GbG AbA BbB ";
    auto name = (preferFlats ? flat : sharp).substr(static_cast<std::size_t>(pitchClass) * 2, 2);
    if (name.back() == ' ') {
        name.pop_back();
    }
    return name;
}

namespace {

int mod12(int value) {
    while (value < 0) {
        value += 12;
    }
    return value % 12;
}

bool startsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

bool ninthIsHigh(const std::vector<int>& notes, int root) {
    std::set<int> roots;
    std::set<int> ninths;
    for (const int note : notes) {
        if (mod12(note) == root) {
            roots.insert(note);
        }
        if (mod12(note) == mod12(root + 2)) {
            ninths.insert(note);
        }
    }
    return *ninths.rbegin() - *roots.begin() >= 12;
}

std::string finalSuffix(const Pattern& pattern, const std::set<int>& intervals, const std::vector<int>& notes,
                        int root) {
    auto suffix = pattern.suffix;
    if (!pattern.allowsExtensionNaming) {
        return suffix;
    }
    std::set<int> added;
    for (const int interval : {2, 5, 9}) {
        if (intervals.contains(interval) && !pattern.required.contains(interval)) {
            added.insert(interval);
        }
    }
    if (!suffix.empty() && suffix.back() == '9') {
        added.erase(2);
    }
    if (suffix.find('7') != std::string::npos || suffix == "6") {
        if (intervals.contains(2)) {
            if (suffix == "7") {
                suffix = "9";
            } else if (suffix == "maj7") {
                suffix = "maj9";
            } else if (suffix == "m7") {
                suffix = "m9";
            } else if (suffix == "mMaj7") {
                suffix = "mMaj9";
            } else if (suffix == "m7b5") {
                suffix = "m9b5";
            }
        }
        added.erase(2);
    }
    if (added.empty()) {
        return suffix;
    }
    std::string text = "add";
    for (const int interval : added) {
        if (text != "add") {
            text += ",";
        }
        text += interval == 9 ? "6" : interval == 5 ? "4" : ninthIsHigh(notes, root) ? "9" : "2";
    }
    if (suffix.empty() || startsWith(suffix, "add") || startsWith(suffix, "sus")) {
        return suffix + text;
    }
    return suffix + " " + text;
}

} // namespace

std::optional<Match> bestMatch(const std::vector<int>& notes, bool preferFlats) {
    std::optional<Match> best;
    std::set<int> pitchClasses;
    for (const int note : notes) {
        pitchClasses.insert(mod12(note));
    }
    for (const int root : pitchClasses) {
        std::set<int> intervals;
        for (const int pitchClass : pitchClasses) {
            intervals.insert(mod12(pitchClass - root));
        }
        const bool rootIsBass = mod12(*std::min_element(notes.begin(), notes.end())) == root;
        for (const auto& pattern : patterns()) {
            bool complete = true;
            for (const int interval : pattern.required) {
                complete = complete && intervals.contains(interval);
            }
            if (!complete) {
                continue;
            }
            int extra = 0;
            int optionalHits = 0;
            for (const int interval : intervals) {
                if (pattern.optional.contains(interval)) {
                    ++optionalHits;
                }
                if (!pattern.optional.contains(interval) && !pattern.required.contains(interval)) {
                    ++extra;
                }
            }
            if (pattern.suffix == "5" && extra > 0) {
                continue;
            }
            const auto suffix = finalSuffix(pattern, intervals, notes, root);
            int score = pattern.priority + 3 + 3 * optionalHits - 18 * extra;
            if (extra == 0) {
                score += 8;
            }
            if (suffix != pattern.suffix) {
                score += 6;
            }
            if (rootIsBass) {
                score += pitchClasses.size() < 4 ? 12 : 40;
            } else if (pitchClasses.size() >= 4) {
                score -= 18;
            }
            if (!best || score > best->score) {
                best = Match{pitchName(root, preferFlats) + suffix, root, score};
            }
        }
    }
    return best;
}

std::string displayName(const std::vector<int>& notes, bool preferFlats) {
    if (notes.empty()) {
        return "-";
    }
    std::set<int> pitchClasses;
    for (const int note : notes) {
        pitchClasses.insert(mod12(note));
    }
    if (std::set<int>(notes.begin(), notes.end()).size() == 1) {
        return pitchName(*pitchClasses.begin(), preferFlats) + std::to_string(notes.front() / 12 - 1);
    }
    if (pitchClasses.size() == 1) {
        return pitchName(*pitchClasses.begin(), preferFlats);
    }
    const auto match = bestMatch(notes, preferFlats);
    return match ? match->name : "Unknown";
}

} // namespace tavro::naive
