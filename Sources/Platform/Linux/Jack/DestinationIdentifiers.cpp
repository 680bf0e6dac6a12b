#include "Platform/Linux/Jack/DestinationIdentifiers.h"

#include <algorithm>

namespace tavro::jack {

MidiObjectRef DestinationIdentifiers::identifierOf(std::string_view portName) {
    const auto found = std::ranges::find(names_, portName);
    const auto index = static_cast<MidiObjectRef>(found - names_.begin());
    if (found == names_.end()) {
        names_.emplace_back(portName);
    }
    return index + 1;
}

const std::string* DestinationIdentifiers::portName(MidiObjectRef identifier) const {
    return identifier == 0 || identifier > names_.size() ? nullptr : &names_[identifier - 1];
}

} // namespace tavro::jack
