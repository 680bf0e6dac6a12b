#include "Platform/Linux/GuardDeeds/JackSilence.h"

#include "PlatformInterfaces/PanicMessages.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include <jack/jack.h>
#include <jack/midiport.h>

namespace tavro::guard {

namespace {

using namespace std::chrono_literals;

constexpr auto step = 2ms;
constexpr auto patience = 10s;
/// The server puts a connection in force between two periods, and what is written in one is read in the next.
constexpr int periodsBefore = 4;
constexpr int periodsAfter = 4;

struct Sender {
    jack_port_t* port = nullptr;
    std::atomic<bool> shallWrite = false;
    std::atomic<bool> hasWritten = false;
    std::atomic<int> periods = 0;

    void process(jack_nframes_t frames) {
        auto* const buffer = jack_port_get_buffer(port, frames);
        jack_midi_clear_buffer(buffer);
        if (shallWrite && !hasWritten) {
            for (const auto& message : panicMessages()) {
                jack_midi_event_write(buffer, 0, message.data(), message.size());
            }
            hasWritten = true;
            periods = 0;
        }
        ++periods;
    }

    void sendPanic() {
        periods = 0;
        if (await([this] { return periods >= periodsBefore; })) {
            shallWrite = true;
            static_cast<void>(await([this] { return hasWritten && periods >= periodsAfter; }));
        }
    }

    template <typename Condition>
    static bool await(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + patience;
        while (!condition() && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(step);
        }
        return condition();
    }
};

} // namespace

void JackSilence::send(const std::vector<std::string>& ports) {
    if (ports.empty()) {
        return;
    }
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    Sender sender;
    const std::unique_ptr<jack_client_t, int (*)(jack_client_t*)> client(
        jack_client_open("TAVRO Guard", JackNoStartServer, nullptr), &jack_client_close);
    if (client == nullptr) {
        return;
    }
    sender.port = jack_port_register(client.get(), "Panic", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    jack_set_process_callback(
        client.get(),
        [](jack_nframes_t frames, void* self) {
            static_cast<Sender*>(self)->process(frames);
            return 0;
        },
        &sender);
    if (sender.port == nullptr || jack_activate(client.get()) != 0) {
        return;
    }
    for (const auto& port : ports) {
        jack_connect(client.get(), jack_port_name(sender.port), port.c_str());
    }
    sender.sendPanic();
}

} // namespace tavro::guard
