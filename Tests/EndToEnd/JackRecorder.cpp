// Writes what arrives at JACK MIDI ports, one JSON object a line:
//   {"ready":true,"rate":48000,"period":256}
//   {"rate":48000,"period":256}                                       whenever one of them changed
//   {"port":"TAVRO:TAVRO Out","connections":["TAVRO:TAVRO Out"]}      whenever the connections changed
//   {"port":"TAVRO:TAVRO Out","made":1}                               whenever it has made its connection
//   {"port":"TAVRO:TAVRO Out","t_us":123,"frame":456,"bytes":[144,60,100]}
//   {"xruns":1}                                                       whenever the server had one
// Usage: JackRecorder [--name CLIENT] [--connect SOURCE]... [--input PORT [--pretty TEXT]]...
// --connect makes a port and keeps it connected to that source whenever the source is there; --input makes a
// port that others may connect. Ends with SIGTERM, SIGINT or the end of its standard input.

#include "Platform/Linux/Jack/MessageRing.h"

#include <jack/jack.h>
#include <jack/metadata.h>
#include <jack/midiport.h>
#include <jack/uuid.h>

#include <nlohmann/json.hpp>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <poll.h>
#include <unistd.h>

namespace {

using Json = nlohmann::ordered_json;
using tavro::jack::MessageRing;

struct Input {
    /// The source it shall be connected to, or its own name.
    std::string label;
    bool connects = false;
    std::string pretty;
    jack_port_t* port = nullptr;
    unsigned made = 0;
    Json connections = Json::array();
};

/// What the callback tells of one event; its bytes follow.
struct Arrival {
    jack_time_t time;
    jack_nframes_t frame;
};

struct Recorder {
    jack_client_t* client = nullptr;
    std::deque<Input> inputs;
    MessageRing ring{1U << 20U};
    std::atomic<unsigned> xruns = 0;
    std::atomic<unsigned> lost = 0;
    std::atomic<bool> isServerThere = true;
};

volatile std::sig_atomic_t isEnded = 0;

void print(const Json& json) {
    std::puts(json.dump().c_str());
    std::fflush(stdout);
}

int process(jack_nframes_t frames, void* data) {
    auto& recorder = *static_cast<Recorder*>(data);
    const auto time = jack_get_time();
    const auto start = jack_last_frame_time(recorder.client);
    std::array<std::uint8_t, MessageRing::longestMessage> message{};
    std::uint16_t index = 0;
    for (const auto& input : recorder.inputs) {
        auto* const buffer = jack_port_get_buffer(input.port, frames);
        const auto count = jack_midi_get_event_count(buffer);
        for (std::uint32_t number = 0; number < count; ++number) {
            jack_midi_event_t event{};
            if (jack_midi_event_get(&event, buffer, number) != 0 ||
                sizeof(Arrival) + event.size > message.size()) {
                recorder.lost.fetch_add(1);
                continue;
            }
            const Arrival arrival{.time = time, .frame = start + event.time};
            std::memcpy(message.data(), &arrival, sizeof arrival);
            std::memcpy(message.data() + sizeof arrival, event.buffer, event.size);
            if (!recorder.ring.push(0, index, std::span(message).first(sizeof arrival + event.size))) {
                recorder.lost.fetch_add(1);
            }
        }
        ++index;
    }
    return 0;
}

void printArrivals(Recorder& recorder) {
    while (const auto head = recorder.ring.front()) {
        std::vector<std::uint8_t> message(head->size);
        recorder.ring.pop(message);
        Arrival arrival{};
        std::memcpy(&arrival, message.data(), sizeof arrival);
        message.erase(message.begin(), message.begin() + sizeof arrival);
        print({{"port", recorder.inputs[head->tag].label},
               {"t_us", arrival.time},
               {"frame", arrival.frame},
               {"bytes", message}});
    }
}

void followConnections(Recorder& recorder) {
    for (auto& input : recorder.inputs) {
        if (input.connects && jack_port_connected_to(input.port, input.label.c_str()) == 0 &&
            jack_port_by_name(recorder.client, input.label.c_str()) != nullptr &&
            jack_connect(recorder.client, input.label.c_str(), jack_port_name(input.port)) == 0) {
            print({{"port", input.label}, {"made", ++input.made}});
        }
        auto connections = Json::array();
        if (const auto** names = jack_port_get_all_connections(recorder.client, input.port)) {
            for (const auto** name = names; *name != nullptr; ++name) {
                connections.push_back(*name);
            }
            jack_free(names);
        }
        if (connections != input.connections) {
            input.connections = connections;
            print({{"port", input.label}, {"connections", connections}});
        }
    }
}

bool open(Recorder& recorder, const std::string& name) {
    auto status = jack_status_t{};
    recorder.client = jack_client_open(name.c_str(), JackNoStartServer, &status);
    if (recorder.client == nullptr) {
        std::fprintf(stderr, "JackRecorder: no client, status %d\n", static_cast<int>(status));
        return false;
    }
    auto number = 0;
    for (auto& input : recorder.inputs) {
        const auto portName = input.connects ? "from " + std::to_string(++number) : input.label;
        input.port =
            jack_port_register(recorder.client, portName.c_str(), JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
        if (input.port == nullptr) {
            std::fprintf(stderr, "JackRecorder: no port %s\n", portName.c_str());
            return false;
        }
        if (!input.pretty.empty() &&
            jack_set_property(recorder.client, jack_port_uuid(input.port), JACK_METADATA_PRETTY_NAME,
                              input.pretty.c_str(), "text/plain") != 0) {
            std::fprintf(stderr, "JackRecorder: no pretty name for %s\n", portName.c_str());
            return false;
        }
    }
    jack_set_process_callback(recorder.client, process, &recorder);
    jack_set_xrun_callback(
        recorder.client,
        [](void* data) {
            static_cast<Recorder*>(data)->xruns.fetch_add(1);
            return 0;
        },
        &recorder);
    jack_on_shutdown(
        recorder.client, [](void* data) { static_cast<Recorder*>(data)->isServerThere.store(false); },
        &recorder);
    if (jack_activate(recorder.client) != 0) {
        std::fprintf(stderr, "JackRecorder: cannot activate\n");
        return false;
    }
    return true;
}

Json clockOf(const Recorder& recorder) {
    return {{"rate", jack_get_sample_rate(recorder.client)},
            {"period", jack_get_buffer_size(recorder.client)}};
}

void record(Recorder& recorder) {
    auto clock = clockOf(recorder);
    print({{"ready", true}, {"rate", clock["rate"]}, {"period", clock["period"]}});
    auto xruns = 0U;
    auto standardInput = pollfd{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    while (isEnded == 0 && recorder.isServerThere.load()) {
        constexpr int pauseMilliseconds = 2;
        if (poll(&standardInput, 1, pauseMilliseconds) > 0) {
            char ignored = 0;
            if (read(STDIN_FILENO, &ignored, 1) <= 0) {
                break;
            }
        }
        printArrivals(recorder);
        followConnections(recorder);
        if (auto now = clockOf(recorder); now != clock) {
            clock = std::move(now);
            print(clock);
        }
        if (const auto now = recorder.xruns.load(); now != xruns) {
            xruns = now;
            print({{"xruns", xruns}});
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    Recorder recorder;
    std::string name = "Recorder";
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    for (std::size_t index = 0; index < arguments.size(); index += 2) {
        const auto& option = arguments[index];
        if (index + 1 == arguments.size()) {
            std::fprintf(stderr, "JackRecorder: %s needs a value\n", option.c_str());
            return 2;
        }
        const auto& value = arguments[index + 1];
        if (option == "--name") {
            name = value;
        } else if (option == "--connect" || option == "--input") {
            auto& input = recorder.inputs.emplace_back();
            input.label = value;
            input.connects = option == "--connect";
        } else if (option == "--pretty" && !recorder.inputs.empty()) {
            recorder.inputs.back().pretty = value;
        } else {
            std::fprintf(stderr, "JackRecorder: %s is not known here\n", option.c_str());
            return 2;
        }
    }
    std::signal(SIGTERM, [](int) { isEnded = 1; });
    std::signal(SIGINT, [](int) { isEnded = 1; });

    const auto isOpen = open(recorder, name);
    if (isOpen) {
        record(recorder);
    }
    if (recorder.client != nullptr) {
        jack_client_close(recorder.client);
    }
    printArrivals(recorder);
    if (const auto lost = recorder.lost.load(); lost != 0) {
        std::fprintf(stderr, "JackRecorder: %u events lost\n", lost);
        return 1;
    }
    return isOpen && recorder.isServerThere.load() ? 0 : 1;
}
