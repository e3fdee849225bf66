#include "support/Fakes.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <atomic>

#include <dlfcn.h>
#include <sys/time.h>

// The dates in the record of runs, with the clock stopped.

using support::FakeDocument;

namespace {

std::atomic<long long> s_stopped_at{-1}; // in seconds since 1970; below 0 the clock runs

/// The date of a run at that moment, in Greenwich.
std::string recorded_at(int year, int month, int day, int hour, int minute, int second)
{
    qputenv("TZ", "UTC");
    s_stopped_at
        = QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC).toSecsSinceEpoch();
    FakeDocument document;
    document.add_history();
    s_stopped_at = -1;
    return document.history_begin()->date();
}

} // namespace

/// Stands before the C library's, with which Qt reads the clock.
extern "C" __attribute__((visibility("default"))) int gettimeofday(timeval* p_time, void* p_zone) noexcept
{
    if (s_stopped_at >= 0) {
        *p_time = {static_cast<time_t>(s_stopped_at), 0};
        return 0;
    }
    typedef int (*Function)(timeval*, void*);
    static const Function s_p_real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "gettimeofday"));
    return s_p_real(p_time, p_zone);
}

TEST(AbstractDocument, RecordsNumbersOfOneDigitWithoutPadding)
{
    EXPECT_EQ("2021-3-7 9:5:2", recorded_at(2021, 3, 7, 9, 5, 2));
    EXPECT_EQ("2022-1-1 0:0:0", recorded_at(2022, 1, 1, 0, 0, 0));
}

TEST(AbstractDocument, RecordsNumbersOfTwoDigitsInFull)
{
    EXPECT_EQ("2021-11-17 23:45:59", recorded_at(2021, 11, 17, 23, 45, 59));
    EXPECT_EQ("2020-10-20 12:10:10", recorded_at(2020, 10, 20, 12, 10, 10));
}
