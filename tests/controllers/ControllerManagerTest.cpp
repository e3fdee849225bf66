#include "support/EmptyRegistry.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/Phases.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>

#include <pkBase/pkDestructor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

using namespace tarqa::housekeeping;
using support::journal;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_source = "housekeeping/src/ControllerManager";

ControllerManager& manager()
{
    return ControllerManager::instance();
}

/// Looks "alpha" up in another thread, which must wait for the lock that this thread holds.
class WaitingLookUp
{
public:
    void start()
    {
        m_thread = std::thread([this] {
            m_started = true;
            m_controller = manager().controller("alpha");
            m_finished = true;
        });
        while (!m_started) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        EXPECT_FALSE(m_finished);
    }
    boost::shared_ptr<AbstractController> result()
    {
        m_thread.join();
        return m_controller;
    }

private:
    std::thread m_thread;
    std::atomic<bool> m_started{false};
    std::atomic<bool> m_finished{false};
    boost::shared_ptr<AbstractController> m_controller;
};

/// Does something while the controller manager makes its controllers.
class InterruptedFactory : public support::FakeControllerFactory
{
public:
    explicit InterruptedFactory(const std::string& name)
        : FakeControllerFactory(name)
    { }
    AbstractController* create_unmanaged_product() override
    {
        on_create();
        return FakeControllerFactory::create_unmanaged_product();
    }

    std::function<void()> on_create;
};

} // namespace

TEST(ControllerManager, IsMadeOnFirstUse)
{
    EXPECT_FALSE(TestAccess::peek<ControllerManager>());
    const ControllerManager& made = ControllerManager::const_instance();
    EXPECT_EQ(&made, TestAccess::peek<ControllerManager>());
    EXPECT_EQ(0u, TestAccess::controllers(made)); // empty until init()
}

TEST(ControllerManager, IsOneObject)
{
    EXPECT_EQ(&ControllerManager::instance(), &ControllerManager::instance());
    EXPECT_EQ(&ControllerManager::instance(), &ControllerManager::const_instance());
}

TEST(ControllerManager, MakesAndNamesOneOfEachInTheOrderOfRegistration)
{
    support::register_controller("gamma");
    support::register_controller("alpha");
    support::register_controller("beta");
    manager().init();
    EXPECT_THAT(journal().entries(), ElementsAre("gamma.create", "alpha.create", "beta.create"));
    for (const char* name : {"alpha", "beta", "gamma"}) {
        ASSERT_TRUE(manager().controller(name));
        EXPECT_EQ(name, manager().controller(name)->controller_name());
    }
    EXPECT_NE(manager().controller("alpha"), manager().controller("beta"));
    EXPECT_EQ(manager().controller("alpha"), manager().controller("alpha"));
}

TEST(ControllerManager, InitDoesNotCallPostInit)
{
    support::register_controller("alpha");
    manager().init();
    EXPECT_EQ(0, journal().count("alpha.post_init"));
}

TEST(ControllerManager, PostInitGoesInTheOrderOfNames)
{
    support::register_controller("gamma");
    support::register_controller("alpha");
    support::register_controller("beta");
    manager().init();
    journal().clear();
    manager().post_init();
    EXPECT_THAT(journal().entries(), ElementsAre("alpha.post_init", "beta.post_init", "gamma.post_init"));
}

TEST(ControllerManager, PostInitMayLookUpAnyController)
{
    boost::shared_ptr<AbstractController> found;
    support::register_controller("alpha").on_post_init = [&found] { found = manager().controller("beta"); };
    support::register_controller("beta");
    manager().init();
    manager().post_init();
    ASSERT_TRUE(found);
    EXPECT_EQ("beta", found->controller_name());
}

TEST(ControllerManager, WithoutProductsNothingIsMade)
{
    const support::EmptyRegistry<AbstractControllerFactory> empty;
    manager().init();
    manager().post_init();
    EXPECT_EQ(0u, TestAccess::controllers(manager()));
    support::LogCapture log;
    EXPECT_FALSE(manager().controller("ProgressBarsController"));
    EXPECT_TRUE(log.took_assert("m_controller_map.size() > 0", "ControllerManager::controller", s_source));
    EXPECT_TRUE(log.took_assert("iter != m_controller_map.end()", "ControllerManager::controller", s_source));
}

TEST(ControllerManager, LookUpBeforeInitIsLogged)
{
    support::register_controller("alpha");
    support::LogCapture log;
    EXPECT_FALSE(manager().controller("alpha"));
    ASSERT_EQ(2u, log.lines().size()); // in this order
    EXPECT_NE(std::string::npos, log.lines()[0].find("m_controller_map.size() > 0"));
    EXPECT_TRUE(log.took_assert("m_controller_map.size() > 0", "ControllerManager::controller", s_source));
    EXPECT_TRUE(log.took_assert("iter != m_controller_map.end()", "ControllerManager::controller", s_source));
}

TEST(ControllerManager, UnknownNameIsLoggedAndEmpty)
{
    support::register_controller("alpha");
    manager().init();
    support::LogCapture log;
    EXPECT_FALSE(manager().controller("Alpha"));
    EXPECT_TRUE(log.took_assert("iter != m_controller_map.end()", "ControllerManager::controller", s_source));
    EXPECT_TRUE(log.lines().empty());
}

TEST(ControllerManager, SecondInitIsLoggedAndKeepsTheControllers)
{
    support::register_controller("alpha");
    manager().init();
    const boost::shared_ptr<AbstractController> first = manager().controller("alpha");
    support::LogCapture log;
    manager().init();
    for (std::size_t i = 0; i < AbstractControllerFactory::products().size(); ++i) {
        EXPECT_TRUE(log.took_assert("inserted", "ControllerManager::init", s_source));
    }
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(first, manager().controller("alpha"));
}

TEST(ControllerManager, FactoryThatGivesNothingIsLoggedAndSkipped)
{
    support::register_controller("alpha").gives_nothing = true;
    support::register_controller("beta");
    support::LogCapture log;
    manager().init();
    EXPECT_TRUE(log.took_assert("!utilities::null_pointer( sp_ac )", "ControllerManager::init(", s_source));
    manager().post_init();
    EXPECT_TRUE(manager().controller("beta"));
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(1, journal().count("beta.post_init"));
}

TEST(ControllerManager, LooksUpFromAnyThread)
{
    support::register_controller("alpha");
    manager().init();
    boost::shared_ptr<AbstractController> found;
    std::thread([&found] { found = manager().controller("alpha"); }).join();
    EXPECT_EQ(manager().controller("alpha"), found);
}

TEST(ControllerManager, LookUpWaitsWhileTheControllersAreMade)
{
    WaitingLookUp look_up;
    support::register_controller("alpha");
    static InterruptedFactory factory("beta");
    factory.on_create = [&look_up] { look_up.start(); };
    manager().init();
    EXPECT_EQ(manager().controller("alpha"), look_up.result());
}

TEST(ControllerManager, LookUpWaitsWhilePostInitRuns)
{
    WaitingLookUp look_up;
    support::register_controller("alpha").on_post_init = [&look_up] { look_up.start(); };
    manager().init();
    manager().post_init();
    EXPECT_EQ(manager().controller("alpha"), look_up.result());
}

TEST(ControllerManager, GoesInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<ControllerManager>());
}

TEST(ControllerManager, OrderedDestructionTakesTheControllers)
{
    support::register_controller("alpha");
    manager().init();
    const boost::shared_ptr<AbstractController> kept = manager().controller("alpha");
    pkBase::pkDestructor::run();
    EXPECT_FALSE(TestAccess::peek<ControllerManager>());
    EXPECT_EQ(0, journal().count("alpha.destroyed")); // somebody holds it
    EXPECT_EQ(1, kept.use_count());
}

TEST(ControllerManager, ControllersDieWithTheManager)
{
    support::register_controller("alpha");
    manager().init();
    TestAccess::destroy<ControllerManager>();
    EXPECT_EQ(1, journal().count("alpha.destroyed"));
    EXPECT_FALSE(TestAccess::peek<ControllerManager>());
    manager().init(); // and a new one can be filled
    EXPECT_TRUE(manager().controller("alpha"));
}
