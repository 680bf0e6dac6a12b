#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// What a number that was typed into a field means.
class NumericDraft : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The number that the draft stands for, rounded to a whole one and brought into the range. A draft that
    /// is no number gives `current`, as it is.
    Q_INVOKABLE [[nodiscard]] static int committedValue(const QString& draft, int current, int lowest,
                                                        int highest);
};

} // namespace tavro
