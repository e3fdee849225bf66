#include <tarqa/housekeeping/ProgressBarsControllerFactory.h>

#include <tarqa/housekeeping/ProgressBarsController.h>

#include <boost/make_shared.hpp>

namespace tarqa::housekeeping {

namespace {

const ProgressBarsControllerFactory s_factory;

} // namespace

ProgressBarsControllerFactory::ProgressBarsControllerFactory()
    : AbstractControllerFactory("ProgressBarsController", false)
{ }

ProgressBarsControllerFactory::~ProgressBarsControllerFactory() = default;

boost::shared_ptr<AbstractController> ProgressBarsControllerFactory::create_product()
{
    return boost::make_shared<ProgressBarsController>();
}

AbstractController* ProgressBarsControllerFactory::create_unmanaged_product()
{
    return new ProgressBarsController;
}

} // namespace tarqa::housekeeping
