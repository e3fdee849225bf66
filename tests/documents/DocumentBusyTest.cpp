#include "support/Fakes.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDocument;
using support::journal;
using support::JournalingReceiver;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

DocumentManager& manager()
{
    return DocumentManager::instance();
}

/// A document and a receiver, with an empty journal.
class OneDocument
{
public:
    OneDocument()
        : document(create_document())
        , id(document.id())
    {
        journal().clear();
    }

    FakeDocument& document;
    const DocumentId id;
    JournalingReceiver receiver{Qt::DirectConnection};
};

bool throws_unknown_document(const DocumentId& id, bool busy)
{
    try {
        manager().document_busy(id, busy);
    } catch (HousekeepingException& exception) {
        return exception.code() == 1014;
    }
    return false;
}

} // namespace

TEST(DocumentManager, BusyMarkSetsTheFlagThenSendsBusy)
{
    OneDocument it;
    it.receiver.on_document = [&it](DocumentMessage& message) {
        EXPECT_EQ(5, message.doc_change_type());
        EXPECT_EQ(it.id, message.id());
        EXPECT_TRUE(it.document.is_busy());
        EXPECT_TRUE(manager().document_busy(it.id));
    };
    EXPECT_TRUE(manager().document_busy(it.id, true));
    EXPECT_THAT(journal().entries(), ElementsAre("Document 1.busy(true)", "Busy(Document 1)"));
    EXPECT_TRUE(manager().document_busy(it.id));
    EXPECT_TRUE(manager().documents_busy());
}

TEST(DocumentManager, LastMarkSendsIdleThenClearsTheFlag)
{
    OneDocument it;
    manager().document_busy(it.id, true);
    journal().clear();
    it.receiver.on_document = [&it](DocumentMessage& message) {
        EXPECT_EQ(6, message.doc_change_type());
        EXPECT_EQ(it.id, message.id());
        EXPECT_TRUE(it.document.is_busy()); // subscribers of both messages see it busy
        EXPECT_FALSE(manager().document_busy(it.id)); // the mark is gone already
        EXPECT_FALSE(manager().documents_busy());
    };
    EXPECT_TRUE(manager().document_busy(it.id, false));
    EXPECT_THAT(journal().entries(), ElementsAre("Idle(Document 1)", "Document 1.busy(false)"));
    EXPECT_FALSE(it.document.is_busy());
    EXPECT_FALSE(manager().documents_busy());
}

TEST(DocumentManager, SecondBusyMarkSendsNoMessage)
{
    OneDocument it;
    EXPECT_TRUE(manager().document_busy(it.id, true));
    EXPECT_TRUE(manager().document_busy(it.id, true));
    EXPECT_TRUE(manager().document_busy(it.id, false));
    EXPECT_TRUE(manager().document_busy(it.id));
    EXPECT_TRUE(it.document.is_busy());
    EXPECT_EQ(1, journal().count("Busy"));
    EXPECT_EQ(0, journal().count("Idle"));
    EXPECT_TRUE(manager().document_busy(it.id, false));
    EXPECT_FALSE(manager().document_busy(it.id));
    EXPECT_EQ(1, journal().count("Busy"));
    EXPECT_EQ(1, journal().count("Idle"));
}

TEST(DocumentManager, IdleWithoutAMarkDoesNothing)
{
    OneDocument it;
    EXPECT_TRUE(manager().document_busy(it.id, false));
    EXPECT_TRUE(manager().document_busy(DocumentId::build(77), false)); // not even looked up
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_TRUE(manager().document_busy(it.id, true)); // and no mark is owed
    EXPECT_TRUE(manager().document_busy(it.id));
}

TEST(DocumentManager, DocumentThatIsBusyByItselfSendsNoBusy)
{
    OneDocument it;
    it.document.busy_by_itself(true);
    EXPECT_FALSE(manager().document_busy(it.id)); // only marks count
    EXPECT_TRUE(manager().document_busy(it.id, true));
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_TRUE(manager().document_busy(it.id));
    EXPECT_TRUE(manager().document_busy(it.id, false));
    EXPECT_THAT(journal().entries(), ElementsAre("Idle(Document 1)", "Document 1.busy(false)"));
}

TEST(DocumentManager, DocumentThatIsIdleByItselfSendsNoIdle)
{
    OneDocument it;
    manager().document_busy(it.id, true);
    it.document.busy_by_itself(false);
    journal().clear();
    EXPECT_TRUE(manager().document_busy(it.id, false));
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_FALSE(manager().documents_busy());
}

TEST(DocumentManager, MarksOfDocumentsAreIndependent)
{
    OneDocument it;
    FakeDocument& other = create_document();
    manager().document_busy(it.id, true);
    EXPECT_FALSE(manager().document_busy(other.id()));
    manager().document_busy(other.id(), true);
    manager().document_busy(it.id, false);
    EXPECT_FALSE(manager().document_busy(it.id));
    EXPECT_TRUE(manager().document_busy(other.id()));
    EXPECT_TRUE(manager().documents_busy());
    manager().document_busy(other.id(), false);
    EXPECT_FALSE(manager().documents_busy());
}

TEST(DocumentManager, BusyMarkOfAnUnknownDocumentThrowsAfterItIsCounted)
{
    const JournalingReceiver receiver;
    const DocumentId id = DocumentId::build(77);
    EXPECT_TRUE(throws_unknown_document(id, true));
    EXPECT_TRUE(manager().documents_busy());
    EXPECT_TRUE(manager().document_busy(id));
    EXPECT_FALSE(throws_unknown_document(id, true)); // a second mark is only counted
    EXPECT_FALSE(throws_unknown_document(id, false));
    EXPECT_TRUE(throws_unknown_document(id, false));
    EXPECT_FALSE(manager().documents_busy());
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(DocumentManager, SubscribersMayMarkWhileTheyAreTold)
{
    OneDocument it;
    it.receiver.on_document = [&it](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Busy) {
            EXPECT_TRUE(manager().document_busy(it.id, true)); // no mutex is held
            EXPECT_TRUE(manager().document_busy(it.id, false));
        }
    };
    manager().document_busy(it.id, true);
    EXPECT_TRUE(manager().document_busy(it.id));
    manager().document_busy(it.id, false);
    EXPECT_FALSE(manager().documents_busy());
    EXPECT_EQ(1, journal().count("Busy"));
    EXPECT_EQ(1, journal().count("Idle"));
}

TEST(DocumentManager, BusyMarksOfAWorkerAreToldInTheWorker)
{
    OneDocument it;
    std::vector<std::thread::id> threads;
    it.receiver.on_document = [&threads](DocumentMessage&) { threads.push_back(std::this_thread::get_id()); };
    std::thread worker([&it] {
        manager().document_busy(it.id, true);
        manager().document_busy(it.id, false);
    });
    const std::thread::id worker_id = worker.get_id();
    worker.join();
    EXPECT_THAT(threads, ElementsAre(worker_id, worker_id));
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "Document 1.busy(true)", "Busy(Document 1)", "Idle(Document 1)", "Document 1.busy(false)"));
}

TEST(DocumentManager, BusyMarksOfManyWorkersPairUp)
{
    OneDocument it;
    manager().document_busy(it.id, true); // keeps the document busy, so the workers' marks only nest
    std::vector<std::thread> workers;
    for (int i = 0; i < 8; ++i) {
        workers.emplace_back([&it] {
            for (int mark = 0; mark < 500; ++mark) {
                manager().document_busy(it.id, true);
                EXPECT_TRUE(manager().document_busy(it.id));
                manager().document_busy(it.id, false);
            }
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    EXPECT_TRUE(manager().document_busy(it.id));
    EXPECT_THAT(journal().entries(), ElementsAre("Document 1.busy(true)", "Busy(Document 1)"));
    manager().document_busy(it.id, false);
    EXPECT_FALSE(manager().documents_busy());
    EXPECT_EQ(1, journal().count("Idle"));
}

TEST(DocumentManager, BusyMarksOfWorkersOnDocumentsOfTheirOwnPairUp)
{
    std::vector<DocumentId> ids;
    for (int i = 0; i < 4; ++i) {
        ids.push_back(create_document().id());
    }
    const JournalingReceiver receiver(Qt::DirectConnection);
    journal().clear();
    std::vector<std::thread> workers;
    for (const DocumentId id : ids) {
        workers.emplace_back([id] {
            for (int mark = 0; mark < 200; ++mark) {
                manager().document_busy(id, true);
                manager().document_busy(id, false);
            }
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    EXPECT_FALSE(manager().documents_busy());
    EXPECT_EQ(800, journal().count("Busy"));
    EXPECT_EQ(800, journal().count("Idle"));
    EXPECT_EQ(200, journal().count("Busy(Document 3)"));
}
