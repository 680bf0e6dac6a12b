#include "Expectations.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace tavro::proof {

namespace {

std::string joined(const std::vector<std::string>& words) {
    std::string text = "[";
    for (const auto& word : words) {
        text += (text.size() == 1 ? "" : ", ") + word;
    }
    return text + "]";
}

} // namespace

void expect(bool condition, const std::string& words) {
    if (!condition) {
        throw std::runtime_error(words);
    }
}

void expectEqual(const std::string& actual, const std::string& expected, const std::string& what) {
    expect(actual == expected, what + ": " + actual + " instead of " + expected);
}

void expectEqual(const std::vector<std::string>& actual, const std::vector<std::string>& expected,
                 const std::string& what) {
    if (actual == expected) {
        return;
    }
    const auto [at, other] = std::ranges::mismatch(actual, expected);
    const auto place = at - actual.begin();
    constexpr std::ptrdiff_t shown = 12;
    auto around = [place](const std::vector<std::string>& words) {
        const auto size = std::ssize(words);
        return joined({words.begin() + std::max<std::ptrdiff_t>(0, std::min(size, place - 4)),
                       words.begin() + std::min(size, place + shown)});
    };
    expect(false, what + ", " + std::to_string(actual.size()) + " instead of " +
                      std::to_string(expected.size()) + ", different from place " + std::to_string(place) +
                      ": " + around(actual) + " instead of " + around(expected));
}

void waitFor(const std::function<bool()>& condition, const std::string& words) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition()) {
        expect(std::chrono::steady_clock::now() < deadline, "waited in vain for " + words);
    }
}

} // namespace tavro::proof
