#include "Platform/Linux/X11/KeyboardDescription.h"

#include "Platform/Linux/X11/Connection.h"
#include "Platform/Linux/X11/Repeat/Freed.h"

#include <algorithm>

namespace tavro::x11 {

std::optional<KeyboardDescription> KeyboardDescription::read(const Connection& connection) {
    auto* const xcb = connection.get();
    const auto* const setup = xcb_get_setup(xcb);
    const auto first = setup->min_keycode;
    const auto symbolsAsked =
        xcb_get_keyboard_mapping(xcb, first, static_cast<std::uint8_t>(setup->max_keycode - first + 1));
    const auto modifiersAsked = xcb_get_modifier_mapping(xcb);
    const Freed<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(xcb, symbolsAsked, nullptr));
    const Freed<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(xcb, modifiersAsked, nullptr));
    if (!symbols || !modifiers) {
        return std::nullopt;
    }
    const auto* const firstSymbol = xcb_get_keyboard_mapping_keysyms(symbols.get());
    const auto* const firstModifierKey = xcb_get_modifier_mapping_keycodes(modifiers.get());
    return KeyboardDescription{
        .firstKey = first,
        .symbolsPerKey = std::max<std::size_t>(1, symbols->keysyms_per_keycode),
        .symbols = {firstSymbol, firstSymbol + xcb_get_keyboard_mapping_keysyms_length(symbols.get())},
        .keysPerModifier = modifiers->keycodes_per_modifier,
        .modifierKeys = {firstModifierKey,
                         firstModifierKey + xcb_get_modifier_mapping_keycodes_length(modifiers.get())},
    };
}

std::span<const std::uint32_t> KeyboardDescription::symbolsOf(std::uint8_t key) const {
    if (key < firstKey) {
        return {};
    }
    const auto begin = std::size_t{key} - firstKey;
    if ((begin + 1) * symbolsPerKey > symbols.size()) {
        return {};
    }
    return std::span(symbols).subspan(begin * symbolsPerKey, symbolsPerKey);
}

std::span<const std::uint8_t> KeyboardDescription::keysOfModifier(std::size_t modifier) const {
    if ((modifier + 1) * keysPerModifier > modifierKeys.size()) {
        return {};
    }
    return std::span(modifierKeys).subspan(modifier * keysPerModifier, keysPerModifier);
}

} // namespace tavro::x11
