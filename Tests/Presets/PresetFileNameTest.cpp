#include "Presets/PresetFileName.h"

#include <QFile>

#include <gtest/gtest.h>

namespace tavro {
namespace {

TEST(PresetFileNames, endInTheExtensionOnce) {
    EXPECT_EQ(PresetFileName::withExtension(QStringLiteral("a/b")), QStringLiteral("a/b.tvp"));
    EXPECT_EQ(PresetFileName::withExtension(QStringLiteral("a/b.tvp")), QStringLiteral("a/b.tvp"));
    EXPECT_EQ(PresetFileName::withExtension(QStringLiteral("b.Tvp")), QStringLiteral("b.Tvp"));
    EXPECT_EQ(PresetFileName::withExtension(QStringLiteral("b.json")), QStringLiteral("b.json.tvp"));
    EXPECT_EQ(PresetFileName::withExtension(QStringLiteral("a.tvp/b")), QStringLiteral("a.tvp/b.tvp"));
    EXPECT_EQ(PresetFileName::withExtension(QStringLiteral("a/.tvp")), QStringLiteral("a/.tvp.tvp"));
}

TEST(PresetFileNames, nameThePreset) {
    EXPECT_EQ(PresetFileName::presetName(QStringLiteral("a/My Song.tvp")), QStringLiteral("My Song"));
    EXPECT_EQ(PresetFileName::presetName(QStringLiteral("Song 1.5.tvp")), QStringLiteral("Song 1.5"));
}

TEST(PresetFileNames, bearTheNameOfAPreset) {
    EXPECT_EQ(PresetFileName::forPreset(QStringLiteral("Größe 𝄞 2")), QStringLiteral("Größe 𝄞 2"));
    EXPECT_EQ(PresetFileName::forPreset(QStringLiteral("../../etc/passwd")),
              QStringLiteral("-.-..-etc-passwd"));
    EXPECT_EQ(PresetFileName::forPreset(QStringLiteral(" a:b\\c\nd\u0000e ")), QStringLiteral("a-b-c-d-e"));
    EXPECT_EQ(PresetFileName::forPreset(QStringLiteral("  ")), QString());
    EXPECT_EQ(PresetFileName::forPreset(QStringLiteral(".")), QStringLiteral("-"));
}

TEST(PresetFileNames, areShortEnoughForAnyFileSystem) {
    const QString clefs = QStringLiteral("x") + QStringLiteral("𝄞").repeated(1000);
    const auto name = PresetFileName::forPreset(clefs);
    EXPECT_EQ(name, clefs.left(59));
    EXPECT_LE(QFile::encodeName(PresetFileName::withExtension(name)).size(), 255);
}

} // namespace
} // namespace tavro
