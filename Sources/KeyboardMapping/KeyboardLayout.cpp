#include "KeyboardMapping/KeyboardLayout.h"

#include <utility>

namespace tavro {

KeyboardLayout::KeyboardLayout(std::vector<KeyboardRow> rows) : rows_(std::move(rows)) {
    std::int64_t rowIndex = 0;
    for (const auto& row : rows_) {
        std::int64_t indexInRow = 0;
        for (const auto printed : row.keys) {
            const auto key = lowercased(printed);
            positions_.insert_or_assign(key, KeyPosition{key, rowIndex, indexInRow, row.octaveOffset});
            ++indexInRow;
        }
        ++rowIndex;
    }
}

const KeyPosition* KeyboardLayout::position(Character key) const {
    const auto found = positions_.find(lowercased(key));
    return found == positions_.end() ? nullptr : &found->second;
}

bool KeyboardLayout::isMelodyKey(Character key, bool splitModeEnabled) const {
    const auto* found = position(key);
    return found != nullptr && isMelodyPosition(*found, splitModeEnabled);
}

KeyPerformanceZone KeyboardLayout::zone(Character key, bool splitModeEnabled) const {
    return isMelodyKey(key, splitModeEnabled) ? KeyPerformanceZone::melody : KeyPerformanceZone::chord;
}

const KeyboardLayout& KeyboardLayout::scaleRowsQWERTY() {
    static const KeyboardLayout layout({
        {U"zxcvbnm,./", -1, "Z"},
        {U"asdfghjkl;'", 0, "A"},
        {U"qwertyuiop[]", 1, "Q"},
        {U"1234567890-=", 2, "1"},
    });
    return layout;
}

const KeyboardLayout& KeyboardLayout::scaleRowsQWERTZ() {
    static const KeyboardLayout layout({
        {U"yxcvbnm,.-", -1, "Y"},
        {U"asdfghjkl\u00F6\u00E4", 0, "A"},
        {U"qwertzuiop\u00FC+", 1, "Q"},
        {U"1234567890\u00DF\u00B4", 2, "1"},
    });
    return layout;
}

const KeyboardLayout& KeyboardLayout::of(KeyboardLayoutKind kind) {
    return kind == KeyboardLayoutKind::qwerty ? scaleRowsQWERTY() : scaleRowsQWERTZ();
}

} // namespace tavro
