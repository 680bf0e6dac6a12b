#pragma once

#include "Performance/ControllerFixture.h"
#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"
#include "Preferences/AppPreferences.h"
#include "Presets/PresetLibrary.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tavro {

/// A library over settings in memory and a performance that records. It begins when it is first asked for, so
/// that settings can be stored before.
struct LibraryFixture {
    PresetLibrary& library() {
        if (!library_) {
            auto selection = PresetSelection::load(store, preferences);
            performance.emplace(ControllerFixture::withoutChance(selection.initialPreset().state));
            library_.emplace(
                performance->controller, store, defaults, [this] { ++beeps; }, std::move(selection));
            QObject::connect(&*library_, &PresetLibrary::openFailed,
                             [this](const QString& title, const QString& text) {
                                 alerts.push_back(title.toStdString() + " | " + text.toStdString());
                             });
            QObject::connect(&*library_, &PresetLibrary::saveFailed,
                             [this](const QString& title, const QString& text) {
                                 alerts.push_back(title.toStdString() + " | " + text.toStdString());
                             });
            QObject::connect(&*library_, &PresetLibrary::presetsChanged, [this] { ++listChanges; });
            QObject::connect(&*library_, &PresetLibrary::selectedPresetIDChanged,
                             [this] { ++selectionChanges; });
        }
        return *library_;
    }

    PerformanceController& controller() {
        library();
        return performance->controller;
    }

    std::vector<std::string> takeSent() {
        library();
        return performance->takeSent();
    }

    std::vector<std::string> names() {
        std::vector<std::string> result;
        for (const auto& preset : library().presets()) {
            result.push_back(preset.name);
        }
        return result;
    }

    std::string selectedID() { return library().selectedPresetID().toStdString(); }

    std::optional<std::string> storedID() const { return defaults.string("TAVRO.SelectedPresetID.v1"); }

    headless::UserDefaultsAdapter defaults;
    headless::BootClockAdapter bootClock;
    int beeps = 0;
    Preferences preferences{defaults, bootClock};
    PresetStore store{defaults, preferences};
    std::optional<ControllerFixture> performance;
    std::vector<std::string> alerts;
    int listChanges = 0;
    int selectionChanges = 0;

private:
    std::optional<PresetLibrary> library_;
};

} // namespace tavro
