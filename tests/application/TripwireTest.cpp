#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/MutexWatch.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/Tripwire.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

// The tripwire's switch, also in the middle of what it watches. What nobody has to wait for is seen with the
// error log's stream.

using namespace tarqa::housekeeping;
using testing::HasSubstr;

namespace {

class TripwireSwitch : public testing::Test
{
protected:
    TripwireSwitch() { ErrorProtocol::instance(); }
    ~TripwireSwitch() override
    {
        Tripwire::disable();
        m_capture.take_all();
    }

    /// What stands on the error stream after an entry beside the log's stream.
    static std::string said_of_an_entry()
    {
        testing::internal::CaptureStderr();
        ErrorProtocol::instance().log_message("entry");
        return testing::internal::GetCapturedStderr();
    }
    static bool names_an_entry() { return said_of_an_entry() != "entry\n"; }

private:
    support::LogCapture m_capture;
};

} // namespace

TEST_F(TripwireSwitch, IsOffByDefault)
{
    EXPECT_FALSE(Tripwire::enabled());
    const ErrorProtocolOutput stream;
    EXPECT_FALSE(names_an_entry());
}

TEST_F(TripwireSwitch, MayBeTurnedTwice)
{
    Tripwire::enable();
    Tripwire::enable();
    EXPECT_TRUE(Tripwire::enabled());
    {
        const ErrorProtocolOutput stream;
        EXPECT_TRUE(names_an_entry());
    }
    Tripwire::disable();
    EXPECT_FALSE(Tripwire::enabled());
    Tripwire::disable();
    EXPECT_FALSE(Tripwire::enabled());
    const ErrorProtocolOutput stream;
    EXPECT_FALSE(names_an_entry());
}

TEST_F(TripwireSwitch, CountsAtOnce)
{
    Tripwire::enable();
    const ErrorProtocolOutput stream;
    EXPECT_TRUE(names_an_entry());
    Tripwire::disable();
    EXPECT_FALSE(names_an_entry());
    Tripwire::enable();
    EXPECT_FALSE(names_an_entry()) << "what it has forgotten";
}

TEST_F(TripwireSwitch, KnowsNothingOfWhatWasUnlockedMeanwhile)
{
    Tripwire::enable();
    {
        const ErrorProtocolOutput stream;
        Tripwire::disable();
    }
    Tripwire::enable();
    EXPECT_EQ(said_of_an_entry(), "");
    const ErrorProtocolOutput stream;
    EXPECT_TRUE(names_an_entry());
}

TEST_F(TripwireSwitch, FollowsARecursiveLockThatIsOlder)
{
    support::FakeController controller("alpha");
    auto outer = std::make_unique<ControllerLocker>(controller);
    Tripwire::enable();
    auto inner = std::make_unique<ControllerLocker>(controller);
    auto innermost = std::make_unique<ControllerLocker>(controller);
    innermost.reset();
    inner.reset();
    outer.reset();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(support::waits_for_at_once(
        TestAccess::mutex(CommandManager::instance()), [&] { const ControllerLocker other(controller); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(TripwireSwitch, DoesNotKeepAnybodyFromWaiting)
{
    Tripwire::enable();
    MessageHandler& handler = MessageHandler::instance();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(support::waits_for_at_once(TestAccess::mutex(handler), [&] { handler.restart(); }));
    EXPECT_FALSE(support::waits_for_at_once(
        TestAccess::mutex(CommandManager::instance()), [&] { handler.restart(); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(TripwireSwitch, LeavesTheStreamsEntriesAsTheyAre)
{
    Tripwire::enable();
    support::LogCapture capture;
    {
        ErrorProtocolOutput stream;
        stream << "outer";
        EXPECT_THAT(said_of_an_entry(), testing::EndsWith("\nentry\n"));
        stream << " end";
    }
    EXPECT_EQ(capture.text(), "outer end\n");
    capture.take_all();
}
