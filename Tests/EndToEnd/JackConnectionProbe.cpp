// Drives the program's MIDI output over the JACK adapter by commands on standard input, as the window would.
//   select NAME             chooses the destination of this name; nothing when there is none
//   strum STEP NOTE...      one key plays these notes, STEP ms apart
//   release NOTE...         the key's release
//   destinations            {"destinations":[names]}
// Tells what changes, one JSON object a line: {"status":text}, {"ready":true,"listeners":1,"dropped":0} and
// {"lost":true}.

#include "CommandLines.h"

#include "MidiOutput/MidiOutputManager.h"
#include "Platform/Linux/Jack/MidiSystemAdapter.h"
#include "Platform/Qt/QtMainActor.h"

#include <QCoreApplication>

#include <nlohmann/json.hpp>

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::ordered_json;

void print(const Json& json) {
    std::cout << json.dump() << std::endl;
}

class Probe {
public:
    explicit Probe(tavro::MainActor& mainActor) : adapter_(mainActor), midi_(adapter_, mainActor) {
        const auto tellStatus = [this] { print({{"status", midi_.statusText().toStdString()}}); };
        QObject::connect(&midi_, &tavro::MidiOutputManager::statusTextChanged, &midi_, tellStatus);
        QObject::connect(&midi_, &tavro::MidiOutputManager::connectionChanged, &midi_,
                         [this] { tellConnection(); });
        QObject::connect(&midi_, &tavro::MidiOutputManager::connectionLost, &midi_,
                         [] { print({{"lost", true}}); });
        tellStatus();
        tellConnection();
    }

    /// False when the command is not known.
    bool obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        std::int64_t step = 0;
        if (command == "select") {
            std::string name;
            std::getline(words >> std::ws, name);
            select(name);
        } else if (command == "destinations") {
            tellDestinations();
        } else if (command == "strum" && words >> step) {
            midi_.send(readEvents(words, tavro::NoteEvent::EventType::noteOn), step);
        } else if (command == "release") {
            midi_.send(readEvents(words, tavro::NoteEvent::EventType::noteOff), 0);
        } else {
            std::cerr << "JackConnectionProbe: " << line << " is not known here\n";
            return false;
        }
        return true;
    }

private:
    static std::vector<tavro::NoteEvent> readEvents(std::istream& words, tavro::NoteEvent::EventType type) {
        std::vector<tavro::NoteEvent> events;
        for (std::int64_t note = 0; words >> note;) {
            const auto velocity = type == tavro::NoteEvent::EventType::noteOn ? 100 : 0;
            events.push_back({type, note, velocity, 1, U'a'});
        }
        return events;
    }

    void select(const std::string& name) {
        for (const auto& destination : midi_.destinations()) {
            if (destination.name == name) {
                midi_.setSelectedDestinationID(destination.id);
            }
        }
    }

    void tellDestinations() {
        auto names = Json::array();
        for (const auto& destination : midi_.destinations()) {
            names.push_back(destination.name);
        }
        print({{"destinations", names}});
    }

    void tellConnection() {
        const auto listeners = midi_.listeners();
        print({{"ready", midi_.isReady()},
               {"listeners", listeners ? Json(*listeners) : Json(nullptr)},
               {"dropped", midi_.droppedMessages()}});
    }

    tavro::jack::MidiSystemAdapter adapter_;
    tavro::MidiOutputManager midi_;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    tavro::QtMainActor mainActor;
    Probe probe(mainActor);
    return runCommandLines([&probe](const std::string& line) { return probe.obey(line); });
}
