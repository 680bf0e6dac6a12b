#include "Platform/Linux/Session/LogindSession.h"

#include <cerrno>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace tavro::linuxos {

namespace {

constexpr auto loginService = "org.freedesktop.login1";
constexpr auto managerPath = "/org/freedesktop/login1";
constexpr auto managerInterface = "org.freedesktop.login1.Manager";
constexpr auto userInterface = "org.freedesktop.login1.User";
constexpr auto sessionInterface = "org.freedesktop.login1.Session";
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";

std::string signalRule(const std::string& rest) {
    return std::string("type='signal',sender='") + loginService + "'," + rest;
}

} // namespace

LogindSession::LogindSession(std::function<void()> onChange) : onChange_(std::move(onChange)) {
    bus_.onBegin = [this] { begin(); };
    bus_.onLost = [this] { end(); };
}

void LogindSession::begin() {
    bus_.watchService(loginService, [this](bool isThere) { isThere ? find() : end(); });
    for (const auto* const member : {"SessionNew", "SessionRemoved"}) {
        bus_.subscribe(
            signalRule(std::string("interface='") + managerInterface + "',member='" + member + "'"),
            [this](sd_bus_message& /*message*/) { find(); });
    }
    for (const bool isLock : {true, false}) {
        bus_.subscribe(signalRule(std::string("interface='") + sessionInterface + "',member='" +
                                  (isLock ? "Lock" : "Unlock") + "'"),
                       [this, isLock](sd_bus_message& message) {
                           if (isAbout(message)) {
                               isLockedByRequest_ = isLock;
                               onChange_();
                           }
                       });
    }
    bus_.subscribe(signalRule(std::string("interface='") + propertiesInterface +
                              "',member='PropertiesChanged',arg0='" + sessionInterface + "'"),
                   [this](sd_bus_message& message) { takeChange(message); });
    find();
}

void LogindSession::end() {
    path_.clear();
    isThere_ = false;
    onChange_();
}

void LogindSession::find() {
    // 0 is whoever asks.
    bus_.call(
        {loginService, managerPath, managerInterface, "GetSessionByPID"},
        [this](sd_bus_message& answer) {
            const char* path = nullptr;
            if (sd_bus_message_is_method_error(&answer, "org.freedesktop.login1.NoSessionForPID") > 0) {
                findDisplay();
            } else if (!isError(answer) && sd_bus_message_read(&answer, "o", &path) >= 0) {
                follow(path);
            }
        },
        "u", std::uint32_t{0});
}

void LogindSession::findDisplay() {
    bus_.call(
        {loginService, managerPath, managerInterface, "GetUser"},
        [this](sd_bus_message& answer) {
            const char* path = nullptr;
            if (isError(answer) || sd_bus_message_read(&answer, "o", &path) < 0) {
                return;
            }
            bus_.call(
                {loginService, path, propertiesInterface, "Get"},
                [this](sd_bus_message& display) { takeDisplay(display); }, "ss", userInterface, "Display");
        },
        "u", static_cast<std::uint32_t>(getuid()));
}

void LogindSession::takeDisplay(sd_bus_message& user) {
    const char* name = nullptr;
    const char* path = nullptr;
    // Without a name the user has no desktop now; one that begins is told.
    if (!isError(user) && sd_bus_message_read(&user, "v", "(so)", &name, &path) >= 0 && *name != '\0') {
        follow(path);
    }
}

void LogindSession::follow(const char* path) {
    path_ = path;
    bus_.call(
        {loginService, path, propertiesInterface, "GetAll"},
        [this, asked = path_](sd_bus_message& answer) {
            if (!isError(answer) && asked == path_) {
                isThere_ = true;
                takeProperties(answer);
                onChange_();
            }
        },
        "s", sessionInterface);
}

void LogindSession::takeProperties(sd_bus_message& message) {
    const char* name = nullptr;
    if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_ARRAY, "{sv}") < 0) {
        return;
    }
    while (sd_bus_message_enter_container(&message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0 &&
           sd_bus_message_read(&message, "s", &name) > 0) {
        const bool isActive = name == std::string_view("Active");
        const bool isHint = name == std::string_view("LockedHint");
        int value = 0;
        if (!isActive && !isHint) {
            sd_bus_message_skip(&message, "v");
        } else if (sd_bus_message_read(&message, "v", "b", &value) >= 0) {
            (isActive ? isActive_ : isLockedByHint_) = value != 0;
            if (isHint && value == 0) {
                // Who has set it and takes it back has answered the request.
                isLockedByRequest_ = false;
            }
        }
        sd_bus_message_exit_container(&message);
    }
    sd_bus_message_exit_container(&message);
}

void LogindSession::takeChange(sd_bus_message& message) {
    const char* interface = nullptr;
    if (!isAbout(message) || sd_bus_message_read(&message, "s", &interface) < 0) {
        return;
    }
    takeProperties(message);
    onChange_();
    const char* name = nullptr;
    if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_ARRAY, "s") < 0) {
        return;
    }
    while (sd_bus_message_read(&message, "s", &name) > 0) {
        if (name == std::string_view("Active") || name == std::string_view("LockedHint")) {
            find();
            return;
        }
    }
}

bool LogindSession::isAbout(sd_bus_message& message) const {
    const auto* const path = sd_bus_message_get_path(&message);
    return path != nullptr && path_ == path;
}

bool LogindSession::isError(sd_bus_message& answer) {
    if (sd_bus_message_is_method_error(&answer, nullptr) <= 0) {
        return false;
    }
    if (sd_bus_message_get_errno(&answer) == ETIMEDOUT) {
        find();
    }
    return true;
}

} // namespace tavro::linuxos
