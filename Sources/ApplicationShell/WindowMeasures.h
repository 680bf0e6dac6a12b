#pragma once

namespace tavro {

/// A panel that folds out below its title: how high it is closed and open, in points.
struct PanelMeasures {
    int closedHeight = 0;
    int openHeight = 0;

    friend bool operator==(const PanelMeasures&, const PanelMeasures&) = default;
};

/// How large the main window is, without its frame, in points, and what makes it higher. The scene takes its
/// measures from here.
struct WindowMeasures {
    /// With every panel closed.
    double width = 1280;
    double height = 805;
    double minimumWidth = 720;
    double minimumHeight = 520;
    PanelMeasures advancedPanel{.closedHeight = 44, .openHeight = 148};
    PanelMeasures settingsPanel{.closedHeight = 40, .openHeight = 152};
    /// How far the surface may be enlarged.
    double maximumScale = 1.25;

    [[nodiscard]] constexpr double maximumWidth() const { return width * maximumScale; }

    [[nodiscard]] constexpr double maximumHeight() const { return height * maximumScale; }

    friend bool operator==(const WindowMeasures&, const WindowMeasures&) = default;
};

} // namespace tavro
