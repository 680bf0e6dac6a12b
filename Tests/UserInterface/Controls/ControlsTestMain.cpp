#include "UserInterface/Controls/ControlsTestSetup.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QtQuickTest>

// Runs the test file that `-input` names.
int main(int argc, char* argv[]) {
    // No window of the user's, and none of the user's files, whoever starts this.
    const QTemporaryDir home;
    for (const auto* variable : {"HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(variable, home.path().toLocal8Bit());
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QML_DISABLE_DISK_CACHE", "1");
    tavro::ControlsTestSetup setup;
    return quick_test_main_with_setup(argc, argv, "Controls", nullptr, &setup);
}
