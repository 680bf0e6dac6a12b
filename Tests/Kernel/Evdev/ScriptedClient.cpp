#include "ScriptedClient.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include <map>
#include <utility>

namespace tavro::proof {

namespace {

using Type = KeyboardTap::Event::Type;
using Verdict = KeyboardTap::Verdict;

/// The kernel's code of a position.
std::uint16_t keyOf(std::int64_t virtualKeyCode) {
    static const auto keys = [] {
        std::map<std::int64_t, std::uint16_t> table;
        for (std::uint16_t key = 0; key < 768; ++key) {
            table[linuxos::EvdevKeyCodes::virtualKeyCode(key)] = key;
        }
        return table;
    }();
    return keys.at(virtualKeyCode);
}

std::string describe(const KeyboardTap::Event& event) {
    std::string text = event.type == Type::keyUp ? "up" : event.isAutorepeat ? "repeat" : "down";
    text += ' ' + std::to_string(keyOf(event.keyCode));
    if (event.modifiers != HotkeyModifiers()) {
        text += ' ';
    }
    for (const auto& [modifier, letter] :
         {std::pair(HotkeyModifiers::shift, 'S'), std::pair(HotkeyModifiers::control, 'C'),
          std::pair(HotkeyModifiers::option, 'A'), std::pair(HotkeyModifiers::command, 'M')}) {
        if (event.modifiers.contains(modifier)) {
            text += letter;
        }
    }
    return text;
}

} // namespace

bool ScriptedClient::isPlayingKey(std::uint16_t key) {
    return (key >= 2 && key <= 13) || (key >= 16 && key <= 27) || (key >= 30 && key <= 40) ||
           (key >= 44 && key <= 53);
}

void ScriptedClient::setPlaying(bool isPlaying) {
    const std::scoped_lock lock(mutex_);
    isPlaying_ = isPlaying;
}

bool ScriptedClient::isPlaying() const {
    const std::scoped_lock lock(mutex_);
    return isPlaying_;
}

std::vector<std::string> ScriptedClient::takeTold() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(told_, {});
}

int ScriptedClient::markers() const {
    const std::scoped_lock lock(mutex_);
    return markers_;
}

std::optional<KeyboardTap::End> ScriptedClient::end() const {
    const std::scoped_lock lock(mutex_);
    return end_;
}

void ScriptedClient::block() {
    const std::scoped_lock lock(mutex_);
    shallBlock_ = true;
}

void ScriptedClient::unblock() {
    {
        const std::scoped_lock lock(mutex_);
        shallBlock_ = false;
    }
    unblocked_.notify_all();
}

bool ScriptedClient::isBlocking() const {
    const std::scoped_lock lock(mutex_);
    return isBlocking_;
}

Verdict ScriptedClient::handle(const KeyboardTap::Event& event) {
    std::unique_lock lock(mutex_);
    isBlocking_ = shallBlock_;
    unblocked_.wait(lock, [this] { return !shallBlock_; });
    isBlocking_ = false;
    const auto key = keyOf(event.keyCode);
    if (key == marker) {
        markers_ += event.type == Type::keyUp ? 1 : 0;
        return Verdict::pass;
    }
    const auto verdict = verdictLocked(event);
    const auto isPlayed = verdict == Verdict::swallow && key != hotkey && event.type == Type::keyDown;
    told_.push_back(describe(event) + (isPlayed && !event.isAutorepeat ? "!" : ""));
    if (key == hotkey && verdict == Verdict::swallow && !event.isAutorepeat) {
        isPlaying_ = !isPlaying_;
    }
    return verdict;
}

Verdict ScriptedClient::verdict(const KeyboardTap::Event& event) const {
    const std::scoped_lock lock(mutex_);
    return verdictLocked(event);
}

Verdict ScriptedClient::verdictLocked(const KeyboardTap::Event& event) const {
    const auto key = keyOf(event.keyCode);
    const auto isHotkey =
        key == hotkey && event.type == Type::keyDown && event.modifiers == HotkeyModifiers();
    const auto isPlayed = isPlaying_ && isPlayingKey(key) && !event.modifiers.makesShortcut();
    return isHotkey || isPlayed ? Verdict::swallow : Verdict::pass;
}

void ScriptedClient::reportTaken(std::vector<KeyboardTap::Event> presses) {
    if (!presses.empty()) {
        const std::scoped_lock lock(mutex_);
        told_.push_back("taken " + std::to_string(presses.size()));
    }
}

void ScriptedClient::tapEnded(KeyboardTap::End end) {
    const std::scoped_lock lock(mutex_);
    end_ = end;
}

} // namespace tavro::proof
