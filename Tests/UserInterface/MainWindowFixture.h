#pragma once

#include "Platform/Headless/Keys/KeyEventTranslatorAdapter.h"
#include "UserInterface/Instrument.h"
#include "UserInterface/KeyEvents.h"
#include "UserInterface/MainWindowLoader.h"

#include <QMouseEvent>
#include <QQuickItem>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavro {

inline std::vector<std::string>& warnings() {
    static std::vector<std::string> all;
    return all;
}

inline void noteWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        warnings().push_back(text.toStdString());
    }
}

/// The real window over an instrument that reaches nobody. A warning of the scene fails the test.
class MainWindowTest : public testing::Test {
protected:
    void SetUp() override {
        warnings().clear();
        previousHandler_ = qInstallMessageHandler(noteWarning);
        if (hasEndedTheTour_) {
            instrument_.defaults.setValue(PreferenceKey::tutorialCompleted.name, true);
        }
        ASSERT_TRUE(loader_.load());
        window_ = loader_.window();
        window_->resize(1280, 805);
        QCoreApplication::processEvents();
    }

    void TearDown() override {
        qInstallMessageHandler(previousHandler_);
        EXPECT_THAT(warnings(), testing::IsEmpty());
    }

    /// The items of this type: the file's name, or the class's.
    std::vector<QQuickItem*> items(const QString& type) const {
        std::vector<QQuickItem*> found;
        std::vector<QQuickItem*> waiting{window_->contentItem()};
        while (!waiting.empty()) {
            auto* item = waiting.back();
            waiting.pop_back();
            const auto name = QString::fromLatin1(item->metaObject()->className());
            if (name == type || name.startsWith(type + QStringLiteral("_QML"))) {
                found.push_back(item);
            }
            for (auto* child : item->childItems()) {
                waiting.push_back(child);
            }
        }
        return found;
    }

    /// The one of them whose property has this value; null when there is none.
    QQuickItem* find(const QString& type, const char* property, const QVariant& value) const {
        for (auto* item : items(type)) {
            if (item->property(property) == value) {
                return item;
            }
        }
        return nullptr;
    }

    void toggleAdvanced() { clickTitle(*items(QStringLiteral("DisclosurePanel")).at(0)); }

    void toggleSettings() { clickTitle(*items(QStringLiteral("SettingsPanel")).at(0)); }

    void clickTitle(const QQuickItem& panel) {
        timestamp_ += 10000;
        mouse(QEvent::MouseButtonPress, panel.mapToScene(QPointF(60, 20)));
        mouse(QEvent::MouseButtonRelease, panel.mapToScene(QPointF(60, 20)));
        QCoreApplication::processEvents();
    }

    QQuickItem* cell(const QString& label) const { return find(QStringLiteral("KeyCell"), "label", label); }

    void mouse(QEvent::Type type, QPointF position, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const bool isRelease = type == QEvent::MouseButtonRelease;
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(
            type, position, position, window_->mapToGlobal(position), isMove ? Qt::NoButton : Qt::LeftButton,
            isRelease ? Qt::MouseButtons(Qt::NoButton) : Qt::MouseButtons(Qt::LeftButton), modifiers);
        event.setTimestamp(timestamp_ += 10);
        QCoreApplication::sendEvent(window_, &event);
    }

    static QPointF centre(const QQuickItem& item) {
        return item.mapToScene(QPointF(item.width() / 2, item.height() / 2));
    }

    void click(const QQuickItem& item) {
        timestamp_ += 10000;
        mouse(QEvent::MouseButtonPress, centre(item));
        mouse(QEvent::MouseButtonRelease, centre(item));
        QCoreApplication::processEvents();
    }

    void type(const QString& text) {
        for (const auto character : text) {
            QKeyEvent event(QEvent::KeyPress, character.toUpper().unicode(), Qt::NoModifier, KEY_1 + 8, 0, 0,
                            QString(character));
            QCoreApplication::sendEvent(window_, &event);
        }
    }

    const PerformanceState& state() const { return instrument_.controller.state(); }

    /// For the constructor of a test of the first start.
    bool hasEndedTheTour_ = true;
    QtMessageHandler previousHandler_ = nullptr;
    Instrument instrument_;
    const headless::KeyEventTranslatorAdapter translator_;
    MainWindowLoader loader_{instrument_.shell(translator_)};
    QQuickWindow* window_ = nullptr;
    quint64 timestamp_ = 0;
    const KeyEvents a_{.evdevCode = KEY_A, .key = Qt::Key_A};
    const KeyEvents enter_{.evdevCode = KEY_ENTER, .key = Qt::Key_Return};
};

} // namespace tavro
