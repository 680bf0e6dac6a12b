#include "UserInterface/SymbolItem.h"

#include "UserInterface/SceneModule.h"

#include <QFile>
#include <QPainter>
#include <QQuickWindow>
#include <QSvgRenderer>

#include <cmath>

namespace tavro {

SymbolItem::SymbolItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setImplicitSize(20, 20);
    setAntialiasing(true);
}

SymbolItem::~SymbolItem() = default;

void SymbolItem::setName(const QString& name) {
    if (name_ == name) {
        return;
    }
    name_ = name;
    draw();
    Q_EMIT nameChanged();
}

void SymbolItem::setColor(const QColor& color) {
    if (color_ == color) {
        return;
    }
    color_ = color;
    draw();
    Q_EMIT colorChanged();
}

void SymbolItem::paint(QPainter* painter) {
    if (drawing_ != nullptr) {
        drawing_->render(painter, boundingRect());
    }
}

void SymbolItem::componentComplete() {
    QQuickPaintedItem::componentComplete();
    draw();
}

void SymbolItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    polish();
}

void SymbolItem::itemChange(ItemChange change, const ItemChangeData& value) {
    QQuickPaintedItem::itemChange(change, value);
    if (change == ItemSceneChange && value.window != nullptr) {
        connect(value.window, &QQuickWindow::widthChanged, this, &SymbolItem::polish, Qt::UniqueConnection);
        connect(value.window, &QQuickWindow::heightChanged, this, &SymbolItem::polish, Qt::UniqueConnection);
        polish();
    }
}

void SymbolItem::updatePolish() {
    // The picture would otherwise have the size of the unscaled item.
    const auto transform = itemTransform(nullptr, nullptr);
    const auto scale = std::hypot(transform.m11(), transform.m12()) *
                       (window() == nullptr ? 1.0 : window()->effectiveDevicePixelRatio());
    setTextureSize((QSizeF(width(), height()) * scale).toSize());
}

void SymbolItem::draw() {
    drawing_.reset();
    update();
    if (!isComponentComplete() || name_.isEmpty()) {
        return;
    }
    QFile file(SceneModule::resourceOf(QStringLiteral("Symbols/%1.svg").arg(name_)));
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("There is no symbol named \"%s\".", qUtf8Printable(name_));
        return;
    }
    auto drawing = std::make_unique<QSvgRenderer>(
        file.readAll().replace("currentColor", color_.name(QColor::HexRgb).toLatin1()));
    if (!drawing->isValid()) {
        qWarning("The symbol \"%s\" cannot be drawn.", qUtf8Printable(name_));
        return;
    }
    drawing_ = std::move(drawing);
}

} // namespace tavro
