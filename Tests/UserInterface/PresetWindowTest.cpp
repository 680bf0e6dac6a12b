#include "UserInterface/MainWindowFixture.h"

#include "Presets/PresetFile.h"

#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTemporaryDir>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PresetWindowTest : public MainWindowTest {
protected:
    QQuickItem* text(const QString& shown) const { return find(QStringLiteral("QQuickText"), "text", shown); }

    const QQuickItem& picker() const {
        return *find(QStringLiteral("Picker"), "label", QStringLiteral("Preset"));
    }

    QString path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)); }

    QString writePreset(const char* name) const {
        auto preset = TAVROPreset::defaultPreset();
        preset.id = "42";
        preset.name = "Major sevenths";
        preset.isBuiltIn = false;
        preset.state.scaleName = "Major";
        preset.state.chordMode = ChordMode::seventh;
        PresetFile::write(preset, path(name));
        return path(name);
    }

    QString writeBroken(const char* name) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("{");
        return path(name);
    }

    bool drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint position(640, 400);
        QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window_, &enter);
        QDropEvent event(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(window_, &event);
        QCoreApplication::processEvents();
        return event.isAccepted();
    }

    QTemporaryDir folder_;
    const PerformanceState before_ = state();
};

TEST_F(PresetWindowTest, ThePickerShowsThePresetsAndLoadsTheChosenOne) {
    EXPECT_NE(text(QStringLiteral("Default")), nullptr);
    ASSERT_TRUE(instrument_.presets.openPresetFromFile(writePreset("a.tvp")));
    QCoreApplication::processEvents();
    EXPECT_NE(text(QStringLiteral("Major sevenths")), nullptr);
    EXPECT_EQ(state().scaleName, "Major");

    click(picker());
    KeyEvents{.evdevCode = KEY_UP, .key = Qt::Key_Up}.press(*window_);
    enter_.press(*window_);
    QCoreApplication::processEvents();
    EXPECT_EQ(instrument_.presets.selectedPresetID().toStdString(), "default");
    EXPECT_EQ(state(), PerformanceState());
    EXPECT_EQ(picker().property("value").toString().toStdString(), "default");
}

TEST_F(PresetWindowTest, ADroppedFileIsLoaded) {
    EXPECT_TRUE(drop({QUrl::fromLocalFile(writePreset("a.tvp"))}));
    EXPECT_EQ(state().scaleName, "Major");
    EXPECT_NE(text(QStringLiteral("Major sevenths")), nullptr);
}

TEST_F(PresetWindowTest, SeveralDroppedFilesAreNotTaken) {
    EXPECT_FALSE(
        drop({QUrl::fromLocalFile(writePreset("a.tvp")), QUrl::fromLocalFile(writePreset("b.tvp"))}));
    EXPECT_EQ(state(), before_);
}

TEST_F(PresetWindowTest, AnAlertNamesTheFileAndTheReasonAndTakesTheKeys) {
    const auto file = writeBroken("broken.tvp");
    drop({QUrl::fromLocalFile(file)});
    auto* shown = items(QStringLiteral("QQuickText")).empty() ? nullptr : text(QStringLiteral("OK"));
    ASSERT_NE(shown, nullptr);
    bool namesTheFile = false;
    for (const auto* item : items(QStringLiteral("QQuickText"))) {
        const auto said = item->property("text").toString();
        namesTheFile = namesTheFile || (said.contains(file) && said.size() > file.size() + 10);
    }
    EXPECT_TRUE(namesTheFile);
    EXPECT_EQ(state(), before_);
    a_.press(*window_);
    a_.release(*window_);
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());

    enter_.press(*window_);
    QCoreApplication::processEvents();
    EXPECT_EQ(text(QStringLiteral("OK")), nullptr);
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
}

TEST_F(PresetWindowTest, WhatIsNoFileOfThisComputerIsRefused) {
    drop({QUrl(QStringLiteral("https://example.invalid/a.tvp"))});
    EXPECT_NE(text(QStringLiteral("OK")), nullptr);
    EXPECT_EQ(state(), before_);
}

TEST_F(PresetWindowTest, TheSwitchForTheLoginItemShowsWhatTheSystemHas) {
    toggleSettings();
    const auto& toggle = *find(QStringLiteral("TogglePill"), "label", QStringLiteral("Launch at Login"));
    const auto* tile = find(QStringLiteral("ControlTile"), "title", QStringLiteral("Launch at Login"));
    EXPECT_TRUE(tile->property("help").toString().endsWith(QStringLiteral("Login Items.")));
    EXPECT_FALSE(toggle.property("isOn").toBool());
    click(toggle);
    EXPECT_TRUE(toggle.property("isOn").toBool());
    EXPECT_TRUE(instrument_.loginItem.isEnabled());
    instrument_.loginItemService.failure = "not today";
    click(toggle);
    EXPECT_TRUE(toggle.property("isOn").toBool());
}

} // namespace
} // namespace tavro
