#include "Platform/Linux/Desktop/AutostartEntry.h"

#include "PerformanceModel/Character.h"
#include "PerformanceModel/Text.h"

#include <algorithm>
#include <map>

namespace tavro::linuxos {

namespace {

/// As the value of any key: the first of the two levels of quoting.
std::string asValue(std::string_view text) {
    std::string value;
    for (const char character : text) {
        switch (character) {
        case '\\':
            value += "\\\\";
            break;
        case '\n':
            value += "\\n";
            break;
        case '\r':
            value += "\\r";
            break;
        case '\t':
            value += "\\t";
            break;
        case ' ':
            // Readers drop blanks at the beginning.
            value += value.empty() ? "\\s" : " ";
            break;
        default:
            value += character;
        }
    }
    return value;
}

/// As one word of a command line: quoted like for a shell, with % doubled since it introduces a field code.
std::string asArgument(std::string_view text) {
    std::string argument = "\"";
    for (const char character : text) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) {
            argument += '\\';
        } else if (character == '%') {
            argument += '%';
        }
        argument += character;
    }
    return argument + '"';
}

std::string asCommand(std::string_view program) {
    // The first word may not have an equals sign, and GNOME looks for it with the percent sign still doubled.
    const bool canBeFirst = program.find_first_of("=%") == std::string_view::npos;
    return (canBeFirst ? std::string() : "/bin/sh -c " + asArgument("exec \"$0\"") + ' ') +
           asArgument(program);
}

/// The values of the group that counts; nothing when it is not there.
std::optional<std::map<std::string_view, std::string_view>> entryGroup(std::string_view text) {
    std::optional<std::map<std::string_view, std::string_view>> values;
    bool isInGroup = false;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const auto equals = line.find('=');
        if (line.substr(0, 1) == "[") {
            isInGroup = line == "[Desktop Entry]";
            if (isInGroup && !values) {
                values.emplace();
            }
        } else if (isInGroup && line.substr(0, 1) != "#" && equals != std::string_view::npos) {
            values->insert_or_assign(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    }
    return values;
}

} // namespace

std::optional<std::string> AutostartEntry::text(const std::string& program) {
    if (!charactersOf(program)) {
        return std::nullopt;
    }
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Version=1.0\n"
           "Name=TAVRO\n"
           "Comment=The typing keyboard as a MIDI instrument\n"
           "TryExec=" +
           asValue(program) + "\nExec=" + asValue(asCommand(program)) +
           "\nTerminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

std::optional<AutostartEntry> AutostartEntry::parse(std::string_view text) {
    const auto group = entryGroup(text);
    if (!group) {
        return std::nullopt;
    }
    const auto has = [&](std::string_view key, std::string_view value) {
        const auto found = group->find(key);
        return found != group->end() && found->second == value;
    };
    // One that is hidden may have nothing else in it.
    if (has("Hidden", "true") || has("X-GNOME-Autostart-enabled", "false")) {
        return AutostartEntry{.isHidden = true};
    }
    const auto command = group->find("Exec");
    const bool canStart = has("Type", "Application") && command != group->end() && !command->second.empty();
    return canStart ? std::optional(AutostartEntry{}) : std::nullopt;
}

} // namespace tavro::linuxos
