#include "NoteEngine/ChordNaming.h"

#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace tavro {

namespace {

constexpr IntervalSet ninth = 1U << 2;
constexpr IntervalSet fourth = 1U << 5;
constexpr IntervalSet sixth = 1U << 9;
constexpr IntervalSet nameableTones = ninth | fourth | sixth;

constexpr std::array<std::pair<std::string_view, std::string_view>, 5> ninthForms{{
    {"7", "9"},
    {"maj7", "maj9"},
    {"m7", "m9"},
    {"mMaj7", "mMaj9"},
    {"m7b5", "m9b5"},
}};

std::string_view raisedToNinth(std::string_view suffix) {
    const auto found = std::ranges::find(ninthForms, suffix, &decltype(ninthForms)::value_type::first);
    return found == ninthForms.end() ? suffix : found->second;
}

/// Whether the tone is voiced above the octave of the root note, where a second reads as a ninth.
bool usesUpperExtension(int interval, std::span<const int> notes, int rootPitchClass) {
    auto lowestRoot = std::numeric_limits<int>::max();
    for (const auto note : notes) {
        if (ScaleEngine::pitchClass(note) == rootPitchClass) {
            lowestRoot = std::min(lowestRoot, note);
        }
    }
    const auto tone = ScaleEngine::pitchClass(rootPitchClass + interval);
    return std::ranges::any_of(
        notes, [&](int note) { return ScaleEngine::pitchClass(note) == tone && note - 12 >= lowestRoot; });
}

} // namespace

ChordSuffix ChordNaming::suffix(const ChordPattern& pattern, IntervalSet intervals) {
    if (!pattern.allowsExtensionNaming) {
        return {pattern.suffix, 0};
    }
    ChordSuffix suffix{pattern.suffix, intervals & nameableTones & ~pattern.required};
    const bool isSeventhChord = pattern.suffix.find('7') != std::string_view::npos || pattern.suffix == "6";
    if (isSeventhChord && (intervals & ninth) != 0) {
        // A six chord and the augmented sevenths have no ninth form; the ninth goes unsaid there.
        suffix.base = raisedToNinth(pattern.suffix);
        suffix.addedTones &= ~ninth;
    }
    return suffix;
}

std::string ChordNaming::text(const ChordSuffix& suffix, std::span<const int> notes, int rootPitchClass) {
    std::string text(suffix.base);
    if (suffix.addedTones == 0) {
        return text;
    }
    if (!text.empty() && !text.starts_with("add") && !text.starts_with("sus")) {
        text += ' ';
    }
    text += "add";
    const char* separator = "";
    const auto append = [&](IntervalSet tone, const char* degree) {
        if ((suffix.addedTones & tone) != 0) {
            text.append(separator).append(degree);
            separator = ",";
        }
    };
    append(ninth, usesUpperExtension(2, notes, rootPitchClass) ? "9" : "2");
    append(fourth, "4");
    append(sixth, "6");
    return text;
}

} // namespace tavro
