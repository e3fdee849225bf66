#include "support/Fakes.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

/// A document that is empty, idle and closing.
FakeDocument& create_invalid_document()
{
    FakeDocument& document = create_document();
    document.set_closing();
    return document;
}

/// An event loop to turn, for what the sweep schedules.
class EventLoop
{
public:
    void turn() { QCoreApplication::processEvents(); }

private:
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    QCoreApplication m_application{m_count, m_arguments};
};

} // namespace

TEST(DocumentManager, SweepOfNothingDoesNothing)
{
    const JournalingReceiver receiver;
    manager().cleanupInvalidDocuments();
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(DocumentManager, SweepDestroysEmptyIdleClosingDocumentsOnly)
{
    FakeDocument& invalid = create_invalid_document();
    FakeDocument& full = create_invalid_document();
    full.fake_model().items = 1;
    FakeDocument& busy_by_itself = create_invalid_document();
    busy_by_itself.busy_by_itself(true);
    FakeDocument& open = create_document();
    const DocumentId invalid_id = invalid.id();
    const JournalingReceiver receiver;
    journal().clear();

    manager().cleanupInvalidDocuments();
    EXPECT_FALSE(manager().document_exists(invalid_id));
    EXPECT_THAT(manager().current_documents(), ElementsAre(full.id(), busy_by_itself.id(), open.id()));
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.request_close(true, false)", "Destroyed(Document 1)", "Document 1.destroyed",
            "CurrentChanged(Document 4)"));
}

TEST(DocumentManager, SweepDestroysInTheOrderOfIdsAndStopsWhenNoneIsLeft)
{
    create_invalid_document();
    create_invalid_document();
    create_invalid_document();
    const JournalingReceiver receiver;
    journal().clear();
    manager().cleanupInvalidDocuments();
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_THAT(journal().entries(),
        ElementsAre("Document 1.request_close(true, false)", "Destroyed(Document 1)", "Document 1.destroyed",
            "CurrentChanged(Document 3)", "Document 2.request_close(true, false)", "Destroyed(Document 2)",
            "Document 2.destroyed", "CurrentChanged(Document 3)", "Document 3.request_close(true, false)",
            "Destroyed(Document 3)", "Document 3.destroyed"));
}

TEST(DocumentManager, SweepBeginsAgainAtTheFirstDocument)
{
    FakeDocument& first = create_document();
    const DocumentId second = create_invalid_document().id();
    JournalingReceiver receiver;
    receiver.on_document = [&first, second](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed && message.id() == second) {
            first.set_closing(); // behind the sweep's back
        }
    };
    manager().cleanupInvalidDocuments();
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_EQ(2, journal().count("Destroyed"));
}

TEST(DocumentManager, SweepOfNothingIsNotScheduledForAMarkThatIsLeft)
{
    EventLoop loop;
    const DocumentId unknown = DocumentId::build(77);
    EXPECT_THROW(manager().document_busy(unknown, true), HousekeepingException);
    manager().cleanupInvalidDocuments();
    create_invalid_document();
    EXPECT_THROW(manager().document_busy(unknown, false), HousekeepingException);
    EXPECT_FALSE(manager().documents_busy());
    loop.turn();
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, SweepThatDestroyedTheLastDocumentIsNotScheduledForAMarkThatIsLeft)
{
    EventLoop loop;
    const DocumentId last = create_invalid_document().id();
    JournalingReceiver receiver;
    receiver.on_document = [](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed) {
            manager().document_busy(message.id(), true);
        }
    };
    manager().cleanupInvalidDocuments();
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_TRUE(manager().documents_busy());
    create_invalid_document();
    EXPECT_THROW(manager().document_busy(last, false), HousekeepingException);
    loop.turn();
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, FinishedSweepIsNotScheduledAgain)
{
    EventLoop loop;
    create_document();
    manager().cleanupInvalidDocuments();
    manager().current_document().set_closing(); // invalid from now on
    loop.turn();
    EXPECT_EQ(1u, manager().num_documents());
}

TEST(DocumentManager, BusySweepDestroysNothingAndRunsAgain)
{
    EventLoop loop;
    create_invalid_document();
    const DocumentId busy = create_document().id();
    manager().document_busy(busy, true);
    manager().cleanupInvalidDocuments();
    EXPECT_EQ(2u, manager().num_documents());
    loop.turn();
    loop.turn();
    EXPECT_EQ(2u, manager().num_documents()); // still busy, still trying
    manager().document_busy(busy, false);
    EXPECT_EQ(2u, manager().num_documents());
    loop.turn();
    EXPECT_THAT(manager().current_documents(), ElementsAre(busy));
}

TEST(DocumentManager, SweepStopsWhenADocumentBecomesBusyMeanwhile)
{
    EventLoop loop;
    create_invalid_document();
    create_invalid_document();
    const DocumentId busy = create_document().id();
    JournalingReceiver receiver;
    receiver.on_document = [busy](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed && !manager().documents_busy()) {
            manager().document_busy(busy, true);
        }
    };
    manager().cleanupInvalidDocuments();
    EXPECT_EQ(2u, manager().num_documents()); // one was destroyed
    receiver.on_document = nullptr;
    manager().document_busy(busy, false);
    loop.turn();
    EXPECT_THAT(manager().current_documents(), ElementsAre(busy));
}

TEST(DocumentManager, SweepEndsAlthoughADocumentRefuses)
{
    FakeDocument& refusing = create_invalid_document();
    refusing.agrees_to_close = false;
    const DocumentId willing = create_invalid_document().id();
    FakeDocument& also_refusing = create_invalid_document();
    also_refusing.agrees_to_close = false;
    manager().cleanupInvalidDocuments();
    EXPECT_FALSE(manager().document_exists(willing));
    EXPECT_THAT(manager().current_documents(), ElementsAre(refusing.id(), also_refusing.id()));
}

TEST(DocumentManager, MarkThatAppearsAtTheLastDocumentDoesNotScheduleTheSweepAgain)
{
    EventLoop loop;
    const DocumentId other = create_document().id();
    FakeDocument& last = create_invalid_document();
    last.agrees_to_close = false;
    last.on_request_close = [other] { manager().document_busy(other, true); };
    manager().cleanupInvalidDocuments();
    EXPECT_TRUE(manager().document_busy(other));
    last.agrees_to_close = true; // another sweep would destroy it
    last.on_request_close = nullptr;
    manager().document_busy(other, false);
    loop.turn();
    loop.turn();
    EXPECT_THAT(manager().current_documents(), ElementsAre(other, last.id()));
}

TEST(DocumentManager, SweepFromASubscriberOfADestructionEnds)
{
    create_invalid_document();
    create_invalid_document();
    JournalingReceiver receiver;
    receiver.on_document = [](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Destroyed) {
            manager().cleanupInvalidDocuments();
        }
    };
    manager().cleanupInvalidDocuments();
    EXPECT_EQ(0u, manager().num_documents());
    EXPECT_EQ(2, journal().count("Destroyed"));
}

TEST(DocumentManager, SweepCanBeConnectedAsASlot)
{
    const DocumentId invalid = create_invalid_document().id();
    EXPECT_TRUE(QMetaObject::invokeMethod(&manager(), "cleanupInvalidDocuments", Qt::DirectConnection));
    EXPECT_FALSE(manager().document_exists(invalid));
}
