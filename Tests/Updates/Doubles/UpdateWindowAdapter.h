#pragma once

#include "Updates/UpdateWindow.h"

#include <vector>

namespace tavro::headless {

/// Shows nothing, and records what it is asked.
class UpdateWindowAdapter final : public UpdateWindow {
public:
    /// One for every window that was made.
    std::vector<UpdateViewModel*> models;
    int broughtToFront = 0;

    void create(UpdateViewModel& model) override { models.push_back(&model); }

    void bringToFront() override { ++broughtToFront; }
};

} // namespace tavro::headless
