#include "support/App.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtCore/QMetaType>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using support::LogCapture;
using support::MainWindowMessageSpy;
using support::ReceivedMainWindowMessage;
using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::Message;
using tarqa::housekeeping::gui::MainWindowMessage;

/// The texts of a widget's actions, "-" for separators.
std::vector<std::string> texts(const QWidget& widget)
{
    std::vector<std::string> texts;
    for (const QAction* p_action : widget.actions()) {
        texts.push_back(p_action->isSeparator() ? "-" : p_action->text().toStdString());
    }
    return texts;
}

typedef std::vector<std::string> Texts;

class MainWindowMessageDestruction : public testing::Test
{
protected:
    /// A message to be sent; the caller adds the entries.
    static MainWindowMessage* message(int kind, QWidget* p_target)
    {
        MainWindowMessage* p_message = MainWindowMessage::instance();
        p_message->kind(kind);
        p_message->target(p_target);
        return p_message;
    }

private:
    support::App m_app;

protected:
    QMenuBar bar;
    QMenu menu{"menu"};
    QToolBar tool_bar;
    QMenu first{"first"};
    QMenu second{"second"};
    QAction a{"a"};
    QAction b{"b"};
};

/// Menus and tool bars follow the same rule.
class SeparatedEntries : public MainWindowMessageDestruction, public testing::WithParamInterface<int>
{
protected:
    QWidget& target()
    {
        return GetParam() == MainWindowMessage::Menu ? static_cast<QWidget&>(menu) : tool_bar;
    }
    MainWindowMessage* message() { return MainWindowMessageDestruction::message(GetParam(), &target()); }
};

INSTANTIATE_TEST_SUITE_P(MainWindowMessage, SeparatedEntries,
    testing::Values(MainWindowMessage::Menu, MainWindowMessage::ToolBar),
    [](const testing::TestParamInfo<int>& kind) {
        return std::string(kind.param == 1 ? "Menu" : "ToolBar");
    });

TEST_P(SeparatedEntries, NeverBeginWithASeparatorAndNeverHaveTwoInARow)
{
    MainWindowMessage* p_message = message();
    p_message->addSeparator();
    p_message->addAction(&a);
    p_message->addSeparator();
    p_message->addSeparator();
    p_message->addAction(&b);
    Message::dispatch(p_message);
    EXPECT_EQ(texts(target()), (Texts{"a", "-", "b"}));
}

TEST_P(SeparatedEntries, SeparatorsAloneAddNothing)
{
    MainWindowMessage* p_message = message();
    p_message->addSeparator();
    p_message->addSeparator();
    p_message->insertSeparator(5);
    Message::dispatch(p_message);
    EXPECT_TRUE(target().actions().isEmpty());
}

TEST_P(SeparatedEntries, KeepASeparatorAtTheEnd)
{
    MainWindowMessage* p_message = message();
    p_message->addAction(&a);
    p_message->addSeparator();
    p_message->addSeparator();
    Message::dispatch(p_message);
    EXPECT_EQ(texts(target()), (Texts{"a", "-"}));
}

TEST_P(SeparatedEntries, AreAddedInOrder)
{
    MainWindowMessage* p_message = message();
    p_message->insertAction(9, &b);
    p_message->insertAction(4, &a);
    Message::dispatch(p_message);
    EXPECT_EQ(texts(target()), (Texts{"a", "-", "b"}));
    EXPECT_EQ(target().actions().first(), &a); // the action itself, no copy
}

TEST_P(SeparatedEntries, ContainMenusByTheirAction)
{
    MainWindowMessageSpy spy;
    MainWindowMessage* p_message = message();
    p_message->addAction(&a);
    p_message->addMenu(&first);
    Message::dispatch(p_message);
    EXPECT_EQ(texts(target()), (Texts{"a", "first"}));
    EXPECT_EQ(target().actions().last(), first.menuAction());
    EXPECT_EQ(spy.count(), 1); // none for the menu inside
}

TEST_P(SeparatedEntries, FollowWhatTheTargetHadBefore)
{
    target().addAction(&a);
    MainWindowMessage* p_message = message();
    p_message->addSeparator(); // first of this message
    p_message->addAction(&b);
    Message::dispatch(p_message);
    EXPECT_EQ(texts(target()), (Texts{"a", "b"}));
}

TEST_P(SeparatedEntries, ComeFromAllSubscribersBeforeAnyIsAdded)
{
    MainWindowMessageSpy one;
    MainWindowMessageSpy other;
    one.run_in_slot([this](MainWindowMessage& message) { message.insertAction(6, &b); });
    other.run_in_slot([this](MainWindowMessage& message) {
        message.insertAction(2, &a);
        EXPECT_TRUE(target().actions().isEmpty());
    });
    Message::dispatch(message());
    EXPECT_EQ(texts(target()), (Texts{"a", "-", "b"}));
}

TEST_P(SeparatedEntries, EntryThatDiedIsASeparator)
{
    auto doomed = std::make_unique<QAction>("doomed");
    MainWindowMessage* p_message = message();
    p_message->addAction(&a);
    p_message->addAction(doomed.get());
    p_message->addAction(&b);
    doomed.reset();
    Message::dispatch(p_message);
    EXPECT_EQ(texts(target()), (Texts{"a", "-", "b"}));
}

TEST_P(SeparatedEntries, AreAddedAfterAPostToo)
{
    MainWindowMessage* p_message = message();
    p_message->addAction(&a);
    p_message->post();
    EXPECT_TRUE(target().actions().isEmpty());
    EXPECT_TRUE(support::wait_until([this] { return !target().actions().isEmpty(); }));
    EXPECT_EQ(texts(target()), Texts{"a"});
}

TEST_F(MainWindowMessageDestruction, FillsTheMenuBarAndSendsOneMessagePerMenu)
{
    QWidget owner;
    MainWindowMessageSpy spy;
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->owner(&owner);
    p_message->addMenu(&first);
    p_message->addMenu(&second);
    Message::dispatch(p_message);

    EXPECT_EQ(texts(bar), (Texts{"first", "second"}));
    const std::vector<ReceivedMainWindowMessage> received = spy.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[0].kind, 0);
    EXPECT_EQ(received[0].target, &bar);
    EXPECT_EQ(received[1].kind, 1);
    EXPECT_EQ(received[1].target, &first);
    EXPECT_EQ(received[1].owner, &owner);
    EXPECT_EQ(received[2].kind, 1);
    EXPECT_EQ(received[2].target, &second);
    EXPECT_EQ(received[2].owner, &owner);
}

TEST_F(MainWindowMessageDestruction, SendsAMenusMessageRightAfterItsMenuWasAdded)
{
    std::vector<Texts> bars;
    MainWindowMessageSpy spy;
    spy.run_in_slot([this, &bars](MainWindowMessage&) { bars.push_back(texts(bar)); });
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->addMenu(&first);
    p_message->addMenu(&second);
    Message::dispatch(p_message);
    EXPECT_EQ(bars, (std::vector<Texts>{{}, {"first"}, {"first", "second"}}));
}

TEST_F(MainWindowMessageDestruction, NestedMessagesFillTheirMenus)
{
    MainWindowMessageSpy spy;
    spy.run_in_slot([this](MainWindowMessage& message) {
        if (message.target() == &first) {
            message.addSeparator();
            message.addAction(&a);
        } else if (message.target() == &second) {
            message.addAction(&b);
        }
    });
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->addMenu(&first);
    p_message->addMenu(&second);
    Message::dispatch(p_message);
    EXPECT_EQ(texts(first), Texts{"a"});
    EXPECT_EQ(texts(second), Texts{"b"});
}

TEST_F(MainWindowMessageDestruction, SkipsEmptySlotsOfTheMenuBar)
{
    MainWindowMessageSpy spy;
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->insertMenu(21, &second);
    p_message->insertMenu(0, &first);
    p_message->addSeparator();
    Message::dispatch(p_message);
    EXPECT_EQ(texts(bar), (Texts{"first", "second"}));
    EXPECT_EQ(spy.count(), 3);
}

TEST_F(MainWindowMessageDestruction, MenuBarTakesAnActionWithoutAMessage)
{
    MainWindowMessageSpy spy;
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->addAction(&a);
    Message::dispatch(p_message);
    EXPECT_EQ(texts(bar), Texts{"a"});
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(MainWindowMessageDestruction, OtherKindsAddNothing)
{
    MainWindowMessageSpy spy;
    for (const int kind : {-1, 3, 6, 100}) {
        MainWindowMessage* p_message = message(kind, &menu);
        p_message->addAction(&a);
        p_message->addMenu(&first);
        Message::dispatch(p_message);
    }
    EXPECT_TRUE(menu.actions().isEmpty());
    EXPECT_EQ(spy.count(), 4);
}

TEST_F(MainWindowMessageDestruction, OwnsNeitherTargetNorEntries)
{
    const QPointer<QMenu> target = new QMenu;
    const QPointer<QAction> action = new QAction("a");
    const QPointer<QMenu> submenu = new QMenu("submenu");
    MainWindowMessage* p_message = message(MainWindowMessage::Menu, target);
    p_message->addAction(action);
    p_message->addMenu(submenu);
    Message::dispatch(p_message);
    EXPECT_FALSE(target.isNull());
    EXPECT_FALSE(action.isNull());
    EXPECT_FALSE(submenu.isNull());
    EXPECT_EQ(action->parent(), nullptr);
    delete target;
    EXPECT_FALSE(action.isNull());
    EXPECT_FALSE(submenu.isNull());
    delete action;
    delete submenu;
}

TEST_F(MainWindowMessageDestruction, WithoutATargetAddsNothing)
{
    MainWindowMessageSpy spy;
    for (const int kind : {0, 1, 2}) {
        MainWindowMessage* p_message = message(kind, nullptr);
        p_message->addMenu(&first);
        p_message->addSeparator();
        Message::dispatch(p_message);
    }
    EXPECT_EQ(spy.count(), 3); // no nested message
}

TEST_F(MainWindowMessageDestruction, SurvivesATargetThatDied)
{
    auto target = std::make_unique<QMenu>();
    MainWindowMessage* p_message = message(MainWindowMessage::Menu, target.get());
    p_message->addAction(&a);
    target.reset();
    EXPECT_EQ(p_message->target(), nullptr);
    Message::dispatch(p_message);
    EXPECT_TRUE(a.associatedWidgets().isEmpty());
}

TEST_F(MainWindowMessageDestruction, SurvivesAnEntryThatDied)
{
    auto doomed = std::make_unique<QAction>("doomed");
    MainWindowMessage* p_message = message(MainWindowMessage::Menu, &menu);
    p_message->addAction(doomed.get());
    p_message->addAction(&a);
    doomed.reset();
    Message::dispatch(p_message);
    EXPECT_EQ(texts(menu), Texts{"a"});
}

TEST_F(MainWindowMessageDestruction, SurvivesATargetOfAnotherType)
{
    MainWindowMessageSpy spy;
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &tool_bar);
    p_message->addMenu(&first);
    Message::dispatch(p_message);
    EXPECT_TRUE(tool_bar.actions().isEmpty());
    EXPECT_EQ(spy.count(), 1);
}

TEST_F(MainWindowMessageDestruction, CopyAddsNothing)
{
    MainWindowMessage* p_message = message(MainWindowMessage::Menu, &menu);
    p_message->addAction(&a);
    {
        const MainWindowMessage copy(*p_message);
    }
    EXPECT_TRUE(menu.actions().isEmpty());
    Message::dispatch(p_message);
    EXPECT_EQ(texts(menu), Texts{"a"});
}

TEST_F(MainWindowMessageDestruction, StandardExceptionCostsItsEntryOnly)
{
    LogCapture capture;
    MainWindowMessageSpy spy;
    spy.run_in_slot([this](MainWindowMessage& message) {
        if (message.target() == &first) {
            throw std::runtime_error("slot");
        }
        if (message.target() == &second) {
            message.addAction(&b);
        }
    });
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->addMenu(&first);
    p_message->addMenu(&second);
    EXPECT_NO_THROW(Message::dispatch(p_message));
    EXPECT_EQ(texts(bar), (Texts{"first", "second"}));
    EXPECT_EQ(texts(second), Texts{"b"});
    EXPECT_TRUE(capture.take("STD EXCEPTION THROWN:slot"));
}

TEST_F(MainWindowMessageDestruction, MakersExceptionCostsItsEntryOnly)
{
    LogCapture capture;
    MainWindowMessageSpy spy;
    spy.run_in_slot([this](MainWindowMessage& message) {
        if (message.target() == &first) {
            throw HousekeepingException(1, std::string("slot"), "host/src/Menu", 1);
        }
    });
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->addMenu(&first);
    p_message->addMenu(&second);
    EXPECT_NO_THROW(Message::dispatch(p_message));
    EXPECT_EQ(texts(bar), (Texts{"first", "second"}));
    EXPECT_EQ(spy.count(), 3);
    EXPECT_EQ(capture.text().find("TARQA EXCEPTION THROWN:\n"), 0u);
    capture.take_all();
}

TEST_F(MainWindowMessageDestruction, AnythingElseThrownCostsItsEntryOnly)
{
    LogCapture capture;
    MainWindowMessageSpy spy;
    spy.run_in_slot([this](MainWindowMessage& message) {
        if (message.target() == &first) {
            throw 7;
        }
    });
    MainWindowMessage* p_message = message(MainWindowMessage::MenuBar, &bar);
    p_message->addMenu(&first);
    p_message->addMenu(&second);
    EXPECT_NO_THROW(Message::dispatch(p_message));
    EXPECT_EQ(texts(bar), (Texts{"first", "second"}));
    EXPECT_EQ(spy.count(), 3);
    EXPECT_EQ(capture.text(), "An unknown exception was thrown while a menu was filled\n");
    capture.take_all();
}

TEST_F(MainWindowMessageDestruction, DestroyedWithoutBeingSentAddsAllTheSame)
{
    {
        const std::unique_ptr<MainWindowMessage> p_message(message(MainWindowMessage::Menu, &menu));
        p_message->addAction(&a);
    }
    EXPECT_EQ(texts(menu), Texts{"a"});
}

TEST(MainWindowMessage, StaysInItsThread)
{
    const support::App app;
    const MainWindowMessageSpy spy;
    EXPECT_FALSE(MainWindowMessage::crosses_threads);
    // Qt copies arguments for other threads only if it knows their type.
    EXPECT_EQ(QMetaType::type("housekeeping::gui::MainWindowMessage&"), int(QMetaType::UnknownType));
}

} // namespace
