#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QString>
#include <QVariantMap>

namespace tavro {

/// A window besides the main one: one component of the scene's module in an engine of its own.
class SceneWindow {
public:
    /// Creates the window, hidden, in the middle of the screen. The file's name is one of the module's. False
    /// when it cannot be created; the reasons went to the error output.
    [[nodiscard]] bool create(const QString& fileName, const QVariantMap& properties);

    /// Null before a successful `create`.
    [[nodiscard]] QQuickWindow* window() const;

    /// Shows the window in front of all others and gives it the keyboard. Does nothing without one.
    void bringToFront();

private:
    QQmlApplicationEngine engine_;
};

} // namespace tavro
