#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

class QKeyEvent;

namespace tavro {

/// Takes the arrow keys while it listens, wherever in the window the focus is; the playing keys would
/// otherwise swallow them with all others. A text field that is edited and an open popup keep theirs, and so
/// do arrows with modifier keys.
class ArrowKeyMonitor : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isListening READ isListening WRITE setListening NOTIFY isListeningChanged)

public:
    explicit ArrowKeyMonitor(QQuickItem* parent = nullptr) : QQuickItem(parent) {}

    ~ArrowKeyMonitor() override;

    [[nodiscard]] bool isListening() const { return isListening_; }

    void setListening(bool isListening);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void isListeningChanged();
    /// 1 for right and up, -1 for left and down; again for each repeat.
    void step(int direction);

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void watch(QQuickWindow* window);
    [[nodiscard]] int directionOf(const QKeyEvent& event) const;

    QPointer<QQuickWindow> watched_;
    bool isListening_ = false;
};

} // namespace tavro
