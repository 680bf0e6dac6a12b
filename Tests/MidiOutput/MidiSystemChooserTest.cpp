#include "MidiOutput/MidiSystemChooser.h"

#include "Platform/Headless/MidiSystemAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;

class Choosing : public testing::Test {
protected:
    MidiSystemChooser::Candidate candidate(const QString& name, std::int32_t status) {
        return {name, [this, name, status] {
                    tried.push_back(name.toStdString());
                    auto system = std::make_unique<headless::MidiSystemAdapter>();
                    system->clientStatus = status;
                    made = system.get();
                    return system;
                }};
    }

    std::vector<std::string> tried;
    headless::MidiSystemAdapter* made = nullptr;
};

TEST_F(Choosing, takesTheFirstThatWorksAndTriesNoOther) {
    const auto choice =
        MidiSystemChooser({candidate(QStringLiteral("alsa"), 0), candidate(QStringLiteral("jack"), 0)})
            .choose(QStringLiteral("auto"));
    EXPECT_THAT(tried, ElementsAre("alsa"));
    EXPECT_EQ(choice.system.get(), made);
    EXPECT_TRUE(choice.failures.empty());
}

TEST_F(Choosing, leavesNoClientBehind) {
    const auto choice =
        MidiSystemChooser({candidate(QStringLiteral("jack"), 0)}).choose(QStringLiteral("jack"));
    EXPECT_THAT(made->calls, ElementsAre("client TAVRO", "dispose client 1"));
}

TEST_F(Choosing, goesOnAfterAFailureAndTellsIt) {
    const auto choice =
        MidiSystemChooser({candidate(QStringLiteral("alsa"), -2), candidate(QStringLiteral("jack"), 0)})
            .choose(QStringLiteral("auto"));
    EXPECT_THAT(tried, ElementsAre("alsa", "jack"));
    EXPECT_EQ(choice.system.get(), made);
    EXPECT_EQ(choice.reasons(), "alsa failed with -2");
}

TEST_F(Choosing, tellsAllReasonsWhenNoneWorks) {
    const auto choice =
        MidiSystemChooser({candidate(QStringLiteral("alsa"), -2), candidate(QStringLiteral("jack"), -17)})
            .choose(QStringLiteral("auto"));
    EXPECT_EQ(choice.system, nullptr);
    EXPECT_EQ(choice.reasons(), "alsa failed with -2, jack failed with -17");
    EXPECT_EQ(choice.failures.back().status, -17);
}

TEST_F(Choosing, triesOnlyTheOneThatIsNamed) {
    const MidiSystemChooser chooser(
        {candidate(QStringLiteral("alsa"), 0), candidate(QStringLiteral("jack"), -17)});
    EXPECT_EQ(chooser.choose(QStringLiteral("jack")).system, nullptr);
    EXPECT_THAT(tried, ElementsAre("jack"));
}

TEST_F(Choosing, aNameWithoutACandidateHasNothing) {
    const auto choice =
        MidiSystemChooser({candidate(QStringLiteral("jack"), 0)}).choose(QStringLiteral("alsa"));
    EXPECT_EQ(choice.system, nullptr);
    EXPECT_EQ(choice.reasons(), "this program was built without it");
}

TEST(MidiSystemNames, areThree) {
    for (const auto* name : {"auto", "alsa", "jack"}) {
        EXPECT_TRUE(MidiSystemChooser::isName(QString::fromLatin1(name))) << name;
    }
    for (const auto* name : {"", "ALSA", "headless"}) {
        EXPECT_FALSE(MidiSystemChooser::isName(QString::fromLatin1(name))) << name;
    }
}

} // namespace
} // namespace tavro
