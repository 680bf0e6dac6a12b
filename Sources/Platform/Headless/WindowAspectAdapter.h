#pragma once

#include "PlatformInterfaces/Application/WindowAspect.h"

#include <vector>

namespace tavro::headless {

/// For sessions where windows are resized freely. Writes down the proportions it was asked for.
class WindowAspectAdapter final : public WindowAspect {
public:
    std::vector<QSize> ratios;
    std::vector<QSize> sizes;

    void setContentAspectRatio(QWindow& /*window*/, QSize ratio, QSize size) override {
        ratios.push_back(ratio);
        sizes.push_back(size);
    }
};

} // namespace tavro::headless
