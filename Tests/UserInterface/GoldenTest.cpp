#include "UserInterface/PictureComparison.h"
#include "UserInterface/WindowStateFixture.h"

#include <QDir>
#include <QFont>
#include <QFontInfo>
#include <QGuiApplication>
#include <QImageWriter>

#include <string>

namespace tavro {
namespace {

QString fileOf(WindowState state, const QString& folder, const QString& what = {}) {
    const auto name = nameOf(state);
    return QStringLiteral("%1/%2%3.png")
        .arg(folder, QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())), what);
}

QString picturesFolder() {
    return QStringLiteral(TAVRO_PICTURES);
}

bool write(const QImage& image, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QImageWriter writer(path, "png");
    writer.setCompression(100);
    return writer.write(image.convertToFormat(QImage::Format_RGB888));
}

/// The window against the pictures in the documentation.
class GoldenTest : public WindowStateTest {
protected:
    void SetUp() override {
        WindowStateTest::SetUp();
        ASSERT_EQ(QFontInfo(QFont(QStringLiteral("Inter"))).family(), QStringLiteral("Inter"))
            << "the font Inter is missing (package fonts-inter)";
        ASSERT_DOUBLE_EQ(window_->effectiveDevicePixelRatio(), 1)
            << "the pictures are of scale factor 1; unset QT_SCALE_FACTOR";
    }

    [[nodiscard]] PictureComparison compared(WindowState state) const {
        return {QImage(fileOf(state, picturesFolder())), picture()};
    }

    void expectPicture(WindowState state) const {
        const auto comparison = compared(state);
        if (comparison.isAlike()) {
            return;
        }
        const auto folder = QStringLiteral(TAVRO_ACTUAL_PICTURES);
        const auto actual = fileOf(state, folder, QStringLiteral("-actual"));
        const auto difference = fileOf(state, folder, QStringLiteral("-difference"));
        const bool isWritten = write(picture(), actual) && (comparison.difference().isNull() ||
                                                            write(comparison.difference(), difference));
        EXPECT_TRUE(isWritten) << folder.toStdString();
        ADD_FAILURE() << comparison.report().toStdString()
                      << "\nexpected:   " << fileOf(state, picturesFolder()).toStdString()
                      << "\nactual:     " << actual.toStdString()
                      << "\ndifference: " << difference.toStdString()
                      << "\nIf it is to look like that: TAVRO_UPDATE_PICTURES=1 and this test again.";
    }
};

class GoldenPictureTest : public GoldenTest, public testing::WithParamInterface<WindowState> {};

TEST_P(GoldenPictureTest, TheWindowLooksLikeItsPicture) {
    enter(GetParam());
    if (qEnvironmentVariableIsSet("TAVRO_UPDATE_PICTURES")) {
        const auto path = fileOf(GetParam(), picturesFolder());
        ASSERT_TRUE(write(picture(), path)) << path.toStdString();
        GTEST_SKIP() << "drawn anew: " << path.toStdString();
    }
    expectPicture(GetParam());
}

INSTANTIATE_TEST_SUITE_P(, GoldenPictureTest, testing::ValuesIn(picturedStates),
                         [](const auto& one) { return identifierOf(one.param); });

TEST_F(GoldenTest, ATileThatMovedTwoPixelsIsSeen) {
    enter(WindowState::standard);
    auto& scale = tile(QStringLiteral("Scale"));
    scale.setX(scale.x() + 2);
    EXPECT_FALSE(compared(WindowState::standard).isAlike());
    scale.setX(scale.x() - 2);
    EXPECT_TRUE(compared(WindowState::standard).isAlike());
    scale.setY(scale.y() - 2);
    EXPECT_FALSE(compared(WindowState::standard).isAlike());
}

TEST_F(GoldenTest, EveryHelpMarkThatIsMissingIsSeen) {
    enter(WindowState::bothOpen);
    int marks = 0;
    for (auto* mark : items(QStringLiteral("TooltipHelpMark"))) {
        if (mark->isVisible()) {
            ++marks;
            mark->setVisible(false);
            EXPECT_FALSE(compared(WindowState::bothOpen).isAlike())
                << mark->property("title").toString().toStdString();
            mark->setVisible(true);
        }
    }
    EXPECT_EQ(marks, 20);
    EXPECT_TRUE(compared(WindowState::bothOpen).isAlike());
}

TEST_F(GoldenTest, AnotherSurfaceIsSeen) {
    enter(WindowState::standard);
    // The key's cap, in the colour of the tiles instead of the pickers'.
    cell(QStringLiteral("F"))->childItems().at(0)->setProperty("color", QColor(0x16181C));
    EXPECT_FALSE(compared(WindowState::standard).isAlike());
}

TEST_F(GoldenTest, ATextThatChangedIsSeen) {
    enter(WindowState::standard);
    cell(QStringLiteral("F"))->setProperty("note", QStringLiteral("F3"));
    EXPECT_FALSE(compared(WindowState::standard).isAlike());
}

/// The same window, as a system draws it that leaves the strokes of letters where they are. (Full hinting,
/// which no distribution has as its choice, makes other widths, and so another picture.)
class OtherHintingTest : public GoldenTest {
protected:
    void SetUp() override {
        auto font = normalFont_;
        font.setHintingPreference(QFont::PreferNoHinting);
        QGuiApplication::setFont(font);
        GoldenTest::SetUp();
    }

    void TearDown() override {
        GoldenTest::TearDown();
        QGuiApplication::setFont(normalFont_);
    }

    const QFont normalFont_ = QGuiApplication::font();
};

TEST_F(OtherHintingTest, ItIsNoOtherWindow) {
    enter(WindowState::standard);
    const QImage golden(fileOf(WindowState::standard, picturesFolder()));
    EXPECT_NE(picture(), golden.convertToFormat(QImage::Format_RGB32));
    const auto comparison = compared(WindowState::standard);
    EXPECT_TRUE(comparison.isAlike()) << comparison.report().toStdString();
}

} // namespace
} // namespace tavro
