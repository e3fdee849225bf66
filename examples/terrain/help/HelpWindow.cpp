#include "help/HelpWindow.h"

#include "help/FindBar.h"
#include "help/HelpTopics.h"
#include "help/OutsideHelp.h"
#include "help/ShortcutsTable.h"
#include "windows/Icons.h"
#include "windows/WindowPlace.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>
#include <tarqa/housekeeping/gui/QHelpWebViewPage.h>

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtGui/QWheelEvent>
#include <QtGui/QWindow>
#include <QtWebKit/QWebElement>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace gui = housekeeping::gui;

namespace {

const QSize s_first_size(980, 720);
const double s_zoom_step = 1.1;
const double s_smallest_zoom = 0.5;
const double s_largest_zoom = 3;
const int s_dark = 128; ///< lightness below which a background asks for light texts
const int s_message_time = 6000; ///< milliseconds

const char* const s_dark_colours = "/dark.css"; ///< in the folder of the pages
const char* const s_shortcuts = "#shortcuts"; ///< the element that the shortcuts are written into

// Keys of the settings.
const char* const s_geometry = "HelpWindow/geometry";
const char* const s_zoom = "HelpWindow/zoom";

} // namespace

// --- making the window

HelpWindow::HelpWindow(const HelpPages& pages)
    : m_pages(pages)
    , m_p_view(new gui::QHelpWebView(pages.address(help_key(Topic::Contents)).toLocalFile()))
    , m_p_find_bar(new FindBar)
{
    setObjectName("help");
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* const p_centre = new QWidget;
    auto* const p_layout = new QVBoxLayout(p_centre);
    p_layout->setContentsMargins(0, 0, 0, 0);
    p_layout->setSpacing(0);
    p_layout->addWidget(m_p_view, 1);
    p_layout->addWidget(m_p_find_bar);
    setCentralWidget(p_centre);
    m_p_view->setAccessibleName(tr("Page of the help"));
    m_p_view->setFocus();
    make_actions();
    make_tool_bar();
    statusBar()->setSizeGripEnabled(true);
    dress_pages();
    m_p_view->installEventFilter(this);
    connect(m_p_view, &QWebView::loadFinished, this, &HelpWindow::complete_page);
    connect(m_p_view, &QWebView::titleChanged, this, &HelpWindow::show_title);
    connect(m_p_view->page(), &QWebPage::linkHovered, this, &HelpWindow::say_where_it_leads);
    connect(m_p_find_bar, &FindBar::text_changed, this, [this] { find(QWebPage::FindBeginsInSelection); });
    connect(m_p_find_bar, &FindBar::next, this, &HelpWindow::find_next);
    connect(m_p_find_bar, &FindBar::previous, this, &HelpWindow::find_previous);
    connect(m_p_find_bar, &FindBar::left, this, &HelpWindow::mark_found);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &QWidget::close);
    show_title(QString());

    resize(s_first_size);
    const QSettings settings;
    restore_place(*this, settings.value(s_geometry).toByteArray());
    const double zoom = settings.value(s_zoom, 1.0).toDouble();
    m_p_view->setZoomFactor(std::isnan(zoom) ? 1 : std::clamp(zoom, s_smallest_zoom, s_largest_zoom));
}

HelpWindow::~HelpWindow()
{
    // Their signals are none of ours any more.
    m_p_view->disconnect(this);
    m_p_view->page()->disconnect(this);
    m_p_find_bar->disconnect(this);
}

void HelpWindow::make_actions()
{
    add_action(
        HelpDeed::Back, "back", m_p_view->pageAction(QWebPage::Back), tr("Back"), {Qt::ALT + Qt::Key_Left});
    add_action(HelpDeed::Forward, "forward", m_p_view->pageAction(QWebPage::Forward), tr("Forward"),
        {Qt::ALT + Qt::Key_Right});
    add_action(
        HelpDeed::Contents, "contents", tr("Contents"), {Qt::ALT + Qt::Key_Home}, &HelpWindow::show_contents);
    add_action(
        HelpDeed::Smaller, "text-smaller", tr("Smaller"), {Qt::CTRL + Qt::Key_Minus}, &HelpWindow::smaller);
    add_action(HelpDeed::Larger, "text-larger", tr("Larger"),
        {Qt::CTRL + Qt::Key_Plus, Qt::CTRL + Qt::Key_Equal}, &HelpWindow::larger);
    add_action(HelpDeed::FirstSize, "text-normal", tr("Normal Size"), {Qt::CTRL + Qt::Key_0},
        &HelpWindow::first_size);
    add_action(HelpDeed::Find, "find", new QAction(this), tr("Find"), {QKeySequence(Qt::CTRL + Qt::Key_F)});
    connect(&action(HelpDeed::Find), &QAction::triggered, m_p_find_bar, &FindBar::ask);
    add_action(HelpDeed::FindNext, "find-next", tr("Find Next"), {Qt::Key_F3}, &HelpWindow::find_next);
    add_action(HelpDeed::FindPrevious, "find-previous", tr("Find Previous"), {Qt::SHIFT + Qt::Key_F3},
        &HelpWindow::find_previous);
    add_action(HelpDeed::Print, "print", tr("Print"), {Qt::CTRL + Qt::Key_P}, &HelpWindow::print);
    add_action(HelpDeed::OpenOutside, "open-outside", tr("Open in Web Browser"), {Qt::CTRL + Qt::Key_B},
        &HelpWindow::open_outside);
    add_action(
        HelpDeed::Close, "dismiss", tr("Close"), {Qt::Key_Escape, Qt::CTRL + Qt::Key_W}, &HelpWindow::leave);
}

void HelpWindow::add_action(
    HelpDeed deed, const char* icon_name, QAction* p_action, const QString& text, const Keys& keys)
{
    p_action->setText(text);
    p_action->setToolTip(QString("%1 (%2)").arg(text, keys.first().toString(QKeySequence::NativeText)));
    p_action->setIcon(icon(icon_name));
    p_action->setShortcuts(keys);
    addAction(p_action);
    m_actions[deed] = p_action;
}

void HelpWindow::add_action(
    HelpDeed deed, const char* icon_name, const QString& text, const Keys& keys, void (HelpWindow::*slot)())
{
    add_action(deed, icon_name, new QAction(this), text, keys);
    connect(&action(deed), &QAction::triggered, this, slot);
}

void HelpWindow::make_tool_bar()
{
    QToolBar* const p_bar = addToolBar(tr("Navigation"));
    p_bar->setObjectName("navigation");
    p_bar->setMovable(false);
    p_bar->setContextMenuPolicy(
        Qt::PreventContextMenu); // which would hide the bar, and nothing brings it back
    p_bar->setIconSize(QSize(24, 24));
    const QList<QList<HelpDeed>> groups = {{HelpDeed::Back, HelpDeed::Forward, HelpDeed::Contents},
        {HelpDeed::Smaller, HelpDeed::Larger}, {HelpDeed::Find, HelpDeed::Print}};
    for (const QList<HelpDeed>& group : groups) {
        for (const HelpDeed deed : group) {
            p_bar->addAction(&action(deed));
        }
        p_bar->addSeparator();
    }
    p_bar->addAction(&action(HelpDeed::OpenOutside));
}

// --- pages

/// The engine of the pages does not know what the desktop prefers.
void HelpWindow::dress_pages()
{
    const QString dark_colours = m_pages.folder() + s_dark_colours;
    const QColor paper = palette().color(QPalette::Base);
    const bool is_dark = paper.lightness() < s_dark && QFile::exists(dark_colours);
    m_p_view->settings()->setUserStyleSheetUrl(is_dark ? QUrl::fromLocalFile(dark_colours) : QUrl());
    QPalette behind; // what is seen until a page is there, and behind one without colours
    behind.setColor(QPalette::Base, is_dark ? paper : QColor(Qt::white));
    m_p_view->setPalette(behind);
}

void HelpWindow::show_page(const QString& page)
{
    m_p_view->load(m_pages.address(page));
    come_to_front();
}

void HelpWindow::come_to_front()
{
    winId(); // makes the system's window
    const QWidget* const p_dialog = QApplication::activeModalWidget();
    QWindow* const p_blocking = p_dialog && p_dialog->windowModality() == Qt::ApplicationModal
        ? p_dialog->window()->windowHandle()
        : nullptr;
    windowHandle()->setTransientParent(p_blocking); // a dialog lets through what belongs to it
    if (p_blocking) {
        connect(
            p_blocking, &QWindow::visibleChanged, this, &HelpWindow::part_from_dialog, Qt::UniqueConnection);
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void HelpWindow::part_from_dialog(bool visible)
{
    if (!visible) {
        windowHandle()->setTransientParent(nullptr);
    }
}

/// Does what a page cannot do itself.
void HelpWindow::complete_page()
{
    const QUrl address = m_p_view->url();
    QWebFrame& frame = *m_p_view->page()->mainFrame();
    if (address.isLocalFile() && !HelpPages::exists(address)) {
        frame.documentElement().setInnerXml(m_pages.page_of_missing(address));
        housekeeping::ErrorProtocol::instance().log_message(m_pages.what_is_missing(address).toStdString());
        return;
    }
    m_shortcuts.clear();
    fill_shortcuts();
    mark_found();
}

void HelpWindow::fill_shortcuts()
{
    QWebElement place = m_p_view->page()->mainFrame()->findFirstElement(s_shortcuts);
    if (place.isNull()) {
        return;
    }
    const QString table
        = shortcuts_table(housekeeping::DocumentManager::const_instance().current_document_id());
    if (table != m_shortcuts) { // else what people have selected stays so
        place.setInnerXml(table);
        m_shortcuts = table;
    }
}

void HelpWindow::show_title(const QString& title)
{
    const QString help
        = tr("%1 Help").arg(QString::fromStdString(pkBase::pkProductInfo::const_instance().marketing_name()));
    setWindowTitle(title.isEmpty() ? help : tr("%1 - %2").arg(title, help));
}

void HelpWindow::say_where_it_leads(const QString& link)
{
    const QUrl address(link);
    if (address.isEmpty()) {
        statusBar()->clearMessage();
    } else if (!address.isLocalFile() || gui::QHelpWebViewPage::opens_outside(address)) {
        statusBar()->showMessage(tr("Opens in another program: %1").arg(address.toDisplayString()));
    } else {
        statusBar()->showMessage(address.fileName());
    }
}

void HelpWindow::show_contents()
{
    m_p_view->load(m_pages.address(help_key(Topic::Contents)));
}

void HelpWindow::open_outside()
{
    const QUrl address = m_p_view->url();
    if (!HelpPages::exists(address)) {
        statusBar()->showMessage(m_pages.what_is_missing(address), s_message_time);
    } else if (!open_help_outside(m_pages, address)) {
        statusBar()->showMessage(tr("No web browser was found that opens this page."), s_message_time);
    }
}

void HelpWindow::print()
{
    emit m_p_view->page()->printRequested(m_p_view->page()->mainFrame());
}

// --- size of the texts

void HelpWindow::larger()
{
    zoom(m_p_view->zoomFactor() * s_zoom_step);
}

void HelpWindow::smaller()
{
    zoom(m_p_view->zoomFactor() / s_zoom_step);
}

void HelpWindow::first_size()
{
    zoom(1);
}

void HelpWindow::zoom(double factor)
{
    m_p_view->setZoomFactor(std::clamp(factor, s_smallest_zoom, s_largest_zoom));
    statusBar()->showMessage(
        tr("%1 %").arg(QString::number(m_p_view->zoomFactor() * 100, 'f', 0)), s_message_time);
}

// --- finding

void HelpWindow::find_next()
{
    find({});
}

void HelpWindow::find_previous()
{
    find(QWebPage::FindBackward);
}

void HelpWindow::find(QWebPage::FindFlags flags)
{
    if (m_p_find_bar->isHidden()) {
        m_p_find_bar->ask();
    }
    const QString text = m_p_find_bar->text();
    const bool found
        = text.isEmpty() || m_p_view->page()->findText(text, flags | QWebPage::FindWrapsAroundDocument);
    m_p_find_bar->say(found ? QString() : tr("Not on this page"));
    mark_found();
}

/// Marks all places with the text that is looked for; none if nobody looks for anything.
void HelpWindow::mark_found()
{
    QWebPage& page = *m_p_view->page();
    page.findText(QString(), QWebPage::HighlightAllOccurrences);
    if (!m_p_find_bar->isHidden() && !m_p_find_bar->text().isEmpty()) {
        page.findText(m_p_find_bar->text(), QWebPage::HighlightAllOccurrences);
    }
}

// --- leaving

void HelpWindow::leave()
{
    if (m_p_find_bar->isHidden()) {
        close();
        return;
    }
    m_p_find_bar->hide();
    m_p_view->setFocus();
}

void HelpWindow::changeEvent(QEvent* p_event)
{
    QMainWindow::changeEvent(p_event);
    if (p_event->type() == QEvent::ActivationChange && isActiveWindow()) {
        fill_shortcuts(); // another document may be the current one by now
    } else if (p_event->type() == QEvent::PaletteChange) {
        dress_pages();
    }
}

void HelpWindow::closeEvent(QCloseEvent* p_event)
{
    QSettings settings;
    settings.setValue(s_geometry, saveGeometry());
    settings.setValue(s_zoom, m_p_view->zoomFactor());
    QMainWindow::closeEvent(p_event);
}

bool HelpWindow::eventFilter(QObject* p_object, QEvent* p_event)
{
    if (p_event->type() != QEvent::Wheel) {
        return QMainWindow::eventFilter(p_object, p_event);
    }
    const auto& wheel = static_cast<const QWheelEvent&>(*p_event);
    if (!(wheel.modifiers() & Qt::ControlModifier)) {
        return QMainWindow::eventFilter(p_object, p_event);
    }
    if (wheel.angleDelta().y() > 0) {
        larger();
    } else if (wheel.angleDelta().y() < 0) {
        smaller();
    }
    return true;
}

} // namespace terrain
