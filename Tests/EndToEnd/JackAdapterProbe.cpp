// Drives the JACK adapter by commands on standard input and answers with one JSON object a line. It makes
// the client and the two ports at its start, in the order the program does, and tells how that ended.
//   destinations            {"destinations":[{"id":1,"displayName":...,"name":...}]}
//   received BYTES          decimal bytes, at the source
//   send ID BYTES           to a destination
//   route ID                prepares the route
//   timed COUNT             that many note-ons at the source, at odd times; tells the server's frame time
//                           right before and right after each: {"timed":[[before,after],...]}
//   strum STEP COUNT        schedules that many note-ons at the source, STEP ms apart, and blocks the main
//                           thread for 30 ms at a time until they are over; the times as for `timed`:
//                           {"strum":[...]}
//   gestures STEP COUNT     that many strums of eight note-ons, STEP ms apart, upward and downward in turns,
//   each
//                           a gesture at an odd time: the note is its place in the strum, the velocity the
//                           number of the strum, from 1; {"gestures":COUNT}
//   cancel DELAY AFTER      schedules one note-on, blocks for AFTER ms and takes it back; {"cancelled":true}
//   hammer MS               calls about routes and destinations without a pause; {"hammered":calls}
//   flood COUNT             that many three-byte messages at once; {"dropped":N}
//   quit                    32 messages at the source, then at once the disposal in the program's order
// Each notice of the adapter is {"changed":true}.

#include "CommandLines.h"

#include "Platform/Linux/Jack/MidiSystemAdapter.h"
#include "Platform/Qt/QtMainActor.h"

#include <QCoreApplication>

#include <jack/jack.h>
#include <nlohmann/json.hpp>

#include <array>
#include <chrono>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

void print(const Json& json) {
    std::cout << json.dump() << std::endl;
}

Json describe(const tavro::MidiCreation& creation) {
    return {{"status", creation.status}, {"isMade", creation.reference != 0}};
}

Json orNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

std::vector<std::uint8_t> readBytes(std::istream& words) {
    std::vector<std::uint8_t> bytes;
    for (unsigned value = 0; words >> value;) {
        bytes.push_back(static_cast<std::uint8_t>(value));
    }
    return bytes;
}

class Probe {
public:
    explicit Probe(tavro::MainActor& mainActor) : adapter_(mainActor) {
        client_ = adapter_.createClient("TAVRO", [] { print({{"changed", true}}); });
        port_ = adapter_.createOutputPort(client_.reference, "TAVRO MIDI Out");
        source_ = adapter_.createSource(client_.reference, "TAVRO Out");
        print({{"client", describe(client_)}, {"port", describe(port_)}, {"source", describe(source_)}});
    }

    /// False once the work is over.
    bool obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        tavro::MidiObjectRef destination = 0;
        std::size_t count = 0;
        if (command == "destinations") {
            tellDestinations();
        } else if (command == "received") {
            adapter_.received(source_.reference, readBytes(words));
        } else if (command == "send" && words >> destination) {
            adapter_.send(port_.reference, destination, readBytes(words));
        } else if (command == "route" && words >> destination) {
            adapter_.prepareRoute(port_.reference, destination);
        } else if (command == "timed" && words >> count) {
            sendTimed(count);
        } else if (unsigned first = 0; command == "strum" && words >> first >> count) {
            strum(std::chrono::milliseconds(first), count);
        } else if (command == "gestures" && words >> first >> count) {
            playGestures(std::chrono::milliseconds(first), count);
        } else if (unsigned second = 0; command == "cancel" && words >> first >> second) {
            cancel(std::chrono::milliseconds(first), std::chrono::milliseconds(second));
        } else if (command == "hammer" && words >> count) {
            hammer(std::chrono::milliseconds(count));
        } else if (command == "flood" && words >> count) {
            flood(count);
        } else if (command == "quit") {
            quit();
            QCoreApplication::quit();
        } else {
            std::cerr << "JackAdapterProbe: " << line << " is not known here\n";
            return false;
        }
        return true;
    }

private:
    void tellDestinations() {
        auto destinations = Json::array();
        const auto count = adapter_.numberOfDestinations();
        for (std::size_t index = 0; index < count; ++index) {
            const auto id = adapter_.destination(index);
            destinations.push_back({{"id", id},
                                    {"displayName", orNull(adapter_.displayName(id))},
                                    {"name", orNull(adapter_.name(id))}});
        }
        print({{"destinations", destinations}});
    }

    void sendTimed(std::size_t count) {
        auto* const clock = jack_client_open("Clock", JackNoStartServer, nullptr);
        auto times = Json::array();
        for (std::size_t number = 0; clock != nullptr && number < count; ++number) {
            // Steps that have no period in common with the server's, so that every offset has its turn.
            std::this_thread::sleep_for(std::chrono::microseconds(7919 + 617 * (number % 13)));
            const std::array<std::uint8_t, 3> message{0x90, static_cast<std::uint8_t>(number & 0x7FU), 1};
            const auto before = jack_frame_time(clock);
            adapter_.received(source_.reference, message);
            times.push_back({before, jack_frame_time(clock)});
        }
        if (clock != nullptr) {
            jack_client_close(clock);
        }
        print({{"timed", times}});
    }

    /// No timer and no event of the main thread can help meanwhile.
    static void block(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

    void strum(std::chrono::milliseconds step, std::size_t count) {
        auto* const clock = jack_client_open("Clock", JackNoStartServer, nullptr);
        auto times = Json::array();
        std::vector<tavro::MidiTicket> tickets;
        auto delay = step;
        for (std::size_t number = 0; clock != nullptr && number < count; ++number, delay += step) {
            const std::array<std::uint8_t, 3> message{0x90, static_cast<std::uint8_t>(number), 1};
            const auto before = jack_frame_time(clock);
            const auto ticket = adapter_.schedule(source_.reference, 0, message, delay);
            if (ticket) {
                tickets.push_back(*ticket);
            }
            times.push_back({before, jack_frame_time(clock)});
        }
        constexpr std::chrono::milliseconds pause(30);
        for (std::chrono::milliseconds time(0); time < delay; time += pause) {
            block(pause);
        }
        for (const auto ticket : tickets) {
            adapter_.settle(ticket);
        }
        if (clock != nullptr) {
            jack_client_close(clock);
        }
        print({{"strum", times}});
    }

    void playGestures(std::chrono::milliseconds step, std::size_t count) {
        constexpr int notes = 8;
        for (std::size_t number = 1; number <= count; ++number) {
            std::vector<tavro::MidiTicket> tickets;
            adapter_.beginGesture();
            for (auto index = 0; index < notes; ++index) {
                const auto note = number % 2 == 0 ? notes - 1 - index : index;
                const std::array<std::uint8_t, 3> message{0x90, static_cast<std::uint8_t>(note),
                                                          static_cast<std::uint8_t>(number)};
                if (note == 0) {
                    adapter_.received(source_.reference, message);
                } else if (const auto ticket =
                               adapter_.schedule(source_.reference, 0, message, note * step)) {
                    tickets.push_back(*ticket);
                }
            }
            adapter_.endGesture();
            // Some begin while the one before is still sounding.
            std::this_thread::sleep_for(step * (number % 3 == 0 ? 3 : notes) +
                                        std::chrono::microseconds(3919 + 617 * (number % 13)));
            for (const auto ticket : tickets) {
                if (number % 3 != 0) {
                    adapter_.settle(ticket);
                }
            }
        }
        print({{"gestures", count}});
    }

    void cancel(std::chrono::milliseconds delay, std::chrono::milliseconds after) {
        const std::array<std::uint8_t, 3> message{0x90, 60, 1};
        const auto ticket = adapter_.schedule(source_.reference, 0, message, delay);
        block(after);
        print({{"cancelled", ticket ? Json(adapter_.cancel(*ticket)) : Json(nullptr)}});
    }

    void hammer(std::chrono::milliseconds time) {
        const auto end = std::chrono::steady_clock::now() + time;
        std::size_t calls = 0;
        for (; std::chrono::steady_clock::now() < end; ++calls) {
            const std::array<std::uint8_t, 3> message{0xB0, 7, static_cast<std::uint8_t>(calls % 128)};
            const auto count = adapter_.numberOfDestinations();
            const auto id = count == 0 ? 0 : adapter_.destination(calls % count);
            adapter_.send(port_.reference, id, message);
            adapter_.received(source_.reference, message);
            static_cast<void>(adapter_.displayName(id));
            static_cast<void>(adapter_.listeners(source_.reference));
            static_cast<void>(adapter_.schedule(port_.reference, id, message, std::chrono::milliseconds(5)));
        }
        print({{"hammered", calls}});
    }

    void flood(std::size_t count) {
        const std::array<std::uint8_t, 3> message{0x90, 60, 1};
        for (std::size_t number = 0; number < count; ++number) {
            adapter_.received(source_.reference, message);
        }
        print({{"dropped", adapter_.droppedMessages()}});
    }

    void quit() {
        for (std::uint8_t number = 0; number < 32; ++number) {
            adapter_.received(source_.reference, std::array<std::uint8_t, 3>{0xB0, number, 0});
        }
        adapter_.disposePort(port_.reference);
        adapter_.disposeEndpoint(source_.reference);
        adapter_.disposeClient(client_.reference);
    }

    tavro::jack::MidiSystemAdapter adapter_;
    tavro::MidiCreation client_;
    tavro::MidiCreation port_;
    tavro::MidiCreation source_;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    tavro::QtMainActor mainActor;
    Probe probe(mainActor);
    return runCommandLines([&probe](const std::string& line) { return probe.obey(line); });
}
