#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/TimerObject.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTime>

#include <gtest/gtest.h>

#include <chrono>
#include <regex>
#include <string>
#include <thread>

using namespace tarqa::housekeeping;

namespace {

typedef QList<TestAccess::Step> Steps;

std::string report(const QString& task, int milliseconds, const Steps& steps)
{
    return TestAccess::timing_report(task, milliseconds, steps).toStdString();
}

/// Whether @p text is exactly what @p pattern (ECMAScript) says, line ends included.
bool matches(const std::string& text, const std::string& pattern)
{
    return std::regex_match(text, std::regex(pattern));
}

const char* const s_number = "[0-9.e+-]+"; // 0.012, 1.5e-05

/// The first number behind @p pattern; -1 if there is none.
double number_after(const std::string& pattern, const std::string& text)
{
    std::smatch match;
    const bool found = std::regex_search(text, match, std::regex(pattern + "(" + s_number + ")"));
    return found ? std::stod(match[1].str()) : -1;
}

} // namespace

TEST(TimerObject, TaskWithoutStepsIsOneLine)
{
    EXPECT_EQ("Task Import (120 ms total)", report("Import", 120, {}));
}

TEST(TimerObject, StepsComeInFirstSeenOrderWithTheirShare)
{
    EXPECT_EQ("Task Import (200 ms total)\n"
              "  1. read in 50 ms (25.00%)\n"
              "  2. index in 149.5 ms (74.75%)",
        report("Import", 200, {{"read", 50000000, 1}, {"index", 149500000, 1}}));
}

TEST(TimerObject, RepeatedStepHasAMean)
{
    EXPECT_EQ("Task Import (200 ms total)\n"
              "  1. read in 150 ms (75.00%, mean 50000 µs)",
        report("Import", 200, {{"read", 150000000, 3}}));
}

TEST(TimerObject, TimesHaveSixSignificantDigits)
{
    EXPECT_EQ("Task Import (3000 ms total)\n"
              "  1. read in 1234.57 ms (41.15%, mean 617284 µs)\n"
              "  2. tick in 1e-06 ms (0.00%)\n"
              "  3. long in 1.23457e+07 ms (411522.63%, mean 6.17284e+09 µs)",
        report("Import", 3000, {{"read", 1234567890, 2}, {"tick", 1, 1}, {"long", 12345678900000, 2}}));
}

TEST(TimerObject, NamesMayHoldPlaceholders)
{
    EXPECT_EQ("Task %1 of %2 (100 ms total)\n"
              "  1. %3 %1 in 50 ms (50.00%)\n"
              "  2. 100%5 in 50 ms (50.00%, mean 25000 µs)",
        report("%1 of %2", 100, {{"%3 %1", 50000000, 1}, {"100%5", 50000000, 2}}));
}

TEST(TimerObject, TaskOfNoTimeStillHasAllItsLines)
{
    const std::string text = report("Import", 0, {{"read", 400000, 1}});
    EXPECT_EQ(0u, text.find("Task Import (0 ms total)\n  1. read in 0.4 ms ("));
    EXPECT_EQ(")", text.substr(text.size() - 1));
}

TEST(TimerObject, WritesItsReportOnceWhenItGoes)
{
    support::LogCapture log;
    {
        const TimerObject timer("Import");
        EXPECT_EQ("", log.text());
    }
    EXPECT_TRUE(matches(log.text(), R"(Task Import \([0-9]+ ms total\)\n)")) << log.text();
    log.take_all();
}

TEST(TimerObject, StepsAreReportedWithSumAndMean)
{
    support::LogCapture log;
    {
        TimerObject timer("Import");
        timer.addStep("read");
        timer.addStep("index");
        timer.addStep("read");
    }
    const std::string number = s_number;
    const std::string share = "([0-9]+\\.[0-9]{2}|inf|nan)%";
    const std::string pattern = "Task Import \\([0-9]+ ms total\\)\n"
                                "  1\\. read in "
        + number + " ms \\(" + share + ", mean " + number + " µs\\)\n  2\\. index in " + number + " ms \\("
        + share + "\\)\n";
    EXPECT_TRUE(matches(log.text(), pattern)) << log.text();
    log.take_all();
}

TEST(TimerObject, TimeIsCountedAcrossMidnight)
{
    const auto between
        = [](const QTime& start, const QTime& end) { return TestAccess::milliseconds_between(start, end); };
    EXPECT_EQ(0, between(QTime(12, 0), QTime(12, 0)));
    EXPECT_EQ(61001, between(QTime(12, 0), QTime(12, 1, 1, 1)));
    EXPECT_EQ(1, between(QTime(23, 59, 59, 999), QTime(0, 0)));
    EXPECT_EQ(86399999, between(QTime(0, 0, 0, 1), QTime(0, 0))); // a day but for a millisecond
}

TEST(TimerObject, TaskOfManyHoursReportsThemAll)
{
    support::LogCapture log;
    {
        TimerObject timer("Import");
        TestAccess::start(timer, QTime::currentTime().addSecs(3600)); // of yesterday, whatever the time
    }
    const double total = number_after("\\(", log.text());
    log.take_all();
    EXPECT_GE(total, 23 * 3600000.0);
    EXPECT_LT(total, 24 * 3600000.0);
}

TEST(TimerObject, CopyWritesAReportOfItsOwn)
{
    support::LogCapture log;
    {
        TimerObject timer("Import");
        timer.addStep("read");
        TimerObject copy(timer);
        copy.addStep("index");
        TimerObject assigned("Other");
        assigned = timer;
    }
    EXPECT_EQ(3, log.count("Task Import ("));
    EXPECT_EQ(3, log.count("  1. read in "));
    EXPECT_EQ(1, log.count("  2. index in "));
    EXPECT_EQ(0, log.count("Task Other"));
    log.take_all();
}

TEST(TimerObject, StepsShareTheTimeOfTheTask)
{
    const std::chrono::milliseconds pause(20);
    support::LogCapture log;
    QElapsedTimer clock;
    clock.start();
    {
        TimerObject timer("Import");
        std::this_thread::sleep_for(pause);
        timer.addStep("read");
        timer.addStep("index");
        std::this_thread::sleep_for(pause);
        timer.addStep("read");
        std::this_thread::sleep_for(pause);
    }
    const double elapsed = static_cast<double>(clock.nsecsElapsed()) * 0.000001;
    const std::string text = log.text();
    log.take_all();
    const double total = number_after("\\(", text);
    const double read = number_after("read in ", text);
    const double index = number_after("index in ", text);
    const double slack = 2; // the total has whole milliseconds at both ends
    EXPECT_GE(read, 40); // both steps of that name
    EXPECT_LE(read + index, elapsed); // no time is counted twice
    EXPECT_GE(total, read + index + 20 - slack);
    EXPECT_LE(total, elapsed + slack);
}
