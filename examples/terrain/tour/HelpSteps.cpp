#include "tour/HelpSteps.h"

#include "help/HelpPages.h"
#include "help/HelpTopics.h"
#include "help/HelpWindow.h"
#include "help/TerrainQuickHelp.h"
#include "panels/HistoryPanel.h"
#include "tour/UserInput.h"
#include "windows/DocumentBox.h"
#include "windows/MainWindow.h"

#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/QPKAboutBox.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtCore/QObject>
#include <QtWebKit/QWebElement>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_rows_of_the_library = 2; ///< of the quick help, for undo and redo
const int s_words_of_a_page = 40; ///< at least

/// Chooses an entry of the Help menu, which is the last one. @param text its beginning in the library's
/// sources
void choose_help(const MainWindow& window, const char* text)
{
    const QString begin = housekeeping::gui::HelpManager::tr(text);
    for (QAction* const p_action : window.menuBar()->actions().last()->menu()->actions()) {
        if (p_action->text().startsWith(begin)) {
            p_action->trigger();
            return;
        }
    }
}

HelpWindow* help_window()
{
    for (QWidget* const p_widget : QApplication::topLevelWidgets()) {
        if (auto* const p_window = qobject_cast<HelpWindow*>(p_widget)) {
            return p_window;
        }
    }
    return nullptr;
}

/// Whether the help shows the page of a topic.
Checks shows_topic(TourStage& stage, Topic topic)
{
    HelpWindow* const p_window = help_window();
    stage.own_window = p_window;
    if (!p_window) {
        return {{QObject::tr("there is a help window"), false}};
    }
    const QString page = p_window->view().url().fileName();
    const QString expected = help_page(help_key(topic));
    const QString text = p_window->view().page()->mainFrame()->toPlainText();
    return {{QObject::tr("the help window is shown"), p_window->isVisible()},
        {QObject::tr("it shows the page \"%1\", expected \"%2\"").arg(page, expected), page == expected},
        {QObject::tr("there is such a page"), HelpPages::exists(p_window->view().url())},
        {QObject::tr("there is something to read"),
            text.split(' ', Qt::SkipEmptyParts).size() >= s_words_of_a_page}};
}

void close_help()
{
    if (HelpWindow* const p_window = help_window()) {
        p_window->close();
    }
}

} // namespace

void open_help(TourStage& stage)
{
    give_keyboard(stage.window.document_box());
    choose_help(stage.window, "&Contents...");
}

std::vector<TourCheck> see_contents(TourStage& stage)
{
    return shows_topic(stage, Topic::Contents);
}

void open_help_about_panel(TourStage& stage)
{
    stage.window.show_panel(stage.window.history());
    give_keyboard(stage.window.history().entries());
    choose_help(stage.window, "&Contents...");
}

std::vector<TourCheck> see_help_about_panel(TourStage& stage)
{
    return shows_topic(stage, Topic::HistoryPanel);
}

void open_shortcuts(TourStage& stage)
{
    choose_help(stage.window, "&Shortcuts...");
}

std::vector<TourCheck> see_shortcuts(TourStage& stage)
{
    Checks checks = shows_topic(stage, Topic::KeyboardShortcuts);
    if (const HelpWindow* const p_window = help_window()) {
        const int rows = p_window->view().page()->mainFrame()->findAllElements("table.keys tbody tr").count();
        const int expected = TerrainQuickHelp::rows(true) + s_rows_of_the_library;
        checks.push_back(
            {QObject::tr("it lists %1 shortcuts, expected %2").arg(rows).arg(expected), rows == expected});
    }
    return checks;
}

void open_about_box(TourStage& stage)
{
    close_help();
    choose_help(stage.window, "&About ");
}

std::vector<TourCheck> see_about_box(TourStage& stage)
{
    const auto* const p_box = qobject_cast<pkBase::QPKAboutBox*>(QApplication::activeModalWidget());
    stage.own_window = QApplication::activeModalWidget();
    if (!p_box) {
        return {{QObject::tr("there is an about box"), false}};
    }
    const auto& product = pkBase::pkProductInfo::const_instance();
    const QString name = QString::fromStdString(product.marketing_name());
    const QString version = QString::fromStdString(product.version());
    return {{QObject::tr("the about box is shown"), p_box->isVisible()},
        {QObject::tr("its title \"%1\" holds \"%2\"").arg(p_box->windowTitle(), name),
            p_box->windowTitle().contains(name)},
        {QObject::tr("it tells the version, %1").arg(version), p_box->facts().contains(version)},
        {QObject::tr("it tells where the log is"), !p_box->log_file().isEmpty()}};
}

void open_log(TourStage& stage)
{
    choose_help(stage.window, "Show &Log File...");
}

std::vector<TourCheck> see_log(TourStage& stage)
{
    pkBase::QLogFileViewer& viewer = pkBase::QLogFileViewer::instance();
    stage.own_window = &viewer;
    return {{QObject::tr("the log is shown"), viewer.isVisible()},
        {QObject::tr("it tells which file was opened"), viewer.text().contains(stage.first_file)},
        {QObject::tr("it tells where it is"), !viewer.path().isEmpty()}};
}

} // namespace terrain
