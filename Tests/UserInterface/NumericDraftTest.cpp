#include "UserInterface/NumericDraft.h"

#include <gtest/gtest.h>

#include <limits>

namespace tavro {
namespace {

int committed(const char16_t* draft, int current = 7) {
    return NumericDraft::committedValue(QString::fromUtf16(draft), current, -50, 50);
}

TEST(NumericDraft, ANumberInTheRangeIsTaken) {
    EXPECT_EQ(committed(u"12"), 12);
    EXPECT_EQ(committed(u"-50"), -50);
    EXPECT_EQ(committed(u"+50"), 50);
    EXPECT_EQ(committed(u"  0 "), 0);
    EXPECT_EQ(committed(u"007"), 7);
}

TEST(NumericDraft, ANumberOutOfTheRangeIsClamped) {
    EXPECT_EQ(committed(u"51"), 50);
    EXPECT_EQ(committed(u"-51"), -50);
    EXPECT_EQ(committed(u"99999999999999999999"), 50);
    EXPECT_EQ(committed(u"-1e30"), -50);
}

TEST(NumericDraft, AFractionIsRounded) {
    EXPECT_EQ(committed(u"12.4"), 12);
    EXPECT_EQ(committed(u"-12.5"), -13);
    EXPECT_EQ(committed(u"49.9"), 50);
}

TEST(NumericDraft, WhatIsNoNumberIsDiscarded) {
    for (const auto* draft :
         {u"", u" ", u"Off", u"12 ms", u"1 2", u"0x10", u"nan", u"inf", u"-inf", u"--3", u"-"}) {
        EXPECT_EQ(committed(draft), 7) << QString::fromUtf16(draft).toStdString();
    }
}

TEST(NumericDraft, ADiscardedDraftLeavesEvenAValueOutOfTheRange) {
    EXPECT_EQ(committed(u"x", 300), 300);
    EXPECT_EQ(NumericDraft::committedValue(QStringLiteral("1e300"), 0, 0, std::numeric_limits<int>::max()),
              std::numeric_limits<int>::max());
}

} // namespace
} // namespace tavro
