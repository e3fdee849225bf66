#pragma once

#include "help/HelpPages.h"

#include <QtCore/QList>
#include <QtGui/QKeySequence>
#include <QtWebKitWidgets/QWebPage>
#include <QtWidgets/QMainWindow>

#include <map>

class QAction;

namespace tarqa::housekeeping::gui {
class QHelpWebView;
}

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class FindBar;

/// What the user can do in the help window.
enum class HelpDeed
{
    Back,
    Forward,
    Contents,
    Larger,
    Smaller,
    FirstSize, ///< as large as the pages are made
    Find,
    FindNext,
    FindPrevious,
    Print,
    OpenOutside,
    Close
};

/**
 * The window in which people read the help: the library's browser with a tool bar and a line to find text.
 *
 * Where there is no page it says what is missing, and so it logs. The page of the shortcuts is filled each
 * time it is loaded, however one gets there, and when the window is activated. The window keeps no program
 * alive, and closes with it; a closed one is only hidden. Where it was and how large the texts were is kept
 * in the settings. Main thread.
 */
class HelpWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HelpWindow(const HelpPages& pages);
    ~HelpWindow() override;

    /// Shows a page, in front of the other windows. Not even a dialog that blocks the program's other windows
    /// keeps it from being read.
    void show_page(const QString& page);

    housekeeping::gui::QHelpWebView& view() const { return *m_p_view; }
    FindBar& find_bar() const { return *m_p_find_bar; }
    QAction& action(HelpDeed deed) const { return *m_actions.at(deed); }

protected:
    void changeEvent(QEvent* p_event) override;
    void closeEvent(QCloseEvent* p_event) override;
    bool eventFilter(QObject* p_object, QEvent* p_event) override;

private slots:
    void complete_page();
    void part_from_dialog(bool visible);
    void show_title(const QString& title);
    void say_where_it_leads(const QString& link);

private:
    typedef QList<QKeySequence> Keys;

    void make_actions();
    void make_tool_bar();
    void add_action(
        HelpDeed deed, const char* icon_name, QAction* p_action, const QString& text, const Keys& keys);
    void add_action(HelpDeed deed, const char* icon_name, const QString& text, const Keys& keys,
        void (HelpWindow::*slot)());
    void come_to_front();
    void dress_pages();
    void fill_shortcuts();

    void show_contents();
    void larger();
    void smaller();
    void first_size();
    void zoom(double factor);
    void find(QWebPage::FindFlags flags);
    void find_next();
    void find_previous();
    void mark_found();
    void print();
    void open_outside();
    void leave();

    HelpPages m_pages;
    // Children.
    housekeeping::gui::QHelpWebView* m_p_view;
    FindBar* m_p_find_bar;
    QString m_shortcuts; // as they stand in the page; empty if none do
    std::map<HelpDeed, QAction*> m_actions; // of the window or of the view
};

} // namespace terrain
