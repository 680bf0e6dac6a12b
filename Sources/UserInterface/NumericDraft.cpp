#include "UserInterface/NumericDraft.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace tavro {

int NumericDraft::committedValue(const QString& draft, int current, int lowest, int highest) {
    bool isNumber = false;
    const double typed = QLocale::c().toDouble(draft.trimmed(), &isNumber);
    // "nan" and "inf" are read too, and are no numbers to a player.
    if (!isNumber || !std::isfinite(typed)) {
        return current;
    }
    return static_cast<int>(std::lround(std::clamp<double>(typed, lowest, highest)));
}

} // namespace tavro
