#include "Platform/Linux/Alsa/MessageEncoder.h"

#include <gtest/gtest.h>

#include <vector>

namespace tavro::alsa {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Encoded {
    bool isWhole = false;
    std::vector<snd_seq_event_t> events;
    /// What the events carry beside themselves, one after the other.
    Bytes data;
};

Encoded encode(MessageEncoder& encoder, const Bytes& message) {
    Encoded encoded;
    encoded.isWhole = encoder.encode(message, [&](snd_seq_event_t& event) {
        encoded.events.push_back(event);
        if (snd_seq_ev_is_variable(&event)) {
            const auto* data = static_cast<const std::uint8_t*>(event.data.ext.ptr);
            encoded.data.insert(encoded.data.end(), data, data + event.data.ext.len);
        }
    });
    return encoded;
}

TEST(MessageEncoder, Notes) {
    MessageEncoder encoder;
    for (const auto& [status, type] :
         {std::pair{0x90, SND_SEQ_EVENT_NOTEON}, {0x80, SND_SEQ_EVENT_NOTEOFF}}) {
        const auto [isWhole, events, data] =
            encode(encoder, {static_cast<std::uint8_t>(status | 15), 127, 0});
        EXPECT_TRUE(isWhole);
        ASSERT_EQ(events.size(), 1U);
        EXPECT_EQ(events[0].type, type);
        EXPECT_EQ(events[0].data.note.channel, 15);
        EXPECT_EQ(events[0].data.note.note, 127);
        EXPECT_EQ(events[0].data.note.velocity, 0);
    }
}

TEST(MessageEncoder, ControlChange) {
    MessageEncoder encoder;
    const auto [isWhole, events, data] = encode(encoder, {0xB2, 123, 7});
    EXPECT_TRUE(isWhole);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].type, SND_SEQ_EVENT_CONTROLLER);
    EXPECT_EQ(events[0].data.control.channel, 2);
    EXPECT_EQ(events[0].data.control.param, 123U);
    EXPECT_EQ(events[0].data.control.value, 7);
}

TEST(MessageEncoder, LongSystemExclusiveIsCutAndLosesNothing) {
    MessageEncoder encoder;
    Bytes message(3 * MessageEncoder::longestPiece, 0x11);
    message.front() = 0xF0;
    message.back() = 0xF7;
    const auto [isWhole, events, data] = encode(encoder, message);
    EXPECT_TRUE(isWhole);
    EXPECT_GE(events.size(), 3U);
    EXPECT_EQ(data, message);
}

TEST(MessageEncoder, PartOfAMessageIsNone) {
    MessageEncoder encoder;
    for (const auto& part : {Bytes{}, {0x90}, {0x90, 60}, {60, 100}, {0xF0, 1, 2}}) {
        const auto [isWhole, events, data] = encode(encoder, part);
        EXPECT_FALSE(isWhole);
        EXPECT_TRUE(events.empty());
    }
}

TEST(MessageEncoder, NothingIsLeftOfThePartForTheNextMessage) {
    MessageEncoder encoder;
    encode(encoder, {0x90, 60});
    EXPECT_TRUE(encode(encoder, {100, 61, 101}).events.empty());
    encode(encoder, {0x90, 60});
    const auto [isWhole, events, data] = encode(encoder, {0x81, 62, 3});
    EXPECT_TRUE(isWhole);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].type, SND_SEQ_EVENT_NOTEOFF);
    EXPECT_EQ(events[0].data.note.channel, 1);
    EXPECT_EQ(events[0].data.note.note, 62);
    EXPECT_EQ(events[0].data.note.velocity, 3);
}

TEST(MessageEncoder, WholeMessageWithARestIsDeliveredAndTheRestTold) {
    MessageEncoder encoder;
    const auto [isWhole, events, data] = encode(encoder, {0x90, 60, 1, 0x80});
    EXPECT_FALSE(isWhole);
    EXPECT_EQ(events.size(), 1U);
}

} // namespace
} // namespace tavro::alsa
