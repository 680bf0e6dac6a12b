#include "PlatformInterfaces/UserDefaults.h"

#include <string_view>

namespace tavro {

namespace {

bool readsAsTrue(const std::string& text) {
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

} // namespace

std::optional<bool> UserDefaults::boolean(const std::string& key) const {
    const auto stored = value(key);
    if (!stored) {
        return std::nullopt;
    }
    if (const auto* const flag = std::get_if<bool>(&*stored); flag != nullptr) {
        return *flag;
    }
    if (const auto* const number = std::get_if<std::int64_t>(&*stored); number != nullptr) {
        return *number != 0;
    }
    const auto* const text = std::get_if<std::string>(&*stored);
    return text != nullptr && readsAsTrue(*text);
}

} // namespace tavro
