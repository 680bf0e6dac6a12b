#include "Platform/Linux/Jack/GraphWatch.h"

#include "Concurrency/VirtualMainActor.h"

#include <gtest/gtest.h>

#include <optional>

namespace tavro::jack {
namespace {

class GraphNoticesTest : public testing::Test {
protected:
    VirtualMainActor mainActor;
    int changes = 0;
    int losses = 0;
    std::optional<GraphNotices> notices{std::in_place, mainActor, [this] { ++changes; },
                                        [this] { ++losses; }};
    /// As the server's threads hold it.
    std::shared_ptr<GraphNotices::Line> line = notices->line();
};

TEST_F(GraphNoticesTest, ManyChangesAreOneCall) {
    line->announceChange();
    line->announceChange();
    EXPECT_EQ(changes, 0);
    mainActor.runDue();
    EXPECT_EQ(changes, 1);
    line->announceChange();
    mainActor.runDue();
    EXPECT_EQ(changes, 2);
}

TEST_F(GraphNoticesTest, ALossIsToldBehindTheChangesBeforeIt) {
    line->announceChange();
    line->announceLoss();
    mainActor.runDue();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(losses, 1);
}

TEST_F(GraphNoticesTest, NothingIsToldWhenNobodyListensAnyMore) {
    line->announceChange();
    line->announceLoss();
    notices.reset();
    mainActor.runDue();
    line->announceChange();
    line->announceLoss();
    mainActor.runDue();
    EXPECT_EQ(changes + losses, 0);
}

TEST_F(GraphNoticesTest, WhoIsToldMayEndIt) {
    notices.emplace(mainActor, [this] { notices.reset(); }, [this] { ++losses; });
    line = notices->line();
    line->announceChange();
    line->announceLoss();
    mainActor.runDue();
    EXPECT_FALSE(notices);
    EXPECT_EQ(losses, 0);
}

} // namespace
} // namespace tavro::jack
