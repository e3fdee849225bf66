#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>

// docs/start-up.md

namespace housekeeping = tarqa::housekeeping;

namespace {

class MainWindow : public housekeeping::gui::AbstractMainWindow
{ };

} // namespace

//! [main]
int main(int argc, char** argv)
{
    pkBase::pkProductInfo::instance().product_name("TarqTerrain"); // before anything is logged
    auto& application = housekeeping::ApplicationManager::instance();
    application.init(argc, argv, "tarq-terrain", true);
    housekeeping::ControllerManager::instance().init();
    housekeeping::ControllerManager::instance().post_init();
    {
        MainWindow window;
        application.top_level_widget(&window);
        application.show();
        application.main_loop();
    } // the window goes before the framework's objects
    pkBase::pkDestructor::run();
    return 0;
}
//! [main]
