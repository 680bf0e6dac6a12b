#pragma once

namespace tavro {

/// How large the main window is, without its frame, in points.
struct WindowMeasures {
    double width = 1280;
    double height = 805;
    double minimumWidth = 720;
    double minimumHeight = 520;
    /// How far the surface may be enlarged.
    double maximumScale = 1.25;

    [[nodiscard]] constexpr double maximumWidth() const { return width * maximumScale; }

    [[nodiscard]] constexpr double maximumHeight() const { return height * maximumScale; }

    friend bool operator==(const WindowMeasures&, const WindowMeasures&) = default;
};

} // namespace tavro
