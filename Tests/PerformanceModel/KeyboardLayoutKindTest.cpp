#include "PerformanceModel/KeyboardLayoutKind.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

TEST(KeyboardLayoutKind, HasItsNamesInTheOrderOfThePicker) {
    EXPECT_THAT(allKeyboardLayoutKinds,
                testing::ElementsAre(KeyboardLayoutKind::qwertz, KeyboardLayoutKind::qwerty));
    EXPECT_EQ(rawValue(KeyboardLayoutKind::qwertz), "QWERTZ");
    EXPECT_EQ(rawValue(KeyboardLayoutKind::qwerty), "QWERTY");
    EXPECT_EQ(label(KeyboardLayoutKind::qwertz), "QWERTZ (German)");
    EXPECT_EQ(label(KeyboardLayoutKind::qwerty), "QWERTY");
}

TEST(KeyboardLayoutKind, IsMadeOfItsExactNameOnly) {
    EXPECT_EQ(keyboardLayoutKindFromRawValue("QWERTZ"), KeyboardLayoutKind::qwertz);
    EXPECT_EQ(keyboardLayoutKindFromRawValue("QWERTY"), KeyboardLayoutKind::qwerty);
    for (const char* other : {"", "qwertz", "qwerty", "QWERTZ (German)", "AZERTY", "QWERTY "}) {
        EXPECT_EQ(keyboardLayoutKindFromRawValue(other), std::nullopt) << other;
    }
}

} // namespace
} // namespace tavro
