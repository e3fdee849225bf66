#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/QTarqaApplication.h>
#include <tarqa/housekeeping/WindowsMessage.h>

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <vector>

namespace {

using support::LogCapture;
using support::StartedApplication;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::QTarqaApplication;

const unsigned int s_power_broadcast = 0x218;
const unsigned int s_suspend = 4;
const unsigned int s_resume = 0x12;

/// A started program whose signals of suspend and resume are counted.
class PowerEvents : public testing::Test
{
private:
    StartedApplication m_started;

protected:
    PowerEvents()
        : suspends(&manager(), SIGNAL(suspendApplication()))
        , resumes(&manager(), SIGNAL(resumeApplication()))
    { }

    ApplicationManager& manager() const { return m_started.manager(); }

    /// Passes a message of the operating system. @return whether it was dealt with
    bool filter(unsigned int message, unsigned int parameter)
    {
        MSG native;
        native.message = message;
        native.wParam = parameter;
        long result = 77;
        const bool handled = application().winEventFilter(&native, &result);
        EXPECT_EQ(result, 77);
        return handled;
    }

    QTarqaApplication& application() const
    {
        return dynamic_cast<QTarqaApplication&>(m_started.application());
    }

    /// Suspends and resumes that were announced so far.
    std::vector<int> announced() const { return {suspends.count(), resumes.count()}; }

    LogCapture log;
    QSignalSpy suspends;
    QSignalSpy resumes;
};

typedef std::vector<int> Counts;

// From the outside

TEST_F(PowerEvents, ProgramIsAwakeAtTheStart)
{
    EXPECT_FALSE(manager().isSuspended());
}

TEST_F(PowerEvents, SuspendIsAnnouncedOnce)
{
    manager().setSuspended(true);
    EXPECT_TRUE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{1, 0}));
    manager().setSuspended(true);
    EXPECT_TRUE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{1, 0}));
}

TEST_F(PowerEvents, ResumeIsAnnouncedOnce)
{
    manager().setSuspended(true);
    manager().setSuspended(false);
    EXPECT_FALSE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{1, 1}));
    manager().setSuspended(false);
    EXPECT_EQ(announced(), (Counts{1, 1}));
}

TEST_F(PowerEvents, ResumeWithoutSuspendIsNotAnnounced)
{
    manager().setSuspended(false);
    EXPECT_EQ(announced(), (Counts{0, 0}));
}

TEST_F(PowerEvents, EveryChangeIsAnnounced)
{
    for (int i = 1; i <= 3; ++i) {
        manager().setSuspended(true);
        manager().setSuspended(false);
        EXPECT_EQ(announced(), (Counts{i, i}));
    }
}

TEST_F(PowerEvents, StateIsSetWhenItIsAnnounced)
{
    std::vector<bool> states;
    QObject::connect(&manager(), &ApplicationManager::suspendApplication,
        [&] { states.push_back(manager().isSuspended()); });
    QObject::connect(&manager(), &ApplicationManager::resumeApplication,
        [&] { states.push_back(manager().isSuspended()); });
    manager().setSuspended(true);
    manager().setSuspended(false);
    filter(s_power_broadcast, s_suspend);
    filter(s_power_broadcast, s_resume);
    EXPECT_EQ(states, (std::vector<bool>{true, false, true, false}));
}

// Messages of the operating system

TEST_F(PowerEvents, MissingMessageIsLogged)
{
    long result = 0;
    EXPECT_FALSE(application().winEventFilter(nullptr, &result));
    EXPECT_TRUE(
        log.took_assert("msg", "QTarqaApplication::winEventFilter(", "housekeeping/src/ApplicationManager"));
    EXPECT_EQ(announced(), (Counts{0, 0}));
}

TEST_F(PowerEvents, ResultIsNotNeeded)
{
    MSG message;
    message.message = s_power_broadcast;
    message.wParam = s_suspend;
    EXPECT_TRUE(application().winEventFilter(&message, nullptr));
    EXPECT_EQ(announced(), (Counts{1, 0}));
}

TEST_F(PowerEvents, OtherMessagesAreLeftAlone)
{
    for (const unsigned int message : {0u, 1u, 0x12u, 0x217u, 0x219u, 0x10218u, 0xffffffffu}) {
        EXPECT_FALSE(filter(message, s_suspend)) << message;
        EXPECT_FALSE(filter(message, s_resume)) << message;
    }
    EXPECT_FALSE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{0, 0}));
}

TEST_F(PowerEvents, SuspendMessageSuspends)
{
    EXPECT_TRUE(filter(s_power_broadcast, s_suspend));
    EXPECT_TRUE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{1, 0}));
}

TEST_F(PowerEvents, SecondSuspendMessageIsNotAnnounced)
{
    filter(s_power_broadcast, s_suspend);
    EXPECT_TRUE(filter(s_power_broadcast, s_suspend));
    EXPECT_TRUE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{1, 0}));
}

TEST_F(PowerEvents, ResumeMessageResumes)
{
    filter(s_power_broadcast, s_suspend);
    EXPECT_TRUE(filter(s_power_broadcast, s_resume));
    EXPECT_FALSE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{1, 1}));
    filter(s_power_broadcast, s_suspend);
    EXPECT_EQ(announced(), (Counts{2, 1}));
}

TEST_F(PowerEvents, ResumeMessageWithoutSuspendIsNotAnnounced)
{
    EXPECT_TRUE(filter(s_power_broadcast, s_resume));
    EXPECT_FALSE(manager().isSuspended());
    EXPECT_EQ(announced(), (Counts{0, 0}));
}

TEST_F(PowerEvents, OtherPowerMessagesChangeNothing)
{
    for (const bool suspended : {false, true}) {
        manager().setSuspended(suspended);
        const Counts before = announced();
        for (const unsigned int event : {0u, 1u, 2u, 3u, 5u, 6u, 7u, 9u, 0xau, 0xbu, 0x11u, 0x13u, 0x8013u}) {
            EXPECT_TRUE(filter(s_power_broadcast, event)) << event;
        }
        EXPECT_EQ(manager().isSuspended(), suspended);
        EXPECT_EQ(announced(), before);
    }
}

TEST_F(PowerEvents, MessagesAndCallsShareOneState)
{
    manager().setSuspended(true);
    filter(s_power_broadcast, s_suspend);
    EXPECT_EQ(announced(), (Counts{1, 0}));
    filter(s_power_broadcast, s_resume);
    manager().setSuspended(false);
    EXPECT_EQ(announced(), (Counts{1, 1}));
}

} // namespace
