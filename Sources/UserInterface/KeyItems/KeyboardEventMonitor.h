#pragma once

#include "PlatformInterfaces/Application/KeyEventTranslator.h"
#include "UserInterface/KeyItems/KeyboardMonitorView.h"

#include <QQuickItem>
#include <QString>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace tavro {

/// The in-window keyboard as the scene describes it. Owns the view that watches the window, and copies every
/// field into it at once, so that a change counts from the next key on. The actions are set from C++: a key
/// takes no way through the scene's scripts.
class KeyboardEventMonitor : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString hotkey READ hotkey WRITE setHotkey NOTIFY hotkeyChanged)
    Q_PROPERTY(QVariant hotkeyKeyCode READ hotkeyKeyCode WRITE setHotkeyKeyCode NOTIFY hotkeyChanged)
    Q_PROPERTY(int hotkeyModifiers READ hotkeyModifiers WRITE setHotkeyModifiers NOTIFY hotkeyChanged)
    Q_PROPERTY(QString layoutKind READ layoutKind WRITE setLayoutKind NOTIFY layoutKindChanged)
    Q_PROPERTY(bool isRecordingHotkey READ isRecordingHotkey WRITE setRecordingHotkey NOTIFY
                   isRecordingHotkeyChanged)

public:
    /// What the monitor calls; unset ones are skipped.
    struct Actions {
        std::function<void(Character)> onKeyDown;
        std::function<void(Character)> onKeyUp;
        std::function<void(std::string text, std::int64_t keyCode, HotkeyModifiers modifiers)>
            onRecordedHotkey;
        std::function<void()> onHotkey;
        std::function<void(bool isFocused)> onFocusChanged;
        /// While a hotkey was being recorded, something else has got the keys.
        std::function<void()> onRecordingInterrupted{};
        /// Before anything is done about a key. See `KeyEventRouter`.
        std::function<void()> catchUp{};
    };

    explicit KeyboardEventMonitor(QQuickItem* parent = nullptr);
    ~KeyboardEventMonitor() override;

    /// Replaces the actions. The new one for the focus is told at once how things stand.
    void setActions(Actions actions);

    /// Must outlive this. Null lets every key pass.
    void setTranslator(const KeyEventTranslator* translator);

    /// Which keys are down, shared with the other roads on which keys come in; not null. Without this the
    /// window's are known alone.
    void setPressedKeys(std::shared_ptr<PressedKeys> keys) { view_->router.keys = std::move(keys); }

    /// The window system saw a key go up. See `KeyEventRouter`.
    void handleReleaseElsewhere(std::int64_t keyCode, std::uint32_t time) {
        view_->router.handleReleaseElsewhere(keyCode, time);
    }

    /// A key is down whose press went to others. See `KeyEventRouter`.
    void keepSilent(std::int64_t keyCode, std::uint32_t time) { view_->router.keepSilent(keyCode, time); }

    /// Whether the key is known to be down, on whichever road.
    [[nodiscard]] bool isDown(std::int64_t keyCode) const { return view_->router.keys->isDown(keyCode); }

    /// Offers a key before the window sees it; true when it was played. See `KeyboardMonitorView`.
    bool handleDirectly(const KeyEvent& event) { return view_->handleDirectly(event); }

    /// The hotkey's key as text; only its last character counts.
    [[nodiscard]] QString hotkey() const;
    void setHotkey(const QString& hotkey);

    /// The hotkey's physical key, as the Mac's virtual key code; undefined or null when only the text
    /// decides. Anything that is no number counts as undefined.
    [[nodiscard]] QVariant hotkeyKeyCode() const;
    void setHotkeyKeyCode(const QVariant& keyCode);

    /// The bits of `HotkeyModifiers`.
    [[nodiscard]] int hotkeyModifiers() const;
    void setHotkeyModifiers(int modifiers);

    /// The stored name of the layout kind; an unknown one changes nothing.
    [[nodiscard]] QString layoutKind() const;
    void setLayoutKind(const QString& rawValue);

    [[nodiscard]] bool isRecordingHotkey() const;
    void setRecordingHotkey(bool isRecording);

Q_SIGNALS:
    void hotkeyChanged();
    void layoutKindChanged();
    void isRecordingHotkeyChanged();

private:
    /// Apart from the actions, because the fields may change while an action runs.
    void updateFields();
    void updateActions();

    Actions actions_;
    const KeyEventTranslator* translator_ = nullptr;
    QString hotkey_ = QStringLiteral("^");
    std::optional<std::int64_t> hotkeyKeyCode_;
    HotkeyModifiers hotkeyModifiers_;
    KeyboardLayoutKind layoutKind_ = allKeyboardLayoutKinds.front();
    bool isRecordingHotkey_ = false;
    bool isFocused_ = false;
    KeyboardMonitorView* view_;
};

} // namespace tavro
