#pragma once

#include "MidiOutput/MidiOutputManager.h"
#include "Performance/MidiSystemSetting.h"
#include "Performance/PerformanceController.h"

#include <QHash>
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
    /// The chosen entry in a few words: its name, who listens, what was lost.
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    /// Notes cannot be sent there.
    Q_PROPERTY(bool isUnavailable READ isUnavailable NOTIFY changed)
    /// Nobody gets them, as far as can be known.
    Q_PROPERTY(bool isUnheard READ isUnheard NOTIFY changed)
    /// The name of the chosen entry.
    Q_PROPERTY(QString selectedName READ selectedName NOTIFY changed)
    /// What to do so that something is heard; empty when nothing is in the way, as far as can be known.
    Q_PROPERTY(QString hint READ hint NOTIFY changed)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)
    /// Entries of the MIDI systems that can be chosen, one that works in periods with its own length of them
    /// too; a single system leaves nothing to choose.
    Q_PROPERTY(QVariantList systems READ systems CONSTANT)
    /// The value of the chosen one. Writing it ends what sounds first.
    Q_PROPERTY(QString system READ system WRITE chooseSystem NOTIFY changed)
    /// The period in force, for a tip; empty where there is none.
    Q_PROPERTY(QString periodText READ periodText NOTIFY changed)

public:
    /// All of them must outlive this.
    MidiOutputPresenter(PerformanceController& controller, MidiOutputManager& midi,
                        MidiSystemSetting& setting);

    [[nodiscard]] QVariantList destinations() const;
    [[nodiscard]] uint selectedDestination() const;
    void selectDestination(uint id);
    [[nodiscard]] QString summary() const;
    [[nodiscard]] bool isUnavailable() const;
    [[nodiscard]] bool isUnheard() const;
    [[nodiscard]] QString selectedName() const;
    [[nodiscard]] QString hint() const;
    [[nodiscard]] QString statusText() const;
    [[nodiscard]] QVariantList systems() const;
    [[nodiscard]] QString system() const;
    void chooseSystem(const QString& value);
    [[nodiscard]] QString periodText() const;

    /// Reads the destinations anew: not every system tells when one of them is renamed.
    Q_INVOKABLE void refresh();

    /// The stop button.
    Q_INVOKABLE void stopAllNotes();

Q_SIGNALS:
    void changed();
    void statusTextChanged();

private:
    void rememberNames();
    [[nodiscard]] bool isSelectedThere() const;

    PerformanceController& controller_;
    MidiOutputManager& midi_;
    MidiSystemSetting& setting_;
    /// Of every destination seen so far, so that a chosen one that has gone can still be named.
    QHash<MidiObjectRef, QString> names_;
};

} // namespace tavro
