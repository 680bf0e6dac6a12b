#include "Platform/MacOS/ApplicationVisibilityAdapter.h"

#import <AppKit/AppKit.h>

namespace tavro::macos {

bool ApplicationVisibilityAdapter::isAvailable() const {
    return true;
}

void ApplicationVisibilityAdapter::hide() {
    [NSApp hide:nil];
}

void ApplicationVisibilityAdapter::hideOthers() {
    [NSApp hideOtherApplications:nil];
}

void ApplicationVisibilityAdapter::showAll() {
    [NSApp unhideAllApplications:nil];
}

} // namespace tavro::macos
