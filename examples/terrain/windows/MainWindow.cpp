#include "windows/MainWindow.h"

#include "commands/CommandsController.h"
#include "documents/TerrainDocument.h"
#include "help/TerrainQuickHelp.h"
#include "panels/HistoryPanel.h"
#include "panels/LayersPanel.h"
#include "panels/PanelTabBar.h"
#include "panels/QuickHelpPanel.h"
#include "panels/StatisticsPanel.h"
#include "scene/SceneView.h"
#include "views/TerrainView.h"
#include "windows/BrushBar.h"
#include "windows/Closing.h"
#include "windows/ContextHelp.h"
#include "windows/Deeds.h"
#include "windows/DocumentBox.h"
#include "windows/DocumentFiles.h"
#include "windows/DocumentViews.h"
#include "windows/DroppedFiles.h"
#include "windows/LibraryEntries.h"
#include "windows/MainMenus.h"
#include "windows/MapStatus.h"
#include "windows/MapTools.h"
#include "windows/RecentMenu.h"
#include "windows/StartPage.h"
#include "windows/WindowPlace.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QMimeData>
#include <QtCore/QSettings>
#include <QtGui/QCloseEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

namespace terrain {

namespace gui = housekeeping::gui;

namespace {

const QSize s_first_size(1300, 780);
const int s_first_panel_width = 410; ///< pixels; all tabs fit
const int s_message_time = 6000; ///< milliseconds

// Keys of the settings.
const char* const s_geometry = "MainWindow/geometry";
const char* const s_panel_width = "MainWindow/panelWidth";

housekeeping::DocumentManager& documents()
{
    return housekeeping::DocumentManager::instance();
}

QString product()
{
    return QString::fromStdString(pkBase::pkProductInfo::const_instance().marketing_name());
}

/// Commands are entered before they run, and their names would invite people to undo them while they do.
void keep_undo_plain_while_busy()
{
    const auto sp_undo_redo = gui::UndoRedoPresentation::instance();
    if (sp_undo_redo && documents().documents_busy()) {
        sp_undo_redo->enable_edit_actions(false);
    }
}

/// Asks for entries of a menu bar or a tool bar, or, without a target, for the undo and redo actions.
void collect(int kind, QWidget* p_target, QWidget* p_owner)
{
    gui::MainWindowMessage* const p_message = gui::MainWindowMessage::instance();
    p_message->kind(kind);
    p_message->target(p_target);
    p_message->owner(p_owner);
    housekeeping::Message::dispatch(p_message); // deletes it, which is when the entries are added
}

} // namespace

// --- making the window

MainWindow::MainWindow()
    : m_p_deeds(new Deeds(this))
    , m_p_files(
          new DocumentFiles(this, [this](const TerrainDocument& document) { show_new_document(document); }))
    , m_p_closing(new Closing(this, *m_p_files))
    , m_p_recent(new RecentMenu(m_p_files->recent(), this))
    , m_p_views(new DocumentViews(m_p_files->recent()))
    , m_p_document_box(new DocumentBox(this))
    , m_p_map_status(new MapStatus(*statusBar()))
    , m_p_panels(new Panels(this))
    , m_general_help(std::make_unique<TerrainQuickHelp>())
{
    setAcceptDrops(true);
    make_panel_area();
    connect_deeds();
    resize(s_first_size);
    readSettings();
    connect(this, &MainWindow::dropped, this, &ask_to_insert);
    connect(m_p_files, &DocumentFiles::written, this, &MainWindow::show_written);
    connect(m_p_views, &DocumentViews::scene_made, this,
        [this](const SceneView& scene) { add_edit_actions(*scene.focusProxy()); });
    connect(m_p_recent, &RecentMenu::chosen, m_p_files, QOverload<const QString&>::of(&DocumentFiles::open));
    connect(&m_p_views->start_page(), &StartPage::chosen, m_p_files,
        QOverload<const QString&>::of(&DocumentFiles::open));
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    housekeeping::DocumentHistoryMsg::subscribe(this, Qt::AutoConnection);
    housekeeping::FilesInsertMessage::subscribe(this, Qt::AutoConnection);
    for (const housekeeping::DocumentId& id : documents().current_documents()) {
        show_new_document(dynamic_cast<TerrainDocument&>(documents().document_from_id(id)));
    }
    show_current_document(housekeeping::DocumentId::null());
}

MainWindow::~MainWindow()
{
    // After a fatal error a command may still be at work.
    CommandsController::instance().runner().abandon();
}

void MainWindow::make_panel_area()
{
    auto* const p_tabs = new PanelTabBar;
    m_panelTabBar = p_tabs;
    m_panelStack = new QStackedWidget;
    auto* const p_area = new QWidget;
    auto* const p_layout = new QVBoxLayout(p_area);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->setSpacing(0);
    p_layout->addWidget(m_panelTabBar);
    p_layout->addWidget(m_panelStack);
    m_p_splitter = new QSplitter;
    m_p_splitter->addWidget(p_area);
    m_p_splitter->addWidget(m_p_views);
    m_p_splitter->setStretchFactor(1, 1);
    m_p_splitter->setCollapsible(1, false);
    m_p_splitter->setSizes({s_first_panel_width, s_first_size.width() - s_first_panel_width});
    setCentralWidget(m_p_splitter);

    // By name: these slots are private, and Qt finds them all the same.
    connect(m_panelTabBar, SIGNAL(currentChanged(int)), this, SLOT(currentTabChanged(int)));
    connect(p_tabs, SIGNAL(torn_off(QString)), this, SLOT(slotTabBarMoved(QString)));

    for (QWidget* const p_panel : m_p_panels->all()) {
        addPanel(p_panel, QString());
    }
    const auto choose = [](const housekeeping::DocumentId& id) { documents().current_document(id); };
    connect(m_p_panels, &Panels::chosen, this, choose);
    connect(m_p_document_box, &DocumentBox::chosen, this, choose);
}

void MainWindow::build_menus()
{
    new MainMenus(*m_p_deeds, m_p_recent, this);
    connect_help(); // whose menu is among those
    collect(gui::MainWindowMessage::MenuBar, menuBar(), this);
    make_tool_bar();
    collect(gui::MainWindowMessage::EditActions, nullptr, this);
    give_icons_to_library_entries(*this);
    for (QWidget* const p_panel : m_p_panels->all()) {
        p_panel->addActions(ContextHelp::key_actions(*this)); // for when it floats
    }
}

void MainWindow::make_tool_bar()
{
    m_p_tool_bar = addToolBar(tr("Tools"));
    m_p_tool_bar->setObjectName("tools");
    m_p_tool_bar->setMovable(false);
    m_p_tool_bar->setIconSize(QSize(24, 24));
    collect(gui::MainWindowMessage::ToolBar, m_p_tool_bar, this);
    m_p_tool_bar->addWidget(m_p_document_box);
    m_p_tool_bar->addWidget(&m_p_views->tools().bar()); // takes the room that is left
    m_p_tool_bar->addAction(&action(Deed::QuickHelp));
    if (const auto sp_undo_redo = gui::UndoRedoPresentation::instance()) {
        // A click undoes; the lists drop down from the arrows beside.
        for (QAction* const p_action :
            {sp_undo_redo->undo_tool_bar_action(), sp_undo_redo->redo_tool_bar_action()}) {
            if (auto* p_button = qobject_cast<QToolButton*>(m_p_tool_bar->widgetForAction(p_action))) {
                p_button->setPopupMode(QToolButton::MenuButtonPopup);
            }
        }
    }
}

void MainWindow::take_undo_redo_actions(QAction* p_undo, QAction* p_redo)
{
    m_edit_actions = {p_undo, p_redo};
    add_edit_actions(*m_panelTabBar);
    for (QWidget* const p_panel : m_p_panels->all()) {
        for (QWidget* const p_widget : p_panel->findChildren<QWidget*>()) {
            add_edit_actions(*p_widget);
        }
    }
}

/// Their shortcuts act on the widget that has the keyboard, so each one that may get it needs them.
void MainWindow::add_edit_actions(QWidget& widget) const
{
    if (widget.focusPolicy() != Qt::NoFocus) {
        widget.addActions(m_edit_actions);
    }
}

void MainWindow::connect_deeds()
{
    const auto on = [this](Deed deed, auto slot) { connect(&action(deed), &QAction::triggered, this, slot); };
    const auto go = [this](int places) { documents().current_document(m_p_document_box->neighbour(places)); };
    on(Deed::Preferences, &MainWindow::show_preferences);
    on(Deed::Quit, &MainWindow::close);
    on(Deed::PreviousDocument, [go] { go(-1); });
    on(Deed::NextDocument, [go] { go(1); });
    on(Deed::QuickHelp, [this] { show_panel(quick_help()); });
    on(Deed::Statistics, [this] { show_panel(statistics()); });
    on(Deed::Layers, [this] { show_panel(layers()); });
    m_p_files->obey(*m_p_deeds);
    m_p_views->obey(*m_p_deeds);
}

/// By name: the help manager's slots are protected, and Qt finds them all the same.
void MainWindow::connect_help()
{
    gui::HelpManager& help = gui::HelpManager::instance();
    connect(&action(Deed::Report), SIGNAL(triggered()), &help, SLOT(newJIRAIssue()));
    connect(&action(Deed::Restart), SIGNAL(triggered()), &help, SLOT(restart()));
    connect(&help, &gui::HelpManager::showQuickHelp, this, [this] { show_panel(quick_help()); });
    new ContextHelp(this);
}

void MainWindow::show_preferences()
{
    if (!m_p_preferences) {
        m_p_preferences = new gui::PreferencesDialog(this);
        m_p_preferences->addActions(ContextHelp::key_actions(*this));
    }
    if (!m_p_preferences->isVisible()) {
        m_p_preferences->pre_show_dialog();
        m_p_preferences->show();
    }
    m_p_preferences->raise();
    m_p_preferences->activateWindow();
}

// --- panels and settings

void MainWindow::show_panel(QWidget& panel)
{
    if (m_panelStack->indexOf(&panel) < 0) { // it floats
        panel.window()->raise();
        panel.window()->activateWindow();
        return;
    }
    for (int tab = 0; tab < m_panelTabBar->count(); ++tab) {
        if (m_panelTabBar->tabText(tab) == panel.windowTitle()) {
            m_panelTabBar->setCurrentIndex(tab);
        }
    }
}

void MainWindow::readSettings()
{
    restore_place(*this, QSettings().value(s_geometry).toByteArray());
    const int width = qBound(0, QSettings().value(s_panel_width, s_first_panel_width).toInt(), this->width());
    m_p_splitter->setSizes({width, std::max(this->width() - width, 1)});
    AbstractMainWindow::readSettings();
}

void MainWindow::writeSettings()
{
    QSettings settings;
    settings.setValue(s_geometry, saveGeometry());
    settings.setValue(s_panel_width, m_p_splitter->sizes().first());
    AbstractMainWindow::writeSettings(); // which stores these too, and cares for the file
}

// --- documents

bool MainWindow::open(const QString& path)
{
    return m_p_files->open(path);
}

void MainWindow::open(const QStringList& paths)
{
    m_p_files->open(paths);
}

bool MainWindow::write_export(const QString& path)
{
    return m_p_files->write_export(path);
}

void MainWindow::close_document()
{
    m_p_files->close_current();
}

void MainWindow::show_new_document(const TerrainDocument& document)
{
    TerrainView& new_view = m_p_views->add(document.id());
    add_edit_actions(new_view);
    m_document_help[document.id()] = std::make_unique<TerrainQuickHelp>(document);
    m_p_map_status->follow(new_view);
    m_p_panels->follow(new_view);
    show_current_document(housekeeping::DocumentId::null());
}

void MainWindow::show_current_document(const housekeeping::DocumentId& gone)
{
    std::vector<housekeeping::DocumentId> list = documents().current_documents();
    list.erase(std::remove(list.begin(), list.end(), gone), list.end());
    housekeeping::DocumentId current = documents().current_document_id();
    if (current == gone) {
        current = housekeeping::DocumentId::null();
    }
    const bool is_open = current != housekeeping::DocumentId::null();
    m_p_document_box->list(list, current);
    m_p_views->show_document(current);
    m_p_panels->show(list, current, view());
    m_p_deeds->document_open(is_open);
    m_p_map_status->show(view());
    show_title(current);
    keep_undo_plain_while_busy();
}

void MainWindow::show_written(const QString& path)
{
    const auto& document = dynamic_cast<const TerrainDocument&>(documents().current_document());
    m_document_help.erase(document.id()); // it may have another name now
    m_document_help[document.id()] = std::make_unique<TerrainQuickHelp>(document);
    show_current_document(housekeeping::DocumentId::null());
    statusBar()->showMessage(tr("Written: %1").arg(path), s_message_time);
}

void MainWindow::show_title(const housekeeping::DocumentId& current)
{
    if (current == housekeeping::DocumentId::null()) {
        setWindowTitle(product());
        setWindowModified(false);
        return;
    }
    const auto& document = dynamic_cast<const TerrainDocument&>(documents().document_from_id(current));
    const QString title = document.reduction() > 1 ? tr("%1[*] (overview) - %2") : tr("%1[*] - %2");
    setWindowTitle(title.arg(QString::fromStdString(document.title()).replace("[*]", "[*][*]"), product()));
    setWindowModified(document.is_modified());
}

/// The marks of busy documents nest, so this comes once, however many commands were undone.
void MainWindow::show_changes()
{
    history().refresh(); // the descriptions tell now what came out
    show_title(documents().current_document_id());
}

void MainWindow::handle_message(housekeeping::DocumentMessage& message)
{
    using housekeeping::DocumentMessage;
    switch (message.doc_change_type()) {
    case DocumentMessage::CurrentChanged:
        show_current_document(housekeeping::DocumentId::null());
        break;
    case DocumentMessage::Destroyed:
        m_document_help.erase(message.id());
        m_p_views->remove(message.id());
        show_current_document(message.id());
        break;
    case DocumentMessage::Idle:
        show_changes();
        break;
    default:
        break;
    }
}

void MainWindow::handle_message(housekeeping::DocumentHistoryMsg&)
{
    keep_undo_plain_while_busy();
}

void MainWindow::handle_message(housekeeping::FilesInsertMessage& message)
{
    for (const std::string& file : message.files()) {
        open(QString::fromStdString(file));
    }
}

// --- what the window shows

QAction& MainWindow::action(Deed deed) const
{
    return m_p_deeds->action(deed);
}

TerrainView* MainWindow::view() const
{
    return m_p_views->current();
}

QString MainWindow::reading() const
{
    return m_p_map_status->reading();
}

// --- events

bool MainWindow::may_close()
{
    return m_p_closing->may_close();
}

void MainWindow::closeEvent(QCloseEvent* p_event)
{
    if (!m_p_closing->close_event_may_go_on()) {
        p_event->ignore();
        return;
    }
    writeSettings(); // while the floating windows are there
    p_event->setAccepted(Closing::close_documents());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* p_event)
{
    if (!urls_of_files(*p_event->mimeData()).empty()) {
        p_event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* p_event)
{
    p_event->acceptProposedAction();
    emit dropped(urls_of_files(*p_event->mimeData()));
}

} // namespace terrain
