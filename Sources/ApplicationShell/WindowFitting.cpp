#include "ApplicationShell/WindowFitting.h"

#include <algorithm>
#include <cmath>

namespace tavro {

namespace {

constexpr WindowMeasures measures;
/// Kept free for what surrounds the content.
constexpr double screenMargin = 40;
constexpr double smallestScale = 0.58;
/// Smaller differences are left alone, or the window would jitter.
constexpr double tolerance = 2;

bool isNear(double first, double second) {
    return std::abs(first - second) <= tolerance;
}

} // namespace

int WindowFitting::preferredHeight(bool isAdvancedVisible, bool isSettingsVisible) {
    const auto unfolded = [](const PanelMeasures& panel, bool isVisible) {
        return isVisible ? panel.openHeight - panel.closedHeight : 0;
    };
    return static_cast<int>(measures.height) + unfolded(measures.advancedPanel, isAdvancedVisible) +
           unfolded(measures.settingsPanel, isSettingsVisible);
}

WindowFitting::Fit WindowFitting::fit(const Frame& current, std::optional<double> availableHeight,
                                      int preferredHeight) {
    const double wantedHeight = preferredHeight;
    const double heightLimit =
        std::max(availableHeight.value_or(wantedHeight) - screenMargin, measures.minimumHeight);
    const double scale = std::clamp(current.width / measures.width, smallestScale, measures.maximumScale);
    const double width = std::min(current.width, measures.maximumWidth());
    const double height = std::min(wantedHeight * scale, heightLimit);
    Fit fit{.minimum = {measures.minimumWidth, measures.minimumHeight},
            .maximum = {measures.maximumWidth(), wantedHeight * measures.maximumScale},
            .aspect = {measures.width, wantedHeight},
            .target = std::nullopt};
    if (!isNear(current.height, height) || !isNear(current.width, width)) {
        fit.target = Frame{current.left, current.top, width, height};
    }
    return fit;
}

} // namespace tavro
