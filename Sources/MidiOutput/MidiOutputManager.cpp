#include "MidiOutput/MidiOutputManager.h"

#include "MidiOutput/MidiStrumPlanner.h"
#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace tavro {

namespace {

constexpr std::uint8_t noteOffStatus = 0x80;
constexpr std::uint8_t noteOnStatus = 0x90;
constexpr std::uint8_t controlChangeStatus = 0xB0;
constexpr std::uint8_t allSoundOff = 120;
constexpr std::uint8_t allNotesOff = 123;

std::uint8_t dataByte(std::int64_t value) {
    return static_cast<std::uint8_t>(std::clamp<std::int64_t>(value, 0, 127));
}

std::uint8_t wireChannel(std::int64_t channel) {
    return static_cast<std::uint8_t>(std::clamp<std::int64_t>(channel, 1, 16) - 1);
}

PendingNoteKey pendingKey(const NoteEvent& event) {
    return {event.note, event.channel, event.sourceKey};
}

/// The status texts are in these languages for every user; they are not translated.
QString failureText(QLatin1String what, std::int32_t status) {
    return what + QLatin1Char(' ') + QString::number(status);
}

} // namespace

MidiOutputManager::MidiOutputManager(MidiSystem& system, MainActor& mainActor)
    : system_(system), mainActor_(mainActor), statusText_(QStringLiteral("MIDI bereit")) {
    setup();
    refreshDestinations();
}

MidiOutputManager::~MidiOutputManager() {
    if (outputPort_ != 0) {
        system_.disposePort(outputPort_);
    }
    if (virtualSource_ != 0) {
        system_.disposeEndpoint(virtualSource_);
    }
    if (client_ != 0) {
        system_.disposeClient(client_);
    }
}

void MidiOutputManager::setup() {
    const auto client = system_.createClient("TAVRO", [this, life = std::weak_ptr(life_)] {
        mainActor_.post([this, life] {
            if (!life.expired()) {
                refreshDestinations();
            }
        });
    });
    client_ = client.reference;
    if (client.status != 0) {
        setStatusText(failureText(QLatin1String("MIDI Client Fehler"), client.status));
        return;
    }
    const auto port = system_.createOutputPort(client_, "TAVRO MIDI Out");
    outputPort_ = port.reference;
    if (port.status != 0) {
        setStatusText(failureText(QLatin1String("MIDI Port Fehler"), port.status));
        return;
    }
    const auto source = system_.createSource(client_, "TAVRO Out");
    virtualSource_ = source.reference;
    if (source.status != 0) {
        setStatusText(failureText(QLatin1String("Virtueller Ausgang Fehler"), source.status));
        return;
    }
    setStatusText(QStringLiteral("Virtueller Ausgang aktiv"));
}

void MidiOutputManager::refreshDestinations() {
    std::vector<MidiDestination> found;
    const auto count = system_.numberOfDestinations();
    for (std::size_t index = 0; index < count; ++index) {
        const auto endpoint = system_.destination(index);
        if (endpoint == 0) {
            continue;
        }
        auto name = system_.displayName(endpoint);
        if (!name) {
            name = system_.name(endpoint);
        }
        found.push_back({endpoint, name.value_or("MIDI Output " + std::to_string(endpoint))});
    }
    if (found != destinations_) {
        destinations_ = std::move(found);
        Q_EMIT destinationsChanged();
    }
}

void MidiOutputManager::setSelectedDestinationID(MidiObjectRef id) {
    if (id == selectedDestinationID_) {
        return;
    }
    selectedDestinationID_ = id;
    if (outputPort_ != 0) {
        system_.prepareRoute(outputPort_, id);
    }
    Q_EMIT selectedDestinationIDChanged();
}

void MidiOutputManager::send(std::span<const NoteEvent> events, std::int64_t strumMilliseconds) {
    for (const auto& [event, delayMilliseconds] : MidiStrumPlanner::plan(events, strumMilliseconds)) {
        if (event.type == NoteEvent::EventType::noteOn) {
            if (delayMilliseconds < 1) {
                send(event);
            } else {
                sendNoteOn(event, delayMilliseconds);
            }
            continue;
        }
        if (!cancelsPendingNoteOn(event)) {
            send(event);
        }
    }
}

void MidiOutputManager::send(const NoteEvent& event) {
    const bool isNoteOn = event.type == NoteEvent::EventType::noteOn;
    const auto status =
        static_cast<std::uint8_t>((isNoteOn ? noteOnStatus : noteOffStatus) | wireChannel(event.channel));
    sendBytes(std::array{status, dataByte(event.note), dataByte(event.velocity)});
    setStatusText((isNoteOn ? QLatin1String("Note On ") : QLatin1String("Note Off ")) +
                  QString::fromStdString(ScaleEngine::noteName(event.note, false)));
}

void MidiOutputManager::sendNoteOn(const NoteEvent& event, std::int64_t delayMilliseconds) {
    const auto key = pendingKey(event);
    // Assigning over an older task of the same key cancels it.
    pendingNoteOns_.insert_or_assign(
        key, mainActor_.after(std::chrono::milliseconds(delayMilliseconds), [this, key, event] {
            pendingNoteOns_.erase(key);
            send(event);
        }));
}

bool MidiOutputManager::cancelsPendingNoteOn(const NoteEvent& noteOff) {
    if (noteOff.sourceKey == noKey) {
        // No key caused it, so it ends the note whoever was about to sound it; and it may be sounding.
        std::erase_if(pendingNoteOns_, [&noteOff](const auto& pending) {
            return pending.first.note == noteOff.note && pending.first.channel == noteOff.channel;
        });
        return false;
    }
    return pendingNoteOns_.erase(pendingKey(noteOff)) > 0 ||
           (noteOff.startedBy != noKey &&
            pendingNoteOns_.erase({noteOff.note, noteOff.channel, noteOff.startedBy}) > 0);
}

void MidiOutputManager::cancelPendingNoteOns() {
    pendingNoteOns_.clear();
}

void MidiOutputManager::sendBytes(std::span<const std::uint8_t> message) {
    if (selectedDestinationID_ == 0) {
        if (virtualSource_ != 0) {
            system_.received(virtualSource_, message);
        }
    } else if (outputPort_ != 0) {
        system_.send(outputPort_, selectedDestinationID_, message);
    }
}

void MidiOutputManager::sendAllNotesOff(std::int64_t /*channel*/) {
    cancelPendingNoteOns();
    for (std::uint8_t channel = 0; channel < 16; ++channel) {
        const auto status = static_cast<std::uint8_t>(controlChangeStatus | channel);
        sendBytes(std::array<std::uint8_t, 3>{status, allNotesOff, 0});
        sendBytes(std::array<std::uint8_t, 3>{status, allSoundOff, 0});
    }
    setStatusText(QStringLiteral("Panic gesendet"));
}

void MidiOutputManager::setStatusText(const QString& text) {
    if (text != statusText_) {
        statusText_ = text;
        Q_EMIT statusTextChanged();
    }
}

} // namespace tavro
