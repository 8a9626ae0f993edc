#pragma once
// A stopwatch that can say its elapsed time as text.

#include <cstdint>
#include <functional>
#include <string>

// A wall-clock moment as a day count since 1899-12-30 with its fraction, and whether it is valid.
struct HvDateTime {
    double m_dt = 0.0;
    int m_status = 0;  // 0 valid, 1 invalid
};

class HvTimer {
public:
    // A reading of a steadily running counter; the default counts nanoseconds.
    using Counter = std::function<std::int64_t()>;

    HvTimer();
    // For tests: a counter of `frequency` counts per second.
    HvTimer(Counter counter, std::int64_t frequency);
    virtual ~HvTimer() = default;

    // Restarts the watch; with `stamp`, also notes the wall-clock moment.
    void Start(bool stamp = true);
    double ElapsedSeconds() const;
    std::wstring ElapsedText() const;

    HvDateTime m_startTime;
    std::int64_t m_frequency = 0;
    std::int64_t m_startCount = 0;

private:
    Counter m_counter;
};

// The broken-down local time as a day count since 1899-12-30, and back; false when the fields
// are out of range.
struct HvCalendarTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};
bool CalendarToDayCount(const HvCalendarTime& time, double& days);
bool DayCountToCalendar(double days, HvCalendarTime& time);
