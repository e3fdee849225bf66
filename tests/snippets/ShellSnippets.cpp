#include "support/App.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/PreferencesDialog.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

// docs/shell.md

namespace shell_guide {

namespace housekeeping = tarqa::housekeeping;

class PanelTabBar : public QTabBar
{
    Q_OBJECT
signals:
    void torn_off(const QString& text);
};

class HomePanel : public QWidget
{
public:
    HomePanel() { setWindowTitle("Home"); }
};

//! [window]
class MainWindow : public housekeeping::gui::AbstractMainWindow
{
public:
    MainWindow()
    {
        m_panelTabBar = new PanelTabBar; // a QTabBar that says when a tab is dragged off
        m_panelStack = new QStackedWidget;
        auto* const p_area = new QWidget;
        auto* const p_layout = new QVBoxLayout(p_area);
        p_layout->addWidget(m_panelTabBar);
        p_layout->addWidget(m_panelStack);
        setCentralWidget(p_area);
        connect(m_panelTabBar, SIGNAL(currentChanged(int)), this, SLOT(currentTabChanged(int)));
        connect(m_panelTabBar, SIGNAL(torn_off(QString)), this, SLOT(slotTabBarMoved(QString)));
        addPanel(new HomePanel, QString());
        readSettings(); // after the panels
    }
    void closeEvent(QCloseEvent* p_event) override
    {
        writeSettings(); // while the floating windows are still open
        AbstractMainWindow::closeEvent(p_event);
    }
};
//! [window]

using housekeeping::gui::HelpManager;
using housekeeping::gui::PreferencesDialog;

void connect_help(QAction* report, QAction* restart)
{
    const auto connect = [](QAction* p_action, const char* signal, QObject* p_receiver, const char* slot) {
        EXPECT_TRUE(QObject::connect(p_action, signal, p_receiver, slot));
    };
    //! [help]
    connect(report, SIGNAL(triggered()), &HelpManager::instance(), SLOT(newJIRAIssue()));
    connect(restart, SIGNAL(triggered()), &HelpManager::instance(), SLOT(restart()));
    //! [help]
}

class PreferencesOwner : public QWidget
{
public:
    void show_preferences()
    {
        //! [preferences]
        if (!m_p_preferences) {
            m_p_preferences = new PreferencesDialog(this);
        }
        m_p_preferences->pre_show_dialog();
        m_p_preferences->show();
        //! [preferences]
    }

    PreferencesDialog* m_p_preferences = nullptr;
};

} // namespace shell_guide

TEST(ShellGuide, WindowHasItsPanel)
{
    const support::App app;
    QCoreApplication::setOrganizationName("Guide");
    shell_guide::MainWindow window;
    EXPECT_EQ(window.findChild<QTabBar*>()->tabText(0), "Home");
    window.show();
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(window.isVisible());
}

TEST(ShellGuide, EntriesAreConnectedToTheHelpManager)
{
    const support::App app;
    support::LogCapture log;
    QAction report(nullptr);
    QAction restart(nullptr);
    shell_guide::connect_help(&report, &restart);
    EXPECT_TRUE(log.take("HelpLauncherFactory")); // there is none for this program
}

TEST(ShellGuide, PreferencesAreMadeOnce)
{
    const support::App app;
    shell_guide::PreferencesOwner owner;
    owner.show_preferences();
    const shell_guide::PreferencesDialog* const p_first = owner.m_p_preferences;
    EXPECT_TRUE(p_first->isVisible());
    owner.show_preferences();
    EXPECT_EQ(owner.m_p_preferences, p_first);
}

#include "ShellSnippets.moc"
