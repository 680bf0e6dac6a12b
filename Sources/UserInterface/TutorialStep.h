#pragma once

#include <QMetaType>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// One page of the quick tour.
struct TutorialStep {
    Q_GADGET
    QML_VALUE_TYPE(tutorialStep)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString body MEMBER body)
    Q_PROPERTY(QString note MEMBER note)

public:
    QString title;
    /// The name of a drawing in Symbols.
    QString symbol;
    QString body;
    /// What is different on this system; empty when nothing is.
    QString note;

    friend bool operator==(const TutorialStep&, const TutorialStep&) = default;
};

} // namespace tavro
