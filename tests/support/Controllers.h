#pragma once

#include "support/TestAccess.h"

#include <tarqa/housekeeping/ControllerManager.h>

namespace support {

/// Makes the controllers that are registered, the library's own among them, as every host does before its
/// first document. Nothing if the test made them already.
inline void init_controllers()
{
    using tarqa::housekeeping::ControllerManager;
    if (tarqa::housekeeping::TestAccess::controllers(ControllerManager::instance()) == 0) {
        ControllerManager::instance().init();
    }
}

} // namespace support
