#include "PerformanceModel/BoundedJson.h"

#include "PerformanceModel/Text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <vector>

namespace tavro {

namespace {

using Json = nlohmann::ordered_json;
using Kind = JsonTextError::Kind;

/// Lines and columns count from 1, columns in characters.
std::string placeOf(std::string_view text, std::size_t offset) {
    const auto before = text.substr(0, offset);
    const auto lineStart = before.rfind('\n') + 1;
    const auto line = std::ranges::count(before, '\n') + 1;
    const auto column = std::ranges::count_if(before.substr(lineStart), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    });
    return "line " + std::to_string(line) + ", column " + std::to_string(column + 1);
}

/// Watches the parser and stops it. One object with very many keys takes time that grows with their square,
/// as each key is looked up among those before it.
class Bounds {
public:
    bool operator()(int depth, Json::parse_event_t event, const Json& /*value*/) {
        switch (event) {
        case Json::parse_event_t::object_start:
        case Json::parse_event_t::array_start:
            if (depth >= BoundedJson::deepest) {
                throw JsonTextError(Kind::tooDeep, "objects and arrays more than " +
                                                       std::to_string(BoundedJson::deepest) +
                                                       " deep in each other");
            }
            keys_.resize(static_cast<std::size_t>(depth) + 1);
            keys_.back() = 0;
            break;
        case Json::parse_event_t::key:
            // A key is announced from inside its object.
            if (++keys_.at(static_cast<std::size_t>(depth) - 1) > BoundedJson::mostKeys) {
                throw JsonTextError(Kind::tooManyKeys, "an object with more than " +
                                                           std::to_string(BoundedJson::mostKeys) + " keys");
            }
            break;
        default:
            break;
        }
        return true;
    }

private:
    std::vector<std::size_t> keys_;
};

Json parsed(std::string_view text) {
    try {
        return Json::parse(text.begin(), text.end(), Bounds());
    } catch (const Json::parse_error& error) {
        // The byte at fault, counted from 1; one more than there are when the text is not at its end.
        const auto offset = std::max(error.byte, std::size_t{1}) - 1;
        throw JsonTextError(Kind::notJson, offset >= text.size() ? "not JSON: the text ends too early, at " +
                                                                       placeOf(text, text.size())
                                                                 : "not JSON at " + placeOf(text, offset));
    } catch (const Json::out_of_range&) {
        throw JsonTextError(Kind::notJson, "a number is too large");
    }
}

} // namespace

Json BoundedJson::parse(std::string_view utf8) {
    utf8 = withoutByteOrderMark(utf8);
    if (trimmed(utf8).empty()) {
        throw JsonTextError(Kind::empty, "empty");
    }
    if (!charactersOf(utf8)) {
        throw JsonTextError(Kind::notUtf8, "not UTF-8");
    }
    // The parser would take it for the end of the text, whatever follows.
    if (const auto zero = utf8.find('\0'); zero != std::string_view::npos) {
        throw JsonTextError(Kind::notJson, "not JSON at " + placeOf(utf8, zero));
    }
    return parsed(utf8);
}

} // namespace tavro
