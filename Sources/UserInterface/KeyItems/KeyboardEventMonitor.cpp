#include "UserInterface/KeyItems/KeyboardEventMonitor.h"

#include <utility>

namespace tavro {

KeyboardEventMonitor::KeyboardEventMonitor(QQuickItem* parent)
    : QQuickItem(parent), view_(new KeyboardMonitorView()) {
    updateFields();
    updateActions();
    // Only now: entering the window is reported to the fields.
    view_->setParent(this);
    view_->setParentItem(this);
}

KeyboardEventMonitor::~KeyboardEventMonitor() {
    // While the actions, which it calls when it goes, still exist.
    delete view_;
}

void KeyboardEventMonitor::updateFields() {
    auto& router = view_->router;
    router.hotkey = hotkey_.toStdString();
    router.hotkeyKeyCode = hotkeyKeyCode_;
    router.hotkeyModifiers = hotkeyModifiers_;
    router.layoutKind = layoutKind_;
    router.isRecordingHotkey = isRecordingHotkey_;
    view_->translator = translator_;
}

void KeyboardEventMonitor::updateActions() {
    auto& router = view_->router;
    router.onKeyDown = actions_.onKeyDown;
    router.onKeyUp = actions_.onKeyUp;
    router.onRecordedHotkey = actions_.onRecordedHotkey;
    router.onHotkey = actions_.onHotkey;
    router.catchUp = actions_.catchUp;
    view_->onRecordingInterrupted = actions_.onRecordingInterrupted;
    // The scene may bring the view into a window before the actions are known; what was reported then is kept
    // for them.
    view_->onFocusChanged = [this](bool isFocused) {
        isFocused_ = isFocused;
        if (actions_.onFocusChanged) {
            actions_.onFocusChanged(isFocused);
        }
    };
}

void KeyboardEventMonitor::setActions(Actions actions) {
    actions_ = std::move(actions);
    updateActions();
    if (actions_.onFocusChanged) {
        actions_.onFocusChanged(isFocused_);
    }
}

void KeyboardEventMonitor::setTranslator(const KeyEventTranslator* translator) {
    translator_ = translator;
    updateFields();
}

QString KeyboardEventMonitor::hotkey() const {
    return hotkey_;
}

void KeyboardEventMonitor::setHotkey(const QString& hotkey) {
    if (hotkey_ != hotkey) {
        hotkey_ = hotkey;
        updateFields();
        Q_EMIT hotkeyChanged();
    }
}

QVariant KeyboardEventMonitor::hotkeyKeyCode() const {
    return hotkeyKeyCode_ ? QVariant::fromValue<qint64>(*hotkeyKeyCode_) : QVariant();
}

void KeyboardEventMonitor::setHotkeyKeyCode(const QVariant& keyCode) {
    bool isNumber = false;
    const auto number = keyCode.toLongLong(&isNumber);
    const auto code = isNumber ? std::optional<std::int64_t>(number) : std::nullopt;
    if (hotkeyKeyCode_ != code) {
        hotkeyKeyCode_ = code;
        updateFields();
        Q_EMIT hotkeyChanged();
    }
}

int KeyboardEventMonitor::hotkeyModifiers() const {
    return static_cast<int>(hotkeyModifiers_.rawValue());
}

void KeyboardEventMonitor::setHotkeyModifiers(int modifiers) {
    if (hotkeyModifiers_ != HotkeyModifiers(modifiers)) {
        hotkeyModifiers_ = HotkeyModifiers(modifiers);
        updateFields();
        Q_EMIT hotkeyChanged();
    }
}

QString KeyboardEventMonitor::layoutKind() const {
    return QString::fromUtf8(rawValue(layoutKind_));
}

void KeyboardEventMonitor::setLayoutKind(const QString& rawValue) {
    const auto kind = keyboardLayoutKindFromRawValue(rawValue.toStdString());
    if (kind && *kind != layoutKind_) {
        layoutKind_ = *kind;
        updateFields();
        Q_EMIT layoutKindChanged();
    }
}

bool KeyboardEventMonitor::isRecordingHotkey() const {
    return isRecordingHotkey_;
}

void KeyboardEventMonitor::setRecordingHotkey(bool isRecording) {
    if (isRecordingHotkey_ != isRecording) {
        isRecordingHotkey_ = isRecording;
        updateFields();
        Q_EMIT isRecordingHotkeyChanged();
    }
}

} // namespace tavro
