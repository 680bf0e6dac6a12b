#include "Platform/MacOS/SessionWatchAdapter.h"

#import <AppKit/AppKit.h>

#include <utility>

namespace tavro::macos {

/// What was registered, and is taken back with this.
struct SessionWatchAdapter::Observers {
    Observers() = default;
    Observers(const Observers&) = delete;
    Observers& operator=(const Observers&) = delete;

    ~Observers() {
        for (id token in workspaceTokens) {
            [workspace removeObserver:token];
        }
        for (id token in systemTokens) {
            [system removeObserver:token];
        }
    }

    NSNotificationCenter* workspace = [[NSWorkspace sharedWorkspace] notificationCenter];
    NSDistributedNotificationCenter* system = [NSDistributedNotificationCenter defaultCenter];
    NSMutableArray* workspaceTokens = [NSMutableArray array];
    NSMutableArray* systemTokens = [NSMutableArray array];
};

SessionWatchAdapter::SessionWatchAdapter() = default;
SessionWatchAdapter::~SessionWatchAdapter() = default;

void SessionWatchAdapter::start(Handler handler) {
    handler_ = std::move(handler);
    observers_ = std::make_unique<Observers>();
    const auto follow = [this](NSNotificationCenter* center, NSMutableArray* tokens, NSString* name,
                               bool SessionWatchAdapter::* field, bool value) {
        [tokens addObject:[center addObserverForName:name
                                              object:nil
                                               queue:[NSOperationQueue mainQueue]
                                          usingBlock:^(NSNotification* /*notification*/) {
                                            this->*field = value;
                                            tell();
                                          }]];
    };
    auto& observers = *observers_;
    follow(observers.workspace, observers.workspaceTokens, NSWorkspaceSessionDidResignActiveNotification,
           &SessionWatchAdapter::isActive_, false);
    follow(observers.workspace, observers.workspaceTokens, NSWorkspaceSessionDidBecomeActiveNotification,
           &SessionWatchAdapter::isActive_, true);
    follow(observers.system, observers.systemTokens, @"com.apple.screenIsLocked",
           &SessionWatchAdapter::isLocked_, true);
    follow(observers.system, observers.systemTokens, @"com.apple.screenIsUnlocked",
           &SessionWatchAdapter::isLocked_, false);
}

void SessionWatchAdapter::tell() {
    const bool isInFront = isActive_ && !isLocked_;
    if (std::exchange(isInFront_, isInFront) != isInFront) {
        handler_(isInFront);
    }
}

} // namespace tavro::macos
