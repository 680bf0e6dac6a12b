#include "QueueState.h"

#include "Expectations.h"

#include <fstream>
#include <optional>
#include <sstream>

namespace tavro::proof {

namespace {

std::string contentOf(const char* path) {
    std::ifstream file(path);
    expect(file.is_open(), std::string("there is no ") + path);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

/// What stands behind the colon of a line that begins so.
std::string valueOf(const std::string& text, const std::string& name) {
    std::istringstream lines(text);
    std::optional<std::string> found;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name)) {
            expect(!found, "more than one queue: " + text);
            found = line.substr(line.find(':') + 2);
        }
    }
    expect(found.has_value(), "no \"" + name + "\" in: " + text);
    return *found;
}

} // namespace

QueueState QueueState::read() {
    const auto queues = contentOf("/proc/asound/seq/queues");
    const auto timers = contentOf("/proc/asound/timers");
    expect(queues.find("[TAVRO]") != std::string::npos, "the queue is not there: " + queues);
    const auto isTicking = timers.find("sequencer queue 0 : running") != std::string::npos;
    expect(isTicking || timers.find("sequencer queue 0 : stopped") != std::string::npos,
           "no timer of the queue in: " + timers);
    return {.isRunning = valueOf(queues, "timer state") == "Running",
            .isTicking = isTicking,
            .waiting = std::stoi(valueOf(queues, "queued time events"))};
}

void expectRest(const std::string& when) {
    const auto state = QueueState::read();
    expect(!state.isRunning, "the queue runs " + when);
    expect(!state.isTicking, "the queue's timer ticks " + when);
    expectEqual(static_cast<std::uint64_t>(state.waiting), 0, "events in the queue " + when);
}

} // namespace tavro::proof
