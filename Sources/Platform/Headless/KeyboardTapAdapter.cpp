#include "Platform/Headless/KeyboardTapAdapter.h"

namespace tavro::headless {

bool KeyboardTapAdapter::isTrusted(bool prompts) {
    calls.push_back(prompts ? Call::isTrustedWithPrompt : Call::isTrusted);
    return answersTrusted;
}

bool KeyboardTapAdapter::create(Client& client) {
    calls.push_back(Call::create);
    if (answersCreated) {
        client_ = &client;
    }
    return answersCreated;
}

void KeyboardTapAdapter::enable(bool isOn) {
    calls.push_back(isOn ? Call::enable : Call::disable);
    isEnabled_ = isOn;
}

void KeyboardTapAdapter::updateVerdicts() {
    calls.push_back(Call::updateVerdicts);
}

void KeyboardTapAdapter::dispose() {
    calls.push_back(Call::dispose);
    client_ = nullptr;
    isEnabled_ = false;
}

std::string KeyboardTapAdapter::adviceOnTrust() const {
    return advice;
}

} // namespace tavro::headless
