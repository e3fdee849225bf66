#include <tarqa/housekeeping/gui/HelpManager.h>

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/HelpLauncher.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>

#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/pkProductInfo.h>

#include "Assertion.h"
#include "LiveMainWindow.h"
#include "LoggingExceptions.h"
#include "Notice.h"
#include "OpenOutside.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <QtCore/QUrlQuery>
#include <QtGui/QIcon>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <iostream>

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_source = "housekeeping/gui/src/HelpManager";

const char* const s_contents = "TARQ_CONTENTS";
const char* const s_keyboard_shortcuts = "TARQ_KEYBOARD_SHORTCUTS";
const char* const s_help_icon = ":/vista/Resources/help.png";
const char* const s_viewer_product = "TarqViewer"; // its Help menu holds the about entry alone

const int s_menu_slot = 21; // behind every other menu

enum MenuSlot : int
{
    ContentsSlot,
    QuickHelpSlot,
    ShortcutsSlot,
    LogFileSlot,
    SeparatorSlot,
    AboutSlot,
    ViewerAboutSlot = 0
};

QUrl& issue_form_address()
{
    static QUrl s_address("https://issues.tarqa.example/secure/CreateIssueDetails!init.jspa");
    return s_address;
}

const pkBase::pkProductInfo& product()
{
    return pkBase::pkProductInfo::const_instance();
}

QString product_name()
{
    return QString::fromStdString(product().product_name());
}

QString product_icon()
{
    return ":/tarq/Resources/" + product_name().toLower() + "16x16.png";
}

/// Null if the host has registered none, or if it cannot be made.
boost::shared_ptr<HelpLauncher> create_launcher()
{
    boost::shared_ptr<HelpLauncher> sp_launcher;
    logging_exceptions("The help launcher cannot be made, for an unknown reason",
        [&sp_launcher] { sp_launcher = HelpLauncherFactory::create(product().product_name()); });
    return sp_launcher;
}

/// What stands in for a host's launcher where any would do.
class PlainLauncher : public HelpLauncher
{
    void show_page(const QString&, bool) override { }
};

} // namespace

HelpManager::HelpManager()
    : m_curr_path(s_contents)
{
    MainWindowMessage::subscribe(this, Qt::AutoConnection);
    m_sp_help_launcher = create_launcher();
    const pkBase::pkProductInfo* const p_product = &pkBase::pkProductInfo::instance();
    connect(p_product, SIGNAL(openHelp(QString)), this, SLOT(onShowPage(QString)));
    connect(p_product, SIGNAL(openHelpExternal(QString)), this, SLOT(onShowPageExternal(QString)));
}

HelpManager::~HelpManager()
{
    for (QAction* const p_action : {m_contents_action.data(), m_about_action.data(),
             m_quick_help_action.data(), m_shortcuts_action.data(), m_log_file_action.data()}) {
        if (p_action && !p_action->parent()) {
            delete p_action; // made without a window to own it
        }
    }
}

pkBase::pkSingleton<HelpManager>& HelpManager::get_instance()
{
    static pkBase::pkSingleton<HelpManager> s_holder(
        pkBase::pkDestructionPhase(5), &HelpManager::destroy_instance);
    return s_holder;
}

HelpManager& HelpManager::instance()
{
    return get_instance().get();
}

const HelpManager& HelpManager::const_instance()
{
    return instance();
}

void HelpManager::destroy_instance()
{
    get_instance().destroy();
}

// --- menu

void HelpManager::build_actions(QWidget* parent)
{
    if (m_contents_action) {
        return;
    }
    HK_ASSERT(parent, "parent");
    const QIcon help_icon(s_help_icon);
    m_contents_action = new QAction(help_icon, tr("&Contents..."), parent);
    m_contents_action->setShortcut(QKeySequence(tr("F1")));
    m_about_action = new QAction(QIcon(product_icon()), tr("&About ") + product_name() + "...", parent);
    m_quick_help_action = new QAction(help_icon, tr("&Quick Help..."), parent);
    m_quick_help_action->setShortcut(Qt::SHIFT + Qt::Key_F1);
    m_log_file_action = new QAction(tr("Show &Log File..."), parent);
    m_shortcuts_action = new QAction(tr("&Shortcuts..."), parent);
    // For hosts that give them icons or keys of their own: their texts are translated.
    m_contents_action->setObjectName("help_contents");
    m_about_action->setObjectName("help_about");
    m_quick_help_action->setObjectName("help_quick_help");
    m_log_file_action->setObjectName("help_log_file");
    m_shortcuts_action->setObjectName("help_shortcuts");

    connect(m_contents_action, SIGNAL(triggered()), this, SLOT(help_contents()));
    connect(m_about_action, SIGNAL(triggered()), this, SLOT(help_about()));
    connect(m_quick_help_action, SIGNAL(triggered()), this, SIGNAL(showQuickHelp()));
    connect(m_log_file_action, SIGNAL(triggered()), this, SLOT(showLogFile()));
    connect(m_shortcuts_action, SIGNAL(triggered()), this, SLOT(showShortcuts()));
}

void HelpManager::handle_message(housekeeping::gui::MainWindowMessage& message)
{
    build_actions(message.owner());
    if (message.kind() == MainWindowMessage::MenuBar) {
        fill_menu_bar(message);
    } else if (message.kind() == MainWindowMessage::Menu) {
        fill_help_menu(message);
    }
}

void HelpManager::fill_menu_bar(MainWindowMessage& message)
{
    auto* const p_menu_bar = qobject_cast<QMenuBar*>(message.target());
    if (!p_menu_bar) {
        return;
    }
    // Added twice, it stands once, where it was added last.
    message.insertMenu(s_menu_slot, p_menu_bar->addMenu(tr(" &Help")));
}

void HelpManager::fill_help_menu(MainWindowMessage& message)
{
    const auto* const p_menu = qobject_cast<QMenu*>(message.target());
    if (!p_menu || (p_menu->title() != " &Help" && p_menu->title() != tr(" &Help"))) {
        return;
    }
    if (product_name() == s_viewer_product) {
        message.insertAction(ViewerAboutSlot, m_about_action);
        return;
    }
    message.insertAction(ContentsSlot, m_contents_action);
    message.insertAction(QuickHelpSlot, m_quick_help_action);
    message.insertAction(ShortcutsSlot, m_shortcuts_action);
    message.insertAction(LogFileSlot, m_log_file_action);
    message.insertSeparator(SeparatorSlot);
    message.insertAction(AboutSlot, m_about_action);
}

// --- pages

void HelpManager::setCurrPath(const QString& path)
{
    m_curr_path = path.isEmpty() ? s_contents : path;
}

void HelpManager::clearCurrPath()
{
    m_curr_path = s_contents;
}

void HelpManager::help_contents()
{
    onShowPage(m_curr_path);
}

void HelpManager::onShowPage(const QString& page)
{
    show_page(page, !m_contents_action);
}

void HelpManager::onShowPageExternal(const QString& page)
{
    show_page(page, true);
}

/// The page is a copy: showing it moves the focus, which may set another current path.
void HelpManager::show_page(QString page, bool external)
{
    if (m_sp_help_launcher) {
        m_sp_help_launcher->show_page(page, external);
        return;
    }
    show_notice(
        tr("Help"), tr("This program has no help that could show the page \"%1\".").arg(page), nullptr);
}

void HelpManager::showShortcuts()
{
    pkBase::pkProductInfo::instance().show_help(s_keyboard_shortcuts);
}

// --- about, log

void HelpManager::help_about()
{
    if (const boost::shared_ptr<HelpLauncher> sp_launcher = create_launcher()) {
        sp_launcher->about();
    } else {
        PlainLauncher().about();
    }
}

void HelpManager::showLogFile()
{
    pkBase::QLogFileViewer::instance().present();
}

// --- issues

const QUrl& HelpManager::issue_form()
{
    return issue_form_address();
}

void HelpManager::issue_form(const QUrl& address)
{
    issue_form_address() = address;
}

QString HelpManager::problem_description()
{
    const pkBase::pkProductInfo& info = product();
    QString text = "Version: " + QString::fromStdString(info.version())
        + " [branch: " + QString::fromStdString(info.branch()) + "] - Build number "
        + QString::number(info.build_number()) + " - Build date " + QString::fromStdString(info.build_date());
    DocumentManager& documents = DocumentManager::instance();
    if (documents.current_document_id() != DocumentId::null()) {
        const boost::shared_ptr<DataSource> sp_source = documents.current_document().datasource();
        if (sp_source && !sp_source->ds_key().empty()) {
            text += "\nCurrent Document: " + QString::fromStdString(sp_source->ds_key());
        }
    }
    return text;
}

void HelpManager::newJIRAIssue()
{
    QUrlQuery query;
    query.addQueryItem("pid", "10001");
    query.addQueryItem("issuetype", "1");
    query.addQueryItem("reporter", ""); // not null, which would leave out the "="
    query.addQueryItem("assignee", "-1");
    query.addQueryItem("priority", "6");
    query.addQueryItem("summary", "");
    // Encoded here: left to Qt, a "+" would come out as a blank.
    query.addQueryItem("description", QUrl::toPercentEncoding("\n\n" + problem_description()));
    query.addQueryItem("versions", "11900");
    QUrl address = issue_form();
    address.setQuery(query);
    open_outside(address, nullptr);
}

// --- restart

void HelpManager::restart()
{
    const QPointer<AbstractMainWindow> p_window = live_main_window(); // asking may take long
    if (p_window && !p_window->may_close()) {
        return;
    }
    if (p_window && !p_window->close()) {
        return;
    }
    QCoreApplication::quit();
    QStringList arguments = ApplicationManager::command_line();
    if (arguments.isEmpty()) {
        arguments = QCoreApplication::arguments();
    }
    if (arguments.isEmpty()) {
        return;
    }
    const QString program = arguments.takeFirst();
    if (!QProcess::startDetached(program, arguments)) {
        const std::string text = tr("The program could not be started again: %1").arg(program).toStdString();
        ErrorProtocol::instance().log_message(text);
        std::cerr << text << std::endl; // there is no window any more
    }
}

} // namespace tarqa::housekeeping::gui
