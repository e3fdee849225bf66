#include "PreferencesFixture.h"

#include "support/DialogDriver.h"
#include "support/LogCapture.h"

#include <tarqa/utilities/Exception.h>

#include <gmock/gmock.h>

#include <QtCore/QTranslator>
#include <QtTest/QSignalSpy>

#include <stdexcept>

// Factories and pages that fail: they cost their page only.

using namespace preferences_test;
using support::DialogDriver;
using support::LogCapture;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

void throw_std()
{
    throw std::runtime_error("disk is full");
}
void throw_tarqa()
{
    throw tarqa::Exception(42, "disk is full", "tests/gui", 7);
}
void throw_unknown()
{
    throw 42;
}

/// Another language: the texts of the dialog with a mark.
class Translator : public QTranslator
{
public:
    Translator() { QCoreApplication::installTranslator(this); }
    ~Translator() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        const bool is_ours = QString(context) == "tarqa::housekeeping::gui::PreferencesDialog";
        return is_ours ? "<T>" + QString(text) : QString();
    }
};

bool logged_something(LogCapture& log)
{
    const bool logged = !log.lines().empty();
    log.take_all();
    return logged;
}

} // namespace

/// Pages before and behind the one that fails, which is the second and so the current one.
class PreferencesDialogThatMeetsFailures : public PreferencesFixture
{
protected:
    PreferencesDialogThatMeetsFailures()
        : m_first(register_page("first", 1))
        , m_failing(register_page("failing", 2))
        , m_last(register_page("last", 3))
    { }

    void fail_to_make(void (*fail)())
    {
        m_failing.makes = [fail]() -> gui::AbstractPreferences* {
            fail();
            return nullptr;
        };
    }

    FakePageFactory& m_first;
    FakePageFactory& m_failing;
    FakePageFactory& m_last;
};

TEST_F(PreferencesDialogThatMeetsFailures, FactoryThatThrowsCostsItsPageAndIsLogged)
{
    fail_to_make(&throw_std);
    LogCapture log;
    EXPECT_THAT(labels(), ElementsAre("first", "last"));
    EXPECT_TRUE(log.take("disk is full"));
    log.take_all();
    EXPECT_EQ(tabs().currentIndex(), 1);
}

TEST_F(PreferencesDialogThatMeetsFailures, FactoryThatThrowsTheMakersExceptionCostsItsPageAndIsLogged)
{
    fail_to_make(&throw_tarqa);
    LogCapture log;
    EXPECT_THAT(labels(), ElementsAre("first", "last"));
    EXPECT_TRUE(log.take("disk is full"));
    log.take_all();
}

TEST_F(PreferencesDialogThatMeetsFailures, FactoryThatThrowsSomethingElseCostsItsPageAndIsLogged)
{
    fail_to_make(&throw_unknown);
    LogCapture log;
    EXPECT_THAT(labels(), ElementsAre("first", "last"));
    EXPECT_TRUE(logged_something(log));
}

TEST_F(PreferencesDialogThatMeetsFailures, FactoryThatMakesNothingCostsItsPageAndIsLogged)
{
    m_failing.makes = [] { return nullptr; };
    LogCapture log;
    EXPECT_THAT(labels(), ElementsAre("first", "last"));
    EXPECT_TRUE(logged_something(log));
    dialog().pre_show_dialog();
    show();
    apply_button().click();
    EXPECT_EQ(support::journal().count("last.accept"), 1);
}

TEST_F(PreferencesDialogThatMeetsFailures, DefaultProductThatCannotBeMadeIsLogged)
{
    register_page("gone", 4, true);
    register_page("", 5);
    fail_to_make(&throw_std);
    LogCapture log;
    EXPECT_THAT(labels(), ElementsAre("first", "last", "gone", "gone"));
    EXPECT_TRUE(log.take("disk is full"));
    log.take_all();
}

TEST_F(PreferencesDialogThatMeetsFailures, PageThatThrowsWhenAskedIsDestroyedAndLogged)
{
    m_failing.on_created = [](FakePage& page) { page.on_is_valid = &throw_std; };
    LogCapture log;
    EXPECT_THAT(labels(), ElementsAre("first", "last"));
    EXPECT_TRUE(log.take("disk is full"));
    log.take_all();
    EXPECT_EQ(support::journal().count("failing.destroyed"), 1);
    EXPECT_EQ(page_widgets(), 2);
}

TEST_F(PreferencesDialogThatMeetsFailures, EveryFactoryMayFail)
{
    for (FakePageFactory* const p_factory : {&m_first, &m_failing, &m_last}) {
        p_factory->makes = []() -> gui::AbstractPreferences* { throw std::runtime_error("disk is full"); };
    }
    LogCapture log;
    EXPECT_EQ(tabs().count(), 0);
    EXPECT_GE(log.count("disk is full"), 3);
    log.take_all();
    show();
    apply_button().click();
    EXPECT_TRUE(dialog().isVisible());
}

TEST_F(PreferencesDialogThatMeetsFailures, PageThatCannotBeAppliedIsLoggedAndShown)
{
    bool fails = true;
    m_failing.on_created = [&](FakePage& page) {
        page.on_accept = [&] {
            if (fails) {
                throw_std();
            }
        };
    };
    show();
    LogCapture log;
    DialogDriver dialogs;
    dialogs.cancel();
    apply_button().click();
    ASSERT_EQ(dialogs.shown().size(), 1U);
    EXPECT_EQ(dialogs.shown().front().class_name, "QMessageBox");
    EXPECT_THAT(dialogs.shown().front().text.toStdString(), HasSubstr("disk is full"));
    EXPECT_TRUE(log.take("disk is full"));
    log.take_all();

    // And the dialog goes on.
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_TRUE(dialog().isEnabled());
    EXPECT_EQ(tabs().currentIndex(), 1);
    fails = false;
    steps();
    apply_button().click();
    EXPECT_THAT(steps(), ElementsAre("failing.accept"));
    EXPECT_EQ(dialog().result(), QDialog::Accepted);
    EXPECT_EQ(dialogs.shown().size(), 1U);
}

TEST_F(PreferencesDialogThatMeetsFailures, PageThatCannotBeAppliedDoesNotCountAsAccepted)
{
    m_failing.on_created = [](FakePage& page) { page.on_accept = &throw_std; };
    show();
    LogCapture log;
    DialogDriver dialogs;
    dialogs.cancel();
    apply_button().click();
    log.take_all();
    EXPECT_EQ(dialog().result(), QDialog::Rejected);
}

TEST_F(PreferencesDialogThatMeetsFailures, MakersExceptionOfAPageIsLoggedAndShown)
{
    m_failing.on_created = [](FakePage& page) { page.on_accept = &throw_tarqa; };
    show();
    LogCapture log;
    DialogDriver dialogs;
    dialogs.cancel();
    apply_button().click();
    ASSERT_EQ(dialogs.shown().size(), 1U);
    EXPECT_THAT(dialogs.shown().front().text.toStdString(), HasSubstr("disk is full"));
    EXPECT_TRUE(log.take("disk is full"));
    log.take_all();
    EXPECT_TRUE(dialog().isVisible());
}

TEST_F(PreferencesDialogThatMeetsFailures, AnythingElseThatAPageThrowsIsLoggedAndShown)
{
    m_failing.on_created = [](FakePage& page) { page.on_accept = &throw_unknown; };
    show();
    LogCapture log;
    DialogDriver dialogs;
    dialogs.cancel();
    apply_button().click();
    EXPECT_EQ(dialogs.shown().size(), 1U);
    EXPECT_TRUE(logged_something(log));
    EXPECT_TRUE(dialog().isVisible());
}

TEST_F(PreferencesDialogThatMeetsFailures, AnythingElseIsShownInTheUsersLanguage)
{
    const Translator translator;
    m_failing.on_created = [](FakePage& page) { page.on_accept = &throw_unknown; };
    show();
    LogCapture log;
    DialogDriver dialogs;
    dialogs.cancel();
    apply_button().click();
    ASSERT_EQ(dialogs.shown().size(), 1U);
    EXPECT_EQ(dialogs.shown().front().title, "<T>Preferences");
    EXPECT_EQ(dialogs.shown().front().text, "<T>The page failed for an unknown reason.");
    log.take_all();
}

TEST_F(PreferencesDialogThatMeetsFailures, FormIsInTheUsersLanguage)
{
    const Translator translator;
    EXPECT_EQ(dialog().windowTitle(), "<T>Preferences");
    EXPECT_EQ(apply_button().text(), "<T>Apply");
    EXPECT_EQ(close_button().text(), "<T>Close");
}

TEST_F(PreferencesDialogThatMeetsFailures, PageMayEndTheDialogAndFail)
{
    for (const auto fail : {&throw_std, &throw_tarqa, &throw_unknown}) {
        m_failing.on_created = [this, fail](FakePage& page) {
            page.on_accept = [this, fail] {
                close_for_good();
                fail();
            };
        };
        show();
        LogCapture log;
        DialogDriver dialogs;
        dialogs.cancel();
        apply_button().click();
        EXPECT_FALSE(m_dialog);
        ASSERT_EQ(dialogs.shown().size(), 1U);
        EXPECT_EQ(dialogs.shown().front().title, "Preferences");
        EXPECT_TRUE(logged_something(log));
    }
}

TEST_F(PreferencesDialogThatMeetsFailures, NoSignalWhenNothingCouldBeApplied)
{
    m_failing.on_created = [](FakePage& page) { page.on_accept = &throw_std; };
    show();
    const QSignalSpy spy(&dialog(), SIGNAL(accepted_signal()));
    LogCapture log;
    DialogDriver dialogs;
    dialogs.cancel();
    apply_button().click();
    close_button().click();
    EXPECT_EQ(spy.size(), 0);
    log.take_all();
}

TEST_F(PreferencesDialogThatMeetsFailures, PageThatCannotBeRefreshedIsLoggedAndTheOthersFollow)
{
    for (const auto fail : {&throw_std, &throw_tarqa, &throw_unknown}) {
        m_failing.on_created = nullptr;
        dialog();
        m_failing.newest->on_about_to_show = fail;
        steps();
        LogCapture log;
        const DialogDriver dialogs;
        dialog().pre_show_dialog();
        EXPECT_THAT(steps(), ElementsAre("first.aboutToShow", "failing.aboutToShow", "last.aboutToShow"));
        EXPECT_TRUE(logged_something(log));
        QTest::qWait(20); // no box
        EXPECT_TRUE(dialogs.shown().empty());
    }
}

TEST_F(PreferencesDialogThatMeetsFailures, PageThatCannotBeRefreshedWhenItsTabComesIsLogged)
{
    show();
    m_failing.newest->on_about_to_show = &throw_std;
    dialog().setTab(0);
    LogCapture log;
    const DialogDriver dialogs;
    dialog().setTab(1);
    EXPECT_EQ(tabs().currentIndex(), 1);
    EXPECT_EQ(log.count("disk is full"), 1);
    log.take_all();
    dialog().tabChanged(1);
    EXPECT_EQ(log.count("disk is full"), 1);
    log.take_all();
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(PreferencesDialogThatMeetsFailures, PageThatCannotBeRefreshedIsShownAllTheSame)
{
    m_failing.on_created = [](FakePage& page) { page.on_about_to_show = &throw_std; };
    LogCapture log;
    show();
    dialog().pre_show_dialog();
    log.take_all();
    EXPECT_THAT(labels(), ElementsAre("first", "failing", "last"));
    EXPECT_EQ(tabs().currentIndex(), 1);
    apply_button().click();
    EXPECT_EQ(support::journal().count("failing.accept"), 1);
}
