#include "UserInterface/KeyItems/KeyboardEventMonitor.h"

#include "UserInterface/KeyItems/FocusedItem.h"

#include <QKeyEvent>

namespace tavro {

KeyboardEventMonitor::KeyboardEventMonitor(QQuickItem* parent) {
    // Not by the base class, whose notice of the window would come before this part can hear it.
    setParent(parent);
    setParentItem(parent);
}

KeyboardEventMonitor::~KeyboardEventMonitor() {
    // The base class takes itself out of the window when this part no longer exists and can tell nobody.
    if (window_ != nullptr) {
        removeMonitors();
        setFocused(false);
    }
}

void KeyboardEventMonitor::watchFor(KeyEventRouter& router, const KeyEventTranslator& translator) {
    router_ = &router;
    translator_ = &translator;
    setFocused(isFocused_);
}

void KeyboardEventMonitor::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange) {
        return;
    }
    removeMonitors();
    setFocused(data.window != nullptr);
    if (data.window != nullptr) {
        installMonitors(*data.window);
    }
}

void KeyboardEventMonitor::installMonitors(QQuickWindow& window) {
    window_ = &window;
    window.installEventFilter(this);
    connect(&window, &QWindow::focusObjectChanged, this, &KeyboardEventMonitor::watchFocusObject);
    watchFocusObject(window.focusObject());
}

void KeyboardEventMonitor::removeMonitors() {
    watchFocusObject(nullptr);
    if (window_ != nullptr) {
        window_->removeEventFilter(this);
        window_->disconnect(this);
    }
    window_ = nullptr;
}

void KeyboardEventMonitor::watchFocusObject(QObject* focusObject) {
    // The question whether a key is a shortcut goes to the item that has the focus, not through the window.
    if (focusObject_ != nullptr && focusObject_ != window_) {
        focusObject_->removeEventFilter(this);
    }
    focusObject_ = focusObject;
    if (focusObject_ != nullptr && focusObject_ != window_) {
        focusObject_->installEventFilter(this);
    }
    const auto now = context();
    if (router_ != nullptr && (now.isForeignWindow || now.isEditingText)) {
        router_->interruptRecording();
    }
}

bool KeyboardEventMonitor::handleDirectly(const KeyEvent& event) {
    return router_ != nullptr && window_ != nullptr && router_->handleDirectly(event, context());
}

bool KeyboardEventMonitor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        // An accepted question keeps the key from the shortcuts; it then comes as an ordinary press.
        const bool isOurs = wouldConsume(*static_cast<QKeyEvent*>(event));
        event->setAccepted(isOurs);
        return isOurs;
    }
    if (watched != window_) {
        return false;
    }
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (consumes(*static_cast<QKeyEvent*>(event))) {
            event->accept();
            return true;
        }
        return false;
    case QEvent::FocusIn:
        setFocused(true);
        return false;
    case QEvent::FocusOut:
        setFocused(false);
        return false;
    default:
        return false;
    }
}

void KeyboardEventMonitor::setFocused(bool isFocused) {
    isFocused_ = isFocused;
    if (router_ != nullptr) {
        router_->setFocused(isFocused);
    }
}

KeyEventRouter::Context KeyboardEventMonitor::context() const {
    const auto focus = FocusedItem::of(window_);
    return {.isForeignWindow = focus.liesInPopup, .isEditingText = focus.isEditingText};
}

bool KeyboardEventMonitor::consumes(const QKeyEvent& event) {
    const auto key = router_ != nullptr ? translator_->translate(event) : std::nullopt;
    return key && router_->handle(*key, context()) == KeyEventRouter::Verdict::consume;
}

bool KeyboardEventMonitor::wouldConsume(const QKeyEvent& event) const {
    const auto key = router_ != nullptr ? translator_->translate(event) : std::nullopt;
    return key && router_->verdict(*key, context()) == KeyEventRouter::Verdict::consume;
}

} // namespace tavro
