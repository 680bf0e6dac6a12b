#include "PerformanceModel/PerformanceStateCoding.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <variant>

namespace tavro {

namespace {

using Json = nlohmann::ordered_json;

using Member =
    std::variant<std::int64_t PerformanceState::*, bool PerformanceState::*, std::string PerformanceState::*,
                 ChordMode PerformanceState::*, KeyboardLayoutKind PerformanceState::*>;

struct Field {
    std::string_view name;
    Member member;
};

const std::array<Field, 18> fields{{
    {"rootSemitone", &PerformanceState::rootSemitone},
    {"scaleName", &PerformanceState::scaleName},
    {"baseMidiC", &PerformanceState::baseMidiC},
    {"globalOctaveOffset", &PerformanceState::globalOctaveOffset},
    {"velocity", &PerformanceState::velocity},
    {"humanizeVelocity", &PerformanceState::humanizeVelocity},
    {"strumMilliseconds", &PerformanceState::strumMilliseconds},
    {"voicingComplexity", &PerformanceState::voicingComplexity},
    {"maxChordNotes", &PerformanceState::maxChordNotes},
    {"midiChannel", &PerformanceState::midiChannel},
    {"chordMode", &PerformanceState::chordMode},
    {"holdMode", &PerformanceState::holdMode},
    {"smartHoldMode", &PerformanceState::smartHoldMode},
    {"bassNoteEnabled", &PerformanceState::bassNoteEnabled},
    {"bassOctaveDown", &PerformanceState::bassOctaveDown},
    {"splitModeEnabled", &PerformanceState::splitModeEnabled},
    {"melodyOctaveOffset", &PerformanceState::melodyOctaveOffset},
    {"keyboardLayout", &PerformanceState::keyboardLayout},
}};

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};

template <class Enumeration, std::size_t count>
Enumeration decodeCase(const std::string& key, const std::array<Enumeration, count>& cases,
                       const Json& json) {
    std::string expected = "one of";
    for (std::size_t index = 0; index < count; ++index) {
        expected += index == 0 ? " " : ", ";
        expected += "\"" + std::string(rawValue(cases[index])) + "\"";
    }
    const auto& text = JsonDecoding::text(key, json, expected);
    const auto found =
        std::ranges::find(cases, std::string_view(text), [](Enumeration value) { return rawValue(value); });
    if (found == cases.end()) {
        throw DecodingError(key, expected, json);
    }
    return *found;
}

void decodeMember(PerformanceState& state, const Field& field, const Json& json) {
    const std::string key(field.name);
    std::visit(
        Overloaded{
            [&](std::int64_t PerformanceState::* member) {
                state.*member = JsonDecoding::integer(key, json);
            },
            [&](bool PerformanceState::* member) { state.*member = JsonDecoding::flag(key, json); },
            [&](std::string PerformanceState::* member) { state.*member = JsonDecoding::text(key, json); },
            [&](ChordMode PerformanceState::* member) {
                state.*member = decodeCase(key, allChordModes, json);
            },
            [&](KeyboardLayoutKind PerformanceState::* member) {
                state.*member = decodeCase(key, allKeyboardLayoutKinds, json);
            },
        },
        field.member);
}

} // namespace

Json PerformanceStateCoding::encode(const PerformanceState& state) {
    Json json = Json::object();
    for (const auto& field : fields) {
        auto& value = json[std::string(field.name)];
        std::visit(
            Overloaded{
                [&](ChordMode PerformanceState::* member) { value = rawValue(state.*member); },
                [&](KeyboardLayoutKind PerformanceState::* member) { value = rawValue(state.*member); },
                [&](auto member) { value = state.*member; },
            },
            field.member);
    }
    return json;
}

PerformanceState PerformanceStateCoding::decode(const Json& json) {
    if (!json.is_object()) {
        throw DecodingError({}, "an object with the settings of a performance", json);
    }
    PerformanceState state;
    for (const auto& field : fields) {
        const auto found = json.find(field.name);
        if (found != json.end() && !found->is_null()) {
            decodeMember(state, field, *found);
        }
    }
    return state;
}

void PerformanceStateCoding::decodeField(PerformanceState& state, std::string_view key, const Json& json) {
    const auto field = std::ranges::find(fields, key, &Field::name);
    if (field == fields.end()) {
        throw DecodingError(std::string(key), "the name of a setting before this value", json);
    }
    if (json.is_null()) {
        const PerformanceState defaults;
        std::visit([&](auto member) { state.*member = defaults.*member; }, field->member);
        return;
    }
    decodeMember(state, *field, json);
}

std::vector<std::string_view> PerformanceStateCoding::differences(const PerformanceState& left,
                                                                  const PerformanceState& right) {
    std::vector<std::string_view> names;
    for (const auto& field : fields) {
        if (std::visit([&](auto member) { return left.*member != right.*member; }, field.member)) {
            names.push_back(field.name);
        }
    }
    return names;
}

} // namespace tavro
