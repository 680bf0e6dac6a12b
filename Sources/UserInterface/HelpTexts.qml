pragma Singleton
import QtQuick

// What each control does, in its own words.
QtObject {
    readonly property string root: qsTr("Sets the root note of the selected scale. For example, C makes the keyboard play from C.")
    readonly property string scale: qsTr("Chooses which notes are available on the keyboard, such as Chromatic, Major, Minor, Dorian, or Blues.")
    readonly property string octave: qsTr("Moves the whole keyboard up or down in octaves.")
    readonly property string chord: qsTr("Turns chord generation on or off. Chord Complexity chooses how rich the chord becomes.")
    readonly property string velocity: qsTr("Sets how hard MIDI notes are played. Higher values sound louder or brighter on many instruments.")
    readonly property string humanize: qsTr("Adds small random velocity changes so repeated notes feel less robotic.")
    readonly property string chordComplexity: qsTr("Controls the generated chord shape. Triad plays root, third, fifth. Inverted moves the root up. Tenth plays root plus the third one octave higher. Seventh adds a 7th. Ninth adds a 9th color. Eleventh adds an 11th color.")
    readonly property string noteLimit: qsTr("Limits how many notes TAVRO sends at once. Off allows the full generated chord and all held notes. Use values like 4 for synths with limited polyphony. Bassnote counts toward this limit.")
    readonly property string strum: qsTr("Spreads chord notes by a few milliseconds so chords feel more played and less perfectly quantized.")
    readonly property string splitMode: qsTr("Uses the number and Q rows for single-note melodies while the A and Y rows keep playing chords. Melody notes ignore Hold, Smart Hold, Bassnote, Strum, and Chord Complexity.")
    readonly property string melodyOctave: qsTr("Moves the melody rows of Split Mode up or down in octaves.")
    readonly property string hold: qsTr("Hold keeps notes latched until you press them again. Smart Hold sustains the current chord cluster until a new chord starts.")
    readonly property string bassnote: qsTr("Adds the detected root note below what you play. Choose -1 or -2 octaves for the bass note depth.")
    readonly property string midiOutput: qsTr("Selects where TAVRO sends MIDI notes, such as TAVRO Out, IAC Driver, or another MIDI destination.")
    readonly property string midiSystem: qsTr("Chooses the MIDI system that carries the notes. JACK works in periods. Of PipeWire, which speaks it too, TAVRO asks a short one, so that notes come out sooner; that shortens the period of the whole sound system while TAVRO runs. System default leaves it as it is.")
    readonly property string midiChannel: qsTr("Sets the MIDI channel used for note output.")
    readonly property string keyboardLayout: qsTr("Chooses the physical computer keyboard layout. Use QWERTZ for German keyboards.")
    readonly property string globalPlay: qsTr("Turns background keyboard capture on or off, so TAVRO can keep playing while another app is active.")
    readonly property string globalPlayHotkey: qsTr("Sets the key that toggles Global Play on or off while another app is in front.")
    readonly property string launchAtLogin: qsTr("Starts TAVRO automatically when you log in to your Mac. You can also change this in macOS Login Items.")
}
