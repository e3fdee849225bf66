#include "Product.h"
#include "batch/Batch.h"
#include "batch/CommandLine.h"
#include "batch/System.h"

#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QCoreApplication>

#include <iostream>

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

int run_batch(const terrain::CommandLine& line)
{
    // The log comes first, so that nothing that happens from here on is lost.
    housekeeping::ErrorProtocol::instance();
    housekeeping::ErrorHandler::instance();
    housekeeping::ControllerManager::instance().init();
    housekeeping::ControllerManager::instance().post_init();

    terrain::watch_signals();
    terrain::Batch batch(std::cout, std::cerr, terrain::standard_error_is_terminal() ? &std::cerr : nullptr);
    return batch.run(line.script, line.files);
}

} // namespace

int main(int argc, char** argv)
{
    const auto line = terrain::CommandLine::parse(std::vector<std::string>(argv + 1, argv + argc));
    if (!line) {
        std::cerr << terrain::CommandLine::usage();
        return terrain::Batch::WrongUsage;
    }
    if (line->help) {
        std::cout << terrain::CommandLine::usage();
        return terrain::Batch::Done;
    }
    describe_product();
    if (line->version) {
        std::cout << "Tarq Terrain " << terrain::product::version << '\n';
        return terrain::Batch::Done;
    }

    QCoreApplication application(argc, argv);
    const int code = run_batch(*line);
    pkBase::pkDestructor::run();
    return code;
}
