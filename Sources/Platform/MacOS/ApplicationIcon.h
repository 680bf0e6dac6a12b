#pragma once

namespace tavro::macos {

/// The icon in the Dock.
class ApplicationIcon {
public:
    ApplicationIcon() = delete;

    /// Shows the main bundle's "TAVRO.icns". Without it, or when it is no image, the system's own stays.
    static void install();
};

} // namespace tavro::macos
