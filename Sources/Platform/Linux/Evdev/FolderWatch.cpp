#include "Platform/Linux/Evdev/FolderWatch.h"

#include <array>
#include <cstdint>
#include <cstring>

#include <sys/inotify.h>

namespace tavro::evdev {

FolderWatch::FolderWatch(const std::string& folder) : file_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (file_.isOpen()) {
        // A new device belongs to the administrator at first and is opened to others by a change of its
        // attributes.
        watch_ = inotify_add_watch(file_.number(), folder.c_str(),
                                   IN_CREATE | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF |
                                       IN_ONLYDIR);
        // A folder that is removed while its files are open tells so only in the folder it was in.
        inotify_add_watch(file_.number(), (folder + "/..").c_str(), IN_DELETE | IN_ONLYDIR);
    }
}

FolderWatch::Notice FolderWatch::take() {
    if (watch_ < 0) {
        return Notice::lost;
    }
    auto notice = Notice::nothing;
    std::array<char, 4096> buffer{};
    while (true) {
        const auto size = read(file_.number(), buffer.data(), buffer.size());
        if (size <= 0) {
            return notice;
        }
        std::size_t place = 0;
        while (place + sizeof(inotify_event) <= static_cast<std::size_t>(size)) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + place, sizeof event);
            constexpr std::uint32_t endMask = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;
            if (event.wd == watch_ && (event.mask & endMask) != 0) {
                return Notice::lost;
            }
            notice = Notice::changed;
            place += sizeof event + event.len;
        }
    }
}

} // namespace tavro::evdev
