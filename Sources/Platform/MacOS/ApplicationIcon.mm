#include "Platform/MacOS/ApplicationIcon.h"

#import <AppKit/AppKit.h>

namespace tavro::macos {

void ApplicationIcon::install() {
    NSString* const path = [NSBundle.mainBundle pathForResource:@"TAVRO" ofType:@"icns"];
    NSImage* const image = path != nil ? [[NSImage alloc] initWithContentsOfFile:path] : nil;
    if (image != nil) {
        NSApp.applicationIconImage = image;
    }
}

} // namespace tavro::macos
