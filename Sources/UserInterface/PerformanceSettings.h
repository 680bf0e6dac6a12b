#pragma once

#include "Performance/PerformanceController.h"

#include <QObject>
#include <QString>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <cstdint>

namespace tavro {

/// The performance settings as properties for the scene. Writing one hands the whole changed state to the
/// controller, which does what the change asks for; values are stored as given. The last five go by the
/// controller's rules for switches that depend on each other, and are the ones for controls.
class PerformanceSettings : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(int rootSemitone READ rootSemitone WRITE setRootSemitone NOTIFY changed)
    Q_PROPERTY(QString scaleName READ scaleName WRITE setScaleName NOTIFY changed)
    Q_PROPERTY(int globalOctaveOffset READ globalOctaveOffset WRITE setGlobalOctaveOffset NOTIFY changed)
    Q_PROPERTY(int velocity READ velocity WRITE setVelocity NOTIFY changed)
    Q_PROPERTY(int humanizeVelocity READ humanizeVelocity WRITE setHumanizeVelocity NOTIFY changed)
    Q_PROPERTY(int strumMilliseconds READ strumMilliseconds WRITE setStrumMilliseconds NOTIFY changed)
    Q_PROPERTY(int maxChordNotes READ maxChordNotes WRITE setMaxChordNotes NOTIFY changed)
    Q_PROPERTY(int midiChannel READ midiChannel WRITE setMidiChannel NOTIFY changed)
    Q_PROPERTY(QString chordMode READ chordMode NOTIFY changed)
    Q_PROPERTY(bool bassNoteEnabled READ bassNoteEnabled WRITE setBassNoteEnabled NOTIFY changed)
    Q_PROPERTY(int bassOctaveDown READ bassOctaveDown WRITE setBassOctaveDown NOTIFY changed)
    Q_PROPERTY(int melodyOctaveOffset READ melodyOctaveOffset WRITE setMelodyOctaveOffset NOTIFY changed)
    Q_PROPERTY(QString keyboardLayout READ keyboardLayout WRITE setKeyboardLayout NOTIFY changed)
    Q_PROPERTY(bool hold READ hold WRITE setHold NOTIFY changed)
    Q_PROPERTY(bool smartHold READ smartHold WRITE setSmartHold NOTIFY changed)
    Q_PROPERTY(bool chordEnabled READ chordEnabled WRITE setChordEnabled NOTIFY changed)
    Q_PROPERTY(int chordComplexity READ chordComplexity WRITE setChordComplexity NOTIFY changed)
    Q_PROPERTY(bool splitMode READ splitMode WRITE setSplitMode NOTIFY changed)
    /// What the numbers above are in a performance that nobody has changed, by their names.
    Q_PROPERTY(QVariantMap defaults READ defaults CONSTANT)

public:
    /// The controller must outlive this.
    explicit PerformanceSettings(PerformanceController& controller);

    [[nodiscard]] int rootSemitone() const;
    [[nodiscard]] QString scaleName() const;
    [[nodiscard]] int globalOctaveOffset() const;
    [[nodiscard]] int velocity() const;
    [[nodiscard]] int humanizeVelocity() const;
    [[nodiscard]] int strumMilliseconds() const;
    [[nodiscard]] int maxChordNotes() const;
    [[nodiscard]] int midiChannel() const;
    /// The mode's stored name.
    [[nodiscard]] QString chordMode() const;
    [[nodiscard]] bool bassNoteEnabled() const;
    [[nodiscard]] int bassOctaveDown() const;
    [[nodiscard]] int melodyOctaveOffset() const;
    /// The layout kind's stored name, here and in the setter; an unknown name changes nothing.
    [[nodiscard]] QString keyboardLayout() const;

    void setRootSemitone(int value);
    void setScaleName(const QString& value);
    void setGlobalOctaveOffset(int value);
    void setVelocity(int value);
    void setHumanizeVelocity(int value);
    void setStrumMilliseconds(int value);
    void setMaxChordNotes(int value);
    void setMidiChannel(int value);
    void setBassNoteEnabled(bool value);
    void setBassOctaveDown(int value);
    void setMelodyOctaveOffset(int value);
    void setKeyboardLayout(const QString& value);

    [[nodiscard]] bool hold() const;
    [[nodiscard]] bool smartHold() const;
    [[nodiscard]] bool chordEnabled() const;
    [[nodiscard]] int chordComplexity() const;
    [[nodiscard]] bool splitMode() const;

    [[nodiscard]] static QVariantMap defaults();

    void setHold(bool value);
    void setSmartHold(bool value);
    void setChordEnabled(bool value);
    void setChordComplexity(int value);
    void setSplitMode(bool value);

Q_SIGNALS:
    /// Some of the settings, or all, have another value.
    void changed();

private:
    template <typename Value>
    void store(Value PerformanceState::* field, Value value);

    PerformanceController& controller_;
};

} // namespace tavro
