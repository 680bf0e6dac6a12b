#include "UserInterface/PickerChoices.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace tavro {
namespace {

QStringList texts(const QVariantList& entries) {
    QStringList all;
    for (const auto& entry : entries) {
        all.append(entry.toMap().value(QStringLiteral("text")).toString());
    }
    return all;
}

QVariantList values(const QVariantList& entries) {
    QVariantList all;
    for (const auto& entry : entries) {
        all.append(entry.toMap().value(QStringLiteral("value")));
    }
    return all;
}

TEST(PickerChoices, TheTwelveRootsBySemitone) {
    EXPECT_EQ(texts(PickerChoices::roots()).join(QLatin1Char(' ')),
              QStringLiteral("C C# D D# E F F# G G# A A# B"));
    EXPECT_EQ(values(PickerChoices::roots()), (QVariantList{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
}

TEST(PickerChoices, TheScalesInTheirOrderByName) {
    const auto scales = PickerChoices::scales();
    ASSERT_EQ(scales.size(), 13);
    EXPECT_EQ(texts(scales).front(), QStringLiteral("Chromatic"));
    EXPECT_EQ(texts(scales).at(1), QStringLiteral("Major"));
    EXPECT_EQ(texts(scales).back(), QStringLiteral("Blues Minor"));
    for (const auto& scale : scales) {
        EXPECT_EQ(scale.toMap().value(QStringLiteral("text")), scale.toMap().value(QStringLiteral("value")));
    }
}

TEST(PickerChoices, SixteenChannels) {
    const auto channels = PickerChoices::midiChannels();
    ASSERT_EQ(channels.size(), 16);
    EXPECT_EQ(values(channels).front(), QVariant(1));
    EXPECT_EQ(texts(channels).back(), QStringLiteral("16"));
}

TEST(PickerChoices, TheLayoutsWithTheirLabels) {
    EXPECT_EQ(texts(PickerChoices::keyboardLayouts()),
              (QStringList{QStringLiteral("QWERTZ (German)"), QStringLiteral("QWERTY")}));
    EXPECT_EQ(values(PickerChoices::keyboardLayouts()),
              (QVariantList{QStringLiteral("QWERTZ"), QStringLiteral("QWERTY")}));
}

TEST(PickerChoices, TheBassOctavesReadDownwards) {
    EXPECT_EQ(texts(PickerChoices::bassOctaves()), (QStringList{QStringLiteral("-1"), QStringLiteral("-2")}));
    EXPECT_EQ(values(PickerChoices::bassOctaves()), (QVariantList{1, 2}));
}

} // namespace
} // namespace tavro
