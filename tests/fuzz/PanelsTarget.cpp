#include "Check.h"
#include "FuzzApplication.h"
#include "LogWatch.h"
#include "SettingsFile.h"
#include "Targets.h"

#include "gui/PanelWindow.h"

#include <QtCore/QSettings>
#include <QtCore/QVariant>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <map>
#include <vector>

namespace fuzz {

namespace {

const QString s_group = "Q4DAbstractControlPanel/";
const QStringList s_titles = {"Home", "Alpha", "Beta 2", "A && B", "Höhe", "tabOrder", "%1=[x], \"y\"; z"};

/// The order of the tabs, as the next start finds it.
QStringList stored_order()
{
    forget_settings(QSettings());
    return QSettings().value(s_group + "tabOrder").toStringList();
}

/// A window with its panels, as a start makes it.
class Program
{
public:
    Program()
        : m_order(stored_order())
    {
        for (const QString& title : s_titles) {
            const bool floats = QSettings().value(s_group + title + "/floating", false).toBool();
            auto* const p_panel = new QWidget;
            p_panel->setWindowTitle(title);
            auto* const p_layout = new QVBoxLayout(p_panel);
            p_layout->addWidget(new QLabel(title, p_panel));
            p_layout->addStretch();
            m_window.addPanel(p_panel, QString());
            (floats ? m_floating : m_docked).push_back(p_panel);
            if (!floats) {
                m_tabs.append(title);
            }
        }
        m_window.readSettings();
        sort_tabs();
        check_panels();
    }

    void write_settings() { m_window.writeSettings(); }

    /// Puts every panel back.
    void close_floats()
    {
        while (!m_floating.empty()) {
            QWidget* const p_panel = m_floating.front();
            m_window.window_of(p_panel)->close();
            m_floating.erase(m_floating.begin());
            m_docked.push_back(p_panel);
            m_tabs.append(p_panel->windowTitle());
        }
        check_panels();
    }

    const QStringList& tabs() const { return m_tabs; }
    const std::vector<QWidget*>& floating() const { return m_floating; }

    /// Where the floating windows are, by title; without those that Qt may move when it shows them again:
    /// near the edge of the screen, or made so large by what was stored that they have no frame.
    std::map<QString, QPoint> places() const
    {
        const QRect safe = QGuiApplication::primaryScreen()->availableGeometry().adjusted(40, 40, -300, -300);
        std::map<QString, QPoint> places;
        for (QWidget* const p_panel : m_floating) {
            const QWidget& window = *m_window.window_of(p_panel);
            if (safe.contains(window.pos()) && window.frameGeometry() != window.geometry()) {
                places[p_panel->windowTitle()] = window.pos();
            }
        }
        return places;
    }

private:
    /// The order that was stored, and what it lacks at the end.
    void sort_tabs()
    {
        if (m_order.isEmpty()) {
            return;
        }
        QStringList sorted;
        for (const QString& title : qAsConst(m_order)) {
            if (m_tabs.contains(title)) {
                sorted.append(title);
            }
        }
        for (const QString& title : qAsConst(m_tabs)) {
            if (!m_order.contains(title)) {
                sorted.append(title);
            }
        }
        m_tabs = sorted;
    }

    void check_panels() const
    {
        check(m_window.tabs() == m_tabs, "other tabs than those that were stored");
        check(m_window.docked() == m_docked, "other panels are docked");
        check(m_window.floating() == m_floating, "other panels float");
        for (QWidget* const p_panel : m_docked) {
            check(m_tabs.contains(p_panel->windowTitle()), "a panel has no tab");
            check(m_window.window_of(p_panel) == nullptr, "a panel is in two places");
        }
        const auto windows
            = m_window.findChildren<PanelWindow::ChildDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
        const auto shown
            = std::count_if(windows.begin(), windows.end(), [](auto* p) { return !p->isHidden(); });
        check(static_cast<std::size_t>(shown) == m_floating.size(), "a floating window has no panel");
        for (QWidget* const p_panel : m_floating) {
            check_float(p_panel);
        }
    }

    void check_float(QWidget* p_panel) const
    {
        const PanelWindow::ChildDockWidget& window = *m_window.window_of(p_panel);
        check(panel_in(window) == p_panel, "a floating window holds another panel");
        check(window.isVisible() && p_panel->isVisible(), "a floating panel is not seen");
        check(window.windowState() == Qt::WindowNoState, "a floating window fills the screen");
        const QRect screen = QGuiApplication::primaryScreen()->availableVirtualGeometry();
        check(screen.intersects(window.frameGeometry()), "a floating window is beside the screen");
    }

    QStringList m_order; // read before the window may write
    PanelWindow m_window;
    QStringList m_tabs;
    std::vector<QWidget*> m_docked;
    std::vector<QWidget*> m_floating;
};

/// Deletes what is to be deleted later, and handles what else waits.
void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void run_twice()
{
    QStringList tabs;
    std::map<QString, QPoint> places;
    std::size_t floating = 0;
    {
        Program program;
        settle();
        program.write_settings();
        tabs = program.tabs();
        floating = program.floating().size();
        places = program.places();
    }
    Program next;
    settle();
    check(next.tabs() == tabs, "the order of the tabs gets lost");
    check(next.floating().size() == floating, "a floating panel is docked after a restart");
    const std::map<QString, QPoint> next_places = next.places();
    for (const auto& [title, place] : places) {
        const auto found = next_places.find(title);
        check(found != next_places.end() && found->second == place,
            "a floating window is elsewhere after a restart: " + title.toStdString());
    }
    next.close_floats();
    settle();
    next.write_settings();
}

} // namespace

void panels(const std::string& input)
{
    make_application();
    const LogWatch log;
    put_settings_file(QSettings(), input);
    run_twice();
    {
        const Program last;
        check(last.floating().empty(), "a panel that was put back floats after a restart");
    }
    settle();
    log.check_assertions({"m_instance == 0"}); // the window before is still known
}

} // namespace fuzz
