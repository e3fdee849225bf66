#include "faults/FaultRounds.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <iostream>
#include <string>

#include <fcntl.h>

namespace faults {

namespace {

const Fault s_faults[] = {{Manner::Once, ENOSPC}, {Manner::FromThenOn, ENOSPC}, {Manner::Once, EIO},
    {Manner::FromThenOn, EIO}, {Manner::Once, EMFILE}, {Manner::FromThenOn, EMFILE}, {Manner::Once, EACCES},
    {Manner::FromThenOn, EACCES}, {Manner::Once, EINTR}, {Manner::Once, ENOLCK}, {Manner::FromThenOn, ENOLCK},
    {Manner::Short, 0}, {Manner::ShortThenError, ENOSPC}};
const std::size_t s_most_failing_rounds = 10;

} // namespace

std::size_t open_descriptors()
{
    std::size_t count = 0;
    std::size_t places = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int flags = ::fcntl(std::stoi(entry.path().filename().string()), F_GETFL);
        ++((flags & O_PATH) != 0 ? places : count);
    }
    EXPECT_LE(places, 1u) << "the log keeps its directory, and nothing else";
    return count;
}

int failed_checks()
{
    const testing::TestResult& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    int count = 0;
    for (int i = 0; i < result.total_part_count(); ++i) {
        count += result.GetTestPartResult(i).failed() ? 1 : 0;
    }
    return count;
}

void report_fault_count(const std::string& name, std::size_t points, std::size_t faults, std::size_t survived)
{
    const std::string text = std::to_string(points) + " points, " + std::to_string(faults) + " faults, "
        + std::to_string(survived) + " survived";
    std::cout << "FaultCount " << name << ": " << text << std::endl;
    testing::Test::RecordProperty("FaultCount" + name, text);
}

FaultRounds::FaultRounds(const std::string& name, const std::string& path_part)
    : m_name(name)
    , m_path_part(path_part)
{ }

std::vector<SystemFaults::Point> FaultRounds::count_points()
{
    prepare();
    std::vector<SystemFaults::Point> points;
    {
        const SystemFaults counting(m_path_part);
        act();
        points = counting.points();
    }
    check(Fault());
    return points;
}

void FaultRounds::run_one(const SystemFaults::Point& point, std::size_t number, const Fault& fault)
{
    SCOPED_TRACE(m_name + ", call " + std::to_string(number) + ", " + text(point) + ", " + text(fault));
    const int failed_before = failed_checks();
    m_p_point = &point;
    m_is_lost = false;
    prepare();
    const std::size_t descriptors = open_descriptors();
    std::size_t failures = 0;
    {
        const SystemFaults failing(m_path_part, number, fault);
        act();
        failures = failing.failures();
    }
    EXPECT_TRUE(failures > 0 || !is_repeatable) << "the call was not made again";
    if (keeps_descriptors) {
        EXPECT_EQ(open_descriptors(), descriptors);
    }
    check(fault);
    m_p_point = nullptr;
    if (failures > 0) {
        ++m_rounds;
        m_survived += failed_checks() == failed_before && !m_is_lost ? 1 : 0;
    }
}

void FaultRounds::run()
{
    count_points(); // what is made only once, is
    const std::vector<SystemFaults::Point> points = count_points();
    ASSERT_FALSE(points.empty()) << m_name << ": no call was seen";
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (const Fault& fault : s_faults) {
            if (points[i].call == Call::Lock && !with_locks) {
                continue;
            }
            if (is_possible(points[i].call, fault) && m_rounds - m_survived < s_most_failing_rounds) {
                run_one(points[i], i, fault);
            }
        }
    }
    EXPECT_GT(m_rounds, 0u);
    report_fault_count(m_name, points.size(), m_rounds, m_survived);
}

} // namespace faults
