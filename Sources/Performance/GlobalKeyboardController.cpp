#include "Performance/GlobalKeyboardController.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <QStringList>

#include <utility>

namespace tavro {

GlobalKeyboardController::GlobalKeyboardController(KeyboardTap& tap, MainActor& mainActor,
                                                   std::shared_ptr<PressedKeys> keys)
    : tap_(tap), mainActor_(mainActor), keys_(std::move(keys)), status_(tr("Global Play off")),
      statusText_(status_) {
    rules_.keys = keys_;
}

GlobalKeyboardController::~GlobalKeyboardController() {
    stop();
}

QString GlobalKeyboardController::adviceText() const {
    return lacksTrust_ ? QString::fromStdString(tap_.adviceOnTrust()) : QString();
}

void GlobalKeyboardController::setLayoutKind(KeyboardLayoutKind kind) {
    {
        const std::scoped_lock lock(mutex_);
        rules_.layoutKind = kind;
    }
    tap_.updateVerdicts();
    updateStatusText();
}

void GlobalKeyboardController::setHotkey(const ToggleHotkey& hotkey) {
    {
        const std::scoped_lock lock(mutex_);
        rules_.hotkey = hotkey;
        rules_.forgetPressedKeys();
    }
    tap_.updateVerdicts();
    updateStatusText();
}

ToggleHotkey GlobalKeyboardController::hotkey() const {
    const std::scoped_lock lock(mutex_);
    return rules_.hotkey;
}

void GlobalKeyboardController::setApplicationActive(bool isActive) {
    {
        const std::scoped_lock lock(mutex_);
        if (std::exchange(rules_.isApplicationActive, isActive) == isActive) {
            return;
        }
    }
    tap_.updateVerdicts();
}

void GlobalKeyboardController::start() {
    if (hasTap_) {
        return;
    }
    if (!tap_.isTrusted(true)) {
        showFailure(tr("Allow Accessibility for Global Play"), true);
        return;
    }
    if (!tap_.create(*this)) {
        showFailure(tr("Global Play unavailable"), false);
        return;
    }
    hasTap_ = true;
    if (!isPaused()) {
        tap_.enable(true);
    }
    lacksTrust_ = false;
    isAvailable_ = true;
    showStatus(tr("Global Play ready"));
}

void GlobalKeyboardController::stop() {
    {
        const std::scoped_lock lock(mutex_);
        rules_.setEnabled(false);
        shownTurn_ = ++turn_;
    }
    if (std::exchange(hasTap_, false)) {
        tap_.enable(false);
        tap_.dispose();
    }
    taken_.clear();
    lacksTrust_ = false;
    const bool wasEnabled = std::exchange(isEnabled_, false);
    updateWatching();
    if (wasEnabled) {
        Q_EMIT isEnabledChanged();
    }
    isAvailable_ = false;
    showStatus(tr("Global Play off"));
}

void GlobalKeyboardController::setEnabled(bool isEnabled) {
    start();
    if (!isAvailable_) {
        if (std::exchange(isEnabled_, false)) {
            Q_EMIT isEnabledChanged();
        }
        return;
    }
    Turn turn = 0;
    {
        const std::scoped_lock lock(mutex_);
        rules_.setEnabled(isEnabled);
        turn = ++turn_;
    }
    showEnabled(isEnabled, turn);
}

void GlobalKeyboardController::showEnabled(bool isEnabled, Turn turn) {
    shownTurn_ = turn;
    if (isEnabled_ && !isEnabled && onPanic) {
        onPanic();
    }
    const bool wasEnabled = std::exchange(isEnabled_, isEnabled);
    updateWatching();
    if (wasEnabled != isEnabled) {
        Q_EMIT isEnabledChanged();
    }
    tap_.updateVerdicts();
    showStatus(isEnabled ? tr("Global Play on") : tr("Global Play ready"));
}

void GlobalKeyboardController::pause(Pause reason) {
    const bool isFirst = pauses_.empty();
    pauses_.insert(reason);
    if (isFirst) {
        bool isEnabled = false;
        Turn turn = 0;
        {
            const std::scoped_lock lock(mutex_);
            rules_.isPaused = true;
            rules_.forgetPressedKeys();
            // A hotkey that is on its way counts; a key that is comes too late.
            isEnabled = rules_.isEnabled();
            turn = ++turn_;
        }
        if (hasTap_) {
            tap_.enable(false);
            if (isEnabled_ && isEnabled && onPanic) {
                onPanic();
            }
            showEnabled(isEnabled, turn);
        }
    }
    updateStatusText();
}

void GlobalKeyboardController::resume(Pause reason) {
    if (pauses_.erase(reason) > 0 && pauses_.empty()) {
        {
            const std::scoped_lock lock(mutex_);
            rules_.isPaused = false;
            rules_.forgetPressedKeys();
        }
        updateWatching();
        if (hasTap_) {
            tap_.enable(true);
        }
    }
    updateStatusText();
}

void GlobalKeyboardController::updateWatching() {
    keys_->setWatching(PressedKeys::Witness::tap, isEnabled_ && !isPaused());
}

KeyboardTap::Verdict GlobalKeyboardController::handle(const KeyboardTap::Event& event) {
    GlobalKeyRules::Decision decision;
    bool isEnabled = false;
    Turn turn = 0;
    const std::scoped_lock untilPosted(postingMutex_);
    {
        const std::scoped_lock lock(mutex_);
        decision = rules_.decide(event);
        isEnabled = rules_.isEnabled();
        turn = decision.action == GlobalKeyRules::Action::toggle ? ++turn_ : turn_;
    }
    switch (decision.action) {
    case GlobalKeyRules::Action::none:
        break;
    case GlobalKeyRules::Action::enableTap:
        post([this] {
            if (hasTap_ && !isPaused()) {
                tap_.enable(true);
            }
        });
        break;
    case GlobalKeyRules::Action::toggle:
        post([this, isEnabled, turn] {
            if (turn > shownTurn_) {
                showEnabled(isEnabled, turn);
            }
        });
        break;
    case GlobalKeyRules::Action::keyDown:
        if (decision.isOfWindow) {
            postKeyUp(event.keyCode, decision);
        }
        postKeyDown(event.keyCode, decision.character, turn);
        break;
    case GlobalKeyRules::Action::keyUp:
        postKeyUp(event.keyCode, decision);
        break;
    }
    return decision.verdict;
}

void GlobalKeyboardController::postKeyDown(std::int64_t keyCode, Character character, Turn turn) {
    const auto held = keys_->find(keyCode);
    post([this, keyCode, character, turn, serial = held ? held->serial : 0] {
        // Turned off by the window meanwhile: nobody would end the note.
        if (turn == shownTurn_ && onKeyDown) {
            onKeyDown(character);
            keys_->markPlayed(keyCode, serial);
        }
    });
}

void GlobalKeyboardController::postKeyUp(std::int64_t keyCode, const GlobalKeyRules::Decision& decision) {
    if (decision.isOfWindow) {
        // A key that a window has had is ended on the window's thread, by the first of all that see it.
        post([this, keyCode] { release(keys_->finish(keyCode).value_or(noKey)); });
    } else {
        post([this, character = decision.character] { release(character); });
    }
}

void GlobalKeyboardController::release(Character character) const {
    if (character != noKey && onKeyUp) {
        onKeyUp(character);
    }
}

KeyboardTap::Verdict GlobalKeyboardController::verdict(const KeyboardTap::Event& event) const {
    const std::scoped_lock lock(mutex_);
    return rules_.verdict(event);
}

bool GlobalKeyboardController::matchesToggleHotkey(std::int64_t keyCode, HotkeyModifiers modifiers) const {
    const std::scoped_lock lock(mutex_);
    return rules_.matchesToggleHotkey(keyCode, modifiers);
}

void GlobalKeyboardController::reportTaken(std::vector<KeyboardTap::Event> presses) {
    post([this, presses = std::move(presses)]() mutable {
        if (hasTap_) {
            taken_ = std::move(presses);
            updateStatusText();
        }
    });
}

void GlobalKeyboardController::tapEnded(KeyboardTap::End end) {
    post([this, end] {
        if (!hasTap_) {
            return;
        }
        if (isEnabled_ && onPanic) {
            onPanic();
        }
        if (end == KeyboardTap::End::lost && makeAnew()) {
            return;
        }
        stop();
        if (end == KeyboardTap::End::lost) {
            showStatus(tr("Global Play unavailable"));
        }
    });
}

bool GlobalKeyboardController::makeAnew() {
    // Perhaps only this connection has ended: while the program was stopped or busy, its guard has seen to
    // it.
    tap_.dispose();
    taken_.clear();
    updateStatusText();
    keys_->forget(PressedKeys::Road::tap);
    if (!tap_.isTrusted(false) || !tap_.create(*this)) {
        return false;
    }
    if (!isPaused()) {
        tap_.enable(true);
    }
    return true;
}

void GlobalKeyboardController::post(std::function<void()> action) {
    {
        const std::scoped_lock lock(waitingMutex_);
        waiting_.push_back(std::move(action));
        if (waiting_.size() > 1) {
            // Whoever put in the first has asked for all.
            return;
        }
    }
    mainActor_.post([this, life = std::weak_ptr(life_)] {
        if (!life.expired()) {
            catchUp();
        }
    });
}

void GlobalKeyboardController::catchUp() {
    {
        // What is decided is on its way.
        const std::scoped_lock untilPosted(postingMutex_);
    }
    for (;;) {
        std::function<void()> action;
        {
            const std::scoped_lock lock(waitingMutex_);
            if (waiting_.empty()) {
                return;
            }
            action = std::move(waiting_.front());
            waiting_.pop_front();
        }
        action();
    }
}

void GlobalKeyboardController::showFailure(const QString& text, bool lacksTrust) {
    lacksTrust_ = lacksTrust;
    isAvailable_ = false;
    showStatus(text);
}

void GlobalKeyboardController::showStatus(const QString& text) {
    status_ = text;
    updateStatusText();
}

void GlobalKeyboardController::updateStatusText() {
    const auto text = currentText();
    if (text != statusText_) {
        statusText_ = text;
        Q_EMIT statusTextChanged();
    }
}

QString GlobalKeyboardController::currentText() const {
    // Without a tap there is nothing to pause, and why there is none is what the user can act on.
    if (hasTap_ && isPaused()) {
        return pauses_.contains(Pause::session) ? tr("Global Play paused: session locked or not in front")
                                                : tr("Global Play paused: program stopped");
    }
    const auto names = namesOfTaken();
    return names.isEmpty() ? status_ : tr("%1 - taken by another program: %2").arg(status_, names);
}

QString GlobalKeyboardController::namesOfTaken() const {
    const std::scoped_lock lock(mutex_);
    QStringList names;
    for (const auto& press : taken_) {
        auto name = tr("the hotkey");
        if (!rules_.matchesToggleHotkey(press.keyCode, press.modifiers)) {
            const auto character = PhysicalKeyMapper::character(press.keyCode, rules_.layoutKind);
            if (!character) {
                continue;
            }
            name = QString::fromUcs4(&*character, 1);
        }
        if (!names.contains(name)) {
            names.append(name);
        }
    }
    return names.join(QLatin1String(", "));
}

} // namespace tavro
