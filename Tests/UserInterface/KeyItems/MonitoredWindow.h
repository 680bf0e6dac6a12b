#pragma once

#include "Platform/Headless/Keys/KeyEventTranslatorAdapter.h"
#include "UserInterface/KeyItems/KeyboardEventMonitor.h"

#include <QQuickWindow>

#include <string>
#include <utility>
#include <vector>

namespace tavro {

/// An empty window with a keyboard monitor that writes down what it is told.
class MonitoredWindow {
public:
    MonitoredWindow() {
        monitor = new KeyboardEventMonitor(window.contentItem());
        router.onKeyDown = [this](Character key) { log.push_back("down " + toUtf8(key)); };
        router.onKeyUp = [this](Character key) { log.push_back("up " + toUtf8(key)); };
        router.onRecordedHotkey = [this](const ToggleHotkey& hotkey) {
            log.push_back("recorded " + toUtf8(hotkey.character) + " " +
                          std::to_string(hotkey.keyCode.value_or(-1)) + " " +
                          std::to_string(hotkey.modifiers.rawValue()));
        };
        router.onHotkey = [this] { log.emplace_back("hotkey"); };
        router.onFocusChanged = [this](bool isFocused) {
            log.emplace_back(isFocused ? "focus" : "no focus");
        };
        monitor->watchFor(router, translator);
        log.clear();
    }

    MonitoredWindow(const MonitoredWindow&) = delete;
    MonitoredWindow& operator=(const MonitoredWindow&) = delete;
    ~MonitoredWindow() = default;

    /// What happened since the last call.
    std::vector<std::string> takeLog() { return std::exchange(log, {}); }

    std::vector<std::string> log;
    const headless::KeyEventTranslatorAdapter translator;
    KeyEventRouter router;
    QQuickWindow window;
    /// Owned by the window's content.
    KeyboardEventMonitor* monitor = nullptr;
};

} // namespace tavro
