#include "windows/MainWindow.h"

#include "documents/ExportTerrain.h"
#include "documents/OpenTerrain.h"
#include "documents/TerrainDocument.h"
#include "help/TerrainQuickHelp.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "views/TerrainView.h"
#include "windows/Deeds.h"
#include "windows/DocumentBox.h"
#include "windows/DocumentViews.h"
#include "windows/WaitCursor.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtGui/QCloseEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>

namespace terrain {

namespace {

const QSize s_first_size(1180, 780);
const int s_message_time = 6000; ///< milliseconds
const int s_status_gap = 24; ///< pixels

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

QStringList local_files(const QMimeData& data)
{
    QStringList files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            files.append(url.toLocalFile());
        }
    }
    return files;
}

} // namespace

// --- making the window
// ----------------------------------------------------------------------------------------------

MainWindow::MainWindow()
    : m_p_deeds(new Deeds(this))
    , m_p_views(new DocumentViews)
    , m_p_document_box(new DocumentBox)
    , m_general_help(std::make_unique<TerrainQuickHelp>())
{
    setCentralWidget(m_p_views);
    setAcceptDrops(true);
    make_panels();
    make_menus();
    make_tool_bar();
    make_status_bar();
    connect_deeds();
    resize(s_first_size);
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
    for (const housekeeping::DocumentId& id : open_documents()) {
        show_new_document(dynamic_cast<TerrainDocument&>(documents().document_from_id(id)));
    }
    show_current_document(housekeeping::DocumentId::null());
}

MainWindow::~MainWindow() = default;

void MainWindow::make_panels()
{
    m_p_quick_help = new QuickHelpPanel;
    auto* const p_dock = new QDockWidget(tr("Quick Help"), this);
    p_dock->setObjectName("quick_help");
    p_dock->setWidget(m_p_quick_help);
    addDockWidget(Qt::RightDockWidgetArea, p_dock);
    p_dock->hide();
    QAction& shown = action(Deed::QuickHelp);
    connect(&shown, &QAction::triggered, p_dock, &QDockWidget::setVisible);
    connect(p_dock->toggleViewAction(), &QAction::toggled, &shown, &QAction::setChecked);
}

void MainWindow::make_menus()
{
    const auto add_menu = [this](const QString& title, const std::vector<std::vector<Deed>>& groups) {
        QMenu* const p_menu = menuBar()->addMenu(title);
        for (const std::vector<Deed>& group : groups) {
            p_menu->addSeparator(); // those at the ends are not drawn
            for (const Deed deed : group) {
                p_menu->addAction(&action(deed));
            }
        }
    };
    add_menu(tr("&File"), {{Deed::Open}, {Deed::Export}, {Deed::Close}, {Deed::Quit}});
    add_menu(tr("&View"),
        {{Deed::ZoomIn, Deed::ZoomOut, Deed::Fit},
            {Deed::PanLeft, Deed::PanRight, Deed::PanUp, Deed::PanDown},
            {Deed::PreviousDocument, Deed::NextDocument}, {Deed::QuickHelp}});
    for (const KeyBinding& binding : key_bindings()) {
        if (binding.scope == Scope::Map) {
            m_p_views->addAction(&action(binding.deed)); // its key works where the map has the keyboard
        }
    }
}

void MainWindow::make_tool_bar()
{
    QToolBar* const p_bar = addToolBar(tr("Tools"));
    p_bar->setObjectName("tools");
    p_bar->setMovable(false);
    p_bar->setIconSize(QSize(24, 24));
    p_bar->addAction(&action(Deed::Open));
    p_bar->addAction(&action(Deed::Export));
    p_bar->addSeparator();
    p_bar->addAction(&action(Deed::ZoomIn));
    p_bar->addAction(&action(Deed::ZoomOut));
    p_bar->addAction(&action(Deed::Fit));
    p_bar->addSeparator();
    p_bar->addWidget(m_p_document_box);
    auto* const p_spring = new QWidget;
    p_spring->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    p_bar->addWidget(p_spring);
    p_bar->addAction(&action(Deed::QuickHelp));
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
    connect(m_p_document_box, &DocumentBox::chosen, this,
        [](const housekeeping::DocumentId& id) { documents().current_document(id); });
}

// --- documents
// ------------------------------------------------------------------------------------------------------

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
        statusBar()->showMessage(tr("Written: %1").arg(path), s_message_time);
    }
    return written;
}

void MainWindow::ask_and_open()
{
    open(QFileDialog::getOpenFileNames(
        this, tr("Open"), QString(), tr("Rasters (*.tif *.tiff *.asc *.vrt *.img *.hgt);;All files (*)")));
}

void MainWindow::ask_and_export()
{
    if (!current_document_is_free(tr("Export"))) {
        return;
    }
    QFileDialog dialog(this, tr("Export"), QString(), tr("GeoTIFF (*.tif *.tiff)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("tif");
    if (dialog.exec() == QDialog::Accepted) {
        write_export(dialog.selectedFiles().value(0));
    }
}

void MainWindow::close_document()
{
    if (current_document_is_free(tr("Close"))) {
        documents().destroy_document(
            documents().current_document_id(), false, false, false, housekeeping::DocumentId::null());
    }
}

/// Whether there is a current document that no command is running on; says so if one is.
bool MainWindow::current_document_is_free(const QString& title)
{
    const housekeeping::DocumentId id = documents().current_document_id();
    if (id == housekeeping::DocumentId::null()) {
        return false;
    }
    if (!documents().current_document().is_busy()) {
        return true;
    }
    housekeeping::ErrorHandler::instance().message(title.toStdString(),
        tr("\"%1\" is busy. Wait until the running command has ended, or cancel it.")
            .arg(QString::fromStdString(documents().current_document().title()))
            .toStdString(),
        QMessageBox::Ok);
    return false;
}

void MainWindow::show_new_document(const TerrainDocument& document)
{
    TerrainView& new_view = m_p_views->add(document.id());
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
    m_p_views->show_document(current);
    m_p_quick_help->sheet().show_document(current);
    m_p_deeds->document_open(is_open);
    m_p_reading->clear();
    m_p_scale->setText(view() ? tr("%1 %").arg(QString::number(view()->scale() * 100, 'f', 0)) : QString());
    setWindowTitle(is_open
            ? tr("%1 - %2").arg(QString::fromStdString(documents().current_document().title()), product())
            : product());
}

void MainWindow::handle_message(housekeeping::DocumentMessage& message)
{
    using housekeeping::DocumentMessage;
    if (message.doc_change_type() == DocumentMessage::CurrentChanged) {
        show_current_document(housekeeping::DocumentId::null());
    } else if (message.doc_change_type() == DocumentMessage::Destroyed) {
        m_document_help.erase(message.id());
        m_p_views->remove(message.id());
        show_current_document(message.id());
    }
}

std::vector<housekeeping::DocumentId> MainWindow::open_documents()
{
    return documents().current_documents();
}

// --- what the window shows
// ------------------------------------------------------------------------------------------

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
// ---------------------------------------------------------------------------------------------------------

void MainWindow::closeEvent(QCloseEvent* p_event)
{
    if (documents().documents_busy()) {
        housekeeping::ErrorHandler::instance().message(tr("Quit").toStdString(),
            tr("A command is running. Wait until it has ended, or cancel it.").toStdString(),
            QMessageBox::Ok);
        p_event->ignore();
        return;
    }
    for (const housekeeping::DocumentId& id : open_documents()) {
        documents().destroy_document(id, false, false, false, housekeeping::DocumentId::null());
    }
    p_event->setAccepted(documents().num_documents() == 0);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* p_event)
{
    if (!local_files(*p_event->mimeData()).isEmpty()) {
        p_event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* p_event)
{
    p_event->acceptProposedAction();
    open(local_files(*p_event->mimeData()));
}

} // namespace terrain
