#include "Player/DestinationChoice.h"

#include <algorithm>
#include <vector>

namespace tavro {

namespace {

std::string listBelow(std::span<const MidiDestination> destinations) {
    auto text = "\n" + DestinationChoice::list(destinations);
    text.pop_back();
    return text;
}

} // namespace

MidiObjectRef DestinationChoice::find(std::span<const MidiDestination> destinations,
                                      std::string_view nameOrNumber) {
    std::vector<MidiDestination> found;
    std::ranges::copy_if(destinations, std::back_inserter(found),
                         [&](const auto& destination) { return destination.name == nameOrNumber; });
    if (found.empty()) {
        std::ranges::copy_if(destinations, std::back_inserter(found), [&](const auto& destination) {
            return std::to_string(destination.id) == nameOrNumber;
        });
    }
    const auto quoted = "\"" + std::string(nameOrNumber) + "\"";
    if (found.empty()) {
        throw Error("there is no destination " + quoted +
                    (destinations.empty() ? ", and no other" : "; there are:" + listBelow(destinations)));
    }
    if (found.size() > 1) {
        throw Error(std::to_string(found.size()) + " destinations are called " + quoted +
                    "; give the number of the one you mean instead of its name:" + listBelow(found));
    }
    return found.front().id;
}

std::string DestinationChoice::list(std::span<const MidiDestination> destinations) {
    std::string text;
    for (const auto& [id, name] : destinations) {
        text += std::to_string(id) + "\t" + name + "\n";
    }
    return text;
}

} // namespace tavro
