#include "NoteEngine/ChordDetector.h"

#include "NoteEngine/ChordNaming.h"
#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <array>
#include <bit>
#include <initializer_list>

namespace tavro {

namespace {

constexpr IntervalSet intervals(std::initializer_list<int> semitones) {
    IntervalSet set = 0;
    for (const auto semitone : semitones) {
        set |= 1U << semitone;
    }
    return set;
}

/// Of two patterns that score alike, the earlier one names the chord.
constexpr std::array<ChordPattern, 30> patterns{{
    {intervals({0, 4, 7, 10, 2}), intervals({5, 9}), "9", 126, true},
    {intervals({0, 4, 7, 11, 2}), intervals({5, 9}), "maj9", 125, true},
    {intervals({0, 3, 7, 10, 2}), intervals({5, 9}), "m9", 124, true},
    {intervals({0, 4, 10, 2}), intervals({5, 7, 9}), "9", 121, true},
    {intervals({0, 4, 11, 2}), intervals({5, 7, 9}), "maj9", 120, true},
    {intervals({0, 3, 10, 2}), intervals({5, 7, 9}), "m9", 119, true},
    {intervals({0, 4, 7, 9, 2}), intervals({5}), "6/9", 123, true},
    {intervals({0, 4, 7, 11}), intervals({2, 5, 9}), "maj7", 114, true},
    {intervals({0, 4, 7, 10}), intervals({2, 5, 9}), "7", 113, true},
    {intervals({0, 3, 7, 10}), intervals({2, 5, 9}), "m7", 112, true},
    {intervals({0, 3, 6, 10}), intervals({2, 5, 9}), "m7b5", 111, true},
    {intervals({0, 3, 6, 9}), intervals({}), "dim7", 110, false},
    {intervals({0, 3, 7, 11}), intervals({2, 5, 9}), "mMaj7", 109, true},
    {intervals({0, 4, 8, 10}), intervals({2, 5}), "7#5", 108, true},
    {intervals({0, 4, 8, 11}), intervals({2, 5}), "maj7#5", 107, true},
    {intervals({0, 4, 7, 9}), intervals({2, 5}), "6", 99, true},
    {intervals({0, 3, 7, 9}), intervals({2, 5}), "m6", 98, true},
    {intervals({0, 2, 4, 7}), intervals({5, 9, 10, 11}), "add2", 94, true},
    {intervals({0, 4, 5, 7}), intervals({2, 9, 10, 11}), "add4", 93, true},
    {intervals({0, 4, 7}), intervals({2, 5, 9, 10, 11}), "", 88, true},
    {intervals({0, 3, 7}), intervals({2, 5, 9, 10}), "m", 87, true},
    {intervals({0, 3, 6}), intervals({2, 5, 9, 10}), "dim", 86, true},
    {intervals({0, 4, 8}), intervals({2, 5, 10, 11}), "aug", 85, true},
    {intervals({0, 2, 5, 7}), intervals({9, 10}), "sus2add4", 82, true},
    {intervals({0, 2, 5}), intervals({7, 9, 10}), "sus2add4", 76, true},
    {intervals({0, 2, 7}), intervals({5, 9, 10}), "sus2", 75, true},
    {intervals({0, 5, 7}), intervals({2, 9, 10}), "sus4", 74, true},
    {intervals({0, 4}), intervals({2, 5, 7, 9, 10, 11}), "", 66, false},
    {intervals({0, 3}), intervals({2, 5, 7, 9, 10}), "m", 65, false},
    {intervals({0, 7}), intervals({2, 5, 9, 10}), "5", 45, true},
}};

constexpr std::string_view powerChord = "5";

IntervalSet pitchClassesOf(std::span<const int> notes) {
    IntervalSet set = 0;
    for (const auto note : notes) {
        set |= 1U << ScaleEngine::pitchClass(note);
    }
    return set;
}

/// The pitch classes as intervals above a root.
IntervalSet intervalsAbove(int root, IntervalSet pitchClasses) {
    return ((pitchClasses >> root) | (pitchClasses << (12 - root))) & 0xFFFU;
}

struct Candidate {
    const ChordPattern* pattern;
    int root;
    int score;
    ChordSuffix suffix;
};

struct Scoring {
    IntervalSet pitchClasses;
    int bassPitchClass;

    /// What speaks for or against a root, whatever the pattern.
    [[nodiscard]] int ofRoot(int root) const {
        constexpr int rootSounds = 3;
        const bool isBass = root == bassPitchClass;
        // Three or fewer tones are named by their shape, more of them by what lies at the bottom.
        if (std::popcount(pitchClasses) < 4) {
            return rootSounds + (isBass ? 12 : 0);
        }
        return rootSounds + (isBass ? 40 : -18);
    }

    [[nodiscard]] static std::optional<int> ofPattern(const ChordPattern& pattern, const ChordSuffix& suffix,
                                                      IntervalSet sounding) {
        const auto extras = std::popcount(sounding & ~(pattern.required | pattern.optional));
        if (pattern.suffix == powerChord && extras > 0) {
            return std::nullopt;
        }
        const auto optionalHits = std::popcount(sounding & pattern.optional);
        return pattern.priority + (extras == 0 ? 8 : 0) + 3 * optionalHits +
               (suffix.differsFrom(pattern.suffix) ? 6 : 0) - 18 * extras;
    }
};

std::optional<Candidate> bestMatch(IntervalSet pitchClasses, int bassPitchClass) {
    const Scoring scoring{pitchClasses, bassPitchClass};
    std::optional<Candidate> best;
    for (int root = 0; root < 12; ++root) {
        if ((pitchClasses & (1U << root)) == 0) {
            continue;
        }
        const auto sounding = intervalsAbove(root, pitchClasses);
        const auto rootScore = scoring.ofRoot(root);
        for (const auto& pattern : patterns) {
            if ((pattern.required & ~sounding) != 0) {
                continue;
            }
            const auto suffix = ChordNaming::suffix(pattern, sounding);
            const auto patternScore = Scoring::ofPattern(pattern, suffix, sounding);
            if (patternScore && (!best || rootScore + *patternScore > best->score)) {
                best = Candidate{&pattern, root, rootScore + *patternScore, suffix};
            }
        }
    }
    return best;
}

std::string singlePitchClassName(std::span<const int> notes, bool preferFlats) {
    const auto lowest = std::ranges::min(notes);
    const bool isOneNote = lowest == std::ranges::max(notes);
    return isOneNote ? ScaleEngine::noteName(lowest, preferFlats)
                     : std::string(ScaleEngine::pitchName(lowest, preferFlats));
}

} // namespace

std::string ChordDetector::displayName(std::span<const int> notes, bool preferFlats) {
    if (notes.empty()) {
        return "-";
    }
    auto match = detect(notes, preferFlats);
    return match ? std::move(match->name) : "Unknown";
}

std::optional<ChordMatch> ChordDetector::detect(std::span<const int> midiNotes, bool preferFlats) {
    if (midiNotes.empty()) {
        return std::nullopt;
    }
    const auto pitchClasses = pitchClassesOf(midiNotes);
    const auto bass = ScaleEngine::pitchClass(std::ranges::min(midiNotes));
    if (std::has_single_bit(pitchClasses)) {
        return ChordMatch{singlePitchClassName(midiNotes, preferFlats), bass, 0};
    }
    const auto best = bestMatch(pitchClasses, bass);
    if (!best) {
        return std::nullopt;
    }
    return ChordMatch{std::string(ScaleEngine::pitchName(best->root, preferFlats)) +
                          ChordNaming::text(best->suffix, midiNotes, best->root),
                      best->root, best->score};
}

std::optional<int> ChordDetector::rootPitchClass(std::span<const int> midiNotes) {
    if (midiNotes.empty()) {
        return std::nullopt;
    }
    const auto pitchClasses = pitchClassesOf(midiNotes);
    const auto bass = ScaleEngine::pitchClass(std::ranges::min(midiNotes));
    if (std::has_single_bit(pitchClasses)) {
        return bass;
    }
    const auto best = bestMatch(pitchClasses, bass);
    return best ? std::optional(best->root) : std::nullopt;
}

} // namespace tavro
