#include "Destroyer.h"

#include "support/Controllers.h"
#include "support/Fakes.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <stdexcept>
#include <thread>

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDocument;
using support::journal;
using support::JournalingReceiver;
using testing::ElementsAre;

namespace {

DocumentManager& manager()
{
    return DocumentManager::instance();
}

bool destroy(const DocumentId& id)
{
    return manager().destroy_document(id, true, false, false, DocumentId::null());
}

/// A receiver that does something when a message of one type comes, once.
class OnFirst
{
public:
    OnFirst(DocumentMessage::DocChangeType type, const std::function<void(DocumentMessage&)>& action)
    {
        m_receiver.on_document = [this, type, action](DocumentMessage& message) {
            if (message.doc_change_type() == type && !m_done) {
                m_done = true;
                action(message);
            }
        };
    }
    bool done() const { return m_done; }

private:
    JournalingReceiver m_receiver;
    bool m_done = false;
};

/// A document that does something in its destructor.
class DocumentWithLastWords : public FakeDocument
{
public:
    ~DocumentWithLastWords() override
    {
        if (last_words) {
            last_words();
        }
    }

    std::function<void()> last_words;
};

class LastWordsFactory : public support::FakeDocumentFactory
{
public:
    AbstractDocument* create_unmanaged_product() override { return new DocumentWithLastWords; }
};

DocumentWithLastWords& create_document_with_last_words()
{
    support::init_controllers();
    static LastWordsFactory* const s_p_factory = new LastWordsFactory; // the registry refers to it
    EXPECT_TRUE(s_p_factory);
    return dynamic_cast<DocumentWithLastWords&>(manager().create_document());
}

} // namespace

// Creation

TEST(DocumentManager, DestructionWaitsForTheEndOfACreation)
{
    const DocumentId first = create_document().id();
    Destroyer destroyer;
    OnFirst created(DocumentMessage::Created, [&](DocumentMessage&) {
        destroyer.start(
            [first] { manager().destroy_document(first, false, false, false, DocumentId::null()); });
        EXPECT_TRUE(destroyer.waits());
        EXPECT_EQ(0, journal().count("Document 1.request_close"));
    });
    create_document();
    destroyer.join();
    EXPECT_TRUE(created.done());
    EXPECT_EQ(1, journal().count("Document 1.request_close"));
    EXPECT_FALSE(manager().document_exists(first));
}

TEST(DocumentManager, DestructionWithoutConsentWaitsForTheEndOfACreationToo)
{
    const DocumentId first = create_document().id();
    Destroyer destroyer;
    OnFirst created(DocumentMessage::Created, [&](DocumentMessage&) {
        destroyer.start([first] { destroy(first); });
        EXPECT_TRUE(destroyer.waits());
        EXPECT_TRUE(manager().document_exists(first));
    });
    create_document();
    destroyer.join();
    EXPECT_TRUE(created.done());
    EXPECT_FALSE(manager().document_exists(first));
}

// Busy marks

TEST(DocumentManager, SubscriberOfBusyMayDestroyTheDocument)
{
    FakeDocument& document = create_document();
    journal().clear();
    OnFirst busy(DocumentMessage::Busy, [](DocumentMessage& message) {
        EXPECT_TRUE(destroy(message.id()));
        EXPECT_EQ(0, journal().count("Document 1.destroyed")); // alive until the message has been sent
    });
    EXPECT_TRUE(manager().document_busy(document.id(), true)); // the id is a member of what goes
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "Document 1.busy(true)", "Busy(Document 1)", "Destroyed(Document 1)", "Document 1.destroyed"));
    EXPECT_EQ(0u, manager().num_documents());
}

TEST(DocumentManager, SubscriberOfIdleMayDestroyTheDocument)
{
    FakeDocument& document = create_document();
    manager().document_busy(document.id(), true);
    journal().clear();
    OnFirst idle(DocumentMessage::Idle, [](DocumentMessage& message) { EXPECT_TRUE(destroy(message.id())); });
    EXPECT_TRUE(manager().document_busy(document.id(), false));
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "Idle(Document 1)", "Destroyed(Document 1)", "Document 1.busy(false)", "Document 1.destroyed"));
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_FALSE(manager().documents_busy());
}

TEST(DocumentManager, DocumentLivesToTheEndOfTheOutermostMark)
{
    FakeDocument& document = create_document();
    const DocumentId id = document.id();
    journal().clear();
    OnFirst busy(DocumentMessage::Busy, [id](DocumentMessage&) {
        OnFirst idle(DocumentMessage::Idle, [id](DocumentMessage&) { EXPECT_TRUE(destroy(id)); });
        EXPECT_TRUE(manager().document_busy(id, false));
        EXPECT_EQ(1, journal().count("Document 1.busy(false)"));
        EXPECT_EQ(0, journal().count("Document 1.destroyed"));
    });
    EXPECT_TRUE(manager().document_busy(id, true));
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
    EXPECT_EQ(0u, manager().num_documents());
}

TEST(DocumentManager, DocumentThatIsNotMarkedDiesAtOnceDuringTheMarksOfAnother)
{
    const DocumentId first = create_document().id();
    const DocumentId second = create_document().id();
    journal().clear();
    OnFirst busy(DocumentMessage::Busy, [first](DocumentMessage&) {
        EXPECT_TRUE(destroy(first));
        EXPECT_EQ(1, journal().count("Document 1.destroyed"));
    });
    EXPECT_TRUE(manager().document_busy(second, true));
    EXPECT_TRUE(manager().document_busy(second, false));
    EXPECT_TRUE(destroy(second)); // which is not in use any more
    EXPECT_EQ(1, journal().count("Document 2.destroyed"));
}

TEST(DocumentManager, DocumentThatAWorkerMarksLivesToTheEndOfItsMessage)
{
    const DocumentId id = create_document().id();
    JournalingReceiver receiver(Qt::DirectConnection);
    std::promise<void> sent;
    std::promise<void> destroyed;
    receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Busy) {
            sent.set_value();
            destroyed.get_future().wait();
            EXPECT_EQ(0, journal().count("Document 1.destroyed"));
        }
    };
    std::thread worker([id] { EXPECT_TRUE(manager().document_busy(id, true)); });
    sent.get_future().wait();
    EXPECT_TRUE(destroy(id));
    EXPECT_EQ(0u, manager().num_documents());
    destroyed.set_value();
    worker.join();
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
}

TEST(DocumentManager, DocumentLivesToTheEndOfItsMarkThoughTheManagerGoes)
{
    FakeDocument& document = create_document();
    manager().document_busy(document.id(), true);
    journal().clear();
    OnFirst idle(DocumentMessage::Idle, [](DocumentMessage&) { pkBase::pkDestructor::run(); });
    EXPECT_TRUE(manager().document_busy(document.id(), false));
    EXPECT_THAT(journal().entries(),
        ElementsAre("Idle(Document 1)", "Document 1.busy(false)", "Document 1.destroyed"));
}

TEST(DocumentManager, ThrowingBusySubscriberLeavesTheMarkAndTheFlag)
{
    const FakeDocument& document = create_document();
    OnFirst busy(DocumentMessage::Busy, [](DocumentMessage&) { throw std::runtime_error("subscriber"); });
    EXPECT_THROW(manager().document_busy(document.id(), true), std::runtime_error);
    EXPECT_TRUE(document.is_busy());
    EXPECT_TRUE(manager().document_busy(document.id()));
    EXPECT_TRUE(manager().document_busy(document.id(), false));
    EXPECT_FALSE(document.is_busy());
    EXPECT_FALSE(manager().documents_busy());
    EXPECT_EQ(1, journal().count("Idle"));
}

TEST(DocumentManager, ThrowingIdleSubscriberLeavesTheDocumentIdle)
{
    const FakeDocument& document = create_document();
    manager().document_busy(document.id(), true);
    OnFirst idle(DocumentMessage::Idle, [](DocumentMessage&) { throw std::runtime_error("subscriber"); });
    EXPECT_THROW(manager().document_busy(document.id(), false), std::runtime_error);
    EXPECT_FALSE(document.is_busy());
    EXPECT_FALSE(manager().documents_busy());
    EXPECT_TRUE(manager().document_busy(document.id(), true)); // and it becomes busy again as ever
    EXPECT_EQ(1, journal().count("Busy"));
    EXPECT_TRUE(document.is_busy());
}

// Destruction

TEST(DocumentManager, DestructorOfADocumentMayUseTheManager)
{
    DocumentWithLastWords& first = create_document_with_last_words();
    const DocumentId id = first.id();
    const DocumentId second = create_document_with_last_words().id();
    const DocumentId third = create_document_with_last_words().id();
    first.last_words = [=] {
        EXPECT_FALSE(manager().document_exists(id)); // it has left the registry
        EXPECT_THAT(manager().current_documents(), ElementsAre(second, third));
        EXPECT_FALSE(manager().document_busy(id));
        EXPECT_TRUE(manager().document_busy(third, true));
        EXPECT_TRUE(manager().document_busy(third, false));
        manager().current_document(second);
        EXPECT_TRUE(destroy(third));
        manager().create_document();
        EXPECT_EQ(2u, manager().num_documents());
    };
    EXPECT_TRUE(destroy(id));
    EXPECT_FALSE(manager().document_exists(third));
    EXPECT_TRUE(manager().document_exists(second));
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
    EXPECT_EQ(1, journal().count("Document 3.destroyed"));
}

TEST(DocumentManager, SubscriberOfCurrentChangedMayDestroyAnotherDocument)
{
    const DocumentId first = create_document().id();
    const DocumentId second = create_document().id();
    const DocumentId third = create_document().id();
    OnFirst changed(
        DocumentMessage::CurrentChanged, [second](DocumentMessage&) { EXPECT_TRUE(destroy(second)); });
    journal().clear();
    EXPECT_TRUE(destroy(third));
    EXPECT_THAT(journal().entries(),
        ElementsAre("Destroyed(Document 3)", "Document 3.destroyed", "CurrentChanged(Document 1)",
            "Destroyed(Document 2)", "Document 2.destroyed", "CurrentChanged(Document 1)"));
    EXPECT_THAT(manager().current_documents(), ElementsAre(first));
    EXPECT_EQ(first, manager().current_document_id());
}

TEST(DocumentManager, SubscriberOfCurrentChangedMayDestroyTheDocumentThatWasCurrent)
{
    const DocumentId first = create_document().id();
    const DocumentId second = create_document().id();
    OnFirst changed(
        DocumentMessage::CurrentChanged, [second](DocumentMessage&) { EXPECT_TRUE(destroy(second)); });
    journal().clear();
    manager().current_document(first);
    EXPECT_THAT(journal().entries(),
        ElementsAre("CurrentChanged(Document 1)", "Destroyed(Document 2)", "Document 2.destroyed",
            "CurrentChanged(Document 1)"));
    EXPECT_EQ(first, manager().current_document_id());
}
