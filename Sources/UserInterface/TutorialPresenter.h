#pragma once

#include "Concurrency/MainActor.h"
#include "KeyboardInput/KeyboardAccess.h"
#include "Performance/GlobalPlay.h"
#include "PlatformInterfaces/UserDefaults.h"
#include "UserInterface/TutorialStep.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// The quick tour: whether it is shown, where it stands, and whether the user has ever ended it. While the
/// program ends with the tour still open, nothing is stored: the user has not dismissed it.
class TutorialPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(bool isTutorialVisible READ isTutorialVisible NOTIFY visibilityChanged)
    /// From 0; 0 while the tour is hidden.
    Q_PROPERTY(int stepIndex READ stepIndex NOTIFY stepChanged)
    Q_PROPERTY(QList<tavro::TutorialStep> steps READ steps NOTIFY stepChanged)
    Q_PROPERTY(tavro::TutorialStep step READ step NOTIFY stepChanged)
    Q_PROPERTY(bool isFirstStep READ isFirstStep NOTIFY stepChanged)
    Q_PROPERTY(bool isLastStep READ isLastStep NOTIFY stepChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY stepChanged)

public:
    /// All must outlive this.
    TutorialPresenter(const GlobalPlay& globalPlay, UserDefaults& defaults, MainActor& mainActor,
                      KeyboardAccess access);

    [[nodiscard]] bool isTutorialVisible() const { return isVisible_; }

    [[nodiscard]] int stepIndex() const { return stepIndex_; }

    [[nodiscard]] QList<TutorialStep> steps() const { return steps_; }

    [[nodiscard]] TutorialStep step() const { return steps_.at(stepIndex_); }

    [[nodiscard]] bool isFirstStep() const { return stepIndex_ == 0; }

    [[nodiscard]] bool isLastStep() const { return stepIndex_ == steps_.size() - 1; }

    [[nodiscard]] QString progressText() const;

    /// The main window is on the screen: the first time, a user who has never ended the tour gets it a moment
    /// later. Later times count for nothing.
    void mainWindowWasShown();

    /// Shows the tour from its first step, with the hotkey as it is now. While it is shown it stays where it
    /// is.
    Q_INVOKABLE void show();

    /// The previous step; on the first one nothing happens.
    Q_INVOKABLE void back();
    /// The next step; on the last one nothing happens.
    Q_INVOKABLE void next();
    /// What the default button does: the next step, and on the last one `done`.
    Q_INVOKABLE void proceed();

    Q_INVOKABLE void skip();
    void done();
    /// Hides the tour and stores that it was ended, as `skip` and `done` do. While it is hidden nothing
    /// happens.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void visibilityChanged();
    void stepChanged();

private:
    void moveTo(int stepIndex);

    const GlobalPlay& globalPlay_;
    UserDefaults& defaults_;
    MainActor& mainActor_;
    KeyboardAccess access_;
    QList<TutorialStep> steps_;
    int stepIndex_ = 0;
    bool isVisible_ = false;
    bool wasWindowShown_ = false;
    ScheduledTask firstShowing_;
};

} // namespace tavro
