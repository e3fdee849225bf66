#include "PreferencesFixture.h"

#include "support/DialogDriver.h"
#include "support/LogCapture.h"

#include <gmock/gmock.h>

#include <QtCore/QPointer>
#include <QtGui/QHideEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets/QTabBar>

#include <limits>
#include <stdexcept>

// What the dialog does with its pages: refresh, apply, change of tabs, and its signal.

using namespace preferences_test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

const char* const s_signal = SIGNAL(accepted_signal());

} // namespace

/// With the pages a, b and c, in this order.
class PreferencesDialogWithPages : public PreferencesFixture
{
protected:
    PreferencesDialogWithPages()
        : m_a(register_page("a", 1))
        , m_b(register_page("b", 2))
        , m_c(register_page("c", 3))
    { }

    FakePageFactory& m_a;
    FakePageFactory& m_b;
    FakePageFactory& m_c;
};

// Refreshing

TEST_F(PreferencesDialogWithPages, AllPagesAreRefreshedInTheOrderOfTheTabs)
{
    dialog();
    steps();
    dialog().pre_show_dialog();
    EXPECT_THAT(steps(), ElementsAre("a.aboutToShow", "b.aboutToShow", "c.aboutToShow"));
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(tabs().currentIndex(), 1);
}

TEST_F(PreferencesDialogWithPages, AllPagesAreRefreshedEachTime)
{
    dialog();
    dialog().pre_show_dialog();
    show();
    close_button().click();
    steps();
    dialog().pre_show_dialog();
    EXPECT_THAT(steps(), ElementsAre("a.aboutToShow", "b.aboutToShow", "c.aboutToShow"));
}

TEST_F(PreferencesDialogWithPages, PageIsRefreshedOnceWhenItsTabBecomesTheCurrentOne)
{
    show();
    steps();
    tabs().setCurrentIndex(2);
    EXPECT_THAT(steps(), UnorderedElementsAre("c.aboutToShow", "c.shown"));
    tabs().setCurrentIndex(0);
    EXPECT_THAT(steps(), UnorderedElementsAre("a.aboutToShow", "a.shown"));
}

TEST_F(PreferencesDialogWithPages, PageIsRefreshedOnceWhenTheUserClicksItsTab)
{
    show();
    steps();
    QTabBar* const p_bar = tabs().tabBar();
    QTest::mouseClick(p_bar, Qt::LeftButton, Qt::NoModifier, p_bar->tabRect(2).center());
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_EQ(support::journal().count("c.aboutToShow"), 1);
    EXPECT_EQ(support::journal().count("a.aboutToShow"), 0);
}

TEST_F(PreferencesDialogWithPages, CurrentTabIsNotRefreshedAgain)
{
    show();
    steps();
    tabs().setCurrentIndex(1);
    dialog().setTab(1);
    EXPECT_THAT(steps(), IsEmpty());
}

TEST_F(PreferencesDialogWithPages, TabChangedRefreshesThatPageAndLeavesTheCurrentTab)
{
    dialog();
    steps();
    dialog().tabChanged(0);
    EXPECT_THAT(steps(), ElementsAre("a.aboutToShow"));
    dialog().tabChanged(2);
    EXPECT_THAT(steps(), ElementsAre("c.aboutToShow"));
    EXPECT_EQ(tabs().currentIndex(), 1);
}

TEST_F(PreferencesDialogWithPages, TabChangedOutOfRangeDoesNothing)
{
    dialog();
    steps();
    for (const int index : {-1, 3, 4, -2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        dialog().tabChanged(index);
    }
    EXPECT_THAT(steps(), IsEmpty());
}

TEST_F(PreferencesDialogWithPages, SetTabMakesItTheCurrentOneAndRefreshesIt)
{
    dialog();
    steps();
    dialog().setTab(2);
    EXPECT_EQ(tabs().currentIndex(), 2);
    EXPECT_THAT(steps(), ElementsAre("c.aboutToShow"));
    dialog().setTab(0);
    EXPECT_EQ(tabs().currentIndex(), 0);
}

TEST_F(PreferencesDialogWithPages, SetTabOutOfRangeLeavesTheCurrentTab)
{
    dialog();
    steps();
    for (const int index : {-1, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        dialog().setTab(index);
        EXPECT_EQ(tabs().currentIndex(), 1) << index;
    }
    EXPECT_THAT(steps(), IsEmpty());
}

TEST_F(PreferencesDialogWithPages, TabStaysTheSameWhenTheDialogIsShownAgain)
{
    show();
    dialog().setTab(2);
    close_button().click();
    dialog().pre_show_dialog();
    show();
    EXPECT_EQ(tabs().currentIndex(), 2);
}

// Applying

TEST_F(PreferencesDialogWithPages, ApplyAppliesThePageOnTopOnly)
{
    show();
    steps();
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("b.accept")); // once
    dialog().setTab(0);
    steps();
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("a.accept"));
}

TEST_F(PreferencesDialogWithPages, ChangesOnAnotherTabWaitForTheirTurn)
{
    int value = 0;
    int entered = 0;
    m_a.on_created = [&](FakePage& page) { page.on_accept = [&] { value = entered; }; };
    show();
    dialog().setTab(0);
    entered = 5;
    dialog().setTab(1);
    apply_button().click();
    EXPECT_EQ(value, 0);
    dialog().setTab(0);
    apply_button().click();
    EXPECT_EQ(value, 5);
}

TEST_F(PreferencesDialogWithPages, ApplyAcceptsAndKeepsTheDialogOpen)
{
    show();
    EXPECT_EQ(dialog().result(), QDialog::Rejected);
    const QSignalSpy finished(&dialog(), &QDialog::finished);
    const QSignalSpy accepted(&dialog(), &QDialog::accepted);
    apply_button().click();
    EXPECT_EQ(dialog().result(), QDialog::Accepted);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_EQ(finished.size(), 0);
    EXPECT_EQ(accepted.size(), 0);
    EXPECT_EQ(tabs().currentIndex(), 1);
}

TEST_F(PreferencesDialogWithPages, SlotAppliesAsTheButtonDoes)
{
    show();
    steps();
    EXPECT_TRUE(QMetaObject::invokeMethod(&dialog(), "accept"));
    EXPECT_THAT(steps(), ElementsAre("b.accept"));
    EXPECT_EQ(dialog().result(), QDialog::Accepted);
    EXPECT_TRUE(dialog().isVisible());
}

TEST_F(PreferencesDialogWithPages, EachClickAppliesOnce)
{
    show();
    steps();
    apply_button().click();
    apply_button().click();
    QTest::mouseClick(&apply_button(), Qt::LeftButton);
    EXPECT_THAT(steps(), ElementsAre("b.accept", "b.accept", "b.accept"));
}

TEST_F(PreferencesDialogWithPages, CloseAppliesNothing)
{
    show();
    steps();
    close_button().click();
    EXPECT_THAT(steps(), IsEmpty());
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(PreferencesDialogWithPages, OnlyPageIsApplied)
{
    m_b.valid = false;
    m_c.valid = false;
    show();
    steps();
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("a.accept"));
}

TEST_F(PreferencesDialogWithPages, PageMayChangeTheTabWhileItIsApplied)
{
    m_b.on_created = [this](FakePage& page) { page.on_accept = [this] { dialog().setTab(2); }; };
    show();
    steps();
    apply_button().click();
    EXPECT_EQ(support::journal().count("b.accept"), 1);
    EXPECT_EQ(support::journal().count("c.accept"), 0);
    EXPECT_EQ(tabs().currentIndex(), 2);
}

TEST_F(PreferencesDialogWithPages, PageMayCloseTheDialogWhileItIsApplied)
{
    m_b.on_created = [this](FakePage& page) { page.on_accept = [this] { dialog().close(); }; };
    show();
    apply_button().click();
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(support::journal().count("b.accept"), 1);
}

TEST_F(PreferencesDialogWithPages, PageMayEndTheDialogWhileItIsApplied)
{
    m_b.on_created = [this](FakePage& page) { page.on_accept = [this] { close_for_good(); }; };
    show();
    const QSignalSpy spy(&dialog(), s_signal);
    apply_button().click();
    EXPECT_FALSE(m_dialog);
    EXPECT_EQ(support::journal().count("b.accept"), 1);
    EXPECT_EQ(support::journal().count("b.destroyed"), 1);
    EXPECT_EQ(spy.size(), 0); // it was not closed
}

// Tabs that come and go without the dialog

TEST_F(PreferencesDialogWithPages, SignalComesOnceIfSomethingWasAppliedBeforeThePageClosesTheDialog)
{
    bool closes = false;
    m_b.on_created = [&](FakePage& page) {
        page.on_accept = [&] {
            if (closes) {
                dialog().close();
            }
            support::journal().add("b.applied");
        };
    };
    show();
    QObject::connect(&dialog(), &gui::PreferencesDialog::accepted_signal, &dialog(),
        [] { support::journal().add("signal"); });
    apply_button().click();
    steps();
    closes = true;
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("b.accept", "b.applied", "signal"));
}

TEST_F(PreferencesDialogWithPages, SignalOfWhatWasAppliedIsNotLostIfThePageThenClosesTheDialogAndFails)
{
    bool fails = false;
    m_b.on_created = [&](FakePage& page) {
        page.on_accept = [&] {
            if (fails) {
                dialog().close();
                throw std::runtime_error("disk is full");
            }
        };
    };
    show();
    const QSignalSpy signal(&dialog(), SIGNAL(accepted_signal()));
    apply_button().click();
    fails = true;
    support::LogCapture log;
    support::DialogDriver dialogs;
    dialogs.answer([](QDialog& box) { box.accept(); });
    apply_button().click();
    EXPECT_TRUE(log.take("disk is full"));
    EXPECT_EQ(1, signal.count());
}

TEST_F(PreferencesDialogWithPages, PageMayEndTheDialogWhileAllAreRefreshed)
{
    dialog();
    m_a.newest->on_about_to_show = [this] { close_for_good(); };
    dialog().pre_show_dialog();
    EXPECT_FALSE(m_dialog);
}

TEST_F(PreferencesDialogWithPages, PageThatItsHostDeletesIsForgotten)
{
    show();
    delete m_a.newest;
    EXPECT_THAT(labels(), ElementsAre("b", "c"));
    steps();
    dialog().pre_show_dialog();
    EXPECT_THAT(steps(), ElementsAre("b.aboutToShow", "c.aboutToShow"));
    dialog().tabChanged(0);
    EXPECT_THAT(steps(), ElementsAre("b.aboutToShow"));
    dialog().setTab(1);
    steps();
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("c.accept"));
}

TEST_F(PreferencesDialogWithPages, LastPageThatItsHostDeletesIsForgotten)
{
    show();
    dialog().setTab(2);
    for (const FakePageFactory* const p_factory : {&m_c, &m_b, &m_a}) {
        delete p_factory->newest;
    }
    steps();
    dialog().pre_show_dialog();
    dialog().tabChanged(0);
    dialog().tabChanged(2);
    apply_button().click();
    EXPECT_THAT(steps(), IsEmpty());
}

TEST_F(PreferencesDialogWithPages, TabOfTheHostThatIsNoPageIsNeitherRefreshedNorApplied)
{
    dialog();
    tabs().insertTab(0, new QWidget, "host");
    show();
    const QSignalSpy spy(&dialog(), s_signal);
    dialog().setTab(0);
    steps();
    dialog().tabChanged(0);
    dialog().pre_show_dialog();
    EXPECT_THAT(steps(), ElementsAre("a.aboutToShow", "b.aboutToShow", "c.aboutToShow"));
    apply_button().click();
    EXPECT_THAT(steps(), IsEmpty());
    EXPECT_TRUE(dialog().isVisible());
    close_button().click();
    EXPECT_EQ(spy.size(), 0); // nothing was applied
}

TEST_F(PreferencesDialogWithPages, PagesBehindATabOfTheHostAreTheirOwn)
{
    dialog();
    tabs().insertTab(0, new QWidget, "host");
    tabs().addTab(new QWidget, "host too");
    show();
    dialog().setTab(0);
    steps();
    dialog().setTab(2);
    EXPECT_THAT(steps(), UnorderedElementsAre("b.aboutToShow", "b.shown"));
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("b.accept"));
    dialog().tabChanged(3);
    EXPECT_THAT(steps(), ElementsAre("c.aboutToShow"));
    dialog().tabChanged(4);
    EXPECT_THAT(steps(), IsEmpty());
}

// The signal

TEST_F(PreferencesDialogWithPages, SignalComesWhenTheDialogIsClosedAfterApplying)
{
    show();
    const QSignalSpy spy(&dialog(), s_signal);
    apply_button().click();
    apply_button().click();
    EXPECT_EQ(spy.size(), 0);
    close_button().click();
    EXPECT_EQ(spy.size(), 1);
}

TEST_F(PreferencesDialogWithPages, SignalComesHoweverTheDialogIsClosed)
{
    const QSignalSpy spy(&dialog(), s_signal);
    show();
    apply_button().click();
    dialog().close();
    EXPECT_EQ(spy.size(), 1);
    show();
    apply_button().click();
    QTest::keyClick(&dialog(), Qt::Key_Escape);
    EXPECT_EQ(spy.size(), 2);
    show();
    apply_button().click();
    QTest::keySequence(&dialog(), QKeySequence(QKeySequence::Close));
    EXPECT_EQ(spy.size(), 3);
    show();
    apply_button().click();
    dialog().hide();
    EXPECT_EQ(spy.size(), 4);
}

TEST_F(PreferencesDialogWithPages, NoSignalWhenNothingWasApplied)
{
    const QSignalSpy spy(&dialog(), s_signal);
    show();
    dialog().setTab(0);
    close_button().click();
    EXPECT_EQ(spy.size(), 0);
}

TEST_F(PreferencesDialogWithPages, NoSignalWhenNothingWasAppliedThisTime)
{
    const QSignalSpy spy(&dialog(), s_signal);
    show();
    apply_button().click();
    close_button().click();
    show();
    close_button().click();
    EXPECT_EQ(spy.size(), 1);
}

TEST_F(PreferencesDialogWithPages, SignalOfAPageThatClosesTheDialogComesOnceWhenItHasApplied)
{
    m_b.on_created = [this](FakePage& page) {
        page.on_accept = [this] {
            dialog().close();
            support::journal().add("b.applied");
        };
    };
    show();
    QObject::connect(&dialog(), &gui::PreferencesDialog::accepted_signal, &dialog(),
        [] { support::journal().add("signal"); });
    steps();
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("b.accept", "b.applied", "signal"));
    EXPECT_EQ(dialog().result(), QDialog::Accepted);
    show();
    close_button().click();
    EXPECT_EQ(support::journal().count("signal"), 0);
}

TEST_F(PreferencesDialogWithPages, NoSignalOfAPageThatClosesTheDialogAndFails)
{
    m_b.on_created = [this](FakePage& page) {
        page.on_accept = [this] {
            dialog().close();
            throw std::runtime_error("disk is full");
        };
    };
    show();
    const QSignalSpy spy(&dialog(), s_signal);
    support::LogCapture log;
    support::DialogDriver dialogs;
    dialogs.cancel();
    apply_button().click();
    EXPECT_TRUE(log.take("disk is full"));
    log.take_all();
    EXPECT_EQ(spy.size(), 0);
}

TEST_F(PreferencesDialogWithPages, NoSignalWhenTheWindowSystemHidesTheDialog)
{
    show();
    apply_button().click();
    const QSignalSpy spy(&dialog(), s_signal);
    QHideEvent minimised;
    QSpontaneKeyEvent::setSpontaneous(&minimised);
    QCoreApplication::instance()->notify(&dialog(), &minimised);
    EXPECT_EQ(spy.size(), 0);
    close_button().click();
    EXPECT_EQ(spy.size(), 1);
}

TEST_F(PreferencesDialogWithPages, SlotOfTheSignalMayShowTheDialogAgain)
{
    show();
    int signals_seen = 0;
    QObject::connect(&dialog(), &gui::PreferencesDialog::accepted_signal, &dialog(), [&] { ++signals_seen; });
    apply_button().click();
    close_button().click();
    show();
    apply_button().click();
    EXPECT_EQ(signals_seen, 1);
    close_button().click();
    EXPECT_EQ(signals_seen, 2);
}

TEST_F(PreferencesDialogWithPages, HostMayDeleteTheDialogInTheSlotOfTheSignal)
{
    const QPointer<gui::PreferencesDialog> p_dialog = new gui::PreferencesDialog(&m_parent);
    p_dialog->show();
    QObject::connect(p_dialog, &gui::PreferencesDialog::accepted_signal, p_dialog,
        [p_dialog] { p_dialog->deleteLater(); });
    p_dialog->accept();
    p_dialog->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(p_dialog.isNull());
}
