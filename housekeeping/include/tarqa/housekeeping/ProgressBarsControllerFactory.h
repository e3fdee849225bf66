#pragma once

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <boost/shared_ptr.hpp>

namespace tarqa::housekeeping {

/// Registers the ProgressBarsController; the library holds the one object, which
/// registers while the program loads.
class TQ_HK_EXPORT ProgressBarsControllerFactory : public AbstractControllerFactory
{
public:
    ProgressBarsControllerFactory();
    ~ProgressBarsControllerFactory() override;

    boost::shared_ptr<AbstractController> create_product() override;
    /// The caller owns the controller.
    AbstractController* create_unmanaged_product() override;
};

} // namespace tarqa::housekeeping
