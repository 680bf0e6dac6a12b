#include "Player/MidiFile.h"

#include <gtest/gtest.h>

#include <array>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<std::uint8_t>;

constexpr std::array<std::uint8_t, 3> noteOn{0x90, 60, 100};
constexpr std::array<std::uint8_t, 3> noteOff{0x80, 60, 0};

Bytes trackOf(const MidiFile& file) {
    const auto bytes = file.bytes();
    return {bytes.begin() + 22, bytes.end()};
}

TEST(MidiFile, beginsWithAHeaderOfOneTrackInMilliseconds) {
    const auto bytes = MidiFile().bytes();
    const Bytes header{'M', 'T',      'h',        'd', 0,   0,   0,   6, 0, 0, 0,
                       1,   500 >> 8, 500 & 0xFF, 'M', 'T', 'r', 'k', 0, 0, 0, 11};
    ASSERT_GE(bytes.size(), header.size());
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 22), header);
    EXPECT_EQ(trackOf(MidiFile()), (Bytes{0, 0xFF, 0x51, 3, 0x07, 0xA1, 0x20, 0, 0xFF, 0x2F, 0}));
}

struct Wait {
    std::chrono::milliseconds time;
    Bytes encoded;
};

class Waits : public testing::TestWithParam<Wait> {};

TEST_P(Waits, areWrittenInGroupsOfSevenBits) {
    MidiFile file;
    file.add(GetParam().time, noteOn);
    auto expected = GetParam().encoded;
    expected.insert(expected.end(), noteOn.begin(), noteOn.end());
    const auto track = trackOf(file);
    EXPECT_EQ(Bytes(track.begin() + 7, track.end() - 4), expected);
}

INSTANTIATE_TEST_SUITE_P(MidiFile, Waits,
                         testing::Values(Wait{0ms, {0}}, Wait{127ms, {0x7F}}, Wait{128ms, {0x81, 0}},
                                         Wait{16383ms, {0xFF, 0x7F}}, Wait{16384ms, {0x81, 0x80, 0}},
                                         Wait{268435455ms, {0xFF, 0xFF, 0xFF, 0x7F}},
                                         Wait{268435456ms, {0xFF, 0xFF, 0xFF, 0x7F}}));

TEST(MidiFile, countsFromTheMessageBefore) {
    MidiFile file;
    file.add(10ms, noteOn);
    file.add(30ms, noteOff);
    const auto track = trackOf(file);
    EXPECT_EQ(Bytes(track.begin() + 7, track.end() - 4), (Bytes{10, 0x90, 60, 100, 20, 0x80, 60, 0}));
}

} // namespace
} // namespace tavro
