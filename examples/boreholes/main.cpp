// A small host with a window: boreholes on a map and in a table. Start reading here; then the document and
// its commands, the controller, the presentation, the window.

#include "BoreholesController.h"
#include "BoreholesDocument.h"
#include "BoreholesFile.h"
#include "BoreholesPanel.h"
#include "BoreholesPresentation.h"
#include "MainWindow.h"
#include "UnitPreferences.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <iostream>
#include <memory>

namespace housekeeping = tarqa::housekeeping;

namespace {

const char* const s_usage
    = "usage: boreholes [FILE.csv]          show the boreholes of a file, or a sample\n"
      "       boreholes --picture FILE.png  leave a picture of the window\n"
      "       boreholes --check             do, undo and redo without a window that is seen\n";
const char* const s_sample = ":/boreholes/sample.csv";
const boreholes::Borehole s_new{"Hill", 2050, 700, 275};

/// The window with all that belongs into it. The order matters: controllers, window, presentations, menus.
std::unique_ptr<boreholes::MainWindow> make_window()
{
    housekeeping::ControllerManager::instance().init();
    housekeeping::ControllerManager::instance().post_init();
    boreholes::UnitPreferences::apply_stored();
    auto window = std::make_unique<boreholes::MainWindow>();
    housekeeping::gui::PresentationManager::instance().init();
    window->build();
    return window;
}

/// Shows @p window until it is closed.
void show(boreholes::MainWindow& window)
{
    auto& application = housekeeping::ApplicationManager::instance();
    application.top_level_widget(&window);
    application.show();
    application.main_loop();
    housekeeping::CommandManager::instance().finish();
}

bool show_file(const QString& path)
{
    const auto window = make_window();
    if (!window->open(path)) {
        window->open(QString());
    }
    show(*window);
    return true;
}

/// Shows the window for as long as it takes to add a borehole and to look at it.
bool take_picture(const QString& path)
{
    const auto window = make_window();
    bool saved = window->open(s_sample);
    QTimer::singleShot(0, window.get(), [&window] {
        auto& controller = boreholes::BoreholesController::instance();
        controller.add(s_new);
        controller.select(controller.boreholes().size() - 1);
        window->raise();
    });
    QTimer::singleShot(500, window.get(), [&window, &saved, &path] { // when all of it has been painted
        saved = window->grab().save(path) && saved;
        housekeeping::ApplicationManager::instance().exit_main_loop();
    });
    show(*window);
    return saved;
}

/// Prints what is in the document and in the table, and says whether it is as expected.
bool look(const char* when, std::size_t expected)
{
    const auto sp_presentation = boost::dynamic_pointer_cast<boreholes::BoreholesPresentation>(
        housekeeping::gui::PresentationManager::instance().presentation(
            boreholes::BoreholesPresentation::product_name));
    const std::size_t boreholes = boreholes::BoreholesController::instance().boreholes().size();
    const int rows = sp_presentation->panel()->rows();
    std::cout << when << ": " << boreholes << " boreholes, " << rows << " rows" << std::endl;
    return boreholes == expected && rows == static_cast<int>(expected);
}

bool check(const QString& folder)
{
    const auto window = make_window();
    auto& controller = boreholes::BoreholesController::instance();
    auto& commands = housekeeping::CommandManager::instance();
    bool good = window->open(s_sample);
    const housekeeping::DocumentId id = controller.document()->id();
    good = look("opened", 7) && good;
    controller.add(s_new);
    good = look("added", 8) && good && controller.document()->is_modified();
    commands.undo(id);
    good = look("undone", 7) && good;
    commands.redo(id);
    good = look("redone", 8) && good;
    controller.select(0);
    controller.delete_selected();
    good = look("deleted", 7) && good;
    commands.undo(id);
    good = look("undone", 8) && good;

    const QString path = folder + "/saved.csv";
    const boreholes::Boreholes saved = controller.boreholes();
    good = window->save(path) && !controller.document()->is_modified() && good;
    good = window->open(path) && controller.boreholes() == saved && good;
    return look("read again", 8) && good;
}

} // namespace

int main(int argc, char** argv)
{
    // First of all: the error log and the settings are called after the product.
    auto& product = pkBase::pkProductInfo::instance();
    product.product_name("Boreholes");
    product.version("1.0.0");

    const QString task = argc > 1 ? argv[1] : "";
    const bool checks = task == "--check";
    const bool takes_picture = task == "--picture" && argc == 3;
    if (task.startsWith("--") && !checks && !takes_picture) {
        std::cerr << s_usage;
        return 2;
    }
    const QTemporaryDir folder;
    if (checks || takes_picture) { // which neither depend on what the user prefers nor change that
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    }
    housekeeping::ApplicationManager::instance().init(
        argc, argv, "boreholes", !checks); // takes Qt's options out
    const QString file = argc > 1 ? QString::fromLocal8Bit(argv[argc - 1]) : QString(s_sample);

    const bool good = checks ? check(folder.path()) : takes_picture ? take_picture(file) : show_file(file);
    // The window is gone by now; documents and the framework's own objects follow, in their order.
    pkBase::pkDestructor::run();
    return good ? 0 : 1;
}
