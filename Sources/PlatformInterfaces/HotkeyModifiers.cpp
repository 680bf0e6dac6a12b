#include "PlatformInterfaces/HotkeyModifiers.h"

#include <array>

namespace tavro {

std::string HotkeyModifiers::displayPrefix(ModifierNaming naming) const {
    struct Name {
        HotkeyModifiers modifier;
        const char* symbol;
        const char* word;
    };

    // The order in which menus print them; it is not the order of the bits.
    static constexpr std::array<Name, 4> names{{
        {control, "\u2303", "Ctrl+"},
        {option, "\u2325", "Alt+"},
        {shift, "\u21E7", "Shift+"},
        {command, "\u2318", "Super+"},
    }};
    std::string prefix;
    for (const auto& name : names) {
        if (contains(name.modifier)) {
            prefix += naming == ModifierNaming::symbols ? name.symbol : name.word;
        }
    }
    return prefix;
}

} // namespace tavro
