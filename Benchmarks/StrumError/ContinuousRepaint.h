#pragma once

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

namespace tavro::bench {

/// Makes a window repaint all of itself as often as it can. Belongs to the main thread.
class ContinuousRepaint {
public:
    /// The window must outlive this. Throws `std::runtime_error` when the scene refuses the veil.
    explicit ContinuousRepaint(QQuickWindow& window);

    ContinuousRepaint(const ContinuousRepaint&) = delete;
    ContinuousRepaint& operator=(const ContinuousRepaint&) = delete;
    ~ContinuousRepaint();

    /// How many frames were painted so far.
    [[nodiscard]] int frames() const { return frames_; }

private:
    void beginNextFrame();

    QQuickWindow& window_;
    QQmlEngine engine_;
    /// Lies over everything, all but clear, and has another colour in every frame: a renderer that paints
    /// only what changed has to paint everything.
    std::unique_ptr<QQuickItem> veil_;
    QMetaObject::Connection connection_;
    int frames_ = 0;
};

} // namespace tavro::bench
