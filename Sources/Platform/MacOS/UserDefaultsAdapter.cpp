#include "Platform/MacOS/UserDefaultsAdapter.h"

#include <type_traits>
#include <utility>

#include <CoreFoundation/CoreFoundation.h>

namespace tavro::macos {

namespace {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// An object that this code has to release; null when it could not be had.
using Owned = std::unique_ptr<std::remove_pointer_t<CFTypeRef>, Release>;

const UInt8* bytesOf(const std::string& text) {
    return reinterpret_cast<const UInt8*>(text.data());
}

Owned cfString(const std::string& text) {
    return Owned(CFStringCreateWithBytes(kCFAllocatorDefault, bytesOf(text),
                                         static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, false));
}

CFStringRef asString(const Owned& object) {
    return static_cast<CFStringRef>(object.get());
}

Owned cfApplication(const std::string& application) {
    return application.empty() ? Owned(CFRetain(kCFPreferencesCurrentApplication)) : cfString(application);
}

Owned cfValue(const UserDefaults::Value& value) {
    if (const auto* const flag = std::get_if<bool>(&value); flag != nullptr) {
        return Owned(CFRetain(*flag ? kCFBooleanTrue : kCFBooleanFalse));
    }
    if (const auto* const text = std::get_if<std::string>(&value); text != nullptr) {
        return cfString(*text);
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value); number != nullptr) {
        return Owned(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, number));
    }
    const auto& bytes = std::get<UserDefaults::Data>(value).bytes;
    return Owned(CFDataCreate(kCFAllocatorDefault, bytesOf(bytes), static_cast<CFIndex>(bytes.size())));
}

std::string utf8(CFStringRef text) {
    const CFRange whole{0, CFStringGetLength(text)};
    CFIndex size = 0;
    CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', false, nullptr, 0, &size);
    std::string result(static_cast<std::size_t>(size), '\0');
    CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', false, reinterpret_cast<UInt8*>(result.data()),
                     size, nullptr);
    return result;
}

std::optional<UserDefaults::Value> valueIn(CFTypeRef object) {
    const auto type = CFGetTypeID(object);
    if (type == CFBooleanGetTypeID()) {
        return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
    }
    if (type == CFNumberGetTypeID()) {
        // A switch that another tool has stored as a number reads as a boolean all the same.
        std::int64_t number = 0;
        const auto isInteger =
            CFNumberGetValue(static_cast<CFNumberRef>(object), kCFNumberSInt64Type, &number) != 0;
        return isInteger ? std::optional<UserDefaults::Value>(number) : true;
    }
    if (type == CFStringGetTypeID()) {
        return utf8(static_cast<CFStringRef>(object));
    }
    if (type == CFDataGetTypeID()) {
        auto* const data = static_cast<CFDataRef>(object);
        const auto size = CFDataGetLength(data);
        std::string bytes(static_cast<std::size_t>(size), '\0');
        CFDataGetBytes(data, CFRange{0, size}, reinterpret_cast<UInt8*>(bytes.data()));
        return UserDefaults::Data{std::move(bytes)};
    }
    return std::nullopt;
}

} // namespace

UserDefaultsAdapter::UserDefaultsAdapter(std::string application) : application_(std::move(application)) {}

std::optional<UserDefaults::Value> UserDefaultsAdapter::value(const std::string& key) const {
    const auto application = cfApplication(application_);
    const auto name = cfString(key);
    if (!application || !name) {
        return std::nullopt;
    }
    // Another copy of the program may have written since.
    CFPreferencesAppSynchronize(asString(application));
    const Owned object(CFPreferencesCopyAppValue(asString(name), asString(application)));
    return object ? valueIn(object.get()) : std::nullopt;
}

bool UserDefaultsAdapter::setValue(const std::string& key, const Value& value) {
    const auto application = cfApplication(application_);
    const auto name = cfString(key);
    const auto object = cfValue(value);
    if (!application || !name || !object) {
        return false;
    }
    CFPreferencesSetAppValue(asString(name), object.get(), asString(application));
    return CFPreferencesAppSynchronize(asString(application)) != 0;
}

std::unique_ptr<UserDefaults> UserDefaultsAdapter::suite(const std::string& name) const {
    auto* const bundle = CFBundleGetMainBundle();
    auto* const own = bundle != nullptr ? CFBundleGetIdentifier(bundle) : nullptr;
    const bool isOwn = own != nullptr && utf8(own) == name;
    if (name.empty() || isOwn || name == utf8(kCFPreferencesAnyApplication) || name == "NSGlobalDomain" ||
        !cfString(name)) {
        return nullptr;
    }
    return std::unique_ptr<UserDefaults>(new UserDefaultsAdapter(name));
}

} // namespace tavro::macos
