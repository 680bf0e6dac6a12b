#pragma once

#include "Concurrency/MainActor.h"
#include "KeyboardInput/GlobalKeyRules.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace tavro {

/// Global Play: plays the keys that are typed while another application is in front, and keeps them from it.
/// Main thread only, except for what the tap calls.
class GlobalKeyboardController : public QObject, public KeyboardTap::Client {
    Q_OBJECT

public:
    /// Why the keys are left to everybody for a while.
    enum class Pause {
        /// The login session is locked, or another one has the screen.
        session,
        /// The program is stopped from outside and cannot answer.
        processStop,
    };

    /// The tap and the main actor must outlive this. The keys are those that the windows share.
    GlobalKeyboardController(KeyboardTap& tap, MainActor& mainActor,
                             std::shared_ptr<PressedKeys> keys = std::make_shared<PressedKeys>());
    ~GlobalKeyboardController() override;

    /// A playable key went down or up in another application; called on the main thread.
    std::function<void(Character)> onKeyDown;
    std::function<void(Character)> onKeyUp;
    /// Global Play is about to go off: what sounds must be silenced. Called on the main thread.
    std::function<void()> onPanic;

    /// Whether Global Play is on.
    [[nodiscard]] bool isEnabled() const { return isEnabled_; }

    /// Whether there is a tap and it works. The hotkey works as long as there is one.
    [[nodiscard]] bool isAvailable() const { return isAvailable_; }

    /// How things stand, in one language for every user.
    [[nodiscard]] const QString& statusText() const { return statusText_; }

    /// After a start that failed because the user does not let the program see the keys of others: how to
    /// change that, where the system does not tell it by itself. Changes with the status text.
    [[nodiscard]] QString adviceText() const;

    /// The layout by which positions are characters.
    void setLayoutKind(KeyboardLayoutKind kind);

    /// Another hotkey.
    void setHotkey(const ToggleHotkey& hotkey);

    [[nodiscard]] ToggleHotkey hotkey() const;

    /// Whether a window of this program has the keyboard.
    void setApplicationActive(bool isActive);

    /// Does now what the tap has told so far and what would be done in a moment: keys that came in earlier
    /// are played before whatever the caller is about to do. Main thread.
    void catchUp();

    /// Makes the tap when there is none. Why that failed stands in the status text.
    void start();

    /// Takes the tap away. Does not silence what sounds.
    void stop();

    /// Turns Global Play on or off, making the tap on first use. Without a tap it stays off.
    void setEnabled(bool isEnabled);

    /// Switches the tap off until the reason is gone: no key is taken from anybody, the hotkey neither. The
    /// first reason silences what sounds when Global Play is on. Whether it is on stays as it is and can be
    /// changed meanwhile. A reason that holds already changes nothing.
    void pause(Pause reason);

    /// The reason is gone. With the last one the tap is on again, if there is one.
    void resume(Pause reason);

    [[nodiscard]] bool isPaused() const { return !pauses_.empty(); }

    KeyboardTap::Verdict handle(const KeyboardTap::Event& event) override;

    [[nodiscard]] bool isDown(std::int64_t keyCode) const override { return keys_->isDown(keyCode); }

    [[nodiscard]] KeyboardTap::Verdict verdict(const KeyboardTap::Event& event) const override;
    void reportTaken(std::vector<KeyboardTap::Event> presses) override;
    void tapEnded(KeyboardTap::End end) override;

    /// Whether a press of this key with these modifiers is the hotkey. Any thread.
    [[nodiscard]] bool matchesToggleHotkey(std::int64_t keyCode, HotkeyModifiers modifiers) const;

Q_SIGNALS:
    void isEnabledChanged();
    void statusTextChanged();

private:
    /// Counts the times Global Play was turned on or off, so that what was posted before can be told from
    /// what was posted after.
    using Turn = std::uint64_t;

    /// A tap in place of one that was lost. False when there can be none; it is disposed by then.
    [[nodiscard]] bool makeAnew();
    void post(std::function<void()> action);
    void postKeyDown(std::int64_t keyCode, Character character, Turn turn);
    void postKeyUp(std::int64_t keyCode, const GlobalKeyRules::Decision& decision);
    void release(Character character) const;
    void showEnabled(bool isEnabled, Turn turn);
    /// The keys of the windows are watched by the tap while it is on and Global Play too.
    void updateWatching();
    void showFailure(const QString& text, bool lacksTrust);
    void showStatus(const QString& text);
    void updateStatusText();
    [[nodiscard]] QString currentText() const;
    [[nodiscard]] QString namesOfTaken() const;

    KeyboardTap& tap_;
    MainActor& mainActor_;
    std::shared_ptr<PressedKeys> keys_;
    bool hasTap_ = false;
    bool isEnabled_ = false;
    bool isAvailable_ = false;
    bool lacksTrust_ = false;
    std::set<Pause> pauses_;
    /// As it is without a pause.
    QString status_;
    QString statusText_;
    std::vector<KeyboardTap::Event> taken_;
    /// The latest turn that the main thread knows of. Key presses of earlier ones come too late.
    Turn shownTurn_ = 0;

    /// Held by the tap's thread from a decision until what follows from it waits for the main thread. A key
    /// is up for everybody once that is decided, and its end must not be overtaken by a later one that comes
    /// another way.
    std::mutex postingMutex_;
    /// Over the two fields below: a tap asks on its own thread.
    mutable std::mutex mutex_;
    GlobalKeyRules rules_;
    Turn turn_ = 0;

    /// What the tap's thread has told and the main thread has not done yet.
    std::mutex waitingMutex_;
    std::deque<std::function<void()>> waiting_;
    /// What is posted outlives this, and finds it expired.
    std::shared_ptr<void> life_ = std::make_shared<int>();
};

} // namespace tavro
