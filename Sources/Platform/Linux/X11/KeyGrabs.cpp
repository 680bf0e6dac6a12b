#include "Platform/Linux/X11/KeyGrabs.h"

#include "Platform/Linux/X11/Repeat/Freed.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace tavro::x11 {

namespace {

constexpr std::uint32_t grabMask =
    XCB_INPUT_XI_EVENT_MASK_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_KEY_RELEASE |
    // While a grab is active, its owner gets the raw events by the grab's mask alone.
    XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;

/// Calls the function with every key of which the table has presses.
template <class Function>
void forEachKey(const PressTable& presses, Function function) {
    for (unsigned key = 0; key <= std::numeric_limits<std::uint8_t>::max(); ++key) {
        if (presses.containsAnyOf(static_cast<std::uint8_t>(key))) {
            function(static_cast<std::uint8_t>(key));
        }
    }
}

std::vector<std::uint32_t> allVariants(const PressTable& presses, std::uint8_t key,
                                       const ModifierMap& modifierMap) {
    std::vector<std::uint32_t> bits;
    for (const auto modifiers : presses.modifiersOf(key)) {
        const auto variants = modifierMap.variants(modifiers);
        bits.insert(bits.end(), variants.begin(), variants.end());
    }
    return bits;
}

/// Those that are only in the first list.
std::vector<std::uint32_t> difference(const std::vector<std::uint32_t>& bits,
                                      const std::vector<std::uint32_t>& others) {
    std::vector<std::uint32_t> rest;
    std::ranges::copy_if(bits, std::back_inserter(rest), [&](std::uint32_t variant) {
        return std::ranges::find(others, variant) == others.end();
    });
    return rest;
}

/// The modifier bits under which somebody else has the key; without a reply, nothing is known of them.
std::vector<std::uint32_t> refusedBits(const xcb_input_xi_passive_grab_device_reply_t* reply) {
    std::vector<std::uint32_t> bits;
    if (reply != nullptr) {
        auto status = xcb_input_xi_passive_grab_device_modifiers_iterator(reply);
        for (; status.rem > 0; xcb_input_grab_modifier_info_next(&status)) {
            bits.push_back(status.data->modifiers);
        }
    }
    return bits;
}

} // namespace

void KeyGrabs::change(const PressTable& wanted, const ModifierMap& modifierMap) {
    release(held_.without(wanted), modifierMap);
    const auto missing = wanted.without(held_);
    taken_ = takenInCore(missing, modifierMap);
    grab(missing.without(taken_), modifierMap);
}

void KeyGrabs::remap(const ModifierMap& before, const ModifierMap& now) {
    forEachKey(held_, [&](std::uint8_t key) {
        const auto old = allVariants(held_, key, before);
        const auto current = allVariants(held_, key, now);
        const auto added = difference(current, old);
        if (!added.empty()) {
            for (const auto root : connection_.roots()) {
                // What another program has of it stays with that program.
                xcb_discard_reply(connection_.get(), askFor(root, key, added).sequence);
            }
        }
        ungrab(key, difference(old, current));
    });
}

void KeyGrabs::releaseAll(const ModifierMap& modifierMap) {
    release(held_, modifierMap);
    taken_ = {};
}

void KeyGrabs::release(const PressTable& presses, const ModifierMap& modifierMap) {
    forEachKey(presses, [&](std::uint8_t key) { ungrab(key, allVariants(presses, key, modifierMap)); });
    held_ = held_.without(presses);
}

PressTable KeyGrabs::takenInCore(const PressTable& presses, const ModifierMap& modifierMap) const {
    // XInput 2 would silently override the grabs of older programs; only a grab of their own kind is refused.
    struct Attempt {
        xcb_void_cookie_t cookie;
        std::uint8_t key;
        HotkeyModifiers modifiers;
    };

    auto* const xcb = connection_.get();
    std::vector<Attempt> attempts;
    forEachKey(presses, [&](std::uint8_t key) {
        for (const auto modifiers : presses.modifiersOf(key)) {
            for (const auto bits : modifierMap.variants(modifiers)) {
                const auto core = static_cast<std::uint16_t>(bits);
                for (const auto root : connection_.roots()) {
                    // Synchronous like the real one: a press that comes just now stops here instead of being
                    // lost.
                    attempts.push_back({xcb_grab_key_checked(xcb, 0, root, core, key, XCB_GRAB_MODE_ASYNC,
                                                             XCB_GRAB_MODE_SYNC),
                                        key, modifiers});
                    xcb_ungrab_key(xcb, key, root, core);
                }
            }
        }
    });
    PressTable taken;
    for (const auto& attempt : attempts) {
        if (const Freed<xcb_generic_error_t> error{xcb_request_check(xcb, attempt.cookie)}) {
            taken.insert(attempt.key, attempt.modifiers);
        }
    }
    return taken;
}

void KeyGrabs::grab(const PressTable& presses, const ModifierMap& modifierMap) {
    struct Attempt {
        std::uint8_t key;
        xcb_input_xi_passive_grab_device_cookie_t cookie;
    };

    std::vector<Attempt> attempts;
    forEachKey(presses, [&](std::uint8_t key) {
        const auto bits = allVariants(presses, key, modifierMap);
        if (bits.empty()) {
            // Modifiers that this keyboard does not have: nobody can press that.
            return;
        }
        for (const auto root : connection_.roots()) {
            attempts.push_back({key, askFor(root, key, bits)});
        }
    });
    PressTable refused;
    PressTable tried;
    for (const auto& [key, cookie] : attempts) {
        const Freed<xcb_input_xi_passive_grab_device_reply_t> reply(
            xcb_input_xi_passive_grab_device_reply(connection_.get(), cookie, nullptr));
        const auto bits = refusedBits(reply.get());
        for (const auto modifiers : presses.modifiersOf(key)) {
            const auto variants = modifierMap.variants(modifiers);
            tried.insert(key, modifiers);
            if (!reply || std::ranges::find_first_of(variants, bits) != variants.end()) {
                refused.insert(key, modifiers);
            }
        }
    }
    forEachKey(tried, [&](std::uint8_t key) {
        for (const auto modifiers : tried.modifiersOf(key)) {
            if (refused.contains(key, modifiers)) {
                // Half a key, played only while Num Lock is off or on one screen, would be worse than none.
                ungrab(key, modifierMap.variants(modifiers));
                taken_.insert(key, modifiers);
            } else {
                held_.insert(key, modifiers);
            }
        }
    });
}

xcb_input_xi_passive_grab_device_cookie_t KeyGrabs::askFor(xcb_window_t root, std::uint8_t key,
                                                           const std::vector<std::uint32_t>& bits) const {
    return xcb_input_xi_passive_grab_device(
        connection_.get(), XCB_CURRENT_TIME, root, XCB_NONE, key, connection_.keyboard(),
        static_cast<std::uint16_t>(bits.size()), 1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_SYNC,
        XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &grabMask, bits.data());
}

void KeyGrabs::ungrab(std::uint8_t key, const std::vector<std::uint32_t>& bits) const {
    if (bits.empty()) {
        return;
    }
    for (const auto root : connection_.roots()) {
        xcb_input_xi_passive_ungrab_device(connection_.get(), root, key, connection_.keyboard(),
                                           static_cast<std::uint16_t>(bits.size()),
                                           XCB_INPUT_GRAB_TYPE_KEYCODE, bits.data());
    }
}

} // namespace tavro::x11
