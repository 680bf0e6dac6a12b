#pragma once

#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Linux/X11/AutorepeatSettings.h"
#include "Platform/Linux/X11/Connection.h"
#include "Platform/Linux/X11/EmergencyExit.h"
#include "Platform/Linux/X11/EventReader.h"
#include "Platform/Linux/X11/KeyGrabs.h"
#include "Platform/Linux/X11/ModifierMap.h"
#include "Platform/Linux/X11/VerdictSample.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <optional>
#include <vector>

namespace tavro::x11 {

/// The work of the tap on one connection: reserves what the client wants, answers the presses, tells the
/// releases. Made on one thread, then used on one other. Holds no lock while the client is called.
class TapSession {
public:
    /// All of them outlive this.
    TapSession(const Connection& connection, KeyboardTap::Client& client, guard::GuardProcess& guard);

    /// Asks the server for what it needs to know. False when there is no answer.
    [[nodiscard]] bool begin();

    /// Takes keys, or lets all of them go.
    void setOn(bool isOn);

    /// Asks the client anew what it wants, and reserves that.
    void refresh();

    /// The same on request, when the keyboard may have been somewhere else meanwhile.
    void refreshAndCompare();

    /// To the guard. Often: under a stream of events too, which may take long to be worked off. False once
    /// the guard has ended the connection.
    bool showThatItLives();

    /// Works off the events that have come. Tells when the tap has come to its end by that.
    [[nodiscard]] std::optional<KeyboardTap::End> takeEvents();

private:
    [[nodiscard]] bool readKeyboard();
    [[nodiscard]] std::optional<KeySet> readHeldKeys() const;
    /// Looks for releases that no event tells, such as those of a keyboard that was unplugged. What events
    /// that are on their way already tell is told by them, in their order; the rest by the second of these.
    void suspectMissedReleases();
    void tellMissedReleases();
    void tellRelease(std::uint8_t key, std::uint32_t time);
    void take(const GrabbedPress& press);
    void takeMappingChange();
    void answer(const GrabbedPress& press, KeyboardTap::Verdict verdict) const;
    void reportTaken();
    void letGo();

    const Connection& connection_;
    KeyboardTap::Client& client_;
    guard::GuardProcess& guard_;
    KeyGrabs grabs_;
    AutorepeatSettings autorepeat_;
    ModifierMap modifierMap_;
    EmergencyExit emergencyExit_;
    VerdictSample sample_;
    PressTable wanted_;
    /// Those of `wanted_`.
    KeySet playingKeys_;
    PressTable reportedTaken_;
    KeySet keys_;
    /// The keys that are down, as far as has been told.
    KeySet heldKeys_;
    /// The keys whose press the client has had and whose release it has not.
    KeySet handledKeys_;
    /// The keys whose press came here and was handed on, perhaps to a window of this program: while it waited
    /// for the answer, the key may have gone up.
    KeySet passedKeys_;
    /// Of those, the ones that were up when the server was asked.
    KeySet suspects_;
    bool isOn_ = false;
    bool isCutOff_ = false;
};

} // namespace tavro::x11
