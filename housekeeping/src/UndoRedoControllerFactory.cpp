#include <tarqa/housekeeping/UndoRedoControllerFactory.h>

#include <tarqa/housekeeping/UndoRedoController.h>

#include <boost/make_shared.hpp>

namespace tarqa::housekeeping {

namespace {

const UndoRedoControllerFactory s_factory;

} // namespace

UndoRedoControllerFactory::UndoRedoControllerFactory()
    : AbstractControllerFactory("UndoRedoController", false)
{ }

UndoRedoControllerFactory::~UndoRedoControllerFactory() = default;

boost::shared_ptr<AbstractController> UndoRedoControllerFactory::create_product()
{
    return boost::make_shared<UndoRedoController>();
}

AbstractController* UndoRedoControllerFactory::create_unmanaged_product()
{
    return new UndoRedoController;
}

} // namespace tarqa::housekeeping
