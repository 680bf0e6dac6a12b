#include "MidiOutput/MidiSystemTable.h"

#include <algorithm>
#include <iterator>

namespace tavro {

std::vector<MidiSystem*> MidiSystemTable::Candidates::pointers() const {
    std::vector<MidiSystem*> all;
    std::ranges::transform(systems, std::back_inserter(all), &std::unique_ptr<MidiSystem>::get);
    return all;
}

std::string MidiSystemTable::Candidates::reasons(std::span<const std::int32_t> failures) const {
    QStringList parts;
    for (std::size_t index = 0; index < failures.size(); ++index) {
        parts.append(names.value(static_cast<qsizetype>(index)) + QLatin1String(" failed with ") +
                     QString::number(failures[index]));
    }
    return parts.join(QLatin1String(", ")).toStdString();
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

MidiSystemTable::Candidates MidiSystemTable::candidates(const QString& name, MainActor& mainActor,
                                                        const MidiSystemOptions& options) const {
    Candidates found;
    for (const auto& entry : entries_) {
        if (name == automatic() || name == entry.name) {
            found.names.append(entry.name);
            found.systems.push_back(entry.make(mainActor, options));
        }
    }
    return found;
}

QStringList MidiSystemTable::names() const {
    QStringList names{automatic()};
    std::ranges::transform(entries_, std::back_inserter(names), &Entry::name);
    return names;
}

} // namespace tavro
