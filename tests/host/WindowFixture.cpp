#include "WindowFixture.h"

#include "RasterFiles.h"
#include "commands/CommandsController.h"
#include "documents/TerrainDocument.h"
#include "support/Controllers.h"
#include "support/TestAccess.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

namespace host_test {

using housekeeping::DocumentManager;

void WindowTest::SetUp()
{
    QCoreApplication::setOrganizationName("Tarqa");
    QCoreApplication::setApplicationName("tarq-terrain");
    support::init_controllers();
    pkBase::pkProductInfo::instance().marketing_name("Tarq Terrain");
    make_window();
}

void WindowTest::TearDown()
{
    window.reset();
    // Their menus go before the application object.
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
