#include "Presets/LibraryFixture.h"
#include "Presets/PresetFile.h"
#include "Presets/TemporaryFolder.h"

#include <QUuid>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Without chance, so that what is loaded can be compared with what is played.
TAVROPreset preset(const std::string& id, const std::string& name, std::int64_t velocity) {
    return {
        .id = id, .name = name, .state = {.velocity = velocity, .humanizeVelocity = 0}, .isBuiltIn = false};
}

const TAVROPreset soft = preset("soft", "Soft", 40);
const TAVROPreset loud = preset("loud", "Loud", 120);

class PresetLibraries : public testing::Test, protected LibraryFixture {
protected:
    void storePresets(const std::vector<TAVROPreset>& presets, const std::string& selected) {
        ASSERT_TRUE(store.save(presets));
        ASSERT_TRUE(defaults.setValue("TAVRO.SelectedPresetID.v1", selected));
        defaults.writes.clear();
    }

    QString fileWith(const TAVROPreset& content, const QString& name) const {
        PresetFile::write(content, folder.path(name));
        return folder.path(name);
    }

    /// Runs an action that must change nothing but tell a failure with this text.
    template <class Action>
    void expectFailure(Action&& action, const std::string& alert) {
        const auto presets = library().presets();
        const auto selected = selectedID();
        const auto state = controller().state();
        controller().handleKeyDown(U'a');
        takeSent();
        defaults.writes.clear();
        EXPECT_FALSE(action());
        EXPECT_EQ(library().presets(), presets);
        EXPECT_EQ(selectedID(), selected);
        EXPECT_EQ(controller().state(), state);
        EXPECT_THAT(takeSent(), IsEmpty());
        EXPECT_THAT(controller().activeKeys(), ElementsAre(U'a'));
        EXPECT_THAT(defaults.writes, IsEmpty());
        EXPECT_EQ(listChanges, 0);
        EXPECT_EQ(selectionChanges, 0);
        EXPECT_THAT(alerts, ElementsAre(alert));
    }

    TemporaryFolder folder;
};

TEST_F(PresetLibraries, beginWithTheBuiltInPreset) {
    EXPECT_THAT(names(), ElementsAre("Default"));
    EXPECT_EQ(selectedID(), "default");
    EXPECT_EQ(library().currentPresetNameForSaving(), QStringLiteral("Default"));
    EXPECT_THAT(defaults.writes, IsEmpty());
    EXPECT_THAT(takeSent(), IsEmpty());
}

TEST_F(PresetLibraries, beginWithTheStoredChoice) {
    storePresets({soft, loud}, "loud");
    EXPECT_THAT(names(), ElementsAre("Default", "Soft", "Loud"));
    EXPECT_EQ(selectedID(), "loud");
    EXPECT_EQ(controller().state(), loud.state);
    EXPECT_THAT(defaults.writes, IsEmpty());
}

TEST_F(PresetLibraries, beginWithTheBuiltInPresetWhenTheStoredChoiceIsGone) {
    storePresets({soft}, "loud");
    EXPECT_EQ(selectedID(), "default");
    EXPECT_EQ(PresetSelection::load(store, preferences).initialPreset(), TAVROPreset::defaultPreset());
    EXPECT_EQ(storedID(), "loud");
}

TEST_F(PresetLibraries, loadWhatIsChosenAndStoreTheChoice) {
    storePresets({soft, loud}, "soft");
    controller().handleKeyDown(U'a');
    takeSent();
    library().setSelectedPresetID(QStringLiteral("loud"));
    EXPECT_EQ(controller().state(), loud.state);
    EXPECT_THAT(takeSent(), ElementsAre("off 60"));
    EXPECT_EQ(storedID(), "loud");
    EXPECT_EQ(selectionChanges, 1);
    EXPECT_EQ(listChanges, 0);
    EXPECT_EQ(defaults.writes.size(), 1U);
}

TEST_F(PresetLibraries, doNothingWhenThePresetIsChosenAlready) {
    storePresets({soft}, "soft");
    controller().handleKeyDown(U'a');
    controller().changeState({.velocity = 9});
    takeSent();
    library().setSelectedPresetID(QStringLiteral("soft"));
    EXPECT_EQ(controller().state().velocity, 9);
    EXPECT_THAT(takeSent(), IsEmpty());
    EXPECT_EQ(selectionChanges, 0);
}

TEST_F(PresetLibraries, loadTheChosenPresetAnew) {
    storePresets({soft}, "soft");
    library();
    controller().changeState({.velocity = 9});
    library().loadSelectedPreset();
    EXPECT_EQ(controller().state(), soft.state);
    controller().handleKeyDown(U'a');
    takeSent();
    library().loadSelectedPreset();
    EXPECT_THAT(takeSent(), ElementsAre("off 60"));
}

TEST_F(PresetLibraries, ignoreWhatNobodyIsCalled) {
    storePresets({soft}, "soft");
    library().setSelectedPresetID(QStringLiteral("nobody"));
    EXPECT_EQ(selectedID(), "soft");
    EXPECT_EQ(selectionChanges, 0);
    EXPECT_THAT(defaults.writes, IsEmpty());
}

TEST_F(PresetLibraries, loadNothingWhenTheChosenPresetIsNotThere) {
    ControllerFixture other;
    PresetSelection selection;
    selection.selectedID = "gone";
    PresetLibrary lost(other.controller, store, defaults, [] {}, selection);
    other.controller.handleKeyDown(U'a');
    other.takeSent();
    lost.loadSelectedPreset();
    EXPECT_THAT(other.takeSent(), IsEmpty());
    EXPECT_THAT(defaults.writes, IsEmpty());
    EXPECT_EQ(lost.currentPresetNameForSaving(), QStringLiteral("Preset 1"));
    EXPECT_EQ(selection.initialPreset(), TAVROPreset::defaultPreset());
}

TEST_F(PresetLibraries, putAPresetInThePlaceOfItsFormerSelf) {
    storePresets({soft, loud}, "default");
    library().upsertPreset(preset("soft", "Softer", 20));
    EXPECT_THAT(names(), ElementsAre("Default", "Softer", "Loud"));
    library().upsertPreset(preset("new", "New", 20));
    EXPECT_THAT(names(), ElementsAre("Default", "Softer", "Loud", "New"));
    EXPECT_EQ(listChanges, 2);
    EXPECT_EQ(selectedID(), "default");
    EXPECT_THAT(defaults.writes, IsEmpty());
}

TEST_F(PresetLibraries, openAFile) {
    controller().handleKeyDown(U'a');
    takeSent();
    EXPECT_TRUE(library().openPresetFromFile(fileWith(loud, QStringLiteral("any name.tvp"))));
    EXPECT_THAT(names(), ElementsAre("Default", "Loud"));
    EXPECT_EQ(selectedID(), "loud");
    EXPECT_EQ(controller().state(), loud.state);
    EXPECT_THAT(takeSent(), ElementsAre("off 60"));
    EXPECT_THAT(store.load(), ElementsAre(TAVROPreset::defaultPreset(), loud));
    EXPECT_EQ(storedID(), "loud");
    EXPECT_EQ(listChanges, 1);
    EXPECT_EQ(selectionChanges, 1);
    EXPECT_THAT(alerts, IsEmpty());
    EXPECT_EQ(beeps, 0);
}

TEST_F(PresetLibraries, openAFileInPlaceOfThePresetWithItsIdentifier) {
    storePresets({soft, loud}, "soft");
    EXPECT_TRUE(
        library().openPresetFromFile(fileWith(preset("soft", "Softer", 20), QStringLiteral("softer.tvp"))));
    EXPECT_THAT(names(), ElementsAre("Default", "Softer", "Loud"));
    EXPECT_EQ(controller().state().velocity, 20);
    EXPECT_EQ(selectionChanges, 0);
    EXPECT_EQ(listChanges, 1);
}

TEST_F(PresetLibraries, openTheFileOfABuiltInPresetAsOneOfTheUsersOwn) {
    auto exported = TAVROPreset::defaultPreset();
    exported.state = loud.state;
    const auto path = fileWith(exported, QStringLiteral("default.tvp"));
    EXPECT_TRUE(library().openPresetFromFile(path));
    ASSERT_THAT(names(), ElementsAre("Default", "Default"));
    EXPECT_EQ(library().presets().front(), TAVROPreset::defaultPreset());
    const auto& own = library().presets().back();
    EXPECT_FALSE(own.isBuiltIn);
    EXPECT_FALSE(QUuid(library().selectedPresetID()).isNull());
    EXPECT_EQ(own.id, selectedID());
    EXPECT_EQ(controller().state(), loud.state);
    EXPECT_EQ(store.load(), library().presets());

    // Opening it again makes no third one, another file does.
    EXPECT_TRUE(library().openPresetFromFile(path));
    EXPECT_EQ(library().presets().size(), 2U);
    exported.state.velocity = 1;
    EXPECT_TRUE(library().openPresetFromFile(fileWith(exported, QStringLiteral("other.tvp"))));
    EXPECT_EQ(library().presets().size(), 3U);
}

TEST_F(PresetLibraries, openPresetsThatClaimToBeBuiltInOrHaveNoIdentifier) {
    auto impostor = loud;
    impostor.isBuiltIn = true;
    EXPECT_TRUE(library().openPresetFromFile(fileWith(impostor, QStringLiteral("impostor.tvp"))));
    EXPECT_EQ(library().presets().back(), loud);
    EXPECT_TRUE(library().openPresetFromFile(fileWith(preset("", "No", 3), QStringLiteral("no.tvp"))));
    EXPECT_TRUE(library().openPresetFromFile(fileWith(preset("", "None", 4), QStringLiteral("none.tvp"))));
    EXPECT_THAT(names(), ElementsAre("Default", "Loud", "No", "None"));
    EXPECT_EQ(store.load(), library().presets());
}

TEST_F(PresetLibraries, tellWhyAFileCannotBeOpened) {
    const auto path = folder.file(QStringLiteral("bad.tvp"), "{");
    expectFailure([&] { return library().openPresetFromFile(path); },
                  "The preset could not be opened | " + path.toStdString() +
                      ": not JSON: the text ends too early, at line 1, column 2");
    EXPECT_EQ(beeps, 0);
}

TEST_F(PresetLibraries, tellThatAFileIsNotThere) {
    const auto path = folder.path(QStringLiteral("none.tvp"));
    expectFailure([&] { return library().openPresetFromFile(path); },
                  "The preset could not be opened | " + path.toStdString() + ": No such file or directory");
}

TEST_F(PresetLibraries, saveTheSettingsAsTheyAre) {
    storePresets({soft}, "soft");
    library();
    auto state = soft.state;
    state.velocity = 77;
    controller().changeState(state);
    const auto path = folder.path(QStringLiteral("My Song.tvp"));
    EXPECT_TRUE(library().savePresetToFile(path));
    const auto saved = PresetFile::read(path);
    EXPECT_EQ(saved.name, "My Song");
    EXPECT_EQ(saved.state, state);
    EXPECT_FALSE(saved.isBuiltIn);
    EXPECT_FALSE(QUuid(QString::fromStdString(saved.id)).isNull());
    EXPECT_THAT(library().presets(), ElementsAre(TAVROPreset::defaultPreset(), soft, saved));
    EXPECT_EQ(selectedID(), saved.id);
    EXPECT_EQ(storedID(), saved.id);
    EXPECT_EQ(store.load(), library().presets());
    EXPECT_EQ(controller().state(), state);
    EXPECT_EQ(listChanges, 1);
    EXPECT_EQ(selectionChanges, 1);
    EXPECT_EQ(beeps, 0);
}

TEST_F(PresetLibraries, giveEverySavedPresetItsOwnIdentifier) {
    const auto path = folder.path(QStringLiteral("same.tvp"));
    EXPECT_TRUE(library().savePresetToFile(path));
    EXPECT_TRUE(library().savePresetToFile(path));
    EXPECT_THAT(names(), ElementsAre("Default", "same", "same"));
    EXPECT_NE(library().presets()[1].id, library().presets()[2].id);
}

TEST_F(PresetLibraries, completeTheNameOfAFile) {
    EXPECT_TRUE(library().savePresetToFile(folder.path(QStringLiteral("Song 1.5"))));
    EXPECT_TRUE(library().savePresetToFile(folder.path(QStringLiteral("LOUD.TVP"))));
    EXPECT_TRUE(library().savePresetToFile(folder.path(QStringLiteral(".tvp"))));
    EXPECT_EQ(folder.names().join(QLatin1Char(' ')), QStringLiteral(".tvp.tvp LOUD.TVP Song 1.5.tvp"));
    EXPECT_THAT(names(), ElementsAre("Default", "Song 1.5", "LOUD", ".tvp"));
}

TEST_F(PresetLibraries, neverReplaceAFileThatWasNotNamedInFull) {
    const auto path = folder.file(QStringLiteral("song.tvp"), "old");
    expectFailure([&] { return library().savePresetToFile(folder.path(QStringLiteral("song"))); },
                  "The preset could not be saved | " + path.toStdString() +
                      ": is there already; to replace it, give its whole name");
    EXPECT_EQ(TemporaryFolder::contentOf(path), "old");
    EXPECT_EQ(beeps, 1);
}

TEST_F(PresetLibraries, beepAndTellWhyAFileCannotBeSaved) {
    const auto path = folder.path(QStringLiteral("missing/song.tvp"));
    expectFailure([&] { return library().savePresetToFile(path); },
                  "The preset could not be saved | " + path.toStdString() + ": No such file or directory");
    EXPECT_EQ(beeps, 1);
}

TEST_F(PresetLibraries, goOnWhenNothingCanBeStored) {
    defaults.refusesWrites = true;
    EXPECT_TRUE(library().openPresetFromFile(fileWith(loud, QStringLiteral("loud.tvp"))));
    EXPECT_EQ(selectedID(), "loud");
    EXPECT_EQ(controller().state(), loud.state);
}

TEST_F(PresetLibraries, keepWhatAnotherRunningCopyHasStored) {
    storePresets({soft}, "soft");
    library();
    ControllerFixture otherPerformance;
    PresetLibrary other(
        otherPerformance.controller, store, defaults, [] {}, PresetSelection::load(store, preferences));
    EXPECT_TRUE(other.openPresetFromFile(fileWith(loud, QStringLiteral("loud.tvp"))));
    EXPECT_TRUE(library().savePresetToFile(folder.path(QStringLiteral("mine.tvp"))));
    EXPECT_THAT(names(), ElementsAre("Default", "Soft", "Loud", "mine"));
    EXPECT_EQ(store.load(), library().presets());
}

TEST_F(PresetLibraries, proposeFilesInThePresetFolder) {
    EXPECT_EQ(library().suggestedFileForSaving(),
              PresetLibrary::presetDirectory() + QStringLiteral("/Default.tvp"));
}

} // namespace
} // namespace tavro
