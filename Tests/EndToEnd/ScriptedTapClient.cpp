#include "ScriptedTapClient.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <iostream>

using Json = nlohmann::ordered_json;

namespace {

void print(const Json& json) {
    // In one piece, since another thread may print as well.
    std::cout << (json.dump() + "\n") << std::flush;
}

} // namespace

void ScriptedTapClient::setPlaying(bool isPlaying) {
    const std::lock_guard lock(mutex_);
    isPlaying_ = isPlaying;
}

void ScriptedTapClient::setInFront(bool isInFront) {
    const std::lock_guard lock(mutex_);
    isInFront_ = isInFront;
}

void ScriptedTapClient::setHotkey(std::int64_t keyCode, tavro::HotkeyModifiers modifiers) {
    const std::lock_guard lock(mutex_);
    hotkeyCode_ = keyCode;
    hotkeyModifiers_ = modifiers;
}

void ScriptedTapClient::setRefusing(bool isRefusing) {
    const std::lock_guard lock(mutex_);
    isRefusing_ = isRefusing;
}

std::uint64_t ScriptedTapClient::rounds() const {
    const std::lock_guard lock(mutex_);
    return rounds_;
}

bool ScriptedTapClient::awaitQuestions(std::uint64_t roundsBefore) {
    std::unique_lock lock(mutex_);
    return questionsBegan_.wait_for(lock, std::chrono::seconds(10), [&] { return rounds_ > roundsBefore; });
}

bool ScriptedTapClient::isHotkey(const Event& event) const {
    return event.type == Event::Type::keyDown && hotkeyCode_ == event.keyCode &&
           hotkeyModifiers_ == event.modifiers;
}

bool ScriptedTapClient::isPlayed(const Event& event) const {
    return isPlaying_ && !event.modifiers.makesShortcut() &&
           tavro::PhysicalKeyMapper::character(event.keyCode, tavro::KeyboardLayoutKind::qwerty).has_value();
}

bool ScriptedTapClient::isWanted(const Event& event) const {
    return !isInFront_ && (isHotkey(event) || isPlayed(event));
}

ScriptedTapClient::Verdict ScriptedTapClient::verdict(const Event& event) const {
    const std::lock_guard lock(mutex_);
    // A tap that asks for all keys asks for this one, which nobody wants, once.
    constexpr std::int64_t escape = 53;
    if (event.keyCode == escape && event.modifiers == tavro::HotkeyModifiers()) {
        ++rounds_;
        questionsBegan_.notify_all();
    }
    return isWanted(event) ? Verdict::swallow : Verdict::pass;
}

ScriptedTapClient::Verdict ScriptedTapClient::handle(const Event& event) {
    const std::lock_guard lock(mutex_);
    const auto isSwallowed = isWanted(event) && !isRefusing_;
    const auto isToggle = isSwallowed && isHotkey(event);
    if (isToggle && !event.isAutorepeat) {
        isPlaying_ = !isPlaying_;
    }
    print({{event.type == Event::Type::keyUp ? "up" : "down", event.keyCode},
           {"modifiers", event.modifiers.rawValue()},
           {"isAutorepeat", event.isAutorepeat},
           {"isHotkey", isToggle},
           {"isSwallowed", isSwallowed}});
    return isSwallowed ? Verdict::swallow : Verdict::pass;
}

void ScriptedTapClient::reportTaken(std::vector<Event> presses) {
    auto taken = Json::array();
    for (const auto& press : presses) {
        taken.push_back({press.keyCode, press.modifiers.rawValue()});
    }
    print({{"taken", taken}});
}

void ScriptedTapClient::tapEnded(tavro::KeyboardTap::End end) {
    print({{"ended", end == tavro::KeyboardTap::End::lost ? "lost" : "emergencyExit"}});
}
