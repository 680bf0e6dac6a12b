#include "Platform/Linux/Settings/SettingsWriter.h"

#include <array>
#include <cerrno>
#include <stdexcept>

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tavro::linuxos {

SettingsWriter::SettingsWriter(const std::vector<std::string>& arguments) {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    std::vector<char*> words{const_cast<char*>(TAVRO_SETTINGS_WRITER)};
    for (const auto& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    process_ = fork();
    if (process_ == 0) {
        dup2(pipe[1], STDOUT_FILENO);
        execv(words[0], words.data());
        _exit(4);
    }
    close(pipe[1]);
    output_ = pipe[0];
}

SettingsWriter::~SettingsWriter() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        wait();
    }
    close(output_);
}

std::string SettingsWriter::nextLine() {
    std::string line;
    char character = 0;
    for (;;) {
        const auto count = read(output_, &character, 1);
        if (count == 1 && character != '\n') {
            line += character;
        } else if (count >= 0 || errno != EINTR) {
            return line;
        }
    }
}

void SettingsWriter::sendSignal(int signal) const {
    kill(process_, signal);
}

int SettingsWriter::wait() {
    int status = -1;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    return status;
}

} // namespace tavro::linuxos
