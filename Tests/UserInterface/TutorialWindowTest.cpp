#include "UserInterface/MainWindowFixture.h"

#include <QAccessible>

#include <chrono>
#include <memory>
#include <optional>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// The window of somebody who starts the program for the first time.
class TutorialWindowTest : public MainWindowTest {
protected:
    TutorialWindowTest() { hasEndedTheTour_ = false; }

    void open() {
        instrument_.actor.runUntil(350ms);
        QCoreApplication::processEvents();
    }

    bool isOpen() const { return text(QStringLiteral("Skip")) != nullptr; }

    /// The visible text; null when it is not on the screen.
    QQuickItem* text(const QString& shown) const {
        auto* item = find(QStringLiteral("QQuickText"), "text", shown);
        return item != nullptr && item->isVisible() ? item : nullptr;
    }

    const QQuickItem& button(const char* label) const {
        return *find(QStringLiteral("SheetButton"), "text", QString::fromUtf8(label));
    }

    std::optional<UserDefaults::Value> stored() const {
        return instrument_.defaults.value("TAVRO.TutorialCompleted.v1");
    }

    void expectEnded() {
        EXPECT_FALSE(isOpen());
        EXPECT_EQ(stored(), std::optional<UserDefaults::Value>(true));
        a_.press(*window_);
        EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
    }

    /// Inside the window, never smaller than drawn, and the texts of the page above its indicators.
    void expectThatThePageFits() const {
        const auto* page = items(QStringLiteral("SheetButton")).at(0)->parentItem();
        const QRectF window({}, window_->size());
        EXPECT_TRUE(window.contains(placeOf(*page)));
        const QQuickItem* indicators = nullptr;
        for (const auto* item : page->childItems()) {
            indicators = item->inherits("QQuickRow") ? item : indicators;
        }
        ASSERT_NE(indicators, nullptr);
        int count = 0;
        for (const auto* item : page->childItems()) {
            const auto shown = item->property("text").toString();
            if (item->inherits("QQuickText") && item->isVisible() && !shown.isEmpty()) {
                ++count;
                const auto place = placeOf(*item);
                EXPECT_TRUE(window.contains(place)) << shown.toStdString();
                EXPECT_LT(place.bottom(), placeOf(*indicators).top() - 8) << shown.toStdString();
                EXPECT_GE(place.height(), item->height()) << shown.toStdString();
            }
        }
        EXPECT_EQ(count, isAt(4) ? 4 : 3);
    }

    static QRectF placeOf(const QQuickItem& item) {
        return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
    }

    void tap(const KeyEvents& key) {
        key.press(*window_);
        key.release(*window_);
        QCoreApplication::processEvents();
    }

    bool isAt(int step) const { return text(QStringLiteral("Quick Tour · %1 / 6").arg(step)) != nullptr; }

    const KeyEvent plainA_{.type = KeyEvent::Type::keyDown,
                           .keyCode = 0,
                           .characterIgnoringModifiers = U'a',
                           .modifiers = {},
                           .isAutorepeat = false};
    const KeyEvents escape_{.evdevCode = KEY_ESC, .key = Qt::Key_Escape};
    const KeyEvents left_{.evdevCode = KEY_LEFT, .key = Qt::Key_Left};
    const KeyEvents right_{.evdevCode = KEY_RIGHT, .key = Qt::Key_Right};
    const KeyEvents tab_{.evdevCode = KEY_TAB, .key = Qt::Key_Tab};
    const KeyEvents space_{.evdevCode = KEY_SPACE, .key = Qt::Key_Space};
};

TEST_F(TutorialWindowTest, ItComesAMomentAfterTheWindow) {
    EXPECT_FALSE(isOpen());
    open();
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(isAt(1));
    EXPECT_NE(text(QStringLiteral("Welcome to TAVRO")), nullptr);
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(TutorialWindowTest, TheKeysPlayUntilItComesAndNotWhileItIsOpen) {
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
    open();
    a_.release(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 60, 0)));

    tap(a_);
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    EXPECT_TRUE(isAt(1));
}

TEST_F(TutorialWindowTest, NeitherTheWayPastTheWindowNorTheMousePlaysWhileItIsOpen) {
    const auto place = centre(*cell(QStringLiteral("1")));
    open();
    EXPECT_FALSE(loader_.keys()->handleDirectly(plainA_));
    for (const auto& button : {QStringLiteral("Back"), QStringLiteral("Next")}) {
        find(QStringLiteral("SheetButton"), "text", button)->forceActiveFocus();
        EXPECT_FALSE(loader_.keys()->handleDirectly(plainA_));
    }
    mouse(QEvent::MouseButtonPress, place);
    mouse(QEvent::MouseButtonRelease, place);
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    EXPECT_TRUE(isOpen());

    tap(escape_);
    EXPECT_TRUE(loader_.keys()->handleDirectly(plainA_));
    EXPECT_EQ(instrument_.takeMessages().size(), 1u);
}

TEST_F(TutorialWindowTest, EscapeEndsItForGood) {
    open();
    tap(right_);
    tap(escape_);
    expectEnded();
}

TEST_F(TutorialWindowTest, SkipEndsItForGood) {
    open();
    click(*text(QStringLiteral("Skip")));
    expectEnded();
}

TEST_F(TutorialWindowTest, TheReturnKeyGoesThroughItAndEndsIt) {
    open();
    for (int step = 1; step <= 6; ++step) {
        EXPECT_TRUE(isAt(step));
        EXPECT_EQ(text(QStringLiteral("Done")) != nullptr, step == 6);
        EXPECT_EQ(text(QStringLiteral("Next")) != nullptr, step != 6);
        EXPECT_EQ(stored(), std::nullopt);
        tap(enter_);
    }
    expectEnded();
}

TEST_F(TutorialWindowTest, AReturnKeyThatIsKeptDownDoesNotRunThroughIt) {
    open();
    for (int repeat = 0; repeat < 10; ++repeat) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, KEY_ENTER + 8, 0, 0, {}, true);
        QCoreApplication::sendEvent(window_, &event);
    }
    EXPECT_TRUE(isAt(1));
}

TEST_F(TutorialWindowTest, TheArrowKeysStepAndStopAtBothEnds) {
    open();
    tap(left_);
    EXPECT_TRUE(isAt(1));
    tap(right_);
    tap(right_);
    EXPECT_TRUE(isAt(3));
    tap(left_);
    EXPECT_TRUE(isAt(2));
    for (int step = 0; step < 10; ++step) {
        tap(right_);
    }
    EXPECT_TRUE(isAt(6));
}

TEST_F(TutorialWindowTest, TheButtonsStepAndTheKeysStillDoAfterwards) {
    open();
    EXPECT_FALSE(button("Back").isEnabled());
    click(button("Next"));
    EXPECT_TRUE(isAt(2));
    EXPECT_TRUE(button("Back").isEnabled());
    click(button("Back"));
    EXPECT_TRUE(isAt(1));
    // The button that had the focus is disabled now.
    tap(enter_);
    EXPECT_TRUE(isAt(2));
    tap(escape_);
    expectEnded();
}

TEST_F(TutorialWindowTest, TheTabKeyReachesEveryButtonAndNothingBehindTheSheet) {
    open();
    tap(right_);
    QSet<QString> reached;
    for (int step = 0; step < 8; ++step) {
        tap(tab_);
        ASSERT_NE(window_->activeFocusItem(), nullptr);
        reached.insert(window_->activeFocusItem()->property("text").toString());
        EXPECT_FALSE(loader_.keys()->handleDirectly(plainA_));
    }
    reached.remove(QString());
    EXPECT_EQ(reached,
              (QSet<QString>{QStringLiteral("Skip"), QStringLiteral("Back"), QStringLiteral("Next")}));
    while (window_->activeFocusItem()->property("text") != QStringLiteral("Skip")) {
        tap(tab_);
    }
    tap(space_);
    expectEnded();
}

TEST_F(TutorialWindowTest, TheThirdStepShowsTheHotkeyOfTheMomentInWhichItOpens) {
    instrument_.globalPlay.setGlobalPlayHotkey({U'k', std::nullopt, HotkeyModifiers::control});
    open();
    tap(right_);
    tap(right_);
    EXPECT_NE(
        text(QStringLiteral("Press Ctrl+k to toggle Global Play, even while working in your DAW. This is "
                            "your current shortcut; change it in Settings > Global Play Hotkey. Turn Global "
                            "Play off before typing text in another app.")),
        nullptr);
}

TEST_F(TutorialWindowTest, TheEndOfTheProgramIsNoDismissal) {
    auto other = std::make_unique<MainWindowLoader>(instrument_.shell(translator_));
    ASSERT_TRUE(other->load());
    instrument_.actor.runUntil(350ms);
    QCoreApplication::processEvents();
    ASSERT_TRUE(isOpen());
    other->window()->close();
    QCoreApplication::processEvents();
    other.reset();
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(TutorialWindowTest, EveryStepFitsIntoEveryWindow) {
    // The lowest is what a desktop that keeps the window's proportions makes of the smallest.
    for (const auto size : {QSize(1280, 805), QSize(720, 520), QSize(720, 452), QSize(1600, 1006)}) {
        window_->resize(size);
        open();
        ASSERT_EQ(window_->size(), size);
        for (int step = 1; step <= 6; ++step) {
            ASSERT_TRUE(isAt(step));
            expectThatThePageFits();
            tap(right_);
        }
        for (int step = 1; step < 6; ++step) {
            tap(left_);
        }
    }
}

TEST_F(TutorialWindowTest, AScreenReaderHearsTheStepAndTheButtons) {
    open();
    const auto nameOf = [](const QQuickItem& item) {
        auto* read = QAccessible::queryAccessibleInterface(const_cast<QQuickItem*>(&item));
        return read != nullptr ? read->text(QAccessible::Name).toStdString() : std::string();
    };
    EXPECT_EQ(nameOf(button("Next")), "Next");
    EXPECT_EQ(nameOf(button("Back")), "Back");
    auto* page = QAccessible::queryAccessibleInterface(button("Next").parentItem());
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(page->role(), QAccessible::Dialog);
    EXPECT_EQ(page->text(QAccessible::Name).toStdString(), "Welcome to TAVRO");
    EXPECT_TRUE(page->text(QAccessible::Description).startsWith(QStringLiteral("TAVRO sends MIDI notes;")));
}

/// The window of somebody who has ended the tour before.
TEST_F(MainWindowTest, TheTourDoesNotComeAgain) {
    instrument_.actor.runUntil(10s);
    QCoreApplication::processEvents();
    EXPECT_EQ(find(QStringLiteral("QQuickText"), "text", QStringLiteral("Skip")), nullptr);
    a_.press(*window_);
    EXPECT_EQ(instrument_.takeMessages().size(), 1u);
}

} // namespace
} // namespace tavro
