#pragma once

#include <string>

namespace tavro::linuxos {

/// A list like that of a user with many presets, different for every number, longer and shorter in turn.
inline std::string numberedList(int number) {
    std::string list = "[";
    const int count = 50 + number % 5 * 100;
    for (int i = 0; i < count; ++i) {
        list += R"({"id":")" + std::to_string(number) + "-" + std::to_string(i) +
                R"(","name":"Präset","state":{"rootSemitone":0,"scaleName":"major","chordMode":"triad",)"
                R"("velocity":100,"strumMilliseconds":-20,"keyboardLayout":"qwertz"},"isBuiltIn":false},)";
    }
    list.back() = ']';
    return list;
}

} // namespace tavro::linuxos
