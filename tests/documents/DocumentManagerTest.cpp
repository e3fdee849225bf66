#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/Phases.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <pkBase/pkDestructor.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <future>
#include <set>
#include <thread>

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

void register_two_controllers()
{
    support::register_controller("beta");
    support::register_controller("alpha");
    ControllerManager::instance().init();
}

/// The code of the housekeeping exception that @p action throws; 0 if it throws none.
unsigned int failure_of(const std::function<void()>& action)
{
    try {
        action();
    } catch (HousekeepingException& exception) {
        return exception.code();
    }
    return 0;
}

} // namespace

// The singleton

TEST(DocumentManager, IsOneObject)
{
    EXPECT_EQ(&DocumentManager::instance(), &DocumentManager::instance());
    EXPECT_EQ(&DocumentManager::instance(), &DocumentManager::const_instance());
}

TEST(DocumentManager, SubscribesToCommandMessages)
{
    EXPECT_TRUE(CommandMessage::unsubscribe(&manager()));
    EXPECT_FALSE(CommandMessage::unsubscribe(&manager())); // it was one subscription
}

TEST(DocumentManager, TakesNoActionForCommandMessages)
{
    FakeDocument& document = create_document();
    journal().clear();
    for (const int type : {0, 1, 2, 3}) {
        CommandMessage message;
        message.command_type(static_cast<CommandMessage::CommandType>(type));
        message.document_id(document.id());
        message.dispatch();
    }
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_EQ(document.id(), manager().current_document_id());
}

TEST(DocumentManager, OrderedDestructionTakesTheOpenDocuments)
{
    create_document();
    create_document();
    journal().clear();
    pkBase::pkDestructor::run();
    EXPECT_FALSE(TestAccess::peek<DocumentManager>());
    EXPECT_EQ(2, journal().count("Document "));
    EXPECT_EQ(1, journal().count("Document 1.destroyed"));
    EXPECT_EQ(1, journal().count("Document 2.destroyed"));
}

TEST(DocumentManager, GoesInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<DocumentManager>());
}

TEST(DocumentManager, IsMadeAgainAfterItsDestruction)
{
    create_document();
    TestAccess::destroy<DocumentManager>();
    EXPECT_FALSE(TestAccess::peek<DocumentManager>());
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_EQ(DocumentId::null(), manager().first_id());
}

TEST(DocumentManager, IdsStartAtOneAndAreUsedUp)
{
    EXPECT_EQ(DocumentId::build(1), manager().createId());
    EXPECT_EQ(DocumentId::build(2), manager().createId());
    EXPECT_EQ(3u, manager().createNextId());
    EXPECT_EQ(DocumentId::build(4), manager().createId());
}

TEST(DocumentManager, IdsFromSeveralThreadsAreAllDifferent)
{
    manager();
    std::vector<std::vector<DocumentId>> ids(4);
    std::vector<std::thread> threads;
    for (std::vector<DocumentId>& mine : ids) {
        threads.emplace_back([&mine] {
            for (int i = 0; i < 1000; ++i) {
                mine.push_back(DocumentManager::instance().createId());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<DocumentId> all;
    for (const std::vector<DocumentId>& some : ids) {
        all.insert(some.begin(), some.end());
    }
    EXPECT_EQ(4000u, all.size());
    EXPECT_EQ(DocumentId::build(1), *all.begin());
}

// Look-ups without documents

TEST(DocumentManager, StartsEmpty)
{
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_EQ(DocumentId::null(), manager().first_id());
    EXPECT_THAT(manager().current_documents(), IsEmpty());
    EXPECT_FALSE(manager().current_state("alpha"));
    EXPECT_FALSE(manager().documents_busy());
    EXPECT_FALSE(manager().document_exists(DocumentId::build(1)));
    EXPECT_FALSE(manager().set_document_as_closing(DocumentId::build(1)));
}

TEST(DocumentManager, MissingCurrentDocumentIsLoggedAndThrows)
{
    support::LogCapture log;
    EXPECT_EQ(1014u, failure_of([] { manager().current_document(); }));
    EXPECT_TRUE(log.took_assert("m_current_document", "DocumentManager::current_document()", s_source));
    EXPECT_EQ(1014u, failure_of([] { DocumentManager::const_instance().current_document(); }));
    EXPECT_TRUE(log.took_assert("m_current_document", "DocumentManager::current_document() const", s_source));
}

TEST(DocumentManager, UnknownDocumentThrows)
{
    create_document();
    for (const DocumentId id : {DocumentId::null(), DocumentId::build(77)}) {
        EXPECT_EQ(1014u, failure_of([id] { manager().document_from_id(id); }));
        EXPECT_EQ(1014u, failure_of([id] { DocumentManager::const_instance().document_from_id(id); }));
    }
    try {
        manager().document_from_id(DocumentId::build(77));
        FAIL() << "nothing was thrown";
    } catch (HousekeepingException& exception) {
        EXPECT_EQ("Document does not exist", exception.message());
        EXPECT_EQ(s_source, exception.file());
    }
}

TEST(DocumentManager, EmptyRegistryEntryIsLoggedAndThrows)
{
    create_document();
    const DocumentId empty = manager().createId();
    TestAccess::register_null_document(manager(), empty);
    support::LogCapture log;
    const auto logged = [&log](const char* function) {
        return log.took_assert("!utilities::null_pointer( sp_ad )", function, s_source)
            && log.lines().empty();
    };
    EXPECT_EQ(1014u, failure_of([empty] { manager().document_from_id(empty); }));
    EXPECT_TRUE(logged("DocumentManager::document_from_id("));
    EXPECT_EQ(1014u, failure_of([empty] { DocumentManager::const_instance().document_from_id(empty); }));
    EXPECT_TRUE(logged("DocumentManager::document_from_id("));
    EXPECT_EQ(1014u, failure_of([empty] { manager().document_busy(empty, true); }));
    EXPECT_TRUE(logged("DocumentManager::document_busy("));
    EXPECT_EQ(1014u, failure_of([empty] { manager().document_busy(empty, false); }));
    EXPECT_TRUE(logged("DocumentManager::document_busy("));
}

TEST(DocumentManager, EmptyRegistryEntryCannotBecomeCurrent)
{
    create_document();
    const DocumentId empty = manager().createId();
    TestAccess::register_null_document(manager(), empty);
    const JournalingReceiver receiver;
    journal().clear();
    support::LogCapture log;
    manager().current_document(empty);
    EXPECT_TRUE(log.took_assert("m_current_document", "DocumentManager::current_document(", s_source));
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_THAT(journal().entries(), IsEmpty());
}

// Creation

TEST(DocumentManager, CreationHasAFixedOrder)
{
    register_two_controllers();
    const JournalingReceiver receiver;
    journal().clear();
    FakeDocument& document = create_document();
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.document_created", "beta.create_state(Document 1)",
            "alpha.create_state(Document 1)", "beta.update_state(Document 1)",
            "alpha.update_state(Document 1)", "Created(Document 1)"));
    EXPECT_TRUE(document.state("alpha"));
    EXPECT_TRUE(ControllerManager::instance().controller("alpha")->state_exists());
}

TEST(DocumentManager, DocumentIsNotFoundAnyMoreWhenItIsGone)
{
    const DocumentId id = create_document().id();
    const DocumentId other = create_document().id();
    std::promise<void> found, gone;
    std::thread worker([&] {
        EXPECT_EQ(id, manager().document_from_id(id).id());
        found.set_value();
        gone.get_future().wait();
        EXPECT_EQ(1014u, failure_of([id] { manager().document_from_id(id); }));
        EXPECT_EQ(other, manager().document_from_id(other).id());
    });
    found.get_future().wait();
    EXPECT_EQ(id, manager().document_from_id(id).id());
    EXPECT_TRUE(manager().destroy_document(id, true, false, false, DocumentId::null()));
    gone.set_value();
    EXPECT_EQ(1014u, failure_of([id] { manager().document_from_id(id); }));
    EXPECT_EQ(1014u, failure_of([id] { DocumentManager::const_instance().document_from_id(id); }));
    EXPECT_EQ(other, manager().document_from_id(other).id());
    worker.join();
}

TEST(DocumentManager, NextManagerFindsItsOwnDocumentsOnly)
{
    const DocumentId id = create_document().id();
    EXPECT_EQ(id, manager().document_from_id(id).id());
    TestAccess::destroy<DocumentManager>();
    EXPECT_EQ(1014u, failure_of([id] { manager().document_from_id(id); }));
}

TEST(DocumentManager, NewDocumentIsRegisteredAndCurrent)
{
    FakeDocument& document = create_document();
    EXPECT_EQ(&document, &manager().current_document());
    EXPECT_EQ(&document, &DocumentManager::const_instance().current_document());
    EXPECT_EQ(&document, &manager().document_from_id(document.id()));
    EXPECT_EQ(&document, &DocumentManager::const_instance().document_from_id(document.id()));
    EXPECT_EQ(document.id(), manager().current_document_id());
    EXPECT_TRUE(manager().document_exists(document.id()));
    EXPECT_EQ(1u, manager().num_documents());
    EXPECT_FALSE(manager().document_busy(document.id()));
}

TEST(DocumentManager, EveryNewDocumentBecomesCurrentWithoutACurrentMessage)
{
    const JournalingReceiver receiver;
    create_document();
    FakeDocument& second = create_document();
    EXPECT_EQ(&second, &manager().current_document());
    EXPECT_EQ(2, journal().count("Created"));
    EXPECT_EQ(0, journal().count("CurrentChanged"));
    EXPECT_EQ(0, journal().count("Busy"));
    EXPECT_EQ(0, journal().count("Destroyed"));
}

TEST(DocumentManager, DocumentIsCurrentButWithoutStatesWhenItsHookRuns)
{
    register_two_controllers();
    int calls = 0;
    support::register_documents().on_created = [&calls](FakeDocument& document) {
        ++calls;
        EXPECT_EQ(document.id(), manager().current_document_id());
        EXPECT_EQ(document.id(), manager().first_id());
        EXPECT_TRUE(manager().document_exists(document.id()));
        support::LogCapture log;
        EXPECT_FALSE(document.state("alpha"));
        EXPECT_TRUE(log.take("iter != m_states.end()"));
    };
    manager().create_document();
    EXPECT_EQ(1, calls);
}

TEST(DocumentManager, PetrelLinkIsSetBeforeTheHookRuns)
{
    qputenv("PETREL_PORT", "4711");
    bool linked = false;
    support::register_documents().on_created
        = [&linked](FakeDocument& document) { linked = document.linked_to_petrel(); };
    manager().create_document();
    EXPECT_TRUE(linked);
}

TEST(DocumentManager, CreationMessageComesWhenTheStatesAreShown)
{
    register_two_controllers();
    int calls = 0;
    JournalingReceiver receiver;
    receiver.on_document = [&calls](DocumentMessage& message) {
        ++calls;
        EXPECT_EQ(1, message.doc_change_type());
        EXPECT_EQ(message.id(), manager().current_document_id());
        ASSERT_TRUE(manager().current_state("alpha"));
        EXPECT_EQ(message.id(), manager().current_state("alpha")->document_id());
        EXPECT_TRUE(ControllerManager::instance().controller("alpha")->state_exists());
    };
    create_document();
    EXPECT_EQ(1, calls);
}

TEST(DocumentManager, SubscribersOfTheCreationMessageUseEveryOtherOperation)
{
    register_two_controllers();
    FakeDocument& first = create_document();
    JournalingReceiver receiver;
    int created = 0;
    receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() != DocumentMessage::Created) {
            return;
        }
        ++created;
        const DocumentId id = message.id();
        EXPECT_EQ(id, manager().current_document().id());
        EXPECT_EQ(2u, manager().num_documents());
        EXPECT_EQ(first.id(), manager().first_id());
        EXPECT_THAT(manager().current_documents(), ElementsAre(first.id(), id));
        EXPECT_TRUE(manager().document_exists(id));
        EXPECT_EQ(id, manager().document_from_id(id).id());
        EXPECT_TRUE(manager().current_state("beta"));
        EXPECT_TRUE(manager().document_busy(id, true));
        EXPECT_TRUE(manager().document_busy(id));
        EXPECT_TRUE(manager().documents_busy());
        EXPECT_TRUE(manager().document_busy(id, false));
        EXPECT_TRUE(manager().set_document_as_closing(first.id()));
        manager().current_document(first.id());
        EXPECT_GT(manager().createId(), id);
        manager().cleanupInvalidDocuments(); // nothing to sweep: the first one is not empty
    };
    first.fake_model().items = 1;
    const FakeDocument& second = create_document();
    EXPECT_EQ(1, created);
    EXPECT_TRUE(first.is_closing());
    EXPECT_EQ(first.id(), manager().current_document_id());
    EXPECT_NE(first.id(), second.id());
}

TEST(DocumentManager, NoFactoryThrowsAndTheNextCreationWorks)
{
    EXPECT_THROW(manager().create_document(), std::runtime_error);
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_NO_THROW(create_document());
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, FactoryThatGivesNothingIsLoggedAndThrows)
{
    support::FakeDocumentFactory& factory = support::register_documents();
    factory.gives_nothing = true;
    const JournalingReceiver receiver;
    support::LogCapture log;
    EXPECT_EQ(1014u, failure_of([] { manager().create_document(); }));
    EXPECT_TRUE(
        log.took_assert("!utilities::null_pointer( sp_ad )", "DocumentManager::create_document", s_source));
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_EQ(DocumentId::null(), manager().first_id());
    EXPECT_EQ(0, journal().count("Created"));

    factory.gives_nothing = false; // and the manager is still usable
    const DocumentId id = manager().create_document().id();
    EXPECT_EQ(id, manager().first_id());
}

TEST(DocumentManager, DocumentThatIsRegisteredAlreadyIsLogged)
{
    support::FakeDocumentFactory& factory = support::register_documents();
    factory.keeps_products = true;
    AbstractDocument& document = manager().create_document();
    factory.repeats_first = true;
    support::LogCapture log;
    EXPECT_EQ(&document, &manager().create_document());
    EXPECT_TRUE(log.took_assert("inserted", "DocumentManager::create_document", s_source));
    for (std::size_t i = 0; i < AbstractControllerFactory::products().size(); ++i) {
        EXPECT_TRUE(log.took_assert("true == inserted", "AbstractDocument::create_states",
            "housekeeping/src/AbstractDocument")); // it has its states already
    }
    EXPECT_TRUE(log.lines().empty());
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, MissingControllersAreLogged)
{
    support::register_controller("alpha");
    static support::FakeDocumentFactory factory; // and the controllers are not made
    support::LogCapture log;
    const AbstractDocument& document = manager().create_document();
    EXPECT_TRUE(
        log.took_assert("!utilities::null_pointer( sp_ac )", "DocumentManager::create_document(", s_source));
    log.take_all(); // the same of the document's and the controller manager's look-ups
    EXPECT_EQ(document.id(), manager().current_document_id());
}

TEST(DocumentManager, FirstIdStaysThatOfTheFirstDocument)
{
    FakeDocument& first = create_document();
    const DocumentId id = first.id();
    create_document();
    EXPECT_EQ(id, manager().first_id());
    manager().destroy_document(id, true, false, false, DocumentId::null());
    create_document();
    EXPECT_EQ(id, manager().first_id());
}

TEST(DocumentManager, PetrelPortLinksTheFirstDocumentOnly)
{
    qputenv("PETREL_PORT", "4711");
    FakeDocument& first = create_document();
    const FakeDocument& second = create_document();
    EXPECT_TRUE(first.linked_to_petrel());
    EXPECT_FALSE(second.linked_to_petrel());
    manager().destroy_document(first.id(), true, false, false, DocumentId::null());
    EXPECT_FALSE(create_document().linked_to_petrel());
}

TEST(DocumentManager, EmptyPetrelPortCountsAsSet)
{
    qputenv("PETREL_PORT", "");
    EXPECT_TRUE(create_document().linked_to_petrel());
}

TEST(DocumentManager, WithoutPetrelPortNothingIsLinked)
{
    qunsetenv("PETREL_PORT");
    EXPECT_FALSE(create_document().linked_to_petrel());
    qputenv("PETREL_PORT", "4711"); // too late
    EXPECT_FALSE(create_document().linked_to_petrel());
}

// The current document

TEST(DocumentManager, ListsDocumentsInTheOrderOfIdsClosingOnesIncluded)
{
    FakeDocument& first = create_document();
    FakeDocument& second = create_document();
    FakeDocument& third = create_document();
    EXPECT_TRUE(manager().set_document_as_closing(second.id()));
    manager().current_document(first.id());
    EXPECT_THAT(manager().current_documents(), ElementsAre(first.id(), second.id(), third.id()));
    EXPECT_EQ(3u, manager().num_documents());
    EXPECT_TRUE(manager().document_exists(second.id()));
}

TEST(DocumentManager, OrderIsThatOfTheIdsWhateverWasRegisteredFirst)
{
    support::FakeDocumentFactory& factory = support::register_documents();
    factory.kept.push_back(boost::make_shared<FakeDocument>()); // has the lowest id, and comes last
    const DocumentId low = factory.kept.front()->id();
    const DocumentId middle = manager().create_document().id();
    const DocumentId high = manager().create_document().id();
    factory.repeats_first = true;
    EXPECT_EQ(low, manager().create_document().id());
    factory.kept.clear();
    EXPECT_THAT(manager().current_documents(), ElementsAre(low, middle, high));

    manager().current_document(high);
    manager().destroy_document(high, true, false, false, DocumentId::null());
    EXPECT_EQ(low, manager().current_document_id()); // the first of those that are left
    EXPECT_EQ(middle, manager().first_id());
    for (const DocumentId id : {middle, low}) {
        manager().set_document_as_closing(id);
    }
    journal().clear();
    manager().cleanupInvalidDocuments();
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.request_close(true, false)", "Document 1.destroyed",
            "Document 2.request_close(true, false)", "Document 2.destroyed"));
}

TEST(DocumentManager, MakesADocumentCurrent)
{
    register_two_controllers();
    FakeDocument& first = create_document();
    create_document();
    const JournalingReceiver receiver;
    journal().clear();
    manager().current_document(first.id());
    EXPECT_EQ(&first, &manager().current_document());
    EXPECT_EQ(first.state("alpha"), manager().current_state("alpha"));
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "beta.update_state(Document 1)", "alpha.update_state(Document 1)", "CurrentChanged(Document 1)"));
}

TEST(DocumentManager, CurrentDocumentAgainRefreshesControllersSilently)
{
    register_two_controllers();
    FakeDocument& document = create_document();
    const JournalingReceiver receiver;
    journal().clear();
    manager().current_document(document.id());
    EXPECT_THAT(
        journal().entries(), ElementsAre("beta.update_state(Document 1)", "alpha.update_state(Document 1)"));
    EXPECT_EQ(document.id(), manager().current_document_id());
}

TEST(DocumentManager, UnknownDocumentLeavesNoneCurrentSilently)
{
    register_two_controllers();
    create_document();
    const JournalingReceiver receiver;
    journal().clear();
    manager().current_document(DocumentId::build(77));
    EXPECT_EQ(DocumentId::null(), manager().current_document_id());
    EXPECT_FALSE(manager().current_state("alpha"));
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(DocumentManager, CurrentDocumentAfterNoneIsAChange)
{
    FakeDocument& document = create_document();
    manager().current_document(DocumentId::null());
    const JournalingReceiver receiver;
    journal().clear();
    manager().current_document(document.id());
    EXPECT_THAT(journal().entries(), ElementsAre("CurrentChanged(Document 1)"));
}

TEST(DocumentManager, MissingControllerIsLoggedWhenTheCurrentDocumentChanges)
{
    support::register_controller("alpha");
    ControllerManager::instance().init();
    FakeDocument& first = create_document();
    create_document();
    support::register_controller("late");
    const JournalingReceiver receiver;
    journal().clear();
    support::LogCapture log;
    manager().current_document(first.id());
    EXPECT_TRUE(
        log.took_assert("!utilities::null_pointer( sp_ac )", "DocumentManager::current_document(", s_source));
    EXPECT_TRUE(log.take("iter != m_controller_map.end()"));
    log.take_all();
    EXPECT_THAT(
        journal().entries(), ElementsAre("alpha.update_state(Document 1)", "CurrentChanged(Document 1)"));
}

TEST(DocumentManager, CurrentStateOfAnUnknownControllerIsEmpty)
{
    create_document();
    support::LogCapture log;
    EXPECT_FALSE(manager().current_state("alpha"));
    EXPECT_TRUE(log.took_assert(
        "iter != m_states.end()", "AbstractDocument::state", "housekeeping/src/AbstractDocument"));
}

TEST(DocumentManager, MarksADocumentAsClosing)
{
    FakeDocument& document = create_document();
    EXPECT_TRUE(manager().set_document_as_closing(document.id()));
    EXPECT_TRUE(document.is_closing());
    EXPECT_FALSE(manager().set_document_as_closing(DocumentId::build(77)));
}
