#pragma once

#include "PerformanceModel/Character.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tavro {

/// A line of a key script that cannot be understood. `what()` names the line and the reason.
class KeyScriptError : public std::runtime_error {
public:
    KeyScriptError(std::size_t line, const std::string& reason)
        : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}

    /// Counted from 1.
    [[nodiscard]] std::size_t line() const { return line_; }

private:
    std::size_t line_;
};

/// Commands for the headless player, one a line.
struct KeyScript {
    /// Moves the time to this moment, in milliseconds from the start.
    struct At {
        std::int64_t milliseconds;
    };

    struct Down {
        Character key;
    };

    struct Up {
        Character key;
    };

    /// Stores one setting under its JSON name.
    struct Set {
        std::string field;
        nlohmann::ordered_json value;
    };

    /// Sets one of the controls whose setters carry rules.
    struct Control {
        std::string binding;
        std::int64_t value;
    };

    struct Panic {};

    struct Show {};

    struct Quit {};

    using Command = std::variant<At, Down, Up, Set, Control, Panic, Show, Quit>;

    std::vector<Command> commands;

    /// Reads a whole script and checks every line: the commands and the number of their words, the names and
    /// types of settings, single characters for keys, a time that never goes backwards. Throws
    /// `KeyScriptError` for the first line that is wrong.
    [[nodiscard]] static KeyScript parse(std::string_view utf8);
};

} // namespace tavro
