#include "Platform/Linux/X11/KeyboardTapAdapter.h"

#include "Platform/Linux/X11/TapThread.h"

#include <utility>

namespace tavro::x11 {

KeyboardTapAdapter::KeyboardTapAdapter(guard::GuardProcess& guard, std::string display)
    : guard_(guard), display_(std::move(display)) {}

KeyboardTapAdapter::~KeyboardTapAdapter() {
    dispose();
}

bool KeyboardTapAdapter::isTrusted(bool /*prompts*/) {
    return true;
}

bool KeyboardTapAdapter::create(Client& client) {
    // The old one first: two at a time would take the keys from each other.
    dispose();
    thread_ = TapThread::start(client, guard_, display_);
    return thread_ != nullptr;
}

void KeyboardTapAdapter::enable(bool isOn) {
    if (thread_) {
        thread_->setOn(isOn);
    }
}

void KeyboardTapAdapter::updateVerdicts() {
    if (thread_) {
        thread_->refresh();
    }
}

void KeyboardTapAdapter::dispose() {
    thread_.reset();
}

} // namespace tavro::x11
