#include "Platform/Linux/X11/TapSession.h"

#include "Platform/Linux/X11/Repeat/Freed.h"

#include <utility>

namespace tavro::x11 {

TapSession::TapSession(const Connection& connection, KeyboardTap::Client& client, guard::GuardProcess& guard)
    : connection_(connection), client_(client), guard_(guard), grabs_(connection),
      autorepeat_(connection.get(), guard) {}

bool TapSession::showThatItLives() {
    isCutOff_ = isCutOff_ || (isOn_ && guard_.tapBeat());
    return !isCutOff_;
}

bool TapSession::begin() {
    if (!EventReader::select(connection_) || !readKeyboard()) {
        return false;
    }
    const auto held = readHeldKeys();
    heldKeys_ = held.value_or(KeySet());
    return held.has_value();
}

std::optional<KeySet> TapSession::readHeldKeys() const {
    const Freed<xcb_query_keymap_reply_t> held(
        xcb_query_keymap_reply(connection_.get(), xcb_query_keymap(connection_.get()), nullptr));
    if (!held) {
        return std::nullopt;
    }
    KeySet keys;
    for (std::size_t key = 0; key < keys.size(); ++key) {
        keys.set(key, ((held->keys[key / 8] >> (key % 8)) & 1) != 0);
    }
    return keys;
}

void TapSession::suspectMissedReleases() {
    // Only of those that have come through a grab: a raw press is told before the server takes the key for
    // down, when another program makes the keyboard wait.
    if (handledKeys_.none()) {
        return;
    }
    if (const auto held = readHeldKeys()) {
        suspects_ = handledKeys_ & ~*held;
    }
}

void TapSession::tellMissedReleases() {
    // What was told before the server's answer has been read by now, in its order.
    for (std::size_t key = 0; suspects_.any() && key < suspects_.size(); ++key) {
        if (suspects_.test(key)) {
            tellRelease(static_cast<std::uint8_t>(key), 0);
        }
    }
}

bool TapSession::readKeyboard() {
    const auto description = KeyboardDescription::read(connection_);
    if (!description) {
        return false;
    }
    ModifierMap map(*description);
    if (map != modifierMap_) {
        grabs_.remap(modifierMap_, map);
        modifierMap_ = std::move(map);
    }
    emergencyExit_ = EmergencyExit(*description);
    const auto* const setup = xcb_get_setup(connection_.get());
    for (std::size_t key = setup->min_keycode; key <= setup->max_keycode; ++key) {
        keys_.set(key, !modifierMap_.modifierKeys().test(key));
    }
    return true;
}

void TapSession::setOn(bool isOn) {
    if (isOn == isOn_) {
        return;
    }
    isOn_ = isOn;
    if (isOn) {
        // Before anything is grabbed.
        guard_.entrustConnection(connection_.mark());
        guard_.expectTapBeats(true);
        refresh();
    } else {
        letGo();
        guard_.expectTapBeats(false);
        guard_.entrustConnection(0);
    }
}

void TapSession::refresh() {
    if (!isOn_) {
        return;
    }
    wanted_ = PressTable::wanted(client_, keys_);
    playingKeys_ = wanted_.playingKeys();
    sample_ = VerdictSample(wanted_);
    grabs_.change(wanted_, modifierMap_);
    // A key of which another program has one half plays with the other half.
    KeySet silentKeys;
    for (std::size_t key = 0; key < playingKeys_.size(); ++key) {
        silentKeys.set(key,
                       playingKeys_.test(key) && grabs_.held().containsAnyOf(static_cast<std::uint8_t>(key)));
    }
    autorepeat_.keepOff(silentKeys);
    reportTaken();
}

void TapSession::refreshAndCompare() {
    refresh();
    suspectMissedReleases();
}

void TapSession::reportTaken() {
    if (grabs_.taken() != reportedTaken_) {
        reportedTaken_ = grabs_.taken();
        client_.reportTaken(reportedTaken_.presses());
    }
}

std::optional<KeyboardTap::End> TapSession::takeEvents() {
    while (const Freed<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
        if (!showThatItLives()) {
            // What had come by then has waited for too long to be meant for now.
            break;
        }
        const auto read = EventReader::read(*event, connection_);
        if (const auto* const press = std::get_if<GrabbedPress>(&read)) {
            take(*press);
        } else if (const auto* const rawPress = std::get_if<EventReader::RawPress>(&read)) {
            heldKeys_.set(rawPress->key);
            suspects_.reset(rawPress->key);
            if (isOn_ && emergencyExit_.isHeld(heldKeys_)) {
                setOn(false);
                return KeyboardTap::End::emergencyExit;
            }
        } else if (const auto* const release = std::get_if<EventReader::RawRelease>(&read)) {
            tellRelease(release->key, release->time);
        } else if (std::holds_alternative<EventReader::MappingChange>(read)) {
            takeMappingChange();
        } else if (std::holds_alternative<EventReader::DeviceChange>(read)) {
            autorepeat_.reapply();
            suspectMissedReleases();
        }
    }
    if (!isCutOff_) {
        tellMissedReleases();
    }
    if (isCutOff_ || connection_.isLost()) {
        // The server may live on without this connection, and the repeats with it; the guard has its own.
        guard_.restoreRepeats();
        guard_.expectTapBeats(false);
        guard_.entrustConnection(0);
        return KeyboardTap::End::lost;
    }
    return std::nullopt;
}

void TapSession::take(const GrabbedPress& press) {
    suspects_.reset(press.key);
    auto verdict = KeyboardTap::Verdict::pass;
    if (isOn_ && keys_.test(press.key)) {
        auto event = PressTable::press(press.key, modifierMap_.modifiers(press.modifierBits));
        event.time = press.time;
        // The core protocol does not tell; there, a key that has not come up since is one.
        event.isAutorepeat = press.isRepeat ||
                             (press.protocol == GrabbedPress::Protocol::core && handledKeys_.test(press.key));
        // Before the answer, which depends on it; the note is on its way by then.
        verdict = client_.handle(event);
    }
    passedKeys_.set(press.key, verdict == KeyboardTap::Verdict::pass);
    if (verdict == KeyboardTap::Verdict::swallow) {
        handledKeys_.set(press.key);
        // The keys behind this one wait until the answer, so they follow what this one has changed. Any press
        // of a key that is not played may have been the hotkey.
        if (!playingKeys_.test(press.key) || sample_.hasChanged(client_)) {
            refresh();
        }
    }
    answer(press, verdict);
}

void TapSession::answer(const GrabbedPress& press, KeyboardTap::Verdict verdict) const {
    auto* const xcb = connection_.get();
    const auto isSwallowed = verdict == KeyboardTap::Verdict::swallow;
    if (press.protocol == GrabbedPress::Protocol::core) {
        if (isSwallowed) {
            xcb_ungrab_keyboard(xcb, XCB_CURRENT_TIME);
        } else {
            xcb_allow_events(xcb, XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
        }
    } else if (isSwallowed) {
        // Ends the grab at once, so that nothing but this one press is kept from the others.
        xcb_input_xi_ungrab_device(xcb, XCB_CURRENT_TIME, connection_.keyboard());
    } else {
        xcb_input_xi_allow_events(xcb, XCB_CURRENT_TIME, connection_.keyboard(),
                                  XCB_INPUT_EVENT_MODE_REPLAY_DEVICE, 0, connection_.root());
    }
    xcb_flush(xcb);
}

void TapSession::tellRelease(std::uint8_t key, std::uint32_t time) {
    heldKeys_.reset(key);
    suspects_.reset(key);
    const auto isKnown = handledKeys_.test(key) || passedKeys_.test(key);
    handledKeys_.reset(key);
    passedKeys_.reset(key);
    if (!isOn_ || !keys_.test(key)) {
        return;
    }
    auto event = PressTable::press(key, modifierMap_.modifiersOfHeldKeys(heldKeys_));
    // A key that is wanted now may have been pressed when it was not, with the program itself in front. And
    // one that the window plays is to be free for its next press, which may be caught before the window hears
    // of this.
    if (isKnown || wanted_.containsAnyOf(key) || client_.isDown(event.keyCode)) {
        event.type = KeyboardTap::Event::Type::keyUp;
        event.time = time;
        client_.handle(event);
    }
}

void TapSession::takeMappingChange() {
    const auto oldKeys = keys_;
    const auto oldMap = modifierMap_;
    if (readKeyboard() && (oldKeys != keys_ || oldMap != modifierMap_)) {
        refresh();
    }
    // Not only then: whatever is changed of the keymap, the server lets the keys repeat again.
    autorepeat_.reapply();
    suspectMissedReleases();
}

void TapSession::letGo() {
    grabs_.releaseAll(modifierMap_);
    autorepeat_.keepOff({});
    wanted_ = {};
    playingKeys_.reset();
    sample_ = {};
    handledKeys_.reset();
    passedKeys_.reset();
    suspects_.reset();
    // Nothing is caught any more, but a press may have been just before; it is the front application's.
    connection_.synchronize();
    while (const Freed<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_.get())}) {
        const auto read = EventReader::read(*event, connection_);
        if (const auto* const press = std::get_if<GrabbedPress>(&read)) {
            answer(*press, KeyboardTap::Verdict::pass);
        } else if (const auto* const rawPress = std::get_if<EventReader::RawPress>(&read)) {
            heldKeys_.set(rawPress->key);
        } else if (const auto* const release = std::get_if<EventReader::RawRelease>(&read)) {
            heldKeys_.reset(release->key);
        }
    }
}

} // namespace tavro::x11
