#pragma once

#include <QColor>
#include <QQuickItem>
#include <QQuickWindow>

#include <string>
#include <vector>

namespace tavro {

/// How well each text of a window can be read: the contrast of its colour, as it is painted, with the worst
/// of the colours behind it, as they are painted. Texts count that can be seen: neither empty, nor clipped
/// away, nor under something else, nor those of a disabled control.
class TextContrasts {
public:
    struct Text {
        std::string text;
        QColor color;
        QColor background;
        /// From 1 (the same) to 21 (black and white).
        double ratio;
    };

    /// Looks at the window as it stands. Its texts are invisible afterwards.
    explicit TextContrasts(QQuickWindow& window);

    [[nodiscard]] const std::vector<Text>& texts() const { return texts_; }

    /// Those below this ratio, in words.
    [[nodiscard]] std::vector<std::string> below(double ratio) const;

    /// By the definition of the Web Content Accessibility Guidelines.
    [[nodiscard]] static double ratio(const QColor& one, const QColor& other);

private:
    std::vector<Text> texts_;
};

} // namespace tavro
