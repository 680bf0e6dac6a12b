#pragma once

#include "Platform/Linux/Jack/PeriodTarget.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <ostream>
#include <vector>

namespace tavro::jack {

using Bytes = std::vector<std::uint8_t>;

struct Event {
    std::uint16_t port;
    std::uint32_t offset;
    Bytes bytes;

    friend bool operator==(const Event&, const Event&) = default;

    friend std::ostream& operator<<(std::ostream& stream, const Event& event) {
        stream << "port " << event.port << " at " << event.offset << ":";
        for (const auto byte : event.bytes) {
            stream << ' ' << unsigned{byte};
        }
        return stream;
    }
};

/// A deque, because places stay where they are while it grows.
using Events = std::deque<Event>;

/// Keeps what is written.
class RecordedPeriods final : public PeriodTarget {
public:
    [[nodiscard]] bool hasPort(std::uint16_t port) const override { return hasPorts.at(port); }

    [[nodiscard]] std::uint8_t* reserve(std::uint16_t port, std::uint32_t offset, std::size_t size) override {
        if (events.size() == room) {
            return nullptr;
        }
        return events.emplace_back(Event{port, offset, Bytes(size)}).bytes.data();
    }

    std::vector<bool> hasPorts{true, true};
    std::size_t room = std::numeric_limits<std::size_t>::max();
    Events events;
};

} // namespace tavro::jack
