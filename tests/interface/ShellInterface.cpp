#include "interface/Interface.h"

#include "support/Presentations.h"

#include <tarqa/housekeeping/Updateable.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/gui/ChildDockWidget.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentationFactory.h>

#include <QtCore/QMetaMethod>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

// What the library offers for the main window with its panels, for presentations, and for undo and redo.

using namespace tarqa::housekeeping;
using namespace tarqa::housekeeping::gui;
using testing::ElementsAre;

namespace {

typedef std::string Text;
typedef boost::shared_ptr<AbstractPresentation> PresentationPointer;

// The main window

static_assert(std::is_base_of_v<QMainWindow, AbstractMainWindow>);
static_assert(!std::is_abstract_v<AbstractMainWindow>);
static_assert(std::has_virtual_destructor_v<AbstractMainWindow>);
static_assert(std::is_default_constructible_v<AbstractMainWindow>);
static_assert(std::is_constructible_v<AbstractMainWindow, QWidget*>);
static_assert(std::is_constructible_v<AbstractMainWindow, QWidget*, Qt::WindowFlags>);
static_assert(!std::is_convertible_v<QWidget*, AbstractMainWindow>);
static_assert(!std::is_copy_constructible_v<AbstractMainWindow>);
static_assert(!std::is_copy_assignable_v<AbstractMainWindow>);
INTERFACE_HAS(AbstractMainWindow::instance, AbstractMainWindow* (*)());
INTERFACE_HAS(AbstractMainWindow::hasInstance, bool (*)());
INTERFACE_HAS(AbstractMainWindow::tr, QString (*)(const char*, const char*, int));
INTERFACE_HAS(AbstractMainWindow::addPanel, int (AbstractMainWindow::*)(QWidget*, const QString&));
INTERFACE_HAS(AbstractMainWindow::removePanel, void (AbstractMainWindow::*)(int));
INTERFACE_HAS(AbstractMainWindow::indexOf, int (AbstractMainWindow::*)(QWidget*) const);
INTERFACE_HAS(AbstractMainWindow::restoreChildWidgets, void (AbstractMainWindow::*)());
INTERFACE_HAS(AbstractMainWindow::readSettings, void (AbstractMainWindow::*)());
INTERFACE_HAS(AbstractMainWindow::writeSettings, void (AbstractMainWindow::*)());
INTERFACE_HAS(AbstractMainWindow::may_close, bool (AbstractMainWindow::*)());
INTERFACE_HAS(AbstractMainWindow::take_undo_redo_actions, void (AbstractMainWindow::*)(QAction*, QAction*));
INTERFACE_HAS(AbstractMainWindow::dropped,
    void (AbstractMainWindow::*)(const std::vector<std::string>&)); // the maker's UrlList
INTERFACE_HAS(AbstractMainWindow::detachingPanel, void (AbstractMainWindow::*)(int));
INTERFACE_HAS(AbstractMainWindow::attachedPanel, void (AbstractMainWindow::*)(int));
static_assert(std::is_same_v<UrlList, tarqa::utilities::UrlList>);

/// What is protected, and the first entry behind the window's own.
class NextWindow : public AbstractMainWindow
{
public:
    using AbstractMainWindow::eventFilter;
    using AbstractMainWindow::FloatingPanels;
    using AbstractMainWindow::m_floatingPanels;
    using AbstractMainWindow::m_panelStack;
    using AbstractMainWindow::m_panelTabBar;
    virtual void next() { }
};

INTERFACE_HAS(NextWindow::eventFilter, bool (AbstractMainWindow::*)(QObject*, QEvent*));
static_assert(std::is_same_v<decltype(NextWindow::m_panelStack), QStackedWidget*>);
static_assert(std::is_same_v<decltype(NextWindow::m_panelTabBar), QTabBar*>);
static_assert(std::is_same_v<decltype(NextWindow::m_floatingPanels), NextWindow::FloatingPanels>);
static_assert(std::is_same_v<NextWindow::FloatingPanels::value_type, std::pair<ChildDockWidget*, QWidget*>>);

// Floating windows

static_assert(std::is_base_of_v<QWidget, ChildDockWidget>);
static_assert(std::has_virtual_destructor_v<ChildDockWidget>);
static_assert(std::is_constructible_v<ChildDockWidget, const QString&, AbstractMainWindow*>);
static_assert(!std::is_default_constructible_v<ChildDockWidget>);
static_assert(!std::is_constructible_v<ChildDockWidget, const QString&>);
static_assert(!std::is_constructible_v<ChildDockWidget, const QString&, QWidget*>);
static_assert(!std::is_copy_constructible_v<ChildDockWidget>);
static_assert(sizeof(ChildDockWidget) == sizeof(QWidget) + sizeof(QStackedWidget*) + sizeof(QSize),
    "the stack, a size and nothing else");
INTERFACE_HAS(ChildDockWidget::put_panel, void (ChildDockWidget::*)(QWidget*));
INTERFACE_HAS(ChildDockWidget::take_panel, QWidget* (ChildDockWidget::*)());

// Messages of the main window

static_assert(std::is_base_of_v<Message, MainWindowMessage>);
static_assert(std::is_default_constructible_v<MainWindowMessage>);
static_assert(std::is_copy_constructible_v<MainWindowMessage>);
static_assert(!std::is_copy_assignable_v<MainWindowMessage>);
static_assert(MainWindowMessage::MenuBar == 0 && MainWindowMessage::Menu == 1);
static_assert(MainWindowMessage::ToolBar == 2 && MainWindowMessage::EditActions == 6);
static_assert(sizeof(MainWindowMessage::Kind) == 4);
INTERFACE_HAS(MainWindowMessage::instance, MainWindowMessage* (*)());
INTERFACE_HAS(MainWindowMessage::type_name, const char* (*)());
INTERFACE_HAS(MainWindowMessage::tr, QString (*)(const char*, const char*, int));
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
INTERFACE_HAS(MainWindowMessage::trUtf8, QString (*)(const char*, const char*, int));
QT_WARNING_POP
INTERFACE_HAS(MainWindowMessage::subscribe, bool (*)(const QObject*, const char*, Qt::ConnectionType));
INTERFACE_HAS(MainWindowMessage::subscribe, bool (*)(const QObject*, Qt::ConnectionType));
INTERFACE_HAS(MainWindowMessage::unsubscribe, bool (*)(const QObject*));
INTERFACE_HAS(MainWindowMessage::dispatch, void (*)(Message*));
INTERFACE_HAS(MainWindowMessage::dispatch, void (MainWindowMessage::*)());
INTERFACE_HAS(MainWindowMessage::post, void (MainWindowMessage::*)());
INTERFACE_HAS(MainWindowMessage::target, void (MainWindowMessage::*)(QWidget*));
INTERFACE_HAS(MainWindowMessage::target, QWidget* (MainWindowMessage::*)() const);
INTERFACE_HAS(MainWindowMessage::kind, void (MainWindowMessage::*)(int));
INTERFACE_HAS(MainWindowMessage::kind, int (MainWindowMessage::*)() const);
INTERFACE_HAS(MainWindowMessage::owner, void (MainWindowMessage::*)(QWidget*));
INTERFACE_HAS(MainWindowMessage::owner, QWidget* (MainWindowMessage::*)() const);
INTERFACE_HAS(MainWindowMessage::addMenu, void (MainWindowMessage::*)(QMenu*));
INTERFACE_HAS(MainWindowMessage::addAction, void (MainWindowMessage::*)(QAction*));
INTERFACE_HAS(MainWindowMessage::addSeparator, void (MainWindowMessage::*)());
INTERFACE_HAS(MainWindowMessage::insertMenu, void (MainWindowMessage::*)(int, QMenu*));
INTERFACE_HAS(MainWindowMessage::insertAction, void (MainWindowMessage::*)(int, QAction*));
INTERFACE_HAS(MainWindowMessage::insertSeparator, void (MainWindowMessage::*)(int));
INTERFACE_HAS(MainWindowMessage::message_dispatched, void (MainWindowMessage::*)(MainWindowMessage&));

// Presentations

static_assert(std::is_base_of_v<Updateable, AbstractPresentation>);
static_assert(!std::is_base_of_v<QObject, AbstractPresentation>);
static_assert(std::is_abstract_v<AbstractPresentation>);
static_assert(std::has_virtual_destructor_v<AbstractPresentation>);
static_assert(std::is_copy_constructible_v<support::FakePresentation>);
static_assert(std::is_copy_assignable_v<support::FakePresentation>);
static_assert(!std::is_abstract_v<support::FakePresentation>, "four operations are all that it needs");
INTERFACE_HAS(AbstractPresentation::init, void (AbstractPresentation::*)());
INTERFACE_HAS(AbstractPresentation::build, void (AbstractPresentation::*)());

/// What is protected, the two private operations that can be overridden, and the first entry behind all.
class NextPresentation : public AbstractPresentation
{
public:
    using AbstractPresentation::build_presentation;
    using AbstractPresentation::controller;
    using AbstractPresentation::controller_name;
    using AbstractPresentation::init_presentation;
    using AbstractPresentation::receive_updates;
    using AbstractPresentation::update_presentation;
    void update() override { }
    void connect_controller() override { }
    virtual void next() { }
};

INTERFACE_HAS(NextPresentation::update_presentation, void (AbstractPresentation::*)());
INTERFACE_HAS(NextPresentation::init_presentation, void (AbstractPresentation::*)());
INTERFACE_HAS(NextPresentation::build_presentation, void (AbstractPresentation::*)());
INTERFACE_HAS(NextPresentation::controller_name, Text (AbstractPresentation::*)() const);
INTERFACE_HAS(NextPresentation::controller, AbstractController* (AbstractPresentation::*)() const);
INTERFACE_HAS(NextPresentation::receive_updates, void (AbstractPresentation::*)(bool));

/// Of the pure operations all are there but one.
class WithoutUpdate : public AbstractPresentation
{
    void init_presentation() override { }
    void build_presentation() override { }
    Text controller_name() const override { return Text(); }
};
class WithoutInit : public AbstractPresentation
{
    void update_presentation() override { }
    void build_presentation() override { }
    Text controller_name() const override { return Text(); }
};
class WithoutBuild : public AbstractPresentation
{
    void update_presentation() override { }
    void init_presentation() override { }
    Text controller_name() const override { return Text(); }
};
class WithoutName : public AbstractPresentation
{
    void update_presentation() override { }
    void init_presentation() override { }
    void build_presentation() override { }
};

static_assert(std::is_abstract_v<WithoutUpdate> && std::is_abstract_v<WithoutInit>);
static_assert(std::is_abstract_v<WithoutBuild> && std::is_abstract_v<WithoutName>);

// Their factories

static_assert(std::is_abstract_v<AbstractPresentationFactory>);
static_assert(std::has_virtual_destructor_v<AbstractPresentationFactory>);
INTERFACE_HAS(AbstractPresentationFactory::factory_name, const char* (*)());
INTERFACE_HAS(AbstractPresentationFactory::create, PresentationPointer (*)(const Text&));
INTERFACE_HAS(AbstractPresentationFactory::create, PresentationPointer (*)());
INTERFACE_HAS(AbstractPresentationFactory::create_unmanaged, AbstractPresentation* (*)(const Text&));
INTERFACE_HAS(AbstractPresentationFactory::create_unmanaged, AbstractPresentation* (*)());
INTERFACE_HAS(AbstractPresentationFactory::products, std::vector<Text> (*)());
INTERFACE_HAS(
    AbstractPresentationFactory::create_product, PresentationPointer (AbstractPresentationFactory::*)());
INTERFACE_HAS(AbstractPresentationFactory::create_unmanaged_product,
    AbstractPresentation* (AbstractPresentationFactory::*)());
static_assert(std::is_base_of_v<AbstractPresentationFactory, UndoRedoPresentationFactory>);
static_assert(std::is_default_constructible_v<UndoRedoPresentationFactory>);

// Their manager

static_assert(!std::is_base_of_v<QObject, PresentationManager>);
static_assert(!std::is_default_constructible_v<PresentationManager>);
static_assert(!std::is_destructible_v<PresentationManager>);
static_assert(!std::is_copy_constructible_v<PresentationManager>);
static_assert(!std::is_copy_assignable_v<PresentationManager>);
static_assert(std::has_virtual_destructor_v<PresentationManager>);
INTERFACE_HAS(PresentationManager::instance, PresentationManager& (*)());
INTERFACE_HAS(PresentationManager::const_instance, const PresentationManager& (*)());
INTERFACE_HAS(PresentationManager::init, void (PresentationManager::*)());
INTERFACE_HAS(PresentationManager::presentation, PresentationPointer (PresentationManager::*)(Text));

class DerivedManager : public PresentationManager
{ };

static_assert(std::is_default_constructible_v<DerivedManager>, "constructor and destructor are protected");

// Undo and redo

static_assert(std::is_base_of_v<QObject, UndoRedoPresentation>);
static_assert(std::is_base_of_v<AbstractPresentation, UndoRedoPresentation>);
static_assert(!std::is_abstract_v<UndoRedoPresentation>);
static_assert(std::is_default_constructible_v<UndoRedoPresentation>);
static_assert(!std::is_copy_constructible_v<UndoRedoPresentation>);
INTERFACE_HAS(UndoRedoPresentation::instance, boost::shared_ptr<UndoRedoPresentation> (*)());
INTERFACE_HAS(UndoRedoPresentation::tr, QString (*)(const char*, const char*, int));
INTERFACE_HAS(UndoRedoPresentation::undo_action, QAction* (UndoRedoPresentation::*)());
INTERFACE_HAS(UndoRedoPresentation::redo_action, QAction* (UndoRedoPresentation::*)());
INTERFACE_HAS(UndoRedoPresentation::undo_tool_bar_action, QAction* (UndoRedoPresentation::*)());
INTERFACE_HAS(UndoRedoPresentation::redo_tool_bar_action, QAction* (UndoRedoPresentation::*)());
INTERFACE_HAS(UndoRedoPresentation::enable_edit_actions, void (UndoRedoPresentation::*)(bool));
INTERFACE_HAS(UndoRedoPresentation::undo, void (UndoRedoPresentation::*)());
INTERFACE_HAS(UndoRedoPresentation::redo, void (UndoRedoPresentation::*)());
INTERFACE_HAS(UndoRedoPresentation::undos_selected, void (UndoRedoPresentation::*)(const size_t&));
INTERFACE_HAS(UndoRedoPresentation::redos_selected, void (UndoRedoPresentation::*)(const size_t&));
INTERFACE_HAS(UndoRedoPresentation::handle_message, void (UndoRedoPresentation::*)(MainWindowMessage&));
INTERFACE_HAS(UndoRedoPresentation::handle_message, void (UndoRedoPresentation::*)(DocumentMessage&));

const std::size_t s_after_destructor = 2; // which has two entries

/// The methods of one kind and access that a class adds, in its order.
std::vector<Text> methods(const QMetaObject& meta, QMetaMethod::MethodType type, QMetaMethod::Access access)
{
    std::vector<Text> found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == type && method.access() == access) {
            found.push_back(Text(method.typeName()) + " " + method.methodSignature().toStdString());
        }
    }
    return found;
}

} // namespace

TEST(AbstractMainWindowInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_TRUE(interface::in_a_row(&AbstractMainWindow::readSettings, &AbstractMainWindow::writeSettings,
        &AbstractMainWindow::may_close, &AbstractMainWindow::take_undo_redo_actions, &NextWindow::next));
}

TEST(AbstractMainWindowInterface, SignalsAndSlotsAreKnownByTheirSignatures)
{
    const QMetaObject& meta = AbstractMainWindow::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::gui::AbstractMainWindow", meta.className());
    EXPECT_THAT(methods(meta, QMetaMethod::Signal, QMetaMethod::Public),
        ElementsAre("void dropped(UrlList)", "void detachingPanel(int)", "void attachedPanel(int)"));
    EXPECT_THAT(methods(meta, QMetaMethod::Slot, QMetaMethod::Private),
        ElementsAre("void slotTabBarMoved(QString)", "void currentTabChanged(int)",
            "void floatingPanelDestroyed(QObject*)"));
    EXPECT_THAT(methods(meta, QMetaMethod::Slot, QMetaMethod::Public), ElementsAre());
}

TEST(ChildDockWidgetInterface, HasNeitherSignalsNorSlots)
{
    const QMetaObject& meta = ChildDockWidget::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::gui::ChildDockWidget", meta.className());
    EXPECT_EQ(meta.methodOffset(), meta.methodCount());
}

TEST(MainWindowMessageInterface, SignalIsKnownByItsSignature)
{
    const QMetaObject& meta = MainWindowMessage::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::gui::MainWindowMessage", meta.className());
    EXPECT_STREQ("housekeeping::gui::MainWindowMessage", MainWindowMessage::type_name());
    EXPECT_FALSE(MainWindowMessage::crosses_threads);
    EXPECT_THAT(methods(meta, QMetaMethod::Signal, QMetaMethod::Public),
        ElementsAre("void message_dispatched(housekeeping::gui::MainWindowMessage&)"));
}

TEST(AbstractPresentationInterface, VirtualOperationsAreInTheirOrder)
{
    EXPECT_EQ(s_after_destructor, interface::slot_of(&NextPresentation::update));
    EXPECT_TRUE(interface::in_a_row(&NextPresentation::update, &NextPresentation::update_presentation,
        &NextPresentation::init_presentation, &NextPresentation::build_presentation,
        &NextPresentation::controller_name, &NextPresentation::controller,
        &NextPresentation::connect_controller, &NextPresentation::next));
}

TEST(AbstractPresentationFactoryInterface, IsCalledAsItsClass)
{
    EXPECT_STREQ("AbstractPresentationFactory", AbstractPresentationFactory::factory_name());
}

TEST(UndoRedoPresentationInterface, SlotsAreKnownByTheirSignatures)
{
    const QMetaObject& meta = UndoRedoPresentation::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::gui::UndoRedoPresentation", meta.className());
    EXPECT_THAT(methods(meta, QMetaMethod::Slot, QMetaMethod::Public),
        ElementsAre("void undo()", "void redo()", "void undos_selected(size_t)",
            "void redos_selected(size_t)", "void handle_message(housekeeping::gui::MainWindowMessage&)",
            "void handle_message(housekeeping::DocumentMessage&)"));
    EXPECT_THAT(methods(meta, QMetaMethod::Slot, QMetaMethod::Private),
        ElementsAre("void undo(QAction*)", "void redo(QAction*)", "void hoveredUndo(QAction*)",
            "void hoveredUndo()", "void hoveredRedo(QAction*)", "void hoveredRedo()"));
    EXPECT_THAT(methods(meta, QMetaMethod::Signal, QMetaMethod::Public), ElementsAre());
}
