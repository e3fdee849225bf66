#include "texts/Texts.h"

#include "gui/HelpFixture.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <pkBaseQt/QPKHelpButton.h>
#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtCore/QUrlQuery>
#include <QtGui/QContextMenuEvent>
#include <QtTest/QSignalSpy>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextBrowser>

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

// The texts of the help and of the preferences.

using namespace help_test;
using pkBase::pkProductInfo;
using tarqa::housekeeping::DataSource;
using tarqa::housekeeping::gui::PreferencesDialog;
using tarqa::housekeeping::gui::QHelpWebView;

namespace {

/// A program with a window, a launcher and a help manager.
class Program
{
public:
    explicit Program(const char* product = s_product)
    {
        pkProductInfo::instance().product_name(product);
        register_launcher(product);
        HelpManager::instance();
    }
    ~Program() { TestAccess::destroy<HelpManager>(); }

    support::App app;
    QWidget window;
};

// The menu

std::string menu_title()
{
    Program program;
    QMenuBar bar(&program.window);
    send(MainWindowMessage::MenuBar, &bar, &program.window);
    return bar.actions().at(0)->menu()->title().toStdString();
}

/// The entries of the menu, with a bar between two.
std::string menu_of(const char* product)
{
    Program program(product);
    QMenu menu(s_menu_title);
    send(MainWindowMessage::Menu, &menu, &program.window);
    std::string all;
    for (const std::string& text : help_test::texts(menu)) {
        all += (all.empty() ? "" : "|") + text;
    }
    return all;
}

/// The keys of an entry, as they are called in English.
std::string keys_of(int entry)
{
    Program program;
    QMenu menu(s_menu_title);
    send(MainWindowMessage::Menu, &menu, &program.window);
    return menu.actions().at(entry)->shortcut().toString(QKeySequence::PortableText).toStdString();
}

/// What is logged if a window without itself as the owner asks for its menus: source and condition.
std::string assertion_without_an_owner()
{
    Program program;
    support::LogCapture log;
    send(MainWindowMessage::ToolBar, nullptr, nullptr);
    const std::vector<std::string> lines = log.lines();
    log.take_all();
    const std::string line = lines.size() == 1 ? lines[0] : "";
    return line.substr(0, line.find(':')) + ": " + line.substr(line.rfind(' ') + 1);
}

// Help keys

std::string current_path(const std::function<void(HelpManager&)>& change)
{
    const Program program;
    change(HelpManager::instance());
    return HelpManager::instance().currPath().toStdString();
}

/// The topic that somebody asks for.
std::string topic_of(const std::function<void()>& ask)
{
    QSignalSpy asked(&pkProductInfo::instance(), &pkProductInfo::openHelp);
    ask();
    return asked.count() == 1 ? asked.at(0).at(0).toString().toStdString() : "";
}

std::string topic_of_the_shortcuts()
{
    const Program program;
    return topic_of([] { QMetaObject::invokeMethod(&HelpManager::instance(), "showShortcuts"); });
}

std::string about_page()
{
    const support::App app;
    const AbstractMainWindow main_window;
    support::DialogDriver dialogs;
    std::string page;
    dialogs.answer([&page](QDialog& dialog) {
        const auto* const p_browser = dialog.findChild<QTextBrowser*>();
        page = p_browser
            ? p_browser->source().scheme().toStdString() + ' ' + p_browser->source().path().toStdString()
            : "";
        dialog.reject();
    });
    PlainLauncher().about();
    return page;
}

// The form for a new issue

/// The form's query.
QUrlQuery issue_query()
{
    const Program program;
    pkProductInfo& product = pkProductInfo::instance();
    product.version("2.4.1");
    product.branch("release");
    product.build_number(1234);
    product.build_date("2024-05-06");
    const boost::shared_ptr<DataSource> source(new DataSource("/data/a.dat", {}));
    support::create_document().datasource(source);
    OpenedUrls opened;
    QMetaObject::invokeMethod(&HelpManager::instance(), "newJIRAIssue", Qt::DirectConnection);
    const std::vector<QUrl> urls = opened.take();
    return urls.size() == 1 ? QUrlQuery(urls[0]) : QUrlQuery();
}

std::string issue_items()
{
    std::string names;
    for (const auto& item : issue_query().queryItems()) {
        names += (names.empty() ? "" : " ") + item.first.toStdString();
    }
    return names;
}

std::string issue_item(const char* name)
{
    const QUrlQuery query = issue_query();
    return query.hasQueryItem(name) ? query.queryItemValue(name, QUrl::FullyDecoded).toStdString()
                                    : "no such item";
}

// The help browser

/// The name comes first: the browser reads it when it is made.
class Browser
{
public:
    support::App app{named_program()};
    QHelpWebView view{QString::fromStdString(support::PrivateHome::scratch_directory() + "/page.html")};

private:
    static std::string named_program()
    {
        pkProductInfo::instance().product_name(s_product);
        return "test";
    }
};

std::string title_of_the_browser()
{
    const Browser browser;
    return browser.view.windowTitle().toStdString();
}

/// The text of an entry of the context menu.
std::string context_menu_entry(int entry)
{
    Browser browser;
    browser.view.show();
    std::string text;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&text, entry] {
        if (auto* const p_menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            text = p_menu->actions().at(entry)->text().toStdString();
            p_menu->close();
        }
    });
    poll.start(5);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), QPoint(40, 60));
    QApplication::sendEvent(&browser.view, &event);
    return text;
}

std::string title_of_the_print_dialog()
{
    Browser browser;
    support::DialogDriver dialogs;
    dialogs.cancel();
    QMetaObject::invokeMethod(
        &browser.view, "onPrintRequested", Q_ARG(QWebFrame*, browser.view.page()->mainFrame()));
    return dialogs.shown().size() == 1 ? dialogs.shown()[0].title.toStdString() : "";
}

// The preferences

class Dialog
{
public:
    support::App app;
    QWidget parent;
    PreferencesDialog dialog{&parent};
};

std::string dialog_name()
{
    return Dialog().dialog.objectName().toStdString();
}

std::string dialog_title()
{
    return Dialog().dialog.windowTitle().toStdString();
}

std::string tab_widget_name()
{
    const Dialog made;
    return made.dialog.findChild<QTabWidget*>()->objectName().toStdString();
}

QPushButton* button_with(const Dialog& made, const char* text)
{
    for (QPushButton* const p_button : made.dialog.findChildren<QPushButton*>()) {
        if (p_button->text() == text) {
            return p_button;
        }
    }
    return nullptr;
}

std::string name_of_the_button(const char* text)
{
    const Dialog made;
    const QPushButton* const p_button = button_with(made, text);
    return p_button ? p_button->objectName().toStdString() : "no such button";
}

std::string text_of_the_button(const char* name)
{
    const Dialog made;
    const auto* const p_button = made.dialog.findChild<QPushButton*>(name);
    return p_button ? p_button->text().toStdString() : "no such button";
}

std::string name_of_the_help_button()
{
    const Dialog made;
    return made.dialog.findChild<pkBase::QPKHelpButton*>()->objectName().toStdString();
}

std::string topic_of_the_help_button()
{
    const Dialog made;
    auto* const p_button = made.dialog.findChild<pkBase::QPKHelpButton*>();
    return topic_of([p_button] { p_button->click(); });
}

/// Notes which texts a class asks to have translated.
class AskedTexts : public QTranslator
{
public:
    explicit AskedTexts(const char* class_name)
        : m_class_name(class_name)
    {
        QCoreApplication::installTranslator(this);
    }
    ~AskedTexts() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        if (m_class_name == context) {
            m_texts.insert(text);
        }
        return {};
    }
    std::string joined() const
    {
        std::string all;
        for (const std::string& text : m_texts) {
            all += (all.empty() ? "" : "|") + text;
        }
        return all;
    }

private:
    std::string m_class_name;
    mutable std::set<std::string> m_texts;
};

/// Also that of the page which is there only until the pages are made.
std::string texts_of_the_form()
{
    const support::App app;
    const AskedTexts asked("tarqa::housekeeping::gui::PreferencesDialog");
    QWidget parent;
    const PreferencesDialog dialog(&parent);
    return asked.joined();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(HelpMenu, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"Title", " &Help", menu_title},
        {"Entries", "&Contents...|&Quick Help...|&Shortcuts...|Show &Log File...|----|&About TarqHelpful...",
            [] { return menu_of(s_product); }},
        {"EntriesOfTheViewer", "&About TarqViewer...", [] { return menu_of("TarqViewer"); }},
        {"KeysOfContents", "F1", [] { return keys_of(0); }},
        {"KeysOfQuickHelp", "Shift+F1", [] { return keys_of(1); }},
        {"KeysOfShortcuts", "", [] { return keys_of(2); }},
        {"KeysOfLogFile", "", [] { return keys_of(3); }},
        {"KeysOfAbout", "", [] { return keys_of(5); }},
        {"AssertionWithoutAnOwner", "housekeeping/gui/src/HelpManager: parent", assertion_without_an_owner},
    }),
    texts::name_of);

INSTANTIATE_TEST_SUITE_P(HelpKeys, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"First", "TARQ_CONTENTS", [] { return current_path([](HelpManager&) {}); }},
        {"AfterAnEmptyPath", "TARQ_CONTENTS",
            [] {
                return current_path([](HelpManager& manager) {
                    manager.setCurrPath("TARQ_FAULTS");
                    manager.setCurrPath("");
                });
            }},
        {"AfterClearing", "TARQ_CONTENTS",
            [] {
                return current_path([](HelpManager& manager) {
                    manager.setCurrPath("TARQ_FAULTS");
                    manager.clearCurrPath();
                });
            }},
        {"KeyboardShortcuts", "TARQ_KEYBOARD_SHORTCUTS", topic_of_the_shortcuts},
        {"Preferences", "TARQ_FILE_MENU_PREFERENCES", topic_of_the_help_button},
        {"AboutPage", "qrc /tarqa/Resources/about.htm", about_page},
    }),
    texts::name_of);

INSTANTIATE_TEST_SUITE_P(HelpIssue, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"Items", "pid issuetype reporter assignee priority summary description versions", issue_items},
        {"Pid", "10001", [] { return issue_item("pid"); }},
        {"Issuetype", "1", [] { return issue_item("issuetype"); }},
        {"Reporter", "", [] { return issue_item("reporter"); }},
        {"Assignee", "-1", [] { return issue_item("assignee"); }},
        {"Priority", "6", [] { return issue_item("priority"); }},
        {"Summary", "", [] { return issue_item("summary"); }},
        {"Description",
            "\n\nVersion: 2.4.1 [branch: release] - Build number 1234 - Build date 2024-05-06\n"
            "Current Document: /data/a.dat",
            [] { return issue_item("description"); }},
        {"Versions", "11900", [] { return issue_item("versions"); }},
    }),
    texts::name_of);

INSTANTIATE_TEST_SUITE_P(HelpBrowser, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"Title", "Online Help: TarqHelpful", title_of_the_browser},
        {"OpenHelp", "Open Help in Web Browser", [] { return context_menu_entry(4); }},
        {"OpenCurrentPage", "Open Current Page Web Browser", [] { return context_menu_entry(5); }},
        {"PrintDialog", "Print Help", title_of_the_print_dialog},
    }),
    texts::name_of);

INSTANTIATE_TEST_SUITE_P(Preferences, Texts,
    testing::ValuesIn(std::vector<texts::Row>{
        {"Name", "PreferenceDialog", dialog_name},
        {"Title", "Preferences", dialog_title},
        {"Tabs", "m_tab", tab_widget_name},
        {"HelpButton", "helpButton", name_of_the_help_button},
        {"ApplyButton", "m_okButton", [] { return name_of_the_button("Apply"); }},
        {"CloseButton", "m_cancelButton", [] { return name_of_the_button("Close"); }},
        {"TextOfApply", "Apply", [] { return text_of_the_button("m_okButton"); }},
        {"TextOfClose", "Close", [] { return text_of_the_button("m_cancelButton"); }},
        {"TextsThatAreTranslated", "Apply|Close|Preferences|Tab 1", texts_of_the_form},
    }),
    texts::name_of);
