#include "Platform/Linux/Session/ScreenSaver.h"

#include <cerrno>
#include <utility>

namespace tavro::linuxos {

namespace {

constexpr auto saverService = "org.freedesktop.ScreenSaver";
constexpr auto saverPath = "/org/freedesktop/ScreenSaver";
constexpr auto saverInterface = "org.freedesktop.ScreenSaver";

} // namespace

ScreenSaver::ScreenSaver(std::function<void()> onChange) : onChange_(std::move(onChange)) {
    bus_.onBegin = [this] { begin(); };
    bus_.onLost = [this] { set(false); };
}

void ScreenSaver::begin() {
    bus_.watchService(saverService, [this](bool isThere) { isThere ? ask() : set(false); });
    // From whichever path: some tell on an older one.
    bus_.subscribe(std::string("type='signal',sender='") + saverService + "',interface='" + saverInterface +
                       "',member='ActiveChanged'",
                   [this](sd_bus_message& message) {
                       int isActive = 0;
                       if (sd_bus_message_read(&message, "b", &isActive) >= 0) {
                           set(isActive != 0);
                       }
                   });
    ask();
}

void ScreenSaver::ask() {
    bus_.call({saverService, saverPath, saverInterface, "GetActive"}, [this](sd_bus_message& answer) {
        int isActive = 0;
        if (sd_bus_message_is_method_error(&answer, nullptr) > 0) {
            if (sd_bus_message_get_errno(&answer) == ETIMEDOUT) {
                ask();
            }
        } else if (sd_bus_message_read(&answer, "b", &isActive) >= 0) {
            set(isActive != 0);
        }
    });
}

void ScreenSaver::set(bool isActive) {
    isActive_ = isActive;
    onChange_();
}

} // namespace tavro::linuxos
