#include "Platform/MacOS/WindowAspectAdapter.h"

#include <QWindow>

#import <AppKit/AppKit.h>

namespace tavro::macos {

void WindowAspectAdapter::setContentAspectRatio(QWindow& window, QSize ratio, QSize /*size*/) {
    // What Qt calls a window is the view that fills one.
    auto* const view = (__bridge NSView*)reinterpret_cast<void*>(window.winId());
    view.window.contentAspectRatio = NSMakeSize(ratio.width(), ratio.height());
}

} // namespace tavro::macos
