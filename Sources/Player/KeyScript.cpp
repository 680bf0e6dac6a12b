#include "Player/KeyScript.h"

#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/PerformanceStateCoding.h"
#include "PerformanceModel/Text.h"
#include "Player/ControlBinding.h"

#include <charconv>
#include <functional>
#include <map>

namespace tavro {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view blanks = " \t";
/// Some thirty years; what is scheduled after it still fits the clock.
constexpr std::int64_t latestTime = 1'000'000'000'000;

/// The first word, which is cut off the text, and the blanks behind it with it.
std::string_view takeWord(std::string_view& text) {
    const auto end = std::min(text.find_first_of(blanks), text.size());
    const auto word = text.substr(0, end);
    text = trimmed(text.substr(end));
    return word;
}

std::string quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

/// Reads line after line. Any exception out of `parseLine` is the reason why the line is wrong.
class Parser {
public:
    KeyScript::Command parseCommand(std::string_view line) {
        const auto name = takeWord(line);
        const auto found = commands.find(name);
        if (found == commands.end()) {
            throw std::runtime_error(quoted(name) + " is no command; there are at, down, up, set, control, "
                                                    "panic, show and quit");
        }
        return found->second(*this, line);
    }

private:
    using Reader = std::function<KeyScript::Command(Parser&, std::string_view)>;

    KeyScript::Command at(std::string_view arguments) {
        std::int64_t milliseconds = 0;
        const auto* end = arguments.data() + arguments.size();
        const auto [stopped, error] = std::from_chars(arguments.data(), end, milliseconds);
        if (error != std::errc() || stopped != end || milliseconds < 0 || milliseconds > latestTime) {
            throw std::runtime_error("at needs a whole number of milliseconds from 0 to " +
                                     std::to_string(latestTime) + ", not " + quoted(arguments));
        }
        if (milliseconds < time_) {
            throw std::runtime_error("the time cannot go back from " + std::to_string(time_) + " to " +
                                     std::to_string(milliseconds) + " ms");
        }
        time_ = milliseconds;
        return KeyScript::At{milliseconds};
    }

    static Character key(std::string_view arguments) {
        const auto characters = charactersOf(arguments);
        if (!characters || characters->size() != 1) {
            throw std::runtime_error("a key is exactly one character, not " + quoted(arguments));
        }
        return characters->front();
    }

    static Json json(std::string_view text) {
        if (text.empty()) {
            throw std::runtime_error("a JSON value is missing");
        }
        try {
            return BoundedJson::parse(text);
        } catch (const JsonTextError& error) {
            const bool isMean = error.kind() == JsonTextError::Kind::tooDeep ||
                                error.kind() == JsonTextError::Kind::tooManyKeys;
            throw std::runtime_error(isMean ? error.what() : quoted(text) + " is not JSON");
        }
    }

    static KeyScript::Command set(std::string_view arguments) {
        const auto field = takeWord(arguments);
        KeyScript::Set command{std::string(field), json(arguments)};
        PerformanceState scratch;
        PerformanceStateCoding::decodeField(scratch, command.field, command.value);
        return command;
    }

    static KeyScript::Command control(std::string_view arguments) {
        const auto binding = takeWord(arguments);
        const auto* control = ControlBinding::find(binding);
        if (control == nullptr) {
            throw std::runtime_error(quoted(binding) + " is no control");
        }
        return KeyScript::Control{std::string(binding), control->decode(json(arguments))};
    }

    template <class Command>
    static KeyScript::Command plain(std::string_view arguments) {
        if (!arguments.empty()) {
            throw std::runtime_error("nothing may follow this command, found " + quoted(arguments));
        }
        return Command{};
    }

    static const std::map<std::string_view, Reader> commands;
    std::int64_t time_ = 0;
};

const std::map<std::string_view, Parser::Reader> Parser::commands{
    {"at", [](Parser& parser, std::string_view rest) { return parser.at(rest); }},
    {"down", [](Parser&, std::string_view rest) { return KeyScript::Down{key(rest)}; }},
    {"up", [](Parser&, std::string_view rest) { return KeyScript::Up{key(rest)}; }},
    {"set", [](Parser&, std::string_view rest) { return set(rest); }},
    {"control", [](Parser&, std::string_view rest) { return control(rest); }},
    {"panic", [](Parser&, std::string_view rest) { return plain<KeyScript::Panic>(rest); }},
    {"show", [](Parser&, std::string_view rest) { return plain<KeyScript::Show>(rest); }},
    {"quit", [](Parser&, std::string_view rest) { return plain<KeyScript::Quit>(rest); }},
};

} // namespace

KeyScript KeyScript::parse(std::string_view utf8) {
    utf8 = withoutByteOrderMark(utf8);
    KeyScript script;
    Parser parser;
    for (std::size_t number = 1; !utf8.empty(); ++number) {
        const auto end = std::min(utf8.find('\n'), utf8.size());
        const auto line = trimmed(utf8.substr(0, end));
        utf8.remove_prefix(std::min(end + 1, utf8.size()));
        if (!charactersOf(line)) {
            throw KeyScriptError(number, "the text is not UTF-8");
        }
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        try {
            script.commands.push_back(parser.parseCommand(line));
        } catch (const std::exception& reason) {
            throw KeyScriptError(number, reason.what());
        }
    }
    return script;
}

} // namespace tavro
