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
        monitor->setTranslator(&translator);
        monitor->setActions({
            .onKeyDown = [this](Character key) { log.push_back("down " + toUtf8(key)); },
            .onKeyUp = [this](Character key) { log.push_back("up " + toUtf8(key)); },
            .onRecordedHotkey =
                [this](const std::string& text, std::int64_t keyCode, HotkeyModifiers modifiers) {
                    log.push_back("recorded " + text + " " + std::to_string(keyCode) + " " +
                                  std::to_string(modifiers.rawValue()));
                },
            .onHotkey = [this] { log.emplace_back("hotkey"); },
            .onFocusChanged = [this](bool isFocused) { log.emplace_back(isFocused ? "focus" : "no focus"); },
        });
        log.clear();
    }

    MonitoredWindow(const MonitoredWindow&) = delete;
    MonitoredWindow& operator=(const MonitoredWindow&) = delete;
    ~MonitoredWindow() = default;

    /// What happened since the last call.
    std::vector<std::string> takeLog() { return std::exchange(log, {}); }

    std::vector<std::string> log;
    const headless::KeyEventTranslatorAdapter translator;
    QQuickWindow window;
    /// Owned by the window's content.
    KeyboardEventMonitor* monitor = nullptr;
};

} // namespace tavro
