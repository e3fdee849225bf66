#include "HelpFixture.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"

#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QPointer>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

// Where the Help menu stands, and what is in it in which order.

using namespace help_test;
using pkBase::pkProductInfo;
using support::MainWindowMessageSpy;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const Lines s_full = {
    "&Contents...", "&Quick Help...", "&Shortcuts...", "Show &Log File...", "----", "&About TarqHelpful..."};

class HelpManagerMenu : public HelpFixture
{
protected:
    HelpManagerMenu() { manager(); }

    /// The window asks for menus; @p menus are in the message already.
    void fill(QMenuBar& bar, const std::vector<QMenu*>& menus = {})
    {
        MainWindowMessage message;
        message.target(&bar);
        message.owner(&window);
        for (QMenu* p_menu : menus) {
            message.addMenu(p_menu);
        }
        message.dispatch();
    }

    /// @p count menus that are called "0", "1" and so on.
    std::vector<QMenu*> numbered(int count)
    {
        std::vector<QMenu*> menus;
        for (int number = 0; number < count; ++number) {
            menus.push_back(new QMenu(QString::number(number), &window));
        }
        return menus;
    }

    Lines filled(const QString& title, QWidget* p_owner)
    {
        QMenu menu(title);
        send(MainWindowMessage::Menu, &menu, p_owner);
        return texts(menu);
    }
};

Lines numbers(int first, int last)
{
    Lines lines;
    for (int number = first; number <= last; ++number) {
        lines.push_back(std::to_string(number));
    }
    return lines;
}

} // namespace

// The menu bar

TEST_F(HelpManagerMenu, HasABlankBeforeItsTitle)
{
    QMenuBar bar(&window);
    fill(bar);
    EXPECT_THAT(texts(bar), ElementsAre(" &Help"));
    ASSERT_TRUE(bar.actions().at(0)->menu());
    EXPECT_EQ(" &Help", bar.actions().at(0)->menu()->title());
}

TEST_F(HelpManagerMenu, IsAddedAtOnce)
{
    QMenuBar bar(&window);
    MainWindowMessageSpy later;
    Lines seen;
    later.run_in_slot([&](MainWindowMessage& message) {
        if (message.kind() == MainWindowMessage::MenuBar) {
            seen = texts(bar);
        }
    });
    fill(bar);
    EXPECT_THAT(seen, ElementsAre(" &Help"));
}

TEST_F(HelpManagerMenu, IsInTheMessageAsWell)
{
    QMenuBar bar(&window);
    const std::vector<QObject*> entries = send(MainWindowMessage::MenuBar, &bar, &window);
    ASSERT_EQ(22u, entries.size());
    EXPECT_TRUE(
        std::all_of(entries.begin(), entries.begin() + 21, [](const QObject* p_entry) { return !p_entry; }));
    const auto* const p_menu = qobject_cast<QMenu*>(entries[21]);
    ASSERT_TRUE(p_menu);
    EXPECT_EQ(" &Help", p_menu->title());
    EXPECT_THAT(bar.actions(), ElementsAre(p_menu->menuAction()));
}

class HelpManagerMenuAmongOthers : public HelpManagerMenu, public testing::WithParamInterface<int>
{ };

TEST_P(HelpManagerMenuAmongOthers, IsThereOnceAndLast)
{
    QMenuBar bar(&window);
    fill(bar, numbered(GetParam()));
    Lines expected = numbers(0, GetParam() - 1);
    expected.emplace_back(" &Help");
    EXPECT_EQ(expected, texts(bar));
}

INSTANTIATE_TEST_SUITE_P(HelpManager, HelpManagerMenuAmongOthers, testing::Values(1, 2, 8, 20, 21));

TEST_F(HelpManagerMenu, StandsBeforeThoseBehindItsSlot)
{
    QMenuBar bar(&window);
    fill(bar, numbered(24));
    Lines expected = numbers(0, 20);
    expected.emplace_back(" &Help");
    for (const std::string& title : numbers(21, 23)) {
        expected.push_back(title);
    }
    EXPECT_EQ(expected, texts(bar));
}

TEST_F(HelpManagerMenu, StandsBetweenMenusThatOtherSubscribersPlace)
{
    QMenuBar bar(&window);
    QMenu file("&File");
    QMenu tools("&Tools");
    QMenu extras("&Extras");
    MainWindowMessageSpy later;
    later.run_in_slot([&](MainWindowMessage& message) {
        if (message.kind() == MainWindowMessage::MenuBar) {
            message.insertMenu(22, &extras);
            message.insertMenu(20, &tools);
            message.insertMenu(0, &file);
        }
    });
    fill(bar);
    EXPECT_THAT(texts(bar), ElementsAre("&File", "&Tools", " &Help", "&Extras"));
}

TEST_F(HelpManagerMenu, StandsBehindMenusThatAreThereAlready)
{
    QMenuBar bar(&window);
    bar.addMenu("&File");
    fill(bar);
    EXPECT_THAT(texts(bar), ElementsAre("&File", " &Help"));
}

TEST_F(HelpManagerMenu, IsFilledWithTheBar)
{
    QMenuBar bar(&window);
    fill(bar, numbered(3));
    ASSERT_EQ(4, bar.actions().size());
    EXPECT_EQ(s_full, texts(*bar.actions().at(3)->menu()));
    for (int i = 0; i < 3; ++i) {
        EXPECT_THAT(texts(*bar.actions().at(i)->menu()), IsEmpty());
    }
}

TEST_F(HelpManagerMenu, GoesWithTheWindow)
{
    auto owner = std::make_unique<QWidget>();
    auto* const p_bar = new QMenuBar(owner.get());
    send(MainWindowMessage::MenuBar, p_bar, owner.get());
    ASSERT_EQ(1, p_bar->actions().size());
    const QPointer<QMenu> menu = p_bar->actions().at(0)->menu();
    ASSERT_TRUE(menu);
    owner.reset();
    EXPECT_FALSE(menu);
}

TEST_F(HelpManagerMenu, SecondWindowHasOneOfItsOwn)
{
    auto owner = std::make_unique<QWidget>();
    send(MainWindowMessage::MenuBar, new QMenuBar(owner.get()), owner.get());
    owner.reset();
    QMenuBar bar(&window);
    fill(bar);
    ASSERT_THAT(texts(bar), ElementsAre(" &Help"));
    EXPECT_EQ(s_full, texts(*bar.actions().at(0)->menu()));
}

TEST_F(HelpManagerMenu, NeedsAMenuBar)
{
    QMenu menu("&File");
    QToolBar tool_bar;
    QMenuBar idle(&window);
    for (QWidget* p_target : std::initializer_list<QWidget*>{&menu, &tool_bar, nullptr}) {
        send(MainWindowMessage::MenuBar, p_target, &window);
    }
    EXPECT_THAT(texts(menu), IsEmpty());
    EXPECT_THAT(texts(tool_bar), IsEmpty());
    EXPECT_THAT(texts(idle), IsEmpty());
}

// Its entries

TEST_F(HelpManagerMenu, HoldsAllEntriesInOrder)
{
    EXPECT_EQ(s_full, filled(" &Help", &window));
}

TEST_F(HelpManagerMenu, EntriesHaveTheFirstSixSlots)
{
    QMenu menu(s_menu_title);
    const std::vector<QObject*> slots_used = send(MainWindowMessage::Menu, &menu, &window);
    ASSERT_EQ(6u, slots_used.size());
    EXPECT_EQ(nullptr, slots_used[Separator]);
    EXPECT_EQ("&Contents...", qobject_cast<QAction*>(slots_used[Contents])->text());
    EXPECT_EQ("&Quick Help...", qobject_cast<QAction*>(slots_used[QuickHelp])->text());
    EXPECT_EQ("&Shortcuts...", qobject_cast<QAction*>(slots_used[Shortcuts])->text());
    EXPECT_EQ("Show &Log File...", qobject_cast<QAction*>(slots_used[LogFile])->text());
    EXPECT_EQ("&About TarqHelpful...", qobject_cast<QAction*>(slots_used[About])->text());
}

TEST_F(HelpManagerMenu, OthersAddEntriesAfterwards)
{
    QAction first("First");
    QAction between("Between");
    QAction seventh("Seventh");
    QAction last("Last");
    MainWindowMessageSpy later;
    later.run_in_slot([&](MainWindowMessage& message) {
        message.insertAction(6, &seventh);
        message.addAction(&last);
        message.insertAction(2, &between);
        message.insertAction(0, &first);
    });
    EXPECT_THAT(filled(" &Help", &window),
        ElementsAre("First", "&Contents...", "&Quick Help...", "Between", "&Shortcuts...",
            "Show &Log File...", "----", "&About TarqHelpful...", "Seventh", "Last"));
}

TEST_F(HelpManagerMenu, OthersAddedEntriesBefore)
{
    QAction third("Third");
    QAction eighth("Eighth");
    QMenu menu(s_menu_title);
    {
        MainWindowMessage message;
        message.kind(MainWindowMessage::Menu);
        message.target(&menu);
        message.owner(&window);
        message.insertAction(2, &third);
        message.insertAction(7, &eighth);
        message.dispatch();
    }
    // What stood at a slot of the help has made way, beyond its last one.
    EXPECT_THAT(texts(menu),
        ElementsAre("&Contents...", "&Quick Help...", "&Shortcuts...", "Show &Log File...", "----",
            "&About TarqHelpful...", "Third", "----", "Eighth"));
}

TEST_F(HelpManagerMenu, OthersMayFillThePlaceOfTheSeparator)
{
    QAction report("Report");
    MainWindowMessageSpy later;
    later.run_in_slot([&](MainWindowMessage& message) { message.insertAction(4, &report); });
    EXPECT_THAT(filled(" &Help", &window),
        ElementsAre("&Contents...", "&Quick Help...", "&Shortcuts...", "Show &Log File...", "Report",
            "&About TarqHelpful..."));
}

TEST_F(HelpManagerMenu, HoldsOnlyAboutForTheViewer)
{
    pkProductInfo::instance().product_name("TarqViewer");
    QMenu menu(s_menu_title);
    const std::vector<QObject*> entries = send(MainWindowMessage::Menu, &menu, &window);
    EXPECT_EQ(1u, entries.size());
    EXPECT_THAT(texts(menu), ElementsAre("&About TarqViewer..."));
}

TEST_F(HelpManagerMenu, StandsAtItsPlaceForTheViewerToo)
{
    pkProductInfo::instance().product_name("TarqViewer");
    QMenuBar bar(&window);
    fill(bar, numbered(2));
    EXPECT_THAT(texts(bar), ElementsAre("0", "1", " &Help"));
    EXPECT_THAT(texts(*bar.actions().at(2)->menu()), ElementsAre("&About TarqViewer..."));
}

class HelpManagerAlmostViewer : public HelpManagerMenu, public testing::WithParamInterface<const char*>
{ };

TEST_P(HelpManagerAlmostViewer, HasTheFullMenu)
{
    pkProductInfo::instance().product_name(GetParam());
    EXPECT_THAT(filled(" &Help", &window),
        ElementsAre("&Contents...", "&Quick Help...", "&Shortcuts...", "Show &Log File...", "----",
            std::string("&About ") + GetParam() + "..."));
}

INSTANTIATE_TEST_SUITE_P(HelpManager, HelpManagerAlmostViewer,
    testing::Values("tarqviewer", "TarqViewer2", "TarqViewer ", " TarqViewer", "Tarq Viewer", "TARQVIEWER"));

// What is none of its business

TEST_F(HelpManagerMenu, OtherMenusAreLeftAlone)
{
    for (const char* const title :
        {"&Help", "Help", " Help", " &help", " &Help ", "  &Help", " H&elp", "&Edit", " &Helper", ""}) {
        EXPECT_THAT(filled(title, &window), IsEmpty()) << '"' << title << '"';
    }
}

TEST_F(HelpManagerMenu, OtherKindsAreLeftAlone)
{
    for (const int kind : {-1, 2, 3, 4, 5, 6, 7, 21}) {
        QMenu menu(s_menu_title);
        EXPECT_THAT(send(kind, &menu, &window), IsEmpty()) << kind;
        EXPECT_THAT(texts(menu), IsEmpty()) << kind;
    }
}

TEST_F(HelpManagerMenu, OtherTargetsAreLeftAlone)
{
    QToolBar tool_bar(s_menu_title);
    QMenuBar bar(&window);
    bar.setWindowTitle(s_menu_title);
    for (QWidget* p_target : std::initializer_list<QWidget*>{&tool_bar, &bar, nullptr}) {
        EXPECT_THAT(send(MainWindowMessage::Menu, p_target, &window), IsEmpty());
    }
    EXPECT_THAT(texts(tool_bar), IsEmpty());
    EXPECT_THAT(texts(bar), IsEmpty());
}

TEST_F(HelpManagerMenu, NothingIsAddedOnceTheManagerIsGone)
{
    TestAccess::destroy<HelpManager>();
    QMenuBar bar(&window);
    fill(bar);
    EXPECT_THAT(texts(bar), IsEmpty());
    EXPECT_THAT(filled(" &Help", &window), IsEmpty());
    EXPECT_FALSE(TestAccess::peek<HelpManager>());
}
