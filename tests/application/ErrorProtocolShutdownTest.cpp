#include "LogFiles.h"
#include "support/LogCapture.h"
#include "support/Phases.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/Exception.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using pkBase::pkDestructionPhase;
using pkBase::pkDestructor;
using support::LogCapture;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::TestAccess;

const char* const s_banner = "************** END OF ERROR LOG ***************\n";

void log_last_words()
{
    ErrorProtocol::instance().log_message("last words");
}

TEST(ErrorProtocolShutdown, EndsTheFileWithTheBanner)
{
    LogCapture capture;
    ErrorProtocol::instance().log_message("entry");
    pkDestructor::run();
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head() + "entry\n" + s_banner);
    EXPECT_TRUE(capture.take("entry"));
}

TEST(ErrorProtocolShutdown, WritesTheBannerAfterAFatalText)
{
    LogCapture capture;
    ErrorProtocol::instance().log_fatal_error("bad");
    pkDestructor::run();
    EXPECT_EQ(log_files::read(log_files::path(1)),
        std::string("FATAL ERROR!\nFurther Information: bad\n\n") + s_banner);
    capture.take_all();
}

TEST(ErrorProtocolShutdown, WithoutAnyUseMakesNoFile)
{
    pkDestructor::run();
    EXPECT_TRUE(log_files::names().empty());
}

TEST(ErrorProtocolShutdown, LaterEntriesAreDropped)
{
    ErrorProtocol::instance();
    pkDestructor::run();
    const std::string text = log_files::read(log_files::path(1));
    testing::internal::CaptureStderr();

    ErrorProtocol& log = ErrorProtocol::instance();
    log.log_message("message");
    log.log_command("command");
    log.log_assert("expression", "function", "file", 1);
    log.log_exception(std::runtime_error("standard"));
    log.log_exception(tarqa::Exception(1, std::string("maker's"), "file", 1));
    log.log_fatal_error("text");
    log.log_fatal_error(std::runtime_error("standard"));
    log.log_fatal_error(tarqa::Exception(1, std::string("maker's"), "file", 1));

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(log_files::read(log_files::path(1)), text);
    EXPECT_EQ(log_files::names(), std::vector<std::string>{"Tarq_1.log"});
    EXPECT_EQ(log.log_filename(), "");
    EXPECT_EQ(&ErrorProtocol::const_instance(), &log);
}

TEST(ErrorProtocolShutdown, SecondRunWritesNoSecondBanner)
{
    ErrorProtocol::instance();
    pkDestructor::run();
    ErrorProtocol::instance();
    pkDestructor::run();
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head() + s_banner);
}

TEST(ErrorProtocolShutdown, LogIsTheLastOfItsPhase)
{
    LogCapture capture;
    pkDestructor(pkDestructionPhase(5), &log_last_words); // entered before the log was ever used
    ErrorProtocol::instance();
    pkDestructor(pkDestructionPhase(5), &log_last_words);
    pkDestructor::run();
    EXPECT_EQ(capture.text(), std::string("last words\nlast words\n") + s_banner);
    capture.take_all();
}

TEST(ErrorProtocolShutdown, LogIsGoneInTheNextPhase)
{
    LogCapture capture;
    pkDestructor(pkDestructionPhase(4), &log_last_words);
    pkDestructor(pkDestructionPhase(6), &log_last_words);
    ErrorProtocol::instance();
    pkDestructor::run();
    EXPECT_EQ(capture.text(), std::string("last words\n") + s_banner);
    capture.take_all();
}

TEST(ErrorProtocolShutdown, LastWordsMakeALogOfTheirOwn)
{
    LogCapture capture;
    pkDestructor(pkDestructionPhase(5), &log_last_words); // the first use of the log
    pkDestructor::run();
    EXPECT_EQ(log_files::read(log_files::path(1)), log_files::head() + "last words\n" + s_banner);
    capture.take_all();
}

TEST(ErrorProtocolShutdown, HandlerGoesBeforeTheLog)
{
    LogCapture capture;
    ErrorHandler& handler = ErrorHandler::instance();
    QObject::connect(&handler, &QObject::destroyed, &log_last_words);
    handler.report_exception("entry");
    pkDestructor::run();
    EXPECT_EQ(TestAccess::peek<ErrorHandler>(), nullptr);
    EXPECT_EQ(TestAccess::peek<ErrorProtocol>(), nullptr);
    EXPECT_EQ(capture.text(), std::string("entry\nlast words\n") + s_banner);
    capture.take_all();
}

TEST(ErrorProtocolShutdown, HandlerGoesInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<ErrorHandler>());
}

} // namespace
