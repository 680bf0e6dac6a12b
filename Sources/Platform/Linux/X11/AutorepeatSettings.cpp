#include "Platform/Linux/X11/AutorepeatSettings.h"

#include "Platform/Linux/X11/Repeat/KeyRepeat.h"

#include <vector>

namespace tavro::x11 {

void AutorepeatSettings::keepOff(const KeySet& keys) {
    if (keys == wanted_) {
        return;
    }
    const auto added = keys & ~wanted_;
    const auto ended = changed_ & ~keys;
    wanted_ = keys;
    if (added.any()) {
        if (const auto repeating = KeyRepeat::read(connection_)) {
            const auto newlyOff = added & *repeating;
            // First, so that the guard knows them whenever the end comes.
            changed_ |= newlyOff;
            entrustChanged();
            KeyRepeat::write(connection_, newlyOff, false);
        }
    }
    // Without the server this is no more possible here, and remains the guard's.
    if (ended.any() && KeyRepeat::write(connection_, ended, true)) {
        changed_ &= ~ended;
        entrustChanged();
    }
}

void AutorepeatSettings::reapply() {
    if (wanted_.none()) {
        return;
    }
    if (const auto repeating = KeyRepeat::read(connection_)) {
        changed_ |= wanted_ & *repeating;
        entrustChanged();
    }
    // All of them: a keyboard may have flags of its own beside those that can be read.
    KeyRepeat::write(connection_, changed_, false);
}

void AutorepeatSettings::entrustChanged() const {
    std::vector<unsigned> keys;
    for (unsigned key = 0; key < changed_.size(); ++key) {
        if (changed_.test(key)) {
            keys.push_back(key);
        }
    }
    guard_.entrustRepeats(keys);
}

} // namespace tavro::x11
