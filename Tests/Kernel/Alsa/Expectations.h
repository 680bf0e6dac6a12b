#pragma once

#include "SequencerPeer.h"

#include <functional>
#include <string>
#include <vector>

namespace tavro::proof {

/// Throws with the words unless the condition holds.
void expect(bool condition, const std::string& words);

/// Throws with both values unless they are equal.
void expectEqual(const std::string& actual, const std::string& expected, const std::string& what);
void expectEqual(std::uint64_t actual, std::uint64_t expected, const std::string& what);
void expectEqual(const std::vector<Bytes>& actual, const std::vector<Bytes>& expected,
                 const std::string& what);

/// Lets Qt's event loop run until the condition holds; throws with the words when it does not in time.
void waitFor(const std::function<bool()>& condition, const std::string& words);

} // namespace tavro::proof
