#include "MainWindow.h"

#include "BoreholesController.h"
#include "BoreholesDocument.h"
#include "BoreholesFile.h"
#include "BoreholesMap.h"
#include "BoreholesModel.h"
#include "BoreholesPanel.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtCore/QFileInfo>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

namespace boreholes {

namespace gui = housekeeping::gui;

namespace {

const QSize s_first_size(1000, 560);
const int s_first_panel_width = 380; ///< pixels

/// Asks all subscribers for entries of a menu bar or tool bar, or, without a target, for the undo and redo
/// actions.
void collect(int kind, QWidget* p_target, QWidget* p_owner)
{
    gui::MainWindowMessage* const p_message = gui::MainWindowMessage::instance();
    p_message->kind(kind);
    p_message->target(p_target);
    p_message->owner(p_owner);
    housekeeping::Message::dispatch(p_message); // deletes it, which is when the entries are added
}

BoreholesDocument* current_document()
{
    return BoreholesController::instance().document();
}

} // namespace

// --- making the window

MainWindow::MainWindow()
    : m_p_splitter(new QSplitter)
    , m_p_file(new QMenu(tr("&File"), this))
    , m_p_edit(new QMenu(tr("&Edit"), this))
{
    m_panelTabBar = new QTabBar;
    m_panelTabBar->setToolTip(tr("Double-click to see the panel in a window of its own"));
    m_panelStack = new QStackedWidget;
    auto* const p_area = new QWidget;
    auto* const p_layout = new QVBoxLayout(p_area);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->addWidget(m_panelTabBar);
    p_layout->addWidget(m_panelStack);
    m_p_splitter->addWidget(p_area);
    setCentralWidget(m_p_splitter);
    resize(s_first_size);

    // By name: these slots of the base are private, and Qt finds them all the same.
    connect(m_panelTabBar, SIGNAL(currentChanged(int)), this, SLOT(currentTabChanged(int)));
    connect(m_panelTabBar, &QTabBar::tabBarDoubleClicked, this, [this](int tab) {
        QMetaObject::invokeMethod(this, "slotTabBarMoved", Q_ARG(QString, m_panelTabBar->tabText(tab)));
    });
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    gui::MainWindowMessage::subscribe(this, Qt::AutoConnection);
}

void MainWindow::take_in(BoreholesMap* p_map, BoreholesPanel* p_panel)
{
    addPanel(p_panel, QString()); // its window title names it
    m_p_splitter->addWidget(p_map);
    m_p_splitter->setStretchFactor(1, 1);
    m_p_splitter->setSizes({s_first_panel_width, s_first_size.width() - s_first_panel_width});
}

void MainWindow::build()
{
    m_p_file->addAction(
        tr("&New"), this, [this] { open(QString()); }, QKeySequence::New);
    m_p_file->addAction(tr("&Open…"), this, &MainWindow::ask_and_open, QKeySequence::Open);
    m_p_file->addAction(tr("&Save As…"), this, &MainWindow::ask_and_save, QKeySequence::Save);
    m_p_file->addSeparator();
    m_p_file->addAction(tr("&Preferences…"), this, &MainWindow::show_preferences);
    m_p_file->addSeparator();
    m_p_file->addAction(tr("&Quit"), this, &MainWindow::close, QKeySequence::Quit);

    // gui::HelpManager::instance() here would add a Help menu, whose pages a host brings with a launcher of
    // its own.
    collect(gui::MainWindowMessage::MenuBar, menuBar(), this);
    QToolBar* const p_tool_bar = addToolBar(tr("Tools"));
    p_tool_bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    collect(gui::MainWindowMessage::ToolBar, p_tool_bar, this);
    const auto sp_undo_redo = gui::UndoRedoPresentation::instance();
    for (QAction* const p_action :
        {sp_undo_redo->undo_tool_bar_action(), sp_undo_redo->redo_tool_bar_action()}) {
        if (auto* const p_button = qobject_cast<QToolButton*>(p_tool_bar->widgetForAction(p_action))) {
            p_button->setPopupMode(QToolButton::MenuButtonPopup); // the list drops down from the arrow
        }
    }
    collect(gui::MainWindowMessage::EditActions, nullptr, this);
    readSettings(); // when all panels are there
}

/// Every part of the program enters what it has to offer; these are the window's own.
void MainWindow::handle_message(housekeeping::gui::MainWindowMessage& message)
{
    if (message.kind() == gui::MainWindowMessage::MenuBar) {
        message.insertMenu(0, m_p_file);
        message.insertMenu(1, m_p_edit);
    } else if (message.kind() == gui::MainWindowMessage::ToolBar) {
        const auto sp_undo_redo = gui::UndoRedoPresentation::instance();
        message.addAction(sp_undo_redo->undo_tool_bar_action());
        message.addAction(sp_undo_redo->redo_tool_bar_action());
        message.addSeparator();
    }
}

/// Their shortcuts act on the widget that has the keyboard, so each one that may get it needs them.
void MainWindow::take_undo_redo_actions(QAction* p_undo, QAction* p_redo)
{
    for (QWidget* const p_widget : findChildren<QWidget*>()) {
        if (p_widget->focusPolicy() != Qt::NoFocus) {
            p_widget->addActions({p_undo, p_redo});
        }
    }
}

// --- documents

bool MainWindow::open(const QString& path)
{
    if (!may_close()) {
        return false;
    }
    auto& documents = housekeeping::DocumentManager::instance();
    try {
        // All that can fail comes first: the old document stays until there is a new one.
        const Boreholes boreholes = path.isEmpty() ? Boreholes() : read_boreholes(path);
        const housekeeping::DocumentId old = documents.current_document_id();
        auto& document = dynamic_cast<BoreholesDocument&>(documents.create_document());
        document.boreholes().boreholes(boreholes);
        document.file(path);
        if (old != housekeeping::DocumentId::null()) {
            documents.destroy_document(old, true, false, false, document.id());
        }
        documents.current_document(
            document.id()); // the controllers, and with them the views, look at it anew
        show_title();
        return true;
    } catch (const std::exception& exception) {
        housekeeping::ErrorHandler::instance().message(tr("Open").toStdString(), exception, QMessageBox::Ok);
        return false;
    }
}

bool MainWindow::save(const QString& path)
{
    BoreholesDocument& document = *current_document();
    try {
        write_boreholes(path, document.boreholes().boreholes());
        document.file(path);
        document.set_modified(false);
        show_title();
        return true;
    } catch (const std::exception& exception) {
        housekeeping::ErrorHandler::instance().message(
            tr("Save As").toStdString(), exception, QMessageBox::Ok);
        return false;
    }
}

void MainWindow::ask_and_open()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open"), QString(), tr("Boreholes (*.csv)"));
    if (!path.isEmpty()) {
        open(path);
    }
}

bool MainWindow::ask_and_save()
{
    const QString proposed = current_document()->file();
    const QString path = QFileDialog::getSaveFileName(this, tr("Save As"), proposed, tr("Boreholes (*.csv)"));
    return !path.isEmpty() && save(path);
}

/// Whether the document may go: it has no changes, or they were saved, or the user does not want them. The
/// library asks it, too, before it starts the program anew.
bool MainWindow::may_close()
{
    if (!current_document() || !current_document()->is_modified()) {
        return true;
    }
    switch (QMessageBox::question(this, tr("Boreholes"), tr("Save the changes?"),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel)) {
    case QMessageBox::Save:
        return ask_and_save();
    case QMessageBox::Discard:
        return true;
    default:
        return false;
    }
}

void MainWindow::closeEvent(QCloseEvent* p_event)
{
    p_event->setAccepted(may_close());
    if (p_event->isAccepted()) {
        writeSettings(); // while the floating windows are there
    }
}

/// Idle comes when a command has been done, undone or redone.
void MainWindow::handle_message(housekeeping::DocumentMessage& message)
{
    if (message.doc_change_type() == housekeeping::DocumentMessage::Idle) {
        show_title();
    }
}

void MainWindow::show_title()
{
    const BoreholesDocument& document = *current_document();
    const QString name
        = document.file().isEmpty() ? tr("New") : QFileInfo(document.file()).completeBaseName();
    setWindowTitle(tr("%1[*] - Boreholes").arg(name));
    setWindowModified(document.is_modified());
}

// --- preferences

void MainWindow::show_preferences()
{
    if (!m_p_preferences) {
        m_p_preferences = new gui::PreferencesDialog(this); // with a page of each factory that is registered
    }
    m_p_preferences->pre_show_dialog();
    m_p_preferences->show();
}

} // namespace boreholes
