#include "CommandLine.h"
#include "Product.h"
#include "batch/Batch.h"
#include "batch/System.h"
#include "tour/Tour.h"
#include "windows/MainWindow.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <iostream>
#include <memory>

namespace housekeeping = tarqa::housekeeping;

namespace {

void describe_product()
{
    pkBase::pkProductInfo& product = pkBase::pkProductInfo::instance();
    product.product_name("TarqTerrain");
    product.marketing_name("Tarq Terrain");
    product.organization_name("Tarqa");
    product.version(terrain::product::version);
    product.build_number(terrain::product::build_number);
    product.branch(terrain::product::branch);
    product.build_date(terrain::product::build_date);
}

void make_controllers()
{
    housekeeping::ControllerManager::instance().init();
    housekeeping::ControllerManager::instance().post_init();
}

int run_batch(int& argc, char** argv, const terrain::CommandLine& line)
{
    const QCoreApplication application(argc, argv);
    // The log comes first, so that nothing that happens from here on is lost.
    housekeeping::ErrorProtocol::instance();
    housekeeping::ErrorHandler::instance();
    make_controllers();

    int code = terrain::Batch::Failed;
    {
        terrain::watch_signals();
        terrain::Batch batch(
            std::cout, std::cerr, terrain::standard_error_is_terminal() ? &std::cerr : nullptr);
        code = batch.run(line.script, line.files);
    }
    pkBase::pkDestructor::run();
    return code;
}

int fail(const char* text)
{
    std::cerr << "tarq-terrain: " << text << std::endl;
    return terrain::Batch::Failed;
}

/// The presentations need the window, and its menus need the presentations.
void furnish(terrain::MainWindow& window)
{
    housekeeping::gui::PresentationManager::instance().init();
    window.build_menus();
}

/// Shows @p window until it is closed.
void show(terrain::MainWindow& window)
{
    housekeeping::ApplicationManager& application = housekeeping::ApplicationManager::instance();
    application.top_level_widget(&window);
    application.show();
    application.main_loop();
    housekeeping::CommandManager::instance().finish();
}

/// In the main loop, so that whatever the files lead to has the window behind it.
int show_files(const std::vector<std::string>& files)
{
    terrain::MainWindow window;
    furnish(window);
    QTimer::singleShot(0, &window, [&window, &files] {
        for (const std::string& file : files) {
            window.open(QString::fromStdString(file));
        }
    });
    show(window);
    return terrain::Batch::Done;
}

int show_tour(const std::string& folder, const std::string& file)
{
    try {
        terrain::MainWindow window;
        furnish(window);
        terrain::Tour tour(
            window, QString::fromStdString(folder), QString::fromStdString(file), std::cout, std::cerr);
        tour.start();
        show(window);
        return tour.succeeded() ? terrain::Batch::Done : terrain::Batch::Failed;
    } catch (const tarqa::Exception& exception) {
        return fail(exception.what());
    } catch (const std::exception& exception) {
        return fail(exception.what());
    }
}

int run_window(int& argc, char**& argv, const terrain::CommandLine& line)
{
    if (!terrain::has_display()) {
        return fail("there is no display to show a window on; --batch needs none");
    }
    const bool tour = line.task == terrain::CommandLine::Task::Tour;
    std::unique_ptr<QTemporaryDir> tour_settings;
    if (tour) {
        // It neither depends on what the user prefers, has opened and where the panels are, nor changes that.
        tour_settings = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, tour_settings->path());
    }
    housekeeping::ApplicationManager::instance().init(argc, argv, "tarq-terrain", true);
    if (!tour) {
        housekeeping::ApplicationManager::instance().updateProxySettings();
    }
    make_controllers();
    const int code
        = tour ? show_tour(line.folder, line.files.empty() ? "" : line.files[0]) : show_files(line.files);
    pkBase::pkDestructor::run();
    return code;
}

} // namespace

int main(int argc, char** argv)
{
    using Task = terrain::CommandLine::Task;
    const auto line = terrain::CommandLine::parse(std::vector<std::string>(argv + 1, argv + argc));
    if (!line) {
        std::cerr << terrain::CommandLine::usage();
        return terrain::Batch::WrongUsage;
    }
    describe_product();
    switch (line->task) {
    case Task::Help:
        std::cout << terrain::CommandLine::usage();
        return terrain::Batch::Done;
    case Task::Version:
        std::cout << "Tarq Terrain " << terrain::product::version << '\n';
        return terrain::Batch::Done;
    case Task::Batch:
        return run_batch(argc, argv, *line);
    case Task::Tour:
    case Task::Window:
        return run_window(argc, argv, *line);
    }
    return terrain::Batch::WrongUsage;
}
