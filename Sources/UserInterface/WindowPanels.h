#pragma once

#include "ApplicationShell/WindowMeasures.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// Which of the panels that fold out are open, and the measures of the surface with them. Main thread only.
class WindowPanels : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool isAdvancedVisible READ isAdvancedVisible WRITE setAdvancedVisible NOTIFY
                   isAdvancedVisibleChanged)
    Q_PROPERTY(bool isSettingsVisible READ isSettingsVisible WRITE setSettingsVisible NOTIFY
                   isSettingsVisibleChanged)
    Q_PROPERTY(int surfaceWidth READ surfaceWidth CONSTANT)
    Q_PROPERTY(int advancedClosedHeight READ advancedClosedHeight CONSTANT)
    Q_PROPERTY(int advancedOpenHeight READ advancedOpenHeight CONSTANT)
    Q_PROPERTY(int settingsClosedHeight READ settingsClosedHeight CONSTANT)
    Q_PROPERTY(int settingsOpenHeight READ settingsOpenHeight CONSTANT)
    Q_PROPERTY(int preferredWindowHeight READ preferredWindowHeight NOTIFY preferredWindowHeightChanged)

public:
    using QObject::QObject;

    [[nodiscard]] bool isAdvancedVisible() const { return isAdvancedVisible_; }

    void setAdvancedVisible(bool isVisible);

    [[nodiscard]] bool isSettingsVisible() const { return isSettingsVisible_; }

    void setSettingsVisible(bool isVisible);

    /// These and the next are in points.
    [[nodiscard]] static int surfaceWidth() { return static_cast<int>(measures.width); }

    [[nodiscard]] static int advancedClosedHeight() { return measures.advancedPanel.closedHeight; }

    [[nodiscard]] static int advancedOpenHeight() { return measures.advancedPanel.openHeight; }

    [[nodiscard]] static int settingsClosedHeight() { return measures.settingsPanel.closedHeight; }

    [[nodiscard]] static int settingsOpenHeight() { return measures.settingsPanel.openHeight; }

    /// At the surface's full width.
    [[nodiscard]] int preferredWindowHeight() const;

Q_SIGNALS:
    void isAdvancedVisibleChanged();
    void isSettingsVisibleChanged();
    /// After either of the others.
    void preferredWindowHeightChanged();

private:
    static constexpr WindowMeasures measures{};

    bool isAdvancedVisible_ = false;
    bool isSettingsVisible_ = false;
};

} // namespace tavro
