#pragma once

#include "Concurrency/VirtualMainActor.h"
#include "Performance/GlobalKeyboardController.h"
#include "Platform/Headless/KeyboardTapAdapter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tavro {

/// A controller over a tap whose events the test makes, with what it tells written down in order.
class GlobalKeyboardFixture : public testing::Test {
protected:
    using Call = headless::KeyboardTapAdapter::Call;
    using Type = KeyboardTap::Event::Type;
    using Verdict = KeyboardTap::Verdict;

    static constexpr std::int64_t keyA = 0;
    static constexpr std::int64_t keyS = 1;
    static constexpr std::int64_t keyGrave = 50;

    GlobalKeyboardFixture() {
        tap.answersCreated = true;
        controller->onKeyDown = [this](Character key) { happened.push_back("down " + toUtf8(key)); };
        controller->onKeyUp = [this](Character key) { happened.push_back("up " + toUtf8(key)); };
        controller->onPanic = [this] {
            happened.push_back(controller->isEnabled() ? "panic while on" : "panic while off");
        };
        QObject::connect(controller.get(), &GlobalKeyboardController::isEnabledChanged, controller.get(),
                         [this, observed = controller.get()] {
                             happened.push_back(observed->isEnabled() ? "on" : "off");
                         });
    }

    Verdict down(std::int64_t key, HotkeyModifiers modifiers = {}) {
        return tap.client()->handle({.type = Type::keyDown, .keyCode = key, .modifiers = modifiers});
    }

    Verdict up(std::int64_t key) { return tap.client()->handle({.type = Type::keyUp, .keyCode = key}); }

    std::vector<std::string> takeHappened() { return std::exchange(happened, {}); }

    std::vector<Call> takeCalls() { return std::exchange(tap.calls, {}); }

    std::string status() const { return controller->statusText().toStdString(); }

    // What the controller tells when it goes is still noted.
    std::vector<std::string> happened;
    headless::KeyboardTapAdapter tap;
    VirtualMainActor mainActor;
    std::shared_ptr<PressedKeys> keys = std::make_shared<PressedKeys>();
    std::unique_ptr<GlobalKeyboardController> controller =
        std::make_unique<GlobalKeyboardController>(tap, mainActor, keys);
};

} // namespace tavro
