#pragma once

#include "Updates/UpdateAlert.h"

#include <vector>

namespace tavro::headless {

/// Shows nothing, and records what it should have shown.
class UpdateAlertAdapter final : public UpdateAlert {
public:
    struct Alert {
        QString message;
        QString informativeText;

        friend bool operator==(const Alert&, const Alert&) = default;
    };

    std::vector<Alert> alerts;

    void show(const QString& message, const QString& informativeText) override {
        alerts.push_back({message, informativeText});
    }
};

} // namespace tavro::headless
