#pragma once

#include "Platform/Linux/Session/Bus.h"

#include <functional>
#include <string>

namespace tavro::linuxos {

/// What logind tells of the session of this process, or where it belongs to none, as under the user's service
/// manager, of the session that shows the user's desktop. Main thread only.
class LogindSession {
public:
    /// Tells every change.
    explicit LogindSession(std::function<void()> onChange);

    /// Asks.
    void open() { bus_.open(); }

    /// Whether logind tells; otherwise what it told last may be outdated.
    [[nodiscard]] bool isThere() const { return isThere_; }

    /// Whether it is the active one on its seat, as it was told last; true until anything was.
    [[nodiscard]] bool isActive() const { return isActive_; }

    /// Whether it is locked or was asked to lock itself, as it was told last.
    [[nodiscard]] bool isLocked() const { return isLockedByHint_ || isLockedByRequest_; }

private:
    void begin();
    void end();
    void find();
    void findDisplay();
    void takeDisplay(sd_bus_message& user);
    void follow(const char* path);
    void takeProperties(sd_bus_message& message);
    void takeChange(sd_bus_message& message);
    [[nodiscard]] bool isAbout(sd_bus_message& message) const;
    /// Whether it is no answer; after a silence it asks anew.
    bool isError(sd_bus_message& answer);

    Bus bus_{Bus::Kind::system};
    std::function<void()> onChange_;
    /// Empty while no session is known.
    std::string path_;
    bool isThere_ = false;
    bool isActive_ = true;
    bool isLockedByHint_ = false;
    /// By the signals, which those receive who lock; not every one of them sets the hint.
    bool isLockedByRequest_ = false;
};

} // namespace tavro::linuxos
