// Presses a key by XTest and tells how long the note took to a JACK client. Rounds are asked for on standard
// input, one a line: SOURCE-NUMBER PRESSES. The window in question must be in front by then. Answers, one
// JSON object a line:
//   {"ready":true,"rate":48000,"period":256}                               once all sources are connected
//   {"source":0,"arrival_us":[...],"placed_us":[...],"missing":0,"xruns":0,"lost":0,"absences":0}
// A list holds one value a press, from just before the press was injected: to the callback that brought the
// note, and to the place in time that the note has in the period.
// Usage: key_injector KEY-CODE LEAST MOST SOURCE-PORT...   (X key code; for how long the key stays down and
// up, in milliseconds). Ends with its standard input.

#include "Common/ArrivalRecorder.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

namespace {

using tavro::bench::ArrivalRecorder;
using Json = nlohmann::ordered_json;
using std::chrono::milliseconds;

std::int64_t sinceStart(jack_time_t time, jack_time_t start) {
    return static_cast<std::int64_t>(time - start);
}

class KeyInjector {
public:
    struct Gesture {
        unsigned keyCode;
        milliseconds least;
        milliseconds most;
    };

    KeyInjector(const Gesture& gesture, std::vector<std::string> sources)
        : display_(XOpenDisplay(nullptr)), gesture_(gesture), recorder_("Injector", std::move(sources)) {
        if (display_ == nullptr) {
            throw std::runtime_error("no display");
        }
    }

    KeyInjector(const KeyInjector&) = delete;
    KeyInjector& operator=(const KeyInjector&) = delete;

    ~KeyInjector() { XCloseDisplay(display_); }

    Json ready() {
        while (!recorder_.connectSources()) {
            std::this_thread::sleep_for(milliseconds(10));
        }
        return {{"ready", true}, {"rate", recorder_.rate()}, {"period", recorder_.period()}};
    }

    Json round(unsigned source, unsigned presses) {
        const auto xruns = recorder_.xruns();
        const auto lost = recorder_.lost();
        const auto absences = recorder_.absences();
        auto missing = 0U;
        auto arrivals = Json::array();
        auto places = Json::array();
        for (const auto part : partsOfAPeriod(presses)) {
            waitFor(part);
            static_cast<void>(recorder_.takeArrivals());
            const auto start = jack_get_time();
            inject(true);
            const auto pressed = std::chrono::steady_clock::now();
            std::this_thread::sleep_until(pressed + randomTime());
            inject(false);
            const auto arrival = awaitNoteOn(source);
            if (!arrival) {
                ++missing;
                continue;
            }
            arrivals.push_back(sinceStart(arrival->time, start));
            places.push_back(sinceStart(arrival->frameTime, start));
        }
        return {{"source", source},
                {"arrival_us", arrivals},
                {"placed_us", places},
                {"missing", missing},
                {"xruns", recorder_.xruns() - xruns},
                {"lost", recorder_.lost() - lost},
                {"absences", recorder_.absences() - absences}};
    }

private:
    /// Of no rhythm: neither the frames of a display nor any timer may see always the same phase.
    std::chrono::microseconds randomTime() {
        const auto least = std::chrono::microseconds(gesture_.least).count();
        const auto most = std::chrono::microseconds(gesture_.most).count();
        return std::chrono::microseconds(std::uniform_int_distribution(least, most)(random_));
    }

    /// Every part of a period once, in random order. How long a note waits for the next period is most of the
    /// latency, and left to chance it would hide differences that are real.
    std::vector<double> partsOfAPeriod(unsigned count) {
        std::vector<double> parts;
        for (auto index = 0U; index < count; ++index) {
            parts.push_back((index + std::uniform_real_distribution()(random_)) / count);
        }
        std::ranges::shuffle(parts, random_);
        return parts;
    }

    /// A random time, ending at that part of a period.
    void waitFor(double partOfPeriod) {
        const auto delay = static_cast<jack_time_t>(randomTime().count());
        const auto end = recorder_.timeInPeriod(delay, partOfPeriod);
        const auto left = sinceStart(end, jack_get_time());
        std::this_thread::sleep_for(std::chrono::microseconds(left));
    }

    void inject(bool isPress) {
        XTestFakeKeyEvent(display_, gesture_.keyCode, isPress ? True : False, CurrentTime);
        XFlush(display_);
    }

    std::optional<ArrivalRecorder::Arrival> awaitNoteOn(unsigned source) {
        const auto deadline = std::chrono::steady_clock::now() + milliseconds(500);
        while (std::chrono::steady_clock::now() < deadline) {
            for (const auto& arrival : recorder_.takeArrivals()) {
                if (arrival.source == source && arrival.isNoteOn()) {
                    return arrival;
                }
            }
            std::this_thread::sleep_for(milliseconds(2));
        }
        return std::nullopt;
    }

    Display* display_;
    Gesture gesture_;
    ArrivalRecorder recorder_;
    std::mt19937 random_{std::random_device{}()};
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 5) {
        std::fputs("usage: key_injector KEY-CODE LEAST MOST SOURCE-PORT...\n", stderr);
        return 2;
    }
    try {
        const KeyInjector::Gesture gesture{.keyCode = static_cast<unsigned>(std::stoul(argv[1])),
                                           .least = milliseconds(std::stoul(argv[2])),
                                           .most = milliseconds(std::stoul(argv[3]))};
        KeyInjector injector(gesture, {argv + 4, argv + argc});
        std::cout << injector.ready() << std::endl;
        std::string line;
        while (std::getline(std::cin, line)) {
            auto source = 0U;
            auto presses = 0U;
            std::istringstream(line) >> source >> presses;
            std::cout << injector.round(source, presses) << std::endl;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "key_injector: %s\n", error.what());
        return 1;
    }
    return 0;
}
