#pragma once

#include "TestKeyboard.h"

#include <array>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace tavro::proof {

/// Types at random on two keyboards: keys that play, keys that do not, and modifiers, several held at once.
/// Tells what must come of it while both are grabbed by a client that plays.
class RandomTyping {
public:
    RandomTyping(TestKeyboard& first, TestKeyboard& second, std::uint32_t seed);

    /// One press or release.
    void step();

    void releaseAll();

    [[nodiscard]] int presses() const { return presses_; }

    [[nodiscard]] const std::vector<std::string>& expectedSeen() const { return seen_; }

    [[nodiscard]] const std::vector<std::string>& expectedTold() const { return told_; }

private:
    using Key = std::pair<TestKeyboard*, std::uint16_t>;

    void press(Key key);
    void release(Key key);
    void expectSeen(Key key, int value);
    [[nodiscard]] std::string heldModifiers() const;
    [[nodiscard]] std::size_t below(std::size_t end);

    std::array<TestKeyboard*, 2> keyboards_;
    std::mt19937 random_;
    /// With whether they are swallowed.
    std::map<Key, bool> held_;
    int presses_ = 0;
    std::vector<std::string> seen_;
    std::vector<std::string> told_;
};

} // namespace tavro::proof
