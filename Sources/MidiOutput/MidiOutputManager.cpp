#include "MidiOutput/MidiOutputManager.h"

#include "NoteEngine/MidiStrumPlanner.h"
#include "PerformanceModel/ScaleEngine.h"
#include "PlatformInterfaces/PanicMessages.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tavro {

namespace {

constexpr std::uint8_t noteOffStatus = 0x80;
constexpr std::uint8_t noteOnStatus = 0x90;

std::uint8_t dataByte(std::int64_t value) {
    return static_cast<std::uint8_t>(std::clamp<std::int64_t>(value, 0, 127));
}

std::uint8_t wireChannel(std::int64_t channel) {
    return static_cast<std::uint8_t>(std::clamp<std::int64_t>(channel, 1, 16) - 1);
}

std::array<std::uint8_t, 3> messageOf(const NoteEvent& event) {
    const auto status = event.type == NoteEvent::EventType::noteOn ? noteOnStatus : noteOffStatus;
    return {static_cast<std::uint8_t>(status | wireChannel(event.channel)), dataByte(event.note),
            dataByte(event.velocity)};
}

PendingNoteKey pendingKey(const NoteEvent& event) {
    return {event.note, event.channel, event.sourceKey};
}

/// The status texts are in these languages for every user; they are not translated.
QString failureText(QLatin1String what, std::int32_t status) {
    return what + QLatin1Char(' ') + QString::number(status);
}

} // namespace

MidiOutputManager::MidiOutputManager(std::vector<MidiSystem*> systems, MainActor& mainActor)
    : systems_(std::move(systems)), system_(systems_.back()), mainActor_(mainActor),
      statusText_(QStringLiteral("MIDI bereit")) {
    setup();
    refreshDestinations();
}

MidiOutputManager::MidiOutputManager(MidiSystem& system, MainActor& mainActor)
    : MidiOutputManager(std::vector{&system}, mainActor) {}

MidiOutputManager::~MidiOutputManager() {
    close();
}

void MidiOutputManager::close() {
    cancelPendingNoteOns();
    dispose();
}

void MidiOutputManager::setSystems(std::vector<MidiSystem*> systems) {
    search_.cancel();
    isLookingForASystem_ = false;
    cancelPendingNoteOns();
    dispose();
    forgetSelection();
    systems_ = std::move(systems);
    setup();
    refreshDestinations();
}

void MidiOutputManager::setup() {
    setStatusText(create().value_or(QStringLiteral("Virtueller Ausgang aktiv")));
    if (client_ == 0 && std::ranges::any_of(systems_, &MidiSystem::mayComeLater)) {
        lookForASystem();
    }
}

std::optional<QString> MidiOutputManager::create() {
    createClient();
    if (client_ == 0) {
        return failureText(QLatin1String("MIDI Client Fehler"), clientFailures_.back());
    }
    const auto port = system_->createOutputPort(client_, "TAVRO MIDI Out");
    outputPort_ = port.reference;
    if (port.status != 0) {
        return failureText(QLatin1String("MIDI Port Fehler"), port.status);
    }
    const auto source = system_->createSource(client_, "TAVRO Out");
    virtualSource_ = source.reference;
    if (source.status != 0) {
        return failureText(QLatin1String("Virtueller Ausgang Fehler"), source.status);
    }
    return std::nullopt;
}

void MidiOutputManager::createClient() {
    // Whatever the system calls back may come when this is gone or plays by another client, and from inside a
    // call of this.
    clientLife_ = std::make_shared<const bool>(true);
    const auto posted = [this](void (MidiOutputManager::*action)()) {
        return [this, action, life = std::weak_ptr(clientLife_)] {
            mainActor_.post([this, action, life] {
                if (!life.expired()) {
                    (this->*action)();
                }
            });
        };
    };
    const auto* const before = system_;
    clientFailures_.clear();
    for (auto* system : systems_) {
        system_ = system;
        system->setLossHandler(posted(&MidiOutputManager::handleLoss));
        const auto client = system->createClient("TAVRO", posted(&MidiOutputManager::refreshDestinations));
        if (client.status == 0) {
            client_ = client.reference;
            break;
        }
        clientFailures_.push_back(client.status);
    }
    if (system_ != before) {
        droppedMessages_ = system_->droppedMessages();
        Q_EMIT systemChanged();
    }
}

void MidiOutputManager::dispose() {
    clientLife_.reset();
    if (const auto port = std::exchange(outputPort_, 0); port != 0) {
        system_->disposePort(port);
    }
    if (const auto source = std::exchange(virtualSource_, 0); source != 0) {
        system_->disposeEndpoint(source);
    }
    if (const auto client = std::exchange(client_, 0); client != 0) {
        system_->disposeClient(client);
        if (system_->hasLeftUnsent()) {
            Q_EMIT leftUnsent();
        }
    }
}

void MidiOutputManager::handleLoss() {
    if (isLookingForASystem_) {
        return;
    }
    pendingNoteOns_.clear();
    dispose();
    Q_EMIT connectionLost();
    refreshDestinations();
    setStatusText(QStringLiteral("MIDI Verbindung verloren"));
    lookForASystem();
}

void MidiOutputManager::forgetSelection() {
    selectionsSystem_ = nullptr;
    if (std::exchange(selectedDestinationID_, 0) != 0) {
        Q_EMIT selectedDestinationIDChanged();
    }
}

void MidiOutputManager::lookForASystem() {
    isLookingForASystem_ = true;
    search_ = mainActor_.after(std::chrono::seconds(1), [this] { searchOnce(); });
}

void MidiOutputManager::searchOnce() {
    if (create()) {
        dispose();
        lookForASystem();
        return;
    }
    isLookingForASystem_ = false;
    setStatusText(QStringLiteral("Virtueller Ausgang aktiv"));
    if (system_ != selectionsSystem_) {
        forgetSelection();
    }
    refreshDestinations();
    if (selectedDestinationID_ != 0) {
        system_->prepareRoute(outputPort_, selectedDestinationID_);
    }
}

void MidiOutputManager::refreshDestinations() {
    std::vector<MidiDestination> found;
    const auto count = system_->numberOfDestinations();
    for (std::size_t index = 0; index < count; ++index) {
        const auto endpoint = system_->destination(index);
        if (endpoint == 0) {
            continue;
        }
        auto name = system_->displayName(endpoint);
        if (!name) {
            name = system_->name(endpoint);
        }
        found.push_back({endpoint, name.value_or("MIDI Output " + std::to_string(endpoint))});
    }
    if (found != destinations_) {
        destinations_ = std::move(found);
        Q_EMIT destinationsChanged();
    }
    listeners_ = isReady() ? system_->listeners(virtualSource_) : std::nullopt;
    Q_EMIT connectionChanged();
    Q_EMIT receiversMayHaveChanged();
}

std::vector<std::string> MidiOutputManager::receivers() const {
    return isLookingForASystem_ ? std::vector<std::string>()
                                : system_->receivers(virtualSource_, selectedDestinationID_);
}

void MidiOutputManager::setSelectedDestinationID(MidiObjectRef id) {
    if (id == selectedDestinationID_) {
        return;
    }
    selectedDestinationID_ = id;
    selectionsSystem_ = system_;
    if (outputPort_ != 0) {
        system_->prepareRoute(outputPort_, id);
    }
    Q_EMIT selectedDestinationIDChanged();
    Q_EMIT receiversMayHaveChanged();
}

void MidiOutputManager::send(std::span<const NoteEvent> events, std::int64_t strumMilliseconds) {
    // Told once everything is out: showing a text takes many times longer than sending a note, and the next
    // note of the chord must not wait for it.
    std::optional<NoteEvent> lastSent;
    system_->beginGesture();
    for (const auto& [event, delayMilliseconds] : MidiStrumPlanner::plan(events, strumMilliseconds)) {
        if (event.type == NoteEvent::EventType::noteOn && delayMilliseconds >= 1) {
            sendNoteOn(event, delayMilliseconds);
        } else if (event.type == NoteEvent::EventType::noteOn || !cancelsPendingNoteOn(event)) {
            sendBytes(messageOf(event));
            lastSent = event;
        }
    }
    system_->endGesture();
    if (lastSent) {
        tellNote(*lastSent);
    }
}

void MidiOutputManager::send(const NoteEvent& event) {
    sendBytes(messageOf(event));
    tellNote(event);
}

void MidiOutputManager::sendNoteOn(const NoteEvent& event, std::int64_t delayMilliseconds) {
    const auto key = pendingKey(event);
    takeBack(key);
    const auto delay = std::chrono::milliseconds(delayMilliseconds);
    const auto ticket = schedule(event, delay);
    pendingNoteOns_.insert_or_assign(
        key, PendingNoteOn{event, ticket, mainActor_.after(delay, [this, key] { finishPending(key); })});
}

std::optional<MidiTicket> MidiOutputManager::schedule(const NoteEvent& event,
                                                      std::chrono::nanoseconds delay) {
    const auto from = selectedDestinationID_ == 0 ? virtualSource_ : outputPort_;
    return from == 0 ? std::nullopt
                     : system_->schedule(from, selectedDestinationID_, messageOf(event), delay);
}

void MidiOutputManager::finishPending(const PendingNoteKey& key) {
    const auto finished = pendingNoteOns_.extract(key);
    if (const auto& [event, ticket, task] = finished.mapped(); ticket) {
        system_->settle(*ticket);
        tellNote(event);
    } else {
        send(event);
    }
}

bool MidiOutputManager::takeBack(const PendingNoteOn& pending) {
    return !pending.ticket || system_->cancel(*pending.ticket);
}

bool MidiOutputManager::takeBack(const PendingNoteKey& key) {
    const auto pending = pendingNoteOns_.extract(key);
    return !pending.empty() && takeBack(pending.mapped());
}

bool MidiOutputManager::cancelsPendingNoteOn(const NoteEvent& noteOff) {
    if (noteOff.sourceKey == noKey) {
        // No key caused it, so it ends the note whoever was about to sound it; and it may be sounding.
        std::erase_if(pendingNoteOns_, [&](const auto& entry) {
            const auto& [key, pending] = entry;
            const bool isMeant = key.note == noteOff.note && key.channel == noteOff.channel;
            if (isMeant) {
                takeBack(pending);
            }
            return isMeant;
        });
        return false;
    }
    return takeBack(pendingKey(noteOff)) ||
           (noteOff.startedBy != noKey &&
            takeBack(PendingNoteKey{noteOff.note, noteOff.channel, noteOff.startedBy}));
}

void MidiOutputManager::cancelPendingNoteOns() {
    for (const auto& entry : std::exchange(pendingNoteOns_, {})) {
        if (auto event = entry.second.event; !takeBack(entry.second)) {
            // The system was quicker, and nobody else is going to end the note.
            event.type = NoteEvent::EventType::noteOff;
            event.velocity = 0;
            send(event);
        }
    }
}

void MidiOutputManager::sendBytes(std::span<const std::uint8_t> message) {
    if (selectedDestinationID_ == 0) {
        if (virtualSource_ != 0) {
            system_->received(virtualSource_, message);
        }
    } else if (outputPort_ != 0) {
        system_->send(outputPort_, selectedDestinationID_, message);
    }
}

void MidiOutputManager::sendAllNotesOff(std::int64_t /*channel*/) {
    cancelPendingNoteOns();
    for (const auto& message : panicMessages()) {
        sendBytes(message);
    }
    // Without a system nothing was sent, and the loss is what the user needs to read.
    if (!isLookingForASystem_) {
        setStatusText(QStringLiteral("Panic gesendet"));
        tellDroppedMessages();
    }
}

void MidiOutputManager::tellNote(const NoteEvent& event) {
    if (isLookingForASystem_) {
        return;
    }
    const bool isNoteOn = event.type == NoteEvent::EventType::noteOn;
    setStatusText((isNoteOn ? QLatin1String("Note On ") : QLatin1String("Note Off ")) +
                  QString::fromStdString(ScaleEngine::noteName(event.note, false)));
    tellDroppedMessages();
}

void MidiOutputManager::tellDroppedMessages() {
    if (const auto dropped = system_->droppedMessages(); dropped != droppedMessages_) {
        droppedMessages_ = dropped;
        setStatusText(QString::number(dropped) + QLatin1String(" MIDI Nachrichten verloren"));
        Q_EMIT connectionChanged();
    }
}

void MidiOutputManager::setStatusText(const QString& text) {
    if (text != statusText_) {
        statusText_ = text;
        Q_EMIT statusTextChanged();
    }
}

} // namespace tavro
