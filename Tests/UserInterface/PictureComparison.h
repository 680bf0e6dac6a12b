#pragma once

#include <QImage>
#include <QString>

namespace tavro {

/// Two pictures of the same thing, compared as an eye does that does not look at single pixels. Forgiven is
/// what another version of the font renderer does: softer and harder edges, strokes that lie up to one pixel
/// aside, a few stray pixels. Not forgiven is what lies two pixels aside, is missing, was added, or has
/// another colour.
class PictureComparison {
public:
    PictureComparison(const QImage& expected, const QImage& actual);

    [[nodiscard]] bool isAlike() const { return report_.isEmpty(); }

    /// What differs where, in one line; empty when nothing does.
    [[nodiscard]] const QString& report() const { return report_; }

    /// The expected picture, darkened, with the pixels that differ in red. Null when the sizes differ.
    [[nodiscard]] const QImage& difference() const { return difference_; }

private:
    void judge();

    QImage difference_;
    QString report_;
};

} // namespace tavro
