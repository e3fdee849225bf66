#include "LogFiles.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <pkBase/pkDestructor.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using support::LogCapture;
using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::ErrorProtocolOutput;

const unsigned long long s_largest = std::numeric_limits<unsigned long long>::max();

class ErrorProtocolStream : public testing::Test
{
protected:
    ~ErrorProtocolStream() override { m_capture.take_all(); }

    std::string entries() const { return m_capture.text(); }

    /// What the log shows of one streamed value.
    template <class T>
    std::string written(const T& value)
    {
        const std::size_t before = entries().size();
        ErrorProtocolOutput() << value;
        return entries().substr(before);
    }

private:
    LogCapture m_capture;
};

TEST_F(ErrorProtocolStream, IsAFileStream)
{
    EXPECT_TRUE((std::is_base_of_v<std::ofstream, ErrorProtocolOutput>));
}

TEST_F(ErrorProtocolStream, EndsTheEntryWhenItGoes)
{
    {
        ErrorProtocolOutput output;
        output << "read " << 3 << " cells";
    }
    EXPECT_EQ(entries(), "read 3 cells\n");
    ErrorProtocolOutput();
    EXPECT_EQ(entries(), "read 3 cells\n\n");
}

TEST_F(ErrorProtocolStream, AppendsToTheLog)
{
    ErrorProtocol::instance().log_message("before");
    ErrorProtocolOutput() << "between";
    ErrorProtocol::instance().log_message("after");
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head() + "before\nbetween\nafter\n");
}

TEST_F(ErrorProtocolStream, MakesTheLogIfItIsTheFirstUse)
{
    EXPECT_EQ(entries(), "");
    ErrorProtocolOutput() << "first";
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head() + "first\n");
}

TEST_F(ErrorProtocolStream, WritesTheLargestNumberAsNull)
{
    EXPECT_EQ(written(s_largest), "NULL\n");
    EXPECT_EQ(written(s_largest - 1), "18446744073709551614\n");
    EXPECT_EQ(written(0ULL), "0\n");
    EXPECT_EQ(written(DocumentId::build(17).getId()), "17\n");
}

TEST_F(ErrorProtocolStream, WritesOtherNumbersAsEveryStreamDoes)
{
    EXPECT_EQ(written(-1), "-1\n");
    EXPECT_EQ(written(-1LL), "-1\n");
    EXPECT_EQ(written(3.75), "3.75\n");
    EXPECT_EQ(written(3.75f), "3.75\n");
    EXPECT_EQ(written(7UL), "7\n");
    EXPECT_EQ(written(std::numeric_limits<unsigned long>::max()), "18446744073709551615\n");
    EXPECT_EQ(written(std::size_t(12)), "12\n");
    EXPECT_EQ(written(std::numeric_limits<unsigned int>::max()), "4294967295\n");
    EXPECT_EQ(written(static_cast<short>(-5)), "-5\n");
    EXPECT_EQ(written(true), "1\n");
}

TEST_F(ErrorProtocolStream, WritesTexts)
{
    EXPECT_EQ(written("literal"), "literal\n");
    EXPECT_EQ(written(std::string("string µ")), "string µ\n");
    EXPECT_EQ(written('c'), "c\n");
}

TEST_F(ErrorProtocolStream, WritesWhatHasAStreamOperatorOfItsOwn)
{
    const tarqa::housekeeping::HousekeepingException exception(2, std::string("bad"), "file", 1);
    std::ostringstream expected;
    expected << exception << '\n';
    EXPECT_EQ(written(exception), expected.str());
    EXPECT_EQ(written(DocumentId::build(17)), "17\n");
}

TEST_F(ErrorProtocolStream, KnowsManipulators)
{
    ErrorProtocolOutput() << "a" << std::endl
                          << std::hex << 255 << std::dec << std::setw(4) << 1 << std::flush;
    EXPECT_EQ(entries(), "a\nff   1\n");
}

TEST_F(ErrorProtocolStream, NumbersStayChained)
{
    ErrorProtocolOutput() << "a " << s_largest << ' ' << 1 << ' ' << s_largest << std::endl << s_largest;
    EXPECT_EQ(entries(), "a NULL 1 NULL\nNULL\n");
}

TEST_F(ErrorProtocolStream, ServesAsAnOrdinaryStream)
{
    {
        ErrorProtocolOutput output;
        std::ostream& stream = output;
        stream << "ordinary " << 5;
        EXPECT_TRUE(stream.good());
    }
    EXPECT_EQ(entries(), "ordinary 5\n");
}

TEST_F(ErrorProtocolStream, NestedEntryOfTheSameThreadGoesToStandardError)
{
    testing::internal::CaptureStderr();
    {
        ErrorProtocolOutput output;
        output << "outer begins, ";
        ErrorProtocol::instance().log_message("inner message");
        ErrorProtocol::instance().log_assert("expression", "function", "file", 1);
        output << "outer ends";
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "inner message\nfile:1 ASSERT FAILED in function: expression\n");
    EXPECT_EQ(entries(), "outer begins, outer ends\n");

    ErrorProtocol::instance().log_message("afterwards");
    EXPECT_EQ(entries(), "outer begins, outer ends\nafterwards\n");
}

TEST_F(ErrorProtocolStream, NestedFatalTextDoesNotEmptyTheLog)
{
    testing::internal::CaptureStderr();
    {
        ErrorProtocolOutput output;
        output << "outer";
        ErrorProtocol::instance().log_fatal_error("inner");
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "FATAL ERROR!\nFurther Information: inner\n\n");
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head() + "outer\n");
}

TEST_F(ErrorProtocolStream, NestedStreamGoesToStandardError)
{
    testing::internal::CaptureStderr();
    {
        ErrorProtocolOutput outer;
        outer << "outer begins, ";
        ErrorProtocolOutput() << "inner " << s_largest;
        ErrorProtocol::instance().log_message("message");
        outer << "outer ends";
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "inner NULL\nmessage\n");
    EXPECT_EQ(entries(), "outer begins, outer ends\n");
}

TEST_F(ErrorProtocolStream, HoldsUpOtherThreads)
{
    std::atomic<bool> logged{false};
    std::thread other;
    {
        ErrorProtocolOutput output;
        output << "held" << std::flush;
        other = std::thread([&logged] {
            ErrorProtocol::instance().log_message("other");
            logged = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        EXPECT_FALSE(logged);
        output << ", done";
    }
    other.join();
    EXPECT_TRUE(logged);
    EXPECT_EQ(entries(), "held, done\nother\n");
}

TEST_F(ErrorProtocolStream, IsDroppedWhenTheFileCannotBeOpened)
{
    ErrorProtocol::instance().log_message("before");
    const std::string away = support::PrivateHome::scratch_directory() + "/away";
    std::filesystem::rename(log_files::path(1), away);
    std::filesystem::create_directory(log_files::path(1));

    EXPECT_NO_THROW(ErrorProtocolOutput() << "dropped" << 1 << s_largest << std::endl);

    std::filesystem::remove(log_files::path(1));
    std::filesystem::rename(away, log_files::path(1));
    ErrorProtocol::instance().log_message("after");
    EXPECT_EQ(entries(), "before\nafter\n");
}

TEST_F(ErrorProtocolStream, IsDroppedAfterTheEndOfTheLog)
{
    ErrorProtocol::instance().log_message("before");
    pkBase::pkDestructor::run();
    const std::string text = log_files::read(log_files::path(1));
    testing::internal::CaptureStderr();
    ErrorProtocolOutput() << "dropped" << s_largest;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(log_files::read(log_files::path(1)), text);
    EXPECT_EQ(log_files::names(), std::vector<std::string>{"Tarq_1.log"});
}

} // namespace
