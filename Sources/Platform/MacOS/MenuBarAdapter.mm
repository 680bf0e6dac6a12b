#include "Platform/MacOS/MenuBarAdapter.h"

#import <AppKit/AppKit.h>

/// Stands between the items, whose tags are the actions, and the client.
@interface TavroMenuTarget : NSObject <NSMenuItemValidation>
- (instancetype)initWithClient:(const tavro::MenuBar::Client*)client;
- (void)performItem:(NSMenuItem*)item;
@end

@implementation TavroMenuTarget {
    const tavro::MenuBar::Client* client_;
}

- (instancetype)initWithClient:(const tavro::MenuBar::Client*)client {
    self = [super init];
    if (self != nil) {
        client_ = client;
    }
    return self;
}

- (void)performItem:(NSMenuItem*)item {
    client_->perform(static_cast<tavro::MenuAction>(item.tag));
}

- (BOOL)validateMenuItem:(NSMenuItem*)item {
    return client_->isEnabled(static_cast<tavro::MenuAction>(item.tag));
}

@end

namespace tavro::macos {

namespace {

/// What the system itself can do, by whoever of its responders is in charge. Null for the rest: the view
/// that Qt draws into knows nothing of texts.
SEL systemActionOf(MenuAction action) {
    switch (action) {
    case MenuAction::hide:
        return @selector(hide:);
    case MenuAction::hideOthers:
        return @selector(hideOtherApplications:);
    case MenuAction::showAll:
        return @selector(unhideAllApplications:);
    case MenuAction::quit:
        return @selector(terminate:);
    case MenuAction::closeWindow:
        return @selector(performClose:);
    case MenuAction::minimize:
        return @selector(performMiniaturize:);
    default:
        return nullptr;
    }
}

NSMenuItem* makeItem(const MenuItem& item, id target) {
    if (item.isSeparator()) {
        return [NSMenuItem separatorItem];
    }
    const SEL systemAction = systemActionOf(item.action);
    NSString* const key = item.key != 0 ? [NSString stringWithFormat:@"%C", unichar(item.key)] : @"";
    auto* const made =
        [[NSMenuItem alloc] initWithTitle:item.title.toNSString()
                                   action:systemAction != nullptr ? systemAction : @selector(performItem:)
                            keyEquivalent:key];
    made.target = systemAction != nullptr ? nil : target;
    made.tag = static_cast<NSInteger>(item.action);
    made.keyEquivalentModifierMask = NSEventModifierFlagCommand |
                                     (item.needsOption ? NSEventModifierFlagOption : 0) |
                                     (item.needsShift ? NSEventModifierFlagShift : 0);
    return made;
}

} // namespace

MenuBarAdapter::~MenuBarAdapter() {
    if (target_ != nullptr) {
        NSApp.mainMenu = nil;
        CFRelease(target_);
    }
}

void MenuBarAdapter::install(const Client& client) {
    auto* const target = [[TavroMenuTarget alloc] initWithClient:&client];
    auto* const bar = [[NSMenu alloc] init];
    for (const auto& part : client.menus()) {
        auto* const title = part.title.toNSString();
        auto* const submenu = [[NSMenu alloc] initWithTitle:title];
        for (const auto& item : part.items) {
            [submenu addItem:makeItem(item, target)];
        }
        auto* const holder = [[NSMenuItem alloc] initWithTitle:title action:nil keyEquivalent:@""];
        holder.submenu = submenu;
        [bar addItem:holder];
    }
    NSApp.mainMenu = bar;
    if (target_ != nullptr) {
        CFRelease(target_);
    }
    target_ = const_cast<void*>(CFBridgingRetain(target));
}

} // namespace tavro::macos
