//! [all]
#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

namespace housekeeping = tarqa::housekeeping;
namespace gui = tarqa::housekeeping::gui;

int main(int argc, char** argv)
{
    pkBase::pkProductInfo::instance().product_name("FirstHost"); // names the log and the settings
    auto& application = housekeeping::ApplicationManager::instance();
    application.init(argc, argv, "first-host", true);
    housekeeping::ControllerManager::instance().init();
    housekeeping::ControllerManager::instance().post_init();
    {
        gui::AbstractMainWindow window;
        application.top_level_widget(&window);
        application.show();
        application.main_loop();
    } // the window goes before the framework's objects
    pkBase::pkDestructor::run();
    return 0;
}
//! [all]
