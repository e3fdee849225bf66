#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/ChildDockWidget.h>

#include <tarqa/housekeeping/ErrorProtocol.h>

#include "Assertion.h"
#include "SettingsChange.h"
#include "SettingsGroup.h"

#include <pkBaseQt/QFinalPolish.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>
#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>

#include <algorithm>
#include <functional>

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_source = "housekeeping/gui/src/AbstractMainWindow";

// Keys of the settings; those that begin with a slash follow a panel's title.
const char* const s_group = "Q4DAbstractControlPanel";
const char* const s_tab_order = "tabOrder";
const char* const s_floating = "/floating";
const char* const s_dock_size = "/dockSize";
const char* const s_dock_geometry = "/dockGeom/"; // deliberately written only, and with that slash at its end

const char* const s_home = "Home"; // never floats
const int s_docked_width = 600;
const int s_floating_width = 9999;

/// Gives the stretch at the end of a panel another horizontal policy.
void change_last_spacer(QWidget& panel, QSizePolicy::Policy horizontal)
{
    auto* const p_layout = qobject_cast<QBoxLayout*>(panel.layout());
    if (!p_layout || p_layout->count() == 0) {
        return;
    }
    if (QSpacerItem* const p_spacer = p_layout->itemAt(p_layout->count() - 1)->spacerItem()) {
        p_spacer->changeSize(0, p_spacer->sizeHint().height(), horizontal, QSizePolicy::Minimum);
    }
}

/// Changes the stored settings of the panels.
void store_settings(const std::function<void(QSettings&)>& change_values)
{
    QSettings settings;
    SettingsChange change(settings);
    if (change.may_begin()) {
        const SettingsGroup group(settings, s_group);
        change_values(settings);
    }
    // Without an organisation there is no place for them.
    if (!change.store() && !QCoreApplication::organizationName().isEmpty()) {
        ErrorProtocol::instance().log_message(
            "The settings of the panels could not be stored in " + settings.fileName().toStdString());
    }
}

/// Into the group that @p settings are in.
void store_floating(QSettings& settings, const ChildDockWidget& window, const QWidget& panel)
{
    const QString title = window.windowTitle();
    settings.setValue(title + s_dock_size, window.saveGeometry());
    settings.setValue(title + s_floating, true);
    // A title with an ampersand differs from that of its window, and addPanel() asks by the panel's.
    if (panel.windowTitle() != title) {
        settings.setValue(panel.windowTitle() + s_floating, true);
    }
}

/// Whether there is something of a window for the user to see.
bool is_on_screen(const QWidget& window)
{
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&window](const QScreen* p_screen) {
        return p_screen->availableGeometry().intersects(window.frameGeometry());
    });
}

/// Puts a floating window where it was. Of damaged bytes Qt finds most, but not all.
void restore_place(ChildDockWidget& window, const QByteArray& geometry)
{
    window.restoreGeometry(geometry);
    window.setWindowState(Qt::WindowNoState);
    if (!is_on_screen(window)) {
        window.move(QGuiApplication::primaryScreen()->availableGeometry().topLeft());
    }
}

} // namespace

AbstractMainWindow* AbstractMainWindow::m_instance = nullptr;

AbstractMainWindow::AbstractMainWindow(QWidget* p_parent, Qt::WindowFlags flags)
    : QMainWindow(p_parent, flags)
{
    HK_ASSERT(m_instance == nullptr, "m_instance == 0");
    m_instance = this;
}

// m_instance deliberately stays.
AbstractMainWindow::~AbstractMainWindow()
{
    // The panels go with the base class, when there is no list any more.
    for (const auto& entry : m_floatingPanels) {
        disconnect(entry.second, &QObject::destroyed, this, &AbstractMainWindow::floatingPanelDestroyed);
    }
}

AbstractMainWindow* AbstractMainWindow::instance()
{
    HK_ASSERT(m_instance, "m_instance");
    return m_instance;
}

bool AbstractMainWindow::hasInstance()
{
    return m_instance != nullptr;
}

// --- adding and removing

int AbstractMainWindow::addPanel(QWidget* p_panel, const QString&)
{
    p_panel->setMaximumWidth(s_docked_width);
    pkBase::QFinalPolish::apply(p_panel);

    const QString title = p_panel->windowTitle();
    HK_ASSERT(!title.isEmpty(), "!w->windowTitle().isEmpty()");
    bool floating = false;
    {
        QSettings settings;
        const SettingsGroup group(settings, s_group);
        floating = settings.value(title + s_floating, false).toBool();
    }
    if (floating) {
        return floatPanel(p_panel);
    }
    const int index = m_panelStack->addWidget(p_panel);
    m_panelTabBar->insertTab(index, title);
    return index;
}

void AbstractMainWindow::removePanel(int index)
{
    if (index < 0) {
        return;
    }
    if (index < m_panelStack->count()) {
        remove_docked(index);
    } else if (m_panelTabBar->count() <= index && !m_floatingPanels.empty()) {
        remove_first_floating();
    }
}

void AbstractMainWindow::remove_docked(int index)
{
    QWidget* const p_panel = m_panelStack->widget(index);
    const QString title = p_panel->windowTitle();
    for (int tab = 0; tab < m_panelTabBar->count(); ++tab) {
        if (m_panelTabBar->tabText(tab) == title) {
            m_panelTabBar->removeTab(tab);
            tab = 0; // deliberately goes on with the second tab, not with the first
        }
    }
    m_panelStack->removeWidget(p_panel);
}

/// Deliberately the first one, whichever the index named.
void AbstractMainWindow::remove_first_floating()
{
    ChildDockWidget* const p_window = m_floatingPanels.front().first;
    store_settings(
        [&](QSettings& settings) { store_floating(settings, *p_window, *m_floatingPanels.front().second); });
    if (QWidget* const p_panel = p_window->take_panel()) {
        disconnect(p_panel, &QObject::destroyed, this, &AbstractMainWindow::floatingPanelDestroyed);
    }
    m_floatingPanels.erase(m_floatingPanels.begin());
    delete p_window;
}

int AbstractMainWindow::indexOf(QWidget* p_panel) const
{
    const int index = m_panelStack->indexOf(p_panel);
    if (index >= 0) {
        return index;
    }
    const auto iter = floating(p_panel);
    if (iter == m_floatingPanels.end()) {
        return -1;
    }
    return m_panelTabBar->count() + static_cast<int>(iter - m_floatingPanels.begin());
}

// --- floating and docking

int AbstractMainWindow::floatPanel(QWidget* p_panel)
{
    const QString title = p_panel->windowTitle().replace("&&", "&");
    auto* const p_window = new ChildDockWidget(title, this);
    p_window->hide();
    p_window->setObjectName(title);
    p_window->installEventFilter(this);

    p_window->put_panel(p_panel);
    change_last_spacer(*p_panel, QSizePolicy::Minimum);
    p_panel->setMaximumWidth(s_floating_width);
    p_panel->show();
    p_window->updateGeometry();

    QSettings settings;
    const SettingsGroup group(settings, s_group);
    if (settings.childGroups().contains(title)) {
        const QByteArray geometry = settings.value(title + s_dock_size).toByteArray();
        if (!geometry.isEmpty()) {
            restore_place(*p_window, geometry);
        }
    } else {
        p_window->move(QCursor::pos());
    }
    p_window->show();
    m_floatingPanels.emplace_back(p_window, p_panel);
    connect(p_panel, &QObject::destroyed, this, &AbstractMainWindow::floatingPanelDestroyed);
    return static_cast<int>(m_floatingPanels.size()) - 1;
}

void AbstractMainWindow::slotTabBarMoved(const QString& tabText)
{
    if (tabText == s_home) {
        return;
    }
    const int tab = tab_with_text(tabText);
    const QPointer<QWidget> p_panel = findPanelWidgetFromTabIndex(tab);
    if (!p_panel) {
        return;
    }
    {
        const QSignalBlocker blocker(m_panelTabBar);
        m_panelTabBar->removeTab(tab);
        currentTabChanged(m_panelTabBar->currentIndex());
    }
    emit detachingPanel(m_panelStack->indexOf(p_panel));
    if (p_panel && m_panelStack->indexOf(p_panel) >= 0) { // a receiver may have deleted or moved it
        floatPanel(p_panel);
    }
}

bool AbstractMainWindow::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (!p_watched) {
        return true;
    }
    auto* const p_window
        = p_event->type() == QEvent::Close ? qobject_cast<ChildDockWidget*>(p_watched) : nullptr;
    if (!p_window) {
        return QMainWindow::eventFilter(p_watched, p_event);
    }
    dock(*p_window);
    return true;
}

/// Puts the panel of a floating window that is being closed back into the stack.
void AbstractMainWindow::dock(ChildDockWidget& window)
{
    // Titles with a single ampersand come back with the two that a tab's text needs.
    const QString title = window.windowTitle().replace(" & ", " && ");
    QWidget* const p_panel = window.take_panel();
    const auto entry = std::find_if(m_floatingPanels.begin(), m_floatingPanels.end(),
        [&window](const auto& candidate) { return candidate.first == &window; });
    if (entry != m_floatingPanels.end()) {
        m_floatingPanels.erase(entry); // also if somebody has taken the panel away
    }
    if (p_panel) {
        disconnect(p_panel, &QObject::destroyed, this, &AbstractMainWindow::floatingPanelDestroyed);
        change_last_spacer(*p_panel, QSizePolicy::MinimumExpanding);
        store_settings(
            [&](QSettings& settings) { settings.setValue(title + s_dock_geometry, window.saveGeometry()); });
        const int tab = m_panelTabBar->addTab(title);
        m_panelStack->addWidget(p_panel);
        m_panelTabBar->setCurrentIndex(tab);
        emit attachedPanel(tab);
    }
    m_panelTabBar->show();
    window.hide();
    window.deleteLater();
}

/// The owner of a panel has deleted it while it floated: its window goes too.
void AbstractMainWindow::floatingPanelDestroyed(QObject* p_panel)
{
    const auto iter = floating(p_panel);
    if (iter != m_floatingPanels.end()) {
        iter->first->deleteLater();
        m_floatingPanels.erase(iter);
    }
}

void AbstractMainWindow::restoreChildWidgets()
{
    for (const auto& entry : m_floatingPanels) {
        entry.first->show();
    }
}

AbstractMainWindow::FloatingPanels::const_iterator AbstractMainWindow::floating(const QObject* p_panel) const
{
    return std::find_if(m_floatingPanels.begin(), m_floatingPanels.end(),
        [p_panel](const auto& entry) { return entry.second == p_panel; });
}

// --- tabs

int AbstractMainWindow::tab_with_text(const QString& text) const
{
    for (int tab = 0; tab < m_panelTabBar->count(); ++tab) {
        if (m_panelTabBar->tabText(tab) == text) {
            return tab;
        }
    }
    return -1;
}

QWidget* AbstractMainWindow::findPanelWidgetFromTabIndex(int index)
{
    if (index < 0 || index >= m_panelTabBar->count()) {
        return nullptr;
    }
    const QString text = m_panelTabBar->tabText(index);
    for (int i = 0; i < m_panelStack->count(); ++i) {
        if (m_panelStack->widget(i)->windowTitle() == text) {
            return m_panelStack->widget(i);
        }
    }
    return nullptr;
}

void AbstractMainWindow::currentTabChanged(int index)
{
    if (QWidget* const p_panel = findPanelWidgetFromTabIndex(index)) {
        m_panelStack->setCurrentWidget(p_panel);
    }
}

// --- settings

void AbstractMainWindow::readSettings()
{
    QStringList saved;
    {
        QSettings settings;
        const SettingsGroup group(settings, s_group);
        saved = settings.value(s_tab_order).toStringList();
    }
    if (!saved.isEmpty()) {
        order_tabs(saved);
    }
    restoreChildWidgets();
    currentTabChanged(0);
}

/// Tabs that are not among @p saved come last, in the order in which they stand now.
void AbstractMainWindow::order_tabs(const QStringList& saved)
{
    QStringList current;
    for (int tab = 0; tab < m_panelTabBar->count(); ++tab) {
        current.append(m_panelTabBar->tabText(tab));
    }
    QStringList texts;
    for (const QString& text : saved) {
        if (current.contains(text)) {
            texts.append(text);
        }
    }
    for (const QString& text : qAsConst(current)) {
        if (!saved.contains(text)) { // deliberately also equal ones
            texts.append(text);
        }
    }
    const QSignalBlocker blocker(m_panelTabBar);
    while (m_panelTabBar->count() > 0) {
        m_panelTabBar->removeTab(m_panelTabBar->count() - 1);
    }
    for (const QString& text : qAsConst(texts)) {
        m_panelTabBar->addTab(text);
    }
}

void AbstractMainWindow::writeSettings()
{
    store_settings([this](QSettings& settings) {
        QStringList order;
        for (int tab = 0; tab < m_panelTabBar->count(); ++tab) {
            const QString text = m_panelTabBar->tabText(tab);
            order.append(text);
            settings.setValue(text + s_floating, false);
        }
        settings.setValue(s_tab_order, order);
        for (const auto& [p_window, p_panel] : m_floatingPanels) {
            store_floating(settings, *p_window, *p_panel);
        }
    });
}

bool AbstractMainWindow::may_close()
{
    return true;
}

void AbstractMainWindow::take_undo_redo_actions(QAction*, QAction*) { }

} // namespace tarqa::housekeeping::gui
