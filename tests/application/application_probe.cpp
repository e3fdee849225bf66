#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/TemporaryDirectory.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>

#include <cpl_conv.h>
#include <cpl_error.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

// The smallest host: starts up, prints what came of it, one "name: value" line each, waits until its standard
// input is closed, and ends in an orderly way.
//
// Options: --batch (no windows), --temporary (lives in a temporary directory of kind "vista"), --fatal,
// --fatal-in-worker, --gdal-fatal (ends with such a message instead of waiting).

namespace {

using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::utilities::TemporaryDirectory;

typedef std::vector<std::string> Options;

bool has(const Options& options, const std::string& option)
{
    return std::find(options.begin(), options.end(), option) != options.end();
}

void print(const std::string& name, const std::string& value)
{
    std::cout << name << ": " << value << '\n';
}

void print_setting(const std::string& name, const char* p_value)
{
    print(name, p_value ? p_value : "(unset)");
}

void print_facts()
{
    print("log", ErrorProtocol::instance().log_filename());
    print("platform", QGuiApplication::platformName().toStdString());
    print("gui", ApplicationManager::instance().isGuiApp() ? "yes" : "no");
    for (const QString& path : QCoreApplication::libraryPaths()) {
        print("library path", path.toStdString());
    }
    for (const char* name : {"GDAL_DATA", "GEOTIFF_CSV", "PROJ_LIB"}) {
        print_setting(std::string("option ") + name, CPLGetConfigOption(name, nullptr));
        print_setting(std::string("variable ") + name, std::getenv(name));
    }
    print_setting("variable QT_DEVICE_PIXEL_RATIO", std::getenv("QT_DEVICE_PIXEL_RATIO"));
}

void end_if_told(const Options& options)
{
    if (has(options, "--fatal")) {
        QMessageLogger("probe.cpp", 7, "f").fatal("%s", "the end of %1");
    }
    if (has(options, "--fatal-in-worker")) {
        std::thread([] { QMessageLogger().fatal("the end"); }).join();
    }
    if (has(options, "--gdal-fatal")) {
        CPLError(CE_Fatal, CPLE_AppDefined, "the end");
    }
}

} // namespace

int main(int argc, char** argv)
{
    const Options options(argv + 1, argv + argc);
    std::unique_ptr<TemporaryDirectory> directory;
    if (has(options, "--temporary")) {
        directory = std::make_unique<TemporaryDirectory>("vista");
        print("temporary", directory->path());
    }
    ApplicationManager::instance().init(argc, argv, "probe", !has(options, "--batch"));
    print_facts();
    std::cout << "ready" << std::endl;
    end_if_told(options);
    while (std::cin.get() != std::char_traits<char>::eof()) { }
    pkBase::pkDestructor::run();
    return 0;
}
