#include "ApplicationShell/KeyboardTapChoice.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

using Kind = KeyboardTapChoice::Kind;

KeyboardTapChoice session(const char* platform, const char* type = "", const char* waylandDisplay = "") {
    return {.platformName = QString::fromLatin1(platform),
            .sessionType = QString::fromLatin1(type),
            .waylandDisplay = QString::fromLatin1(waylandDisplay),
            .hasInputDevices = true};
}

TEST(KeyboardTapChoice, grabsAtTheServerInAnX11Session) {
    EXPECT_EQ(session("xcb").kind(), Kind::x11);
    EXPECT_EQ(session("xcb", "x11").kind(), Kind::x11);
    EXPECT_EQ(session("xcb", "tty").kind(), Kind::x11);
}

TEST(KeyboardTapChoice, goesBelowAWaylandCompositor) {
    EXPECT_EQ(session("wayland", "wayland", "wayland-0").kind(), Kind::evdev);
    EXPECT_EQ(session("wayland-egl").kind(), Kind::evdev);
    EXPECT_EQ(session("xcb", "wayland").kind(), Kind::evdev);
    EXPECT_EQ(session("xcb", "", "wayland-1").kind(), Kind::evdev);
}

TEST(KeyboardTapChoice, goesToTheDevicesWithoutADisplayServer) {
    EXPECT_EQ(session("eglfs").kind(), Kind::evdev);
    EXPECT_EQ(session("offscreen").kind(), Kind::evdev);
}

TEST(KeyboardTapChoice, findsNoneWithoutDevices) {
    auto bare = session("offscreen");
    bare.hasInputDevices = false;
    EXPECT_EQ(bare.kind(), Kind::none);
    bare = session("wayland");
    bare.hasInputDevices = false;
    EXPECT_EQ(bare.kind(), Kind::none);
}

} // namespace
} // namespace tavro
