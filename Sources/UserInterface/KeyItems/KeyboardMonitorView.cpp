#include "UserInterface/KeyItems/KeyboardMonitorView.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"
#include "UserInterface/KeyItems/FocusedItem.h"

#include <QKeyEvent>

namespace tavro {

KeyboardMonitorView::KeyboardMonitorView(QQuickItem* parent) {
    // Not by the base class, whose notice of the window would come before this part can hear it.
    setParent(parent);
    setParentItem(parent);
}

KeyboardMonitorView::~KeyboardMonitorView() {
    // The base class takes itself out of the window when this part no longer exists and can tell nobody.
    if (window_ != nullptr) {
        removeMonitors();
        loseKeys();
    }
}

void KeyboardMonitorView::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange) {
        return;
    }
    removeMonitors();
    if (data.window != nullptr) {
        reportFocus(true);
        installMonitors(*data.window);
    } else {
        loseKeys();
    }
}

void KeyboardMonitorView::installMonitors(QQuickWindow& window) {
    window_ = &window;
    window.installEventFilter(this);
    connect(&window, &QWindow::focusObjectChanged, this, &KeyboardMonitorView::watchFocusObject);
    watchFocusObject(window.focusObject());
}

void KeyboardMonitorView::removeMonitors() {
    watchFocusObject(nullptr);
    if (window_ != nullptr) {
        window_->removeEventFilter(this);
        window_->disconnect(this);
    }
    window_ = nullptr;
}

void KeyboardMonitorView::watchFocusObject(QObject* focusObject) {
    // The question whether a key is a shortcut goes to the item that has the focus, not through the window.
    if (focusObject_ != nullptr && focusObject_ != window_) {
        focusObject_->removeEventFilter(this);
    }
    focusObject_ = focusObject;
    if (focusObject_ != nullptr && focusObject_ != window_) {
        focusObject_->installEventFilter(this);
    }
    const auto now = context();
    if (now.isForeignWindow || now.isEditingText) {
        interruptRecording();
    }
}

bool KeyboardMonitorView::handleDirectly(const KeyEvent& event) {
    // Whatever is more than playing may open things; that is better done where Qt expects it.
    const bool plays = PhysicalKeyMapper::character(event.keyCode, router.layoutKind).has_value() &&
                       !router.isRecordingHotkey && !router.isToggleHotkey(event);
    const auto now = context();
    if (window_ == nullptr || !plays || router.verdict(event, now) != KeyEventRouter::Verdict::consume) {
        return false;
    }
    return router.handle(event, now) == KeyEventRouter::Verdict::consume;
}

bool KeyboardMonitorView::eventFilter(QObject* watched, QEvent* event) {
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
        reportFocus(true);
        return false;
    case QEvent::FocusOut:
        loseKeys();
        return false;
    default:
        return false;
    }
}

void KeyboardMonitorView::loseKeys() {
    interruptRecording();
    router.keys->loseKeyboard();
    reportFocus(false);
}

void KeyboardMonitorView::interruptRecording() const {
    if (router.isRecordingHotkey && onRecordingInterrupted) {
        onRecordingInterrupted();
    }
}

void KeyboardMonitorView::reportFocus(bool isFocused) const {
    if (onFocusChanged) {
        onFocusChanged(isFocused);
    }
}

KeyEventRouter::Context KeyboardMonitorView::context() const {
    const auto focus = FocusedItem::of(window_);
    return {.isForeignWindow = focus.liesInPopup, .isEditingText = focus.isEditingText};
}

bool KeyboardMonitorView::consumes(const QKeyEvent& event) {
    const auto key = translator != nullptr ? translator->translate(event) : std::nullopt;
    return key && router.handle(*key, context()) == KeyEventRouter::Verdict::consume;
}

bool KeyboardMonitorView::wouldConsume(const QKeyEvent& event) const {
    const auto key = translator != nullptr ? translator->translate(event) : std::nullopt;
    return key && router.verdict(*key, context()) == KeyEventRouter::Verdict::consume;
}

} // namespace tavro
