#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// Which of the panels that fold out are open, and how high the surface is with them. Main thread only.
class WindowPanels : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool isAdvancedVisible READ isAdvancedVisible WRITE setAdvancedVisible NOTIFY
                   isAdvancedVisibleChanged)
    Q_PROPERTY(bool isSettingsVisible READ isSettingsVisible WRITE setSettingsVisible NOTIFY
                   isSettingsVisibleChanged)
    Q_PROPERTY(int preferredWindowHeight READ preferredWindowHeight NOTIFY preferredWindowHeightChanged)

public:
    using QObject::QObject;

    [[nodiscard]] bool isAdvancedVisible() const { return isAdvancedVisible_; }

    void setAdvancedVisible(bool isVisible);

    [[nodiscard]] bool isSettingsVisible() const { return isSettingsVisible_; }

    void setSettingsVisible(bool isVisible);

    /// At the surface's full width, in points.
    [[nodiscard]] int preferredWindowHeight() const;

Q_SIGNALS:
    void isAdvancedVisibleChanged();
    void isSettingsVisibleChanged();
    /// After either of the others.
    void preferredWindowHeightChanged();

private:
    bool isAdvancedVisible_ = false;
    bool isSettingsVisible_ = false;
};

} // namespace tavro
