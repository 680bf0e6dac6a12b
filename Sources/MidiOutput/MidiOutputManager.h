#pragma once

#include "Concurrency/MainActor.h"
#include "PerformanceModel/NoteEvent.h"
#include "PlatformInterfaces/MidiSystem.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tavro {

/// A place that messages can be sent to, as the picker offers it.
struct MidiDestination {
    MidiObjectRef id;
    std::string name;

    friend bool operator==(const MidiDestination&, const MidiDestination&) = default;
};

/// Names one note-on that is scheduled and not sent yet; the values are those of its event, unclamped.
struct PendingNoteKey {
    std::int64_t note;
    std::int64_t channel;
    Character sourceKey;

    friend auto operator<=>(const PendingNoteKey&, const PendingNoteKey&) = default;
};

/// The one place that talks to the MIDI system: the program's client, port and source, the list of
/// destinations, sending with strum delays, and the panic. Nothing here fails: what the system refuses is
/// told in `statusText`, and sending to what does not exist does nothing. Main thread only.
class MidiOutputManager : public QObject {
    Q_OBJECT

public:
    /// Of the systems, the first one in which a client can be created is the one that plays; the last one
    /// where there is none, so there must be one. Creates client, port and source, and reads the
    /// destinations. The collaborators must outlive this.
    MidiOutputManager(std::vector<MidiSystem*> systems, MainActor& mainActor);
    MidiOutputManager(MidiSystem& system, MainActor& mainActor);
    ~MidiOutputManager() override;

    /// Gives everything back to the MIDI system, once what was sent has left. For an end at which this is not
    /// destroyed; afterwards nothing can be sent.
    void close();

    /// Plays by other systems from now on, as after a start: by the first in which a client can be created,
    /// through the own source. What sounds is to be ended before.
    void setSystems(std::vector<MidiSystem*> systems);

    /// The one that plays, or that was tried last.
    [[nodiscard]] const MidiSystem& system() const { return *system_; }

    /// In the system's order. Follows the system.
    [[nodiscard]] const std::vector<MidiDestination>& destinations() const { return destinations_; }

    /// 0 plays through the program's own source. Any other value is a destination's id, and stays when that
    /// destination disappears.
    [[nodiscard]] MidiObjectRef selectedDestinationID() const { return selectedDestinationID_; }

    void setSelectedDestinationID(MidiObjectRef id);

    /// One line for the user about what happened last.
    [[nodiscard]] const QString& statusText() const { return statusText_; }

    /// Whether the program's own source exists.
    [[nodiscard]] bool isReady() const { return virtualSource_ != 0; }

    /// How many receivers listen to the own source; nothing when the system cannot know.
    [[nodiscard]] std::optional<std::size_t> listeners() const { return listeners_; }

    /// The platform's numbers for why no client could be created, one for each system in which that was
    /// tried in vain the last time. When there are as many as systems, there is no client.
    [[nodiscard]] const std::vector<std::int32_t>& clientFailures() const { return clientFailures_; }

    /// Whether one is tried every second, for a system may come, or come back.
    [[nodiscard]] bool isLookingForASystem() const { return isLookingForASystem_; }

    /// Whether there is a client.
    [[nodiscard]] bool hasClient() const { return client_ != 0; }

    /// Those whom messages reach now, as `MidiSystem` names them. `receiversMayHaveChanged` tells changes.
    [[nodiscard]] std::vector<std::string> receivers() const;

    /// As `MidiSystem` tells it. `connectionChanged` tells changes.
    [[nodiscard]] std::optional<MidiPeriod> period() const { return system_->period(); }

    /// How many messages the system has lost so far.
    [[nodiscard]] std::uint64_t droppedMessages() const { return droppedMessages_; }

    /// Reads the destinations anew. Does not touch the selection.
    void refreshDestinations();

    /// Plays what one press or release produced. Note-offs go out at once, and one whose note-on is still
    /// pending cancels it instead; a note-off that no key caused cancels every pending note-on of its note
    /// and channel, and is sent too. Note-ons follow the strum.
    void send(std::span<const NoteEvent> events, std::int64_t strumMilliseconds);

    /// Sends one event now. Channel, note and velocity are clamped to what MIDI can carry.
    void send(const NoteEvent& event);

    /// Sends a note-on after a delay of 1 ms or more. An older one of the same key is replaced.
    void sendNoteOn(const NoteEvent& event, std::int64_t delayMilliseconds);

    void cancelPendingNoteOns();

    /// Whether a note-on is still waiting.
    [[nodiscard]] bool hasPendingNoteOns() const { return !pendingNoteOns_.empty(); }

    /// Sends the bytes of one message now, to the selected destination or to the program's own source.
    void sendBytes(std::span<const std::uint8_t> message);

    /// Silences every receiver: cancels what is pending, then All Notes Off and All Sound Off on all sixteen
    /// channels, whatever channel is given: a receiver may sound on one that was used before.
    void sendAllNotesOff(std::int64_t channel);

Q_SIGNALS:
    void destinationsChanged();
    void selectedDestinationIDChanged();
    void statusTextChanged();
    /// `isReady`, `listeners` or `droppedMessages` changed.
    void connectionChanged();
    void receiversMayHaveChanged();
    /// The MIDI system has gone, and with it every note. It is looked for until it returns.
    void connectionLost();
    /// The client was closed with something that had not left: receivers may sound.
    void leftUnsent();
    /// `system` is another one.
    void systemChanged();

private:
    struct PendingNoteOn {
        NoteEvent event;
        /// Set when the system itself sends the note at its time.
        std::optional<MidiTicket> ticket;
        ScheduledTask task;
    };

    using PendingNoteOns = std::map<PendingNoteKey, PendingNoteOn>;

    void setup();
    /// Client, port and source. Nothing when all are there, else what to tell the user.
    std::optional<QString> create();
    /// In the first system that can have one.
    void createClient();
    void dispose();
    void handleLoss();
    /// Tries every second to create what could not be created or has gone.
    void lookForASystem();
    void searchOnce();
    void forgetSelection();
    [[nodiscard]] std::optional<MidiTicket> schedule(const NoteEvent& event, std::chrono::nanoseconds delay);
    void finishPending(const PendingNoteKey& key);
    /// Whether the note-on will never be heard.
    bool takeBack(const PendingNoteOn& pending);
    bool takeBack(const PendingNoteKey& key);
    void tellNote(const NoteEvent& event);
    void tellDroppedMessages();
    /// Whether the note-off met its own note-on before that was sent, so that neither needs to be.
    bool cancelsPendingNoteOn(const NoteEvent& noteOff);
    void setStatusText(const QString& text);

    std::vector<MidiSystem*> systems_;
    MidiSystem* system_;
    MainActor& mainActor_;
    std::vector<MidiDestination> destinations_;
    MidiObjectRef selectedDestinationID_ = 0;
    /// By which it was chosen: the numbers of destinations are each system's own.
    const MidiSystem* selectionsSystem_ = nullptr;
    QString statusText_;
    MidiObjectRef client_ = 0;
    MidiObjectRef outputPort_ = 0;
    MidiObjectRef virtualSource_ = 0;
    std::vector<std::int32_t> clientFailures_;
    PendingNoteOns pendingNoteOns_;
    std::optional<std::size_t> listeners_;
    std::uint64_t droppedMessages_ = 0;
    /// The status text tells why, and nothing else can be worth telling until there is one.
    bool isLookingForASystem_ = false;
    ScheduledTask search_;
    /// Lets work that was posted and cannot be cancelled see whether this and its client still exist.
    std::shared_ptr<const bool> clientLife_;
};

} // namespace tavro
