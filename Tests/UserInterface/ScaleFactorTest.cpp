#include "UserInterface/PictureComparison.h"
#include "UserInterface/SceneModule.h"
#include "UserInterface/WindowStateFixture.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QSvgRenderer>
#include <QtMath>

#include <algorithm>
#include <cstdlib>

namespace tavro {
namespace {

/// Of their pixels, of 255.
double meanDifference(const QImage& one, const QImage& other) {
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            sum += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y)));
        }
    }
    return sum / (one.width() * one.height());
}

/// How much of a part is lost when it is drawn at scale factor 1 and enlarged: the mean difference of a
/// pixel, of 255. What was only enlarged has nothing to lose.
double detailOf(const QImage& part, qreal factor) {
    const QSize small(qRound(part.width() / factor), qRound(part.height() / factor));
    const auto enlarged = part.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .scaled(part.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return meanDifference(part, enlarged);
}

QImage enlarged(const QImage& picture, qreal factor) {
    return picture.scaled(QSize(qRound(picture.width() * factor), qRound(picture.height() * factor)),
                          Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// The window at the scale factor that the program was started with, in QT_SCALE_FACTOR.
class ScaleFactorTest : public WindowStateTest {
protected:
    void SetUp() override {
        WindowStateTest::SetUp();
        enter(WindowState::standard);
        factor_ = window_->effectiveDevicePixelRatio();
        ASSERT_DOUBLE_EQ(factor_, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
        picture_ = picture();
        picture_.setDevicePixelRatio(1);
        golden_ = QImage(QStringLiteral(TAVRO_PICTURES "/default.png")).convertToFormat(QImage::Format_RGB32);
        ASSERT_FALSE(golden_.isNull());
    }

    /// Where an item is, in pixels.
    [[nodiscard]] QRect placeOf(const QQuickItem& item) const {
        const auto place = item.mapRectToScene(item.boundingRect());
        return QRectF(place.topLeft() * factor_, place.size() * factor_).toAlignedRect();
    }

    qreal factor_ = 1;
    QImage picture_;
    QImage golden_;
};

TEST_F(ScaleFactorTest, ItIsTheSameWindowWithMorePixels) {
    EXPECT_EQ(picture_.size(), QSize(qRound(1280 * factor_), qRound(805 * factor_)));
    // Without the last line of the window, which need not end with a whole pixel.
    const auto expected = golden_.copy(0, 0, 1280, 804);
    const auto same = picture_.copy(0, 0, picture_.width(), qRound(804 * factor_));
    const PictureComparison comparison(
        expected, same.scaled(expected.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    EXPECT_TRUE(comparison.isAlike()) << comparison.report().toStdString();
}

TEST_F(ScaleFactorTest, TheEdgeOfASurfaceIsNoWiderThanAPixel) {
    // From outside a key to its inside, through the middle of its left edge: surface, line, cap.
    const auto place = placeOf(*cell(QStringLiteral("F")));
    const auto y = place.center().y();
    const auto outside = picture_.pixel(place.left() - qCeil(3 * factor_), y);
    const auto inside = picture_.pixel(place.left() + qCeil(4 * factor_), y);
    int between = 0;
    for (int x = place.left() - qCeil(3 * factor_); x < place.left() + qCeil(4 * factor_); ++x) {
        const auto pixel = picture_.pixel(x, y);
        between += pixel != outside && pixel != inside ? 1 : 0;
    }
    // The line, which is one point wide, and at most one pixel where it does not fall on a whole one.
    EXPECT_GE(between, qFloor(factor_));
    EXPECT_LE(between, qFloor(factor_) + (factor_ > qFloor(factor_) ? 2 : 0));
}

/// With a factor above 1, which shows more than the picture of factor 1 does.
class LargeScaleTest : public ScaleFactorTest {
protected:
    void SetUp() override {
        ScaleFactorTest::SetUp();
        ASSERT_GT(factor_, 1);
    }

    /// What was drawn once more, pixel by pixel, has about twice the detail of what was only enlarged.
    [[nodiscard]] bool isSharp(const QImage& picture, const QQuickItem& item) const {
        const auto place = placeOf(item);
        const auto blurred = detailOf(enlarged(golden_, factor_).copy(place), factor_);
        return detailOf(picture.copy(place), factor_) > 1.4 * blurred;
    }

    /// The mark's drawing in all the pixels that it has here, on the surface of a tile.
    [[nodiscard]] QImage drawnAnew(const QQuickItem& symbol) const {
        const auto exact = symbol.mapRectToScene(symbol.boundingRect());
        const auto place = placeOf(symbol);
        QImage image(place.size(), QImage::Format_RGB32);
        image.fill(QColor(0x16, 0x18, 0x1C));
        QFile file(SceneModule::resourceOf(QStringLiteral("Symbols/questionmark.circle.svg")));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QSvgRenderer drawing(file.readAll().replace("currentColor", "#7E8690"));
        QPainter painter(&image);
        drawing.render(&painter, QRectF(exact.topLeft() * factor_ - place.topLeft(), exact.size() * factor_));
        painter.end();
        return image;
    }

    /// Nearer to the drawing than to what enlarging makes of the one with fewer pixels.
    [[nodiscard]] bool isDrawnSharp(const QImage& picture, const QQuickItem& symbol) const {
        const auto place = placeOf(symbol);
        const auto part = picture.copy(place);
        return meanDifference(part, drawnAnew(symbol)) <
               0.5 * meanDifference(enlarged(golden_, factor_).copy(place), drawnAnew(symbol));
    }

    static QQuickPaintedItem* symbolIn(const QQuickItem& item) {
        for (auto* child : item.childItems()) {
            if (auto* symbol = qobject_cast<QQuickPaintedItem*>(child)) {
                return symbol;
            }
        }
        return nullptr;
    }
};

TEST_F(LargeScaleTest, LettersAndSymbolsAndFramesHaveTheDetailOfTheirPixels) {
    EXPECT_TRUE(isSharp(picture_, *find(QStringLiteral("QQuickText"), "text", QStringLiteral("Velocity"))));
    EXPECT_TRUE(isSharp(picture_, *items(QStringLiteral("StopButton")).at(0)));
    EXPECT_TRUE(isSharp(picture_, *cell(QStringLiteral("F"))));
}

TEST_F(LargeScaleTest, ASymbolIsDrawnInAllItsPixels) {
    auto* symbol = symbolIn(helpMark(QStringLiteral("Velocity")));
    ASSERT_NE(symbol, nullptr);
    EXPECT_TRUE(isDrawnSharp(picture_, *symbol));
    EXPECT_FALSE(isDrawnSharp(enlarged(golden_, factor_), *symbol));
    symbol->setTextureSize(symbol->size().toSize() / 2);
    symbol->update();
    EXPECT_FALSE(isDrawnSharp(picture(), *symbol));
}

TEST_F(LargeScaleTest, WhatWasOnlyEnlargedIsNotSharp) {
    EXPECT_FALSE(isSharp(enlarged(golden_, factor_), *cell(QStringLiteral("F"))));
}

} // namespace
} // namespace tavro
