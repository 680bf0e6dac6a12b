#include "UserInterface/MidiOutputPresenter.h"

#include "UserInterface/PickerChoices.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr MidiObjectRef ownSource = 0;
/// Behind the name of a system whose period is left as it is.
constexpr QLatin1String ownPeriod("/own-period");

} // namespace

MidiOutputPresenter::MidiOutputPresenter(PerformanceController& controller, MidiOutputManager& midi,
                                         MidiSystemSetting& setting)
    : controller_(controller), midi_(midi), setting_(setting) {
    connect(&midi_, &MidiOutputManager::destinationsChanged, this, [this] {
        rememberNames();
        Q_EMIT changed();
    });
    connect(&midi_, &MidiOutputManager::selectedDestinationIDChanged, this, &MidiOutputPresenter::changed);
    connect(&midi_, &MidiOutputManager::connectionChanged, this, &MidiOutputPresenter::changed);
    connect(&midi_, &MidiOutputManager::systemChanged, this, [this] {
        // Other ports have these numbers there.
        names_.clear();
        rememberNames();
        Q_EMIT changed();
    });
    connect(&setting_, &MidiSystemSetting::changed, this, &MidiOutputPresenter::changed);
    connect(&midi_, &MidiOutputManager::statusTextChanged, this, &MidiOutputPresenter::statusTextChanged);
    rememberNames();
}

void MidiOutputPresenter::rememberNames() {
    for (const auto& destination : midi_.destinations()) {
        names_.insert(destination.id, QString::fromStdString(destination.name));
    }
}

QVariantList MidiOutputPresenter::destinations() const {
    QVariantList entries{PickerChoices::entry(tr("TAVRO Out (virtual)"), ownSource)};
    for (const auto& destination : midi_.destinations()) {
        entries.append(PickerChoices::entry(QString::fromStdString(destination.name), destination.id));
    }
    if (!isSelectedThere()) {
        entries.append(PickerChoices::entry(selectedName(), midi_.selectedDestinationID()));
    }
    return entries;
}

uint MidiOutputPresenter::selectedDestination() const {
    return midi_.selectedDestinationID();
}

void MidiOutputPresenter::selectDestination(uint id) {
    controller_.selectDestination(id);
}

bool MidiOutputPresenter::isSelectedThere() const {
    const auto id = midi_.selectedDestinationID();
    return id == ownSource ||
           std::ranges::any_of(midi_.destinations(), [id](const auto& known) { return known.id == id; });
}

QString MidiOutputPresenter::selectedName() const {
    const auto id = midi_.selectedDestinationID();
    if (id == ownSource) {
        return tr("TAVRO Out (virtual)");
    }
    const auto name = names_.value(id, tr("Destination %1").arg(id));
    return isSelectedThere() ? name : tr("%1 (not available)").arg(name);
}

QString MidiOutputPresenter::summary() const {
    auto text = selectedName();
    const auto listeners = midi_.listeners();
    if (!midi_.isReady()) {
        text += tr(" · no MIDI");
    } else if (midi_.selectedDestinationID() == ownSource && listeners) {
        text += *listeners == 1 ? tr(" · 1 listener") : tr(" · %1 listeners").arg(*listeners);
    }
    if (midi_.droppedMessages() > 0) {
        text += tr(" · %1 lost").arg(midi_.droppedMessages());
    }
    return text;
}

bool MidiOutputPresenter::isUnavailable() const {
    return !midi_.isReady() || !isSelectedThere();
}

bool MidiOutputPresenter::isUnheard() const {
    return midi_.selectedDestinationID() == ownSource && midi_.listeners() == std::size_t{0};
}

QString MidiOutputPresenter::hint() const {
    if (!midi_.isReady()) {
        return midi_.isLookingForASystem()
                   ? tr("No MIDI system answers, so nothing can sound. TAVRO looks for one every second.")
                   : tr("No MIDI system answers, so nothing can sound.");
    }
    if (!isSelectedThere()) {
        return tr("The chosen MIDI Output is gone. Connect it again, or choose another one in Settings.");
    }
    if (isUnheard()) {
        return tr("Nothing listens yet: choose TAVRO Out as the MIDI input of your instrument.");
    }
    return {};
}

QString MidiOutputPresenter::statusText() const {
    return midi_.statusText();
}

QVariantList MidiOutputPresenter::systems() const {
    QVariantList entries{PickerChoices::entry(tr("Automatic"), MidiSystemTable::automatic())};
    for (const auto& entry : setting_.table().entries()) {
        entries.append(PickerChoices::entry(entry.title, entry.name));
        if (entry.hasPeriods) {
            entries.append(
                PickerChoices::entry(tr("%1, system default").arg(entry.title), entry.name + ownPeriod));
        }
    }
    return entries;
}

QString MidiOutputPresenter::system() const {
    const auto& choice = setting_.choice();
    return choice.asksForShortPeriod ? choice.name : choice.name + ownPeriod;
}

void MidiOutputPresenter::chooseSystem(const QString& value) {
    auto name = value;
    const auto hasOwnPeriod = name.endsWith(ownPeriod);
    if (hasOwnPeriod) {
        name.chop(ownPeriod.size());
    }
    setting_.choose({.name = name, .asksForShortPeriod = !hasOwnPeriod}, controller_, midi_);
}

QString MidiOutputPresenter::periodText() const {
    const auto period = midi_.period();
    if (!period) {
        return {};
    }
    const auto milliseconds = 1000.0 * period->frames / period->rate;
    return tr("Period: %1 frames at %2 Hz (%3 ms)")
        .arg(period->frames)
        .arg(period->rate)
        .arg(milliseconds, 0, 'f', 1);
}

void MidiOutputPresenter::refresh() {
    midi_.refreshDestinations();
}

void MidiOutputPresenter::stopAllNotes() {
    controller_.stopAllNotes();
}

} // namespace tavro
