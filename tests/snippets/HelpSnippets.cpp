// docs/help.md

//! [launcher]
#include <tarqa/housekeeping/gui/HelpLauncher.h>
#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtCore/QMap>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

#include <boost/make_shared.hpp>

#include <memory>

namespace gui = tarqa::housekeeping::gui;

class CaveHelpLauncher : public gui::HelpLauncher
{
public:
    void show_page(const QString& page, bool external) override
    {
        const QString file = "/usr/share/cave/help/" + file_name(page);
        if (external && QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
            return;
        }
        if (!m_view) {
            m_view = std::make_unique<gui::QHelpWebView>(file);
            m_view->setAttribute(Qt::WA_QuitOnClose, false); // it keeps no program alive
        } else {
            m_view->load(QUrl::fromLocalFile(file));
        }
        m_view->show();
        m_view->raise();
    }

private:
    /// A help key or the name of a page: what is no key is a page.
    static QString file_name(const QString& page)
    {
        static const QMap<QString, QString> s_pages = {
            {"TARQ_CONTENTS", "index.html"},
            {"TARQ_KEYBOARD_SHORTCUTS", "shortcuts.html"},
            {"TARQ_FILE_MENU_PREFERENCES", "preferences.html"},
            {"CAVE_MAP", "map.html"},
        };
        return s_pages.value(page, page);
    }

    std::unique_ptr<gui::QHelpWebView> m_view;
};

class CaveHelpLauncherFactory : public gui::HelpLauncherFactory
{
public:
    CaveHelpLauncherFactory()
        : HelpLauncherFactory("Cave", false) // pkProductInfo's product name
    { }
    boost::shared_ptr<gui::HelpLauncher> create_product() override
    {
        return boost::make_shared<CaveHelpLauncher>();
    }
    gui::HelpLauncher* create_unmanaged_product() override { return new CaveHelpLauncher; }
};

const CaveHelpLauncherFactory s_factory; // registers itself
//! [launcher]

#include "support/App.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/gui/HelpManager.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

#include <gtest/gtest.h>

namespace {

class Window : public QWidget
{
public:
    Window()
        : m_p_map(new QLineEdit(this))
        , m_p_other(new QLineEdit(this))
    {
        //! [context]
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* p_now) {
            const bool in_map = p_now && (p_now == m_p_map || m_p_map->isAncestorOf(p_now));
            const QString page = in_map ? "CAVE_MAP" : ""; // which stands for the contents
            gui::HelpManager::instance().setCurrPath(page);
        });
        //! [context]
    }

    QWidget* m_p_map;
    QWidget* m_p_other;
};

class Dialog : public QDialog
{
public:
    Dialog()
    {
        auto* const p_buttons = new QDialogButtonBox(this);
        //! [button]
        auto* const p_help = new pkBase::QPKHelpButton("CAVE_MAP");
        p_help->setShortcut(QKeySequence::HelpContents);
        p_buttons->addButton(p_help, QDialogButtonBox::HelpRole);
        setWindowModality(Qt::WindowModal);
        //! [button]
    }
};

} // namespace

TEST(HelpGuide, LauncherIsMadeUnderTheProductsName)
{
    const support::App app;
    EXPECT_TRUE(dynamic_cast<CaveHelpLauncher*>(gui::HelpLauncherFactory::create("Cave").get()));
}

TEST(HelpGuide, ContextFollowsTheKeyboard)
{
    const support::App app;
    pkBase::pkProductInfo::instance().product_name("Cave"); // whose launcher the help manager makes
    Window window;
    window.show();
    window.activateWindow();
    window.m_p_other->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(gui::HelpManager::instance().currPath(), "TARQ_CONTENTS");
    window.m_p_map->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(gui::HelpManager::instance().currPath(), "CAVE_MAP");
    window.m_p_other->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(gui::HelpManager::instance().currPath(), "TARQ_CONTENTS");
}

TEST(HelpGuide, DialogHasAHelpButton)
{
    const support::App app;
    const Dialog dialog;
    auto* const p_button = dialog.findChild<pkBase::QPKHelpButton*>();
    ASSERT_TRUE(p_button);
    EXPECT_EQ(p_button->shortcut(), QKeySequence(QKeySequence::HelpContents));
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
}
