#include "LogFiles.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/InvalidPath.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using support::LogCapture;
using tarqa::housekeeping::CancelCommandException;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::InvalidPath;

std::string information(const tarqa::Exception& exception)
{
    std::ostringstream stream;
    stream << exception;
    return stream.str();
}

/// Announces whatever the test logs and compares texts, not lines.
class ErrorProtocolEntry : public testing::Test
{
protected:
    ~ErrorProtocolEntry() override { m_capture.take_all(); }

    ErrorProtocol& log() { return ErrorProtocol::instance(); }
    /// Everything after the head of the file.
    std::string entries() const { return m_capture.text(); }

private:
    LogCapture m_capture;
};

TEST_F(ErrorProtocolEntry, MessageEndsItsLine)
{
    log().log_message("one message");
    EXPECT_EQ(entries(), "one message\n");
}

TEST_F(ErrorProtocolEntry, EmptyMessageIsAnEmptyLine)
{
    log().log_message("");
    EXPECT_EQ(entries(), "\n");
}

TEST_F(ErrorProtocolEntry, MessageMayBeOfAnyLength)
{
    std::string expected;
    for (const std::size_t length : {1, 42, 510, 511, 512, 513, 1024, 5000, 100000}) {
        const std::string message = std::string(length - 1, 'x') + 'y';
        log().log_message(message);
        expected += message + '\n';
    }
    EXPECT_EQ(entries(), expected);
}

TEST_F(ErrorProtocolEntry, MessageKeepsItsBytes)
{
    log().log_message("a\tb\n\nc %1 \xff µ");
    EXPECT_EQ(entries(), "a\tb\n\nc %1 \xff µ\n");
}

TEST_F(ErrorProtocolEntry, CommandIsWrittenExactly)
{
    log().log_command("DO>\tmove");
    log().log_command(" Finished.\n");
    log().log_command("");
    EXPECT_EQ(entries(), "DO>\tmove Finished.\n");
}

TEST_F(ErrorProtocolEntry, AssertHasFileLineFunctionAndCondition)
{
    log().log_assert("m_id != DocumentId::null()", "void tarqa::f()", "housekeeping/src/AbstractModel", 81);
    EXPECT_EQ(entries(),
        "housekeeping/src/AbstractModel:81 ASSERT FAILED in void tarqa::f(): m_id != DocumentId::null()\n");
}

TEST_F(ErrorProtocolEntry, AssertWritesNullAsEmptyText)
{
    log().log_assert("expression", "function", nullptr, 1);
    log().log_assert("expression", nullptr, "file", 2);
    log().log_assert(nullptr, "function", "file", 3);
    log().log_assert(nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(entries(),
        ":1 ASSERT FAILED in function: expression\n"
        "file:2 ASSERT FAILED in : expression\n"
        "file:3 ASSERT FAILED in function: \n"
        ":0 ASSERT FAILED in : \n");
}

TEST_F(ErrorProtocolEntry, AssertDoesNotFillInItsOwnTexts)
{
    log().log_assert("%1 %2 %4", "%3 %99", "%2%4", 5);
    EXPECT_EQ(entries(), "%2%4:5 ASSERT FAILED in %3 %99: %1 %2 %4\n");
}

TEST_F(ErrorProtocolEntry, AssertKeepsItsBytes)
{
    log().log_assert("a \xff µ", "b \xfe", "c \x80", 5);
    EXPECT_EQ(entries(), "c \x80:5 ASSERT FAILED in b \xfe: a \xff µ\n");
}

TEST_F(ErrorProtocolEntry, AssertLineHasNoSign)
{
    log().log_assert("e", "f", "s", std::numeric_limits<unsigned int>::max());
    EXPECT_EQ(entries(), "s:4294967295 ASSERT FAILED in f: e\n");
}

TEST_F(ErrorProtocolEntry, ExceptionWritesItself)
{
    HousekeepingException exception(1014, std::string("Document does not exist"), "housekeeping/src/X", 7);
    exception.caught_here("housekeeping/src/Y", 8);
    log().log_exception(exception);
    EXPECT_EQ(entries(), "TARQA EXCEPTION THROWN:\n" + information(exception) + "\n\n");
}

TEST_F(ErrorProtocolEntry, ExceptionWritesItsOwnKind)
{
    const InvalidPath exception(3, std::string("bad path"), "housekeeping/src/X", 7, "C:/x");
    const tarqa::Exception& root = exception;
    log().log_exception(root);
    EXPECT_EQ(entries(), "TARQA EXCEPTION THROWN:\n" + information(exception) + "\n\n");
    EXPECT_NE(entries().find("Faulty path = \"C:/x\"\n"), std::string::npos);
}

TEST_F(ErrorProtocolEntry, CancellationLeavesNoText)
{
    const HousekeepingException cause(
        1028, std::string("Command was cancelled by user!"), "housekeeping/src/X", 7);
    log().log_exception(CancelCommandException(cause));
    EXPECT_EQ(entries(), "TARQA EXCEPTION THROWN:\n\n\n");
}

TEST_F(ErrorProtocolEntry, StandardExceptionFollowsItsTitleAtOnce)
{
    log().log_exception(std::out_of_range("index 7"));
    EXPECT_EQ(entries(), "STD EXCEPTION THROWN:index 7\n\n");
}

TEST_F(ErrorProtocolEntry, EntriesStandInTheOrderOfTheCalls)
{
    log().log_message("first");
    log().log_command("second\n");
    log().log_exception(std::runtime_error("third"));
    log().log_message("fourth");
    EXPECT_EQ(entries(), "first\nsecond\nSTD EXCEPTION THROWN:third\n\nfourth\n");
}

TEST_F(ErrorProtocolEntry, FatalTextStandsAlone)
{
    log().log_message("an earlier entry");
    log().log_fatal_error("the disk is gone");
    EXPECT_EQ(
        log_files::read(log().log_filename()), "FATAL ERROR!\nFurther Information: the disk is gone\n\n");
}

TEST_F(ErrorProtocolEntry, FatalTextIsFollowedByLaterEntries)
{
    log().log_fatal_error("the disk is gone");
    log().log_message("later");
    EXPECT_EQ(log_files::read(log().log_filename()),
        "FATAL ERROR!\nFurther Information: the disk is gone\n\nlater\n");
}

TEST_F(ErrorProtocolEntry, SecondFatalTextReplacesTheFirst)
{
    log().log_fatal_error("a first error with a long text");
    log().log_fatal_error("second");
    EXPECT_EQ(log_files::read(log().log_filename()), "FATAL ERROR!\nFurther Information: second\n\n");
}

TEST_F(ErrorProtocolEntry, FatalExceptionIsAppendedWithoutALineEnd)
{
    const HousekeepingException exception(2, std::string("bad"), "housekeeping/src/X", 7);
    log().log_message("an earlier entry");
    log().log_fatal_error(exception);
    EXPECT_EQ(log_files::read(log().log_filename()),
        log_files::head() + "an earlier entry\nfatal error!\nCause: tarqa::Exception\nFurther Information: "
            + information(exception));
}

TEST_F(ErrorProtocolEntry, FatalStandardExceptionIsAppended)
{
    log().log_message("an earlier entry");
    log().log_fatal_error(std::runtime_error("bad"));
    EXPECT_EQ(log_files::read(log().log_filename()),
        log_files::head()
            + "an earlier entry\nFATAL ERROR!\nCause: std::exception\nFurther Information: bad\n");
}

} // namespace
