#pragma once

#include "Platform/Linux/UserDefaultsAdapter.h"

namespace tavro::linuxos {

/// Stores the value, and again when it was refused: whoever waits too long for others, on a slow disk, is
/// told so and nothing is stored. False when that goes on.
inline bool storedAtLast(UserDefaults& defaults, const std::string& key, const UserDefaults::Value& value) {
    constexpr int mostTries = 50;
    for (int attempt = 0; attempt < mostTries; ++attempt) {
        if (defaults.setValue(key, value)) {
            return true;
        }
    }
    return false;
}

} // namespace tavro::linuxos
