#include "UserInterface/SceneModule.h"
#include "UserInterface/TextContrasts.h"
#include "UserInterface/WindowStateFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>
#include <string>

namespace tavro {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// What the Web Content Accessibility Guidelines ask for texts of every size.
constexpr double enough = 4.5;

class ContrastTest : public WindowStateTest, public testing::WithParamInterface<WindowState> {
protected:
    /// Below what is really there; under a sheet nothing counts but the sheet.
    [[nodiscard]] static std::size_t leastNumberOfTexts() {
        switch (GetParam()) {
        case WindowState::tour:
            return 5;
        case WindowState::alert:
            return 3;
        default:
            return 100;
        }
    }
};

TEST_P(ContrastTest, EveryTextCanBeRead) {
    enter(GetParam());
    const TextContrasts contrasts(*window_);
    EXPECT_THAT(contrasts.below(enough), IsEmpty());
    EXPECT_GE(contrasts.texts().size(), leastNumberOfTexts());
}

INSTANTIATE_TEST_SUITE_P(, ContrastTest, testing::ValuesIn(allStates),
                         [](const auto& one) { return identifierOf(one.param); });

/// Texts that somebody could write, on a surface of their own.
class TextContrastsTest : public testing::Test {
protected:
    std::vector<std::string> badOf(const QByteArray& items) {
        SceneModule::makeAvailable();
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(
            "import QtQuick\nimport QtQuick.Window\nimport Tavro\nWindow { visible: true; width: 200;"
            " height: 100; color: Theme.panel\n" +
                items + "}",
            {});
        const std::unique_ptr<QObject> window(component.create());
        EXPECT_NE(window, nullptr) << component.errorString().toStdString();
        QCoreApplication::processEvents();
        const TextContrasts contrasts(*qobject_cast<QQuickWindow*>(window.get()));
        count_ = contrasts.texts().size();
        return contrasts.below(enough);
    }

    std::size_t count_ = 0;
};

TEST(ContrastRatioTest, IsTheOneOfTheGuidelines) {
    EXPECT_NEAR(TextContrasts::ratio(Qt::white, Qt::black), 21, 0.001);
    EXPECT_NEAR(TextContrasts::ratio(Qt::black, Qt::black), 1, 0.001);
    EXPECT_NEAR(TextContrasts::ratio(QColor(0x777777), Qt::white), 4.48, 0.005);
    EXPECT_NEAR(TextContrasts::ratio(Qt::white, QColor(0x767676)), 4.54, 0.005);
}

TEST_F(TextContrastsTest, ATextThatIsTooDarkIsFoundWithItsColours) {
    EXPECT_THAT(badOf("Text { text: 'Velocity'; color: '#5E6670' }"),
                ElementsAre(AllOf(HasSubstr("\"Velocity\": #5e6670 on #16181c"), HasSubstr("to 1"))));
    EXPECT_THAT(badOf("Text { text: 'Velocity'; color: Theme.secondaryText }"), IsEmpty());
    EXPECT_EQ(count_, 1U);
}

TEST_F(TextContrastsTest, TheNearestSurfaceCounts) {
    EXPECT_THAT(badOf("Rectangle { width: 200; height: 100; color: Theme.accent\n"
                      "Text { text: 'A'; color: Theme.text } }"),
                ElementsAre(HasSubstr("on #39f34a")));
    EXPECT_THAT(badOf("Rectangle { width: 200; height: 100; color: Theme.accent }\n"
                      "Text { text: 'A'; color: Theme.accentLetter }"),
                IsEmpty());
}

TEST_F(TextContrastsTest, OpacityCounts) {
    EXPECT_THAT(badOf("Item { opacity: 0.6; Text { text: 'Skip'; opacity: 0.6; color: Theme.text } }"),
                ElementsAre(HasSubstr("Skip")));
    EXPECT_THAT(badOf("Text { text: 'Skip'; color: '#40FFFFFF' }"), ElementsAre(HasSubstr("Skip")));
}

TEST_F(TextContrastsTest, ASelectionCounts) {
    EXPECT_THAT(badOf("TextInput { text: '64'; color: Theme.text; selectionColor: '#A0A0A0';"
                      " selectedTextColor: Theme.text; Component.onCompleted: selectAll() }"),
                ElementsAre(HasSubstr("on #a0a0a0")));
}

TEST_F(TextContrastsTest, WhatNobodyCanSeeOrUseDoesNotCount) {
    EXPECT_THAT(badOf("Text { text: 'hidden'; visible: false; color: Theme.panel }\n"
                      "Text { text: 'disabled'; enabled: false; color: Theme.panel }\n"
                      "Item { clip: true; width: 10; height: 10; Text { y: 20; text: 'clipped' } }\n"
                      "Text { text: 'covered'; color: Theme.panel }\n"
                      "Rectangle { width: 200; height: 100; color: '#C0000000' }"),
                IsEmpty());
    EXPECT_EQ(count_, 0U);
}

} // namespace
} // namespace tavro
