#include "UserInterface/KeyItems/ModifierDoubleClickMonitor.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickWindow>

#include <gtest/gtest.h>

namespace tavro {
namespace {

/// Counts the presses that get through to the scene.
class PressCounter : public QQuickItem {
public:
    explicit PressCounter(QQuickItem* parent) : QQuickItem(parent) {
        setAcceptedMouseButtons(Qt::AllButtons);
        setSize({400, 300});
    }

    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent* event) override {
        ++presses;
        event->accept();
    }
};

class ModifierDoubleClickMonitorTest : public testing::Test {
protected:
    ModifierDoubleClickMonitorTest() {
        window_.resize(400, 300);
        below_ = new PressCounter(window_.contentItem());
        monitor_ = new ModifierDoubleClickMonitor(window_.contentItem());
        monitor_->setPosition({100, 100});
        monitor_->setSize({50, 20});
        monitor_->setRequiredModifier(Qt::AltModifier);
        QObject::connect(monitor_, &ModifierDoubleClickMonitor::action, monitor_, [this] { ++actions_; });
    }

    void send(QEvent::Type type, Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF position) {
        const bool isRelease = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, position, position, position, button,
                          isRelease ? Qt::MouseButtons(Qt::NoButton) : Qt::MouseButtons(button), modifiers);
        event.setTimestamp(timestamp_);
        QCoreApplication::sendEvent(&window_, &event);
    }

    /// The events of clicks that follow each other at once, as the windowing system sends them: every second
    /// press is followed by a double-click event.
    void click(int count, Qt::KeyboardModifiers modifiers = Qt::AltModifier, QPointF position = {110, 110},
               Qt::MouseButton button = Qt::LeftButton) {
        timestamp_ += 10000;
        for (int index = 0; index < count; ++index) {
            timestamp_ += 20;
            send(QEvent::MouseButtonPress, button, modifiers, position);
            if (index % 2 == 1) {
                send(QEvent::MouseButtonDblClick, button, modifiers, position);
            }
            send(QEvent::MouseButtonRelease, button, modifiers, position);
        }
    }

    QQuickWindow window_;
    PressCounter* below_;
    ModifierDoubleClickMonitor* monitor_;
    int actions_ = 0;
    quint64 timestamp_ = 0;
};

TEST_F(ModifierDoubleClickMonitorTest, ActsAndKeepsTheSecondPressToItself) {
    click(2);
    EXPECT_EQ(actions_, 1);
    EXPECT_EQ(below_->presses, 1);
}

TEST_F(ModifierDoubleClickMonitorTest, AThirdAndAFourthPressPass) {
    click(4);
    EXPECT_EQ(actions_, 1);
    EXPECT_EQ(below_->presses, 3);
}

TEST_F(ModifierDoubleClickMonitorTest, WithoutTheModifierTheClickPasses) {
    click(2, Qt::ShiftModifier);
    EXPECT_EQ(actions_, 0);
    EXPECT_EQ(below_->presses, 2);
}

TEST_F(ModifierDoubleClickMonitorTest, OutsideTheClickPasses) {
    click(2, Qt::AltModifier, {10, 10});
    EXPECT_EQ(actions_, 0);
    EXPECT_EQ(below_->presses, 2);
}

TEST_F(ModifierDoubleClickMonitorTest, AnotherButtonPasses) {
    click(2, Qt::AltModifier, {110, 110}, Qt::RightButton);
    EXPECT_EQ(actions_, 0);
    EXPECT_EQ(below_->presses, 2);
}

TEST_F(ModifierDoubleClickMonitorTest, OutOfItsWindowItSeesNothing) {
    monitor_->setParentItem(nullptr);
    click(2);
    EXPECT_EQ(actions_, 0);
    EXPECT_EQ(below_->presses, 2);
    monitor_->setParentItem(window_.contentItem());
    click(2);
    EXPECT_EQ(actions_, 1);
}

} // namespace
} // namespace tavro
