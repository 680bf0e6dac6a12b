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
    /// Creates client, port and source, and reads the destinations. Both collaborators must outlive this.
    MidiOutputManager(MidiSystem& system, MainActor& mainActor);
    ~MidiOutputManager() override;

    /// Gives everything back to the MIDI system, once what was sent has left. For an end at which this is not
    /// destroyed; afterwards nothing can be sent.
    void close();

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

    /// 0, or the platform's number for why no client could be created when that was tried last.
    [[nodiscard]] std::int32_t clientStatus() const { return clientStatus_; }

    /// Those whom messages reach now, as `MidiSystem` names them. `receiversMayHaveChanged` tells changes.
    [[nodiscard]] std::vector<std::string> receivers() const;

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
    void dispose();
    void handleLoss();
    void lookForTheSystem();
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

    MidiSystem& system_;
    MainActor& mainActor_;
    std::vector<MidiDestination> destinations_;
    MidiObjectRef selectedDestinationID_ = 0;
    QString statusText_;
    MidiObjectRef client_ = 0;
    MidiObjectRef outputPort_ = 0;
    MidiObjectRef virtualSource_ = 0;
    std::int32_t clientStatus_ = 0;
    PendingNoteOns pendingNoteOns_;
    std::optional<std::size_t> listeners_;
    std::uint64_t droppedMessages_ = 0;
    bool isLost_ = false;
    ScheduledTask search_;
    /// Lets work that was posted and cannot be cancelled see whether this still exists.
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

} // namespace tavro
