#include "support/App.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>

#include <gtest/gtest.h>

#include <vector>

namespace {

using tarqa::housekeeping::TestAccess;
using tarqa::housekeeping::gui::MainWindowMessage;

typedef std::vector<QObject*> Entries;

/// How entries are collected; without a target nothing is added anywhere.
class MainWindowMessageEntries : public testing::Test
{
protected:
    Entries entries() const { return TestAccess::entries(message); }

private:
    support::App m_app;

protected:
    MainWindowMessage message;
    QAction a{"a"};
    QAction b{"b"};
    QAction c{"c"};
    QMenu menu;
};

TEST_F(MainWindowMessageEntries, StartEmpty)
{
    EXPECT_TRUE(entries().empty());
    EXPECT_EQ(message.kind(), 0);
    EXPECT_EQ(message.target(), nullptr);
    EXPECT_EQ(message.owner(), nullptr);
}

TEST_F(MainWindowMessageEntries, AreAppendedInOrder)
{
    message.addAction(&a);
    message.addSeparator();
    message.addMenu(&menu);
    message.addAction(&b);
    EXPECT_EQ(entries(), (Entries{&a, nullptr, &menu, &b}));
}

TEST_F(MainWindowMessageEntries, NullAppendedIsASeparator)
{
    message.addAction(nullptr);
    message.addMenu(nullptr);
    EXPECT_EQ(entries(), (Entries{nullptr, nullptr}));
}

TEST_F(MainWindowMessageEntries, InsertionGrowsTheListUpToTheSlot)
{
    message.insertMenu(3, &menu);
    EXPECT_EQ(entries(), (Entries{nullptr, nullptr, nullptr, &menu}));
}

TEST_F(MainWindowMessageEntries, InsertionAtTheEndAppends)
{
    message.addAction(&a);
    message.insertAction(1, &b);
    EXPECT_EQ(entries(), (Entries{&a, &b}));
}

TEST_F(MainWindowMessageEntries, InsertionFillsAnEmptySlot)
{
    message.insertMenu(3, &menu);
    message.insertAction(1, &a);
    EXPECT_EQ(entries(), (Entries{nullptr, &a, nullptr, &menu}));
}

TEST_F(MainWindowMessageEntries, InsertionGoesBeforeAFilledSlot)
{
    message.addAction(&a);
    message.addAction(&b);
    message.insertAction(1, &c);
    EXPECT_EQ(entries(), (Entries{&a, &c, &b}));
}

TEST_F(MainWindowMessageEntries, InsertionAtZeroTakesAnEmptySlot)
{
    message.addSeparator();
    message.addAction(&b);
    message.insertAction(0, &a);
    EXPECT_EQ(entries(), (Entries{&a, &b}));
}

TEST_F(MainWindowMessageEntries, InsertionAtZeroGoesBeforeAFilledSlot)
{
    message.addAction(&b);
    message.insertAction(0, &a);
    EXPECT_EQ(entries(), (Entries{&a, &b}));
}

TEST_F(MainWindowMessageEntries, InsertionAtZeroOfAnEmptyListIsTheOnlyEntry)
{
    message.insertAction(0, &a);
    EXPECT_EQ(entries(), (Entries{&a}));
}

TEST_F(MainWindowMessageEntries, InsertionBelowZeroGoesToTheFrontWithoutGrowing)
{
    message.insertAction(-1, &a);
    EXPECT_EQ(entries(), (Entries{&a}));
    message.insertMenu(-20, &menu);
    EXPECT_EQ(entries(), (Entries{&menu, &a}));
}

TEST_F(MainWindowMessageEntries, InsertionOfAMenuAndOfAnActionAreTheSame)
{
    message.insertAction(2, &a);
    message.insertMenu(2, &menu);
    message.insertAction(0, &b);
    EXPECT_EQ(entries(), (Entries{&b, nullptr, &menu, &a}));
}

TEST_F(MainWindowMessageEntries, SeparatorGrowsTheList)
{
    message.insertSeparator(2);
    EXPECT_EQ(entries(), (Entries{nullptr, nullptr, nullptr}));
}

TEST_F(MainWindowMessageEntries, SeparatorLeavesAnEmptySlot)
{
    message.addAction(&a);
    message.addSeparator();
    message.addAction(&b);
    message.insertSeparator(1);
    EXPECT_EQ(entries(), (Entries{&a, nullptr, &b}));
}

TEST_F(MainWindowMessageEntries, SeparatorGoesBeforeAFilledSlot)
{
    message.addAction(&a);
    message.addAction(&b);
    message.insertSeparator(1);
    EXPECT_EQ(entries(), (Entries{&a, nullptr, &b}));
}

TEST_F(MainWindowMessageEntries, InsertedNullIsASeparator)
{
    message.addAction(&a);
    message.addAction(&b);
    message.insertAction(1, nullptr);
    message.insertMenu(-1, nullptr);
    message.insertMenu(1, nullptr);
    EXPECT_EQ(entries(), (Entries{nullptr, nullptr, &a, nullptr, &b}));
}

TEST_F(MainWindowMessageEntries, SeparatorBelowZeroGoesToTheFront)
{
    message.addAction(&a);
    message.insertSeparator(-1);
    EXPECT_EQ(entries(), (Entries{nullptr, &a}));
}

TEST_F(MainWindowMessageEntries, LateSlotStaysBehindThoseOfOthers)
{
    message.insertMenu(21, &menu);
    message.insertAction(0, &a);
    message.insertAction(1, &b);
    const Entries all = entries();
    EXPECT_EQ(all.size(), 22u);
    EXPECT_EQ(all.front(), &a);
    EXPECT_EQ(all.at(1), &b);
    EXPECT_EQ(all.back(), &menu);
}

TEST_F(MainWindowMessageEntries, CopyHasThemAll)
{
    QWidget owner;
    QMenu target;
    message.addAction(&a);
    message.addSeparator();
    message.kind(MainWindowMessage::Menu);
    message.target(&target);
    message.owner(&owner);
    const MainWindowMessage copy(message);
    EXPECT_EQ(TestAccess::entries(copy), (Entries{&a, nullptr}));
    EXPECT_EQ(copy.kind(), 1);
    EXPECT_EQ(copy.target(), &target);
    EXPECT_EQ(copy.owner(), &owner);
}

} // namespace
