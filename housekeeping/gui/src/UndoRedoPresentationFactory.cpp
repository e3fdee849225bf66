#include <tarqa/housekeeping/gui/UndoRedoPresentationFactory.h>

#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <boost/make_shared.hpp>

namespace tarqa::housekeeping::gui {

namespace {

const UndoRedoPresentationFactory s_factory;

} // namespace

UndoRedoPresentationFactory::UndoRedoPresentationFactory()
    : AbstractPresentationFactory("UndoRedoPresentation", false)
{ }

UndoRedoPresentationFactory::~UndoRedoPresentationFactory() = default;

boost::shared_ptr<AbstractPresentation> UndoRedoPresentationFactory::create_product()
{
    return boost::make_shared<UndoRedoPresentation>();
}

AbstractPresentation* UndoRedoPresentationFactory::create_unmanaged_product()
{
    return new UndoRedoPresentation;
}

} // namespace tarqa::housekeeping::gui
