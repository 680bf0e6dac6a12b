#include "Platform/MacOS/MidiSystemAdapter.h"

#include <memory>
#include <type_traits>
#include <utility>

#include <CoreAudio/HostTime.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreMIDI/CoreMIDI.h>

namespace tavro::macos {

namespace {

struct Release {
    void operator()(CFStringRef text) const { CFRelease(text); }
};

using String = std::unique_ptr<std::remove_pointer_t<CFStringRef>, Release>;

String stringOf(std::string_view utf8) {
    return String(CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(utf8.data()),
                                          static_cast<CFIndex>(utf8.size()), kCFStringEncodingUTF8, false));
}

std::string utf8Of(CFStringRef text) {
    const auto length = CFStringGetLength(text);
    std::string utf8(
        static_cast<std::size_t>(CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8)), '\0');
    CFIndex size = 0;
    CFStringGetBytes(text, CFRangeMake(0, length), kCFStringEncodingUTF8, '?', false,
                     reinterpret_cast<UInt8*>(utf8.data()), static_cast<CFIndex>(utf8.size()), &size);
    utf8.resize(static_cast<std::size_t>(size));
    return utf8;
}

MidiCreation creation(OSStatus status, MIDIObjectRef reference) {
    return status == noErr ? MidiCreation{0, reference} : MidiCreation{status, 0};
}

std::optional<std::string> property(MIDIObjectRef object, CFStringRef propertyName) {
    CFStringRef text = nullptr;
    if (MIDIObjectGetStringProperty(object, propertyName, &text) != noErr || text == nullptr) {
        return std::nullopt;
    }
    return utf8Of(String(text).get());
}

/// One message in a list of the fixed size of a single packet, stamped with the time of its sending.
class PacketList {
public:
    explicit PacketList(std::span<const std::uint8_t> message) {
        static_assert(sizeof(MIDIPacketList) == 272);
        MIDIPacketListAdd(&list_, sizeof list_, MIDIPacketListInit(&list_), AudioGetCurrentHostTime(),
                          message.size(), message.data());
    }

    [[nodiscard]] const MIDIPacketList* get() const { return &list_; }

private:
    MIDIPacketList list_{};
};

} // namespace

MidiCreation MidiSystemAdapter::createClient(std::string_view name, std::function<void()> onChange) {
    MIDIClientRef client = 0;
    const auto status = MIDIClientCreateWithBlock(stringOf(name).get(), &client, ^(const MIDINotification*) {
      if (onChange) {
          onChange();
      }
    });
    return creation(status, client);
}

MidiCreation MidiSystemAdapter::createOutputPort(MidiObjectRef client, std::string_view name) {
    MIDIPortRef port = 0;
    const auto status = MIDIOutputPortCreate(client, stringOf(name).get(), &port);
    return creation(status, port);
}

MidiCreation MidiSystemAdapter::createSource(MidiObjectRef client, std::string_view name) {
    MIDIEndpointRef source = 0;
    const auto status = MIDISourceCreate(client, stringOf(name).get(), &source);
    return creation(status, source);
}

std::size_t MidiSystemAdapter::numberOfDestinations() {
    return MIDIGetNumberOfDestinations();
}

MidiObjectRef MidiSystemAdapter::destination(std::size_t index) {
    return MIDIGetDestination(index);
}

std::optional<std::string> MidiSystemAdapter::displayName(MidiObjectRef destination) {
    return property(destination, kMIDIPropertyDisplayName);
}

std::optional<std::string> MidiSystemAdapter::name(MidiObjectRef destination) {
    return property(destination, kMIDIPropertyName);
}

void MidiSystemAdapter::prepareRoute(MidiObjectRef /*outputPort*/, MidiObjectRef /*destination*/) {}

void MidiSystemAdapter::send(MidiObjectRef outputPort, MidiObjectRef destination,
                             std::span<const std::uint8_t> message) {
    MIDISend(outputPort, destination, PacketList(message).get());
}

void MidiSystemAdapter::received(MidiObjectRef source, std::span<const std::uint8_t> message) {
    MIDIReceived(source, PacketList(message).get());
}

void MidiSystemAdapter::disposePort(MidiObjectRef outputPort) {
    MIDIPortDispose(outputPort);
}

void MidiSystemAdapter::disposeEndpoint(MidiObjectRef source) {
    MIDIEndpointDispose(source);
}

void MidiSystemAdapter::disposeClient(MidiObjectRef client) {
    MIDIClientDispose(client);
}

} // namespace tavro::macos
