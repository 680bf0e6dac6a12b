#include "Updates/Manifest/InternetDate.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

/// Seconds since 1970; -1 for no date.
std::int64_t seconds(std::string_view text) {
    const auto date = InternetDate::parse(text);
    return date ? date->time_since_epoch().count() : -1;
}

TEST(InternetDateTest, countsFromTheFirstOfJanuary1970) {
    EXPECT_EQ(seconds("1970-01-01T00:00:00Z"), 0);
    EXPECT_EQ(seconds("2025-03-01T09:30:00Z"), 1740821400);
    EXPECT_EQ(seconds("2024-02-29T23:59:59Z"), 1709251199);
}

TEST(InternetDateTest, knowsZones) {
    EXPECT_EQ(seconds("2025-03-01T10:30:00+01:00"), 1740821400);
    EXPECT_EQ(seconds("2025-03-01T04:00:00-05:30"), 1740821400);
    EXPECT_EQ(seconds("2025-03-01T09:30:00+00:00"), 1740821400);
    EXPECT_EQ(seconds("2025-03-01T09:30:00-00:00"), 1740821400);
}

TEST(InternetDateTest, refusesEverythingElse) {
    for (const auto* text : {"",
                             "Z",
                             "2025-03-01",
                             "2025-03-01T09:30:00",
                             "2025-03-01T09:30:00.000Z",
                             "2025-03-01T09:30Z",
                             "2025-03-01 09:30:00Z",
                             "2025-03-01t09:30:00z",
                             "2025-02-29T00:00:00Z",
                             "2025-13-01T00:00:00Z",
                             "2025-00-01T00:00:00Z",
                             "2025-01-00T00:00:00Z",
                             "2025-01-32T00:00:00Z",
                             "2025-03-01T24:00:00Z",
                             "2025-03-01T09:60:00Z",
                             "2025-03-01T09:30:60Z",
                             "2025-03-01T09:30:00+0100",
                             "2025-03-01T09:30:00+01",
                             "2025-03-01T09:30:00 01:00",
                             "2025-03-01T09:30:00+24:00",
                             "2025-03-01T09:30:00+01:60",
                             "2025-03-01T09:30:00ZZ",
                             " 2025-03-01T09:30:00Z",
                             "2025-03-01T09:30:00Z ",
                             "-025-03-01T09:30:00Z",
                             "20250301T093000Z",
                             "2025-3-1T9:30:00Z",
                             "2025-W09-6T09:30:00Z",
                             "2025-03-01T09:30:00+",
                             "2025-03-01T09:30:00+1:00"}) {
        EXPECT_FALSE(InternetDate::parse(text)) << text;
    }
}

} // namespace
} // namespace tavro
