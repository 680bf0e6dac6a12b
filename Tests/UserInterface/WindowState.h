#pragma once

#include <algorithm>
#include <array>
#include <ostream>
#include <string>
#include <string_view>

namespace tavro {

/// How the window stands while it is looked at.
enum class WindowState {
    standard,
    advancedOpen,
    settingsOpen,
    bothOpen,
    chordHeld,
    splitMode,
    tour,
    smallest,
    menuOpen,
    pickerOpen,
    numberEdited,
    alert,
    nothingListens,
};

/// The states that there is a picture of.
inline constexpr std::array picturedStates{
    WindowState::standard,  WindowState::advancedOpen, WindowState::settingsOpen, WindowState::bothOpen,
    WindowState::chordHeld, WindowState::splitMode,    WindowState::tour,         WindowState::smallest};

inline constexpr std::array allStates{
    WindowState::standard,      WindowState::advancedOpen, WindowState::settingsOpen, WindowState::bothOpen,
    WindowState::chordHeld,     WindowState::splitMode,    WindowState::tour,         WindowState::smallest,
    WindowState::menuOpen,      WindowState::pickerOpen,   WindowState::numberEdited, WindowState::alert,
    WindowState::nothingListens};

/// Also the name of the state's picture.
constexpr std::string_view nameOf(WindowState state) {
    switch (state) {
    case WindowState::standard:
        return "default";
    case WindowState::advancedOpen:
        return "advanced";
    case WindowState::settingsOpen:
        return "settings";
    case WindowState::bothOpen:
        return "advanced-and-settings";
    case WindowState::chordHeld:
        return "chord";
    case WindowState::splitMode:
        return "split-mode";
    case WindowState::tour:
        return "tour";
    case WindowState::smallest:
        return "smallest";
    case WindowState::menuOpen:
        return "menu";
    case WindowState::pickerOpen:
        return "picker";
    case WindowState::numberEdited:
        return "number";
    case WindowState::alert:
        return "alert";
    case WindowState::nothingListens:
        return "nothing-listens";
    }
    return {};
}

/// The same as the name of a test can have it.
inline std::string identifierOf(WindowState state) {
    std::string name(nameOf(state));
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

inline void PrintTo(WindowState state, std::ostream* stream) {
    *stream << nameOf(state);
}

} // namespace tavro
