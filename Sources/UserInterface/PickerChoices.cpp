#include "UserInterface/PickerChoices.h"

#include "KeyboardMapping/KeyboardLayoutKind.h"
#include "PerformanceModel/ScaleEngine.h"

#include <QString>

#include <string_view>

namespace tavro {

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QVariantMap entry(const QString& shown, const QVariant& value) {
    return {{QStringLiteral("text"), shown}, {QStringLiteral("value"), value}};
}

} // namespace

QVariantList PickerChoices::roots() {
    QVariantList entries;
    for (int semitone = 0; semitone < 12; ++semitone) {
        entries.append(entry(text(ScaleEngine::pitchName(semitone, false)), semitone));
    }
    return entries;
}

QVariantList PickerChoices::scales() {
    QVariantList entries;
    for (const auto& scale : ScaleEngine::scales()) {
        entries.append(entry(text(scale.name), text(scale.name)));
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
        entries.append(entry(text(label(kind)), text(rawValue(kind))));
    }
    return entries;
}

QVariantList PickerChoices::bassOctaves() {
    return {entry(QStringLiteral("-1"), 1), entry(QStringLiteral("-2"), 2)};
}

} // namespace tavro
