#include "Destroyer.h"

#include "support/Controllers.h"
#include "support/Fakes.h"
#include "support/Kept.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <thread>

// What others see of the document manager between the steps of its operations.

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDocument;
using support::journal;
using support::JournalingReceiver;
using support::kept;
using testing::Each;
using testing::ElementsAre;

namespace {

typedef std::function<void(const AbstractState*)> Watcher;

DocumentManager& manager()
{
    return DocumentManager::instance();
}

bool destroy(const DocumentId& id)
{
    return manager().destroy_document(id, false, false, false, DocumentId::null());
}

/// A controller that tells of the states that it is given; null for an empty one.
class WatchingController : public support::FakeController
{
public:
    explicit WatchingController(const Watcher& watcher)
        : FakeController("watching")
        , m_watcher(watcher)
    { }

protected:
    void update_state(boost::shared_ptr<AbstractState> state) override { m_watcher(state.get()); }

private:
    Watcher m_watcher;
};

class WatchingControllerFactory : public support::FakeControllerFactory
{
public:
    explicit WatchingControllerFactory(const Watcher& watcher)
        : FakeControllerFactory("watching")
        , m_watcher(watcher)
    { }
    AbstractController* create_unmanaged_product() override { return new WatchingController(m_watcher); }

private:
    Watcher m_watcher;
};

/// Before the first document.
void register_watcher(const Watcher& watcher)
{
    kept(new WatchingControllerFactory(watcher));
}

/// Documents that ask the manager whenever they are asked themselves, and note where.
class CuriousDocument : public FakeDocument
{
public:
    static std::set<std::string>& asked()
    {
        static std::set<std::string> s_asked;
        return s_asked;
    }

    bool empty() const override
    {
        ask("empty");
        return FakeDocument::empty();
    }
    void set_busy(bool busy) override
    {
        ask("set_busy");
        FakeDocument::set_busy(busy);
    }
    bool is_busy() const override
    {
        ask("is_busy");
        return FakeDocument::is_busy();
    }
    bool is_closing() const override
    {
        ask("is_closing");
        return FakeDocument::is_closing();
    }
    void set_closing() override
    {
        ask("set_closing");
        FakeDocument::set_closing();
    }
    bool request_close(bool first, bool second) override
    {
        ask("request_close");
        return FakeDocument::request_close(first, second);
    }

private:
    /// Takes each mutex of the manager once.
    void ask(const std::string& where) const
    {
        asked().insert(where);
        EXPECT_TRUE(manager().document_exists(id()));
        EXPECT_EQ(manager().documents_busy(), manager().document_busy(id()));
        EXPECT_TRUE(destroy(DocumentId::null()));
    }
};

/// Makes FakeDocuments or CuriousDocuments, tells so, and does something before.
class DocumentFactory : public AbstractDocumentFactory
{
public:
    DocumentFactory(const std::string& name, bool is_default, bool curious = false)
        : AbstractDocumentFactory(name, is_default)
        , m_name(name)
        , m_curious(curious)
    { }
    boost::shared_ptr<AbstractDocument> create_product() override
    {
        return boost::shared_ptr<AbstractDocument>(create_unmanaged_product());
    }
    AbstractDocument* create_unmanaged_product() override
    {
        journal().add("factory " + m_name);
        if (on_create) {
            on_create();
        }
        return m_curious ? new CuriousDocument : new FakeDocument;
    }

    std::function<void()> on_create;

private:
    std::string m_name;
    bool m_curious;
};

DocumentFactory& register_factory(const std::string& name, bool is_default, bool curious = false)
{
    support::init_controllers();
    return kept(new DocumentFactory(name, is_default, curious));
}

/// Counts the calls that come to an object through the event loop.
class QueuedCalls : public QObject
{
public:
    explicit QueuedCalls(QObject& object) { object.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::MetaCall ? 1 : 0;
        return false;
    }

    int count = 0;
};

} // namespace

TEST(DocumentManager, CommandMessagesOfAWorkerAreReceivedInTheManagersThread)
{
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    int argument_count = 1;
    const QCoreApplication application(argument_count, arguments);
    const QueuedCalls calls(manager());
    std::thread([] { CommandMessage().dispatch(); }).join();
    EXPECT_EQ(0, calls.count);
    QCoreApplication::processEvents();
    EXPECT_EQ(1, calls.count);
    CommandMessage().dispatch();
    QCoreApplication::processEvents();
    EXPECT_EQ(1, calls.count); // at once from this thread
}

TEST(DocumentManager, MessagesAreDeletedWhenTheyWereSent)
{
    std::vector<int> types;
    std::vector<QPointer<QObject>> messages;
    JournalingReceiver receiver;
    receiver.on_document = [&](DocumentMessage& message) {
        types.push_back(message.doc_change_type());
        messages.emplace_back(&message);
    };
    const DocumentId first = create_document().id();
    create_document();
    manager().current_document(first);
    manager().document_busy(first, true);
    manager().document_busy(first, false);
    destroy(first);
    EXPECT_THAT(types, ElementsAre(1, 1, 15, 5, 6, 4, 15));
    EXPECT_THAT(messages, Each(QPointer<QObject>()));
}

TEST(DocumentManager, NoMutexIsHeldWhileADocumentIsAsked)
{
    register_factory("curious", true, true);
    const DocumentId id = manager().create_document().id();
    manager().document_busy(id, true);
    manager().document_busy(id, false);
    EXPECT_TRUE(manager().set_document_as_closing(id));
    manager().cleanupInvalidDocuments();
    EXPECT_FALSE(manager().document_exists(id));
    EXPECT_THAT(CuriousDocument::asked(),
        ElementsAre("empty", "is_busy", "is_closing", "request_close", "set_busy", "set_closing"));
}

// Creation

TEST(DocumentManager, MakesTheDefaultProduct)
{
    register_factory("a", false);
    register_factory("c", true);
    register_factory("b", false);
    manager().create_document();
    EXPECT_EQ(1, journal().count("factory "));
    EXPECT_EQ(1, journal().count("factory c"));
}

TEST(DocumentManager, WithoutADefaultMakesTheFirstProductByName)
{
    register_factory("b", false);
    register_factory("a", false);
    manager().create_document();
    EXPECT_EQ(1, journal().count("factory "));
    EXPECT_EQ(1, journal().count("factory a"));
}

TEST(DocumentManager, DestructionWaitsFromTheBeginningOfACreation)
{
    DocumentFactory& factory = register_factory("a", true);
    const DocumentId first = manager().create_document().id();
    Destroyer destroyer;
    factory.on_create = [&] {
        destroyer.start([first] { destroy(first); });
        EXPECT_TRUE(destroyer.waits());
        EXPECT_EQ(0, journal().count("Document 1.request_close"));
    };
    manager().create_document();
    destroyer.join();
    EXPECT_EQ(1, journal().count("Document 1.request_close"));
    EXPECT_FALSE(manager().document_exists(first));
}

TEST(DocumentManager, DocumentThatIsMadeWhenNoneIsLeftIsNotTheFirstOfTheProcess)
{
    const DocumentId first = create_document().id();
    EXPECT_TRUE(destroy(first));
    qputenv("PETREL_PORT", "4711");
    EXPECT_FALSE(create_document().linked_to_petrel());
    EXPECT_EQ(first, manager().first_id());
}

// The current document

TEST(DocumentManager, ControllersAreRefreshedWhenTheDocumentIsCurrent)
{
    int refreshed = 0;
    register_watcher([&refreshed](const AbstractState* p_state) {
        if (p_state) {
            ++refreshed;
            EXPECT_EQ(p_state->document_id(), manager().current_document_id());
        }
    });
    const DocumentId first = create_document().id();
    create_document();
    EXPECT_EQ(2, refreshed);
    manager().current_document(first);
    EXPECT_EQ(3, refreshed);
    destroy(first);
    EXPECT_EQ(4, refreshed);
}

TEST(DocumentManager, ControllerThatMakesAnotherDocumentCurrentLeavesNoneBehind)
{
    DocumentId wanted = DocumentId::null();
    register_watcher([&wanted](const AbstractState* p_state) {
        if (p_state && p_state->document_id() != wanted && manager().document_exists(wanted)) {
            manager().current_document(wanted);
        }
    });
    support::register_controller("later");
    wanted = create_document().id();
    const DocumentId other = create_document().id();
    EXPECT_EQ(wanted, manager().current_document_id());
    journal().clear();
    manager().current_document(other);
    EXPECT_EQ(wanted, manager().current_document_id());
    EXPECT_EQ(1, journal().count("later.update_state(Document 1)"));
    EXPECT_EQ(1, journal().count("later.update_state")); // never shows what is not current
}

TEST(DocumentManager, DocumentThatGoesWhileItBecomesCurrentIsNotShown)
{
    bool armed = false;
    register_watcher([&armed](const AbstractState* p_state) {
        if (p_state && armed) {
            armed = false;
            EXPECT_TRUE(destroy(p_state->document_id()));
        }
    });
    support::register_controller("later");
    const DocumentId id = create_document().id();
    journal().clear();
    armed = true;
    manager().current_document(id);
    EXPECT_FALSE(armed);
    EXPECT_EQ(1, journal().count("later.update_state(null)"));
    EXPECT_EQ(1, journal().count("later.update_state"));
}

TEST(DocumentManager, DocumentThatGoesWhileItBecomesCurrentIsNotAnnounced)
{
    bool armed = false;
    DocumentId id = DocumentId::null();
    register_watcher([&](const AbstractState* p_state) {
        if (p_state && armed) {
            armed = false;
            EXPECT_EQ(id, p_state->document_id());
            EXPECT_TRUE(destroy(id));
        }
    });
    id = create_document().id();
    manager().current_document(DocumentId::null());
    const JournalingReceiver receiver;
    journal().clear();
    armed = true;
    manager().current_document(id);
    EXPECT_FALSE(armed);
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_EQ(1, journal().count("Destroyed(Document 1)"));
    EXPECT_EQ(0, journal().count("CurrentChanged"));
}

// Destruction

TEST(DocumentManager, DocumentThatIsMadeCurrentAgainWhileItGoesIsNotCurrentAfterwards)
{
    bool armed = false;
    DocumentId going = DocumentId::null();
    register_watcher([&](const AbstractState* p_state) {
        if (p_state && armed) {
            armed = false;
            EXPECT_NE(going, p_state->document_id());
            manager().current_document(going);
        }
    });
    const DocumentId staying = create_document().id();
    going = create_document().id();
    const JournalingReceiver receiver;
    journal().clear();
    armed = true;
    EXPECT_TRUE(destroy(going));
    EXPECT_FALSE(armed);
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_THAT(manager().current_documents(), ElementsAre(staying));
    EXPECT_EQ(1, journal().count("CurrentChanged(Document 2)"));
    EXPECT_EQ(1, journal().count("CurrentChanged")); // none after the destruction
}

TEST(DocumentManager, DocumentThatIsAskedIsNotYetInDestruction)
{
    FakeDocument& document = create_document();
    const DocumentId id = document.id();
    manager().document_busy(id, true);
    int asked = 0;
    document.on_request_close = [id, &asked] {
        ++asked;
        EXPECT_TRUE(manager().document_busy(id));
    };
    EXPECT_TRUE(destroy(id));
    EXPECT_EQ(1, asked);
}

TEST(DocumentManager, DestructionIsOverWhenTheCurrentChangedMessageComes)
{
    create_document();
    const DocumentId id = create_document().id();
    manager().document_busy(id, true);
    int changed = 0;
    JournalingReceiver receiver;
    receiver.on_document = [id, &changed](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::CurrentChanged) {
            ++changed;
            EXPECT_TRUE(manager().document_busy(id)); // the mark stays, and counts again
        }
    };
    EXPECT_TRUE(destroy(id));
    EXPECT_EQ(1, changed);
    EXPECT_TRUE(manager().documents_busy());
}

TEST(DocumentManager, DocumentThatFollowsTheLastOneIsShownByAllControllers)
{
    bool armed = true;
    register_watcher([&armed](const AbstractState* p_state) {
        if (!p_state && armed) {
            armed = false;
            create_document(); // the program is never without one
        }
    });
    support::register_controller("later");
    const DocumentId id = create_document().id();
    journal().clear();
    EXPECT_TRUE(destroy(id));
    EXPECT_FALSE(armed);
    EXPECT_EQ("Document 2", manager().current_document().title());
    EXPECT_EQ(1, journal().count("later.update_state(Document 2)"));
    EXPECT_EQ(1, journal().count("later.update_state"));
}

TEST(DocumentManager, ControllersAreEmptiedBeforeTheDestructionIsOver)
{
    DocumentId id = DocumentId::null();
    int emptied = 0;
    register_watcher([&](const AbstractState* p_state) {
        if (!p_state) {
            ++emptied;
            EXPECT_EQ(0u, manager().num_documents());
            EXPECT_EQ(DocumentId::null(), manager().current_document_id());
            EXPECT_FALSE(manager().document_busy(id)); // still in destruction
        }
    });
    id = create_document().id();
    manager().document_busy(id, true);
    EXPECT_TRUE(destroy(id));
    EXPECT_EQ(1, emptied);
    EXPECT_TRUE(manager().document_busy(id));
}
