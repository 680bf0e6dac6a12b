#pragma once

#include "ApplicationShell/PerformanceController.h"
#include "MidiOutput/MidiOutputManager.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// What the window shows of the MIDI output, and the two things that it can ask for. Follows the manager.
class MidiOutputPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Entries of "text" and "value": the program's own source, then the destinations by name. A chosen
    /// destination that has gone stands last, and says so.
    Q_PROPERTY(QVariantList destinations READ destinations NOTIFY changed)
    /// The value of the chosen entry. Writing it ends what sounds first.
    Q_PROPERTY(uint selectedDestination READ selectedDestination WRITE selectDestination NOTIFY changed)
    Q_PROPERTY(QString selectedName READ selectedName NOTIFY changed)
    Q_PROPERTY(bool isSelectedAvailable READ isSelectedAvailable NOTIFY changed)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)

public:
    /// Both must outlive this.
    MidiOutputPresenter(PerformanceController& controller, const MidiOutputManager& midi);

    [[nodiscard]] QVariantList destinations() const;
    [[nodiscard]] uint selectedDestination() const;
    void selectDestination(uint id);
    [[nodiscard]] QString selectedName() const;
    [[nodiscard]] bool isSelectedAvailable() const;
    [[nodiscard]] QString statusText() const;

    /// The stop button.
    Q_INVOKABLE void stopAllNotes();

Q_SIGNALS:
    void changed();
    void statusTextChanged();

private:
    PerformanceController& controller_;
    const MidiOutputManager& midi_;
};

} // namespace tavro
