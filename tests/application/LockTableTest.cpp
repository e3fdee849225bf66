#include "LockTable.h"
#include "GuardedLocker.h"

#include <tarqa/housekeeping/Tripwire.h>

#include <QtCore/QSemaphore>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

// What the tripwire knows of holders and waiters. No mutex is locked here: the table only hears of them.

using namespace tarqa::housekeeping;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

const GuardedMutex s_first{"the first mutex", "the first rule."};
const GuardedMutex s_second{"the second mutex", "the second rule."};
const GuardedMutex s_third{"the third mutex", "the third rule."};
const GuardedMutex s_recursive{"the recursive mutex", "another rule.", true};

/// A thread that has done something and stays: the next one might get its number.
class OtherThread
{
public:
    explicit OtherThread(const std::function<void()>& work)
        : m_thread([this, work] {
            work();
            m_done.release();
            m_end.acquire();
        })
    {
        m_done.acquire();
    }
    ~OtherThread()
    {
        m_end.release();
        m_thread.join();
    }
    OtherThread(const OtherThread&) = delete;
    OtherThread& operator=(const OtherThread&) = delete;

private:
    QSemaphore m_done;
    QSemaphore m_end;
    std::thread m_thread;
};

class LockTableOf : public testing::Test
{
protected:
    LockTableOf() { Tripwire::enable(); }
    ~LockTableOf() override
    {
        Tripwire::disable();
        table().clear();
    }

    static LockTable& table() { return LockTable::instance(); }
    static void take(const QMutex& mutex, const GuardedMutex& what)
    {
        EXPECT_EQ(table().wait(mutex, what), "");
        table().hold(mutex);
    }

    QMutex m_first;
    QMutex m_second;
    QMutex m_third;
};

} // namespace

typedef LockTableOf LockTableOfOneThread;

TEST_F(LockTableOfOneThread, KnowsWhatItHolds)
{
    take(m_first, s_first);
    EXPECT_THAT(table().wait(m_first, s_first),
        AllOf(StartsWith("TRIPWIRE: thread "), HasSubstr(" (the main thread) waits for itself, for ever.\n"),
            HasSubstr(" asks for the first mutex, which it has held since:\n"),
            EndsWith("\nRule: the first rule.\n")));
}

TEST_F(LockTableOfOneThread, MayTakeAnother)
{
    take(m_first, s_first);
    take(m_second, s_second);
}

TEST_F(LockTableOfOneThread, ForgetsWhatItGaveBack)
{
    take(m_first, s_first);
    take(m_second, s_second);
    table().release(m_first);
    take(m_first, s_first);
    EXPECT_THAT(table().wait(m_second, s_second), Not(IsEmpty()));
}

TEST_F(LockTableOfOneThread, MayTakeARecursiveOneAgain)
{
    take(m_first, s_recursive);
    take(m_first, s_recursive);
    take(m_first, s_recursive);
    table().release(m_first);
    table().release(m_first);
    const auto as_others_see_it = [&] {
        std::string text;
        const OtherThread other([&] {
            EXPECT_EQ(table().wait(m_first, s_recursive), "");
            text = table().long_wait();
        });
        return text;
    };
    EXPECT_THAT(as_others_see_it(), HasSubstr(" (the main thread) has held since:\n"));
    table().release(m_first);
    EXPECT_THAT(
        as_others_see_it(), HasSubstr(", which was locked when the tripwire was off.\nAsked from:\n"));
}

TEST_F(LockTableOfOneThread, ForgetsWhatIsSwitchedOff)
{
    take(m_first, s_first);
    EXPECT_EQ(table().wait(m_second, s_second), "");
    Tripwire::disable();
    table().hold(m_second);
    table().clear();
    table().hold(m_second);
    table().run("Running: it\n");
    Tripwire::enable();
    take(m_first, s_first);
    take(m_second, s_second);
    EXPECT_THAT(table().wait(m_second, s_second), Not(HasSubstr("Running")));
}

TEST_F(LockTableOfOneThread, IsNamedWithWhatItRuns)
{
    take(m_first, s_first);
    table().run("Running: it\n");
    EXPECT_THAT(table().wait(m_first, s_first), EndsWith("\nRule: the first rule.\nRunning: it\n"));
    EXPECT_THAT(table().avoided(m_first, s_first), EndsWith("\nRule: the first rule.\nRunning: it\n"));
    table().run("");
    EXPECT_THAT(table().wait(m_first, s_first), EndsWith("\nRule: the first rule.\n"));
}

TEST_F(LockTableOfOneThread, AvoidsOnlyWhatItHolds)
{
    EXPECT_EQ(table().avoided(m_first, s_first), "");
    take(m_first, s_first);
    EXPECT_THAT(table().avoided(m_first, s_first), HasSubstr(" would wait for itself: "));
    EXPECT_EQ(table().avoided(m_second, s_second), "");
    const OtherThread other([&] { EXPECT_EQ(table().avoided(m_first, s_first), ""); });
}

TEST_F(LockTableOfOneThread, DoesNotWaitForLongWithoutAsking)
{
    EXPECT_EQ(table().long_wait(), "");
}

typedef LockTableOf LockTableOfThreads;

TEST_F(LockTableOfThreads, KnowsWhoOnlyWaits)
{
    const OtherThread other([&] {
        take(m_first, s_first);
        take(m_second, s_second);
        table().run("Running: its own\n");
    });
    take(m_third, s_third);
    table().run("Running: mine\n");
    EXPECT_EQ(table().wait(m_first, s_first), "");
    EXPECT_THAT(table().long_wait(),
        AllOf(StartsWith("TRIPWIRE: the main thread has waited for more than a second.\nThread "),
            HasSubstr(" (the main thread) asks for the first mutex, which thread "),
            EndsWith("\nRule: the first rule.\nRunning: mine\nRunning: its own\n")));
}

TEST_F(LockTableOfThreads, FindsACircleOfThree)
{
    take(m_first, s_first);
    const OtherThread second([&] {
        take(m_second, s_second);
        EXPECT_EQ(table().wait(m_first, s_first), "");
    });
    const OtherThread third([&] {
        take(m_third, s_third);
        EXPECT_EQ(table().wait(m_second, s_second), "");
    });
    const std::string text = table().wait(m_third, s_third);
    EXPECT_THAT(text, StartsWith("TRIPWIRE: 3 threads wait for each other, for ever.\n"));
    const std::size_t at_third = text.find(" asks for the third mutex");
    const std::size_t at_second = text.find(" asks for the second mutex");
    const std::size_t at_first = text.find(" asks for the first mutex");
    EXPECT_LT(at_third, at_second);
    EXPECT_LT(at_second, at_first);
    EXPECT_NE(at_first, std::string::npos);
}

TEST_F(LockTableOfThreads, TellsACircleOnce)
{
    take(m_first, s_first);
    take(m_third, s_third);
    {
        const OtherThread other([&] { take(m_second, s_second); });
        EXPECT_EQ(table().wait(m_second, s_second), "");
        EXPECT_THAT(table().long_wait(), Not(IsEmpty()));
    }
    table().release(m_second);
    const OtherThread other([&] {
        take(m_second, s_second);
        EXPECT_THAT(table().wait(m_first, s_first), HasSubstr("2 threads"));
    });
    EXPECT_EQ(table().long_wait(), "") << "of one who is in it";
    const OtherThread third([&] {
        EXPECT_EQ(table().wait(m_third, s_third), "") << "of one who waits behind it";
        EXPECT_THAT(table().long_wait(), HasSubstr("the third mutex"));
    });
}
