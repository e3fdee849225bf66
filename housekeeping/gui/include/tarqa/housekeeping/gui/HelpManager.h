#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <boost/shared_ptr.hpp>

class QAction;

namespace tarqa::housekeeping {
class TestAccess;
}

namespace tarqa::housekeeping::gui {

class HelpLauncher;

/**
 * The Help menu: its actions, and what they do. Pages are shown by the host's HelpLauncher, made by the
 * factory that is registered under the product's name; without one the menu works all the same, and a page
 * that is asked for is logged, and named in a box that does not block.
 *
 * The host calls instance() once before its main window asks for menus, and connects showQuickHelp(). Two of
 * the slots have no entry in the menu; a host that wants them connects entries of its own by name:
 *
 *     connect(report_action, SIGNAL(triggered()), &HelpManager::instance(), SLOT(newJIRAIssue()));
 *     connect(restart_action, SIGNAL(triggered()), &HelpManager::instance(), SLOT(restart()));
 *
 * A singleton, made at first use, destroyed in phase 5 of the ordered destruction. The actions belong to the
 * window that asks for menus first, and are made again for the next one when it is gone. Their keys work in
 * that window; where else they are to work, in dialogs and floating panels, the host adds the actions. Main
 * thread.
 */
class TQ_HK_EXPORT HelpManager : public QObject
{
    Q_OBJECT

public:
    /// The one object; made at first use.
    static HelpManager& instance();
    /// The same, to look at only.
    static const HelpManager& const_instance();

    /// What "Contents" opens: a help key or page. An empty one stands for the table of contents,
    /// "TARQ_CONTENTS", which it is until set.
    void setCurrPath(const QString& path);
    /// Lets "Contents" open the table of contents again.
    void clearCurrPath();
    /// What "Contents" opens.
    const QString& currPath() const { return m_curr_path; }

    /// Where the form for a new issue is. Until set, an address that leads nowhere. A query in it is
    /// replaced.
    static const QUrl& issue_form();
    static void issue_form(const QUrl& address);

public slots:
    /// Shows a page in the program's own browser; in the system's, as long as there is no Help menu.
    void onShowPage(const QString& page);
    /// Shows a page in the system's web browser.
    void onShowPageExternal(const QString& page);

signals:
    /// The user wants to see the quick help; the host shows its panel.
    void showQuickHelp();

protected:
    HelpManager();
    ~HelpManager() override;

protected slots:
    /// Shows the about box, by a launcher of its own; returns when it is closed.
    void help_about();
    /// Shows the page of currPath().
    void help_contents();
    /// Shows the log in its viewer.
    void showLogFile();
    /// Asks for the page "TARQ_KEYBOARD_SHORTCUTS".
    void showShortcuts();
    /// Opens the form for a new issue, filled in as far as the program knows, in the system's web browser.
    /// The display key of the current document's data source is part of it: the file's path, unless the host
    /// has set another.
    void newJIRAIssue();
    /// Puts the Help menu into the menu bar, and its entries into that menu.
    void handle_message(housekeeping::gui::MainWindowMessage& message);
    /// Closes the program, if main window and user agree, and starts it again with the same arguments.
    void restart();

private:
    friend class pkBase::pkSingleton<HelpManager>;
    friend class housekeeping::TestAccess;
    static pkBase::pkSingleton<HelpManager>& get_instance();
    static void destroy_instance();

    void build_actions(QWidget* parent);
    void fill_menu_bar(MainWindowMessage& message);
    void fill_help_menu(MainWindowMessage& message);
    void show_page(QString page, bool external);
    static QString problem_description();

    // The window's.
    QPointer<QAction> m_contents_action;
    QPointer<QAction> m_about_action;
    QPointer<QAction> m_quick_help_action;
    QPointer<QAction> m_shortcuts_action;
    QPointer<QAction> m_log_file_action;
    QString m_curr_path;
    boost::shared_ptr<HelpLauncher> m_sp_help_launcher; // null if the host has none
};

} // namespace tarqa::housekeeping::gui
