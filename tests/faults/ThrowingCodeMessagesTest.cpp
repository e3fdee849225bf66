#include "faults/FaultRuns.h"

#include "support/App.h"
#include "support/MessageSpy.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/MessageHandler.h>

#include <QtCore/QPointer>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

// Slots of every message family that throw.
//
// What a slot throws goes to the sender, or out of the delivery into the event loop. The message is gone, the
// slots behind it have not been called, and what is posted behind it waits for the next delivery. A message
// that fills a menu bar adds its entries all the same, and what is thrown while they are filled costs the
// entry only and is logged.

using namespace tarqa::housekeeping;
using namespace throwing_code;
using gui::MainWindowMessage;
using testing::HasSubstr;

namespace {

/// Sent at once to two spies, one after the other.
template <class Spy>
class Dispatch : public Scenario
{
    typedef typename Spy::Sent Sent;

public:
    Dispatch()
    {
        first.run_in_slot([](Sent&) { fault_points().reached("first slot"); });
        second.run_in_slot([](Sent&) { fault_points().reached("second slot"); });
    }
    void run() override
    {
        Sent* const p_sent = Sent::instance();
        p_message = p_sent;
        Message::dispatch(p_sent);
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_EQ(p_fault != nullptr, outcome.thrown.has_value());
        EXPECT_TRUE(p_message.isNull());
        if (p_fault) {
            EXPECT_EQ(p_fault->kind, outcome.thrown);
            const bool is_reached = p_fault->place() == "second slot";
            EXPECT_EQ(is_reached ? 1 : 0, second.count());
        }
        // The next one comes to both.
        const int before = first.count();
        const int before_second = second.count();
        Message::dispatch(Sent::instance());
        EXPECT_EQ(before + 1, first.count());
        EXPECT_EQ(before_second + 1, second.count());
    }

private:
    Spy first;
    Spy second;
    QPointer<Message> p_message;
};

/// Three messages of different families are posted and delivered in one go.
class Delivery : public Scenario
{
public:
    Delivery()
    {
        application.run_in_slot([](ApplicationMessage&) { fault_points().reached("ApplicationMessage"); });
        files.run_in_slot([](FilesInsertMessage&) { fault_points().reached("FilesInsertMessage"); });
        ApplicationMessage::instance()->post();
        FilesInsertMessage::instance()->post();
        ApplicationMessage::instance()->post();
    }
    void run() override { TestAccess::idleTimeout(MessageHandler::instance()); }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_EQ(p_fault != nullptr, outcome.thrown.has_value());
        MessageHandler& handler = MessageHandler::instance();
        const auto index = p_fault ? static_cast<int>(p_fault->index) : 2;
        EXPECT_EQ(2 - index, TestAccess::queued(handler));
        TestAccess::idleTimeout(handler);
        EXPECT_EQ(0, TestAccess::queued(handler));
        EXPECT_EQ(2, application.count()); // each came once
        EXPECT_EQ(1, files.count());
    }

private:
    support::ApplicationMessageSpy application;
    support::FilesInsertMessageSpy files;
};

/// Two menus of a menu bar, each of which subscribers may fill.
class MenuBarMessage : public Scenario
{
public:
    MenuBarMessage()
    {
        spy.run_in_slot([](MainWindowMessage& message) {
            fault_points().reached(message.kind() == MainWindowMessage::MenuBar ? "menu bar" : "menu");
        });
    }
    void run() override
    {
        MainWindowMessage* const p_sent = MainWindowMessage::instance();
        p_message = p_sent;
        p_sent->kind(MainWindowMessage::MenuBar);
        p_sent->target(&bar);
        p_sent->addMenu(&file);
        p_sent->addMenu(&edit);
        Message::dispatch(p_sent);
    }
    void check(const Fault* p_fault, const Outcome& outcome) override
    {
        EXPECT_TRUE(p_message.isNull());
        EXPECT_EQ(2, bar.actions().size());
        EXPECT_EQ(3, spy.count());
        if (!p_fault) {
            EXPECT_FALSE(outcome.thrown);
        } else if (p_fault->place() == "menu bar") {
            EXPECT_EQ(p_fault->kind, outcome.thrown);
        } else {
            EXPECT_FALSE(outcome.thrown);
            EXPECT_THAT(outcome.log, HasSubstr(trace_of(p_fault->kind)));
        }
    }

private:
    QMenuBar bar;
    QMenu file{"File"};
    QMenu edit{"Edit"};
    support::MainWindowMessageSpy spy;
    QPointer<Message> p_message;
};

} // namespace

TEST(ThrowingCode, SlotsOfApplicationMessages)
{
    try_every_place<Dispatch<support::ApplicationMessageSpy>>("dispatch of ApplicationMessage");
}

TEST(ThrowingCode, SlotsOfCommandMessages)
{
    try_every_place<Dispatch<support::CommandMessageSpy>>("dispatch of CommandMessage");
}

TEST(ThrowingCode, SlotsOfHistoryMessages)
{
    try_every_place<Dispatch<support::DocumentHistoryMsgSpy>>("dispatch of DocumentHistoryMsg");
}

TEST(ThrowingCode, SlotsOfDocumentMessages)
{
    try_every_place<Dispatch<support::DocumentMessageSpy>>("dispatch of DocumentMessage");
}

TEST(ThrowingCode, SlotsOfFilesInsertMessages)
{
    try_every_place<Dispatch<support::FilesInsertMessageSpy>>("dispatch of FilesInsertMessage");
}

TEST(ThrowingCode, SlotsOfMainWindowMessages)
{
    const support::App app;
    try_every_place<Dispatch<support::MainWindowMessageSpy>>("dispatch of MainWindowMessage");
}

TEST(ThrowingCode, SlotsOfMenusThatAreFilled)
{
    const support::App app;
    try_every_place<MenuBarMessage>("menu bar and its menus");
}

TEST(ThrowingCode, SlotsOfPostedMessages)
{
    const support::App app;
    try_every_place<Delivery>("delivery of posted messages");
}
