#include "ChildProcess.h"

#include "Expectations.h"

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

namespace tavro::proof {

ChildProcess::ChildProcess(const std::function<int()>& work) : process_(fork()) {
    expect(process_ >= 0, "cannot start a process");
    if (process_ == 0) {
        _exit(work());
    }
}

ChildProcess::~ChildProcess() {
    if (process_ > 0) {
        kill();
        wait();
    }
}

void ChildProcess::kill() {
    ::kill(process_, SIGKILL);
}

int ChildProcess::wait() {
    auto status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace tavro::proof
