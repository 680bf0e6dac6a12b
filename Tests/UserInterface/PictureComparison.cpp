#include "UserInterface/PictureComparison.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace tavro {

namespace {

constexpr QRgb mark = 0xFFFF0000;
constexpr int squareSize = 32;
// Of the 1024 in a square. The side of a tile that moved, or a stroke of a letter, are more.
constexpr int forgivenPixels = 8;
// Of 255. The nearest of the window's surfaces lie 5 apart.
constexpr int forgivenShade = 4;
constexpr int bytesPerPixel = 4;

using Bytes = std::vector<std::uint8_t>;

struct Surroundings {
    Bytes darkest;
    Bytes brightest;
};

Bytes bytesOf(const QImage& image) {
    Bytes bytes;
    bytes.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()) *
                  bytesPerPixel);
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = image.constScanLine(y);
        bytes.insert(bytes.end(), line, line + image.width() * bytesPerPixel);
    }
    return bytes;
}

/// For each byte the chosen one of it and those `step` before and behind it.
template <typename Choice>
Bytes chosenAlong(const Bytes& bytes, std::size_t step, Choice choice) {
    auto result = bytes;
    for (std::size_t at = step; at < bytes.size(); ++at) {
        result[at] = choice(bytes[at], bytes[at - step]);
    }
    for (std::size_t at = 0; at + step < bytes.size(); ++at) {
        result[at] = choice(result[at], bytes[at + step]);
    }
    return result;
}

/// What each colour of each pixel can be when everything lies up to a pixel aside.
Surroundings surroundingsOf(const Bytes& bytes, std::size_t bytesPerLine) {
    const auto darker = [](std::uint8_t one, std::uint8_t other) { return std::min(one, other); };
    const auto brighter = [](std::uint8_t one, std::uint8_t other) { return std::max(one, other); };
    return {.darkest = chosenAlong(chosenAlong(bytes, bytesPerPixel, darker), bytesPerLine, darker),
            .brightest = chosenAlong(chosenAlong(bytes, bytesPerPixel, brighter), bytesPerLine, brighter)};
}

/// Where there is more to see, more may differ: an edge that is drawn harder goes beyond all around it.
bool isWithin(std::uint8_t byte, std::uint8_t darkest, std::uint8_t brightest) {
    const int tolerance = forgivenShade + (brightest - darkest) * 2 / 5;
    return byte >= darkest - tolerance && byte <= brightest + tolerance;
}

QRgb darkened(QRgb colour) {
    return qRgb(qRed(colour) / 2, qGreen(colour) / 2, qBlue(colour) / 2);
}

} // namespace

PictureComparison::PictureComparison(const QImage& expected, const QImage& actual) {
    if (expected.size() != actual.size()) {
        report_ = QStringLiteral("%1 x %2 pixels instead of %3 x %4")
                      .arg(actual.width())
                      .arg(actual.height())
                      .arg(expected.width())
                      .arg(expected.height());
        return;
    }
    difference_ = expected.convertToFormat(QImage::Format_RGB32);
    const auto bytesPerLine = static_cast<std::size_t>(expected.width()) * bytesPerPixel;
    const auto wanted = bytesOf(difference_);
    const auto found = bytesOf(actual.convertToFormat(QImage::Format_RGB32));
    const auto aroundWanted = surroundingsOf(wanted, bytesPerLine);
    const auto aroundFound = surroundingsOf(found, bytesPerLine);
    for (int y = 0; y < expected.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(difference_.scanLine(y));
        for (int x = 0; x < expected.width(); ++x) {
            const auto first =
                static_cast<std::size_t>(y) * bytesPerLine + static_cast<std::size_t>(x) * bytesPerPixel;
            bool isAlike = true;
            for (auto at = first; at < first + bytesPerPixel; ++at) {
                isAlike = isAlike &&
                          isWithin(found[at], aroundWanted.darkest[at], aroundWanted.brightest[at]) &&
                          isWithin(wanted[at], aroundFound.darkest[at], aroundFound.brightest[at]);
            }
            line[x] = isAlike ? darkened(line[x]) : mark;
        }
    }
    judge();
}

void PictureComparison::judge() {
    int squares = 0;
    int worst = 0;
    QPoint worstPlace;
    for (int top = 0; top < difference_.height(); top += squareSize) {
        for (int left = 0; left < difference_.width(); left += squareSize) {
            int count = 0;
            for (int y = top; y < std::min(top + squareSize, difference_.height()); ++y) {
                const auto* line = reinterpret_cast<const QRgb*>(difference_.constScanLine(y));
                const auto* end = line + std::min(left + squareSize, difference_.width());
                count += static_cast<int>(std::count(line + left, end, mark));
            }
            squares += count > forgivenPixels ? 1 : 0;
            if (count > worst) {
                worst = count;
                worstPlace = {left, top};
            }
        }
    }
    if (squares > 0) {
        report_ =
            QStringLiteral("%1 squares of %2 x %2 pixels differ, most of all (%3 pixels) the one at %4, %5")
                .arg(squares)
                .arg(squareSize)
                .arg(worst)
                .arg(worstPlace.x())
                .arg(worstPlace.y());
    }
}

} // namespace tavro
