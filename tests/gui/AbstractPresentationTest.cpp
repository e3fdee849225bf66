#include "support/Controllers.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/Presentations.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using namespace tarqa::housekeeping;
using support::FakeController;
using support::FakePresentation;
using support::journal;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The controllers "alpha" and "beta", and a presentation of alpha.
class AbstractPresentation : public testing::Test
{
protected:
    AbstractPresentation()
    {
        support::register_controller("alpha");
        support::register_controller("beta");
        support::init_controllers();
        journal().clear();
    }

    static FakeController& controller(const char* name)
    {
        return dynamic_cast<FakeController&>(*ControllerManager::instance().controller(name));
    }

    /// As a tool does.
    static void change(const char* name)
    {
        ControllerLocker locker(controller(name));
        locker.finished();
    }

    FakePresentation presentation{"view", "alpha"};
};

} // namespace

TEST_F(AbstractPresentation, HasNoControllerAtFirst)
{
    EXPECT_TRUE((std::is_base_of_v<Updateable, gui::AbstractPresentation>));
    EXPECT_EQ(nullptr, presentation.controller());
    EXPECT_EQ(0u, TestAccess::registered_views());
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST_F(AbstractPresentation, InitConnectsTheControllerFirst)
{
    presentation.on_init = [](FakePresentation& initialised) {
        EXPECT_EQ(&controller("alpha"), initialised.controller());
        EXPECT_EQ(1u, TestAccess::registered_views());
    };
    presentation.init();
    EXPECT_THAT(journal().entries(), ElementsAre("view.init"));
    EXPECT_EQ(&controller("alpha"), presentation.controller());
}

TEST_F(AbstractPresentation, InitKeepsNoShareOfTheController)
{
    const long before = ControllerManager::instance().controller("alpha").use_count();
    presentation.init();
    EXPECT_EQ(before, ControllerManager::instance().controller("alpha").use_count());
}

TEST_F(AbstractPresentation, BuildOnlyBuilds)
{
    presentation.build();
    EXPECT_THAT(journal().entries(), ElementsAre("view.build"));
    EXPECT_EQ(nullptr, presentation.controller());
}

TEST_F(AbstractPresentation, ChangesOfItsControllerRefreshIt)
{
    presentation.init();
    journal().clear();
    change("alpha");
    EXPECT_THAT(journal().entries(), ElementsAre("view.update"));
    change("beta");
    {
        const ControllerLocker unfinished(controller("alpha"));
    }
    EXPECT_EQ(1, journal().count("view.update"));
}

TEST_F(AbstractPresentation, RefreshesOnlyWhileItReceivesUpdates)
{
    presentation.init();
    presentation.receive_updates(false);
    change("alpha");
    EXPECT_EQ(0, journal().count("view.update"));
    presentation.receive_updates(true);
    EXPECT_EQ(0, journal().count("view.update")); // nothing is made up for
    change("alpha");
    EXPECT_EQ(1, journal().count("view.update"));
}

TEST_F(AbstractPresentation, PrivateRefreshAsksNobody)
{
    presentation.receive_updates(false);
    TestAccess::update_presentation_private(presentation);
    EXPECT_THAT(journal().entries(), ElementsAre("view.update"));
}

TEST_F(AbstractPresentation, WithoutItsControllerItInitialisesAndBuilds)
{
    FakePresentation lonely("lonely", "gamma");
    support::LogCapture log;
    lonely.init();
    lonely.build();
    EXPECT_TRUE(log.took_assert("iter != m_controller_map.end()", "ControllerManager::controller",
        "housekeeping/src/ControllerManager"));
    EXPECT_EQ(nullptr, lonely.controller());
    EXPECT_EQ(0u, TestAccess::registered_views());
    EXPECT_THAT(journal().entries(), ElementsAre("lonely.init", "lonely.build"));
}

TEST_F(AbstractPresentation, CopyHasBothFieldsButIsNotRegistered)
{
    presentation.init();
    presentation.receive_updates(false);
    FakePresentation copy(presentation);
    EXPECT_EQ(&controller("alpha"), copy.controller());
    EXPECT_EQ(1u, TestAccess::registered_views());
    copy.register_controller(&controller("beta"));
    journal().clear();
    change("beta");
    EXPECT_THAT(journal().entries(), IsEmpty()); // it does not receive updates either
}

TEST_F(AbstractPresentation, AssignmentTakesBothFields)
{
    presentation.init();
    presentation.receive_updates(false);
    FakePresentation assigned("other", "beta");
    assigned.init();
    assigned = presentation;
    EXPECT_EQ(&controller("alpha"), assigned.controller());
    journal().clear();
    change("beta"); // where it was registered
    EXPECT_THAT(journal().entries(), IsEmpty());
    presentation.receive_updates(true);
    assigned = presentation;
    change("beta");
    EXPECT_EQ(1, journal().count("view.update"));
}

TEST_F(AbstractPresentation, DeletedOneIsRefreshedNoMore)
{
    presentation.init();
    {
        FakePresentation doomed("doomed", "alpha");
        doomed.init();
        doomed.register_controller(&controller("beta"));
        const FakePresentation copy(presentation); // its end takes only itself out
        EXPECT_EQ(3u, TestAccess::registered_views());
    }
    EXPECT_EQ(1u, TestAccess::registered_views());
    journal().clear();
    change("alpha");
    change("beta");
    EXPECT_THAT(journal().entries(), ElementsAre("view.update"));
}
