#include "Platform/Linux/Jack/PortWriter.h"

#include "Platform/Linux/Jack/PeriodClock.h"

#include <jack/midiport.h>

#include <algorithm>
#include <thread>

namespace tavro::jack {

namespace {

std::size_t indexOf(PortWriter::Port port) {
    return static_cast<std::size_t>(port);
}

/// The ports' buffers for the running period; null where there is no port.
class PortBuffers final : public PeriodTarget {
public:
    void set(std::size_t port, void* buffer) { buffers_[port] = buffer; }

    [[nodiscard]] bool hasPort(std::uint16_t port) const override { return buffers_[port] != nullptr; }

    [[nodiscard]] std::uint8_t* reserve(std::uint16_t port, std::uint32_t offset, std::size_t size) override {
        return jack_midi_event_reserve(buffers_[port], offset, size);
    }

private:
    std::array<void*, portCount> buffers_{};
};

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
    if (depth_ > 0) {
        handover_.flush();
    }
    if (!isAllTaken()) {
        waitFor([this] { return isAllTaken(); }, isServerThere);
        // The period that took the last message may be running still; the readers of this port run in it
        // too, and are done when the next one is over.
        waitForPeriod(finishedPeriods_.load() + 2, isServerThere);
        return;
    }
    // Taken by the period that ran while it was sent, or by the one after it; and again one for the readers.
    waitForPeriod(lastSend_ + 3, isServerThere);
}

bool PortWriter::isAllTaken() {
    return ring_.isEmpty() && !scheduled_.isSettledOneWaiting();
}

bool PortWriter::isServerSilent() const {
    return silentSince_ == finishedPeriods_.load();
}

void PortWriter::detach(Port port, const std::function<bool()>& isServerThere) {
    if (isServerThere()) {
        giveUpScheduled(port);
    }
    finishSending(isServerThere);
    ports_[indexOf(port)].store(nullptr, std::memory_order_release);
    waitForPeriod(finishedPeriods_.load() + 1, isServerThere);
}

void PortWriter::beginGesture() {
    if (depth_++ == 0) {
        handover_.begin(jack_frame_time(&client_));
    }
}

void PortWriter::endGesture() {
    if (depth_ == 0 || --depth_ > 0) {
        return;
    }
    lastSend_ = finishedPeriods_.load();
    handover_.end();
}

void PortWriter::send(Port port, std::span<const std::uint8_t> message) {
    if (ports_[indexOf(port)].load(std::memory_order_relaxed) == nullptr) {
        return;
    }
    beginGesture();
    if (!handover_.send(static_cast<std::uint16_t>(port), message)) {
        dropped_.fetch_add(1, std::memory_order_relaxed);
    }
    endGesture();
}

std::optional<MidiTicket> PortWriter::schedule(Port port, std::span<const std::uint8_t> message,
                                               std::chrono::nanoseconds delay) {
    // Counted in frames of the nominal rate: the server's conversion of a time to come stretches the length
    // that it measured of the last period, whose error of some microseconds grows with every period to come.
    const auto frames = framesIn(delay, jack_get_sample_rate(&client_));
    if (!frames || ports_[indexOf(port)].load(std::memory_order_relaxed) == nullptr) {
        return std::nullopt;
    }
    beginGesture();
    const auto ticket = handover_.schedule(static_cast<std::uint16_t>(port), message, *frames);
    endGesture();
    return ticket;
}

bool PortWriter::cancel(MidiTicket ticket) {
    lastSend_ = finishedPeriods_.load();
    return scheduled_.cancel(ticket);
}

void PortWriter::settle(MidiTicket ticket) {
    lastSend_ = finishedPeriods_.load();
    scheduled_.settle(ticket);
}

void PortWriter::giveUpScheduled(Port port) {
    dropped_.fetch_add(scheduled_.cancelAll(static_cast<std::uint16_t>(port)), std::memory_order_relaxed);
}

int PortWriter::process(jack_nframes_t frames) {
    PortBuffers buffers;
    for (std::size_t index = 0; index < ports_.size(); ++index) {
        if (auto* port = ports_[index].load(std::memory_order_acquire)) {
            auto* const buffer = jack_port_get_buffer(port, frames);
            jack_midi_clear_buffer(buffer);
            buffers.set(index, buffer);
        }
    }
    const auto lost = merge_.fill(jack_last_frame_time(&client_), frames, buffers);
    dropped_.fetch_add(lost, std::memory_order_relaxed);
    lostAtPorts_.fetch_add(lost, std::memory_order_relaxed);
    finishedPeriods_.fetch_add(1);
    return 0;
}

void PortWriter::waitForPeriod(std::uint64_t count, const std::function<bool()>& isServerThere) {
    waitFor([this, count] { return finishedPeriods_.load() >= count; }, isServerThere);
}

void PortWriter::waitFor(const std::function<bool()>& condition, const std::function<bool()>& isServerThere) {
    using Clock = std::chrono::steady_clock;
    const auto rate = std::max<std::uint64_t>(jack_get_sample_rate(&client_), 1);
    const std::chrono::microseconds period(jack_get_buffer_size(&client_) * std::uint64_t{1'000'000} / rate);
    constexpr std::chrono::milliseconds lateness{250};
    const auto end = Clock::now() + 8 * period + lateness;
    auto periods = finishedPeriods_.load();
    auto nextPeriodBy = Clock::now() + 2 * period + lateness;
    // The server's thread may not make a system call to wake this one, so this one looks.
    while (!condition() && isServerThere() && !isServerSilent() && Clock::now() < end) {
        if (const auto now = finishedPeriods_.load(); now != periods) {
            periods = now;
            nextPeriodBy = Clock::now() + 2 * period + lateness;
        } else if (Clock::now() >= nextPeriodBy) {
            silentSince_ = periods;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

} // namespace tavro::jack
