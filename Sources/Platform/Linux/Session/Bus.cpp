#include "Platform/Linux/Session/Bus.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdint>
#include <ctime>
#include <utility>

#include <poll.h>

namespace tavro::linuxos {

namespace {

using namespace std::chrono_literals;

/// Rare enough to cost nothing where there never is a bus.
constexpr auto pauseBeforeNextTry = 5s;

int handOver(sd_bus_message* message, void* handler, sd_bus_error* /*error*/) {
    (*static_cast<Bus::Handler*>(handler))(*message);
    return 0;
}

void destroy(void* handler) {
    delete static_cast<Bus::Handler*>(handler);
}

std::chrono::microseconds now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::chrono::seconds(time.tv_sec) +
           std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::nanoseconds(time.tv_nsec));
}

} // namespace

Bus::Bus(Kind kind) : kind_(kind) {
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { bus_ != nullptr ? process() : open(); });
}

Bus::~Bus() {
    close();
}

void Bus::open() {
    const auto status = kind_ == Kind::system ? sd_bus_open_system(&bus_) : sd_bus_open_user(&bus_);
    if (status < 0) {
        bus_ = nullptr;
        timer_.start(pauseBeforeNextTry);
        return;
    }
    onBegin();
    wait();
}

void Bus::subscribe(const std::string& rule, Handler handler) {
    auto kept = std::make_unique<Handler>(std::move(handler));
    sd_bus_slot* slot = nullptr;
    // A refusal comes later, and the library then gives the connection up.
    if (sd_bus_add_match_async(bus_, &slot, rule.c_str(), &handOver, nullptr, kept.get()) >= 0) {
        keep(slot, std::move(kept));
    }
}

void Bus::watchService(const std::string& service, std::function<void(bool isThere)> handler) {
    subscribe("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" + service + "'",
              [handler = std::move(handler)](sd_bus_message& message) {
                  const char* name = nullptr;
                  const char* oldOwner = nullptr;
                  const char* newOwner = nullptr;
                  if (sd_bus_message_read(&message, "sss", &name, &oldOwner, &newOwner) >= 0) {
                      handler(*newOwner != '\0');
                  }
              });
}

sd_bus_message* Bus::makeCall(const Method& method) const {
    sd_bus_message* message = nullptr;
    if (bus_ == nullptr || sd_bus_message_new_method_call(bus_, &message, method.service, method.path,
                                                          method.interface, method.name) < 0) {
        return nullptr;
    }
    sd_bus_message_set_auto_start(message, 0);
    return message;
}

void Bus::send(sd_bus_message* message, Handler handler) {
    auto kept = std::make_unique<Handler>(std::move(handler));
    sd_bus_slot* slot = nullptr;
    if (sd_bus_call_async(bus_, &slot, message, &handOver, kept.get(), 0) >= 0) {
        keep(slot, std::move(kept));
    }
}

void Bus::keep(sd_bus_slot* slot, std::unique_ptr<Handler> handler) {
    sd_bus_slot_set_destroy_callback(slot, &destroy);
    static_cast<void>(handler.release());
    // The bus has it from now on.
    sd_bus_slot_set_floating(slot, 1);
    sd_bus_slot_unref(slot);
}

void Bus::process() {
    int status = 0;
    do {
        status = sd_bus_process(bus_, nullptr);
    } while (status > 0);
    if (status < 0) {
        lose();
    } else {
        wait();
    }
}

void Bus::wait() {
    const auto descriptor = sd_bus_get_fd(bus_);
    const auto events = sd_bus_get_events(bus_);
    std::uint64_t until = 0;
    if (descriptor < 0 || events < 0 || sd_bus_get_timeout(bus_, &until) < 0) {
        lose();
        return;
    }
    // While the connection is being made, one address may give way to the next.
    if (!readable_ || readable_->socket() != descriptor) {
        stopWaiting();
        readable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
        writable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
        for (auto* const notifier : {readable_.get(), writable_.get()}) {
            QObject::connect(notifier, &QSocketNotifier::activated, &timer_, [this] { process(); });
        }
    }
    readable_->setEnabled((events & POLLIN) != 0);
    writable_->setEnabled((events & POLLOUT) != 0);
    if (until == UINT64_MAX) {
        timer_.stop();
        return;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(std::chrono::microseconds(until) - now());
    timer_.start(std::clamp<std::chrono::milliseconds>(left, 0ms, std::chrono::milliseconds(INT_MAX)));
}

void Bus::lose() {
    close();
    timer_.start(pauseBeforeNextTry);
    onLost();
}

void Bus::stopWaiting() {
    // One of them may be what is being told right now.
    for (auto* const notifier : {&readable_, &writable_}) {
        if (*notifier) {
            (*notifier)->setEnabled(false);
            notifier->release()->deleteLater();
        }
    }
}

void Bus::close() {
    timer_.stop();
    stopWaiting();
    sd_bus_close(bus_);
    bus_ = sd_bus_unref(bus_);
}

} // namespace tavro::linuxos
