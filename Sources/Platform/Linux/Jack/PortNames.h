#pragma once

#include <string_view>
#include <vector>

namespace tavro::jack {

/// A list of port names as libjack hands it out; null is an empty one. Gives it back when destroyed, and the
/// views with it.
class PortNames {
public:
    explicit PortNames(const char** names);
    PortNames(const PortNames&) = delete;
    PortNames& operator=(const PortNames&) = delete;
    ~PortNames();

    /// Each ends with a NUL character behind its last.
    [[nodiscard]] auto begin() const { return views_.begin(); }

    [[nodiscard]] auto end() const { return views_.end(); }

private:
    const char** names_;
    std::vector<std::string_view> views_;
};

} // namespace tavro::jack
