#include "UserInterface/PerformanceSettings.h"

#include "PerformanceModel/ChordMode.h"
#include "PerformanceModel/KeyboardLayoutKind.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tavro {

namespace {

// The state may hold any number that a file held; the scene's numbers are narrower.
int shown(std::int64_t value) {
    return static_cast<int>(
        std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace

PerformanceSettings::PerformanceSettings(PerformanceController& controller) : controller_(controller) {
    connect(&controller_, &PerformanceController::stateChanged, this, &PerformanceSettings::changed);
}

template <typename Value>
void PerformanceSettings::store(Value PerformanceState::* field, Value value) {
    auto state = controller_.state();
    state.*field = std::move(value);
    controller_.changeState(state);
}

int PerformanceSettings::rootSemitone() const {
    return shown(controller_.state().rootSemitone);
}

void PerformanceSettings::setRootSemitone(int value) {
    store<std::int64_t>(&PerformanceState::rootSemitone, value);
}

QString PerformanceSettings::scaleName() const {
    return QString::fromStdString(controller_.state().scaleName);
}

void PerformanceSettings::setScaleName(const QString& value) {
    store(&PerformanceState::scaleName, value.toStdString());
}

int PerformanceSettings::globalOctaveOffset() const {
    return shown(controller_.state().globalOctaveOffset);
}

void PerformanceSettings::setGlobalOctaveOffset(int value) {
    store<std::int64_t>(&PerformanceState::globalOctaveOffset, value);
}

int PerformanceSettings::velocity() const {
    return shown(controller_.state().velocity);
}

void PerformanceSettings::setVelocity(int value) {
    store<std::int64_t>(&PerformanceState::velocity, value);
}

int PerformanceSettings::humanizeVelocity() const {
    return shown(controller_.state().humanizeVelocity);
}

void PerformanceSettings::setHumanizeVelocity(int value) {
    store<std::int64_t>(&PerformanceState::humanizeVelocity, value);
}

int PerformanceSettings::strumMilliseconds() const {
    return shown(controller_.state().strumMilliseconds);
}

void PerformanceSettings::setStrumMilliseconds(int value) {
    store<std::int64_t>(&PerformanceState::strumMilliseconds, value);
}

int PerformanceSettings::maxChordNotes() const {
    return shown(controller_.state().maxChordNotes);
}

void PerformanceSettings::setMaxChordNotes(int value) {
    store<std::int64_t>(&PerformanceState::maxChordNotes, value);
}

int PerformanceSettings::midiChannel() const {
    return shown(controller_.state().midiChannel);
}

void PerformanceSettings::setMidiChannel(int value) {
    store<std::int64_t>(&PerformanceState::midiChannel, value);
}

QString PerformanceSettings::chordMode() const {
    return QString::fromUtf8(rawValue(controller_.state().chordMode));
}

bool PerformanceSettings::bassNoteEnabled() const {
    return controller_.state().bassNoteEnabled;
}

void PerformanceSettings::setBassNoteEnabled(bool value) {
    store(&PerformanceState::bassNoteEnabled, value);
}

int PerformanceSettings::bassOctaveDown() const {
    return shown(controller_.state().bassOctaveDown);
}

void PerformanceSettings::setBassOctaveDown(int value) {
    store<std::int64_t>(&PerformanceState::bassOctaveDown, value);
}

int PerformanceSettings::melodyOctaveOffset() const {
    return shown(controller_.state().melodyOctaveOffset);
}

void PerformanceSettings::setMelodyOctaveOffset(int value) {
    store<std::int64_t>(&PerformanceState::melodyOctaveOffset, value);
}

QString PerformanceSettings::keyboardLayout() const {
    return QString::fromUtf8(rawValue(controller_.state().keyboardLayout));
}

void PerformanceSettings::setKeyboardLayout(const QString& value) {
    if (const auto known = keyboardLayoutKindFromRawValue(value.toStdString())) {
        store(&PerformanceState::keyboardLayout, *known);
    }
}

QVariantMap PerformanceSettings::defaults() {
    const PerformanceState state;
    return {{QStringLiteral("globalOctaveOffset"), shown(state.globalOctaveOffset)},
            {QStringLiteral("velocity"), shown(state.velocity)},
            {QStringLiteral("humanizeVelocity"), shown(state.humanizeVelocity)},
            {QStringLiteral("chordComplexity"), shown(state.voicingComplexity)},
            {QStringLiteral("maxChordNotes"), shown(state.maxChordNotes)},
            {QStringLiteral("strumMilliseconds"), shown(state.strumMilliseconds)},
            {QStringLiteral("melodyOctaveOffset"), shown(state.melodyOctaveOffset)}};
}

bool PerformanceSettings::hold() const {
    return controller_.holdBinding();
}

void PerformanceSettings::setHold(bool value) {
    controller_.setHoldBinding(value);
}

bool PerformanceSettings::smartHold() const {
    return controller_.smartHoldBinding();
}

void PerformanceSettings::setSmartHold(bool value) {
    controller_.setSmartHoldBinding(value);
}

bool PerformanceSettings::chordEnabled() const {
    return controller_.chordEnabledBinding();
}

void PerformanceSettings::setChordEnabled(bool value) {
    controller_.setChordEnabledBinding(value);
}

int PerformanceSettings::chordComplexity() const {
    return shown(controller_.chordComplexityBinding());
}

void PerformanceSettings::setChordComplexity(int value) {
    controller_.setChordComplexityBinding(value);
}

bool PerformanceSettings::splitMode() const {
    return controller_.splitModeBinding();
}

void PerformanceSettings::setSplitMode(bool value) {
    controller_.setSplitModeBinding(value);
}

} // namespace tavro
