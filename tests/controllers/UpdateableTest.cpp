#include "support/Fakes.h"
#include "support/TestAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using namespace tarqa::housekeeping;
using support::FakeController;
using support::FakeView;
using support::journal;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Updateable, ControllerWithoutViewsUpdatesNothing)
{
    FakeController controller("alpha");
    const FakeView unregistered("view");
    Updateable::update(&controller);
    Updateable::update(nullptr);
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(Updateable, ViewsAreUpdatedInTheOrderOfRegistration)
{
    FakeController controller("alpha");
    FakeController other("beta");
    FakeView first("first");
    FakeView second("second");
    FakeView third("third");
    FakeView others("others");
    third.register_controller(&controller);
    others.register_controller(&other);
    first.register_controller(&controller);
    second.register_controller(&controller);
    Updateable::update(&controller);
    EXPECT_THAT(journal().entries(), ElementsAre("third.update", "first.update", "second.update"));
}

TEST(Updateable, EveryRegistrationCounts)
{
    FakeController controller("alpha");
    FakeController other("beta");
    FakeView view("view");
    view.register_controller(&controller);
    view.register_controller(&controller);
    view.register_controller(&other);
    Updateable::update(&controller);
    EXPECT_EQ(2, journal().count("view.update"));
    Updateable::update(&other);
    EXPECT_EQ(3, journal().count("view.update"));
}

TEST(Updateable, ViewsThatRegisterMeanwhileComeNextTime)
{
    FakeController controller("alpha");
    FakeView first("first");
    FakeView late("late");
    first.register_controller(&controller);
    first.on_update = [&] {
        late.register_controller(&controller);
        first.on_update = nullptr;
    };
    Updateable::update(&controller);
    EXPECT_THAT(journal().entries(), ElementsAre("first.update"));
    Updateable::update(&controller);
    EXPECT_THAT(journal().entries(), ElementsAre("first.update", "first.update", "late.update"));
}

TEST(Updateable, ViewThatTakesItselfOutIsNotUpdatedAnyMore)
{
    FakeController controller("alpha");
    FakeController other("beta");
    FakeView first("first");
    FakeView second("second");
    for (FakeController* p_controller : {&controller, &other}) {
        first.register_controller(p_controller);
        second.register_controller(p_controller);
    }
    first.unregister();
    Updateable::update(&controller);
    Updateable::update(&other);
    EXPECT_THAT(journal().entries(), ElementsAre("second.update", "second.update"));
}

TEST(Updateable, ViewThatIsTakenOutMeanwhileIsNotUpdatedAnyMore)
{
    FakeController controller("alpha");
    FakeView first("first");
    FakeView second("second");
    first.register_controller(&controller);
    second.register_controller(&controller);
    first.on_update = [&] { second.unregister(); };
    Updateable::update(&controller);
    EXPECT_THAT(journal().entries(), ElementsAre("first.update"));
}

TEST(Updateable, ViewMayTakeItselfOutWhileItIsUpdated)
{
    FakeController controller("alpha");
    FakeView first("first");
    FakeView second("second");
    first.on_update = [&] { first.unregister(); };
    first.register_controller(&controller);
    Updateable::update(&controller); // as the only one
    EXPECT_EQ(0u, TestAccess::registered_views());
    first.register_controller(&controller);
    second.register_controller(&controller);
    Updateable::update(&controller);
    Updateable::update(&controller);
    EXPECT_THAT(
        journal().entries(), ElementsAre("first.update", "first.update", "second.update", "second.update"));
}

TEST(Updateable, CopyIsNotRegistered)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    const FakeView copy(view);
    FakeView assigned("other");
    assigned = view;
    Updateable::update(&controller);
    EXPECT_EQ(1, journal().count("view.update"));
    EXPECT_EQ(1u, TestAccess::registered_views());
}

TEST(Updateable, DestructionLeavesTheRegistration)
{
    FakeController controller("alpha");
    auto view = std::make_unique<FakeView>("view");
    view->register_controller(&controller);
    EXPECT_EQ(1u, TestAccess::registered_views());
    view.reset();
    EXPECT_EQ(1u, TestAccess::registered_views());
}

TEST(Updateable, ThrowingViewIsPassedOn)
{
    FakeController controller("alpha");
    FakeView view("view");
    view.register_controller(&controller);
    view.on_update = support::throws_std("view");
    EXPECT_THROW(Updateable::update(&controller), std::runtime_error);
}
