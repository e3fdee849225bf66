#include "MessageFamilyFixture.h"

#include "support/Controllers.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <gmock/gmock.h>

// Which messages the framework itself sends and receives, with everything that it is made of at work.

namespace {

using namespace tarqa::housekeeping;
using gui::MainWindowMessage;
using support::create_document;
using support::make_command;
using support::Subscription;

/// How many connections there are to a signal of @p sender.
int connections(const QObject& sender, const std::string& signal)
{
    struct Opened : QObject
    {
        using QObject::receivers;
    };
    return (sender.*(&Opened::receivers))(signal.c_str());
}

/// A spy that learns which object emits the messages.
template <class Spy>
class CuriousSpy : public Spy
{
public:
    typedef typename Spy::Sent X;

    CuriousSpy()
        : Spy(Subscription::None)
    { }

    /// How many subscriptions there are besides its own.
    int subscriptions()
    {
        const QObject* p_class_instance = nullptr;
        this->run_in_slot([this, &p_class_instance](X&) { p_class_instance = this->sender(); });
        X::subscribe(this, Qt::DirectConnection);
        X().dispatch();
        X::unsubscribe(this);
        return p_class_instance ? connections(*p_class_instance,
                   std::string("2message_dispatched(") + NamesOf<Spy>::value.signal_type + "&)")
                                : -1;
    }
};

template <class Spy>
int subscriptions()
{
    return CuriousSpy<Spy>().subscriptions();
}

/// A host with everything that the framework offers: controllers, presentations, help and a main window.
class WholeFramework
{
public:
    WholeFramework()
    {
        support::init_controllers();
        ControllerManager::instance().post_init();
        CommandManager::instance();
        RecentDocumentsQueue::instance();
        QuickHelpManager::instance();
        DocumentManager::instance();
        gui::PresentationManager::instance().init();
        gui::HelpManager::instance();
        m_started.manager().top_level_widget(&window);
    }
    ~WholeFramework() { m_log.take_all(); }

private:
    support::StartedApplication m_started;
    support::LogCapture m_log;

public:
    gui::AbstractMainWindow window;
};

/// Documents come, become current and go.
void use_documents()
{
    DocumentManager& manager = DocumentManager::instance();
    const DocumentId first = create_document().id();
    const DocumentId second = create_document().id();
    manager.current_document(first);
    manager.document_busy(first, true);
    manager.document_busy(first, false);
    manager.set_document_as_closing(second);
    manager.cleanupInvalidDocuments();
    EXPECT_FALSE(manager.document_exists(second));
    manager.destroy_document(first, false, false, false, DocumentId::null());
}

/// Commands run, are undone and redone, and are cancelled.
void use_commands()
{
    const support::FakeDocument& document = create_document();
    CommandManager& manager = CommandManager::instance();
    manager.insert(make_command(document.id(), "Rotate"), false);
    manager.undo(document.id());
    manager.redo(document.id());
    const auto cancelled = make_command(document.id(), "Cancelled");
    cancelled->on_do = support::throws_cancel();
    manager.insert(cancelled, false);
    EXPECT_EQ(1, support::journal().count("Rotate.undo"));
}

/// The window asks for its menus, and files are dropped into it.
void use_window(gui::AbstractMainWindow& window)
{
    for (const int kind : {MainWindowMessage::MenuBar, MainWindowMessage::EditActions}) {
        MainWindowMessage* const p_message = MainWindowMessage::instance();
        p_message->kind(kind);
        p_message->target(window.menuBar());
        p_message->owner(&window);
        Message::dispatch(p_message);
    }
    EXPECT_FALSE(window.menuBar()->actions().isEmpty());
    window.show();
    QMimeData files;
    files.setUrls({QUrl("file:///data/a.dat")});
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    emit window.dropped({"file:///data/a.dat"});
    QTest::qWait(1); // what was posted
}

} // namespace

TEST(MessageUsers, FrameworkReceivesFourKindsOfMessages)
{
    const WholeFramework framework;
    EXPECT_EQ(1, subscriptions<support::CommandMessageSpy>()); // the document manager
    EXPECT_EQ(1, subscriptions<support::DocumentHistoryMsgSpy>()); // the undo/redo controller
    EXPECT_EQ(1, subscriptions<support::DocumentMessageSpy>()); // the undo/redo presentation
    EXPECT_EQ(2, subscriptions<support::MainWindowMessageSpy>()); // the help manager, and the presentation
    EXPECT_EQ(0, subscriptions<support::ApplicationMessageSpy>());
    EXPECT_EQ(0, subscriptions<support::FilesInsertMessageSpy>());
}

TEST(MessageUsers, SubscriptionsOfOthersAreCounted)
{
    const support::ApplicationMessageSpy first;
    EXPECT_EQ(1, subscriptions<support::ApplicationMessageSpy>());
    const support::ApplicationMessageSpy second;
    EXPECT_EQ(2, subscriptions<support::ApplicationMessageSpy>());
}

TEST(MessageUsers, FrameworkSendsNoMessagesThatBelongToTheHost)
{
    const support::ApplicationMessageSpy application;
    const support::FilesInsertMessageSpy files;
    const support::CommandMessageSpy commands;
    const support::DocumentMessageSpy documents;
    {
        WholeFramework framework;
        use_documents();
        use_commands();
        use_window(framework.window);
    }
    EXPECT_EQ(0, application.count());
    EXPECT_EQ(0, files.count());
    EXPECT_LE(3, commands.count());
    EXPECT_LE(6, documents.count());
}
