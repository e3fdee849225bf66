#include "PreferencesFixture.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

#include <gmock/gmock.h>

#include <QtCore/QPointer>
#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabBar>

#include <limits>

// The form of the dialog, and which pages it has.

using namespace preferences_test;
using tarqa::housekeeping::gui::AbstractMainWindow;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class PreferencesDialog : public PreferencesFixture
{ };

// The form

TEST_F(PreferencesDialog, HasATitleASystemMenuAndACloseButton)
{
    const Qt::WindowFlags flags = Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
        | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint;
    EXPECT_EQ(dialog().windowFlags(), flags);
    const gui::PreferencesDialog other(&m_parent, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    EXPECT_EQ(other.windowFlags(), flags);
}

TEST_F(PreferencesDialog, HasItsNamesAndTitle)
{
    EXPECT_EQ(dialog().objectName(), "PreferenceDialog");
    EXPECT_EQ(dialog().windowTitle(), "Preferences");
    EXPECT_STREQ(dialog().metaObject()->className(), "tarqa::housekeeping::gui::PreferencesDialog");
    EXPECT_EQ(dialog().findChildren<QTabWidget*>("m_tab").size(), 1);
    EXPECT_EQ(dialog().findChildren<pkBase::QPKHelpButton*>("helpButton").size(), 1);
    EXPECT_EQ(dialog().findChildren<QPushButton*>("m_okButton").size(), 1);
    EXPECT_EQ(dialog().findChildren<QPushButton*>("m_cancelButton").size(), 1);
}

TEST_F(PreferencesDialog, HasItsSignalAndSlots)
{
    const QMetaObject& meta = gui::PreferencesDialog::staticMetaObject;
    const int signal = meta.indexOfSignal("accepted_signal()");
    EXPECT_GE(signal, meta.methodOffset());
    for (const char* slot : {"accept()", "tabChanged(int)", "setTab(int)"}) {
        EXPECT_GE(meta.indexOfSlot(slot), meta.methodOffset()) << slot;
    }
}

TEST_F(PreferencesDialog, IsNotModal)
{
    EXPECT_FALSE(dialog().isModal());
    EXPECT_EQ(dialog().windowModality(), Qt::NonModal);
    show();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(PreferencesDialog, IsNotShownByItself)
{
    register_page("a");
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreferencesDialog, IsAtLeastOfTheMinimumSize)
{
    register_page("a");
    EXPECT_GE(dialog().width(), 450);
    EXPECT_GE(dialog().height(), 378);
}

TEST_F(PreferencesDialog, IsOfItsPreferredSizeOrTheMinimumSize)
{
    register_page("small");
    EXPECT_EQ(dialog().size(), QSize(450, 378)); // and not of the form's first size
    EXPECT_EQ(dialog().sizeHint().expandedTo(QSize(450, 378)), QSize(450, 378));
    register_page("wide").on_created = [](FakePage& page) { page.setMinimumSize(520, 10); };
    const gui::PreferencesDialog wide(&m_parent);
    EXPECT_EQ(wide.size(), QSize(wide.sizeHint().width(), 378));
    EXPECT_GT(wide.width(), 520);
    register_page("high").on_created = [](FakePage& page) { page.setMinimumSize(10, 400); };
    const gui::PreferencesDialog high(&m_parent);
    EXPECT_EQ(high.size(), high.sizeHint());
    EXPECT_GT(high.height(), 400);
}

TEST_F(PreferencesDialog, FormIsWholeAndWithoutATabWhenThePagesAreMade)
{
    QSize size;
    QString title;
    QStringList children;
    int tab_count = -1;
    Qt::WindowFlags flags;
    register_page("a").on_created = [&](FakePage&) {
        const auto* const p_dialog = m_parent.findChild<QDialog*>("PreferenceDialog");
        ASSERT_TRUE(p_dialog);
        size = p_dialog->size();
        title = p_dialog->windowTitle();
        flags = p_dialog->windowFlags();
        for (const char* const name : {"m_tab", "helpButton", "m_okButton", "m_cancelButton"}) {
            children << (p_dialog->findChild<QWidget*>(name) ? name : "");
        }
        tab_count = p_dialog->findChild<QTabWidget*>("m_tab")->count();
    };
    dialog();
    EXPECT_EQ(size, QSize(493, 500));
    EXPECT_EQ(title, "Preferences");
    EXPECT_EQ(flags, dialog().windowFlags());
    EXPECT_EQ(children, QStringList({"m_tab", "helpButton", "m_okButton", "m_cancelButton"}));
    EXPECT_EQ(tab_count, 0);
}

TEST_F(PreferencesDialog, IsLargeEnoughForALargePage)
{
    register_page("wide").on_created = [](FakePage& page) { page.setMinimumSize(700, 10); };
    register_page("high").on_created = [](FakePage& page) { page.setMinimumSize(10, 640); };
    EXPECT_GE(dialog().width(), 700);
    EXPECT_GE(dialog().height(), 640);
    EXPECT_GE(dialog().width(), dialog().minimumSizeHint().width());
    EXPECT_GE(dialog().height(), dialog().minimumSizeHint().height());
}

TEST_F(PreferencesDialog, IsOfTheMinimumHeightBesideAWidePage)
{
    register_page("wide").on_created = [](FakePage& page) { page.setMinimumSize(700, 10); };
    EXPECT_GE(dialog().width(), 700);
    EXPECT_GE(dialog().height(), 378);
}

TEST_F(PreferencesDialog, GivenParentIsTheParent)
{
    EXPECT_EQ(dialog().parentWidget(), &m_parent);
}

TEST_F(PreferencesDialog, MainWindowIsTheParentUnlessAnotherIsGiven)
{
    AbstractMainWindow window;
    const auto* const p_dialog = new gui::PreferencesDialog;
    EXPECT_EQ(p_dialog->parentWidget(), &window);
    EXPECT_TRUE(p_dialog->isWindow());
    EXPECT_EQ(dialog().parentWidget(), &m_parent);
}

TEST_F(PreferencesDialog, HasNoParentAfterTheEndOfTheMainWindow)
{
    std::make_unique<AbstractMainWindow>().reset();
    const gui::PreferencesDialog dialog;
    EXPECT_EQ(dialog.parentWidget(), nullptr);
}

TEST_F(PreferencesDialog, GoesWithItsParent)
{
    register_page("a");
    auto parent = std::make_unique<QWidget>();
    const QPointer<gui::PreferencesDialog> p_dialog = new gui::PreferencesDialog(parent.get());
    steps();
    parent.reset();
    EXPECT_TRUE(p_dialog.isNull());
    EXPECT_THAT(steps(), ElementsAre("a.destroyed"));
}

TEST_F(PreferencesDialog, ClosesByTheStandardKey)
{
    const auto shortcuts = dialog().findChildren<QShortcut*>();
    ASSERT_EQ(shortcuts.size(), 1);
    EXPECT_EQ(shortcuts.front()->key(), QKeySequence(QKeySequence::Close));
    show();
    QTest::keySequence(&dialog(), QKeySequence(QKeySequence::Close));
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreferencesDialog, ButtonsSayWhatTheyDo)
{
    EXPECT_EQ(apply_button().text(), "Apply");
    EXPECT_EQ(close_button().text(), "Close");
}

TEST_F(PreferencesDialog, CloseButtonCloses)
{
    register_page("a");
    show();
    steps();
    close_button().click();
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_THAT(steps(), IsEmpty());
}

TEST_F(PreferencesDialog, EscapeCloses)
{
    show();
    QTest::keyClick(&dialog(), Qt::Key_Escape);
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreferencesDialog, HelpButtonOpensThePageOfThePreferences)
{
    auto* const p_button = dialog().findChild<pkBase::QPKHelpButton*>("helpButton");
    ASSERT_NE(p_button, nullptr);
    EXPECT_EQ(p_button->helpKey(), "TARQ_FILE_MENU_PREFERENCES");
    const QSignalSpy opened(&pkBase::pkProductInfo::instance(), &pkBase::pkProductInfo::openHelp);
    show();
    p_button->click();
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.at(0).at(0).toString(), "TARQ_FILE_MENU_PREFERENCES");
    EXPECT_TRUE(dialog().isVisible());
}

TEST_F(PreferencesDialog, PlaceholderPageIsGone)
{
    register_page("a");
    EXPECT_THAT(labels(), ElementsAre("a"));
    EXPECT_EQ(page_widgets(), 1);
}

TEST_F(PreferencesDialog, HasNoTabsWithoutPages)
{
    EXPECT_EQ(tabs().count(), 0);
    EXPECT_EQ(page_widgets(), 0); // neither the placeholder
    EXPECT_EQ(tabs().currentIndex(), -1);
}

TEST_F(PreferencesDialog, WorksWithoutPages)
{
    dialog().pre_show_dialog();
    show();
    apply_button().click();
    dialog().tabChanged(0);
    dialog().setTab(0);
    EXPECT_TRUE(dialog().isVisible());
    close_button().click();
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_THAT(steps(), IsEmpty());
}

TEST_F(PreferencesDialog, SendsNoSignalWithoutPages)
{
    show();
    const QSignalSpy spy(&dialog(), SIGNAL(accepted_signal()));
    apply_button().click();
    EXPECT_EQ(dialog().result(), QDialog::Accepted);
    close_button().click();
    EXPECT_EQ(spy.size(), 0); // nothing was applied
}

TEST_F(PreferencesDialog, TabKeyLeadsFromThePageToTheButtons)
{
    QLineEdit* p_field = nullptr;
    register_page("a").on_created = [&](FakePage& page) { p_field = new QLineEdit(&page); };
    show();
    p_field->setFocus();
    std::vector<QWidget*> stops;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        stops.push_back(QApplication::focusWidget());
    }
    QWidget* const p_help = dialog().findChild<QWidget*>("helpButton");
    ASSERT_EQ(stops[0], &apply_button());
    EXPECT_EQ(stops[1], &close_button());
    EXPECT_EQ(stops[2], p_help);
    EXPECT_EQ(stops[3], tabs().tabBar());
}

TEST_F(PreferencesDialog, ReturnKeyAppliesWhereverTheFocusIs)
{
    QLineEdit* p_field = nullptr;
    register_page("a").on_created = [&](FakePage& page) { p_field = new QLineEdit(&page); };
    const QSignalSpy opened(&pkBase::pkProductInfo::instance(), &pkBase::pkProductInfo::openHelp);
    show();
    steps();
    for (QWidget* const p_stop : {static_cast<QWidget*>(p_field), static_cast<QWidget*>(&close_button()),
             dialog().findChild<QWidget*>("helpButton"), static_cast<QWidget*>(&apply_button())}) {
        p_stop->setFocus();
        QTest::keyClick(p_stop, Qt::Key_Return);
        EXPECT_THAT(steps(), ElementsAre("a.accept")) << p_stop->objectName().toStdString();
    }
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_EQ(opened.size(), 0);
}

// The pages

TEST_F(PreferencesDialog, HasAPageOfEachProduct)
{
    register_page("a", 1);
    register_page("b", 2);
    register_page("c", 3);
    EXPECT_THAT(labels(), ElementsAre("a", "b", "c"));
    EXPECT_EQ(support::journal().count("a.made"), 1);
    EXPECT_EQ(support::journal().count("b.made"), 1);
    EXPECT_EQ(support::journal().count("c.made"), 1);
}

TEST_F(PreferencesDialog, PagesAreInTheOrderOfTheirWeights)
{
    register_page("ten", 10);
    register_page("zero", 0);
    register_page("five", 5);
    EXPECT_THAT(labels(), ElementsAre("zero", "five", "ten"));
}

TEST_F(PreferencesDialog, ExtremeWeightsAreInOrderToo)
{
    register_page("max", std::numeric_limits<int>::max());
    register_page("minus one", -1);
    register_page("min", std::numeric_limits<int>::min());
    register_page("zero", 0);
    EXPECT_THAT(labels(), ElementsAre("min", "minus one", "zero", "max"));
}

TEST_F(PreferencesDialog, PagesOfEqualWeightAreAllShown)
{
    register_page("before", -1);
    std::vector<std::string> names;
    for (int i = 0; i < 40; ++i) { // more than a sort leaves in order by chance
        names.push_back("page " + std::to_string(i));
        register_page(names.back(), 7);
    }
    register_page("behind", 8);
    std::vector<std::string> found = labels();
    ASSERT_EQ(found.size(), 42U);
    EXPECT_EQ(found.front(), "before");
    EXPECT_EQ(found.back(), "behind");
    EXPECT_THAT(std::vector<std::string>(found.begin() + 1, found.end() - 1),
        testing::UnorderedElementsAreArray(names));
}

TEST_F(PreferencesDialog, TabShowsTheLabelOfItsPage)
{
    register_page("a", 1).on_created = [](FakePage& page) { page.label("A && B %1"); };
    register_page("b", 2).on_created = [](FakePage& page) { page.label(""); };
    register_page("c", 3).on_created
        = [](FakePage& page) { page.on_is_valid = [&page] { page.label("asked"); }; };
    EXPECT_THAT(labels(), ElementsAre("A && B %1", "", "asked"));
}

TEST_F(PreferencesDialog, PagesBelongToTheTabs)
{
    FakePageFactory& a = register_page("a", 1);
    FakePageFactory& b = register_page("b", 2);
    EXPECT_EQ(tabs().widget(0), a.newest);
    EXPECT_EQ(tabs().widget(1), b.newest);
    EXPECT_EQ(a.newest->window(), &dialog());
    steps();
    close_for_good();
    EXPECT_THAT(steps(), UnorderedElementsAre("a.destroyed", "b.destroyed"));
}

TEST_F(PreferencesDialog, EachDialogHasItsOwnPages)
{
    FakePageFactory& a = register_page("a");
    dialog();
    const FakePage* const p_first = a.newest;
    {
        const gui::PreferencesDialog other(&m_parent);
        EXPECT_NE(a.newest, p_first);
        steps();
    }
    EXPECT_THAT(steps(), ElementsAre("a.destroyed"));
    EXPECT_EQ(tabs().widget(0), p_first);
}

TEST_F(PreferencesDialog, PageRegisteredLaterIsNotInTheDialog)
{
    register_page("a");
    EXPECT_THAT(labels(), ElementsAre("a"));
    register_page("b");
    dialog().pre_show_dialog();
    EXPECT_THAT(labels(), ElementsAre("a"));
}

TEST_F(PreferencesDialog, SecondPageIsTheCurrentOne)
{
    register_page("a", 1);
    register_page("b", 2);
    register_page("c", 3);
    EXPECT_EQ(tabs().currentIndex(), 1);
}

TEST_F(PreferencesDialog, OnlyPageIsTheCurrentOne)
{
    register_page("a");
    EXPECT_EQ(tabs().currentIndex(), 0);
}

TEST_F(PreferencesDialog, InvalidPageIsDestroyedAtOnceAndNeverShown)
{
    register_page("a", 1).valid = false;
    register_page("b", 2);
    dialog();
    EXPECT_THAT(steps(), testing::IsSupersetOf({"a.made", "a.isValidPanel", "a.destroyed"}));
    show();
    EXPECT_EQ(support::journal().count("a."), 0);
    EXPECT_THAT(labels(), ElementsAre("b"));
    EXPECT_EQ(page_widgets(), 1);
}

TEST_F(PreferencesDialog, InvalidPageIsGoneBeforeTheNextOneIsMade)
{
    register_page("a", 1).valid = false;
    register_page("b", 2).valid = false;
    dialog();
    EXPECT_THAT(steps(),
        ElementsAre("a.made", "a.isValidPanel", "a.destroyed", "b.made", "b.isValidPanel", "b.destroyed"));
    EXPECT_EQ(tabs().count(), 0);
}

TEST_F(PreferencesDialog, PageIsAskedOnceWhetherItIsValid)
{
    register_page("a");
    dialog().pre_show_dialog();
    show();
    close_button().click();
    show();
    EXPECT_EQ(support::journal().count("a.isValidPanel"), 1);
}

TEST_F(PreferencesDialog, EmptyNameIsTheDefaultProduct)
{
    register_page("", 5);
    register_page("default", 1, true);
    register_page("other", 2);
    EXPECT_THAT(labels(), ElementsAre("default", "default", "other"));
    EXPECT_EQ(support::journal().count(".made"), 0);
    EXPECT_EQ(support::journal().count("default.made"), 2);
}

TEST_F(PreferencesDialog, EmptyNameWithoutADefaultIsTheFirstByName)
{
    register_page("other", 2);
    register_page("", 5);
    EXPECT_THAT(labels(), ElementsAre("other", ""));
}

TEST_F(PreferencesDialog, PagesAreInTheOrderOfRegistrationWhenMade)
{
    register_page("b", 1);
    register_page("a", 2);
    dialog();
    EXPECT_THAT(steps(), testing::IsSupersetOf({"b.made", "a.made"}));
    EXPECT_THAT(labels(), ElementsAre("b", "a"));
}

TEST_F(PreferencesDialog, PagesGetTheFinalPolish)
{
    QSpinBox* p_box = nullptr;
    register_page("a").on_created = [&](FakePage& page) { p_box = new QSpinBox(&page); };
    dialog();
    ASSERT_NE(p_box, nullptr);
    EXPECT_EQ(p_box->focusPolicy(), Qt::StrongFocus); // not by the wheel
    show();
    apply_button().setFocus();
    QWheelEvent wheel(QPointF(1, 1), p_box->mapToGlobal(QPoint(1, 1)), QPoint(), QPoint(0, 120), Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    QCoreApplication::instance()->notify(p_box, &wheel);
    EXPECT_EQ(p_box->value(), 0);
}
