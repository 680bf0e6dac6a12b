#include "Platform/Linux/Guard/GuardOrders.h"

#include <charconv>

namespace tavro::guard {

namespace {

// Names of ports may contain anything else.
constexpr char separator = '\0';

/// The words before the values.
namespace word {

constexpr std::string_view orders = "orders";
constexpr std::string_view repeat = "repeat ";
constexpr std::string_view connection = "connection ";
constexpr std::string_view keyboard = "keyboard ";
constexpr std::string_view copy = "copy ";
constexpr std::string_view receiver = "receiver ";
constexpr std::string_view expectsMain = "expects-main";
constexpr std::string_view expectsTap = "expects-tap";

} // namespace word

template <typename Number>
std::optional<Number> numberBehind(std::string_view name, std::string_view field) {
    Number number{};
    const auto* const end = field.data() + field.size();
    if (!field.starts_with(name)) {
        return std::nullopt;
    }
    const auto [stop, error] = std::from_chars(field.data() + name.size(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

void take(std::string_view field, GuardOrders& result) {
    if (const auto key = numberBehind<unsigned>(word::repeat, field)) {
        result.repeats.push_back(*key);
    } else if (const auto resource = numberBehind<std::uint32_t>(word::connection, field)) {
        result.connection = *resource;
    } else if (const auto file = numberBehind<int>(word::keyboard, field)) {
        result.keyboards.push_back(*file);
    } else if (const auto copyFile = numberBehind<int>(word::copy, field)) {
        result.copies.push_back(*copyFile);
    } else if (field.starts_with(word::receiver)) {
        result.receivers.emplace_back(field.substr(word::receiver.size()));
    } else if (field == word::expectsMain) {
        result.expectsMain = true;
    } else if (field == word::expectsTap) {
        result.expectsTap = true;
    }
}

} // namespace

std::string GuardOrders::text() const {
    std::string text(word::orders);
    auto add = [&text](std::string_view name, std::string_view value) {
        text += separator;
        text += name;
        text += value;
    };
    for (const auto key : repeats) {
        add(word::repeat, std::to_string(key));
    }
    add(word::connection, std::to_string(connection));
    for (const auto file : keyboards) {
        add(word::keyboard, std::to_string(file));
    }
    for (const auto file : copies) {
        add(word::copy, std::to_string(file));
    }
    for (const auto& name : receivers) {
        add(word::receiver, name);
    }
    if (expectsMain) {
        add(word::expectsMain, {});
    }
    if (expectsTap) {
        add(word::expectsTap, {});
    }
    return text;
}

std::optional<GuardOrders> GuardOrders::read(std::string_view text) {
    GuardOrders result;
    auto isFirst = true;
    while (true) {
        const auto end = text.find(separator);
        const auto field = text.substr(0, end);
        if (isFirst && field != word::orders) {
            return std::nullopt;
        }
        take(field, result);
        isFirst = false;
        if (end == std::string_view::npos) {
            return result;
        }
        text.remove_prefix(end + 1);
    }
}

} // namespace tavro::guard
