#include "Platform/Linux/Alsa/SequencerPort.h"

namespace tavro::alsa {

namespace {

/// Every byte of a letter beyond ASCII counts as part of a word.
bool isInsideWord(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z');
}

} // namespace

std::string SequencerPort::displayName() const {
    if (portName.empty()) {
        return clientName;
    }
    // "Synth" is not what "Synthesizer in" begins with.
    const auto saysClient = portName.starts_with(clientName) && (portName.size() == clientName.size() ||
                                                                 !isInsideWord(portName[clientName.size()]));
    return saysClient || clientName.empty() ? portName : clientName + ' ' + portName;
}

} // namespace tavro::alsa
