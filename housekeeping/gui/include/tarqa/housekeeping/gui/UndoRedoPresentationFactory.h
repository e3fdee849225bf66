#pragma once

#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <boost/shared_ptr.hpp>

namespace tarqa::housekeeping::gui {

/// Registers the UndoRedoPresentation; the library holds the one object, which
/// registers while the program loads.
class TQ_HK_EXPORT UndoRedoPresentationFactory : public AbstractPresentationFactory
{
public:
    UndoRedoPresentationFactory();
    ~UndoRedoPresentationFactory() override;

    boost::shared_ptr<AbstractPresentation> create_product() override;
    /// The caller owns the presentation.
    AbstractPresentation* create_unmanaged_product() override;
};

} // namespace tarqa::housekeeping::gui
