#include "windows/MainWindow.h"

#include "commands/CommandsController.h"
#include "documents/ExportTerrain.h"
#include "documents/OpenTerrain.h"
#include "documents/TerrainDocument.h"
#include "help/TerrainQuickHelp.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/PanelTabBar.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "views/TerrainView.h"
#include "windows/Deeds.h"
#include "windows/DocumentBox.h"
#include "windows/DocumentViews.h"
#include "windows/MainMenus.h"
#include "windows/Questions.h"
#include "windows/WaitCursor.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/gui/MainWindowMessage.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>
#include <tarqa/utilities/Exception.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QMimeData>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QSettings>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <utility>

namespace terrain {

namespace gui = housekeeping::gui;

namespace {

const QSize s_first_size(1180, 780);
const int s_first_panel_width = 290; ///< pixels
const int s_message_time = 6000; ///< milliseconds
const int s_status_gap = 24; ///< pixels

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

/// Does @p work, which takes a while. What goes wrong is shown in a box. @return whether all went well
template <class Work>
bool done(const QString& title, Work work)
{
    housekeeping::ErrorHandler& errors = housekeeping::ErrorHandler::instance();
    try {
        const WaitCursor cursor;
        work();
        return true;
    } catch (const tarqa::Exception& exception) {
        errors.message(title.toStdString(), exception, QMessageBox::Ok);
    } catch (const std::exception& exception) {
        errors.message(title.toStdString(), exception, QMessageBox::Ok);
    }
    return false;
}

gui::UrlList urls_of_files(const QMimeData& data)
{
    gui::UrlList urls;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            urls.push_back(url.toString(QUrl::FullyEncoded).toStdString());
        }
    }
    return urls;
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
    , m_p_views(new DocumentViews)
    , m_p_document_box(new DocumentBox(this))
    , m_general_help(std::make_unique<TerrainQuickHelp>())
{
    setAcceptDrops(true);
    make_panel_area();
    make_status_bar();
    connect_deeds();
    resize(s_first_size);
    readSettings();
    connect(this, &MainWindow::dropped, this, &MainWindow::insert_files);
    connect(
        &CommandsController::instance().runner(), &CommandRunner::finished, this, &MainWindow::close_after);
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    housekeeping::DocumentHistoryMsg::subscribe(this, Qt::AutoConnection);
    housekeeping::FilesInsertMessage::subscribe(this, Qt::AutoConnection);
    for (const housekeeping::DocumentId& id : open_documents()) {
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

    m_p_home = new HomePanel;
    m_p_quick_help = new QuickHelpPanel;
    m_p_history = new HistoryPanel;
    for (QWidget* const p_panel : panels()) {
        addPanel(p_panel, QString());
    }
    const auto choose = [](const housekeeping::DocumentId& id) { documents().current_document(id); };
    connect(m_p_home, &HomePanel::chosen, this, choose);
    connect(m_p_document_box, &DocumentBox::chosen, this, choose);
}

void MainWindow::build_menus()
{
    new MainMenus(*m_p_deeds, this);
    collect(gui::MainWindowMessage::MenuBar, menuBar(), this);
    make_tool_bar();
    collect(gui::MainWindowMessage::EditActions, nullptr, this);
    for (const KeyBinding& binding : key_bindings()) {
        if (binding.scope == Scope::Map) {
            m_p_views->addAction(&action(binding.deed)); // its key works where the map has the keyboard
        }
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
    auto* const p_spring = new QWidget;
    p_spring->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_p_tool_bar->addWidget(p_spring);
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
    for (QWidget* const p_panel : panels()) {
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

void MainWindow::make_status_bar()
{
    m_p_reading = new QLabel;
    m_p_reading->setAccessibleName(tr("Place under the pointer"));
    m_p_scale = new QLabel;
    m_p_scale->setIndent(s_status_gap);
    m_p_scale->setToolTip(tr("Pixels for a cell, in percent"));
    statusBar()->addPermanentWidget(m_p_reading);
    statusBar()->addPermanentWidget(m_p_scale);
}

void MainWindow::connect_deeds()
{
    const auto on = [this](Deed deed, auto slot) { connect(&action(deed), &QAction::triggered, this, slot); };
    const auto on_map = [this, on](Deed deed, void (TerrainView::*slot)()) {
        on(deed, [this, slot] {
            if (TerrainView* const p_view = view()) {
                (p_view->*slot)();
            }
        });
    };
    const auto go = [this](int places) { documents().current_document(m_p_document_box->neighbour(places)); };
    on(Deed::Open, &MainWindow::ask_and_open);
    on(Deed::Export, &MainWindow::ask_and_export);
    on(Deed::Close, &MainWindow::close_document);
    on(Deed::Quit, &MainWindow::close);
    on_map(Deed::ZoomIn, &TerrainView::zoom_in);
    on_map(Deed::ZoomOut, &TerrainView::zoom_out);
    on_map(Deed::Fit, &TerrainView::fit);
    on_map(Deed::PanLeft, &TerrainView::pan_left);
    on_map(Deed::PanRight, &TerrainView::pan_right);
    on_map(Deed::PanUp, &TerrainView::pan_up);
    on_map(Deed::PanDown, &TerrainView::pan_down);
    on(Deed::PreviousDocument, [go] { go(-1); });
    on(Deed::NextDocument, [go] { go(1); });
    on(Deed::QuickHelp, [this] { show_panel(*m_p_quick_help); });
}

// --- panels and settings

std::vector<QWidget*> MainWindow::panels() const
{
    return {m_p_home, m_p_quick_help, m_p_history};
}

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
    const QSettings settings;
    restoreGeometry(settings.value(s_geometry).toByteArray());
    const int width = settings.value(s_panel_width, s_first_panel_width).toInt();
    m_p_splitter->setSizes({width, std::max(this->width() - width, 1)});
    AbstractMainWindow::readSettings();
}

void MainWindow::writeSettings()
{
    QSettings settings;
    settings.setValue(s_geometry, saveGeometry());
    settings.setValue(s_panel_width, m_p_splitter->sizes().first());
    AbstractMainWindow::writeSettings();
}

// --- documents

bool MainWindow::open(const QString& path)
{
    return done(tr("Open"), [this, &path] {
        const std::string file = path.toStdString();
        TerrainDocument& document = open_terrain(file);
        try {
            show_new_document(document);
        } catch (...) {
            // A document that nobody sees could never be closed.
            documents().destroy_document(document.id(), true, false, false, housekeeping::DocumentId::null());
            throw;
        }
        log_opened(document, file);
    });
}

void MainWindow::open(const QStringList& paths)
{
    for (const QString& path : paths) {
        open(path);
    }
}

bool MainWindow::write_export(const QString& path)
{
    if (!is_export_name(path.toStdString())) {
        housekeeping::ErrorHandler::instance().message(tr("Export").toStdString(),
            tr("\"%1\" is not written: the name must end in \".tif\"").arg(path).toStdString(),
            QMessageBox::Ok);
        return false;
    }
    const bool written = done(tr("Export"), [&path] {
        export_terrain(dynamic_cast<TerrainDocument&>(documents().current_document()), path.toStdString());
    });
    if (written) {
        documents().current_document().set_modified(false);
        show_title(documents().current_document_id());
        statusBar()->showMessage(tr("Written: %1").arg(path), s_message_time);
    }
    return written;
}

void MainWindow::ask_and_open()
{
    open(ask_for_rasters(this));
}

bool MainWindow::ask_and_export()
{
    if (!current_document_is_free(tr("Export"))) {
        return false;
    }
    const QString file = ask_for_export_file(this);
    return !file.isEmpty() && write_export(file);
}

void MainWindow::close_document()
{
    const housekeeping::DocumentId id = documents().current_document_id();
    if (current_document_is_free(tr("Close")) && may_lose(id)) {
        documents().destroy_document(id, false, false, false, housekeeping::DocumentId::null());
    }
}

/// Whether there is a current document that no command is running on; says so if one is.
bool MainWindow::current_document_is_free(const QString& title)
{
    const housekeeping::DocumentId id = documents().current_document_id();
    if (id == housekeeping::DocumentId::null()) {
        return false;
    }
    if (!documents().document_busy(id)) {
        return true;
    }
    say_that_it_is_busy(title,
        tr("\"%1\" is busy. Wait until the running command has ended, or cancel it.")
            .arg(QString::fromStdString(documents().current_document().title())));
    return false;
}

/// Whether a document may be closed: it has no changes that are not written, or the user does not want them.
bool MainWindow::may_lose(const housekeeping::DocumentId& id)
{
    const auto& document = dynamic_cast<const TerrainDocument&>(documents().document_from_id(id));
    if (!document.is_modified()) {
        return true;
    }
    documents().current_document(id); // so that people see what they are asked about
    const QMessageBox::StandardButton answer
        = ask_about_changes(this, QString::fromStdString(document.short_title()));
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && ask_and_export());
}

void MainWindow::show_new_document(const TerrainDocument& document)
{
    TerrainView& new_view = m_p_views->add(document.id());
    add_edit_actions(new_view);
    m_document_help[document.id()] = std::make_unique<TerrainQuickHelp>(document);
    connect(&new_view, &TerrainView::reading_changed, m_p_reading, &QLabel::setText);
    const auto show_scale
        = [this](double scale) { m_p_scale->setText(tr("%1 %").arg(QString::number(scale * 100, 'f', 0))); };
    connect(&new_view, &TerrainView::scale_changed, m_p_scale, show_scale);
    show_current_document(housekeeping::DocumentId::null());
}

void MainWindow::show_current_document(const housekeeping::DocumentId& gone)
{
    std::vector<housekeeping::DocumentId> list = open_documents();
    list.erase(std::remove(list.begin(), list.end(), gone), list.end());
    housekeeping::DocumentId current = documents().current_document_id();
    if (current == gone) {
        current = housekeeping::DocumentId::null();
    }
    const bool is_open = current != housekeeping::DocumentId::null();
    m_p_document_box->list(list, current);
    m_p_home->list(list, current);
    m_p_views->show_document(current);
    m_p_quick_help->sheet().show_document(current);
    m_p_deeds->document_open(is_open);
    m_p_reading->clear();
    m_p_scale->setText(view() ? tr("%1 %").arg(QString::number(view()->scale() * 100, 'f', 0)) : QString());
    show_title(current);
    keep_undo_plain_while_busy();
}

void MainWindow::show_title(const housekeeping::DocumentId& current)
{
    if (current == housekeeping::DocumentId::null()) {
        setWindowTitle(product());
        setWindowModified(false);
        return;
    }
    const auto& document = dynamic_cast<const TerrainDocument&>(documents().document_from_id(current));
    setWindowTitle(tr("%1[*] - %2").arg(QString::fromStdString(document.title()), product()));
    setWindowModified(document.is_modified());
}

/// The marks of busy documents nest, so this comes once, however many commands were undone.
void MainWindow::show_changes(const housekeeping::DocumentId& document)
{
    m_p_views->refresh(document);
    m_p_history->refresh(); // the descriptions tell now what came out
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
        show_changes(message.id());
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

void MainWindow::insert_files(const housekeeping::gui::UrlList& urls)
{
    std::vector<std::string> files;
    for (const std::string& url : urls) {
        files.push_back(tarqa::utilities::url_to_filesystem(url));
    }
    auto* const p_message = housekeeping::FilesInsertMessage::instance();
    p_message->documentId(documents().current_document_id());
    p_message->files(files);
    housekeeping::Message::dispatch(p_message); // not posted: a file that cannot be opened opens a box
}

std::vector<housekeeping::DocumentId> MainWindow::open_documents()
{
    return documents().current_documents();
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
    return m_p_reading->text();
}

// --- events

bool MainWindow::may_close()
{
    if (m_asks_to_close) {
        return false;
    }
    const QScopedValueRollback<bool> asking(m_asks_to_close, true);
    CommandRunner& runner = CommandsController::instance().runner();
    runner.cancel();
    runner.wait();
    if (documents().documents_busy()) {
        say_that_it_is_busy(tr("Quit"), tr("A command is running. Wait until it has ended, or cancel it."));
        return false;
    }
    const std::vector<housekeeping::DocumentId> list = open_documents();
    return std::all_of(
        list.begin(), list.end(), [this](const housekeeping::DocumentId& id) { return may_lose(id); });
}

/// A command that failed before it could be cancelled keeps the window open: people are to see why.
void MainWindow::close_after(CommandRunner::Outcome outcome)
{
    if (std::exchange(m_closes_after_command, false) && outcome != CommandRunner::Outcome::Failed) {
        QTimer::singleShot(0, this, &QWidget::close);
    }
}

void MainWindow::closeEvent(QCloseEvent* p_event)
{
    CommandRunner& runner = CommandsController::instance().runner();
    if (runner.is_running()) {
        // Not waiting in here: Qt takes another request meanwhile for granted.
        m_closes_after_command = true;
        runner.cancel();
        p_event->ignore();
        return;
    }
    if (!may_close()) {
        p_event->ignore();
        return;
    }
    writeSettings(); // while the floating windows are there
    for (const housekeeping::DocumentId& id : open_documents()) {
        documents().destroy_document(id, false, false, false, housekeeping::DocumentId::null());
    }
    p_event->setAccepted(documents().num_documents() == 0);
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
