#include "support/LogCapture.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/testkit/LogCapture.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::testkit::LogCapture;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

void log(const std::string& text)
{
    ErrorProtocol::instance().log_message(text);
}

/// The tests' own account of the log knows nothing of these entries.
class KitLogCapture : public testing::Test
{
    void TearDown() override { m_log.take_all(); }

    support::LogCapture m_log;
};

} // namespace

TEST_F(KitLogCapture, ListsWhatNobodyAnnounced)
{
    log("before");
    LogCapture capture;
    EXPECT_THAT(capture.unannounced(), IsEmpty());
    capture.announce("expected");
    log("an expected entry");
    log("a surprise");
    EXPECT_THAT(capture.unannounced(), ElementsAre("a surprise"));
    EXPECT_THAT(capture.missing(), IsEmpty());
    EXPECT_THAT(capture.lines(), ElementsAre("an expected entry", "a surprise"));
    EXPECT_EQ(capture.text(), "an expected entry\na surprise\n");
}

TEST_F(KitLogCapture, AnnouncesOneEntryAtATime)
{
    LogCapture capture;
    capture.announce("same");
    log("the same");
    log("the same");
    EXPECT_THAT(capture.unannounced(), ElementsAre("the same"));
    capture.announce("same");
    EXPECT_THAT(capture.unannounced(), IsEmpty());
}

TEST_F(KitLogCapture, SaysWhichAnnouncedEntryDidNotCome)
{
    LogCapture capture;
    capture.announce("comes");
    capture.announce("stays away");
    EXPECT_THAT(capture.missing(), ElementsAre("comes", "stays away"));
    log("it comes");
    EXPECT_THAT(capture.missing(), ElementsAre("stays away"));
}

TEST_F(KitLogCapture, TakesEntriesOut)
{
    LogCapture capture;
    log("one");
    log("two");
    log("two");
    EXPECT_EQ(capture.count("two"), 2);
    EXPECT_FALSE(capture.take("three"));
    EXPECT_TRUE(capture.take("two"));
    EXPECT_EQ(capture.count("two"), 1);
    EXPECT_THAT(capture.lines(), ElementsAre("one", "two"));
    capture.take_all();
    EXPECT_THAT(capture.lines(), IsEmpty());
}

TEST_F(KitLogCapture, TakesFailedAssertions)
{
    LogCapture capture;
    ErrorProtocol::instance().log_assert("a < b", "void f(X *)", "some/File", 12);
    EXPECT_FALSE(capture.took_assert("a < b", "f(X*)", "some/File", 13));
    EXPECT_FALSE(capture.took_assert("a", "f(X*)", "some/File"));
    EXPECT_TRUE(capture.took_assert("a < b", "f(X*)", "some/File", 12));
    EXPECT_FALSE(capture.took_assert("a < b", "f(X*)", "some/File", 12));
}

TEST_F(KitLogCapture, LeavesOutTheProtocolOfCommands)
{
    LogCapture capture;
    ErrorProtocol::instance().log_command("DO>\tRotate - Succeeded.\n\t* Turn - Failed.\n");
    ErrorProtocol::instance().log_command("UNDO>\tRotate - Succeeded.\n");
    EXPECT_THAT(capture.unannounced(), IsEmpty());
    EXPECT_EQ(capture.text(), "DO>\tRotate - Succeeded.\n\t* Turn - Failed.\nUNDO>\tRotate - Succeeded.\n");
}

TEST_F(KitLogCapture, SeesALogThatWasEmptied)
{
    log(std::string(300, 'x'));
    LogCapture capture;
    log("lost");
    ErrorProtocol::instance().log_fatal_error(std::string("it is over"));
    EXPECT_THAT(capture.lines(), ElementsAre("FATAL ERROR!", "Further Information: it is over"));
}

TEST_F(KitLogCapture, SeesALogThatWasEmptiedAndIsLongerSince)
{
    log("x");
    const LogCapture capture;
    ErrorProtocol::instance().log_fatal_error(std::string(3000, 'y'));
    EXPECT_EQ(capture.lines().at(0), "FATAL ERROR!");
}

TEST_F(KitLogCapture, KeepsWhatIsWrittenOutsideOfCaptures)
{
    using tarqa::housekeeping::testkit::unannounced_log_lines;
    log("before");
    {
        const LogCapture outer;
        log("inside");
        {
            const LogCapture inner;
            log("deep inside");
            EXPECT_THAT(inner.lines(), ElementsAre("deep inside"));
        }
        log("inside again");
        EXPECT_THAT(outer.lines(), ElementsAre("inside", "deep inside", "inside again"));
        EXPECT_THAT(unannounced_log_lines(), ElementsAre("before"));
    }
    log("after");
    EXPECT_THAT(unannounced_log_lines(), ElementsAre("after"));
    EXPECT_THAT(unannounced_log_lines(), IsEmpty());
}
