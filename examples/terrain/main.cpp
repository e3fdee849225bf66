#include "CommandLine.h"
#include "Product.h"
#include "batch/Batch.h"
#include "batch/System.h"
#include "language/Language.h"
#include "style/ColourScheme.h"
#include "tour/Tour.h"
#include "windows/MainWindow.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/LastWords.h>
#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <functional>
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

/// For people: what they asked for, or what their system says.
QString language_of_people(const terrain::CommandLine& line)
{
    return line.language.empty() ? terrain::Language::best_of(QLocale::system().uiLanguages())
                                 : QString::fromStdString(line.language);
}

/// For programs that read what is printed, and for pictures that are compared: the same on every machine.
QString language_of_programs(const terrain::CommandLine& line)
{
    return line.language.empty() ? QString(terrain::Language::english)
                                 : QString::fromStdString(line.language);
}

/// Prints what @p text gives, in the language of the user.
void print(int& argc, char** argv, const terrain::CommandLine& line, std::ostream& stream,
    const std::function<std::string()>& text)
{
    const QCoreApplication application(argc, argv); // without it there are no translations
    const terrain::Language language(language_of_people(line));
    stream << text() << std::flush;
}

std::string unknown_language(const std::string& name)
{
    return QObject::tr("tarq-terrain: there is no language \"%1\"; there are: %2\n")
        .arg(QString::fromStdString(name), terrain::Language::names().join(", "))
        .toStdString();
}

int run_batch(int& argc, char** argv, const terrain::CommandLine& line)
{
    const QCoreApplication application(argc, argv);
    const terrain::Language language(language_of_programs(line));
    terrain::Language::use_plain_numbers();
    // The log comes first, so that nothing that happens from here on is lost.
    housekeeping::ErrorProtocol::instance();
    housekeeping::LastWords::enable();
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

/// Calls @p action when the main loop runs: boxes have the window behind them then. Events are handled
/// before, too, while the window is shown.
void in_main_loop(QObject* p_context, const std::function<void()>& action)
{
    QTimer::singleShot(0, p_context, [p_context, action] {
        QThread::currentThread()->loopLevel() > 0 ? action() : in_main_loop(p_context, action);
    });
}

int show_files(const std::vector<std::string>& files)
{
    terrain::MainWindow window;
    furnish(window);
    in_main_loop(&window, [&window, &files] {
        housekeeping::LastWords::offer();
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
        print(argc, argv, line, std::cerr, [] {
            return QObject::tr("tarq-terrain: there is no display to show a window on; --batch needs none\n")
                .toStdString();
        });
        return terrain::Batch::Failed;
    }
    const bool tour = line.task == terrain::CommandLine::Task::Tour;
    const QString language_name = tour ? language_of_programs(line) : language_of_people(line);
    terrain::Language::use_numbers(language_name); // before there is a widget that has them
    std::unique_ptr<QTemporaryDir> tour_settings;
    if (tour) {
        // It neither depends on what the user prefers, has opened and where the panels are, nor changes that.
        tour_settings = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, tour_settings->path());
    }
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps); // else icons are blurred on fine screens
    housekeeping::ApplicationManager::instance().init(argc, argv, "tarq-terrain", true);
    housekeeping::LastWords::enable();
    const terrain::Language language(language_name);
    if (!tour) {
        housekeeping::ApplicationManager::instance().updateProxySettings();
    }
    if (tour) {
        // Its settings are new ones, in which new documents have views in three dimensions beside their maps.
        housekeeping::ApplicationManager::instance().setUse3DViewByDefault(false);
    }
    auto colours = std::make_unique<terrain::ColourScheme>();
    make_controllers();
    const int code
        = tour ? show_tour(line.folder, line.files.empty() ? "" : line.files[0]) : show_files(line.files);
    colours.reset(); // before the application object
    pkBase::pkDestructor::run();
    return code;
}

} // namespace

int main(int argc, char** argv)
{
    using terrain::CommandLine;
    using Task = CommandLine::Task;
    const auto line = CommandLine::parse(std::vector<std::string>(argv + 1, argv + argc));
    if (!line) {
        print(argc, argv, CommandLine(), std::cerr, &CommandLine::usage);
        return terrain::Batch::WrongUsage;
    }
    if (!line->language.empty()
        && !terrain::Language::names().contains(QString::fromStdString(line->language))) {
        print(argc, argv, CommandLine(), std::cerr, [&line] { return unknown_language(line->language); });
        return terrain::Batch::WrongUsage;
    }
    describe_product();
    switch (line->task) {
    case Task::Help:
        print(argc, argv, *line, std::cout, &CommandLine::usage);
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
