#include "support/App.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/MessageHandler.h>

#include <QtCore/QPointer>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace {

using pkBase::pkDestructionPhase;
using pkBase::pkDestructor;
using support::App;
using support::ApplicationMessageSpy;
using support::LogCapture;
using support::wait_until;
using tarqa::housekeeping::ApplicationMessage;
using tarqa::housekeeping::Message;
using tarqa::housekeeping::MessageHandler;
using tarqa::housekeeping::TestAccess;

/// A message that its spy can tell from others.
ApplicationMessage* numbered(int number)
{
    ApplicationMessage* p_message = ApplicationMessage::instance();
    p_message->opType(static_cast<ApplicationMessage::OpType>(number));
    return p_message;
}

std::vector<int> numbers(const ApplicationMessageSpy& spy)
{
    std::vector<int> numbers;
    for (const support::ReceivedApplicationMessage& entry : spy.received()) {
        numbers.push_back(entry.op_type);
    }
    return numbers;
}

/// Catches what slots throw, as the program's application object does.
class CatchingApplication : public QCoreApplication
{
public:
    using QCoreApplication::QCoreApplication;
    bool notify(QObject* p_receiver, QEvent* p_event) override
    {
        try {
            return QCoreApplication::notify(p_receiver, p_event);
        } catch (const std::exception&) {
            ++caught;
            return false;
        }
    }

    int caught = 0;
};

bool s_alive_in_phase_5 = false;
bool s_alive_in_phase_7 = true;

TEST(MessageHandler, IsOneObjectWithAnIdleTimer)
{
    const App app;
    MessageHandler& handler = MessageHandler::instance();
    EXPECT_EQ(&MessageHandler::const_instance(), &handler);
    EXPECT_EQ(handler.thread(), QThread::currentThread());
    const QTimer& timer = TestAccess::timer(handler);
    EXPECT_EQ(timer.interval(), 0);
    EXPECT_FALSE(timer.isSingleShot());
    EXPECT_FALSE(timer.isActive());
    EXPECT_EQ(timer.parent(), &handler);
    EXPECT_GE(handler.metaObject()->indexOfSlot("idleTimeout()"), 0);
}

TEST(MessageHandler, IsMadeByTheConstAccessorToo)
{
    EXPECT_EQ(TestAccess::peek<MessageHandler>(), nullptr);
    const MessageHandler& handler = MessageHandler::const_instance();
    EXPECT_EQ(TestAccess::peek<MessageHandler>(), &handler);
    EXPECT_EQ(&MessageHandler::instance(), &handler);
}

TEST(MessageHandler, IsMadeByTheFirstPost)
{
    const App app;
    ApplicationMessageSpy spy;
    EXPECT_EQ(TestAccess::peek<MessageHandler>(), nullptr);
    numbered(11)->post();
    EXPECT_NE(TestAccess::peek<MessageHandler>(), nullptr);
    ASSERT_TRUE(spy.wait_for(1));
}

TEST(MessageHandler, HoldsItsMutexAgainstTheDeliveringThreadToo)
{
    const App app;
    MessageHandler& handler = MessageHandler::instance();
    ApplicationMessageSpy spy;
    bool free_in_slot = true;
    spy.run_in_slot([&handler, &free_in_slot](ApplicationMessage&) {
        free_in_slot = TestAccess::mutex(handler).tryLock(); // a post would wait here for ever
    });
    numbered(11)->post();
    TestAccess::idleTimeout(handler);
    EXPECT_EQ(spy.count(), 1);
    EXPECT_FALSE(free_in_slot);
    ASSERT_TRUE(TestAccess::mutex(handler).tryLock());
    TestAccess::mutex(handler).unlock();
}

TEST(MessageHandler, DeliversInTheOrderOfPostingInOneShot)
{
    const App app;
    ApplicationMessageSpy spy;
    MessageHandler& handler = MessageHandler::instance();
    handler.post(numbered(11));
    handler.post(numbered(12));
    handler.post(numbered(13));
    EXPECT_TRUE(TestAccess::timer(handler).isActive());
    EXPECT_EQ(spy.count(), 0);

    TestAccess::idleTimeout(handler);
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 12, 13}));
    EXPECT_FALSE(TestAccess::timer(handler).isActive());
    EXPECT_EQ(TestAccess::queued(handler), 0);
}

TEST(MessageHandler, StopsTheTimerAfterTheEventLoopDelivered)
{
    const App app;
    ApplicationMessageSpy spy;
    MessageHandler& handler = MessageHandler::instance();
    numbered(11)->post();
    numbered(12)->post();
    ASSERT_TRUE(spy.wait_for(2));
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 12}));
    EXPECT_FALSE(TestAccess::timer(handler).isActive());

    numbered(13)->post(); // the timer starts again
    ASSERT_TRUE(spy.wait_for(3));
    EXPECT_FALSE(TestAccess::timer(handler).isActive());
}

TEST(MessageHandler, WaitsForTheEventLoop)
{
    const App app;
    ApplicationMessageSpy spy;
    QPointer<ApplicationMessage> message = numbered(11);
    message->post();
    EXPECT_EQ(spy.count(), 0);
    EXPECT_FALSE(message.isNull());
    QTimer::singleShot(50, qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
    EXPECT_EQ(spy.count(), 1);
    EXPECT_TRUE(message.isNull());
}

TEST(MessageHandler, DeletesEachMessageBeforeTheNextIsDelivered)
{
    const App app;
    ApplicationMessageSpy spy;
    QPointer<ApplicationMessage> first = numbered(11);
    QPointer<ApplicationMessage> second = numbered(12);
    std::vector<bool> first_alive;
    std::vector<bool> second_alive;
    spy.run_in_slot([&](ApplicationMessage&) {
        first_alive.push_back(!first.isNull());
        second_alive.push_back(!second.isNull());
    });
    first->post();
    second->post();
    TestAccess::idleTimeout(MessageHandler::instance());
    EXPECT_EQ(first_alive, (std::vector<bool>{true, false}));
    EXPECT_EQ(second_alive, (std::vector<bool>{true, true}));
    EXPECT_TRUE(second.isNull());
}

TEST(MessageHandler, PostDoesNotCheckAndDeliveryLogsNull)
{
    const App app;
    LogCapture capture;
    ApplicationMessageSpy spy;
    MessageHandler& handler = MessageHandler::instance();
    handler.post(numbered(11));
    handler.post(nullptr);
    handler.post(numbered(12));
    EXPECT_TRUE(capture.lines().empty());
    EXPECT_EQ(TestAccess::queued(handler), 3);

    TestAccess::idleTimeout(handler);
    EXPECT_TRUE(capture.took_assert("msg", "Message::dispatch(", "housekeeping/src/Message", 59));
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 12}));
}

TEST(MessageHandler, SlotMaySendAtOnce)
{
    const App app;
    ApplicationMessageSpy spy;
    spy.run_in_slot([&spy](ApplicationMessage&) {
        if (spy.count() == 1) {
            Message::dispatch(numbered(99));
        }
    });
    numbered(11)->post();
    numbered(12)->post();
    TestAccess::idleTimeout(MessageHandler::instance());
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 99, 12}));
}

TEST(MessageHandler, ThrowingSlotLeavesTheRestForTheNextShot)
{
    const App app;
    ApplicationMessageSpy spy;
    spy.run_in_slot([](ApplicationMessage& message) {
        if (message.opType() == 11) {
            throw std::runtime_error("slot");
        }
    });
    MessageHandler& handler = MessageHandler::instance();
    QPointer<ApplicationMessage> first = numbered(11);
    first->post();
    numbered(12)->post();
    EXPECT_THROW(TestAccess::idleTimeout(handler), std::runtime_error);
    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(numbers(spy), std::vector<int>{11});
    EXPECT_EQ(TestAccess::queued(handler), 1);
    EXPECT_TRUE(TestAccess::timer(handler).isActive());

    numbered(13)->post(); // would block if the mutex were still held
    ASSERT_TRUE(spy.wait_for(3));
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 12, 13}));
    EXPECT_FALSE(TestAccess::timer(handler).isActive());
}

TEST(MessageHandler, ThrowingSlotReachesTheEventLoop)
{
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    int count = 1;
    CatchingApplication application(count, arguments);
    ApplicationMessageSpy spy;
    spy.run_in_slot([](ApplicationMessage&) { throw std::runtime_error("slot"); });
    numbered(11)->post();
    numbered(12)->post();
    numbered(13)->post();
    ASSERT_TRUE(wait_until([] { return TestAccess::queued(MessageHandler::instance()) == 0; }));
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 12, 13}));
    EXPECT_EQ(application.caught, 3);
}

TEST(MessageHandler, KeepsWhatIsPostedBeforeTheApplicationObject)
{
    ApplicationMessageSpy spy;
    MessageHandler& handler = MessageHandler::instance();
    numbered(11)->post();
    numbered(12)->post();
    EXPECT_EQ(TestAccess::queued(handler), 2);

    const App app;
    handler.restart();
    ASSERT_TRUE(spy.wait_for(2));
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 12}));
}

TEST(MessageHandler, NextPostMakesUpForThoseBeforeTheApplicationObject)
{
    ApplicationMessageSpy spy;
    numbered(11)->post();
    const App app;
    numbered(12)->post();
    ASSERT_TRUE(spy.wait_for(2));
    EXPECT_EQ(numbers(spy), (std::vector<int>{11, 12}));
}

TEST(MessageHandler, RestartWithoutMessagesDoesNothing)
{
    const App app;
    MessageHandler::instance().restart();
    EXPECT_FALSE(TestAccess::timer(MessageHandler::instance()).isActive());
}

TEST(MessageHandler, GoesInPhaseSix)
{
    const App app;
    MessageHandler::instance();
    pkDestructor(
        pkDestructionPhase(5), [] { s_alive_in_phase_5 = TestAccess::peek<MessageHandler>() != nullptr; });
    pkDestructor(
        pkDestructionPhase(7), [] { s_alive_in_phase_7 = TestAccess::peek<MessageHandler>() != nullptr; });
    pkDestructor::run();
    EXPECT_TRUE(s_alive_in_phase_5);
    EXPECT_FALSE(s_alive_in_phase_7);
}

TEST(MessageHandler, DestructionDropsTheQueueWithoutDeletingTheMessages)
{
    const App app;
    ApplicationMessageSpy spy;
    const std::unique_ptr<ApplicationMessage> message(numbered(11));
    QPointer<ApplicationMessage> alive = message.get();
    message->post();
    TestAccess::destroy<MessageHandler>();
    EXPECT_FALSE(alive.isNull());
    EXPECT_EQ(TestAccess::peek<MessageHandler>(), nullptr);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(spy.count(), 0);
}

TEST(MessageHandler, PostAfterTheOrderedDestructionIsLost)
{
    const App app;
    ApplicationMessageSpy spy;
    MessageHandler::instance();
    pkDestructor::run();
    QPointer<ApplicationMessage> message = numbered(11);
    message->post();
    EXPECT_TRUE(message.isNull()); // handed over all the same
    for (int round = 0; round < 10; ++round) {
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(spy.count(), 0);
}

} // namespace
