#include "Player/ScriptPlayer.h"

#include "PerformanceModel/PerformanceStateCoding.h"
#include "Player/ControlBinding.h"

namespace tavro {

ScriptPlayer::ScriptPlayer(PlayerOutput& output, const std::vector<MidiSystem*>& midiSystems, Pacer& pacer,
                           const PerformanceState& initialState)
    : output_(output), pacer_(pacer), midi_(observed(midiSystems), mainActor_),
      controller_(midi_, mainActor_, initialState) {}

ScriptPlayer::ScriptPlayer(PlayerOutput& output, MidiSystem& midiSystem, Pacer& pacer,
                           const PerformanceState& initialState)
    : ScriptPlayer(output, std::vector{&midiSystem}, pacer, initialState) {}

std::vector<MidiSystem*> ScriptPlayer::observed(const std::vector<MidiSystem*>& systems) {
    std::vector<MidiSystem*> all;
    for (auto* system : systems) {
        auto& observed = midiSystems_.emplace_back(*system);
        observed.onMessage = [this](auto message) { output_.midi(time(), message); };
        observed.onLoss = [this] {
            hasLostMidiSystem_ = true;
            pacer_.interrupt();
        };
        // The real time is never exactly the virtual one. A message that is out before a command which comes
        // close to it could neither be cancelled by that command nor stand behind what it sends.
        observed.mayGoAhead = [this](auto delay) { return mainActor_.now() + delay <= nextCommandTime_; };
        all.push_back(&observed);
    }
    return all;
}

void ScriptPlayer::play(const KeyScript& script) {
    for (auto command = script.commands.begin(); command != script.commands.end(); ++command) {
        if (hasQuit_ || !passUntil(mainActor_.now())) {
            return;
        }
        const auto next = std::next(command);
        const auto* wait = next == script.commands.end() ? nullptr : std::get_if<KeyScript::At>(&*next);
        nextCommandTime_ = wait == nullptr ? mainActor_.now() : std::chrono::milliseconds(wait->milliseconds);
        std::visit([this](const auto& kind) { run(kind); }, *command);
    }
}

void ScriptPlayer::runOut() {
    while (const auto due = mainActor_.nextDue()) {
        if (!passUntil(*due)) {
            return;
        }
    }
}

void ScriptPlayer::quit() {
    // What the system has told meanwhile, its own end above all, comes first.
    mainActor_.runDue();
    controller_.shutDown();
    mainActor_.runDue();
}

bool ScriptPlayer::passUntil(std::chrono::nanoseconds time) {
    for (auto due = mainActor_.nextDue(); due && *due <= time; due = mainActor_.nextDue()) {
        if (!pacer_.waitUntil(*due)) {
            return false;
        }
        mainActor_.runUntil(*due);
    }
    if (!pacer_.waitUntil(time)) {
        return false;
    }
    mainActor_.runUntil(time);
    return true;
}

void ScriptPlayer::run(const KeyScript::At& command) {
    passUntil(std::chrono::milliseconds(command.milliseconds));
}

void ScriptPlayer::run(const KeyScript::Down& command) {
    controller_.handleKeyDown(command.key);
}

void ScriptPlayer::run(const KeyScript::Up& command) {
    controller_.handleKeyUp(command.key);
}

void ScriptPlayer::run(const KeyScript::Set& command) {
    auto state = controller_.state();
    PerformanceStateCoding::decodeField(state, command.field, command.value);
    controller_.changeState(state);
}

void ScriptPlayer::run(const KeyScript::Control& command) {
    ControlBinding::find(command.binding)->set(controller_, command.value);
}

void ScriptPlayer::run(const KeyScript::Panic& /*command*/) {
    controller_.stopAllNotes();
}

void ScriptPlayer::run(const KeyScript::Show& /*command*/) {
    output_.show(time(), {
                             .chord = controller_.currentChordText().toStdString(),
                             .pressed = inLayoutOrder(controller_.activeKeys()),
                             .lit = inLayoutOrder(controller_.highlightedKeys()),
                             .status = midi_.statusText().toStdString(),
                         });
}

void ScriptPlayer::run(const KeyScript::Quit& /*command*/) {
    quit();
    hasQuit_ = true;
}

std::chrono::milliseconds ScriptPlayer::time() const {
    return std::chrono::floor<std::chrono::milliseconds>(mainActor_.now());
}

std::vector<std::string> ScriptPlayer::inLayoutOrder(const std::set<Character>& keys) const {
    std::vector<std::string> ordered;
    for (const auto& row : controller_.layout().rows()) {
        for (const auto key : row.keys) {
            if (keys.contains(lowercased(key))) {
                ordered.push_back(toUtf8(lowercased(key)));
            }
        }
    }
    return ordered;
}

} // namespace tavro
