#include "UserInterface/WindowStateFixture.h"

#include <QString>

#include <map>

namespace tavro {
namespace {

/// By the title that the control's mark stands beside.
const std::map<QString, QString>& helpTexts() {
    static const std::map<QString, QString> texts{
        {QStringLiteral("Root"),
         QStringLiteral("Sets the root note of the selected scale. For example, C makes "
                        "the keyboard play from C.")},
        {QStringLiteral("Scale"), QStringLiteral("Chooses which notes are available on the keyboard, such as "
                                                 "Chromatic, Major, Minor, Dorian, or Blues.")},
        {QStringLiteral("Octave"), QStringLiteral("Moves the whole keyboard up or down in octaves.")},
        {QStringLiteral("Chord"),
         QStringLiteral("Turns chord generation on or off. Chord Complexity chooses how "
                        "rich the chord becomes.")},
        {QStringLiteral("Velocity"),
         QStringLiteral("Sets how hard MIDI notes are played. Higher values sound "
                        "louder or brighter on many instruments.")},
        {QStringLiteral("Humanize"),
         QStringLiteral("Adds small random velocity changes so repeated notes feel less robotic.")},
        {QStringLiteral("Chord Complexity"),
         QStringLiteral(
             "Controls the generated chord shape. Triad plays root, third, fifth. Inverted moves the "
             "root up. Tenth plays root plus the third one octave higher. Seventh adds a 7th. Ninth "
             "adds a 9th color. Eleventh adds an 11th color.")},
        {QStringLiteral("Note Limit"),
         QStringLiteral(
             "Limits how many notes TAVRO sends at once. Off allows the full generated chord and all "
             "held notes. Use values like 4 for synths with limited polyphony. Bassnote counts toward "
             "this limit.")},
        {QStringLiteral("Strum"),
         QStringLiteral("Spreads chord notes by a few milliseconds so chords feel more "
                        "played and less perfectly quantized.")},
        {QStringLiteral("Split Mode"),
         QStringLiteral(
             "Uses the number and Q rows for single-note melodies while the A and Y rows keep playing "
             "chords. Melody notes ignore Hold, Smart Hold, Bassnote, Strum, and Chord Complexity.")},
        {QStringLiteral("Melody Octave"),
         QStringLiteral("Moves the melody rows of Split Mode up or down in octaves.")},
        {QStringLiteral("Hold / Smart Hold"),
         QStringLiteral(
             "Hold keeps notes latched until you press them again. Smart Hold sustains the current "
             "chord cluster until a new chord starts.")},
        {QStringLiteral("Bassnote"),
         QStringLiteral("Adds the detected root note below what you play. Choose -1 "
                        "or -2 octaves for the bass note depth.")},
        {QStringLiteral("MIDI Output"),
         QStringLiteral("Selects where TAVRO sends MIDI notes, such as TAVRO Out, "
                        "IAC Driver, or another MIDI destination.")},
        {QStringLiteral("MIDI System"),
         QStringLiteral(
             "Chooses the MIDI system that carries the notes. JACK works in periods. Of PipeWire, which "
             "speaks it too, TAVRO asks a short one, so that notes come out sooner; that shortens the period "
             "of the whole sound system while TAVRO runs. System default leaves it as it is.")},
        {QStringLiteral("MIDI Channel"), QStringLiteral("Sets the MIDI channel used for note output.")},
        {QStringLiteral("Keyboard Layout"),
         QStringLiteral("Chooses the physical computer keyboard layout. Use QWERTZ for German keyboards.")},
        {QStringLiteral("Global Play"),
         QStringLiteral("Turns background keyboard capture on or off, so TAVRO can "
                        "keep playing while another app is active.")},
        {QStringLiteral("Global Play Hotkey"),
         QStringLiteral("Sets the key that toggles Global Play on or off "
                        "while another app is in front.")},
        {QStringLiteral("Launch at Login"),
         QStringLiteral("Starts TAVRO automatically when you log in to your Mac. You can also change this in "
                        "macOS Login Items.")}};
    return texts;
}

class HelpTextsTest : public WindowStateTest {};

TEST_F(HelpTextsTest, EveryMarkTellsAboutTheControlItStandsBeside) {
    enter(WindowState::bothOpen);
    std::map<QString, QString> shown;
    for (const auto* mark : items(QStringLiteral("TooltipHelpMark"))) {
        EXPECT_TRUE(mark->isVisible()) << mark->property("title").toString().toStdString();
        shown[mark->property("title").toString()] = mark->property("help").toString();
    }
    EXPECT_EQ(shown, helpTexts());
}

TEST_F(HelpTextsTest, TheMarkOfATileHasTheTitleOfItsControl) {
    enter(WindowState::bothOpen);
    for (const auto* type : {"SliderTile", "ControlTile", "HoldModeTile", "BassnoteTile"}) {
        for (const auto* item : items(QLatin1String(type))) {
            const auto title = item->property("title").toString();
            EXPECT_EQ(helpTexts().count(title), 1U) << title.toStdString();
        }
    }
    // What is to be used in the tile of this title.
    const std::vector<std::pair<QString, QString>> controls{
        {QStringLiteral("Picker"), QStringLiteral("Root")},
        {QStringLiteral("Picker"), QStringLiteral("Scale")},
        {QStringLiteral("CleanValueSlider"), QStringLiteral("Velocity")},
        {QStringLiteral("CleanValueSlider"), QStringLiteral("Humanize")},
        {QStringLiteral("CleanValueSlider"), QStringLiteral("Chord Complexity")},
        {QStringLiteral("CleanValueSlider"), QStringLiteral("Note Limit")},
        {QStringLiteral("CenteredValueSlider"), QStringLiteral("Octave")},
        {QStringLiteral("CenteredValueSlider"), QStringLiteral("Strum")},
        {QStringLiteral("CenteredValueSlider"), QStringLiteral("Melody Octave")},
        {QStringLiteral("TogglePill"), QStringLiteral("Chord")},
        {QStringLiteral("TogglePill"), QStringLiteral("Split Mode")},
        {QStringLiteral("TogglePill"), QStringLiteral("Bassnote")},
        {QStringLiteral("TogglePill"), QStringLiteral("Global Play")},
        {QStringLiteral("TogglePill"), QStringLiteral("Launch at Login")},
        {QStringLiteral("Picker"), QStringLiteral("MIDI Output")},
        {QStringLiteral("Picker"), QStringLiteral("MIDI System")},
        {QStringLiteral("Picker"), QStringLiteral("MIDI Channel")},
        {QStringLiteral("Picker"), QStringLiteral("Keyboard Layout")}};
    for (const auto& [type, title] : controls) {
        const auto* control = find(type, "label", title);
        ASSERT_NE(control, nullptr) << title.toStdString();
        EXPECT_TRUE(tile(title).isAncestorOf(control)) << title.toStdString();
    }
}

TEST_F(HelpTextsTest, AMarkThatIsPressedShowsItsText) {
    enter(WindowState::standard);
    auto& mark = helpMark(QStringLiteral("Velocity"));
    mouse(QEvent::MouseButtonPress, centre(mark));
    settle();
    const auto* tip = find(QStringLiteral("HelpTip"), "text", helpTexts().at(QStringLiteral("Velocity")));
    ASSERT_NE(tip, nullptr);
    EXPECT_TRUE(tip->property("isWanted").toBool());
    mouse(QEvent::MouseButtonRelease, centre(mark));
}

} // namespace
} // namespace tavro
