#pragma once

#include <vector>

namespace tavro::jack {

/// A list of port names as libjack hands it out; null is an empty one. Gives it back when destroyed, and the
/// names with it.
class PortNames {
public:
    explicit PortNames(const char** names);
    PortNames(const PortNames&) = delete;
    PortNames& operator=(const PortNames&) = delete;
    ~PortNames();

    [[nodiscard]] auto begin() const { return list_.begin(); }

    [[nodiscard]] auto end() const { return list_.end(); }

private:
    const char** names_;
    std::vector<const char*> list_;
};

} // namespace tavro::jack
