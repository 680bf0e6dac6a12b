// Connects itself to a JACK port as soon as that is there, and tells when the first note-on has come, by the
// monotonic clock: {"ready":true}, then {"first_note_ns":123}. Ends with its standard input.
// Usage: first_note SOURCE-PORT

#include "Common/ArrivalRecorder.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <iostream>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace {

bool inputHasEnded() {
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    return poll(&input, 1, 0) > 0;
}

bool hasNoteOn(tavro::bench::ArrivalRecorder& recorder) {
    const auto arrivals = recorder.takeArrivals();
    return std::ranges::any_of(arrivals, [](const auto& arrival) { return arrival.isNoteOn(); });
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: first_note SOURCE-PORT\n", stderr);
        return 2;
    }
    try {
        tavro::bench::ArrivalRecorder recorder("FirstNote", {argv[1]});
        std::cout << R"({"ready":true})" << std::endl;
        bool isConnected = false;
        while (!inputHasEnded()) {
            isConnected = isConnected || recorder.connectSources();
            if (hasNoteOn(recorder)) {
                const auto now = std::chrono::steady_clock::now().time_since_epoch();
                std::cout << "{\"first_note_ns\":" << std::chrono::nanoseconds(now).count() << "}"
                          << std::endl;
                return 0;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "first_note: %s\n", error.what());
        return 1;
    }
    return 0;
}
