#include "UserInterface/AccessibleTree.h"
#include "UserInterface/SceneModule.h"
#include "UserInterface/WindowStateFixture.h"

#include <QAccessible>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>
#include <string>

namespace tavro {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

class AccessibilityTest : public WindowStateTest {
protected:
    [[nodiscard]] std::vector<std::string> nodesIn(WindowState state) {
        enter(state);
        return AccessibleTree(window_).nodes();
    }

    /// The one with this line among the nodes.
    [[nodiscard]] QAccessibleInterface* node(const std::string& line) const {
        return AccessibleTree(window_).find(line);
    }
};

class AccessibleStateTest : public AccessibilityTest, public testing::WithParamInterface<WindowState> {};

TEST_P(AccessibleStateTest, AReaderCanTellAboutEverything) {
    enter(GetParam());
    const AccessibleTree tree(window_);
    EXPECT_THAT(tree.problems(), IsEmpty());
    // Far fewer than any state has; an empty tree has no problems either.
    EXPECT_GT(tree.nodes().size(), 20U);
}

INSTANTIATE_TEST_SUITE_P(, AccessibleStateTest, testing::ValuesIn(allStates),
                         [](const auto& one) { return identifierOf(one.param); });

TEST_F(AccessibilityTest, TheControlsHaveTheRolesOfWhatTheyAre) {
    EXPECT_THAT(nodesIn(WindowState::bothOpen), IsSupersetOf({"StaticText TAVRO",
                                                              "ComboBox Preset",
                                                              "Button Save preset",
                                                              "Button Load preset",
                                                              "StaticText TAVRO Out (virtual) · 1 listener",
                                                              "StaticText Global Off",
                                                              "Button Help",
                                                              "Button Menu",
                                                              "Button Stop all notes",
                                                              "ComboBox Root",
                                                              "ComboBox Scale",
                                                              "Slider Octave",
                                                              "EditableText Octave",
                                                              "CheckBox Chord",
                                                              "Slider Velocity",
                                                              "EditableText Velocity",
                                                              "Slider Humanize",
                                                              "Slider Chord Complexity",
                                                              "Slider Note Limit",
                                                              "Slider Strum",
                                                              "CheckBox Split Mode",
                                                              "Slider Melody Octave",
                                                              "CheckBox Hold",
                                                              "CheckBox Smart Hold",
                                                              "CheckBox Bassnote",
                                                              "RadioButton Octaves below the root -1",
                                                              "RadioButton Octaves below the root -2",
                                                              "ComboBox MIDI Output",
                                                              "ComboBox MIDI System",
                                                              "ComboBox MIDI Channel",
                                                              "ComboBox Keyboard Layout",
                                                              "CheckBox Global Play",
                                                              "Button Record a hotkey",
                                                              "CheckBox Launch at Login"}));
}

TEST_F(AccessibilityTest, WhatIsOpenCanBeRead) {
    EXPECT_THAT(nodesIn(WindowState::tour),
                IsSupersetOf({"Dialog Welcome to TAVRO", "Button Skip", "Button Back", "Button Next"}));
    EXPECT_THAT(nodesIn(WindowState::pickerOpen), IsSupersetOf({"ListItem Major", "ListItem Dorian"}));
}

TEST_F(AccessibilityTest, TheReadOutsSayWhatTheyShow) {
    EXPECT_THAT(nodesIn(WindowState::chordHeld), Contains("StaticText Chord: Cmaj7"));
}

TEST_F(AccessibilityTest, AReaderGetsTheChoiceOfAPicker) {
    enter(WindowState::standard);
    const auto text = [this] { return node("ComboBox Scale")->text(QAccessible::Description).toStdString(); };
    EXPECT_EQ(text(), "Chromatic");
    enter(WindowState::splitMode);
    EXPECT_EQ(text(), "Dorian");
}

TEST_F(AccessibilityTest, AReaderOpensAPicker) {
    enter(WindowState::standard);
    EXPECT_THAT(AccessibleTree(window_).nodes(), Not(Contains("ListItem Dorian")));
    node("ComboBox Scale")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
    EXPECT_THAT(AccessibleTree(window_).nodes(), Contains("ListItem Dorian"));
}

TEST_F(AccessibilityTest, AReaderGetsAndMovesEverySwitch) {
    enter(WindowState::bothOpen);
    for (const auto* name : {"Chord", "Split Mode", "Smart Hold", "Hold", "Bassnote", "Global Play"}) {
        const auto line = std::string("CheckBox ") + name;
        const auto isOn = [&] {
            return find(QStringLiteral("TogglePill"), "label", QLatin1String(name))
                ->property("isOn")
                .toBool();
        };
        for (const bool wanted : {!isOn(), isOn()}) {
            node(line)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
            settle();
            EXPECT_EQ(isOn(), wanted) << line;
            EXPECT_EQ(static_cast<bool>(node(line)->state().checked), wanted) << line;
        }
    }
}

TEST_F(AccessibilityTest, AReaderGetsTheChosenOneOfAFew) {
    enter(WindowState::standard);
    const auto isChosen = [this](const char* name) {
        return static_cast<bool>(
            node(std::string("RadioButton Octaves below the root ") + name)->state().checked);
    };
    EXPECT_TRUE(isChosen("-1"));
    EXPECT_FALSE(isChosen("-2"));
    auto state = instrument_.controller.state();
    state.bassOctaveDown = 2;
    instrument_.controller.changeState(state);
    settle();
    EXPECT_FALSE(isChosen("-1"));
    EXPECT_TRUE(isChosen("-2"));
}

TEST_F(AccessibilityTest, AReaderMovesASlider) {
    enter(WindowState::standard);
    node("Slider Velocity")->valueInterface()->setCurrentValue(64);
    EXPECT_EQ(state().velocity, 64);
}

TEST_F(AccessibilityTest, AStoredValueBeyondTheBoundsIsShownAndNotChanged) {
    auto beyond = state();
    beyond.velocity = 200;
    instrument_.controller.changeState(beyond);
    QCoreApplication::processEvents();
    EXPECT_EQ(node("Slider Velocity")->valueInterface()->currentValue().toInt(), 127);
    EXPECT_EQ(state().velocity, 200);
}

TEST_F(AccessibilityTest, AReaderGetsTheNumbers) {
    enter(WindowState::standard);
    auto* slider = node("Slider Velocity")->valueInterface();
    EXPECT_EQ(slider->currentValue().toInt(), 100);
    EXPECT_EQ(slider->minimumValue().toInt(), 1);
    EXPECT_EQ(slider->maximumValue().toInt(), 127);
    EXPECT_EQ(node("EditableText Velocity")->text(QAccessible::Value), QStringLiteral("100"));
    auto state = instrument_.controller.state();
    state.velocity = 64;
    instrument_.controller.changeState(state);
    settle();
    EXPECT_EQ(slider->currentValue().toInt(), 64);
    EXPECT_EQ(node("EditableText Velocity")->text(QAccessible::Value), QStringLiteral("64"));
}

/// A control that somebody could write.
class AccessibleTreeTest : public testing::Test {
protected:
    std::vector<std::string> problemsOf(const QByteArray& control) {
        SceneModule::makeAvailable();
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(
            "import QtQuick\nimport QtQuick.Window\nimport QtQuick.Templates as T\nimport Tavro\n"
            "Window { visible: true; title: \"TAVRO\"; Item { Accessible.role: Accessible.Grouping;"
            " Accessible.name: \"Tile\"; width: 100; height: 100\n" +
                control + "} }",
            {});
        const std::unique_ptr<QObject> window(component.create());
        EXPECT_NE(window, nullptr) << component.errorString().toStdString();
        QCoreApplication::processEvents();
        return AccessibleTree(window.get()).problems();
    }
};

TEST_F(AccessibleTreeTest, AButtonWithoutANameIsFoundAndTheWayToIt) {
    EXPECT_THAT(problemsOf("T.Button { width: 40; height: 40 }"),
                ElementsAre("Window TAVRO > Grouping Tile > Button: has no name"));
    EXPECT_THAT(problemsOf("T.Button { width: 40; height: 40; Accessible.name: 'Help' }"), IsEmpty());
}

TEST_F(AccessibleTreeTest, WhatCanOnlyBeClickedNeedsANameToo) {
    EXPECT_THAT(problemsOf("Item { width: 40; height: 40; Accessible.role: Accessible.Button;"
                           " Accessible.onPressAction: {} }"),
                ElementsAre(EndsWith("Button: has no name")));
}

TEST_F(AccessibleTreeTest, ASliderWithoutAValueIsFound) {
    EXPECT_THAT(problemsOf("Item { width: 40; height: 40; Accessible.role: Accessible.Slider;"
                           " Accessible.name: 'Velocity' }"),
                ElementsAre(EndsWith("Slider Velocity: has no value between two bounds")));
}

TEST_F(AccessibleTreeTest, APickerThatDoesNotTellIsFound) {
    EXPECT_THAT(problemsOf("Item { width: 40; height: 40; Accessible.role: Accessible.ComboBox;"
                           " Accessible.name: 'Scale' }"),
                ElementsAre(EndsWith("ComboBox Scale: does not tell what is in it")));
}

TEST_F(AccessibleTreeTest, WhatIsHiddenIsNotAsked) {
    EXPECT_THAT(problemsOf("T.Button { visible: false; width: 40; height: 40 }"), IsEmpty());
}

} // namespace
} // namespace tavro
