#include "Platform/Linux/GuardDeeds/JackRelief.h"

#include "Platform/Linux/GuardDeeds/ForeignFiles.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <sys/socket.h>
#include <sys/un.h>

namespace tavro::guard {

namespace {

namespace fs = std::filesystem;

fs::path folderOf(pid_t process) {
    return fs::path("/proc") / std::to_string(process);
}

/// What is in a folder of a process, which may go at any moment.
std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    while (!error && entry != fs::directory_iterator()) {
        entries.push_back(entry->path());
        entry.increment(error);
    }
    return entries;
}

bool isThreadStopped(const fs::path& thread) {
    std::ifstream file(thread / "stat");
    std::string text;
    // By way of the stream, which takes the end of the thread for the end of the file.
    std::getline(file, text, '\0');
    // Behind the name, which may hold anything.
    const auto name = text.rfind(')');
    return name != std::string::npos && name + 2 < text.size() &&
           std::string_view("Tt").find(text[name + 2]) != std::string_view::npos;
}

/// With all of its threads: a debugger may hold one alone, and the one that serves JACK goes on.
bool isStopped(pid_t process) {
    const auto threads = entriesOf(folderOf(process) / "task");
    return !threads.empty() && std::ranges::all_of(threads, isThreadStopped);
}

std::vector<int> filesOf(pid_t process) {
    std::vector<int> files;
    for (const auto& entry : entriesOf(folderOf(process) / "fd")) {
        const auto name = entry.filename().string();
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
