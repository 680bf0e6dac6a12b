#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tavro::evdev {

/// The file of an input device, judged without opening it: opening wakes devices up, and most of them are not
/// for this program.
class DeviceNode {
public:
    enum class Kind {
        keyboard,
        other,
        /// The kernel does not tell here; it is found out by opening it.
        unknown,
        /// A keyboard, perhaps, of which the system has not told yet to which seat it belongs.
        unsettled,
    };

    explicit DeviceNode(std::string path) : path_(std::move(path)) {}

    /// What the physical path of a copy made by this program begins with. No hardware is named like that.
    static constexpr auto copyMark = "tavro/";

    /// The devices in the folder; nothing when the folder cannot be read.
    [[nodiscard]] static std::optional<std::vector<DeviceNode>> list(const std::string& folder);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// For the seat of that name. Copies made by this program are of the other kind, and so are the devices
    /// of other seats.
    [[nodiscard]] Kind kind(const std::string& seat) const;

private:
    std::string path_;
};

} // namespace tavro::evdev
