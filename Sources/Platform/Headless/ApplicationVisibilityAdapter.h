#pragma once

#include "PlatformInterfaces/ApplicationVisibility.h"

#include <string>
#include <vector>

namespace tavro::headless {

/// Changes nothing, and writes down what it was asked for.
class ApplicationVisibilityAdapter final : public ApplicationVisibility {
public:
    bool isPossible = false;
    std::vector<std::string> calls;

    [[nodiscard]] bool isAvailable() const override { return isPossible; }

    void hide() override { calls.emplace_back("hide"); }

    void hideOthers() override { calls.emplace_back("hide others"); }

    void showAll() override { calls.emplace_back("show all"); }
};

} // namespace tavro::headless
