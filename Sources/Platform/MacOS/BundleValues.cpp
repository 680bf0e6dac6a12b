#include "Platform/MacOS/BundleValues.h"

#include <vector>

namespace tavro::macos {

std::optional<QString> BundleValues::text(CFBundleRef bundle, const QString& key) {
    const auto* const name = CFStringCreateWithCharacters(
        kCFAllocatorDefault, reinterpret_cast<const UniChar*>(key.utf16()), static_cast<CFIndex>(key.size()));
    const auto* const value = CFBundleGetValueForInfoDictionaryKey(bundle, name);
    CFRelease(name);
    if (value == nullptr || CFGetTypeID(value) != CFStringGetTypeID()) {
        return std::nullopt;
    }
    auto* const string = static_cast<CFStringRef>(value);
    const auto length = CFStringGetLength(string);
    std::vector<UniChar> characters(static_cast<std::size_t>(length));
    CFStringGetCharacters(string, CFRange{0, length}, characters.data());
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(characters.data()),
                              static_cast<qsizetype>(length));
}

std::optional<QString> BundleValues::ownText(const QString& key) {
    auto* const bundle = CFBundleGetMainBundle();
    return bundle != nullptr ? text(bundle, key) : std::nullopt;
}

} // namespace tavro::macos
