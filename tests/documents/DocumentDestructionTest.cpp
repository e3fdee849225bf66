#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDocument;
using support::journal;
using support::JournalingReceiver;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_source = "housekeeping/src/DocumentManager";

DocumentManager& manager()
{
    return DocumentManager::instance();
}

/// Destroys with the document's consent.
bool destroy(const DocumentId& id, DocumentId next_current = DocumentId::null())
{
    return manager().destroy_document(id, false, false, false, next_current);
}

/// Some documents, two controllers and a receiver, with an empty journal; the last document is current.
class Documents
{
public:
    explicit Documents(int count)
    {
        support::register_controller("beta");
        support::register_controller("alpha");
        ControllerManager::instance().init();
        for (int i = 0; i < count; ++i) {
            ids.push_back(create_document().id());
        }
        journal().clear();
    }

    FakeDocument& operator[](int number) const
    {
        return FakeDocument::of(manager().document_from_id(ids.at(static_cast<std::size_t>(number - 1))));
    }
    DocumentId id(int number) const { return ids.at(static_cast<std::size_t>(number - 1)); }

    std::vector<DocumentId> ids;
    JournalingReceiver receiver;
};

} // namespace

TEST(DocumentManager, DestroyingTheCurrentOfTwoMakesTheOtherCurrent)
{
    const Documents documents(2);
    EXPECT_TRUE(destroy(documents.id(2)));
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 2.request_close(true, false)", "Destroyed(Document 2)",
            "beta.update_state(Document 1)", "alpha.update_state(Document 1)", "Document 2.destroyed",
            "CurrentChanged(Document 1)"));
    EXPECT_EQ(documents.id(1), manager().current_document_id());
    EXPECT_FALSE(manager().document_exists(documents.id(2)));
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, DestroyingTheOnlyDocumentLeavesNoneAndEmptyStates)
{
    const Documents documents(1);
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.request_close(true, false)", "Destroyed(Document 1)", "Document 1.destroyed",
            "beta.update_state(null)", "alpha.update_state(null)"));
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_FALSE(ControllerManager::instance().controller("alpha")->state_exists());
}

TEST(DocumentManager, DestroyingAnotherDocumentKeepsTheCurrentOne)
{
    const Documents documents(2);
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.request_close(true, false)", "Destroyed(Document 1)", "Document 1.destroyed",
            "CurrentChanged(Document 2)")); // sent although it did not change
    EXPECT_EQ(documents.id(2), manager().current_document_id());
}

TEST(DocumentManager, DestroyingWithoutACurrentDocumentSendsNoCurrentChanged)
{
    const Documents documents(2);
    manager().current_document(DocumentId::null());
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "Document 1.request_close(true, false)", "Destroyed(Document 1)", "Document 1.destroyed"));
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
}

TEST(DocumentManager, DocumentIsRegisteredDuringItsDestroyedMessage)
{
    Documents documents(2);
    int destroyed = 0;
    documents.receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() != DocumentMessage::Destroyed) {
            return;
        }
        ++destroyed;
        EXPECT_EQ(documents.id(2), message.id());
        EXPECT_TRUE(manager().document_exists(message.id()));
        EXPECT_EQ(message.id(), manager().document_from_id(message.id()).id());
        EXPECT_EQ(message.id(), manager().current_document_id());
        EXPECT_EQ(2u, manager().num_documents());
    };
    EXPECT_TRUE(destroy(documents.id(2)));
    EXPECT_EQ(1, destroyed);
}

TEST(DocumentManager, DocumentIsGoneWhenTheCurrentChangedMessageComes)
{
    Documents documents(2);
    int changed = 0;
    documents.receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() != DocumentMessage::CurrentChanged) {
            return;
        }
        ++changed;
        EXPECT_EQ(1, journal().count("Document 2.destroyed"));
        EXPECT_FALSE(manager().document_exists(documents.id(2)));
        EXPECT_EQ(documents.id(1), manager().current_document_id());
    };
    destroy(documents.id(2));
    EXPECT_EQ(1, changed);
}

TEST(DocumentManager, IdMayBeTheDocumentsOwn)
{
    const Documents documents(2);
    EXPECT_TRUE(manager().destroy_document(documents[2].id(), false, false, false, documents[1].id()));
    EXPECT_EQ(1, journal().count("Destroyed(Document 2)"));
    EXPECT_EQ(1, journal().count("CurrentChanged(Document 1)"));
    EXPECT_TRUE(manager().destroy_document(documents[1].id(), true, false, false, DocumentId::null()));
    EXPECT_EQ(0u, manager().num_documents());
}

TEST(DocumentManager, SomebodyElsesReferenceKeepsTheDocumentAlive)
{
    support::FakeDocumentFactory& factory = support::register_documents();
    factory.keeps_products = true;
    const DocumentId id = manager().create_document().id();
    EXPECT_TRUE(destroy(id));
    EXPECT_FALSE(manager().document_exists(id));
    EXPECT_EQ(0, journal().count("Document 1.destroyed"));
    factory.kept.clear();
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
}

// Consent

TEST(DocumentManager, RefusingDocumentStaysOpenAndCurrent)
{
    const Documents documents(2);
    documents[2].agrees_to_close = false;
    EXPECT_FALSE(destroy(documents.id(2), documents.id(1)));
    EXPECT_THAT(journal().entries(), ElementsAre("Document 2.request_close(true, false)"));
    EXPECT_EQ(documents.id(2), manager().current_document_id());
    EXPECT_EQ(2u, manager().num_documents());

    documents[2].agrees_to_close = true; // and it may be asked again
    EXPECT_TRUE(destroy(documents.id(2)));
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, ConsentIsAskedWithTheSecondFlagNegated)
{
    const Documents documents(1);
    documents[1].agrees_to_close = false;
    for (const bool second : {false, true}) {
        for (const bool third : {false, true}) {
            EXPECT_FALSE(
                manager().destroy_document(documents.id(1), false, second, third, DocumentId::null()));
        }
    }
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.request_close(true, false)", "Document 1.request_close(true, true)",
            "Document 1.request_close(false, false)", "Document 1.request_close(false, true)"));
}

TEST(DocumentManager, SkippedConsentIsNotAsked)
{
    const Documents documents(1);
    documents[1].agrees_to_close = false;
    EXPECT_TRUE(manager().destroy_document(documents.id(1), true, false, false, DocumentId::null()));
    EXPECT_EQ(0, journal().count("Document 1.request_close"));
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
}

TEST(DocumentManager, UnknownDocumentNeedsNoDestruction)
{
    const Documents documents(1);
    EXPECT_TRUE(destroy(DocumentId::build(77)));
    EXPECT_TRUE(destroy(DocumentId::null()));
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_EQ(documents.id(1), manager().current_document_id());
}

TEST(DocumentManager, UnknownDocumentWithoutConsentGoesThroughAllSteps)
{
    const Documents documents(1);
    support::LogCapture log;
    EXPECT_TRUE(manager().destroy_document(DocumentId::build(77), true, false, false, DocumentId::null()));
    EXPECT_TRUE(
        log.took_assert("iter != m_document_registry.end()", "DocumentManager::destroy_document(", s_source));
    EXPECT_THAT(journal().entries(), ElementsAre("Destroyed(?)", "CurrentChanged(Document 1)"));
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, UnknownDocumentInAnEmptyRegistryEmptiesTheControllers)
{
    const Documents documents(0);
    support::LogCapture log;
    EXPECT_TRUE(manager().destroy_document(DocumentId::build(77), true, false, false, DocumentId::null()));
    EXPECT_TRUE(
        log.took_assert("iter != m_document_registry.end()", "DocumentManager::destroy_document(", s_source));
    EXPECT_THAT(journal().entries(),
        ElementsAre("Destroyed(?)", "beta.update_state(null)", "alpha.update_state(null)"));
}

TEST(DocumentManager, ConsentMayDestroyAnotherDocument)
{
    const Documents documents(2);
    documents[2].on_request_close = [&documents] { EXPECT_TRUE(destroy(documents.id(1))); };
    EXPECT_TRUE(destroy(documents.id(2)));
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
    EXPECT_EQ(1, journal().count("Document 2.destroyed"));
}

TEST(DocumentManager, ThrowingConsentChangesNothing)
{
    const Documents documents(1);
    documents[1].on_request_close = [] { throw std::runtime_error("not now"); };
    EXPECT_THROW(destroy(documents.id(1)), std::runtime_error);
    EXPECT_EQ(0, journal().count("Destroyed"));
    documents[1].on_request_close = nullptr;
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_EQ(0u, manager().num_documents());
}

// Who is next

TEST(DocumentManager, ChosenDocumentBecomesCurrent)
{
    const Documents documents(4);
    EXPECT_TRUE(destroy(documents.id(4), documents.id(3)));
    EXPECT_EQ(documents.id(3), manager().current_document_id());
    EXPECT_EQ(1, journal().count("CurrentChanged(Document 3)"));
    EXPECT_EQ(1, journal().count("CurrentChanged"));
    EXPECT_EQ(1, journal().count("alpha.update_state(Document 3)"));
    EXPECT_EQ(1, journal().count("alpha.update_state"));
}

TEST(DocumentManager, WithoutAChoiceTheFirstDocumentBecomesCurrent)
{
    const Documents documents(3);
    EXPECT_TRUE(destroy(documents.id(3)));
    EXPECT_EQ(documents.id(1), manager().current_document_id());
}

TEST(DocumentManager, UnknownChoiceGivesTheFirstDocument)
{
    const Documents documents(3);
    EXPECT_TRUE(destroy(documents.id(3), DocumentId::build(77)));
    EXPECT_EQ(documents.id(1), manager().current_document_id());
}

TEST(DocumentManager, FirstDocumentIsFollowedByTheSecond)
{
    const Documents documents(3);
    manager().current_document(documents.id(1));
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_EQ(documents.id(2), manager().current_document_id());
}

TEST(DocumentManager, ChoosingTheDestroyedDocumentGivesTheNextOne)
{
    const Documents documents(3);
    manager().current_document(documents.id(2));
    EXPECT_TRUE(destroy(documents.id(2), documents.id(2)));
    EXPECT_EQ(documents.id(3), manager().current_document_id());
}

TEST(DocumentManager, ChoosingTheDestroyedLastDocumentGivesTheFirst)
{
    const Documents documents(3);
    EXPECT_TRUE(destroy(documents.id(3), documents.id(3)));
    EXPECT_EQ(documents.id(1), manager().current_document_id());
}

TEST(DocumentManager, ChoiceIsIgnoredWhenTheCurrentDocumentStays)
{
    const Documents documents(3);
    EXPECT_TRUE(destroy(documents.id(1), documents.id(2)));
    EXPECT_EQ(documents.id(3), manager().current_document_id());
    EXPECT_EQ(0, journal().count("alpha.update_state"));
}

TEST(DocumentManager, EmptyRegistryEntryAsTheNextDocumentIsLogged)
{
    const Documents documents(1);
    TestAccess::register_null_document(manager(), manager().createId());
    support::LogCapture log;
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_TRUE(
        log.took_assert("!utilities::null_pointer( sp_ad )", "DocumentManager::destroy_document(", s_source));
    log.take_all(); // it cannot become current either
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
    EXPECT_EQ(0, journal().count("CurrentChanged"));
}

// Nested requests

TEST(DocumentManager, NestedDestructionOfTheSameDocumentIsANoOp)
{
    Documents documents(2);
    int nested = 0;
    documents.receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed) {
            ++nested;
            EXPECT_TRUE(destroy(message.id()));
            EXPECT_TRUE(manager().destroy_document(message.id(), true, true, true, DocumentId::null()));
            EXPECT_TRUE(manager().document_exists(message.id()));
        }
    };
    EXPECT_TRUE(destroy(documents.id(2)));
    EXPECT_EQ(1, nested);
    EXPECT_EQ(1, journal().count("Document 2.request_close"));
    EXPECT_EQ(1, journal().count("Destroyed"));
    EXPECT_EQ(1, journal().count("CurrentChanged"));
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, NestedDestructionOfAnotherDocumentWorks)
{
    Documents documents(3);
    documents.receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed && message.id() == documents.id(3)) {
            EXPECT_TRUE(destroy(documents.id(1)));
        }
    };
    EXPECT_TRUE(destroy(documents.id(3), documents.id(1)));
    EXPECT_THAT(manager().current_documents(), ElementsAre(documents.id(2)));
    EXPECT_EQ(documents.id(2), manager().current_document_id());
    EXPECT_EQ(2, journal().count("Destroyed"));
}

TEST(DocumentManager, DocumentsMayBeCreatedDuringTheDestroyedMessage)
{
    Documents documents(1);
    documents.receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed) {
            create_document();
        }
    };
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_EQ(1u, manager().num_documents());
    EXPECT_EQ("Document 2", manager().current_document().title());
}

TEST(DocumentManager, ThrowingSubscriberLeavesTheDocumentDestroyable)
{
    Documents documents(2);
    documents.receiver.on_document = [](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed) {
            throw std::runtime_error("subscriber");
        }
    };
    EXPECT_THROW(destroy(documents.id(2)), std::runtime_error);
    EXPECT_EQ(2u, manager().num_documents());
    documents.receiver.on_document = nullptr;
    EXPECT_TRUE(destroy(documents.id(2))); // not taken for one in destruction
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, DocumentInDestructionIsNotBusy)
{
    Documents documents(1);
    manager().document_busy(documents.id(1), true);
    int asked = 0;
    documents.receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed) {
            ++asked;
            EXPECT_FALSE(manager().document_busy(message.id()));
            EXPECT_TRUE(manager().documents_busy()); // the mark is still there
        }
    };
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_EQ(1, asked);
}

TEST(DocumentManager, MissingControllerIsLoggedWhenTheLastDocumentGoes)
{
    const Documents documents(1);
    support::register_controller("late");
    support::LogCapture log;
    EXPECT_TRUE(destroy(documents.id(1)));
    EXPECT_TRUE(
        log.took_assert("!utilities::null_pointer( sp_ac )", "DocumentManager::destroy_document(", s_source));
    EXPECT_TRUE(log.take("iter != m_controller_map.end()"));
    EXPECT_EQ(1, journal().count("alpha.update_state(null)"));
}
