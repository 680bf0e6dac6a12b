#include "UserInterface/TextContrasts.h"

#include <QImage>

#include <algorithm>
#include <cmath>
#include <map>

namespace tavro {

namespace {

/// Some of these pixels behind a text are the frame beside it.
constexpr int leastShareOfABackground = 20;

bool isText(const QQuickItem& item) {
    return item.inherits("QQuickText") || item.inherits("QQuickTextInput") || item.inherits("QQuickTextEdit");
}

double opacityOf(const QQuickItem& item) {
    double opacity = 1;
    for (const auto* one = &item; one != nullptr; one = one->parentItem()) {
        opacity *= one->opacity();
    }
    return opacity;
}

/// Each visible item before those that are painted over it.
void addInPaintingOrder(QQuickItem& item, std::vector<QQuickItem*>& order) {
    if (!item.isVisible() || item.opacity() <= 0) {
        return;
    }
    // Of the same height the later one is above.
    std::multimap<double, QQuickItem*> children;
    for (auto* child : item.childItems()) {
        children.emplace(child->z(), child);
    }
    const auto firstAbove = children.lower_bound(0);
    for (auto child = children.begin(); child != firstAbove; ++child) {
        addInPaintingOrder(*child->second, order);
    }
    order.push_back(&item);
    for (auto child = firstAbove; child != children.end(); ++child) {
        addInPaintingOrder(*child->second, order);
    }
}

/// Where the letters are, in the window.
QRectF placeOf(const QQuickItem& text) {
    const auto width = std::min(text.property("contentWidth").toDouble(), text.width());
    const auto height = std::min(text.property("contentHeight").toDouble(), text.height());
    const auto horizontal = text.property("effectiveHorizontalAlignment").toInt();
    const auto vertical = text.property("verticalAlignment").toInt();
    const auto left = horizontal == Qt::AlignRight     ? text.width() - width
                      : horizontal == Qt::AlignHCenter ? (text.width() - width) / 2
                                                       : 0;
    const auto top = vertical == Qt::AlignBottom    ? text.height() - height
                     : vertical == Qt::AlignVCenter ? (text.height() - height) / 2
                                                    : 0;
    auto place = text.mapRectToScene(QRectF(left, top, width, height));
    for (const auto* one = text.parentItem(); one != nullptr; one = one->parentItem()) {
        if (one->clip()) {
            place &= one->mapRectToScene(one->boundingRect());
        }
    }
    return place & QRectF({}, text.window()->size());
}

bool covers(const QQuickItem& item, QPointF place) {
    return item.inherits("QQuickRectangle") && item.property("color").value<QColor>().alpha() > 0 &&
           item.mapRectToScene(item.boundingRect()).contains(place);
}

/// The colour of the letters before they are blended with what is behind; a selection has one of its own.
const char* colorPropertyOf(const QQuickItem& text) {
    return text.property("selectedText").toString().isEmpty() ? "color" : "selectedTextColor";
}

QColor blended(const QColor& upper, double opacity, const QColor& lower) {
    const auto mix = [opacity](double above, double below) {
        return above * opacity + below * (1 - opacity);
    };
    return QColor::fromRgbF(static_cast<float>(mix(upper.redF(), lower.redF())),
                            static_cast<float>(mix(upper.greenF(), lower.greenF())),
                            static_cast<float>(mix(upper.blueF(), lower.blueF())));
}

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

struct Seen {
    QQuickItem* item;
    QRect place;
    QColor color;
    double opacity;
};

std::vector<Seen> seenTexts(const std::vector<QQuickItem*>& order) {
    std::vector<Seen> seen;
    for (auto at = order.begin(); at != order.end(); ++at) {
        auto& item = **at;
        if (!isText(item) || !item.isEnabled() || item.property("text").toString().isEmpty()) {
            continue;
        }
        const auto place = placeOf(item);
        if (place.width() < 1 || place.height() < 1 ||
            std::any_of(at + 1, order.end(),
                        [&](const auto* later) { return covers(*later, place.center()); })) {
            continue;
        }
        const auto color = item.property(colorPropertyOf(item)).value<QColor>();
        if (color.alpha() == 0) {
            continue;
        }
        seen.push_back({.item = &item,
                        .place = place.toRect(),
                        .color = color,
                        .opacity = color.alphaF() * opacityOf(item)});
    }
    return seen;
}

TextContrasts::Text worstOf(const Seen& text, const QImage& behind) {
    std::map<QRgb, int> colors;
    const auto place = text.place & behind.rect();
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            ++colors[behind.pixel(x, y)];
        }
    }
    TextContrasts::Text worst{.text = text.item->property("text").toString().toStdString(),
                              .color = {},
                              .background = {},
                              .ratio = 100};
    for (const auto& [color, count] : colors) {
        const QColor background(color);
        const auto painted = blended(text.color, text.opacity, background);
        const auto ratio = TextContrasts::ratio(painted, background);
        if (count * leastShareOfABackground >= place.width() * place.height() && ratio < worst.ratio) {
            worst.color = painted;
            worst.background = background;
            worst.ratio = ratio;
        }
    }
    return worst;
}

} // namespace

TextContrasts::TextContrasts(QQuickWindow& window) {
    // Columns and rows place what they hold when a frame is drawn, and not before.
    static_cast<void>(window.grabWindow());
    std::vector<QQuickItem*> order;
    addInPaintingOrder(*window.contentItem(), order);
    const auto seen = seenTexts(order);
    for (const auto& text : seen) {
        text.item->setProperty(colorPropertyOf(*text.item), QColor(Qt::transparent));
    }
    const auto behind = window.grabWindow();
    for (const auto& text : seen) {
        texts_.push_back(worstOf(text, behind));
    }
}

std::vector<std::string> TextContrasts::below(double ratio) const {
    std::vector<std::string> lines;
    for (const auto& text : texts_) {
        if (text.ratio < ratio) {
            lines.push_back(
                QStringLiteral("\"%1\": %2 on %3 is %4 to 1")
                    .arg(QString::fromStdString(text.text), text.color.name(), text.background.name())
                    .arg(text.ratio, 0, 'f', 2)
                    .toStdString());
        }
    }
    return lines;
}

double TextContrasts::ratio(const QColor& one, const QColor& other) {
    const auto [darker, brighter] = std::minmax({luminance(one), luminance(other)});
    return (brighter + 0.05) / (darker + 0.05);
}

} // namespace tavro
