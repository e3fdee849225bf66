#include "WindowFixture.h"

#include "RasterFiles.h"
#include "commands/CommandsController.h"
#include "documents/TerrainDocument.h"
#include "support/Controllers.h"
#include "support/TestAccess.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/HelpManager.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <stdexcept>

namespace host_test {

using housekeeping::DocumentManager;

WindowTest::WindowTest()
    : application(scratch("no program"))
{ }

std::string WindowTest::product() const
{
    return "TarqTerrain";
}

void WindowTest::SetUp()
{
    QCoreApplication::setOrganizationName("Tarqa");
    QCoreApplication::setApplicationName("tarq-terrain");
    support::init_controllers();
    pkBase::pkProductInfo::instance().product_name(product());
    pkBase::pkProductInfo::instance().marketing_name("Tarq Terrain");
    make_window();
}

void WindowTest::TearDown()
{
    window.reset();
    // Menus and windows go before the application object.
    housekeeping::TestAccess::destroy<housekeeping::gui::HelpManager>();
    housekeeping::TestAccess::destroy<housekeeping::gui::PresentationManager>();
}

void WindowTest::make_window()
{
    window = std::make_unique<terrain::MainWindow>();
    housekeeping::gui::PresentationManager::instance().init();
    window->build_menus();
    window->show();
    QApplication::setActiveWindow(window.get());
}

void WindowTest::make_window_anew()
{
    window.reset();
    housekeeping::TestAccess::destroy<housekeeping::gui::PresentationManager>();
    make_window();
    EXPECT_TRUE(
        log.took_assert("m_instance == 0", "AbstractMainWindow", "housekeeping/gui/src/AbstractMainWindow"))
        << "the base expects one window in a program";
}

void WindowTest::tear_off(const QWidget& panel) const
{
    ASSERT_TRUE(
        QMetaObject::invokeMethod(window.get(), "slotTabBarMoved", Q_ARG(QString, panel.windowTitle())));
    ASSERT_NE(panel.window(), window.get());
}

QMenu& WindowTest::menu(const QString& title) const
{
    for (QAction* const p_action : window->menuBar()->actions()) {
        if (p_action->text() == title) {
            return *p_action->menu();
        }
    }
    throw std::out_of_range("there is no menu " + title.toStdString());
}

QAction& WindowTest::entry(const QString& menu_title, const QString& text) const
{
    for (QAction* const p_action : menu(menu_title).actions()) {
        if (p_action->text() == text) {
            return *p_action;
        }
    }
    throw std::out_of_range("there is no entry " + text.toStdString());
}

QStringList WindowTest::texts(const QWidget& widget)
{
    QStringList texts;
    for (const QAction* const p_action : widget.actions()) {
        texts.append(p_action->isSeparator() ? "-" : p_action->text());
    }
    return texts;
}

QString WindowTest::terrain_file(const std::string& name)
{
    return QString::fromStdString(make_terrain_file(name));
}

void WindowTest::open_terrain_file(const std::string& name)
{
    ASSERT_TRUE(window->open(terrain_file(name)));
    EXPECT_TRUE(log.take("Opened"));
}

int WindowTest::documents()
{
    return static_cast<int>(DocumentManager::instance().num_documents());
}

terrain::TerrainDocument& WindowTest::current()
{
    return dynamic_cast<terrain::TerrainDocument&>(DocumentManager::instance().current_document());
}

terrain::CommandRunner& WindowTest::runner()
{
    return terrain::CommandsController::instance().runner();
}

void WindowTest::run(const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command)
{
    ASSERT_TRUE(runner().start(sp_command));
    runner().wait();
}

} // namespace host_test
