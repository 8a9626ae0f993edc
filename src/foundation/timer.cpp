#include "foundation/timer.h"

#include <chrono>
#include <cmath>
#include <ctime>
#include <cwchar>

namespace {

std::int64_t SteadyNanoseconds() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// Days from 1970-01-01 of a proleptic Gregorian date.
std::int64_t DaysFromCivil(std::int64_t y, int m, int d) {
    y -= m <= 2;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const std::int64_t yoe = y - era * 400;
    const std::int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

constexpr std::int64_t kDaysFrom1899To1970 = 25569;

bool LocalNow(HvCalendarTime& now) {
    const std::time_t seconds = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &seconds) != 0)
        return false;
#else
    if (localtime_r(&seconds, &local) == nullptr)
        return false;
#endif
    now = {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
           local.tm_hour,        local.tm_min,     local.tm_sec};
    return true;
}

}  // namespace

bool CalendarToDayCount(const HvCalendarTime& t, double& days) {
    if (t.year < 100 || t.year > 9999 || t.month < 1 || t.month > 12 || t.day < 1 || t.day > 31 ||
        t.hour < 0 || t.hour > 23 || t.minute < 0 || t.minute > 59 || t.second < 0 ||
        t.second > 59) {
        return false;
    }
    const std::int64_t whole = DaysFromCivil(t.year, t.month, t.day) + kDaysFrom1899To1970;
    const double fraction = (t.hour * 3600 + t.minute * 60 + t.second) / 86400.0;
    // Before 1899-12-30 the fraction counts away from zero, as in the host's date values.
    days =
        whole < 0 ? static_cast<double>(whole) - fraction : static_cast<double>(whole) + fraction;
    return true;
}

bool DayCountToCalendar(double days, HvCalendarTime& t) {
    if (!std::isfinite(days) || days < -657434.0 || days > 2958466.0)
        return false;
    const double whole = std::trunc(days);
    std::int64_t seconds = std::llround(std::fabs(days - whole) * 86400.0);
    std::int64_t z = static_cast<std::int64_t>(whole) - kDaysFrom1899To1970 + 719468;
    if (seconds >= 86400) {
        seconds -= 86400;
        z += 1;
    }
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const std::int64_t doe = z - era * 146097;
    const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const std::int64_t mp = (5 * doy + 2) / 153;
    t.day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    t.month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    t.year = static_cast<int>(yoe + era * 400 + (t.month <= 2));
    t.hour = static_cast<int>(seconds / 3600);
    t.minute = static_cast<int>(seconds / 60 % 60);
    t.second = static_cast<int>(seconds % 60);
    return true;
}

HvTimer::HvTimer() : HvTimer(SteadyNanoseconds, 1'000'000'000) {}

HvTimer::HvTimer(Counter counter, std::int64_t frequency)
    : m_frequency(frequency > 0 ? frequency : 1), m_counter(std::move(counter)) {
    Start(true);
}

void HvTimer::Start(bool stamp) {
    m_startCount = m_counter();
    if (!stamp)
        return;
    // The moment goes to a day count and back; any field that does not come back the same
    // marks it invalid.
    HvCalendarTime now;
    HvCalendarTime back;
    double days = 0.0;
    const bool valid = LocalNow(now) && CalendarToDayCount(now, days) &&
                       DayCountToCalendar(days, back) && back.year == now.year &&
                       back.month == now.month && back.day == now.day && back.hour == now.hour &&
                       back.minute == now.minute && back.second == now.second;
    m_startTime.m_dt = days;
    m_startTime.m_status = valid ? 0 : 1;
}

double HvTimer::ElapsedSeconds() const {
    return static_cast<double>(m_counter() - m_startCount) / static_cast<double>(m_frequency);
}

std::wstring HvTimer::ElapsedText() const {
    // Kept as it always was: each value reads the clock anew, the minutes keep 1440 for each
    // day, and the seconds take off only the minutes. "dats" is the text users know.
    const int days = static_cast<int>(ElapsedSeconds() / 60 / 60 / 24);
    const int hours = static_cast<int>(ElapsedSeconds() / 60 / 60 - days * 24);
    const int minutes = static_cast<int>(ElapsedSeconds() / 60 - hours * 60);
    const int secs = static_cast<int>(ElapsedSeconds() - minutes * 60);
    wchar_t text[128];
    if (days >= 1) {
        std::swprintf(text, 128, L"%i dats, %i hrs, %i minutes, %i seconds", days, hours, minutes,
                      secs);
    } else if (hours >= 1) {
        std::swprintf(text, 128, L"%i hrs, %i minutes, %i seconds", hours, minutes, secs);
    } else if (minutes >= 1) {
        std::swprintf(text, 128, L"%i minutes, %i seconds", minutes, secs);
    } else {
        std::swprintf(text, 128, L"%i seconds", secs);
    }
    return text;
}
