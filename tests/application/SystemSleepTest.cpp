#include "SleepAnnouncer.h"
#include "support/LogCapture.h"
#include "support/MessageBus.h"
#include "support/MessageSpy.h"
#include "support/PrivateHome.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QCoreApplication>
#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using support::LogCapture;
using support::MessageBus;
using support::SilentBus;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;

const char* const s_login_service = "org.freedesktop.login1";

typedef std::vector<int> Counts;

/// Counts what a started program tells of the machine's sleep.
class SleepSpy
{
public:
    explicit SleepSpy(ApplicationManager& manager)
        : m_manager(manager)
        , m_suspends(&manager, SIGNAL(suspendApplication()))
        , m_resumes(&manager, SIGNAL(resumeApplication()))
    { }

    /// Announces it until the program has heard it; it may not be listening yet, and hears the same twice
    /// without harm.
    bool reach(SleepAnnouncer& announcer, bool sleeps) const
    {
        return support::wait_until([&] {
            if (m_manager.isSuspended() != sleeps) {
                announcer.announce(sleeps);
            }
            return m_manager.isSuspended() == sleeps;
        });
    }

    /// Suspends and resumes that were announced so far.
    Counts counts() const { return {m_suspends.count(), m_resumes.count()}; }

private:
    ApplicationManager& m_manager;
    QSignalSpy m_suspends;
    QSignalSpy m_resumes;
};

TEST(SystemSleep, IsAnnouncedToTheProgram)
{
    const MessageBus bus(support::system_bus);
    SleepAnnouncer login(bus, s_login_service);
    const StartedApplication started;
    LogCapture log;
    const SleepSpy spy(started.manager());
    ASSERT_TRUE(spy.reach(login, true));
    EXPECT_EQ(spy.counts(), (Counts{1, 0}));
    ASSERT_TRUE(spy.reach(login, false));
    EXPECT_EQ(spy.counts(), (Counts{1, 1}));
    ASSERT_TRUE(spy.reach(login, true));
    EXPECT_EQ(spy.counts(), (Counts{2, 1}));
}

TEST(SystemSleep, IsHeardFromAServiceThatComesLater)
{
    const MessageBus bus(support::system_bus);
    const StartedApplication started;
    LogCapture log;
    const SleepSpy spy(started.manager());
    SleepAnnouncer login(bus, s_login_service);
    ASSERT_TRUE(spy.reach(login, true));
    ASSERT_TRUE(spy.reach(login, false));
    EXPECT_EQ(spy.counts(), (Counts{1, 1}));
}

TEST(SystemSleep, IsHeardFromAServiceThatCameBack)
{
    const MessageBus bus(support::system_bus);
    const StartedApplication started;
    LogCapture log;
    const SleepSpy spy(started.manager());
    auto login = std::make_unique<SleepAnnouncer>(bus, s_login_service);
    ASSERT_TRUE(spy.reach(*login, true));
    login.reset();
    SleepAnnouncer again(bus, s_login_service);
    ASSERT_TRUE(spy.reach(again, false));
    EXPECT_EQ(spy.counts(), (Counts{1, 1}));
}

TEST(SystemSleep, OtherServicesAreNotHeard)
{
    const MessageBus bus(support::system_bus);
    const StartedApplication started;
    LogCapture log;
    const SleepSpy spy(started.manager());
    SleepAnnouncer login(bus, s_login_service);
    SleepAnnouncer other(bus, "org.freedesktop.login2");
    ASSERT_TRUE(spy.reach(login, true));
    ASSERT_TRUE(spy.reach(login, false));

    other.announce(true);
    other.announce(false);
    other.wait_for_the_bus();
    ASSERT_TRUE(spy.reach(login, true)); // comes after those
    EXPECT_EQ(spy.counts(), (Counts{2, 1}));
}

TEST(SystemSleep, OtherAnnouncementsAreNotHeard)
{
    const MessageBus bus(support::system_bus);
    const StartedApplication started;
    LogCapture log;
    const SleepSpy spy(started.manager());
    SleepAnnouncer login(bus, s_login_service);
    ASSERT_TRUE(spy.reach(login, true));
    ASSERT_TRUE(spy.reach(login, false));

    for (const bool sleeps : {true, false}) {
        SleepAnnouncer::Announcement other_path{sleeps};
        other_path.path = "/org/freedesktop/login1/seat";
        login.announce(other_path);
        SleepAnnouncer::Announcement other_interface{sleeps};
        other_interface.interface = "org.freedesktop.login1.Session";
        login.announce(other_interface);
        SleepAnnouncer::Announcement other_signal{sleeps};
        other_signal.signal = "PrepareForShutdown";
        login.announce(other_signal);
        login.announce(SleepAnnouncer::Announcement{QString(sleeps ? "true" : "false")});
        login.announce(SleepAnnouncer::Announcement{sleeps ? 1 : 0});
        login.announce(SleepAnnouncer::Announcement{});
    }
    ASSERT_TRUE(spy.reach(login, true)); // comes after those
    EXPECT_EQ(spy.counts(), (Counts{2, 1}));
}

TEST(SystemSleep, EndOfTheBusIsNoTrouble)
{
    MessageBus bus(support::system_bus);
    const StartedApplication started;
    LogCapture log;
    const SleepSpy spy(started.manager());
    SleepAnnouncer login(bus, s_login_service);
    ASSERT_TRUE(spy.reach(login, true));

    testing::internal::CaptureStderr();
    bus.kill();
    EXPECT_TRUE(support::wait_until([&] { return !login.is_connected(); }));
    QCoreApplication::processEvents();
    started.manager().setSuspended(false);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(spy.counts(), (Counts{1, 1}));
}

/// Starts up and checks that nothing is said of the bus, and that the program hears its host all the same.
void start_without_a_bus(const std::string& address)
{
    MessageBus::use(support::system_bus, address);
    LogCapture log;
    testing::internal::CaptureStderr();
    {
        const StartedApplication started(log);
        support::take_start_up_lines(log);
        const SleepSpy spy(started.manager());
        QCoreApplication::processEvents();
        started.manager().setSuspended(true);
        EXPECT_EQ(spy.counts(), (Counts{1, 0}));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(SystemSleep, NobodyMissesABusThatIsNotThere)
{
    start_without_a_bus("unix:path=" + support::PrivateHome::scratch_directory() + "/nowhere");
}

TEST(SystemSleep, NobodyMissesABusOfAnotherKind)
{
    start_without_a_bus("carrier-pigeon:loft=7");
}

TEST(SystemSleep, NobodyMindsAnAddressThatIsNone)
{
    start_without_a_bus("garbage");
}

TEST(SystemSleep, NobodyMindsAnEmptyAddress)
{
    start_without_a_bus("");
}

TEST(SystemSleep, NobodyWaitsForABusThatNeverAnswers)
{
    const SilentBus bus; // takes connections, for that the operating system needs nobody
    start_without_a_bus(bus.address());
}

TEST(SystemSleep, NobodyMissesABusThatClosesAtOnce)
{
    SilentBus bus;
    std::thread porter([&bus] { bus.refuse(); });
    start_without_a_bus(bus.address());
    bus.hang_up();
    porter.join();
}

} // namespace
