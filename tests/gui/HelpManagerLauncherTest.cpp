#include "HelpFixture.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <pkBaseQt/QPKAboutBox.h>
#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QTextDocument>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTextBrowser>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

// The library's about box, and hosts whose launcher cannot be made.

using namespace help_test;
using pkBase::pkProductInfo;
using pkBase::QPKAboutBox;
using support::DialogDriver;
using support::LogCapture;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::ErrorProtocol;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// What the about box looks like when it appears.
struct ShownBox
{
    bool is_about_box = false;
    bool modal = false;
    QWidget* parent = nullptr;
    QString log_file;
    QString page;
};

/// Closes the next dialog, which is to be an about box.
void close_box(DialogDriver& dialogs, ShownBox& shown)
{
    dialogs.answer([&shown](QDialog& dialog) {
        if (const auto* p_box = dynamic_cast<QPKAboutBox*>(&dialog)) {
            shown.is_about_box = true;
            shown.log_file = p_box->log_file();
        }
        shown.modal = dialog.isModal();
        shown.parent = dialog.parentWidget();
        if (const auto* p_page = dialog.findChild<QTextBrowser*>()) {
            shown.page = p_page->toPlainText();
        }
        dialog.reject();
    });
}

/// A compiled-in page without its mark-up.
QString page_text(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QTextDocument document;
    document.setHtml(QString::fromUtf8(file.readAll()));
    return document.toPlainText();
}

class HelpLauncherAbout : public HelpWithoutLauncher
{ };

/// Why a launcher cannot be made.
enum class Fault
{
    NotRegistered,
    Throws,
    GivesNone
};

std::string name_of(Fault fault)
{
    switch (fault) {
    case Fault::NotRegistered:
        return "NotRegistered";
    case Fault::Throws:
        return "Throws";
    case Fault::GivesNone:
        return "GivesNone";
    }
    return "";
}

void PrintTo(Fault fault, std::ostream* p_stream)
{
    *p_stream << name_of(fault);
}

class HelpManagerLauncherless : public HelpWithoutLauncher, public testing::WithParamInterface<Fault>
{
protected:
    HelpManagerLauncherless()
    {
        if (GetParam() == Fault::NotRegistered) {
            return;
        }
        FakeLauncherFactory& factory = register_launcher();
        factory.gives_nothing = GetParam() == Fault::GivesNone;
        if (GetParam() == Fault::Throws) {
            factory.on_create = [] { throw std::runtime_error("the launcher's fault"); };
        }
    }

    /// Makes the manager, and takes what it logs.
    static void make_manager(LogCapture& log)
    {
        manager();
        if (GetParam() == Fault::NotRegistered) {
            EXPECT_TRUE(log.take("Abstract factory has no registered concrete factory classes."));
        } else if (GetParam() == Fault::Throws) {
            EXPECT_TRUE(log.take("the launcher's fault"));
        }
        EXPECT_TRUE(boxes().empty()); // nobody has asked for help yet
    }
};

} // namespace

// The library's about box

TEST_F(HelpLauncherAbout, IsAModalBoxOverTheMainWindow)
{
    AbstractMainWindow main_window;
    DialogDriver dialogs;
    ShownBox shown;
    close_box(dialogs, shown);
    PlainLauncher().about();
    EXPECT_TRUE(shown.is_about_box);
    EXPECT_TRUE(shown.modal);
    EXPECT_EQ(&main_window, shown.parent);
    EXPECT_TRUE(boxes().empty());
    EXPECT_TRUE(main_window.findChildren<QDialog*>().empty()); // it is gone
}

TEST_F(HelpLauncherAbout, NamesTheErrorLog)
{
    const AbstractMainWindow main_window;
    DialogDriver dialogs;
    ShownBox shown;
    close_box(dialogs, shown);
    PlainLauncher().about();
    EXPECT_NE("", shown.log_file);
    EXPECT_EQ(QString::fromStdString(ErrorProtocol::instance().log_filename()), shown.log_file);
}

TEST_F(HelpLauncherAbout, ShowsTheCompiledInPage)
{
    const AbstractMainWindow main_window;
    DialogDriver dialogs;
    ShownBox shown;
    close_box(dialogs, shown);
    PlainLauncher().about();
    const QString expected = page_text(":/tarqa/Resources/about.htm");
    EXPECT_FALSE(expected.isEmpty());
    EXPECT_EQ(expected, shown.page);
}

TEST_F(HelpLauncherAbout, NeedsNoMainWindow)
{
    LogCapture log;
    DialogDriver dialogs;
    ShownBox shown;
    close_box(dialogs, shown);
    PlainLauncher().about();
    EXPECT_TRUE(shown.is_about_box);
    EXPECT_EQ(nullptr, shown.parent);
    EXPECT_TRUE(log.took_assert(
        "m_instance", "AbstractMainWindow::instance", "housekeeping/gui/src/AbstractMainWindow"));
}

TEST_F(HelpLauncherAbout, DoesNotTouchAMainWindowThatIsGone)
{
    std::make_unique<AbstractMainWindow>().reset();
    ASSERT_TRUE(AbstractMainWindow::hasInstance());
    DialogDriver dialogs;
    ShownBox shown;
    close_box(dialogs, shown);
    PlainLauncher().about();
    EXPECT_TRUE(shown.is_about_box);
    EXPECT_EQ(nullptr, shown.parent);
}

TEST_F(HelpLauncherAbout, MainWindowMayGoWhileItIsShown)
{
    auto main_window = std::make_unique<AbstractMainWindow>();
    DialogDriver dialogs;
    dialogs.answer([&main_window](QDialog&) { main_window.reset(); });
    PlainLauncher().about();
    ASSERT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ("pkBase::QPKAboutBox", dialogs.shown()[0].class_name);
}

TEST(HelpLauncher, IsAnObjectWithAParent)
{
    class Child : public HelpLauncher
    {
    public:
        explicit Child(QObject* p_parent)
            : HelpLauncher(p_parent)
        { }
        void show_page(const QString&, bool) override { }
    };
    QObject parent;
    const auto* const p_child = new Child(&parent);
    EXPECT_EQ(&parent, p_child->parent());
    EXPECT_STREQ("tarqa::housekeeping::gui::HelpLauncher", p_child->metaObject()->className());
    EXPECT_EQ(nullptr, PlainLauncher().parent());
    EXPECT_TRUE(std::has_virtual_destructor_v<HelpLauncher>);
    EXPECT_TRUE(std::is_abstract_v<HelpLauncher>);
}

// Hosts without a launcher

TEST_P(HelpManagerLauncherless, HasTheMenuAllTheSame)
{
    LogCapture log;
    make_manager(log);
    QMenu menu(s_menu_title);
    send(MainWindowMessage::Menu, &menu, &window);
    EXPECT_THAT(texts(menu),
        ElementsAre("&Contents...", "&Quick Help...", "&Shortcuts...", "Show &Log File...", "----",
            "&About TarqHelpful..."));
    EXPECT_TRUE(action(Contents).isEnabled());
}

TEST_P(HelpManagerLauncherless, ShowsTheAboutBoxAllTheSame)
{
    LogCapture log;
    make_manager(log);
    const AbstractMainWindow main_window;
    DialogDriver dialogs;
    ShownBox shown;
    close_box(dialogs, shown);
    call("help_about");
    EXPECT_TRUE(shown.is_about_box);
    EXPECT_TRUE(shown.modal);
    EXPECT_EQ(&main_window, shown.parent);
    EXPECT_EQ(QString::fromStdString(ErrorProtocol::instance().log_filename()), shown.log_file);
    log.take_all();
}

TEST_P(HelpManagerLauncherless, PageIsLoggedAndNamedInABoxThatDoesNotBlock)
{
    LogCapture log;
    make_manager(log);
    manager().onShowPage("TARQ_FAULTS"); // returns at once
    EXPECT_TRUE(log.take("TARQ_FAULTS"));
    EXPECT_TRUE(dismiss_box().contains("TARQ_FAULTS"));
    log.take_all();
}

TEST_P(HelpManagerLauncherless, EachWayToAPageNamesIt)
{
    LogCapture log;
    make_manager(log);
    const std::vector<std::pair<const char*, std::function<void()>>> ways = {
        {"TARQ_CONTENTS", [] { call("help_contents"); }},
        {"TARQ_KEYBOARD_SHORTCUTS", [] { call("showShortcuts"); }},
        {"TARQ_WELLS", [] { manager().onShowPageExternal("TARQ_WELLS"); }},
        {"TARQ_HORIZONS", [] { pkProductInfo::instance().show_help("TARQ_HORIZONS"); }},
        {"TARQ_MAPS", [] { pkProductInfo::instance().show_help_external("TARQ_MAPS"); }},
    };
    for (const auto& way : ways) {
        way.second();
        EXPECT_TRUE(log.take(way.first)) << way.first;
        EXPECT_TRUE(dismiss_box().contains(way.first)) << way.first;
    }
    log.take_all();
}

TEST_P(HelpManagerLauncherless, QuickHelpIsAnnouncedAllTheSame)
{
    LogCapture log;
    make_manager(log);
    int shown = 0;
    QObject::connect(&manager(), &HelpManager::showQuickHelp, [&shown] { ++shown; });
    action(QuickHelp).trigger();
    EXPECT_EQ(1, shown);
}

INSTANTIATE_TEST_SUITE_P(HelpManager, HelpManagerLauncherless,
    testing::Values(Fault::NotRegistered, Fault::Throws, Fault::GivesNone),
    [](const testing::TestParamInfo<Fault>& fault) { return name_of(fault.param); });

class HelpManagerFactory : public HelpWithoutLauncher
{ };

TEST_F(HelpManagerFactory, FactoryThatThrowsAnythingIsLogged)
{
    register_launcher().on_create = [] { throw 7; };
    LogCapture log;
    manager();
    EXPECT_FALSE(log.lines().empty());
    log.take_all();
    EXPECT_EQ("&Contents...", action(Contents).text());
}

class HelpManagerLateFault : public HelpFixture
{ };

TEST_F(HelpManagerLateFault, FactoryThatFailsLaterStillGivesTheAboutBox)
{
    manager();
    factory.on_create = [] { throw std::runtime_error("no more launchers"); };
    const AbstractMainWindow main_window;
    LogCapture log;
    DialogDriver dialogs;
    ShownBox shown;
    close_box(dialogs, shown);
    call("help_about");
    EXPECT_TRUE(shown.is_about_box);
    EXPECT_TRUE(log.take("no more launchers"));
    log.take_all();
    manager().onShowPage("TARQ_FAULTS"); // its launcher is there
    EXPECT_THAT(calls(), ElementsAre("TarqHelpful 1.show_page(TARQ_FAULTS, outside)"));
}

// The box that names a page

namespace {

/// A program with windows, but no launcher.
class HelpManagerNotice : public HelpWithoutLauncher
{
protected:
    HelpManagerNotice()
    {
        manager();
        log.take_all();
    }

    void ask_for(const char* page)
    {
        manager().onShowPage(page);
        EXPECT_TRUE(log.take(page));
    }

    LogCapture log;
};

/// Runs the main loop until the program would end. @return false if it has to be ended by force
bool main_loop_ends()
{
    QTimer patience;
    patience.setSingleShot(true);
    QObject::connect(&patience, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    patience.start(20000);
    return QApplication::exec() == 0;
}

} // namespace

TEST_F(HelpManagerNotice, IsOneHoweverOftenItIsAskedFor)
{
    for (const char* const page : {"TARQ_WELLS", "TARQ_FAULTS", "TARQ_WELLS", "TARQ_MAPS"}) {
        ask_for(page);
        ASSERT_EQ(1u, boxes().size());
        EXPECT_TRUE(boxes()[0]->text().contains(page)) << page;
    }
    const QString text = dismiss_box();
    EXPECT_TRUE(text.contains("TARQ_MAPS"));
    EXPECT_FALSE(text.contains("TARQ_WELLS"));
}

TEST_F(HelpManagerNotice, IsPlainTextThatCanBeCopied)
{
    ask_for("<b>TARQ_WELLS</b>");
    ASSERT_EQ(1u, boxes().size());
    const QMessageBox& box = *boxes()[0];
    EXPECT_EQ("Help", box.windowTitle());
    EXPECT_EQ("This program has no help that could show the page \"<b>TARQ_WELLS</b>\".", box.text());
    EXPECT_EQ(Qt::PlainText, box.textFormat());
    EXPECT_EQ(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard, box.textInteractionFlags());
    EXPECT_EQ(QMessageBox::Information, box.icon());
    EXPECT_EQ(QMessageBox::Ok, box.standardButtons());
    dismiss_box();
}

TEST_F(HelpManagerNotice, IsInTheUsersLanguage)
{
    {
        const ClassTranslator translator("tarqa::housekeeping::gui::HelpManager");
        ask_for("TARQ_WELLS");
        ASSERT_EQ(1u, boxes().size());
        EXPECT_EQ("[T]Help", boxes()[0]->windowTitle());
        EXPECT_TRUE(dismiss_box().startsWith("[T]"));
    }
    const ClassTranslator translator("tarqa::housekeeping::gui::OpenOutside");
    call("newJIRAIssue"); // which nothing opens
    log.take_all();
    ASSERT_EQ(1u, boxes().size());
    EXPECT_EQ("[T]No Program Found", boxes()[0]->windowTitle());
    EXPECT_TRUE(dismiss_box().startsWith("[T]"));
}

TEST_F(HelpManagerNotice, ComesAgainWhenTheUserHasClosedIt)
{
    ask_for("TARQ_WELLS");
    ASSERT_EQ(1u, boxes().size());
    const QPointer<QMessageBox> first = boxes()[0];
    first->button(QMessageBox::Ok)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(first);
    ask_for("TARQ_FAULTS");
    EXPECT_TRUE(dismiss_box().contains("TARQ_FAULTS"));
}

TEST_F(HelpManagerNotice, GoesWithItsWindowAndComesAgain)
{
    auto owner = std::make_unique<QWidget>();
    owner->show();
    QApplication::setActiveWindow(owner.get());
    ask_for("TARQ_WELLS");
    ASSERT_EQ(1u, boxes().size());
    EXPECT_EQ(owner.get(), boxes()[0]->parentWidget());
    owner.reset();
    EXPECT_THAT(boxes(), IsEmpty());
    ask_for("TARQ_FAULTS");
    EXPECT_TRUE(dismiss_box().contains("TARQ_FAULTS"));
}

TEST_F(HelpManagerNotice, KeepsNoProgramRunning)
{
    ask_for("TARQ_WELLS");
    ASSERT_EQ(1u, boxes().size());
    ASSERT_EQ(nullptr, boxes()[0]->parentWidget()); // nobody takes it along
    window.show();
    QTimer::singleShot(0, &window, [this] { window.close(); });
    EXPECT_TRUE(main_loop_ends());
    for (const QMessageBox* const p_box : boxes()) {
        delete p_box;
    }
}

TEST_F(HelpManagerNotice, IsNotShownWhereNobodySeesIt)
{
    ErrorHandler::show_dialogs(false);
    ask_for("TARQ_WELLS"); // logged all the same
    EXPECT_THAT(boxes(), IsEmpty());
    call("newJIRAIssue"); // which nothing opens
    EXPECT_TRUE(log.take(HelpManager::issue_form().toString().toStdString()));
    log.take_all();
    EXPECT_THAT(boxes(), IsEmpty());
    ErrorHandler::show_dialogs(true);
    ask_for("TARQ_FAULTS");
    EXPECT_TRUE(dismiss_box().contains("TARQ_FAULTS"));
}

// Where no box can be made at all

TEST(HelpManagerWithoutWidgets, PageIsLogged)
{
    std::string name = "test";
    char* arguments[] = {name.data(), nullptr};
    int count = 1;
    const QCoreApplication application(count, arguments);
    LogCapture log;
    HelpManager::instance().onShowPage("TARQ_FAULTS");
    EXPECT_TRUE(log.take("TARQ_FAULTS"));
    log.take_all();
    TestAccess::destroy<HelpManager>();
}

TEST(HelpManagerWithoutWidgets, PageIsLoggedWithoutAnApplicationToo)
{
    LogCapture log;
    HelpManager::instance().onShowPage("TARQ_FAULTS");
    EXPECT_TRUE(log.take("TARQ_FAULTS"));
    log.take_all();
    TestAccess::destroy<HelpManager>();
}
