#include "Platform/Linux/X11/WakeUp.h"

#include <sys/eventfd.h>
#include <unistd.h>

namespace tavro::x11 {

WakeUp::WakeUp() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

WakeUp::~WakeUp() {
    if (isThere()) {
        close(descriptor_);
    }
}

void WakeUp::signal() const {
    // It can only fail when so many signals are pending that the thread will wake in any case.
    [[maybe_unused]] const auto status = eventfd_write(descriptor_, 1);
}

void WakeUp::clear() const {
    eventfd_t count = 0;
    [[maybe_unused]] const auto status = eventfd_read(descriptor_, &count);
}

} // namespace tavro::x11
