#include "UserInterface/KeyboardGridModel.h"

#include "UserInterface/Instrument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class KeyboardGridModelTest : public testing::Test {
protected:
    KeyboardGridModelTest() {
        QObject::connect(&grid_, &QAbstractItemModel::dataChanged, &grid_,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             for (int row = first.row(); row <= last.row(); ++row) {
                                 changed_.push_back(text(row, KeyboardGridModel::keyRole));
                             }
                         });
        QObject::connect(&grid_, &QAbstractItemModel::modelReset, &grid_, [this] { ++resets_; });
    }

    QVariant value(int row, int role) const { return grid_.data(grid_.index(row), role); }

    std::string text(int row, int role) const { return value(row, role).toString().toStdString(); }

    int rowOf(const QString& key) const {
        for (int row = 0; row < grid_.rowCount(); ++row) {
            if (value(row, KeyboardGridModel::keyRole).toString() == key) {
                return row;
            }
        }
        return -1;
    }

    std::string all(int role) const {
        std::string joined;
        for (int row = 0; row < grid_.rowCount(); ++row) {
            joined += text(row, role);
        }
        return joined;
    }

    std::vector<std::string> keysWith(int role) const {
        std::vector<std::string> keys;
        for (int row = 0; row < grid_.rowCount(); ++row) {
            if (value(row, role).toBool()) {
                keys.push_back(text(row, KeyboardGridModel::keyRole));
            }
        }
        return keys;
    }

    template <typename Change>
    void change(Change change) {
        auto state = instrument_.controller.state();
        change(state);
        instrument_.controller.changeState(state);
    }

    Instrument instrument_;
    KeyboardGridModel grid_{instrument_.controller};
    std::vector<std::string> changed_;
    int resets_ = 0;
};

TEST_F(KeyboardGridModelTest, EveryKeyOnceFromTheTopAsPrinted) {
    EXPECT_EQ(grid_.rowCount(), 45);
    EXPECT_EQ(all(KeyboardGridModel::keyRole), "1234567890ß´qwertzuiopü+asdfghjklöäyxcvbnm,.-");
    EXPECT_EQ(all(KeyboardGridModel::labelRole), "1234567890ß´QWERTZUIOPÜ+ASDFGHJKLÖÄYXCVBNM,.-");
    EXPECT_EQ(value(0, KeyboardGridModel::rowRole), QVariant(3));
    EXPECT_EQ(value(0, KeyboardGridModel::columnRole), QVariant(0));
    EXPECT_EQ(value(44, KeyboardGridModel::rowRole), QVariant(0));
    EXPECT_EQ(value(44, KeyboardGridModel::columnRole), QVariant(9));
}

TEST_F(KeyboardGridModelTest, HasNothingOutsideItsRowsAndRoles) {
    EXPECT_EQ(grid_.rowCount(grid_.index(0)), 0);
    EXPECT_FALSE(grid_.data(QModelIndex(), KeyboardGridModel::keyRole).isValid());
    EXPECT_FALSE(value(0, Qt::DisplayRole).isValid());
}

TEST_F(KeyboardGridModelTest, NotesFollowTheSettings) {
    EXPECT_EQ(text(rowOf(QStringLiteral("a")), KeyboardGridModel::noteRole), "C4");
    EXPECT_EQ(text(rowOf(QStringLiteral("s")), KeyboardGridModel::noteRole), "C#4");
    change([](PerformanceState& state) { state.scaleName = "Natural Minor"; });
    EXPECT_EQ(text(rowOf(QStringLiteral("d")), KeyboardGridModel::noteRole), "Eb4");
    change([](PerformanceState& state) { state.chordMode = ChordMode::eleventh; });
    EXPECT_EQ(text(rowOf(QStringLiteral("d")), KeyboardGridModel::noteRole), "Eb4");
    changed_.clear();
    change([](PerformanceState& state) { state.globalOctaveOffset = 1; });
    EXPECT_EQ(text(rowOf(QStringLiteral("d")), KeyboardGridModel::noteRole), "Eb5");
    EXPECT_EQ(changed_.size(), 45u);
    EXPECT_EQ(resets_, 0);
}

TEST_F(KeyboardGridModelTest, SplitModeMarksTheUpperRowsAndMovesOnlyThem) {
    change([](PerformanceState& state) {
        state.splitModeEnabled = true;
        state.melodyOctaveOffset = -1;
    });
    EXPECT_EQ(changed_.size(), 24u);
    EXPECT_TRUE(value(rowOf(QStringLiteral("q")), KeyboardGridModel::isMelodyRole).toBool());
    EXPECT_TRUE(value(rowOf(QStringLiteral("1")), KeyboardGridModel::isMelodyRole).toBool());
    EXPECT_FALSE(value(rowOf(QStringLiteral("a")), KeyboardGridModel::isMelodyRole).toBool());
    EXPECT_EQ(text(rowOf(QStringLiteral("q")), KeyboardGridModel::noteRole), "C4");
    EXPECT_EQ(text(rowOf(QStringLiteral("a")), KeyboardGridModel::noteRole), "C4");
}

TEST_F(KeyboardGridModelTest, ALayoutChangesOnlyTheKeysThatDiffer) {
    change([](PerformanceState& state) { state.keyboardLayout = KeyboardLayoutKind::qwerty; });
    EXPECT_EQ(all(KeyboardGridModel::keyRole), "1234567890-=qwertyuiop[]asdfghjkl;'zxcvbnm,./");
    EXPECT_THAT(changed_, UnorderedElementsAre("-", "=", "y", "[", "]", ";", "'", "z", "/"));
    EXPECT_EQ(resets_, 0);
}

TEST_F(KeyboardGridModelTest, PressedAndLitKeysFollowTheController) {
    change([](PerformanceState& state) {
        state.scaleName = "Major";
        state.chordMode = ChordMode::triad;
    });
    changed_.clear();
    instrument_.controller.handleKeyDown(U'a');
    EXPECT_THAT(keysWith(KeyboardGridModel::isPressedRole), ElementsAre("a"));
    EXPECT_THAT(keysWith(KeyboardGridModel::isHighlightedRole), ElementsAre("a", "d", "g"));
    EXPECT_THAT(changed_, UnorderedElementsAre("a", "d", "g"));
    changed_.clear();
    instrument_.controller.handleKeyUp(U'a');
    EXPECT_THAT(keysWith(KeyboardGridModel::isPressedRole), IsEmpty());
    EXPECT_THAT(keysWith(KeyboardGridModel::isHighlightedRole), IsEmpty());
    EXPECT_THAT(changed_, UnorderedElementsAre("a", "d", "g"));
}

TEST_F(KeyboardGridModelTest, TheMousePlays) {
    grid_.press(QStringLiteral("ö"));
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x90, 69, 100)));
    grid_.release(QStringLiteral("ö"));
    EXPECT_THAT(instrument_.takeMessages(), ElementsAre(ElementsAre(0x80, 69, 0)));
    grid_.press(QString());
    grid_.press(QStringLiteral("as"));
    EXPECT_THAT(instrument_.takeMessages(), IsEmpty());
}

TEST_F(KeyboardGridModelTest, AChordKeyTellsItsLowestNoteItsChordAndAllItsNotes) {
    change([](PerformanceState& state) {
        state.scaleName = "Major";
        state.chordMode = ChordMode::seventh;
        state.voicingComplexity = 70;
    });
    const auto row = rowOf(QStringLiteral("a"));
    EXPECT_EQ(text(row, KeyboardGridModel::noteRole), "C4");
    EXPECT_EQ(text(row, KeyboardGridModel::chordRole), "Cmaj7");
    EXPECT_THAT(text(row, KeyboardGridModel::descriptionRole), testing::StartsWith("Cmaj7: C4 "));
    change([](PerformanceState& state) { state.chordMode = ChordMode::off; });
    EXPECT_EQ(text(row, KeyboardGridModel::chordRole), "");
    EXPECT_EQ(text(row, KeyboardGridModel::descriptionRole), "C4");
}

TEST_F(KeyboardGridModelTest, SlidingPlaysKeyByKey) {
    grid_.touch(3, QStringLiteral("a"));
    grid_.touch(3, QString());
    grid_.touch(3, QStringLiteral("s"));
    grid_.endTouch(3);
    EXPECT_THAT(instrument_.takeMessages(),
                ElementsAre(ElementsAre(0x90, 60, 100), ElementsAre(0x80, 60, 0), ElementsAre(0x90, 61, 100),
                            ElementsAre(0x80, 61, 0)));
}

TEST_F(KeyboardGridModelTest, TheChordReadOut) {
    int changes = 0;
    QObject::connect(&grid_, &KeyboardGridModel::chordTextChanged, &grid_, [&changes] { ++changes; });
    EXPECT_EQ(grid_.chordText(), QStringLiteral("-"));
    EXPECT_FALSE(grid_.isSounding());
    grid_.press(QStringLiteral("a"));
    EXPECT_EQ(grid_.chordText(), QStringLiteral("C4"));
    EXPECT_TRUE(grid_.isSounding());
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace tavro
