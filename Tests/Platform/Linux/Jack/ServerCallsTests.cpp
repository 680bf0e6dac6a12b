#include "Platform/Linux/Jack/ServerCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <mutex>
#include <vector>

namespace tavro::jack {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// For what is sure to come.
constexpr auto longPatience = 60s;

/// A server that answers when it is told to.
class Server {
public:
    void answer() { answer_.set_value(); }

    [[nodiscard]] std::function<void()> call() const {
        return [answered = answered_] { answered.wait(); };
    }

private:
    std::promise<void> answer_;
    std::shared_future<void> answered_{answer_.get_future()};
};

TEST(ServerCalls, WaitForTheirAnswer) {
    ServerCalls calls;
    int result = 0;
    EXPECT_TRUE(calls.make([&result] { result = 1; }, longPatience));
    EXPECT_EQ(result, 1);
    EXPECT_FALSE(calls.isUnanswered());
}

TEST(ServerCalls, AreMadeOneAfterTheOther) {
    ServerCalls calls;
    std::vector<int> order;
    calls.makeSometime([&order] { order.push_back(1); }, 0ms);
    calls.makeSometime([&order] { order.push_back(2); }, 0ms);
    EXPECT_TRUE(calls.make([&order] { order.push_back(3); }, longPatience));
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(ServerCalls, WithoutAnAnswerHoldUpNobody) {
    Server server;
    std::atomic<int> late = 0;
    ServerCalls calls([&late] { ++late; });
    EXPECT_FALSE(calls.make(server.call(), 1ms));
    EXPECT_TRUE(calls.isUnanswered());
    // Made behind it, however long that may take, and not waited for.
    const auto isMade = std::make_shared<std::promise<void>>();
    calls.makeSometime([isMade] { isMade->set_value(); }, longPatience);
    server.answer();
    EXPECT_EQ(isMade->get_future().wait_for(longPatience), std::future_status::ready);
    EXPECT_TRUE(calls.make([] {}, longPatience));
    EXPECT_FALSE(calls.isUnanswered());
    // Both, and not the one that was waited for.
    EXPECT_EQ(late, 2);
}

TEST(ServerCalls, TellOfNoLateAnswerWhenNobodyGaveUp) {
    int told = 0;
    ServerCalls calls([&told] { ++told; });
    EXPECT_TRUE(calls.make([] {}, longPatience));
    EXPECT_TRUE(calls.make([] {}, longPatience));
    EXPECT_EQ(told, 0);
}

TEST(ServerCalls, GoOnWhenNobodyIsThereAnyMore) {
    Server server;
    std::promise<void> end;
    auto owned = std::shared_ptr<int>(new int(1), [&end](const int* number) {
        delete number;
        end.set_value();
    });
    {
        ServerCalls calls([] { ADD_FAILURE() << "told of a late answer"; });
        calls.makeSometime(server.call(), 1ms);
        calls.makeSometime([last = std::move(owned)]() mutable { last.reset(); }, 1ms);
    }
    server.answer();
    EXPECT_EQ(end.get_future().wait_for(longPatience), std::future_status::ready);
}

} // namespace
} // namespace tavro::jack
