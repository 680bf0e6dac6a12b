#include "UserInterface/PickerChoices.h"

#include "PerformanceModel/KeyboardLayoutKind.h"
#include "PerformanceModel/ScaleEngine.h"

#include <QString>

namespace tavro {

QVariantMap PickerChoices::entry(const QString& shown, const QVariant& value) {
    return {{QStringLiteral("text"), shown}, {QStringLiteral("value"), value}};
}

QVariantList PickerChoices::roots() {
    QVariantList entries;
    for (int semitone = 0; semitone < 12; ++semitone) {
        entries.append(entry(QString::fromUtf8(ScaleEngine::pitchName(semitone, false)), semitone));
    }
    return entries;
}

QVariantList PickerChoices::scales() {
    QVariantList entries;
    for (const auto& scale : ScaleEngine::scales()) {
        entries.append(entry(QString::fromUtf8(scale.name), QString::fromUtf8(scale.name)));
    }
    return entries;
}

QVariantList PickerChoices::midiChannels() {
    QVariantList entries;
    for (int channel = 1; channel <= 16; ++channel) {
        entries.append(entry(QString::number(channel), channel));
    }
    return entries;
}

QVariantList PickerChoices::keyboardLayouts() {
    QVariantList entries;
    for (const auto kind : allKeyboardLayoutKinds) {
        entries.append(entry(QString::fromUtf8(label(kind)), QString::fromUtf8(rawValue(kind))));
    }
    return entries;
}

QVariantList PickerChoices::bassOctaves() {
    return {entry(QStringLiteral("-1"), 1), entry(QStringLiteral("-2"), 2)};
}

} // namespace tavro
