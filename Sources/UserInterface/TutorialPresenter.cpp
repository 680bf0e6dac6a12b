#include "UserInterface/TutorialPresenter.h"

#include "Preferences/PreferenceKey.h"
#include "UserInterface/TutorialSteps.h"

#include <chrono>
#include <utility>

namespace tavro {

namespace {

// The window is to be seen before something lies over it.
constexpr std::chrono::milliseconds delayOfFirstShowing{350};

} // namespace

TutorialPresenter::TutorialPresenter(const GlobalPlay& globalPlay, UserDefaults& defaults,
                                     MainActor& mainActor, KeyboardAccess access)
    : globalPlay_(globalPlay), defaults_(defaults), mainActor_(mainActor), access_(access),
      steps_(TutorialSteps::make(globalPlay.displayedGlobalPlayHotkey(), access)) {}

QString TutorialPresenter::progressText() const {
    return tr("Quick Tour · %1 / %2").arg(stepIndex_ + 1).arg(steps_.size());
}

void TutorialPresenter::mainWindowWasShown() {
    if (std::exchange(wasWindowShown_, true) ||
        defaults_.boolean(PreferenceKey::tutorialCompleted.name).value_or(false)) {
        return;
    }
    firstShowing_ = mainActor_.after(delayOfFirstShowing, [this] { show(); });
}

void TutorialPresenter::show() {
    // Whoever asked for the tour in the meantime gets it once.
    firstShowing_.cancel();
    if (isVisible_) {
        return;
    }
    steps_ = TutorialSteps::make(globalPlay_.displayedGlobalPlayHotkey(), access_);
    moveTo(0);
    isVisible_ = true;
    Q_EMIT visibilityChanged();
}

void TutorialPresenter::back() {
    if (isVisible_ && !isFirstStep()) {
        moveTo(stepIndex_ - 1);
    }
}

void TutorialPresenter::next() {
    if (isVisible_ && !isLastStep()) {
        moveTo(stepIndex_ + 1);
    }
}

void TutorialPresenter::proceed() {
    if (isLastStep()) {
        done();
    } else {
        next();
    }
}

void TutorialPresenter::skip() {
    dismiss();
}

void TutorialPresenter::done() {
    dismiss();
}

void TutorialPresenter::dismiss() {
    if (!isVisible_) {
        return;
    }
    defaults_.setValue(PreferenceKey::tutorialCompleted.name, true);
    isVisible_ = false;
    Q_EMIT visibilityChanged();
    moveTo(0);
}

void TutorialPresenter::moveTo(int stepIndex) {
    stepIndex_ = stepIndex;
    Q_EMIT stepChanged();
}

} // namespace tavro
