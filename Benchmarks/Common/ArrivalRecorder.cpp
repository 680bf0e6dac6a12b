#include "Common/ArrivalRecorder.h"

#include <jack/midiport.h>

#include <array>
#include <cstring>
#include <span>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace tavro::bench {

static_assert(std::is_trivially_copyable_v<ArrivalRecorder::Arrival>);

ArrivalRecorder::ArrivalRecorder(const std::string& name, std::vector<std::string> sources)
    : sources_(std::move(sources)), client_(jack_client_open(name.c_str(), JackNoStartServer, nullptr)) {
    if (client_ == nullptr) {
        throw std::runtime_error("no JACK server");
    }
    for (std::size_t index = 0; index < sources_.size(); ++index) {
        auto* const port = jack_port_register(client_, ("from " + std::to_string(index + 1)).c_str(),
                                              JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
        if (port == nullptr) {
            jack_client_close(client_);
            throw std::runtime_error("the JACK server gives no port");
        }
        ports_.push_back(port);
    }
    jack_set_process_callback(
        client_,
        [](jack_nframes_t frames, void* self) {
            return static_cast<ArrivalRecorder*>(self)->process(frames);
        },
        this);
    jack_set_xrun_callback(
        client_,
        [](void* self) {
            static_cast<ArrivalRecorder*>(self)->xruns_.fetch_add(1);
            return 0;
        },
        this);
    if (jack_activate(client_) != 0) {
        jack_client_close(client_);
        throw std::runtime_error("the JACK client cannot be activated");
    }
}

ArrivalRecorder::~ArrivalRecorder() {
    jack_client_close(client_);
}

bool ArrivalRecorder::connectSources() {
    bool areAllConnected = true;
    for (std::size_t index = 0; index < sources_.size(); ++index) {
        const auto* const source = sources_[index].c_str();
        if (jack_port_connected_to(ports_[index], source) == 0 &&
            (jack_port_by_name(client_, source) == nullptr ||
             jack_connect(client_, source, jack_port_name(ports_[index])) != 0)) {
            areAllConnected = false;
        }
    }
    return areAllConnected;
}

int ArrivalRecorder::process(jack_nframes_t frames) {
    const auto time = jack_get_time();
    noteLateness(time);
    const auto start = jack_last_frame_time(client_);
    noteAbsences(start, frames);
    periodStart_.store(start);
    std::uint16_t source = 0;
    for (auto* const port : ports_) {
        auto* const buffer = jack_port_get_buffer(port, frames);
        const auto count = jack_midi_get_event_count(buffer);
        for (std::uint32_t index = 0; index < count; ++index) {
            jack_midi_event_t event{};
            if (jack_midi_event_get(&event, buffer, index) != 0 || event.size != 3) {
                lost_.fetch_add(1);
                continue;
            }
            const auto frame = start + event.time;
            const Arrival arrival{.source = source,
                                  .status = event.buffer[0],
                                  .note = event.buffer[1],
                                  .velocity = event.buffer[2],
                                  .time = time,
                                  .frame = frame,
                                  .frameTime = jack_frames_to_time(client_, frame)};
            std::array<std::uint8_t, sizeof arrival> bytes{};
            std::memcpy(bytes.data(), &arrival, sizeof arrival);
            if (!ring_.push(start, source, bytes)) {
                lost_.fetch_add(1);
            }
        }
        // The events of a period that the server lost for some port are lost for the figures too.
        lost_.fetch_add(jack_midi_get_lost_event_count(buffer));
        ++source;
    }
    return 0;
}

void ArrivalRecorder::noteAbsences(jack_nframes_t start, jack_nframes_t frames) {
    // A clock that goes back has left nothing out.
    const auto passed = static_cast<std::int32_t>(start - periodStart_.load());
    const auto length = static_cast<std::int32_t>(frames);
    if (hasBegun_ && passed > length) {
        absences_.fetch_add(static_cast<unsigned>(passed / length - 1));
    }
    hasBegun_ = true;
}

void ArrivalRecorder::noteLateness(jack_time_t time) {
    jack_nframes_t frames = 0;
    jack_time_t expected = 0;
    jack_time_t next = 0;
    float period = 0;
    if (jack_get_cycle_times(client_, &frames, &expected, &next, &period) == 0) {
        const auto lateness = static_cast<std::int64_t>(time - expected);
        // One that is asked for in between is one period's and no more.
        if (lateness > lateness_.load()) {
            lateness_.store(lateness);
        }
    }
}

jack_time_t ArrivalRecorder::timeInPeriod(jack_time_t delay, double part) const {
    const auto earliest = jack_time_to_frames(client_, jack_get_time() + delay);
    const auto start = periodStart_.load();
    const auto length = period();
    const auto periodsAhead = (earliest - start) / length + 1;
    const auto offset = static_cast<jack_nframes_t>(part * length);
    return jack_frames_to_time(client_, start + periodsAhead * length + offset);
}

std::vector<ArrivalRecorder::Arrival> ArrivalRecorder::takeArrivals() {
    std::vector<Arrival> arrivals;
    while (ring_.front()) {
        std::array<std::uint8_t, sizeof(Arrival)> bytes{};
        ring_.pop(bytes);
        std::memcpy(&arrivals.emplace_back(), bytes.data(), bytes.size());
    }
    return arrivals;
}

} // namespace tavro::bench
