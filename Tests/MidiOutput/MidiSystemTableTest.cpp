#include "MidiOutput/MidiSystemTable.h"

#include "Concurrency/VirtualMainActor.h"
#include "Platform/Headless/MidiSystemAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const MidiSystemTable::Maker makeHeadless = [](MainActor&, const MidiSystemOptions&) {
    return std::make_unique<headless::MidiSystemAdapter>();
};

MidiSystemTable tableOf(const std::vector<const char*>& names) {
    std::vector<MidiSystemTable::Entry> entries;
    for (const auto* name : names) {
        entries.push_back({QString::fromLatin1(name), QString::fromLatin1(name).toUpper(), makeHeadless});
    }
    return MidiSystemTable(std::move(entries));
}

class Candidates : public testing::Test {
protected:
    VirtualMainActor mainActor;
    const MidiSystemTable table = tableOf({"alsa", "jack"});
};

TEST_F(Candidates, areAllInOrderOrTheOneThatIsNamed) {
    const auto all = table.candidates(MidiSystemTable::automatic(), mainActor);
    EXPECT_EQ(all.names, QStringList({QStringLiteral("alsa"), QStringLiteral("jack")}));
    EXPECT_EQ(all.pointers().size(), 2U);
    const auto one = table.candidates(QStringLiteral("jack"), mainActor);
    EXPECT_EQ(one.names, QStringList(QStringLiteral("jack")));
    EXPECT_THAT(one.pointers(), ElementsAre(one.systems.front().get()));
}

TEST_F(Candidates, areNoneWhereThereIsNone) {
    EXPECT_THAT(table.candidates(QStringLiteral("oss"), mainActor).pointers(), IsEmpty());
    EXPECT_THAT(tableOf({}).candidates(MidiSystemTable::automatic(), mainActor).pointers(), IsEmpty());
}

TEST_F(Candidates, areMadeWithTheOptions) {
    std::vector<bool> asked;
    const MidiSystemTable noting({{QStringLiteral("jack"), QStringLiteral("JACK"),
                                   [&asked](MainActor& mainActor, const MidiSystemOptions& options) {
                                       asked.push_back(options.asksForShortPeriod);
                                       return makeHeadless(mainActor, options);
                                   }}});
    (void)noting.candidates(QStringLiteral("jack"), mainActor);
    (void)noting.candidates(QStringLiteral("jack"), mainActor, {.asksForShortPeriod = false});
    EXPECT_THAT(asked, ElementsAre(true, false));
}

TEST_F(Candidates, tellWhyNoneCanBeUsed) {
    const auto all = table.candidates(MidiSystemTable::automatic(), mainActor);
    EXPECT_EQ(all.reasons(std::vector{-2, -17}), "alsa failed with -2, jack failed with -17");
    const auto one = table.candidates(QStringLiteral("jack"), mainActor);
    EXPECT_EQ(one.reasons(std::vector{-17}), "jack failed with -17");
}

TEST(MidiSystemNames, areThoseOfTheTableAndAuto) {
    const auto two = tableOf({"alsa", "jack"});
    for (const auto* name : {"auto", "alsa", "jack"}) {
        EXPECT_TRUE(two.isName(QString::fromLatin1(name))) << name;
    }
    for (const auto* name : {"", "ALSA", "headless", "coremidi"}) {
        EXPECT_FALSE(two.isName(QString::fromLatin1(name))) << name;
    }
    EXPECT_EQ(two.alternatives(), QStringLiteral("auto|alsa|jack"));
    EXPECT_EQ(two.sentence(), QStringLiteral("auto, alsa or jack"));

    const auto one = tableOf({"coremidi"});
    EXPECT_TRUE(one.isName(QStringLiteral("coremidi")));
    EXPECT_EQ(one.alternatives(), QStringLiteral("auto|coremidi"));
    EXPECT_EQ(one.sentence(), QStringLiteral("auto or coremidi"));

    EXPECT_EQ(MidiSystemTable({}).sentence(), QStringLiteral("auto"));
}

} // namespace
} // namespace tavro
