#include "MidiOutput/MidiSystemChooser.h"

namespace tavro {

std::string MidiSystemChooser::Choice::reasons() const {
    std::string text;
    for (const auto& [name, status] : failures) {
        text += (text.empty() ? "" : ", ") + name.toStdString() + " failed with " + std::to_string(status);
    }
    return text.empty() ? "this program was built without it" : text;
}

bool MidiSystemChooser::isName(const QString& text) {
    return text == automatic() || text == QLatin1String("alsa") || text == QLatin1String("jack");
}

MidiSystemChooser::Choice MidiSystemChooser::choose(const QString& name) const {
    Choice choice;
    for (const auto& candidate : candidates_) {
        if (name != automatic() && name != candidate.name) {
            continue;
        }
        auto system = candidate.make();
        const auto client = system->createClient("TAVRO", nullptr);
        if (client.status == 0) {
            system->disposeClient(client.reference);
            choice.system = std::move(system);
            break;
        }
        choice.failures.push_back({candidate.name, client.status});
    }
    return choice;
}

} // namespace tavro
