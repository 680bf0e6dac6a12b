#include "Platform/Linux/Jack/PortWriter.h"

#include "Platform/Linux/Jack/PeriodClock.h"

#include <jack/midiport.h>

#include <algorithm>
#include <chrono>
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

void PortWriter::finishSending(const std::function<bool()>& isServerThere) {
    if (!ring_.isEmpty()) {
        waitFor([this] { return ring_.isEmpty(); }, isServerThere);
        // The period that took the last message may be running still; the readers of this port run in it
        // too, and are done when the next one is over.
        waitForPeriod(finishedPeriods_.load() + 2, isServerThere);
        return;
    }
    // Taken by the period that ran while it was sent, or by the one after it; and again one for the readers.
    waitForPeriod(lastSend_ + 3, isServerThere);
}

void PortWriter::awaitConnections(const std::function<bool()>& isServerThere) const {
    waitForPeriod(finishedPeriods_.load() + 2, isServerThere);
}

void PortWriter::detach(Port port, const std::function<bool()>& isServerThere) {
    finishSending(isServerThere);
    ports_[indexOf(port)].store(nullptr, std::memory_order_release);
    waitForPeriod(finishedPeriods_.load() + 1, isServerThere);
}

void PortWriter::send(Port port, std::span<const std::uint8_t> message) {
    if (ports_[indexOf(port)].load(std::memory_order_relaxed) == nullptr) {
        return;
    }
    lastSend_ = finishedPeriods_.load();
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

void PortWriter::waitForPeriod(std::uint64_t count, const std::function<bool()>& isServerThere) const {
    waitFor([this, count] { return finishedPeriods_.load() >= count; }, isServerThere);
}

void PortWriter::waitFor(const std::function<bool()>& condition,
                         const std::function<bool()>& isServerThere) const {
    constexpr std::uint64_t patience = 8;
    const auto rate = std::max<std::uint64_t>(jack_get_sample_rate(&client_), 1);
    const auto periods = patience * jack_get_buffer_size(&client_) * 1'000'000 / rate;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(100) +
                          std::chrono::microseconds(periods);
    // The server's thread may not make a system call to wake this one, so this one looks.
    while (!condition() && isServerThere() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace tavro::jack
