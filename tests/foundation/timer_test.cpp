#include "foundation/timer.h"

#include <gtest/gtest.h>

namespace {

// A counter in whole seconds that the test moves on.
struct ManualClock {
    std::int64_t now = 1000;
    HvTimer::Counter Counter() {
        return [this] { return now; };
    }
};

std::wstring TextAfter(std::int64_t seconds) {
    ManualClock clock;
    HvTimer timer(clock.Counter(), 1);
    clock.now += seconds;
    return timer.ElapsedText();
}

}  // namespace

TEST(HvTimerTest, ElapsedTextKeepsItsOwnArithmetic) {
    EXPECT_EQ(TextAfter(0), L"0 seconds");
    EXPECT_EQ(TextAfter(59), L"59 seconds");
    EXPECT_EQ(TextAfter(60), L"1 minutes, 0 seconds");
    EXPECT_EQ(TextAfter(3599), L"59 minutes, 59 seconds");
    // The seconds take off only the minutes, never the hours; from the first day on the
    // minutes keep 1440 for each day.
    EXPECT_EQ(TextAfter(3600), L"1 hrs, 0 minutes, 3600 seconds");
    EXPECT_EQ(TextAfter(3661), L"1 hrs, 1 minutes, 3601 seconds");
    EXPECT_EQ(TextAfter(86399), L"23 hrs, 59 minutes, 82859 seconds");
    EXPECT_EQ(TextAfter(90061), L"1 dats, 1 hrs, 1441 minutes, 3601 seconds");
}

TEST(HvTimerTest, StartRestartsTheCount) {
    ManualClock clock;
    HvTimer timer(clock.Counter(), 4);
    clock.now += 10;
    EXPECT_DOUBLE_EQ(timer.ElapsedSeconds(), 2.5);
    timer.Start(false);
    clock.now += 2;
    EXPECT_DOUBLE_EQ(timer.ElapsedSeconds(), 0.5);
}

TEST(HvTimerTest, DayCountsRoundTripAroundTheirEpoch) {
    const HvCalendarTime samples[] = {{1899, 12, 30, 0, 0, 0},   {1899, 12, 29, 18, 0, 0},
                                      {1900, 3, 1, 12, 30, 15},  {2000, 2, 29, 23, 59, 59},
                                      {2024, 12, 31, 6, 0, 1},   {100, 1, 1, 0, 0, 0},
                                      {9999, 12, 31, 23, 59, 59}};
    for (const auto& time : samples) {
        double days = 0;
        HvCalendarTime back;
        ASSERT_TRUE(CalendarToDayCount(time, days));
        ASSERT_TRUE(DayCountToCalendar(days, back));
        EXPECT_EQ(back.year, time.year);
        EXPECT_EQ(back.month, time.month);
        EXPECT_EQ(back.day, time.day);
        EXPECT_EQ(back.hour * 3600 + back.minute * 60 + back.second,
                  time.hour * 3600 + time.minute * 60 + time.second);
    }
    double days = 0;
    ASSERT_TRUE(CalendarToDayCount({1899, 12, 29, 18, 0, 0}, days));
    EXPECT_DOUBLE_EQ(days, -1.75);
    ASSERT_TRUE(CalendarToDayCount({2000, 1, 1, 12, 0, 0}, days));
    EXPECT_DOUBLE_EQ(days, 36526.5);
    EXPECT_FALSE(CalendarToDayCount({2000, 13, 1, 0, 0, 0}, days));
    HvCalendarTime out;
    EXPECT_FALSE(DayCountToCalendar(1e12, out));
}
