#include "HelpFixture.h"
#include "quickhelp/QuickHelpFixture.h"
#include "support/LogCapture.h"

#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QPointer>
#include <QtCore/QTranslator>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

// The actions of the Help menu: what they look like, when they are made, and whose they are.

using namespace help_test;
using pkBase::pkProductInfo;
using support::LogCapture;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::SizeIs;

namespace {

const char* const s_source = "housekeeping/gui/src/HelpManager";

class HelpManagerActions : public HelpFixture
{
protected:
    /// Another product, with a launcher of its own.
    static void use_product(const char* name)
    {
        pkProductInfo::instance().product_name(name);
        register_launcher(name);
    }

    QList<QAction*> actions_of(const QWidget& owner)
    {
        return owner.findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly);
    }
};

/// Puts "<T>" before each text of the help; the shortcut becomes another one.
class Translator : public QTranslator
{
public:
    Translator() { QCoreApplication::installTranslator(this); }
    ~Translator() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        if (QString(context) != "tarqa::housekeeping::gui::HelpManager") {
            return {};
        }
        return QString(text) == "F1" ? QString("F12") : "<T>" + QString(text);
    }
};

} // namespace

// What they look like

TEST_F(HelpManagerActions, Contents)
{
    const QAction& contents = action(Contents);
    EXPECT_EQ("&Contents...", contents.text());
    EXPECT_FALSE(contents.icon().isNull());
    EXPECT_EQ(picture(QIcon(":/vista/Resources/help.png")), picture(contents.icon()));
    EXPECT_EQ(QKeySequence(Qt::Key_F1), contents.shortcut());
    EXPECT_EQ(&window, contents.parent());
}

TEST_F(HelpManagerActions, About)
{
    const QAction& about = action(About);
    EXPECT_EQ("&About TarqHelpful...", about.text());
    EXPECT_FALSE(about.icon().isNull());
    EXPECT_EQ(picture(QIcon(":/tarq/Resources/tarqhelpful16x16.png")), picture(about.icon()));
    EXPECT_TRUE(about.shortcut().isEmpty());
    EXPECT_EQ(&window, about.parent());
}

TEST_F(HelpManagerActions, QuickHelp)
{
    const QAction& quick_help = action(QuickHelp);
    EXPECT_EQ("&Quick Help...", quick_help.text());
    EXPECT_FALSE(quick_help.icon().isNull());
    EXPECT_EQ(picture(QIcon(":/vista/Resources/help.png")), picture(quick_help.icon()));
    EXPECT_EQ(QKeySequence(Qt::SHIFT + Qt::Key_F1), quick_help.shortcut());
    EXPECT_EQ(&window, quick_help.parent());
}

TEST_F(HelpManagerActions, LogFile)
{
    const QAction& log_file = action(LogFile);
    EXPECT_EQ("Show &Log File...", log_file.text());
    EXPECT_TRUE(log_file.icon().isNull());
    EXPECT_TRUE(log_file.shortcut().isEmpty());
    EXPECT_EQ(&window, log_file.parent());
}

TEST_F(HelpManagerActions, Shortcuts)
{
    const QAction& shortcuts = action(Shortcuts);
    EXPECT_EQ("&Shortcuts...", shortcuts.text());
    EXPECT_TRUE(shortcuts.icon().isNull());
    EXPECT_TRUE(shortcuts.shortcut().isEmpty());
    EXPECT_EQ(&window, shortcuts.parent());
}

TEST_F(HelpManagerActions, AreEnabledAndVisible)
{
    for (const Slot slot : {Contents, QuickHelp, Shortcuts, LogFile, About}) {
        EXPECT_TRUE(action(slot).isEnabled()) << slot;
        EXPECT_TRUE(action(slot).isVisible()) << slot;
        EXPECT_FALSE(action(slot).isCheckable()) << slot;
    }
}

TEST_F(HelpManagerActions, IconOfTheProductIsLookedForInLowerCase)
{
    use_product("TARQ");
    EXPECT_EQ(picture(QIcon(":/tarq/Resources/tarq16x16.png")), picture(action(About).icon()));
    EXPECT_EQ("&About TARQ...", action(About).text());
}

TEST_F(HelpManagerActions, NameOfTheProductMayHaveUmlauts)
{
    use_product(u8"TarqHÖHE");
    EXPECT_EQ(QString::fromUtf8(u8"&About TarqHÖHE..."), action(About).text());
    const QImage icon = picture(QIcon(QString::fromUtf8(u8":/tarq/Resources/tarqhöhe16x16.png")));
    ASSERT_FALSE(icon.isNull());
    EXPECT_EQ(icon, picture(action(About).icon()));
}

TEST_F(HelpManagerActions, ProductWithoutAnIconHasAnAboutEntryAllTheSame)
{
    use_product("TarqIconless");
    pkProductInfo::instance().marketing_name("Not This One");
    EXPECT_EQ("&About TarqIconless...", action(About).text());
    EXPECT_TRUE(picture(action(About).icon()).isNull());
}

TEST_F(HelpManagerActions, TextsAreTranslatedAndSoIsTheShortcut)
{
    const Translator translator;
    manager();
    QMenuBar bar(&window);
    send(MainWindowMessage::MenuBar, &bar, &window);
    ASSERT_THAT(texts(bar), ElementsAre("<T> &Help"));
    const QMenu& menu = *bar.actions().at(0)->menu(); // filled under that title too
    const Lines translated = texts(menu);
    ASSERT_THAT(translated, SizeIs(6));
    EXPECT_THAT(Lines(translated.begin(), translated.begin() + 5),
        ElementsAre(
            "<T>&Contents...", "<T>&Quick Help...", "<T>&Shortcuts...", "<T>Show &Log File...", "----"));
    EXPECT_THAT(translated[About], testing::StartsWith("<T>&About "));
    EXPECT_THAT(translated[About], testing::EndsWith("TarqHelpful..."));
    EXPECT_EQ(QKeySequence("F12"), menu.actions().at(Contents)->shortcut());
    EXPECT_EQ(QKeySequence(Qt::SHIFT + Qt::Key_F1), menu.actions().at(QuickHelp)->shortcut());
}

TEST_F(HelpManagerActions, MenuOfAHostThatDoesNotTranslateItsTitleIsFilledToo)
{
    const Translator translator;
    manager();
    QMenu menu(s_menu_title); // in English, as before
    send(MainWindowMessage::Menu, &menu, &window);
    EXPECT_THAT(texts(menu), SizeIs(6));
}

// What they do; the log's viewer has tests of its own

TEST_F(HelpManagerActions, ContentsShowsThePage)
{
    manager().setCurrPath("TARQ_FAULTS");
    action(Contents).trigger();
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_FAULTS, inside)")); // and nothing else
}

TEST_F(HelpManagerActions, AboutShowsTheBox)
{
    QAction& about = action(About);
    calls();
    about.trigger();
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 2.about", "TarqHelpful 2.destroyed"));
}

TEST_F(HelpManagerActions, QuickHelpIsLeftToTheHost)
{
    const QSignalSpy quick_help(&manager(), &HelpManager::showQuickHelp);
    action(QuickHelp).trigger();
    EXPECT_EQ(1, quick_help.count());
    action(QuickHelp).trigger();
    EXPECT_EQ(2, quick_help.count());
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(HelpManagerActions, ShortcutsAsksForTheirPage)
{
    const QSignalSpy asked(&pkProductInfo::instance(), &pkProductInfo::openHelp);
    action(Shortcuts).trigger();
    ASSERT_EQ(1, asked.count());
    EXPECT_EQ("TARQ_KEYBOARD_SHORTCUTS", asked.at(0).at(0).toString());
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_KEYBOARD_SHORTCUTS, inside)"));
}

TEST_F(HelpManagerActions, OnlyOneOfThemShowsTheQuickHelp)
{
    const QSignalSpy quick_help(&manager(), &HelpManager::showQuickHelp);
    for (const Slot slot : {Contents, Shortcuts, About}) {
        action(slot).trigger();
    }
    EXPECT_EQ(0, quick_help.count());
}

// When they are made

TEST_F(HelpManagerActions, AreNotMadeBeforeAMessage)
{
    manager();
    EXPECT_THAT(actions_of(window), IsEmpty());
    manager().onShowPage("TARQ_FAULTS");
    EXPECT_THAT(actions_of(window), IsEmpty());
}

class HelpManagerFirstMessage : public HelpManagerActions, public testing::WithParamInterface<int>
{ };

TEST_P(HelpManagerFirstMessage, MakesTheActions)
{
    manager();
    send(GetParam(), nullptr, &window);
    EXPECT_THAT(actions_of(window), SizeIs(5));
    manager().onShowPage("TARQ_FAULTS");
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_FAULTS, inside)"));
}

INSTANTIATE_TEST_SUITE_P(HelpManager, HelpManagerFirstMessage, testing::Values(-1, 0, 1, 2, 3, 5, 6, 7));

TEST_F(HelpManagerActions, SecondMessageMakesNoSecondSet)
{
    const std::vector<QAction*> first = (manager(), entries());
    for (const int kind : {0, 1, 2, 7}) {
        send(kind, nullptr, &window);
    }
    EXPECT_EQ(first, entries());
    EXPECT_THAT(actions_of(window), SizeIs(5));
}

TEST_F(HelpManagerActions, SecondWindowMeanwhileGetsTheSameOnes)
{
    const std::vector<QAction*> first = (manager(), entries());
    QWidget second;
    EXPECT_EQ(first, entries(&second));
    EXPECT_THAT(actions_of(second), IsEmpty());
    EXPECT_EQ(&window, first[Contents]->parent());
}

TEST_F(HelpManagerActions, NullOwnerIsLoggedAndTheyAreMadeAllTheSame)
{
    manager();
    LogCapture log;
    const std::vector<QAction*> made = entries(nullptr);
    EXPECT_TRUE(log.took_assert("parent", "HelpManager::build_actions(", s_source));
    ASSERT_EQ(6u, made.size());
    for (const Slot slot : {Contents, QuickHelp, Shortcuts, LogFile, About}) {
        ASSERT_TRUE(made[slot]) << slot;
        EXPECT_EQ(nullptr, made[slot]->parent()) << slot;
    }
    EXPECT_EQ("&Contents...", made[Contents]->text());
    made[Contents]->trigger();
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, inside)"));
    EXPECT_EQ(made, entries(nullptr)); // not logged again
    EXPECT_EQ(made, entries());
    EXPECT_THAT(actions_of(window), IsEmpty());
}

TEST_F(HelpManagerActions, GoWithTheManagerWithoutAnOwner)
{
    manager();
    LogCapture log;
    std::vector<QPointer<QAction>> made;
    for (QAction* p_action : entries(nullptr)) {
        made.emplace_back(p_action);
    }
    EXPECT_TRUE(log.take("parent"));
    TestAccess::destroy<HelpManager>();
    EXPECT_THAT(made, SizeIs(6));
    EXPECT_THAT(made, Each(IsNull()));
}

TEST_F(HelpManagerActions, NullOwnerOfALaterMessageDoesNotMatter)
{
    manager();
    const std::vector<QAction*> first = entries();
    const LogCapture log;
    EXPECT_EQ(first, entries(nullptr));
}

// Whose they are

TEST_F(HelpManagerActions, GoWithTheirWindow)
{
    auto owner = std::make_unique<QWidget>();
    std::vector<QPointer<QAction>> made;
    manager();
    for (QAction* p_action : entries(owner.get())) {
        made.emplace_back(p_action);
    }
    ASSERT_THAT(made, SizeIs(6));
    owner.reset();
    EXPECT_THAT(made, Each(IsNull()));
}

TEST_F(HelpManagerActions, NextWindowGetsNewOnes)
{
    manager();
    auto first = std::make_unique<QWidget>();
    entries(first.get());
    first.reset();
    const std::vector<QAction*> made = entries();
    ASSERT_EQ(6u, made.size());
    for (const Slot slot : {Contents, QuickHelp, Shortcuts, LogFile, About}) {
        ASSERT_TRUE(made[slot]) << slot;
        EXPECT_EQ(&window, made[slot]->parent()) << slot;
    }
    EXPECT_THAT(actions_of(window), SizeIs(5));
    made[Contents]->trigger();
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_CONTENTS, inside)"));
}

TEST_F(HelpManagerActions, DoNothingOnceTheManagerIsGone)
{
    manager();
    const std::vector<QAction*> made = entries();
    TestAccess::destroy<HelpManager>();
    calls();
    for (const Slot slot : {Contents, QuickHelp, Shortcuts, LogFile, About}) {
        made[slot]->trigger(); // the window's still
    }
    EXPECT_THAT(calls(), IsEmpty());
    EXPECT_FALSE(TestAccess::peek<HelpManager>());
}

// The class

TEST(HelpManager, SignalsAndSlotsStandInTheirOrder)
{
    const QMetaObject& meta = HelpManager::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::gui::HelpManager", meta.className());
    EXPECT_EQ(quickhelp_test::methods(meta, QMetaMethod::Signal), Lines{"void showQuickHelp()"});
    EXPECT_EQ(quickhelp_test::methods(meta, QMetaMethod::Slot),
        (Lines{"void onShowPage(QString)", "void onShowPageExternal(QString)", "void help_about()",
            "void help_contents()", "void showLogFile()", "void showShortcuts()", "void newJIRAIssue()",
            "void handle_message(housekeeping::gui::MainWindowMessage&)", "void restart()"}));
    for (const char* const slot : {"onShowPage(QString)", "onShowPageExternal(QString)"}) {
        EXPECT_EQ(QMetaMethod::Public, meta.method(meta.indexOfSlot(slot)).access()) << slot;
    }
    for (const char* const slot : {"help_about()", "help_contents()", "showLogFile()", "showShortcuts()",
             "newJIRAIssue()", "handle_message(housekeeping::gui::MainWindowMessage&)", "restart()"}) {
        EXPECT_EQ(QMetaMethod::Protected, meta.method(meta.indexOfSlot(slot)).access()) << slot;
    }
}
