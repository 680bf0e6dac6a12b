#include "Platform/Linux/Jack/MessageHandover.h"
#include "Platform/Linux/Jack/MessageMerge.h"
#include "Platform/Linux/Jack/RecordedPeriods.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace tavro::jack {
namespace {

constexpr std::uint32_t frames = 256;
constexpr std::uint32_t start = 10 * frames;

/// Periods that follow each other, and where each message lies in them, by its first byte.
class Player {
public:
    explicit Player(std::uint32_t length, std::uint32_t firstStart) : length_(length), next_(firstStart) {}

    void play(std::uint32_t periods = 1) {
        for (std::uint32_t count = 0; count < periods; ++count) {
            target.events.clear();
            lost += merge_.fill(next_, length_, target);
            for (const auto& event : target.events) {
                places.emplace(event.bytes.front(), next_ + event.offset);
                order.push_back(event.bytes.front());
            }
            next_ += length_;
        }
    }

    void send(std::uint8_t value, std::uint16_t port = 0) { EXPECT_TRUE(handover.send(port, Bytes{value})); }

    MidiTicket schedule(std::uint8_t value, std::uint32_t delay, std::uint16_t port = 0) {
        const auto ticket = handover.schedule(port, Bytes{value}, delay);
        EXPECT_TRUE(ticket.has_value());
        return ticket.value_or(0);
    }

    /// The first note at once, and three more.
    std::vector<MidiTicket> strum(std::uint32_t stamp, std::uint32_t step, std::uint8_t first = 0) {
        std::vector<MidiTicket> tickets;
        handover.begin(stamp);
        send(first);
        for (std::uint8_t note = 1; note < 4; ++note) {
            tickets.push_back(schedule(static_cast<std::uint8_t>(first + note), note * step));
        }
        handover.end();
        return tickets;
    }

    [[nodiscard]] std::uint32_t nextStart() const { return next_; }

    using Places = std::map<std::uint8_t, std::uint32_t>;

    MessageRing ring{4096};
    ScheduledMessages scheduled;
    MessageHandover handover{ring, scheduled};
    RecordedPeriods target;
    Places places;
    std::vector<std::uint8_t> order;
    std::size_t lost = 0;

private:
    MessageMerge merge_{ring, scheduled};
    std::uint32_t length_;
    std::uint32_t next_;
};

using Places = Player::Places;

TEST(Gesture, LiesOnePeriodAfterItsStamp) {
    Player player(frames, start);
    player.strum(start - 100, 200);
    player.play(4);
    EXPECT_EQ(player.places,
              (Places{{0, start + 156}, {1, start + 356}, {2, start + 556}, {3, start + 756}}));
}

TEST(Gesture, ThatComesLateIsLateAsAWhole) {
    Player player(frames, start);
    player.strum(start - 3 * frames, 100);
    player.play(4);
    EXPECT_EQ(player.places, (Places{{0, start}, {1, start + 100}, {2, start + 200}, {3, start + 300}}));
}

TEST(Gesture, WhoseStampIsAheadOfTheFramesIsEarlyAsAWhole) {
    Player player(frames, start);
    player.strum(start + 7 * frames, 100);
    player.play(4);
    constexpr auto first = start + frames - 1;
    EXPECT_EQ(player.places, (Places{{0, first}, {1, first + 100}, {2, first + 200}, {3, first + 300}}));
}

TEST(Gesture, DownwardBeginsWithItsLastNote) {
    Player player(frames, start);
    player.handover.begin(start - 5 * frames);
    player.schedule(3, 300);
    player.schedule(2, 200);
    player.play();
    player.schedule(1, 100);
    player.send(0);
    player.play();
    EXPECT_EQ(player.places, Places{});
    player.handover.end();
    player.play(4);
    constexpr auto first = start + 2 * frames;
    EXPECT_EQ(player.places, (Places{{0, first}, {1, first + 100}, {2, first + 200}, {3, first + 300}}));
}

TEST(Gesture, WithoutAFirstNoteKeepsItsDistances) {
    Player player(frames, start);
    player.handover.begin(start - 5 * frames);
    player.schedule(1, 100);
    player.schedule(2, 200);
    player.handover.end();
    player.play(4);
    EXPECT_EQ(player.places, (Places{{1, start + 100}, {2, start + 200}}));
}

TEST(Gesture, WhoseFirstNoteHasNoPortKeepsItsDistances) {
    Player player(frames, start);
    player.target.hasPorts = {true, false};
    player.handover.begin(start - 5 * frames);
    player.send(0, 1);
    player.schedule(1, 100);
    player.schedule(2, 200);
    player.handover.end();
    player.play(4);
    EXPECT_EQ(player.places, (Places{{1, start + 100}, {2, start + 200}}));
    EXPECT_EQ(player.lost, 1U);
}

TEST(Gesture, WhosePortGoesMeanwhileIsCounted) {
    Player player(frames, start);
    player.strum(start - 100, 300);
    player.play();
    player.target.hasPorts = {false, true};
    player.play(4);
    EXPECT_EQ(player.places, (Places{{0, start + 156}}));
    EXPECT_EQ(player.lost, 3U);
}

TEST(Gesture, WhoseFirstNoteFindsNoPlaceBeginsWhereItDoes) {
    Player player(16, start);
    player.target.room = 0;
    player.strum(start - 10, 40);
    player.play(3);
    player.target.room = 1;
    player.play(20);
    constexpr auto first = start + 48;
    EXPECT_EQ(player.places, (Places{{0, first}, {1, first + 40}, {2, first + 80}, {3, first + 120}}));
}

TEST(Gesture, CancelledNotesLeaveTheOthersWhereTheyAre) {
    Player player(frames, start);
    const auto tickets = player.strum(start - 2 * frames, 300);
    EXPECT_TRUE(player.scheduled.cancel(tickets[0]));
    player.play();
    EXPECT_TRUE(player.scheduled.cancel(tickets[1]));
    player.play(6);
    EXPECT_EQ(player.places, (Places{{0, start}, {3, start + 900}}));
}

TEST(Gesture, IsNotMovedByTheNextOne) {
    Player player(frames, start);
    player.strum(start - 100, 200);
    player.play();
    player.strum(start - 3 * frames, 150, 10);
    player.play();
    player.strum(start + 9 * frames, 50, 20);
    player.play(8);
    constexpr auto late = start + frames;
    constexpr auto early = start + 3 * frames - 1;
    EXPECT_EQ(player.places, (Places{{0, start + 156},
                                     {1, start + 356},
                                     {2, start + 556},
                                     {3, start + 756},
                                     {10, late},
                                     {11, late + 150},
                                     {12, late + 300},
                                     {13, late + 450},
                                     {20, early},
                                     {21, early + 50},
                                     {22, early + 100},
                                     {23, early + 150}}));
}

TEST(Gesture, WhatIsSentAfterALateNoteThatIsSettledWaitsForIt) {
    Player player(frames, start);
    const auto tickets = player.strum(start - 4 * frames, 300);
    // By the clock of the one who sends its time is over.
    player.scheduled.settle(tickets[0]);
    player.handover.begin(start - 10);
    player.send(50);
    player.handover.end();
    player.play(6);
    EXPECT_EQ(player.places,
              (Places{{0, start}, {1, start + 300}, {2, start + 600}, {3, start + 900}, {50, start + 300}}));
    EXPECT_EQ(player.order, (std::vector<std::uint8_t>{0, 1, 50, 2, 3}));
}

TEST(Gesture, LeavesAtOnceWhatWasFlushed) {
    Player player(frames, start);
    player.handover.begin(start - 100);
    player.send(0);
    player.schedule(1, 100);
    player.handover.flush();
    player.play();
    player.schedule(2, 100);
    player.handover.end();
    player.play(2);
    EXPECT_EQ(player.places, (Places{{0, start + 156}, {1, start + 256}, {2, start + 2 * frames - 156}}));
}

TEST(Gesture, ThatFindsNoRoomInTheRingIsRefusedAndNotHalfOfIt) {
    Player player(frames, start);
    player.handover.begin(start - 100);
    auto sent = 0U;
    auto scheduled = 0U;
    const auto first = player.handover.schedule(0, Bytes{1}, 100);
    for (auto count = 0U; count < 1000; ++count) {
        sent += player.handover.send(0, Bytes{0}) ? 1 : 0;
    }
    EXPECT_TRUE(first.has_value());
    EXPECT_LT(sent, 1000U);
    player.handover.end();
    player.handover.begin(start - 90);
    for (auto count = 0U; count < 10; ++count) {
        scheduled += player.handover.schedule(0, Bytes{2}, 100) ? 1 : 0;
    }
    player.handover.end();
    EXPECT_EQ(scheduled, 0U);
    player.play(2);
    EXPECT_EQ(player.places, (Places{{0, start + 156}, {1, start + 256}}));
}

struct Planned {
    std::uint8_t first;
    std::vector<std::uint32_t> delays;
    std::vector<bool> isCancelled;
};

// Whatever the estimate of the time says and however late the periods are.
RC_GTEST_PROP(GestureProperties, AnyStrumsHaveTheirDistances, ()) {
    const auto length = *rc::gen::element<std::uint32_t>(1, 16, 64, 256, 1024, 8192);
    Player player(length, *rc::gen::arbitrary<std::uint32_t>());
    std::vector<Planned> gestures;
    std::vector<MidiTicket> settled;
    const auto count = *rc::gen::inRange<unsigned>(1, 12);
    for (auto number = 0U; number < count; ++number) {
        Planned planned{.first = static_cast<std::uint8_t>(16 * number), .delays = {}, .isCancelled = {}};
        const auto spread = *rc::gen::element<std::uint32_t>(1, 20, 1000, 1'000'000);
        const auto error = *rc::gen::inRange<std::int64_t>(-1000, 1000) * spread;
        const auto notes = *rc::gen::inRange<std::uint8_t>(0, 9);
        const auto step = *rc::gen::inRange<std::uint32_t>(1, 2400);
        const auto isDownward = *rc::gen::arbitrary<bool>();
        player.handover.begin(player.nextStart() + static_cast<std::uint32_t>(error));
        std::vector<MidiTicket> tickets;
        if (!isDownward) {
            player.send(planned.first);
        }
        for (std::uint8_t note = 1; note <= notes; ++note) {
            planned.delays.push_back((isDownward ? notes + 1 - note : note) * step);
            tickets.push_back(
                player.schedule(static_cast<std::uint8_t>(planned.first + note), planned.delays.back()));
            player.play(*rc::gen::weightedElement<std::uint32_t>({{9, 0}, {1, 2}}));
        }
        if (isDownward) {
            player.send(planned.first);
        }
        player.handover.end();
        player.play(*rc::gen::inRange<std::uint32_t>(0, 4));
        for (const auto ticket : tickets) {
            const auto fate = *rc::gen::inRange(0, 8);
            planned.isCancelled.push_back(fate == 0 && player.scheduled.cancel(ticket));
            if (fate == 1) {
                player.scheduled.settle(ticket);
            }
        }
        gestures.push_back(planned);
    }
    // Behind all that is settled.
    for (auto periods = 0U; periods < 400'000 && (!player.ring.isEmpty() || periods < 9 * 2400 / length + 2);
         ++periods) {
        player.play();
    }
    RC_ASSERT(player.ring.isEmpty());
    player.play(9 * 2400 / length + 2);
    for (const auto& planned : gestures) {
        const auto first = player.places.find(planned.first);
        RC_ASSERT(first != player.places.end());
        for (std::size_t index = 0; index < planned.delays.size(); ++index) {
            const auto note = static_cast<std::uint8_t>(planned.first + index + 1);
            const auto place = player.places.find(note);
            RC_ASSERT((place == player.places.end()) == planned.isCancelled[index]);
            if (place != player.places.end()) {
                RC_ASSERT(place->second - first->second == planned.delays[index]);
            }
        }
    }
}

} // namespace
} // namespace tavro::jack
