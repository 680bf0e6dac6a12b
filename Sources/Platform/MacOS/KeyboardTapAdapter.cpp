#include "Platform/MacOS/KeyboardTapAdapter.h"

#include <utility>

#include <ApplicationServices/ApplicationServices.h>

namespace tavro::macos {

namespace {

using Event = KeyboardTap::Event;

// Of the modifiers only those that make a hotkey; changes of the modifiers by themselves are not tapped.
constexpr CGEventMask keyPressesAndReleases = CGEventMaskBit(kCGEventKeyDown) | CGEventMaskBit(kCGEventKeyUp);

HotkeyModifiers modifiersOf(CGEventFlags flags) {
    HotkeyModifiers modifiers;
    const auto add = [&](CGEventFlags flag, HotkeyModifiers modifier) {
        if ((flags & flag) != 0) {
            modifiers |= modifier;
        }
    };
    add(kCGEventFlagMaskCommand, HotkeyModifiers::command);
    add(kCGEventFlagMaskControl, HotkeyModifiers::control);
    add(kCGEventFlagMaskAlternate, HotkeyModifiers::option);
    add(kCGEventFlagMaskShift, HotkeyModifiers::shift);
    return modifiers;
}

Event::Type typeOf(CGEventType type) {
    switch (type) {
    case kCGEventKeyDown:
        return Event::Type::keyDown;
    case kCGEventKeyUp:
        return Event::Type::keyUp;
    case kCGEventTapDisabledByTimeout:
        return Event::Type::disabledByTimeout;
    case kCGEventTapDisabledByUserInput:
        return Event::Type::disabledByUserInput;
    default:
        return Event::Type::other;
    }
}

Event eventOf(CGEventType type, CGEventRef event) {
    Event translated{.type = typeOf(type)};
    if (translated.type == Event::Type::keyDown || translated.type == Event::Type::keyUp) {
        translated.keyCode = CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode);
        translated.modifiers = modifiersOf(CGEventGetFlags(event));
        translated.isAutorepeat = CGEventGetIntegerValueField(event, kCGKeyboardEventAutorepeat) != 0;
    }
    return translated;
}

CGEventRef globalKeyboardCallback(CGEventTapProxy /*proxy*/, CGEventType type, CGEventRef event,
                                  void* refcon) {
    if (refcon == nullptr) {
        return event;
    }
    auto& client = *static_cast<KeyboardTap::Client*>(refcon);
    const auto verdict = client.handle(eventOf(type, event));
    return verdict == KeyboardTap::Verdict::pass ? event : nullptr;
}

} // namespace

KeyboardTapAdapter::~KeyboardTapAdapter() {
    dispose();
}

bool KeyboardTapAdapter::isTrusted(bool prompts) {
    const void* keys[] = {kAXTrustedCheckOptionPrompt};
    const void* values[] = {prompts ? kCFBooleanTrue : kCFBooleanFalse};
    const auto* options =
        CFDictionaryCreate(kCFAllocatorDefault, keys, values, 1, &kCFTypeDictionaryKeyCallBacks,
                           &kCFTypeDictionaryValueCallBacks);
    const bool isTrusted = AXIsProcessTrustedWithOptions(options) != 0;
    CFRelease(options);
    return isTrusted;
}

bool KeyboardTapAdapter::create(Client& client) {
    eventTap_ = CGEventTapCreate(kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault,
                                 keyPressesAndReleases, globalKeyboardCallback, &client);
    if (eventTap_ == nullptr) {
        return false;
    }
    runLoopSource_ = CFMachPortCreateRunLoopSource(kCFAllocatorDefault, eventTap_, 0);
    CFRunLoopAddSource(CFRunLoopGetMain(), runLoopSource_, kCFRunLoopCommonModes);
    return true;
}

void KeyboardTapAdapter::enable(bool isOn) {
    if (eventTap_ != nullptr) {
        CGEventTapEnable(eventTap_, isOn);
    }
}

void KeyboardTapAdapter::updateVerdicts() {
    // Every event asks for its own verdict when it comes.
}

void KeyboardTapAdapter::dispose() {
    if (auto* const tap = std::exchange(eventTap_, nullptr); tap != nullptr) {
        CGEventTapEnable(tap, false);
        CFMachPortInvalidate(tap);
        CFRelease(tap);
    }
    if (auto* const source = std::exchange(runLoopSource_, nullptr); source != nullptr) {
        CFRunLoopRemoveSource(CFRunLoopGetMain(), source, kCFRunLoopCommonModes);
        CFRelease(source);
    }
}

} // namespace tavro::macos
