#include "support/Controllers.h"
#include "support/EmptyRegistry.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/Phases.h"
#include "support/Presentations.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <pkBase/pkDestructor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

using namespace tarqa::housekeeping;
using gui::AbstractPresentationFactory;
using support::FakePresentation;
using support::FakePresentationFactory;
using support::journal;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_source = "housekeeping/gui/src/PresentationManager";
const char* const s_null = "!utilities::null_pointer( sp_presentation )";

gui::PresentationManager& manager()
{
    return gui::PresentationManager::instance();
}

/// Without the library's own presentation, and with the controller "tool".
class PresentationManager : public testing::Test
{
protected:
    PresentationManager()
    {
        support::register_controller("tool");
        support::init_controllers();
        journal().clear();
    }
    ~PresentationManager() override { TestAccess::destroy<gui::PresentationManager>(); }

    static FakePresentationFactory& add(const std::string& name)
    {
        return support::register_presentation(name, "tool");
    }
    static support::FakeController& controller()
    {
        return dynamic_cast<support::FakeController&>(*ControllerManager::instance().controller("tool"));
    }

    support::EmptyRegistry<AbstractPresentationFactory> registry;
};

} // namespace

TEST_F(PresentationManager, IsOneObject)
{
    EXPECT_EQ(&gui::PresentationManager::instance(), &gui::PresentationManager::instance());
    EXPECT_EQ(&gui::PresentationManager::instance(), &gui::PresentationManager::const_instance());
    EXPECT_FALSE((std::is_base_of_v<QObject, gui::PresentationManager>));
}

TEST_F(PresentationManager, CreatesAllThenInitialisesAllThenBuildsAll)
{
    add("gamma");
    add("alpha");
    add("beta");
    manager().init();
    EXPECT_THAT(journal().entries(),
        ElementsAre("gamma.create", "alpha.create", "beta.create", "gamma.init", "alpha.init", "beta.init",
            "gamma.build", "alpha.build", "beta.build"));
}

TEST_F(PresentationManager, FindsPresentationsByName)
{
    add("alpha");
    add("beta");
    manager().init();
    const boost::shared_ptr<gui::AbstractPresentation> alpha = manager().presentation("alpha");
    ASSERT_TRUE(alpha);
    EXPECT_EQ(alpha, manager().presentation("alpha"));
    EXPECT_NE(alpha, manager().presentation("beta"));
    EXPECT_EQ(2, alpha.use_count());
}

TEST_F(PresentationManager, UnknownNameIsEmptyWithoutALogEntry)
{
    EXPECT_FALSE(manager().presentation("alpha"));
    add("alpha");
    EXPECT_FALSE(manager().presentation("alpha")); // not made yet
    manager().init();
    EXPECT_FALSE(manager().presentation("Alpha"));
    EXPECT_FALSE(manager().presentation(""));
    EXPECT_EQ(1u, TestAccess::presentations(manager()));
}

TEST_F(PresentationManager, WithoutProductsNothingIsMade)
{
    manager().init();
    EXPECT_EQ(0u, TestAccess::presentations(manager()));
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST_F(PresentationManager, ControllersAreConnectedBeforeAnythingIsBuilt)
{
    add("alpha").on_build = [](FakePresentation&) {
        const auto beta = boost::dynamic_pointer_cast<FakePresentation>(manager().presentation("beta"));
        ASSERT_TRUE(beta);
        EXPECT_EQ(&controller(), beta->controller());
        EXPECT_EQ(1, journal().count("beta.init"));
    };
    add("beta");
    manager().init();
    EXPECT_EQ(1, journal().count("alpha.build"));
}

TEST_F(PresentationManager, InitialisationMayLookUpPresentationsThatAreNotInitialisedYet)
{
    add("alpha").on_init = [](FakePresentation&) {
        EXPECT_TRUE(manager().presentation("beta"));
        EXPECT_EQ(0, journal().count("beta.init"));
    };
    add("beta");
    manager().init();
    EXPECT_EQ(1, journal().count("alpha.init"));
}

TEST_F(PresentationManager, MissingProductIsLoggedInEveryPassAndStored)
{
    add("alpha").gives_nothing = true;
    add("beta");
    support::LogCapture log;
    manager().init();
    EXPECT_TRUE(log.took_assert(s_null, "PresentationManager::", s_source));
    EXPECT_TRUE(log.took_assert(s_null, "PresentationManager::init(", s_source));
    EXPECT_TRUE(log.took_assert(s_null, "PresentationManager::init(", s_source));
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(2u, TestAccess::presentations(manager()));
    EXPECT_FALSE(manager().presentation("alpha"));
    EXPECT_THAT(journal().entries(), ElementsAre("alpha.create", "beta.create", "beta.init", "beta.build"));
}

TEST_F(PresentationManager, NameThatIsListedTwiceKeepsTheFirstPresentation)
{
    add("alpha");
    registry.list_again("alpha");
    support::LogCapture log;
    manager().init();
    EXPECT_TRUE(log.took_assert("inserted", "PresentationManager::", s_source));
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(1u, TestAccess::presentations(manager()));
    EXPECT_THAT(journal().entries(),
        ElementsAre("alpha.create", "alpha.create", "alpha.destroyed", // the second one
            "alpha.init", "alpha.init", "alpha.build", "alpha.build"));
}

TEST_F(PresentationManager, SecondInitIsLoggedAndKeepsThePresentations)
{
    add("alpha");
    add("beta");
    manager().init();
    const boost::shared_ptr<gui::AbstractPresentation> alpha = manager().presentation("alpha");
    support::LogCapture log;
    manager().init();
    EXPECT_TRUE(log.took_assert("inserted", "PresentationManager::", s_source));
    EXPECT_TRUE(log.took_assert("inserted", "PresentationManager::", s_source));
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_EQ(alpha, manager().presentation("alpha"));
    EXPECT_EQ(2u, TestAccess::presentations(manager()));
}

TEST_F(PresentationManager, PresentationWithoutItsControllerIsInitialisedAndBuilt)
{
    support::register_presentation("lonely", "unknown");
    add("alpha");
    support::LogCapture log;
    manager().init();
    EXPECT_TRUE(log.took_assert("iter != m_controller_map.end()", "ControllerManager::controller",
        "housekeeping/src/ControllerManager"));
    const auto lonely = boost::dynamic_pointer_cast<FakePresentation>(manager().presentation("lonely"));
    ASSERT_TRUE(lonely);
    EXPECT_EQ(nullptr, lonely->controller());
    EXPECT_EQ(1, journal().count("lonely.init"));
    EXPECT_EQ(1, journal().count("lonely.build"));
    EXPECT_EQ(1, journal().count("alpha.build"));
}

TEST_F(PresentationManager, ChangesOfAControllerRefreshAllItsPresentationsInTheOrderOfRegistration)
{
    add("gamma");
    add("alpha");
    manager().init();
    journal().clear();
    controller().force_update();
    EXPECT_THAT(journal().entries(), ElementsAre("gamma.update", "alpha.update"));
}

// The end

TEST_F(PresentationManager, GoesInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<gui::PresentationManager>());
}

TEST_F(PresentationManager, IsGoneWhenItsPresentationsGo)
{
    add("alpha").on_destroyed
        = [](FakePresentation&) { EXPECT_FALSE(TestAccess::peek<gui::PresentationManager>()); };
    manager().init();
    TestAccess::destroy<gui::PresentationManager>();
    EXPECT_EQ(1, journal().count("alpha.destroyed"));
    manager().init(); // and a new one can be filled
    EXPECT_TRUE(manager().presentation("alpha"));
}

TEST_F(PresentationManager, PresentationLivesAsLongAsSomebodyHoldsIt)
{
    add("alpha");
    manager().init();
    boost::shared_ptr<gui::AbstractPresentation> alpha = manager().presentation("alpha");
    TestAccess::destroy<gui::PresentationManager>();
    EXPECT_EQ(0, journal().count("alpha.destroyed"));
    controller().force_update();
    EXPECT_EQ(1, journal().count("alpha.update"));
    alpha.reset();
    EXPECT_EQ(1, journal().count("alpha.destroyed"));
}

TEST_F(PresentationManager, ControllersMayRedrawAfterThePresentationsAreGone)
{
    add("alpha");
    manager().init();
    support::FakeDocument& document = support::create_document();
    TestAccess::destroy<gui::PresentationManager>();
    controller().force_update();
    DocumentManager::instance().destroy_document(document.id(), true, false, false, DocumentId::null());
    controller().force_update();
    EXPECT_EQ(0, journal().count("alpha.update"));
    EXPECT_EQ(0u, TestAccess::registered_views());
}
