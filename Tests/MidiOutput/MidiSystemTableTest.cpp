#include "MidiOutput/MidiSystemTable.h"

#include "Concurrency/VirtualMainActor.h"
#include "Platform/Headless/MidiSystemAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Choosing : public testing::Test {
protected:
    /// One that notes when it is asked and when it is made.
    MidiSystemTable::Entry entry(const QString& name, std::int32_t status) {
        return {.name = name,
                .available =
                    [this, name, status](MainActor&) {
                        asked.push_back(name.toStdString());
                        return status;
                    },
                .make =
                    [this, name](MainActor&) {
                        made.push_back(name.toStdString());
                        return std::make_unique<headless::MidiSystemAdapter>();
                    }};
    }

    MidiSystemTable::Choice choose(std::vector<MidiSystemTable::Entry> entries, const QString& name) {
        return MidiSystemTable(std::move(entries)).choose(name, mainActor);
    }

    VirtualMainActor mainActor;
    const QString automatic = MidiSystemTable::automatic();
    const QString alsa = QStringLiteral("alsa");
    const QString jack = QStringLiteral("jack");
    std::vector<std::string> asked;
    std::vector<std::string> made;
};

TEST_F(Choosing, takesTheFirstThatWorksAndAsksNoOther) {
    const auto choice = choose({entry(alsa, 0), entry(jack, 0)}, automatic);
    EXPECT_THAT(asked, ElementsAre("alsa"));
    EXPECT_THAT(made, ElementsAre("alsa"));
    EXPECT_NE(choice.system, nullptr);
    EXPECT_EQ(choice.name, alsa);
    EXPECT_THAT(choice.failures, IsEmpty());
}

TEST_F(Choosing, goesOnAfterAFailureAndTellsIt) {
    const auto choice = choose({entry(alsa, -2), entry(jack, 0)}, automatic);
    EXPECT_THAT(made, ElementsAre("jack"));
    EXPECT_EQ(choice.name, jack);
    EXPECT_EQ(choice.reasons(-17), "alsa failed with -2, jack failed with -17");
}

TEST_F(Choosing, doesNotAskTheLastThatIsLeft) {
    const auto choice = choose({entry(alsa, -2), entry(jack, -17)}, automatic);
    EXPECT_THAT(asked, ElementsAre("alsa"));
    EXPECT_THAT(made, ElementsAre("jack"));
}

TEST_F(Choosing, takesTheOneThatIsNamedUnasked) {
    const auto choice = choose({entry(alsa, 0), entry(jack, -17)}, jack);
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_THAT(made, ElementsAre("jack"));
    EXPECT_EQ(choice.name, jack);
    EXPECT_EQ(choice.reasons(-17), "jack failed with -17");
}

TEST_F(Choosing, takesTheOnlyOneUnasked) {
    const auto choice = choose({entry(jack, -17)}, automatic);
    EXPECT_THAT(asked, IsEmpty());
    EXPECT_THAT(made, ElementsAre("jack"));
}

TEST_F(Choosing, hasNothingWhereThereIsNothing) {
    EXPECT_EQ(choose({entry(jack, 0)}, alsa).system, nullptr);
    EXPECT_EQ(choose({}, automatic).system, nullptr);
}

TEST(MidiSystemTrial, leavesNoClientBehind) {
    headless::MidiSystemAdapter system;
    EXPECT_EQ(MidiSystemTable::trial(system), 0);
    EXPECT_THAT(system.calls, ElementsAre("client TAVRO", "dispose client 1"));
}

TEST(MidiSystemTrial, tellsTheStatusOfAFailure) {
    headless::MidiSystemAdapter system;
    system.clientStatus = -17;
    EXPECT_EQ(MidiSystemTable::trial(system), -17);
}

TEST(MidiSystemTrial, saysWhetherAnEntryIsAvailable) {
    VirtualMainActor mainActor;
    for (const std::int32_t status : {0, -17}) {
        const auto entry = MidiSystemTable::Entry::tried(QStringLiteral("jack"), [status](MainActor&) {
            auto system = std::make_unique<headless::MidiSystemAdapter>();
            system->clientStatus = status;
            return system;
        });
        EXPECT_EQ(entry.available(mainActor), status);
    }
}

TEST(MidiSystemNames, areThoseOfTheTableAndAuto) {
    const MidiSystemTable two({{.name = QStringLiteral("alsa"), .available = nullptr, .make = nullptr},
                               {.name = QStringLiteral("jack"), .available = nullptr, .make = nullptr}});
    for (const auto* name : {"auto", "alsa", "jack"}) {
        EXPECT_TRUE(two.isName(QString::fromLatin1(name))) << name;
    }
    for (const auto* name : {"", "ALSA", "headless", "coremidi"}) {
        EXPECT_FALSE(two.isName(QString::fromLatin1(name))) << name;
    }
    EXPECT_EQ(two.alternatives(), QStringLiteral("auto|alsa|jack"));
    EXPECT_EQ(two.sentence(), QStringLiteral("auto, alsa or jack"));

    const MidiSystemTable one({{.name = QStringLiteral("coremidi"), .available = nullptr, .make = nullptr}});
    EXPECT_TRUE(one.isName(QStringLiteral("coremidi")));
    EXPECT_EQ(one.alternatives(), QStringLiteral("auto|coremidi"));
    EXPECT_EQ(one.sentence(), QStringLiteral("auto or coremidi"));

    EXPECT_EQ(MidiSystemTable({}).sentence(), QStringLiteral("auto"));
}

} // namespace
} // namespace tavro
