#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

class QSvgRenderer;

namespace tavro {

/// A drawing of the program's own, by its name, in one colour, and sharp at every scale of the window. A name
/// that the program has no drawing for is reported as a warning and shows nothing.
class SymbolItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(Symbol)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit SymbolItem(QQuickItem* parent = nullptr);
    ~SymbolItem() override;
    Q_DISABLE_COPY_MOVE(SymbolItem)

    [[nodiscard]] QString name() const { return name_; }

    void setName(const QString& name);

    [[nodiscard]] QColor color() const { return color_; }

    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void updatePolish() override;

private:
    void draw();

    QString name_;
    QColor color_{Qt::black};
    std::unique_ptr<QSvgRenderer> drawing_;
};

} // namespace tavro
