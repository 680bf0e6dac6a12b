#include "Platform/Linux/X11/Repeat/RestoreOrders.h"

#include <charconv>
#include <sstream>

namespace tavro::x11 {

namespace {

KeySet read(const std::string& line) {
    KeySet keys;
    std::istringstream words(line);
    for (std::string word; words >> word;) {
        std::size_t key = 0;
        const auto* const end = word.data() + word.size();
        const auto [stop, error] = std::from_chars(word.data(), end, key);
        if (error == std::errc() && stop == end && key < keys.size()) {
            keys.set(key);
        }
    }
    return keys;
}

} // namespace

std::string RestoreOrders::line(const KeySet& keys) {
    std::string text;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        if (keys.test(key)) {
            text += (text.empty() ? "" : " ") + std::to_string(key);
        }
    }
    return text + "\n";
}

void RestoreOrders::take(std::string_view text) {
    pending_ += text;
    for (auto end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
        keys_ = read(pending_.substr(0, end));
        pending_.erase(0, end + 1);
    }
}

} // namespace tavro::x11
