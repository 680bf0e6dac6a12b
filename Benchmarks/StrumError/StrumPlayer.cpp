// Plays strummed chords through the program's own controller and JACK adapter, with the program's real window
// in front, which repaints all of itself all the time. A second client notes where the notes arrive. Output,
// one JSON object a line:
//   {"ready":true,"rate":48000,"period":256}
//   {"way":"exact","step_ms":5,"errors_us":[...],"missing":0,"xruns":0,"lost":0,"absences":0,
//    "late_us":90,"delay_us":5400.0}
//   {"frames":1234,"seconds":20.5,"refusals":0,"dropped":0}
// An error is a note's place in time, counted from the place of the first note of its chord, less what was
// planned; the delay is that of the first note, counted from the moment of the press. The way is "exact",
// "timers" or "bare", a client that does nothing else; late is the server's latest period meanwhile. Usage:
// strum_player CHORDS STEP...   (chords of each step and way; steps in milliseconds)

#include "Common/ArrivalRecorder.h"
#include "Platform/Linux/Jack/MidiSystemAdapter.h"
#include "Platform/Qt/QtMainActor.h"
#include "Programs/tavro/AppMainComposition.h"
#include "StrumError/BareStrum.h"
#include "StrumError/ContinuousRepaint.h"
#include "StrumError/StrumSession.h"
#include "StrumError/SwitchableScheduling.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <nlohmann/json.hpp>

#include <chrono>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace tavro;
using Json = nlohmann::ordered_json;

PerformanceState chordsOfManyNotes() {
    PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = ChordMode::eleventh;
    state.voicingComplexity = 100;
    state.maxChordNotes = 8;
    return state;
}

void connect(bench::ArrivalRecorder& recorder) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!recorder.connectSources()) {
        if (std::chrono::steady_clock::now() > deadline) {
            throw std::runtime_error("the own port did not appear");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

int play(unsigned chords, std::vector<int> steps) {
    QtMainActor mainActor;
    jack::MidiSystemAdapter adapter(mainActor);
    auto adapters = AppMainAdapters::headless();
    bench::SwitchableScheduling* made = nullptr;
    adapters.midiSystems = MidiSystemTable(
        {{QStringLiteral("jack"), QStringLiteral("JACK"), [&](MainActor&, const MidiSystemOptions&) {
              auto owned = std::make_unique<bench::SwitchableScheduling>(adapter);
              made = owned.get();
              return owned;
          }}});
    AppMainComposition program(adapters, mainActor);
    auto& scheduling = *made;
    program.controller.loadState(chordsOfManyNotes());
    if (!program.window.load()) {
        throw std::runtime_error("the window could not be made");
    }
    bench::ContinuousRepaint repaint(*program.window.window());
    bench::BareStrum bareStrum("Bare");
    bench::ArrivalRecorder recorder("Arrivals", {"TAVRO:TAVRO Out", "Bare:out"});
    connect(recorder);
    std::cout << Json{{"ready", true}, {"rate", recorder.rate()}, {"period", recorder.period()}} << std::endl;

    bench::StrumSession session({program.controller, scheduling, recorder, bareStrum, mainActor}, chords,
                                std::move(steps));
    QElapsedTimer clock;
    clock.start();
    const auto framesBefore = repaint.frames();
    session.start([&] {
        std::cout << Json{{"frames", repaint.frames() - framesBefore},
                          {"seconds", static_cast<double>(clock.elapsed()) / 1e3},
                          {"refusals", scheduling.refusals()},
                          {"dropped", adapter.droppedMessages()}}
                  << std::endl;
        QGuiApplication::quit();
    });
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    if (argc < 3) {
        std::cerr << "usage: strum_player CHORDS STEP...\n";
        return 2;
    }
    try {
        std::vector<int> steps;
        for (int index = 2; index < argc; ++index) {
            steps.push_back(std::stoi(argv[index]));
        }
        return play(static_cast<unsigned>(std::stoul(argv[1])), std::move(steps));
    } catch (const std::exception& error) {
        std::cerr << "strum_player: " << error.what() << "\n";
        return 1;
    }
}
