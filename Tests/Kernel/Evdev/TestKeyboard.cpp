#include "TestKeyboard.h"

#include "Expectations.h"

#include <array>
#include <initializer_list>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tavro::proof {

namespace {

constexpr std::uint16_t lastKey = 248;

void addCodes(libevdev& description, unsigned int type, std::initializer_list<unsigned int> codes) {
    for (const auto code : codes) {
        libevdev_enable_event_code(&description, type, code, nullptr);
    }
}

} // namespace

TestKeyboard::TestKeyboard(const std::string& name, Kind kind) : name_(name) {
    auto* const description = libevdev_new();
    libevdev_set_name(description, (namePrefix + name).c_str());
    libevdev_set_id_bustype(description, BUS_USB);
    if (kind == Kind::mouse) {
        addCodes(*description, EV_KEY, {BTN_LEFT, BTN_RIGHT, KEY_NEXTSONG, KEY_PLAYPAUSE});
    } else {
        for (unsigned int code = 1; code <= lastKey; ++code) {
            libevdev_enable_event_code(description, EV_KEY, code, nullptr);
        }
        addCodes(*description, EV_LED, {LED_NUML, LED_CAPSL});
        addCodes(*description, EV_MSC, {MSC_SCAN});
        libevdev_enable_event_type(description, EV_REP);
    }
    if (kind != Kind::keyboard) {
        addCodes(*description, EV_REL, {REL_X, REL_Y});
        addCodes(*description, EV_KEY, {BTN_LEFT});
    }
    const auto status =
        libevdev_uinput_create_from_device(description, LIBEVDEV_UINPUT_OPEN_MANAGED, &device_);
    libevdev_free(description);
    expect(status == 0, "cannot make the keyboard " + name);
    reader_ = posix::FileDescriptor(open(path().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    expect(reader_.isOpen(), "cannot open the keyboard " + name);
    // A slow machine must not make repeats of keys that are only held.
    std::array<unsigned int, REP_CNT> rate{60'000, 60'000};
    expect(kind == Kind::mouse || ioctl(reader_.number(), EVIOCSREP, rate.data()) == 0,
           "cannot set the rate of repetition of " + name);
}

TestKeyboard::~TestKeyboard() {
    libevdev_uinput_destroy(device_);
}

std::string TestKeyboard::path() const {
    return libevdev_uinput_get_devnode(device_);
}

void TestKeyboard::change(std::uint16_t key, std::int32_t value) {
    writeFrame({event(EV_MSC, MSC_SCAN, 0x70000 + key), event(EV_KEY, key, value)});
}

void TestKeyboard::writeFrame(const std::vector<input_event>& events) {
    auto frame = events;
    frame.push_back(event(EV_SYN, SYN_REPORT, 0));
    const auto size = frame.size() * sizeof(input_event);
    expect(write(libevdev_uinput_get_fd(device_), frame.data(), size) == static_cast<ssize_t>(size),
           "cannot type on the keyboard " + name_);
}

input_event TestKeyboard::event(std::uint16_t type, std::uint16_t code, std::int32_t value) {
    input_event event{};
    event.type = type;
    event.code = code;
    event.value = value;
    return event;
}

bool TestKeyboard::isLit(std::uint16_t light) const {
    std::array<unsigned char, LED_CNT / 8> lights{};
    expect(ioctl(reader_.number(), EVIOCGLED(sizeof lights), lights.data()) >= 0, "cannot read the lights");
    return (lights[light / 8] >> (light % 8) & 1) != 0;
}

} // namespace tavro::proof
