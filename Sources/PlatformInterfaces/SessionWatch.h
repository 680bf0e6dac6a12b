#pragma once

#include <functional>

namespace tavro {

/// Tells whether the login session of this program is the one that its user has before them: the active one
/// of its seat, and not locked. Otherwise what is typed is meant for somebody else, or is a password. One
/// adapter per platform. Main thread only.
class SessionWatch {
public:
    using Handler = std::function<void(bool isInFront)>;

    SessionWatch() = default;
    SessionWatch(const SessionWatch&) = delete;
    SessionWatch& operator=(const SessionWatch&) = delete;
    virtual ~SessionWatch() = default;

    /// Begins to tell every change, for as long as this exists. The session counts as in front until
    /// something else is known; nobody is waited for. Once.
    virtual void start(Handler handler) = 0;
};

} // namespace tavro
