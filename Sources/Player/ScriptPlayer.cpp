#include "Player/ScriptPlayer.h"

#include "PerformanceModel/PerformanceStateCoding.h"
#include "Player/ControlBinding.h"

namespace tavro {

ScriptPlayer::ScriptPlayer(PlayerOutput& output, const PerformanceState& initialState)
    : output_(output), midi_(midiSystem_, mainActor_), controller_(midi_, mainActor_, initialState) {
    midiSystem_.recordsMessages = false;
    midiSystem_.onMessage = [this](const auto& message) { output_.midi(time(), message.bytes); };
}

void ScriptPlayer::play(const KeyScript& script) {
    for (const auto& command : script.commands) {
        mainActor_.runDue();
        std::visit([this](const auto& kind) { run(kind); }, command);
        if (hasQuit_) {
            break;
        }
    }
    mainActor_.runToEnd();
}

void ScriptPlayer::run(const KeyScript::At& command) {
    mainActor_.runUntil(std::chrono::milliseconds(command.milliseconds));
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
    controller_.shutDown();
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
