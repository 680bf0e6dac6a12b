#include "Platform/Linux/Jack/PortWriter.h"

#include "Platform/Linux/Jack/PeriodClock.h"

#include <jack/midiport.h>

#include <thread>

namespace tavro::jack {

namespace {

std::size_t indexOf(PortWriter::Port port) {
    return static_cast<std::size_t>(port);
}

} // namespace

PortWriter::PortWriter(jack_client_t& client) : client_(client) {
    jack_set_process_callback(
        &client_,
        [](jack_nframes_t frames, void* self) { return static_cast<PortWriter*>(self)->process(frames); },
        this);
}

void PortWriter::attach(Port port, jack_port_t& target) {
    ports_[indexOf(port)].store(&target, std::memory_order_release);
}

void PortWriter::detach(Port port, const std::function<bool()>& isServerThere) {
    const auto deadline = std::chrono::steady_clock::now() + longestWait();
    // The server's thread must not be made to signal, so this side looks.
    const auto waitFor = [&](const auto& condition) {
        while (!condition() && isServerThere() && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    };
    const auto waitForPeriods = [&](std::uint64_t count) {
        const auto wanted = finishedPeriods_.load() + count;
        waitFor([&] { return finishedPeriods_.load() >= wanted; });
    };
    waitFor([&] { return ring_.isEmpty(); });
    // The period that took the last message may be running still; the readers of this port run in it too,
    // and are done when the next one is over.
    waitForPeriods(2);
    ports_[indexOf(port)].store(nullptr, std::memory_order_release);
    waitForPeriods(1);
}

void PortWriter::send(Port port, std::span<const std::uint8_t> message) {
    if (ports_[indexOf(port)].load(std::memory_order_relaxed) == nullptr) {
        return;
    }
    if (!ring_.push(jack_frame_time(&client_), static_cast<std::uint16_t>(port), message)) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
    }
}

int PortWriter::process(jack_nframes_t frames) {
    std::array<void*, portCount> buffers{};
    std::array<jack_nframes_t, portCount> earliest{};
    for (std::size_t index = 0; index < portCount; ++index) {
        if (auto* port = ports_[index].load(std::memory_order_acquire)) {
            buffers[index] = jack_port_get_buffer(port, frames);
            jack_midi_clear_buffer(buffers[index]);
        }
    }
    const auto periodStart = jack_last_frame_time(&client_);
    while (const auto head = ring_.front()) {
        auto* const buffer = buffers[head->port];
        if (buffer == nullptr) {
            ring_.discard();
            dropped_.fetch_add(1, std::memory_order_relaxed);
            continue;
        }
        const auto offset = offsetOnePeriodLater(head->stamp, periodStart, frames, earliest[head->port]);
        auto* const place = jack_midi_event_reserve(buffer, offset, head->size);
        if (place == nullptr) {
            // The port is full for this period. What is left goes out with the next one, in order.
            break;
        }
        ring_.pop({place, head->size});
        earliest[head->port] = offset;
    }
    finishedPeriods_.fetch_add(1);
    return 0;
}

std::chrono::microseconds PortWriter::longestWait() const {
    constexpr std::uint64_t patience = 8;
    const auto rate = std::max<std::uint64_t>(jack_get_sample_rate(&client_), 1);
    const auto periods = patience * jack_get_buffer_size(&client_) * 1'000'000 / rate;
    return std::chrono::milliseconds(100) + std::chrono::microseconds(periods);
}

} // namespace tavro::jack
