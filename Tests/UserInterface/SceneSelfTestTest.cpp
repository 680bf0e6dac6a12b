#include "UserInterface/SceneSelfTest.h"

#include "Platform/Headless/Keys/KeyEventTranslatorAdapter.h"
#include "UserInterface/Instrument.h"
#include "UserInterface/MainWindowLoader.h"
#include "UserInterface/SceneModule.h"
#include "UserInterface/TutorialSteps.h"

#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

std::vector<std::string> lines(const QStringList& texts) {
    std::vector<std::string> all;
    for (const auto& text : texts) {
        all.push_back(text.toStdString());
    }
    return all;
}

QString symbolFolder() {
    SceneModule::makeAvailable();
    return SceneModule::resourceOf(QStringLiteral("Symbols"));
}

/// Drawings of which some are damaged.
class SceneSymbolsTest : public testing::Test {
protected:
    void draw(const QString& name, const QByteArray& content) const {
        QFile file(folder_.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    const QTemporaryDir folder_;
};

std::vector<std::string> problemsOfTexts(const QByteArray& properties) {
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQml\nQtObject {\n" + properties + "}", {});
    const std::unique_ptr<QObject> texts(component.create());
    EXPECT_NE(texts, nullptr) << component.errorString().toStdString();
    return lines(SceneSelfTest::textProblems(*texts, QStringLiteral("HelpTexts.qml")));
}

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

TEST_F(SceneSymbolsTest, DrawingsThatShowSomethingAreFine) {
    EXPECT_THAT(lines(SceneSelfTest::symbolProblems(symbolFolder())), IsEmpty());
    draw(QStringLiteral("dot.svg"), R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">
        <circle cx="12" cy="12" r="1" fill="currentColor"/></svg>)");
    EXPECT_THAT(lines(SceneSelfTest::symbolProblems(folder_.path())), IsEmpty());
}

TEST_F(SceneSymbolsTest, DrawingsThatShowNothingAreNamed) {
    draw(QStringLiteral("beside.svg"), R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24">
        <circle cx="50" cy="12" r="1" fill="currentColor"/></svg>)");
    draw(QStringLiteral("damaged.svg"), "<svg");
    draw(QStringLiteral("empty.svg"), R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 24 24"/>)");
    EXPECT_THAT(lines(SceneSelfTest::symbolProblems(folder_.path())),
                ElementsAre("beside.svg: shows nothing", "damaged.svg: is not a drawing",
                            "empty.svg: shows nothing"));
}

TEST_F(SceneSymbolsTest, AProgramWithoutDrawingsIsNotFine) {
    EXPECT_THAT(lines(SceneSelfTest::symbolProblems(folder_.path())),
                ElementsAre(EndsWith("holds no drawings")));
}

TEST(SceneSelfTest, NamesATextThatIsEmpty) {
    EXPECT_THAT(problemsOfTexts("property string root: 'Sets the root note.'\nproperty string scale: ' '\n"),
                ElementsAre("HelpTexts.qml: scale is empty"));
    EXPECT_THAT(problemsOfTexts("property string root: 'Sets the root note.'\n"), IsEmpty());
    EXPECT_THAT(problemsOfTexts("property int root: 3\n"), ElementsAre("HelpTexts.qml: holds no texts"));
}

TEST(SceneSelfTest, NamesAStepOfTheTourThatIsIncomplete) {
    auto steps = TutorialSteps::make(QStringLiteral("^"), KeyboardAccess::displayOrInputDevices);
    EXPECT_THAT(lines(SceneSelfTest::tourProblems(steps, symbolFolder())), IsEmpty());
    steps[1].body.clear();
    steps[2].symbol = QStringLiteral("trumpet");
    steps.removeLast();
    EXPECT_THAT(lines(SceneSelfTest::tourProblems(steps, symbolFolder())),
                ElementsAre("The tour has 5 steps.", "Step 2 of the tour lacks a text.",
                            "Step 3 of the tour wants the drawing \"trumpet\", which is not there."));
}

} // namespace
} // namespace tavro
