#include "StrumError/ContinuousRepaint.h"

#include <QQmlComponent>

#include <stdexcept>

namespace tavro::bench {

namespace {

constexpr auto veilScene = R"(
import QtQuick
Rectangle {
    property int frame: 0
    anchors.fill: parent
    z: 1000
    color: Qt.rgba(0.5, 0.5, 0.5, frame % 2 === 0 ? 0.02 : 0.04)
}
)";

} // namespace

ContinuousRepaint::ContinuousRepaint(QQuickWindow& window) : window_(window) {
    QQmlComponent component(&engine_);
    component.setData(veilScene, {});
    veil_.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
        {{QStringLiteral("parent"), QVariant::fromValue(window.contentItem())}})));
    if (veil_ == nullptr) {
        throw std::runtime_error(component.errorString().toStdString());
    }
    // A renderer in a thread of its own tells of its frames from there.
    connection_ =
        QObject::connect(&window_, &QQuickWindow::frameSwapped, &window_, [this] { beginNextFrame(); });
    beginNextFrame();
}

ContinuousRepaint::~ContinuousRepaint() {
    QObject::disconnect(connection_);
}

void ContinuousRepaint::beginNextFrame() {
    ++frames_;
    veil_->setProperty("frame", frames_);
    window_.update();
}

} // namespace tavro::bench
