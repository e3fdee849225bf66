#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using namespace tarqa::housekeeping;
using support::FakeController;
using support::FakeDocument;
using support::FakeView;
using support::journal;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_source = "housekeeping/src/AbstractController";
const char* const s_unnamed = "m_controller_name == \"AbstractController\"";
const char* const s_named = "m_controller_name != \"AbstractController\"";

/// One that keeps everything as the base has it.
class PlainController : public AbstractController
{
public:
    using AbstractController::create_state;
};

/// Whether another thread could take the controller's lock now.
bool lock_is_free(AbstractController& controller)
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

} // namespace

TEST(AbstractController, StartsUnlockedWithoutAState)
{
    const PlainController controller;
    EXPECT_FALSE(controller.is_locked());
    EXPECT_FALSE(controller.state_exists());
}

TEST(AbstractController, MissingNameIsLogged)
{
    const PlainController controller;
    support::LogCapture log;
    EXPECT_EQ("AbstractController", controller.controller_name());
    EXPECT_TRUE(log.took_assert(s_named, "AbstractController::controller_name", s_source));
}

TEST(AbstractController, IsNamedOnce)
{
    PlainController controller;
    controller.controller_name("alpha"); // and nothing is logged
    EXPECT_EQ("alpha", controller.controller_name());
}

TEST(AbstractController, SecondNameIsLoggedAndTaken)
{
    PlainController controller;
    controller.controller_name("alpha");
    support::LogCapture log;
    controller.controller_name("beta");
    EXPECT_TRUE(log.took_assert(s_unnamed, "AbstractController::controller_name", s_source));
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ("beta", controller.controller_name());
}

TEST(AbstractController, ReservedNameIsLogged)
{
    PlainController controller;
    support::LogCapture log;
    controller.controller_name("AbstractController");
    EXPECT_TRUE(log.took_assert(s_named, "AbstractController::controller_name", s_source));
    EXPECT_TRUE(log.lines().empty());
}

TEST(AbstractController, ReservedNameAsASecondNameIsLoggedTwice)
{
    PlainController controller;
    controller.controller_name("alpha");
    support::LogCapture log;
    controller.controller_name("AbstractController");
    ASSERT_EQ(2u, log.lines().size()); // before the assignment and after it
    EXPECT_NE(std::string::npos, log.lines()[0].find(s_unnamed));
    EXPECT_NE(std::string::npos, log.lines()[1].find(s_named));
    log.take_all();
}

// States

TEST(AbstractController, BaseMakesNoStateAndIgnoresUpdates)
{
    PlainController controller;
    FakeDocument document;
    EXPECT_FALSE(controller.create_associated_state(document));
    controller.update_associated_state(boost::make_shared<AbstractState>(document, document.id(), "alpha"));
    EXPECT_TRUE(controller.state_exists());
    controller.post_init();
}

TEST(AbstractController, MakesItsStateForADocument)
{
    FakeController controller("alpha");
    FakeDocument document;
    const boost::shared_ptr<AbstractState> state = controller.create_associated_state(document);
    ASSERT_TRUE(state);
    EXPECT_EQ(&document, &state->owner());
    EXPECT_THAT(journal().entries(), ElementsAre("alpha.create_state(Document 1)"));
    EXPECT_FALSE(controller.state_exists()); // made, but not shown
}

TEST(AbstractController, StateExistsWhileTheLastStateIsNotEmpty)
{
    FakeController controller("alpha");
    FakeDocument document;
    const boost::shared_ptr<AbstractState> state = controller.create_associated_state(document);
    journal().clear();
    controller.update_associated_state(state);
    EXPECT_TRUE(controller.state_exists());
    EXPECT_EQ(state, controller.last_state());
    controller.update_associated_state(nullptr);
    EXPECT_FALSE(controller.state_exists());
    EXPECT_FALSE(controller.last_state());
    controller.update_associated_state(state);
    EXPECT_TRUE(controller.state_exists());
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "alpha.update_state(Document 1)", "alpha.update_state(null)", "alpha.update_state(Document 1)"));
}

TEST(AbstractController, StateFlagIsSetBeforeTheStateIsShown)
{
    class Asking : public AbstractController
    {
    public:
        std::vector<bool> seen;

    private:
        void update_state(boost::shared_ptr<AbstractState>) override { seen.push_back(state_exists()); }
    };
    Asking controller;
    FakeDocument document;
    controller.update_associated_state(boost::make_shared<AbstractState>(document, document.id(), "alpha"));
    controller.update_associated_state(nullptr);
    EXPECT_THAT(controller.seen, ElementsAre(true, false));
}

TEST(AbstractController, ShowingAStateRedrawsNothing)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    controller.update_associated_state(nullptr);
    EXPECT_EQ(0, journal().count("view.update"));
}

// The lock

TEST(AbstractController, AcquireLocksAndReleaseUnlocks)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    EXPECT_TRUE(lock_is_free(controller));
    TestAccess::acquire(controller);
    EXPECT_TRUE(controller.is_locked());
    EXPECT_FALSE(lock_is_free(controller));
    TestAccess::release(controller, false);
    EXPECT_FALSE(controller.is_locked());
    EXPECT_TRUE(lock_is_free(controller));
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(AbstractController, ReleaseWithUpdateRedrawsWhileLocked)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    view.on_update = [&controller] {
        EXPECT_TRUE(controller.is_locked());
        EXPECT_FALSE(lock_is_free(controller));
    };
    TestAccess::acquire(controller);
    TestAccess::release(controller, true);
    EXPECT_THAT(journal().entries(), ElementsAre("view.update"));
    EXPECT_FALSE(controller.is_locked());
    EXPECT_TRUE(lock_is_free(controller));
}

TEST(AbstractController, InnerReleaseClearsTheFlagWhileTheOuterStillHoldsTheLock)
{
    FakeController controller("alpha");
    TestAccess::acquire(controller);
    TestAccess::acquire(controller);
    TestAccess::release(controller, false);
    EXPECT_FALSE(controller.is_locked()); // deliberately
    EXPECT_FALSE(lock_is_free(controller));
    TestAccess::release(controller, false);
    EXPECT_TRUE(lock_is_free(controller));
}

TEST(AbstractController, ForcedUpdateRedrawsUnderTheLock)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    view.on_update = [&controller] {
        EXPECT_TRUE(controller.is_locked());
        EXPECT_FALSE(lock_is_free(controller));
    };
    controller.force_update();
    EXPECT_THAT(journal().entries(), ElementsAre("view.update"));
    EXPECT_FALSE(controller.is_locked());
    EXPECT_TRUE(lock_is_free(controller));
}

TEST(AbstractController, ForcedUpdateWorksInsideTheLock)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    TestAccess::acquire(controller);
    controller.force_update();
    EXPECT_EQ(1, journal().count("view.update"));
    EXPECT_FALSE(controller.is_locked()); // deliberately
    EXPECT_FALSE(lock_is_free(controller));
    TestAccess::release(controller, false);
    EXPECT_TRUE(lock_is_free(controller));
}

TEST(AbstractController, ThrowingViewDoesNotKeepTheLockOfAForcedUpdate)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    view.on_update = support::throws_std("view");
    EXPECT_THROW(controller.force_update(), std::runtime_error);
    EXPECT_FALSE(controller.is_locked());
    EXPECT_TRUE(lock_is_free(controller));
}
