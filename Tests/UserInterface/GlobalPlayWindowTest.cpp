#include "UserInterface/MainWindowFixture.h"

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class GlobalPlayWindowTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        toggleSettings();
    }

    QQuickItem* text(const char* shown) const {
        return find(QStringLiteral("QQuickText"), "text", QString::fromUtf8(shown));
    }

    const QQuickItem& recordButton() const { return *items(QStringLiteral("RecordButton")).at(0); }

    const QQuickItem& toggle() const {
        return *find(QStringLiteral("TogglePill"), "label", QStringLiteral("Global Play"));
    }

    const KeyEvents grave_{.evdevCode = KEY_GRAVE, .key = Qt::Key_QuoteLeft};
};

TEST_F(GlobalPlayWindowTest, TheSwitchTurnsItOnAndOff) {
    EXPECT_NE(text("Global Off"), nullptr);
    EXPECT_NE(text("Global Play off"), nullptr);
    click(toggle());
    EXPECT_TRUE(instrument_.globalPlay.globalPlayBinding());
    EXPECT_NE(text("Global On"), nullptr);
    EXPECT_NE(text("Global Play on"), nullptr);
    click(toggle());
    EXPECT_FALSE(instrument_.globalPlay.globalPlayBinding());
    EXPECT_NE(text("Global Play ready"), nullptr);
}

TEST_F(GlobalPlayWindowTest, WithoutTrustTheSwitchStaysOffAndTheWindowSaysWhatToDo) {
    instrument_.tap.answersTrusted = false;
    instrument_.tap.advice = "Ask the owner of this computer.";
    click(toggle());
    EXPECT_FALSE(toggle().property("isOn").toBool());
    EXPECT_NE(text("Allow Accessibility for Global Play"), nullptr);
    EXPECT_NE(text("Ask the owner of this computer."), nullptr);
}

TEST_F(GlobalPlayWindowTest, TheHotkeyTogglesInTheWindow) {
    grave_.press(*window_);
    grave_.release(*window_);
    EXPECT_TRUE(instrument_.globalPlay.globalPlayBinding());
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    // In front, its own window has the keys.
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
    grave_.press(*window_);
    EXPECT_FALSE(instrument_.globalPlay.globalPlayBinding());
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 60, 0)));
}

TEST_F(GlobalPlayWindowTest, ARecordedKeyBecomesTheHotkeyAndDoesNotPlay) {
    EXPECT_NE(text("^"), nullptr);
    click(recordButton());
    EXPECT_NE(text("Press a key"), nullptr);
    a_.press(*window_);
    a_.release(*window_);
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    EXPECT_EQ(text("Press a key"), nullptr);
    EXPECT_EQ(instrument_.globalKeyboard.hotkey(), (ToggleHotkey{U'a', 0, {}}));
    EXPECT_EQ(instrument_.globalPlay.displayedGlobalPlayHotkey().toStdString(), "a");
    a_.press(*window_);
    EXPECT_TRUE(instrument_.globalPlay.globalPlayBinding());
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
    grave_.press(*window_);
    EXPECT_TRUE(instrument_.globalPlay.globalPlayBinding());
}

TEST_F(GlobalPlayWindowTest, TheRecordButtonEndsTheRecordingToo) {
    click(recordButton());
    click(recordButton());
    EXPECT_EQ(text("Press a key"), nullptr);
    a_.press(*window_);
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 60, 100)));
}

} // namespace
} // namespace tavro
