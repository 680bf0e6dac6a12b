#pragma once

#include "ApplicationShell/WindowMeasures.h"

#include <optional>

namespace tavro {

/// How the main window is sized for the panels that are open, so that the surface keeps its proportions and
/// stays on the screen. All lengths are in points; y grows downwards.
class WindowFitting {
public:
    struct Size {
        double width = 0;
        double height = 0;

        friend bool operator==(const Size&, const Size&) = default;
    };

    struct Frame {
        double left = 0;
        double top = 0;
        double width = 0;
        double height = 0;

        friend bool operator==(const Frame&, const Frame&) = default;
    };

    struct Fit {
        Size minimum;
        Size maximum;
        /// The proportions of the content.
        Size aspect;
        /// Where the window is to be; absent when it may stay as it is.
        std::optional<Frame> target;
    };

    WindowFitting() = delete;

    /// The height of the surface at its full width.
    [[nodiscard]] static int preferredHeight(bool isAdvancedVisible, bool isSettingsVisible);

    /// `availableHeight` is what the screen has for windows; absent when there is no screen.
    [[nodiscard]] static Fit fit(const Frame& current, std::optional<double> availableHeight,
                                 int preferredHeight);
};

} // namespace tavro
