// Plays strummed notes through the program's own MIDI output and ALSA adapter, by the sequencer's queue and
// by timers of the main thread in turns, while the main thread is busy most of the time, as with a window
// that repaints. Another client has the kernel stamp the notes as they arrive. Output, one JSON object a
// line:
//   {"exact":true,"step_ms":5,"errors_us":[...],"missing":0}
// An error is a note's time, counted from that of the first note of its chord, less what was planned.
// Usage: alsa_strum_player CHORDS STEP...   (chords of each step and way; steps in milliseconds)

#include "MidiOutput/MidiOutputManager.h"
#include "Platform/Linux/Alsa/MidiSystemAdapter.h"
#include "Platform/Qt/QtMainActor.h"
#include "StrumError/SwitchableScheduling.h"

#include <QCoreApplication>
#include <QTimer>

#include <nlohmann/json.hpp>

#include <chrono>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <alsa/asoundlib.h>

namespace {

using namespace tavro;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int notesOfChord = 8;
/// As long as a frame takes to paint, and as often as a screen shows one.
constexpr auto paint = 6ms;
constexpr auto frame = 16ms;

int demand(int status) {
    if (status < 0) {
        throw std::runtime_error(snd_strerror(status));
    }
    return status;
}

/// A client that listens to "TAVRO Out".
class Recorder {
public:
    Recorder() {
        snd_seq_t* opened = nullptr;
        demand(snd_seq_open(&opened, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK));
        sequencer_.reset(opened);
        const auto queue = demand(snd_seq_alloc_queue(opened));
        snd_seq_port_info_t* port = nullptr;
        snd_seq_port_info_alloca(&port);
        snd_seq_port_info_set_name(port, "in");
        snd_seq_port_info_set_capability(port, SND_SEQ_PORT_CAP_WRITE);
        snd_seq_port_info_set_type(port, SND_SEQ_PORT_TYPE_MIDI_GENERIC);
        snd_seq_port_info_set_timestamping(port, 1);
        snd_seq_port_info_set_timestamp_real(port, 1);
        snd_seq_port_info_set_timestamp_queue(port, queue);
        demand(snd_seq_create_port(opened, port));
        demand(snd_seq_start_queue(opened, queue, nullptr));
        demand(snd_seq_drain_output(opened));
        snd_seq_addr_t source{};
        demand(snd_seq_parse_address(opened, &source, "TAVRO"));
        while (snd_seq_connect_from(opened, snd_seq_port_info_get_port(port), source.client, source.port) <
               0) {
            if (++source.port > 8) {
                throw std::runtime_error("TAVRO has no port to listen to");
            }
        }
    }

    /// When the note-ons came since the last call, in microseconds.
    std::vector<double> take() {
        std::vector<double> times;
        snd_seq_event_t* event = nullptr;
        while (snd_seq_event_input(sequencer_.get(), &event) >= 0) {
            if (event->type == SND_SEQ_EVENT_NOTEON) {
                times.push_back(1e6 * event->time.time.tv_sec + event->time.time.tv_nsec / 1e3);
            }
        }
        return times;
    }

private:
    struct Close {
        void operator()(snd_seq_t* sequencer) const { snd_seq_close(sequencer); }
    };

    std::unique_ptr<snd_seq_t, Close> sequencer_;
};

class Session {
public:
    void play(bool isExact, int step) {
        scheduling_.setExact(isExact);
        recorder_.take();
        send(NoteEvent::EventType::noteOn, step);
        pass(std::chrono::milliseconds(step * notesOfChord) + 30ms);
        const auto times = recorder_.take();
        auto errors = nlohmann::json::array();
        for (std::size_t note = 1; note < times.size(); ++note) {
            errors.push_back(times[note] - times.front() - 1e3 * step * static_cast<double>(note));
        }
        std::cout << nlohmann::ordered_json{{"exact", isExact},
                                            {"step_ms", step},
                                            {"errors_us", errors},
                                            {"missing", notesOfChord - std::ssize(times)}}
                  << std::endl;
        send(NoteEvent::EventType::noteOff, 0);
        // Another place in the frame for each chord.
        pass(std::chrono::milliseconds(20 + ++chords_ % 16));
    }

private:
    void send(NoteEvent::EventType type, int step) {
        std::vector<NoteEvent> events;
        for (int note = 0; note < notesOfChord; ++note) {
            events.push_back({type, 60 + note, type == NoteEvent::EventType::noteOn ? 100 : 0, 1, U'a'});
        }
        manager_.send(events, step);
    }

    static void pass(std::chrono::milliseconds time) {
        const auto end = Clock::now() + time;
        while (Clock::now() < end) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    QtMainActor mainActor_;
    alsa::MidiSystemAdapter adapter_{mainActor_};
    bench::SwitchableScheduling scheduling_{adapter_};
    MidiOutputManager manager_{scheduling_, mainActor_};
    Recorder recorder_;
    int chords_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        Session session;
        QTimer painting;
        painting.setTimerType(Qt::PreciseTimer);
        QObject::connect(&painting, &QTimer::timeout, [] {
            for (const auto end = Clock::now() + paint; Clock::now() < end;) {
            }
        });
        painting.start(frame);
        const std::vector<std::string> arguments(argv + 1, argv + argc);
        for (auto chord = 0; chord < std::stoi(arguments.at(0)); ++chord) {
            for (std::size_t step = 1; step < arguments.size(); ++step) {
                session.play(true, std::stoi(arguments[step]));
                session.play(false, std::stoi(arguments[step]));
            }
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "alsa_strum_player: " << error.what() << "\n";
        return EXIT_FAILURE;
    }
}
