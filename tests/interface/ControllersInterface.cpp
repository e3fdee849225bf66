#include "interface/Interface.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/ProgressBarsController.h>
#include <tarqa/housekeeping/ProgressBarsControllerFactory.h>
#include <tarqa/housekeeping/QmlButtonController.h>
#include <tarqa/housekeeping/TimerObject.h>
#include <tarqa/housekeeping/Updateable.h>

#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <string>

// What the library offers for controllers, their locks and views, the timing of tasks, and its two ready-made
// controllers.

using namespace tarqa::housekeeping;

namespace {

typedef std::string Text;
typedef boost::shared_ptr<AbstractState> StatePointer;

// Controllers

static_assert(std::is_base_of_v<QObject, AbstractController>);
static_assert(!std::is_abstract_v<AbstractController>);
static_assert(std::has_virtual_destructor_v<AbstractController>);
static_assert(std::is_default_constructible_v<AbstractController>);
static_assert(!std::is_copy_constructible_v<AbstractController>);
static_assert(!std::is_copy_assignable_v<AbstractController>);
INTERFACE_HAS(AbstractController::post_init, void (AbstractController::*)());
INTERFACE_HAS(AbstractController::state_exists, bool (AbstractController::*)() const);
INTERFACE_HAS(AbstractController::controller_name, const Text& (AbstractController::*)() const);
INTERFACE_HAS(AbstractController::controller_name, void (AbstractController::*)(const Text&));
INTERFACE_HAS(
    AbstractController::create_associated_state, StatePointer (AbstractController::*)(AbstractDocument&));
INTERFACE_HAS(AbstractController::update_associated_state, void (AbstractController::*)(StatePointer));
INTERFACE_HAS(AbstractController::is_locked, bool (AbstractController::*)() const);
INTERFACE_HIDES(AbstractController, create_state);
INTERFACE_HIDES(AbstractController, update_state);
INTERFACE_HIDES(AbstractController, force_update);
INTERFACE_HIDES(AbstractController, acquire);
INTERFACE_HIDES(AbstractController, release);

/// Opens what is protected, and has the first entry behind the base's own.
class OpenController : public AbstractController
{
public:
    using AbstractController::create_state;
    using AbstractController::disconnectNotify;
    using AbstractController::force_update;
    using AbstractController::update_state;
    virtual void next() { }
};

INTERFACE_HAS(OpenController::create_state, StatePointer (AbstractController::*)(AbstractDocument&));
INTERFACE_HAS(OpenController::update_state, void (AbstractController::*)(StatePointer));
INTERFACE_HAS(OpenController::force_update, void (AbstractController::*)());

// Locks

static_assert(std::is_polymorphic_v<ControllerLocker>);
static_assert(std::has_virtual_destructor_v<ControllerLocker>);
static_assert(std::is_constructible_v<ControllerLocker, AbstractController&>);
static_assert(!std::is_default_constructible_v<ControllerLocker>);
static_assert(!std::is_constructible_v<ControllerLocker, const AbstractController&>);
static_assert(!std::is_copy_constructible_v<ControllerLocker>, "a lock is released once");
static_assert(!std::is_copy_assignable_v<ControllerLocker>);
INTERFACE_HAS(ControllerLocker::finished, void (ControllerLocker::*)());

class NextLocker : public ControllerLocker
{
public:
    virtual void next() { }
};

// The manager

static_assert(!std::is_base_of_v<QObject, ControllerManager>);
static_assert(!std::is_default_constructible_v<ControllerManager>);
static_assert(!std::is_destructible_v<ControllerManager>);
static_assert(!std::is_copy_constructible_v<ControllerManager>);
static_assert(!std::is_copy_assignable_v<ControllerManager>);
INTERFACE_HAS(ControllerManager::instance, ControllerManager& (*)());
INTERFACE_HAS(ControllerManager::const_instance, const ControllerManager& (*)());
INTERFACE_HAS(ControllerManager::init, void (ControllerManager::*)());
INTERFACE_HAS(ControllerManager::post_init, void (ControllerManager::*)());
INTERFACE_HAS(
    ControllerManager::controller, boost::shared_ptr<AbstractController> (ControllerManager::*)(const Text&));
INTERFACE_HIDES(ControllerManager, get_instance);
INTERFACE_HIDES(ControllerManager, destroy_instance);

// Views

static_assert(std::is_abstract_v<Updateable>);
static_assert(std::has_virtual_destructor_v<Updateable>);
static_assert(sizeof(Updateable) == sizeof(void*), "no data of its own");
INTERFACE_HAS(Updateable::update, void (*)(AbstractController*));
INTERFACE_HIDES(Updateable, register_controller);
INTERFACE_HIDES(Updateable, unregister);

class OpenView : public Updateable
{
public:
    using Updateable::register_controller;
    using Updateable::unregister;
    virtual void next() { }

private:
    void update() override { }
};

INTERFACE_HAS(OpenView::register_controller, void (Updateable::*)(AbstractController*));
INTERFACE_HAS(OpenView::unregister, void (Updateable::*)());
static_assert(std::is_default_constructible_v<OpenView>);
static_assert(std::is_copy_constructible_v<OpenView>);
static_assert(std::is_same_v<decltype(std::declval<OpenView&>().Updateable::operator=(
                                 std::declval<const Updateable&>())),
    Updateable&>);

template <class View>
std::false_type may_not_be_updated_alone(decltype(std::declval<View&>().update())*);
template <class View>
std::true_type may_not_be_updated_alone(...);
static_assert(decltype(may_not_be_updated_alone<Updateable>(nullptr))::value, "update() is private");

// Timing

static_assert(std::is_constructible_v<TimerObject, const QString&>);
static_assert(!std::is_default_constructible_v<TimerObject>);
static_assert(std::is_copy_constructible_v<TimerObject>);
static_assert(std::is_same_v<decltype(std::declval<TimerObject&>() = std::declval<const TimerObject&>()),
    TimerObject&>);
INTERFACE_HAS(TimerObject::addStep, void (TimerObject::*)(const QString&));

// Progress bars; the derived class has nothing of its own in place of the base's virtual operations.

static_assert(std::is_base_of_v<AbstractController, ProgressBarsController>);
static_assert(std::is_default_constructible_v<ProgressBarsController>);
static_assert(
    std::is_same_v<decltype(&ProgressBarsController::post_init), decltype(&AbstractController::post_init)>);
static_assert(std::is_same_v<decltype(&ProgressBarsController::state_exists),
    decltype(&AbstractController::state_exists)>);

class OpenBars : public ProgressBarsController
{
public:
    using ProgressBarsController::create_state;
    using ProgressBarsController::update_state;
    virtual void next() { }
};

static_assert(std::is_same_v<decltype(&OpenBars::create_state), decltype(&OpenController::create_state)>);
static_assert(std::is_same_v<decltype(&OpenBars::update_state), decltype(&OpenController::update_state)>);
INTERFACE_HAS(
    ProgressBarsController::command_started, void (ProgressBarsController::*)(CommandId, DocumentId));
INTERFACE_HAS(ProgressBarsController::command_progress,
    void (ProgressBarsController::*)(CommandId, unsigned long long));
INTERFACE_HAS(ProgressBarsController::command_finished, void (ProgressBarsController::*)(CommandId));
INTERFACE_HAS(
    ProgressBarsController::percentage, unsigned long long (ProgressBarsController::*)(CommandId) const);
INTERFACE_HAS(ProgressBarsController::document, DocumentId (ProgressBarsController::*)(CommandId) const);
INTERFACE_HAS(ProgressBarsController::running_commands,
    unsigned long long (ProgressBarsController::*)(DocumentId) const);

static_assert(std::is_base_of_v<AbstractControllerFactory, ProgressBarsControllerFactory>);
static_assert(std::is_default_constructible_v<ProgressBarsControllerFactory>);
static_assert(!std::is_abstract_v<ProgressBarsControllerFactory>);

// Buttons

static_assert(std::is_base_of_v<QObject, QmlButtonController>);
static_assert(!std::is_base_of_v<AbstractController, QmlButtonController>);
static_assert(std::is_default_constructible_v<QmlButtonController>);
static_assert(std::is_constructible_v<QmlButtonController, QObject*>);
INTERFACE_HAS(QmlButtonController::visible, bool (QmlButtonController::*)() const);
INTERFACE_HAS(QmlButtonController::setVisible, void (QmlButtonController::*)(bool));
INTERFACE_HAS(QmlButtonController::geometry, QRectF (QmlButtonController::*)());
INTERFACE_HAS(QmlButtonController::setGeometry, void (QmlButtonController::*)(QRectF));
INTERFACE_HAS(QmlButtonController::visibleChanged, void (QmlButtonController::*)(bool));
INTERFACE_HAS(QmlButtonController::geometryChanged, void (QmlButtonController::*)(QRectF));
INTERFACE_HAS(QmlButtonController::clicked, void (QmlButtonController::*)());

const std::size_t s_after_destructor = 2; // which has two entries

} // namespace

TEST(AbstractControllerInterface, VirtualOperationsFollowThoseOfTheObject)
{
    EXPECT_TRUE(interface::in_a_row(&OpenController::disconnectNotify, &AbstractController::post_init,
        &AbstractController::state_exists, &OpenController::create_state, &OpenController::update_state,
        &OpenController::next));
}

TEST(AbstractControllerInterface, MetaObjectKnowsTheClassAndItsBase)
{
    EXPECT_STREQ("tarqa::housekeeping::AbstractController", AbstractController::staticMetaObject.className());
    EXPECT_EQ(&QObject::staticMetaObject, AbstractController::staticMetaObject.superClass());
}

TEST(ControllerLockerInterface, DestructorIsTheOnlyVirtualOperation)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&NextLocker::next));
}

TEST(UpdateableInterface, UpdateIsTheOnlyVirtualOperationBehindTheDestructor)
{
    EXPECT_EQ(s_after_destructor + 1, interface::slot_of(&OpenView::next));
}

TEST(ProgressBarsControllerInterface, AddsNoVirtualOperation)
{
    EXPECT_EQ(interface::slot_of(&OpenController::next), interface::slot_of(&OpenBars::next));
    EXPECT_STREQ(
        "tarqa::housekeeping::ProgressBarsController", ProgressBarsController::staticMetaObject.className());
    EXPECT_EQ(&AbstractController::staticMetaObject, ProgressBarsController::staticMetaObject.superClass());
}

TEST(QmlButtonControllerInterface, SignalsNameTheirParameters)
{
    const QMetaObject& meta = QmlButtonController::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::QmlButtonController", meta.className());
    EXPECT_EQ(QList<QByteArray>{"visible"},
        meta.method(meta.indexOfSignal("visibleChanged(bool)")).parameterNames());
    EXPECT_EQ(QList<QByteArray>{"geometry"},
        meta.method(meta.indexOfSignal("geometryChanged(QRectF)")).parameterNames());
}
