#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// What the pickers offer. Every list holds entries of "text", to be shown, and "value", to be stored.
class PickerChoices : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QVariantList roots READ roots CONSTANT)
    Q_PROPERTY(QVariantList scales READ scales CONSTANT)
    Q_PROPERTY(QVariantList midiChannels READ midiChannels CONSTANT)
    Q_PROPERTY(QVariantList keyboardLayouts READ keyboardLayouts CONSTANT)
    Q_PROPERTY(QVariantList bassOctaves READ bassOctaves CONSTANT)

public:
    using QObject::QObject;

    /// One entry of a picker's list.
    [[nodiscard]] static QVariantMap entry(const QString& shown, const QVariant& value);

    /// The twelve pitch classes from C, by their semitone.
    [[nodiscard]] static QVariantList roots();
    /// By name, in the table's order.
    [[nodiscard]] static QVariantList scales();
    /// 1 to 16.
    [[nodiscard]] static QVariantList midiChannels();
    /// By stored name.
    [[nodiscard]] static QVariantList keyboardLayouts();
    /// How many octaves the bass note lies below the root.
    [[nodiscard]] static QVariantList bassOctaves();
};

} // namespace tavro
