#pragma once

#include "Platform/Linux/Session/ActiveTerminal.h"
#include "Platform/Linux/Session/LogindSession.h"
#include "Platform/Linux/Session/ScreenSaver.h"
#include "PlatformInterfaces/SessionWatch.h"

namespace tavro::linuxos {

/// Asks logind and the desktop's screen saver, and while there is no logind the kernel for the terminal that
/// has the screen. Who comes late is heard from then on.
class SessionWatchAdapter final : public SessionWatch {
public:
    SessionWatchAdapter();

    void start(Handler handler) override;

private:
    void tell();
    [[nodiscard]] bool isActive() const;

    Handler handler_;
    bool isInFront_ = true;
    LogindSession logind_;
    ScreenSaver screenSaver_;
    ActiveTerminal terminal_;
};

} // namespace tavro::linuxos
