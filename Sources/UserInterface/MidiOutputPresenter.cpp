#include "UserInterface/MidiOutputPresenter.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr MidiObjectRef ownSource = 0;

QVariantMap entry(const QString& text, MidiObjectRef id) {
    return {{QStringLiteral("text"), text}, {QStringLiteral("value"), id}};
}

} // namespace

MidiOutputPresenter::MidiOutputPresenter(PerformanceController& controller, const MidiOutputManager& midi)
    : controller_(controller), midi_(midi) {
    connect(&midi_, &MidiOutputManager::destinationsChanged, this, &MidiOutputPresenter::changed);
    connect(&midi_, &MidiOutputManager::selectedDestinationIDChanged, this, &MidiOutputPresenter::changed);
    connect(&midi_, &MidiOutputManager::statusTextChanged, this, &MidiOutputPresenter::statusTextChanged);
}

QVariantList MidiOutputPresenter::destinations() const {
    QVariantList entries{entry(tr("TAVRO Out (virtual)"), ownSource)};
    for (const auto& destination : midi_.destinations()) {
        entries.append(entry(QString::fromStdString(destination.name), destination.id));
    }
    if (!isSelectedAvailable()) {
        entries.append(entry(tr("(not available)"), midi_.selectedDestinationID()));
    }
    return entries;
}

uint MidiOutputPresenter::selectedDestination() const {
    return midi_.selectedDestinationID();
}

void MidiOutputPresenter::selectDestination(uint id) {
    controller_.selectDestination(id);
}

QString MidiOutputPresenter::selectedName() const {
    for (const auto& candidate : destinations()) {
        const auto map = candidate.toMap();
        if (map.value(QStringLiteral("value")).toUInt() == midi_.selectedDestinationID()) {
            return map.value(QStringLiteral("text")).toString();
        }
    }
    return {};
}

bool MidiOutputPresenter::isSelectedAvailable() const {
    const auto id = midi_.selectedDestinationID();
    return id == ownSource ||
           std::ranges::any_of(midi_.destinations(), [id](const auto& known) { return known.id == id; });
}

QString MidiOutputPresenter::statusText() const {
    return midi_.statusText();
}

void MidiOutputPresenter::stopAllNotes() {
    controller_.stopAllNotes();
}

} // namespace tavro
