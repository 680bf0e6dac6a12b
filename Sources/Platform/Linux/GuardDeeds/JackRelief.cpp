#include "Platform/Linux/GuardDeeds/JackRelief.h"

#include "Platform/Linux/GuardDeeds/ForeignFiles.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>

namespace tavro::guard {

namespace {

namespace fs = std::filesystem;

fs::path folderOf(pid_t process) {
    return fs::path("/proc") / std::to_string(process);
}

bool isThreadStopped(const fs::path& thread) {
    std::ifstream file(thread / "stat");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    // Behind the name, which may hold anything.
    const auto name = text.rfind(')');
    return name != std::string::npos && name + 2 < text.size() &&
           std::string_view("Tt").find(text[name + 2]) != std::string_view::npos;
}

/// With all of its threads: a debugger may hold one alone, and the one that serves JACK goes on.
bool isStopped(pid_t process) {
    std::error_code error;
    const fs::directory_iterator threads(folderOf(process) / "task", error);
    return !error &&
           std::ranges::all_of(threads, [](const auto& entry) { return isThreadStopped(entry.path()); });
}

std::vector<int> filesOf(pid_t process) {
    std::vector<int> files;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folderOf(process) / "fd", error)) {
        const auto name = entry.path().filename().string();
        int number = -1;
        if (std::from_chars(name.data(), name.data() + name.size(), number).ec == std::errc()) {
            files.push_back(number);
        }
    }
    return files;
}

/// The server's own name of a socket that a client has reached it by.
bool leadsToServer(int socket) {
    sockaddr_un address{};
    socklen_t size = sizeof address;
    if (getpeername(socket, reinterpret_cast<sockaddr*>(&address), &size) != 0 ||
        address.sun_family != AF_UNIX || size <= offsetof(sockaddr_un, sun_path)) {
        return false;
    }
    const auto name = fs::path(static_cast<const char*>(address.sun_path)).filename().string();
    return name.starts_with("jack_") || name.starts_with("pipewire-");
}

} // namespace

void JackRelief::cutOffStopped(pid_t process) {
    if (!isStopped(process)) {
        return;
    }
    const ForeignFiles files(process);
    for (const auto number : filesOf(process)) {
        if (const auto file = files.duplicate(number); file.isOpen() && leadsToServer(file.number())) {
            shutdown(file.number(), SHUT_RDWR);
        }
    }
}

} // namespace tavro::guard
