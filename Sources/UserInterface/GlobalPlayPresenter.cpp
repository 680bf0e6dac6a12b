#include "UserInterface/GlobalPlayPresenter.h"

namespace tavro {

GlobalPlayPresenter::GlobalPlayPresenter(GlobalPlay& globalPlay) : globalPlay_(globalPlay) {
    connect(&globalPlay_, &GlobalPlay::enabledChanged, this, &GlobalPlayPresenter::isOnChanged);
    connect(&globalPlay_, &GlobalPlay::hotkeyChanged, this, &GlobalPlayPresenter::hotkeyChanged);
    connect(&globalPlay_.globalKeyboard(), &GlobalKeyboardController::statusTextChanged, this,
            &GlobalPlayPresenter::statusTextChanged);
}

bool GlobalPlayPresenter::isOn() const {
    return globalPlay_.globalPlayBinding();
}

void GlobalPlayPresenter::setOn(bool isOn) {
    globalPlay_.setGlobalPlayBinding(isOn);
}

QString GlobalPlayPresenter::summary() const {
    return isOn() ? tr("Global On") : tr("Global Off");
}

QString GlobalPlayPresenter::statusText() const {
    return globalPlay_.globalKeyboard().statusText();
}

QString GlobalPlayPresenter::advice() const {
    return globalPlay_.globalKeyboard().adviceText();
}

QString GlobalPlayPresenter::displayedHotkey() const {
    return globalPlay_.displayedGlobalPlayHotkey();
}

QString GlobalPlayPresenter::hotkeyWarning() const {
    return globalPlay_.hotkeyTakesPlayingKey() ? tr("The hotkey is a playing key: it plays no longer.")
                                               : QString();
}

bool GlobalPlayPresenter::isRecordingHotkey() const {
    return globalPlay_.isRecordingGlobalPlayHotkey();
}

void GlobalPlayPresenter::setRecordingHotkey(bool isRecording) {
    globalPlay_.setRecordingGlobalPlayHotkey(isRecording);
}

} // namespace tavro
