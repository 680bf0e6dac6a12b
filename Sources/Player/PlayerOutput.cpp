#include "Player/PlayerOutput.h"

#include "PerformanceModel/ScaleEngine.h"

#include <nlohmann/json.hpp>

#include <iomanip>
#include <sstream>

namespace tavro {

namespace {

std::string inWords(std::span<const std::uint8_t> message) {
    if (message.size() != 3) {
        return "message of " + std::to_string(message.size()) + " bytes";
    }
    const auto channel = " channel " + std::to_string((message[0] & 0x0F) + 1);
    const auto note = ScaleEngine::noteName(message[1], false);
    const auto value = std::to_string(message[2]);
    switch (message[0] & 0xF0) {
    case 0x80:
        return "Note Off " + note + channel;
    case 0x90:
        return "Note On " + note + " velocity " + value + channel;
    case 0xB0:
        return (message[1] == 123   ? "All Notes Off"
                : message[1] == 120 ? "All Sound Off"
                                    : "Controller " + std::to_string(message[1]) + " value " + value) +
               channel;
    default:
        return "other message" + channel;
    }
}

std::string hexadecimal(std::span<const std::uint8_t> message) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setfill('0');
    const char* separator = "";
    for (const auto byte : message) {
        text << separator << std::setw(2) << static_cast<int>(byte);
        separator = " ";
    }
    return text.str();
}

std::string joined(const std::vector<std::string>& keys) {
    std::string text;
    for (const auto& key : keys) {
        text += (text.empty() ? "" : " ") + key;
    }
    return text.empty() ? "none" : text;
}

std::ostream& beginLine(std::ostream& stream, std::chrono::milliseconds time) {
    return stream << std::setw(8) << time.count() << " ms  ";
}

} // namespace

void TextOutput::midi(std::chrono::milliseconds time, std::span<const std::uint8_t> message) {
    beginLine(stream_, time) << hexadecimal(message) << "  " << inWords(message) << '\n';
}

void TextOutput::show(std::chrono::milliseconds time, const ReadOuts& readOuts) {
    beginLine(stream_, time) << "chord " << readOuts.chord << "; pressed " << joined(readOuts.pressed)
                             << "; lit " << joined(readOuts.lit) << "; status " << readOuts.status << '\n';
}

void JsonLinesOutput::midi(std::chrono::milliseconds time, std::span<const std::uint8_t> message) {
    stream_ << R"({"t":)" << time.count() << R"(,"midi":[)";
    const char* separator = "";
    for (const auto byte : message) {
        stream_ << separator << static_cast<int>(byte);
        separator = ",";
    }
    stream_ << "]}\n";
}

void JsonLinesOutput::show(std::chrono::milliseconds time, const ReadOuts& readOuts) {
    const nlohmann::ordered_json line{{"t", time.count()},
                                      {"chord", readOuts.chord},
                                      {"pressed", readOuts.pressed},
                                      {"lit", readOuts.lit},
                                      {"status", readOuts.status}};
    stream_ << line.dump() << '\n';
}

} // namespace tavro
