#include "UserInterface/Controls/PlayedKeyboard.h"

namespace tavro {

QStringList PlayedKeyboard::takeNotes() {
    constexpr int noteOn = 0x90;
    QStringList notes;
    for (const auto& message : instrument_.takeMessages()) {
        const auto state = message.at(0) == noteOn ? QStringLiteral("on") : QStringLiteral("off");
        notes.append(state + QLatin1Char(' ') + QString::number(message.at(1)));
    }
    return notes;
}

} // namespace tavro
