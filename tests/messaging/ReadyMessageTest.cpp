#include "support/Fakes.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtCore/QVariant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

// The messages of busy marks, of the history and of runs, which a thread sends again and again. Each of them
// is like a new one, whatever a subscriber did with those before.

namespace {

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeDocument;
using support::JournalingReceiver;
using testing::ElementsAre;

void mark(const DocumentId& id, bool busy)
{
    DocumentManager::instance().document_busy(id, busy);
}

std::string words(const DocumentMessage& message)
{
    return (message.doc_change_type() == DocumentMessage::Busy ? "busy " : "idle ")
        + message.id().getString();
}

class ReadyMessages : public testing::Test
{
protected:
    typedef std::function<void(DocumentMessage&)> Action;

    /// Marks the document busy, with @p action in the subscriber.
    void do_with_message(const Action& action) { send(true, action); }

    /// Sends the next message, with @p look in the subscriber. @return whether it came
    bool look_at_next(const Action& look) { return send(false, look); }

    FakeDocument& m_document = create_document();
    JournalingReceiver m_receiver;

private:
    bool send(bool busy, const Action& action)
    {
        bool came = false;
        m_receiver.on_document = [&](DocumentMessage& message) {
            came = true;
            action(message);
        };
        mark(m_document.id(), busy);
        m_receiver.on_document = nullptr;
        return came;
    }
};

TEST_F(ReadyMessages, WithinEachOtherAreObjectsOfTheirOwn)
{
    FakeDocument& other = create_document();
    std::vector<std::string> heard;
    DocumentMessage* p_outer = nullptr;
    do_with_message([&](DocumentMessage& message) {
        if (p_outer) {
            EXPECT_NE(p_outer, &message);
        } else {
            p_outer = &message;
            mark(other.id(), true);
            mark(other.id(), false);
        }
        heard.push_back(words(message));
    });
    EXPECT_TRUE(look_at_next([&](DocumentMessage& message) { heard.push_back(words(message)); }));
    const std::string id = m_document.id().getString();
    const std::string other_id = other.id().getString();
    EXPECT_THAT(heard, ElementsAre("busy " + other_id, "idle " + other_id, "busy " + id, "idle " + id));
}

TEST_F(ReadyMessages, ComeAsTheyWereSentAfterASubscriberChangedOne)
{
    do_with_message([](DocumentMessage& message) {
        message.id(DocumentId::build(12345));
        message.doc_change_type(DocumentMessage::NoChange);
    });
    EXPECT_TRUE(look_at_next([this](DocumentMessage& message) {
        EXPECT_EQ(message.id(), m_document.id());
        EXPECT_EQ(message.doc_change_type(), DocumentMessage::Idle);
    }));
}

TEST_F(ReadyMessages, AreGoneForAPointerThatFollowsThem)
{
    QPointer<DocumentMessage> pointer;
    do_with_message([&](DocumentMessage& message) { pointer = &message; });
    EXPECT_TRUE(pointer.isNull());
    EXPECT_TRUE(look_at_next([&](DocumentMessage& message) { pointer = &message; }));
    EXPECT_TRUE(pointer.isNull());
}

TEST_F(ReadyMessages, TellThatTheyGo)
{
    int destroyed = 0;
    do_with_message([&](DocumentMessage& message) {
        QObject::connect(&message, &QObject::destroyed, [&destroyed] { ++destroyed; });
        EXPECT_EQ(destroyed, 0);
    });
    EXPECT_EQ(destroyed, 1);
    EXPECT_TRUE(look_at_next([](DocumentMessage&) {}));
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ReadyMessages, TakeTheirChildrenWithThem)
{
    QPointer<QObject> child;
    do_with_message([&](DocumentMessage& message) { child = new QObject(&message); });
    EXPECT_TRUE(child.isNull());
    EXPECT_TRUE(look_at_next([](DocumentMessage& message) { EXPECT_TRUE(message.children().isEmpty()); }));
}

TEST_F(ReadyMessages, LeaveTheirParent)
{
    QObject parent;
    do_with_message([&](DocumentMessage& message) { message.setParent(&parent); });
    EXPECT_TRUE(parent.children().isEmpty());
    EXPECT_TRUE(look_at_next([](DocumentMessage& message) { EXPECT_FALSE(message.parent()); }));
}

TEST_F(ReadyMessages, HaveNoPropertiesOfEarlierOnes)
{
    do_with_message([](DocumentMessage& message) { message.setProperty("handled", true); });
    EXPECT_TRUE(look_at_next([](DocumentMessage& message) {
        EXPECT_FALSE(message.property("handled").isValid());
        message.setObjectName("known");
    }));
    do_with_message([](DocumentMessage& message) {
        EXPECT_EQ(message.objectName(), QString());
        message.blockSignals(true);
    });
    EXPECT_TRUE(look_at_next([](DocumentMessage& message) { EXPECT_FALSE(message.signalsBlocked()); }));
}

TEST_F(ReadyMessages, HaveNoneInAnApplicationEither)
{
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    do_with_message([](DocumentMessage& message) { message.setProperty("handled", true); });
    EXPECT_TRUE(
        look_at_next([](DocumentMessage& message) { EXPECT_FALSE(message.property("handled").isValid()); }));
}

TEST_F(ReadyMessages, GetNoEventOfEarlierOnes)
{
    int argc = 0;
    const QCoreApplication application(argc, nullptr);
    bool called = false;
    do_with_message([&](DocumentMessage& message) {
        QMetaObject::invokeMethod(
            &message, [&called] { called = true; }, Qt::QueuedConnection);
    });
    EXPECT_TRUE(look_at_next([](DocumentMessage&) {}));
    QCoreApplication::processEvents();
    EXPECT_FALSE(called);
}

TEST_F(ReadyMessages, ComeAfterASubscriberThrew)
{
    EXPECT_THROW(
        do_with_message([](DocumentMessage&) { throw std::runtime_error("thrown"); }), std::runtime_error);
    EXPECT_TRUE(look_at_next([this](DocumentMessage& message) {
        EXPECT_EQ(words(message), "idle " + m_document.id().getString());
    }));
}

TEST_F(ReadyMessages, OfARunTellOfThatRun)
{
    std::vector<unsigned long long> ids;
    std::vector<bool> redos;
    int changes = 0;
    m_receiver.on_history = [&changes](DocumentHistoryMsg&) { ++changes; };
    m_receiver.on_command = [&](CommandMessage& message) {
        ids.push_back(message.command()->id().getId());
        redos.push_back(message.isRedoCommand());
        message.setAsRedoCommand(!message.isRedoCommand());
        message.id(CommandId::null());
    };
    const auto first = support::make_command(m_document.id(), "A");
    const auto second = support::make_command(m_document.id(), "B");
    CommandManager& manager = CommandManager::instance();
    manager.insert(first, false);
    manager.insert(second, false);
    manager.undo(m_document.id());
    manager.redo(m_document.id());
    const unsigned long long id = second->id().getId();
    EXPECT_THAT(ids, ElementsAre(first->id().getId(), id, id, id));
    EXPECT_THAT(redos, ElementsAre(false, false, false, true));
    EXPECT_EQ(changes, 4);
}

TEST_F(ReadyMessages, AreSentByAThreadsLastObjects)
{
    struct Last
    {
        ~Last()
        {
            mark(id, true);
            mark(id, false);
        }
        DocumentId id = DocumentId::null();
    };
    JournalingReceiver direct(Qt::DirectConnection);
    std::vector<std::string> heard;
    direct.on_document = [&heard](DocumentMessage& message) { heard.push_back(words(message)); };
    const DocumentId id = m_document.id();
    std::thread([id] {
        static thread_local Last s_last; // before the thread's first message: it goes after all else
        s_last.id = id;
        mark(id, true);
        mark(id, false);
    }).join();
    const std::string number = id.getString();
    EXPECT_THAT(heard, ElementsAre("busy " + number, "idle " + number, "busy " + number, "idle " + number));
}

} // namespace
