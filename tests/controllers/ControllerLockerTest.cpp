#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace tarqa::housekeeping;
using support::FakeController;
using support::FakeView;
using support::journal;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A controller with one view.
class OneView
{
public:
    OneView() { view.register_controller(&controller); }

    /// Whether another thread could take the controller's lock now.
    bool lock_is_free()
    {
        bool free = false;
        std::thread([&] {
            free = TestAccess::mutex(controller).tryLock();
            if (free) {
                TestAccess::mutex(controller).unlock();
            }
        }).join();
        return free;
    }

    FakeController controller{"alpha"};
    FakeView view{"view"};
};

} // namespace

TEST(ControllerLocker, HoldsTheLockForItsScope)
{
    OneView it;
    {
        const ControllerLocker locker(it.controller);
        EXPECT_TRUE(it.controller.is_locked());
        EXPECT_FALSE(it.lock_is_free());
    }
    EXPECT_FALSE(it.controller.is_locked());
    EXPECT_TRUE(it.lock_is_free());
}

TEST(ControllerLocker, WithoutFinishedRedrawsNothing)
{
    OneView it;
    {
        const ControllerLocker locker(it.controller);
    }
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(ControllerLocker, WithFinishedRedrawsEveryViewOnceUnderTheLock)
{
    OneView it;
    FakeView second("second");
    second.register_controller(&it.controller);
    it.view.on_update = [&it] {
        EXPECT_TRUE(it.controller.is_locked());
        EXPECT_FALSE(it.lock_is_free());
    };
    {
        ControllerLocker locker(it.controller);
        locker.finished();
        locker.finished(); // once more changes nothing
        EXPECT_THAT(journal().entries(), IsEmpty()); // not before the end
    }
    EXPECT_THAT(journal().entries(), ElementsAre("view.update", "second.update"));
    EXPECT_TRUE(it.lock_is_free());
}

TEST(ControllerLocker, RedrawsInTheThreadThatFinishes)
{
    OneView it;
    std::thread::id redrawn;
    it.view.on_update = [&redrawn] { redrawn = std::this_thread::get_id(); };
    std::thread::id finished;
    std::thread([&] {
        finished = std::this_thread::get_id();
        ControllerLocker locker(it.controller);
        locker.finished();
    }).join();
    EXPECT_EQ(finished, redrawn);
    EXPECT_EQ(1, journal().count("view.update"));
}

TEST(ControllerLocker, RedrawsViewsOfItsControllerOnly)
{
    OneView it;
    FakeController other("beta");
    FakeView others_view("other");
    others_view.register_controller(&other);
    {
        ControllerLocker locker(it.controller);
        locker.finished();
    }
    EXPECT_THAT(journal().entries(), ElementsAre("view.update"));
    EXPECT_FALSE(other.is_locked());
}

TEST(ControllerLocker, UnwindingReleasesTheLockWithoutARedraw)
{
    OneView it;
    try {
        ControllerLocker locker(it.controller);
        throw std::runtime_error("change");
    } catch (const std::runtime_error&) { }
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_FALSE(it.controller.is_locked());
    EXPECT_TRUE(it.lock_is_free());
}

TEST(ControllerLocker, NestsInOneThread)
{
    OneView it;
    {
        const ControllerLocker outer(it.controller);
        {
            ControllerLocker inner(it.controller);
            inner.finished();
        }
        EXPECT_EQ(1, journal().count("view.update"));
        EXPECT_FALSE(it.controller.is_locked()); // deliberately cleared by the inner one
        EXPECT_FALSE(it.lock_is_free());
    }
    EXPECT_TRUE(it.lock_is_free());
    EXPECT_EQ(1, journal().count("view.update"));
}

TEST(ControllerLocker, ThrowingViewIsPassedOnAfterTheLockIsReleased)
{
    OneView it;
    FakeView second("second");
    second.register_controller(&it.controller);
    it.view.on_update = support::throws_std("view");
    const auto change = [&it] {
        ControllerLocker locker(it.controller);
        locker.finished();
    };
    EXPECT_THROW(change(), std::runtime_error);
    EXPECT_FALSE(it.controller.is_locked());
    EXPECT_TRUE(it.lock_is_free());
    it.view.on_update = nullptr;
    journal().clear();
    change(); // and it works again
    EXPECT_THAT(journal().entries(), ElementsAre("view.update", "second.update"));
}

TEST(ControllerLocker, ThrowingViewIsLoggedWhileAnotherExceptionUnwinds)
{
    std::ostringstream text;
    text << HousekeepingException(42, "view", "tests/Fakes", 7);
    const std::vector<std::pair<support::FakeCommand::Step, std::string>> failures
        = {{support::throws_std("view"), "STD EXCEPTION THROWN:view\n\n"},
            {support::throws_housekeeping("view"), "TARQA EXCEPTION THROWN:\n" + text.str() + "\n\n"},
            {support::throws_unknown(), "An unknown exception was thrown while views were updated\n"}};
    for (const auto& [failure, logged] : failures) {
        OneView it;
        it.view.on_update = failure;
        support::LogCapture log;
        try {
            ControllerLocker locker(it.controller);
            locker.finished();
            throw std::logic_error("change");
        } catch (const std::logic_error& error) {
            EXPECT_STREQ("change", error.what());
        }
        EXPECT_EQ(logged, log.text());
        log.take_all();
        EXPECT_FALSE(it.controller.is_locked());
        EXPECT_TRUE(it.lock_is_free());
    }
}

TEST(ControllerLocker, ThrowingViewIsPassedOnInsideACleanUp)
{
    /// Changes the controller while another exception unwinds, and deals with what comes of it.
    class CleanUp
    {
    public:
        explicit CleanUp(OneView& it)
            : m_it(it)
        { }
        ~CleanUp()
        {
            try {
                ControllerLocker locker(m_it.controller);
                locker.finished();
            } catch (const std::runtime_error& error) {
                m_it.controller.setObjectName(error.what());
            }
        }

    private:
        OneView& m_it;
    };
    OneView it;
    it.view.on_update = support::throws_std("view");
    try {
        const CleanUp clean_up(it);
        throw std::logic_error("change");
    } catch (const std::logic_error& error) {
        EXPECT_STREQ("change", error.what());
    }
    EXPECT_EQ("view", it.controller.objectName()); // and nothing is logged
    EXPECT_TRUE(it.lock_is_free());
}

TEST(ControllerLocker, OtherThreadsWait)
{
    OneView it;
    std::atomic<bool> started{false};
    std::atomic<bool> entered{false};
    std::thread other;
    {
        const ControllerLocker locker(it.controller);
        other = std::thread([&] {
            started = true;
            const ControllerLocker second(it.controller);
            entered = true;
            EXPECT_TRUE(it.controller.is_locked()); // the first one's end does not count for this one
        });
        while (!started) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_FALSE(entered);
    }
    other.join();
    EXPECT_TRUE(entered);
}
