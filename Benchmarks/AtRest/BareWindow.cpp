// A window of the toolkit with nothing in it: what a program costs before it does anything of its own.

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData(R"(
        import QtQuick
        Window {
            title: "Bare"
            width: 1280
            height: 805
            visible: true
            color: "#0D0F12"
        }
    )");
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
