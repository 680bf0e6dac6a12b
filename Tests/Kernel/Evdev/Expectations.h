#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tavro::proof {

/// Throws with the words unless the condition holds.
void expect(bool condition, const std::string& words);

/// Throws with both values unless they are equal.
void expectEqual(const std::string& actual, const std::string& expected, const std::string& what);
void expectEqual(const std::vector<std::string>& actual, const std::vector<std::string>& expected,
                 const std::string& what);

/// Asks again and again; what is asked does the waiting. Throws with the words when the condition does not
/// come to hold in time.
void waitFor(const std::function<bool()>& condition, const std::string& words);

} // namespace tavro::proof
