#include "support/Fakes.h"
#include "support/Kept.h"
#include "support/MutexWatch.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <vector>

// What the mutexes of the document manager guard: an operation waits while another thread holds one.

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDocument;
using support::journal;
using support::JournalingReceiver;
using support::kept;
using support::waits_for;
using support::waits_for_at_once;

namespace {

typedef std::function<void()> Action;

DocumentManager& manager()
{
    return DocumentManager::instance();
}

QMutex& registry_mutex()
{
    return TestAccess::registry_mutex(manager());
}

QMutex& busy_mutex()
{
    return TestAccess::busy_mutex(manager());
}

QMutex& destruction_mutex()
{
    return TestAccess::destruction_mutex(manager());
}

std::mutex& container_mutex()
{
    return TestAccess::container_mutex(manager());
}

void destroy(const DocumentId& id, bool skip_consent)
{
    EXPECT_TRUE(manager().destroy_document(id, skip_consent, false, false, DocumentId::null()));
}

/// A controller that does something whenever it is given a state.
class ActingController : public support::FakeController
{
public:
    explicit ActingController(const Action& action)
        : FakeController("acting")
        , m_action(action)
    { }

protected:
    void update_state(boost::shared_ptr<AbstractState>) override { m_action(); }

private:
    Action m_action;
};

class ActingControllerFactory : public support::FakeControllerFactory
{
public:
    explicit ActingControllerFactory(const Action& action)
        : FakeControllerFactory("acting")
        , m_action(action)
    { }
    AbstractController* create_unmanaged_product() override { return new ActingController(m_action); }

private:
    Action m_action;
};

/// Two documents, the second of which is current; empties the journal.
class TwoDocuments
{
public:
    TwoDocuments()
        : first(create_document())
        , second(create_document())
        , id(second.id())
    {
        journal().clear();
    }

    FakeDocument& first;
    FakeDocument& second;
    const DocumentId id; // of the second
    JournalingReceiver receiver{Qt::DirectConnection};
};

} // namespace

// The registry's container

TEST(DocumentManager, LookUpsWaitForEachOther)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    const std::vector<Action> look_ups = {
        [] { EXPECT_EQ(2u, manager().current_documents().size()); },
        [] { EXPECT_EQ(2u, manager().num_documents()); },
        [id] { EXPECT_TRUE(manager().document_exists(id)); },
        [id] { EXPECT_EQ(id, manager().document_from_id(id).id()); },
        [id] { EXPECT_EQ(id, DocumentManager::const_instance().document_from_id(id).id()); },
        [id] { EXPECT_TRUE(manager().set_document_as_closing(id)); },
    };
    for (std::size_t i = 0; i < look_ups.size(); ++i) {
        EXPECT_TRUE(waits_for_at_once(container_mutex(), look_ups[i])) << i;
    }
}

TEST(DocumentManager, LookUpsDoNotWaitForACreation)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_FALSE(waits_for_at_once(registry_mutex(), [id] {
        EXPECT_EQ(2u, manager().current_documents().size());
        EXPECT_TRUE(manager().document_exists(id));
        EXPECT_EQ(id, manager().document_from_id(id).id());
        EXPECT_TRUE(manager().set_document_as_closing(id));
    }));
}

TEST(DocumentManager, NewDocumentIsEnteredWhenNobodyLooks)
{
    create_document();
    journal().clear();
    EXPECT_TRUE(waits_for_at_once(
        container_mutex(), [] { create_document(); },
        [] { EXPECT_EQ(0, journal().count("Document 2.document_created")); }));
    EXPECT_EQ(2u, manager().num_documents());
}

TEST(DocumentManager, CreationsWaitForEachOther)
{
    create_document();
    EXPECT_TRUE(waits_for_at_once(
        registry_mutex(), [] { create_document(); }, [] { EXPECT_EQ(1u, manager().num_documents()); }));
    EXPECT_EQ(2u, manager().num_documents());
}

// Busy marks

TEST(DocumentManager, BusyMarkWaitsForTheOthers)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for_at_once(
        busy_mutex(), [id] { manager().document_busy(id, true); },
        [] { EXPECT_EQ(0, journal().count("Document 2.busy")); }));
    EXPECT_EQ(1, journal().count("Document 2.busy(true)"));
    EXPECT_TRUE(waits_for_at_once(
        busy_mutex(), [id] { manager().document_busy(id, false); },
        [] { EXPECT_EQ(0, journal().count("Idle")); }));
    EXPECT_EQ(1, journal().count("Idle(Document 2)"));
}

TEST(DocumentManager, QuestionsAboutBusyMarksWaitForThem)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for_at_once(busy_mutex(), [id] { EXPECT_FALSE(manager().document_busy(id)); }));
    EXPECT_TRUE(waits_for_at_once(busy_mutex(), [] { EXPECT_FALSE(manager().documents_busy()); }));
    EXPECT_TRUE(waits_for_at_once(busy_mutex(), [] { manager().cleanupInvalidDocuments(); }));
    EXPECT_TRUE(waits_for_at_once(destruction_mutex(), [id] { EXPECT_FALSE(manager().document_busy(id)); }));
}

// Destruction

TEST(DocumentManager, DestructionLooksFirstWhetherTheDocumentIsBeingDestroyed)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for_at_once(
        destruction_mutex(), [id] { destroy(id, false); },
        [] { EXPECT_EQ(0, journal().count("Document 2.request_close")); }));
    EXPECT_EQ(1, journal().count("Document 2.request_close"));
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, DestructionIsNotedBeforeItIsAnnounced)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    FakeDocument& document = documents.second;
    EXPECT_TRUE(waits_for(
        destruction_mutex(),
        [&document, id](const Action& now) {
            document.on_request_close = now;
            destroy(id, false);
        },
        [] { EXPECT_EQ(0, journal().count("Destroyed")); }));
    EXPECT_EQ(1, journal().count("Destroyed(Document 2)"));
}

TEST(DocumentManager, EndOfADestructionIsNotedBeforeTheCurrentDocumentIsAnnounced)
{
    TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for(
        destruction_mutex(),
        [&documents, id](const Action& now) {
            documents.receiver.on_document = [&now](DocumentMessage& message) {
                if (message.doc_change_type() == DocumentMessage::Destroyed) {
                    now();
                }
            };
            destroy(id, false);
        },
        [] {
            EXPECT_EQ(1, journal().count("Document 2.destroyed"));
            EXPECT_EQ(0, journal().count("CurrentChanged"));
        }));
    EXPECT_EQ(1, journal().count("CurrentChanged(Document 1)"));
}

TEST(DocumentManager, ConsentIsAskedWhenNoDocumentIsBeingCreated)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for_at_once(
        registry_mutex(), [id] { destroy(id, false); },
        [] { EXPECT_EQ(0, journal().count("Document 2.request_close")); }));
    EXPECT_EQ(1, journal().count("Document 2.destroyed"));
}

TEST(DocumentManager, NextDocumentIsChosenWhenNoDocumentIsBeingCreated)
{
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for_at_once(
        registry_mutex(), [id] { destroy(id, true); },
        [id] {
            EXPECT_EQ(1, journal().count("Destroyed(Document 2)"));
            EXPECT_EQ(id, manager().current_document_id());
        }));
    EXPECT_EQ(documents.first.id(), manager().current_document_id());
}

TEST(DocumentManager, EntryIsErasedWhenNoDocumentIsBeingCreated)
{
    static Action s_on_state = [] {};
    kept(new ActingControllerFactory([] { s_on_state(); }));
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for(
        registry_mutex(),
        [id](const Action& now) {
            s_on_state = now; // when the next document was chosen
            destroy(id, true);
        },
        [] { EXPECT_EQ(0, journal().count("Document 2.destroyed")); }));
    EXPECT_EQ(1, journal().count("Document 2.destroyed"));
    s_on_state = [] {};
}

TEST(DocumentManager, EntryIsErasedWhenNobodyLooks)
{
    static Action s_on_state = [] {};
    kept(new ActingControllerFactory([] { s_on_state(); }));
    const TwoDocuments documents;
    const DocumentId id = documents.id;
    EXPECT_TRUE(waits_for(
        container_mutex(),
        [id](const Action& now) {
            s_on_state = now; // when the next document was chosen
            destroy(id, true);
        },
        [] { EXPECT_EQ(0, journal().count("Document 2.destroyed")); }));
    EXPECT_EQ(1, journal().count("Document 2.destroyed"));
    s_on_state = [] {};
}
