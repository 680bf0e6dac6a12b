#pragma once

#include "UserInterface/MainWindowFixture.h"
#include "UserInterface/WindowState.h"

#include <QImage>

namespace tavro {

/// The window in one of its states: the same at every run, with nobody's pointer over it.
class WindowStateTest : public MainWindowTest {
protected:
    WindowStateTest() {
        listen(1);
        auto state = instrument_.controller.state();
        state.humanizeVelocity = 7;
        instrument_.controller.changeState(state);
    }

    void enter(WindowState state) {
        const bool hasSettings = state == WindowState::settingsOpen || state == WindowState::bothOpen;
        const bool hasAdvanced = state == WindowState::advancedOpen || state == WindowState::bothOpen;
        panels().setProperty("isAdvancedVisible", hasAdvanced);
        panels().setProperty("isSettingsVisible", hasSettings);
        // The screen of the tests is too small for the window to be fitted to it.
        window_->resize(state == WindowState::smallest
                            ? QSize(720, 520)
                            : QSize(1280, panels().property("preferredWindowHeight").toInt()));
        settle();
        arrange(state);
        settle();
    }

    [[nodiscard]] QImage picture() const {
        return window_->grabWindow().convertToFormat(QImage::Format_RGB32);
    }

    /// The mark beside this title.
    [[nodiscard]] QQuickItem& helpMark(const QString& title) const {
        return *find(QStringLiteral("TooltipHelpMark"), "title", title);
    }

    [[nodiscard]] QQuickItem& tile(const QString& title) const {
        auto* item = &helpMark(title);
        while (!QString::fromLatin1(item->metaObject()->className())
                    .startsWith(QStringLiteral("LabelWithHelp"))) {
            item = item->parentItem();
        }
        return *item->parentItem();
    }

    static void settle() {
        // What is shown, then what that makes visible.
        for (int round = 0; round < 3; ++round) {
            QCoreApplication::processEvents();
        }
    }

private:
    void listen(std::size_t count) {
        instrument_.system.listenerCount = count;
        instrument_.system.announceChange();
        instrument_.actor.runDue();
    }

    void set(void (*change)(PerformanceState&)) {
        auto state = instrument_.controller.state();
        change(state);
        instrument_.controller.changeState(state);
    }

    static void edit(const QQuickItem& number) {
        for (auto* child : number.childItems()) {
            if (child->inherits("QQuickTextInput")) {
                child->forceActiveFocus();
            }
        }
    }

    [[nodiscard]] QObject& panels() const { return *window_->property("panels").value<QObject*>(); }

    void arrange(WindowState state) {
        switch (state) {
        case WindowState::chordHeld:
            set([](PerformanceState& values) {
                values.scaleName = "Major";
                values.chordMode = ChordMode::seventh;
                values.voicingComplexity = 70;
                values.bassNoteEnabled = true;
            });
            a_.press(*window_);
            break;
        case WindowState::splitMode:
            set([](PerformanceState& values) {
                values.scaleName = "Dorian";
                values.rootSemitone = 2;
                values.chordMode = ChordMode::ninth;
                values.voicingComplexity = 85;
                values.splitModeEnabled = true;
            });
            break;
        case WindowState::tour:
            QMetaObject::invokeMethod(window_->property("tutorial").value<QObject*>(), "show");
            break;
        case WindowState::menuOpen:
            QMetaObject::invokeMethod(items(QStringLiteral("MainMenuButton")).at(0), "open");
            break;
        case WindowState::pickerOpen:
            QMetaObject::invokeMethod(find(QStringLiteral("Picker"), "label", QStringLiteral("Scale")),
                                      "clicked");
            break;
        case WindowState::numberEdited:
            edit(*find(QStringLiteral("EditableNumericValue"), "label", QStringLiteral("Velocity")));
            break;
        case WindowState::alert:
            QMetaObject::invokeMethod(window_->property("presets").value<QObject*>(), "failed",
                                      Q_ARG(QString, QStringLiteral("The preset cannot be loaded")),
                                      Q_ARG(QString, QStringLiteral("/music/pads.tvp is not a preset.")));
            break;
        case WindowState::nothingListens:
            listen(0);
            break;
        default:
            break;
        }
    }
};

} // namespace tavro
