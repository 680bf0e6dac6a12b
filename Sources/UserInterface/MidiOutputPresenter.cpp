#include "UserInterface/MidiOutputPresenter.h"

#include "UserInterface/PickerChoices.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr MidiObjectRef ownSource = 0;

} // namespace

MidiOutputPresenter::MidiOutputPresenter(PerformanceController& controller, MidiOutputManager& midi)
    : controller_(controller), midi_(midi) {
    connect(&midi_, &MidiOutputManager::destinationsChanged, this, [this] {
        rememberNames();
        Q_EMIT changed();
    });
    connect(&midi_, &MidiOutputManager::selectedDestinationIDChanged, this, &MidiOutputPresenter::changed);
    connect(&midi_, &MidiOutputManager::connectionChanged, this, &MidiOutputPresenter::changed);
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
        return tr("No MIDI system answers, so nothing can sound.");
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

void MidiOutputPresenter::refresh() {
    midi_.refreshDestinations();
}

void MidiOutputPresenter::stopAllNotes() {
    controller_.stopAllNotes();
}

} // namespace tavro
