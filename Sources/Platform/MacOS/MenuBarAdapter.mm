#include "Platform/MacOS/MenuBarAdapter.h"

#include "ApplicationShell/MainMenu.h"

#import <AppKit/AppKit.h>

/// Stands between the items, whose tags are the actions, and the menu.
@interface TavroMenuTarget : NSObject <NSMenuItemValidation>
- (instancetype)initWithMenu:(const tavro::MainMenu*)menu;
- (void)performItem:(NSMenuItem*)item;
@end

@implementation TavroMenuTarget {
    const tavro::MainMenu* menu_;
}

- (instancetype)initWithMenu:(const tavro::MainMenu*)menu {
    self = [super init];
    if (self != nil) {
        menu_ = menu;
    }
    return self;
}

- (void)performItem:(NSMenuItem*)item {
    menu_->perform(static_cast<tavro::MenuAction>(item.tag));
}

- (BOOL)validateMenuItem:(NSMenuItem*)item {
    return menu_->isEnabled(static_cast<tavro::MenuAction>(item.tag));
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

void MenuBarAdapter::install(const MainMenu& menu) {
    auto* const target = [[TavroMenuTarget alloc] initWithMenu:&menu];
    auto* const bar = [[NSMenu alloc] init];
    for (const auto& part : menu.menus()) {
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
