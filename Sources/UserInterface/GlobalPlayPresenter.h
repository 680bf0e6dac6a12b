#pragma once

#include "Performance/GlobalPlay.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// What the window shows of Global Play, and what it can ask for. Follows the shell's object.
class GlobalPlayPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Writing another value toggles Global Play; it may stay as it was, and then the status text says why.
    Q_PROPERTY(bool isOn READ isOn WRITE setOn NOTIFY isOnChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY isOnChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)
    /// What the user can do when the system keeps the keyboard from the program; empty otherwise.
    Q_PROPERTY(QString advice READ advice NOTIFY statusTextChanged)
    /// The hotkey as the user reads it.
    Q_PROPERTY(QString displayedHotkey READ displayedHotkey NOTIFY hotkeyChanged)
    /// What the hotkey keeps from the player; empty when it is nothing.
    Q_PROPERTY(QString hotkeyWarning READ hotkeyWarning NOTIFY hotkeyChanged)
    /// The next key in the window becomes the hotkey.
    Q_PROPERTY(bool isRecordingHotkey READ isRecordingHotkey WRITE setRecordingHotkey NOTIFY hotkeyChanged)

public:
    /// Must outlive this.
    explicit GlobalPlayPresenter(GlobalPlay& globalPlay);

    [[nodiscard]] bool isOn() const;
    void setOn(bool isOn);
    [[nodiscard]] QString summary() const;
    [[nodiscard]] QString statusText() const;
    [[nodiscard]] QString advice() const;
    [[nodiscard]] QString displayedHotkey() const;
    [[nodiscard]] QString hotkeyWarning() const;
    [[nodiscard]] bool isRecordingHotkey() const;
    void setRecordingHotkey(bool isRecording);

Q_SIGNALS:
    void isOnChanged();
    void statusTextChanged();
    void hotkeyChanged();

private:
    GlobalPlay& globalPlay_;
};

} // namespace tavro
