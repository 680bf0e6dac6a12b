#include "MidiOutput/MidiSystemTable.h"

#include <algorithm>
#include <utility>

namespace tavro {

MidiSystemTable::Entry MidiSystemTable::Entry::tried(QString name, Maker make) {
    return {.name = std::move(name),
            .available = [make](MainActor& mainActor) { return trial(*make(mainActor)); },
            .make = std::move(make)};
}

std::int32_t MidiSystemTable::trial(MidiSystem& system) {
    const auto client = system.createClient("TAVRO", nullptr);
    if (client.status == 0) {
        system.disposeClient(client.reference);
    }
    return client.status;
}

std::string MidiSystemTable::Choice::reasons(std::int32_t status) const {
    std::string text;
    for (const auto& failure : failures) {
        text += failure.name.toStdString() + " failed with " + std::to_string(failure.status) + ", ";
    }
    return text + name.toStdString() + " failed with " + std::to_string(status);
}

bool MidiSystemTable::isName(const QString& text) const {
    return names().contains(text);
}

QString MidiSystemTable::alternatives() const {
    return names().join(QLatin1Char('|'));
}

QString MidiSystemTable::sentence() const {
    auto all = names();
    const auto last = all.takeLast();
    return all.isEmpty() ? last : all.join(QLatin1String(", ")) + QLatin1String(" or ") + last;
}

MidiSystemTable::Choice MidiSystemTable::choose(const QString& name, MainActor& mainActor) const {
    std::vector<const Entry*> candidates;
    for (const auto& entry : entries_) {
        if (name == automatic() || name == entry.name) {
            candidates.push_back(&entry);
        }
    }
    Choice choice;
    for (const auto* candidate : candidates) {
        const auto status = candidate == candidates.back() ? 0 : candidate->available(mainActor);
        if (status == 0) {
            choice.name = candidate->name;
            choice.system = candidate->make(mainActor);
            break;
        }
        choice.failures.push_back({candidate->name, status});
    }
    return choice;
}

QStringList MidiSystemTable::names() const {
    QStringList names{automatic()};
    std::ranges::transform(entries_, std::back_inserter(names), &Entry::name);
    return names;
}

} // namespace tavro
