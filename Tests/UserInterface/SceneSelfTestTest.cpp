#include "UserInterface/SceneSelfTest.h"

#include "Platform/Headless/KeyEventTranslatorAdapter.h"
#include "UserInterface/Instrument.h"
#include "UserInterface/MainWindowLoader.h"
#include "UserInterface/SceneModule.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

TEST(SceneSelfTest, FindsNothingWrong) {
    Instrument instrument;
    const headless::KeyEventTranslatorAdapter translator;
    EXPECT_TRUE(MainWindowLoader(instrument.shell(translator)).selfTest());
}

TEST(SceneSelfTest, TriesEveryFile) {
    const auto files = SceneModule::fileNames();
    for (const auto* name : {"MainWindow.qml", "ContentView.qml", "KeyCell.qml", "Theme.qml"}) {
        EXPECT_TRUE(files.contains(QLatin1String(name))) << name;
    }
}

TEST(SceneSelfTest, NamesTheFileWithAProblem) {
    SceneModule::makeAvailable();
    const auto problems = SceneSelfTest::problems({});
    ASSERT_FALSE(problems.isEmpty());
    bool namesTheWindow = false;
    for (const auto& problem : problems) {
        namesTheWindow = namesTheWindow || problem.contains(QStringLiteral("MainWindow.qml"));
    }
    // It cannot be created without what it shows.
    EXPECT_TRUE(namesTheWindow) << problems.join(QLatin1Char('\n')).toStdString();
}

} // namespace
} // namespace tavro
