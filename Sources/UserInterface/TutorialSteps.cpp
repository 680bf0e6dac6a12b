#include "UserInterface/TutorialSteps.h"

namespace tavro {

QList<TutorialStep> TutorialSteps::make(const QString& hotkey, KeyboardAccess access) {
    return {
        {.title = tr("Welcome to TAVRO"),
         .symbol = QStringLiteral("sparkles"),
         .body =
             tr("TAVRO sends MIDI notes; it does not make sound itself. In your DAW, load an instrument and "
                "enable TAVRO Out as its MIDI input. Open Settings at the bottom of TAVRO to check MIDI "
                "Output."),
         .note = {}},
        {.title = tr("Play inside your DAW"),
         .symbol = QStringLiteral("keyboard"),
         .body =
             tr("Global Play lets your keyboard play TAVRO while your DAW or another app is in front. Open "
                "Settings at the bottom, then turn Global Play On. The Global On / Off indicator at the top "
                "shows whether it is active."),
         .note = {}},
        {.title = tr("Your Global Play shortcut"),
         .symbol = QStringLiteral("slider.horizontal.3"),
         .body =
             tr("Press %1 to toggle Global Play, even while working in your DAW. This is your current "
                "shortcut; change it in Settings > Global Play Hotkey. Turn Global Play off before typing "
                "text in another app.")
                 .arg(hotkey),
         .note = {}},
        {.title = tr("Allow keyboard access"),
         .symbol = QStringLiteral("music.note.list"),
         .body = tr(
             "If Global Play does not respond, allow TAVRO in macOS System Settings > Privacy & Security > "
             "Accessibility. Return to TAVRO and enable Global Play again. With Global Play off, you can "
             "still play while TAVRO is in front."),
         .note = noteOn(access)},
        {.title = tr("Chords and melodies"),
         .symbol = QStringLiteral("globe"),
         .body = tr(
             "Choose Root, Scale and Octave in the top row. Switch Chord on for one-key chords. Open "
             "Advanced for Chord Complexity and Strum. Split Mode lets the 1 and Q rows play melodies over "
             "chords on the lower two rows."),
         .note = {}},
        {.title = tr("Hold, save and stop"),
         .symbol = QStringLiteral("square.and.arrow.down"),
         .body =
             tr("Hold sustains notes after release; Smart Hold replaces the previous chord as you play. Save "
                "and Load at the top manage presets. The red stop button at the top right stops all notes. "
                "Reopen this tour anytime with the ? button in the top bar."),
         .note = {}},
    };
}

QString TutorialSteps::noteOn(KeyboardAccess access) {
    switch (access) {
    case KeyboardAccess::accessibilitySettings:
        return {};
    case KeyboardAccess::displayOrInputDevices:
        return tr(
            "On Linux: under X11 there is nothing to allow; under Wayland your user needs access to the "
            "keyboards, see Global Play in the README.");
    }
    return {};
}

} // namespace tavro
