#include "Terminal.h"

#include "Expectations.h"

#include <array>

#include <fcntl.h>
#include <linux/vt.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace tavro::proof {

Terminal::Terminal(int number)
    : number_(number), path_("/dev/tty" + std::to_string(number)),
      file_(open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    expect(file_.isOpen(), "cannot open " + path_);
    termios settings{};
    expect(tcgetattr(file_.number(), &settings) == 0, path_ + " is no terminal");
    cfmakeraw(&settings);
    expect(tcsetattr(file_.number(), TCSANOW, &settings) == 0, "cannot read single keys of " + path_);
}

void Terminal::activate() const {
    expect(ioctl(file_.number(), VT_ACTIVATE, number_) == 0 &&
               ioctl(file_.number(), VT_WAITACTIVE, number_) == 0,
           "cannot change to " + path_);
}

std::string Terminal::take() {
    std::string typed;
    std::array<char, 256> buffer{};
    for (ssize_t size = 0; (size = read(file_.number(), buffer.data(), buffer.size())) > 0;) {
        typed.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return typed;
}

} // namespace tavro::proof
