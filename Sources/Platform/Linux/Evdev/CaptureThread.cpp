#include "Platform/Linux/Evdev/CaptureThread.h"

#include "Platform/Linux/Evdev/EmergencyExit.h"
#include "Platform/Linux/Evdev/HeldModifiers.h"
#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <utility>
#include <vector>

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>

namespace tavro::evdev {

CaptureThread::CaptureThread(KeyboardTap::Client& client, InputDevices devices, guard::GuardProcess* guard)
    : client_(client), devices_(std::move(devices)), guard_(guard),
      wakeUp_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      tell_([this](const KeyBalance::Change& change) { return tell(change); }) {
    if (!wakeUp_.isOpen()) {
        throw std::system_error(errno, std::generic_category());
    }
    thread_ = std::thread([this] { run(); });
}

CaptureThread::~CaptureThread() {
    isStopping_ = true;
    wake();
    thread_.join();
}

void CaptureThread::enable(bool isOn) {
    isOn_ = isOn;
    wake();
}

void CaptureThread::updateVerdicts() {
    wake();
}

void CaptureThread::wake() const {
    const std::uint64_t one = 1;
    // It fails only when the thread has been woken already as often as can be counted.
    [[maybe_unused]] const auto written = write(wakeUp_.number(), &one, sizeof one);
}

void CaptureThread::run() {
    pthread_setname_np(pthread_self(), "tavro-tap");
    while (!isStopping_) {
        std::uint64_t times = 0;
        if (read(wakeUp_.number(), &times, sizeof times) > 0) {
            obey();
        }
        std::optional<std::chrono::microseconds> longest;
        if (keyboards_) {
            takeEvents();
        }
        if (keyboards_) {
            // Before a grab begins.
            showToGuard();
        }
        if (keyboards_) {
            longest = keyboards_->settle(swallowed_.arePlayed());
        }
        wait(longest);
    }
    close();
}

void CaptureThread::showToGuard() {
    if (guard_ == nullptr) {
        return;
    }
    std::vector<int> devices;
    std::vector<int> copies;
    keyboards_->addFiles(devices, copies);
    guard_->entrustDevices(devices, copies);
    guard_->expectTapBeats(true);
    static_cast<void>(showThatItLives());
}

bool CaptureThread::showThatItLives() {
    if (guard_ == nullptr || !guard_->tapBeat()) {
        return true;
    }
    // The keys go to everybody again, and typed on the copies they would come twice.
    end(KeyboardTap::End::lost);
    return false;
}

void CaptureThread::close() {
    keyboards_.reset();
    if (guard_ != nullptr) {
        guard_->expectTapBeats(false);
        guard_->entrustDevices({}, {});
    }
}

void CaptureThread::obey() {
    if (hasEnded_) {
        return;
    }
    if (!isOn_) {
        if (keyboards_ && !isStopping_) {
            keyboards_->tellReleases(tell_);
        }
        close();
        return;
    }
    swallowed_.ask(client_);
    if (!keyboards_) {
        keyboards_ = std::make_unique<KeyboardDevices>(devices_);
    }
}

void CaptureThread::wait(std::optional<std::chrono::microseconds> longest) const {
    std::vector<pollfd> descriptors{{.fd = wakeUp_.number(), .events = POLLIN, .revents = 0}};
    if (keyboards_) {
        keyboards_->addDescriptors(descriptors);
        if (guard_ != nullptr) {
            descriptors.push_back({.fd = guard_->descriptor(), .events = POLLIN, .revents = 0});
            longest = std::min(longest.value_or(Guard::beatInterval),
                               std::chrono::microseconds(Guard::beatInterval));
        }
    }
    const auto milliseconds =
        longest ? static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(*longest).count()) : -1;
    poll(descriptors.data(), descriptors.size(), milliseconds);
}

void CaptureThread::takeEvents() {
    while (keyboards_->takeNext(tell_)) {
        if (EmergencyExit::isHeld(keyboards_->held())) {
            end(KeyboardTap::End::emergencyExit);
            return;
        }
        if (isStopping_ || !isOn_) {
            return;
        }
        // A stream of events may take long to be worked off.
        if (!showThatItLives()) {
            return;
        }
    }
    keyboards_->takeNotices();
    if (keyboards_->isLost()) {
        end(KeyboardTap::End::lost);
    }
}

void CaptureThread::end(KeyboardTap::End reason) {
    hasEnded_ = true;
    keyboards_->tellReleases(tell_);
    close();
    client_.tapEnded(reason);
}

std::optional<KeyboardTap::Verdict> CaptureThread::tell(const KeyBalance::Change& change) {
    const KeyboardTap::Event event{.type = change.type,
                                   .keyCode = linuxos::EvdevKeyCodes::virtualKeyCode(change.evdevCode),
                                   .modifiers = HeldModifiers::of(keyboards_->held()),
                                   .isAutorepeat = change.isAutorepeat};
    const auto isPress = change.type == KeyboardTap::Event::Type::keyDown && !change.isAutorepeat;
    if (!isPress || change.isGrabbed) {
        return client_.handle(event);
    }
    const auto expected = client_.verdict(event);
    if (expected == KeyboardTap::Verdict::swallow) {
        // The client may have begun to play a moment ago, and its notice of that is still to be read.
        swallowed_.ask(client_);
    }
    if (!swallowed_.isToldUngrabbed(change.evdevCode, event.modifiers, expected)) {
        return std::nullopt;
    }
    const auto verdict = client_.handle(event);
    if (verdict == KeyboardTap::Verdict::swallow) {
        // The hotkey: the client may want other keys from now on, before it tells so itself.
        swallowed_.ask(client_);
    }
    return verdict;
}

} // namespace tavro::evdev
