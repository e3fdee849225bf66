#pragma once

#include <tarqa/utilities/tq_utl_export.h>

#include <string>

namespace tarqa::utilities {

/// The login name of the user that this process runs as; "unknown" if the system does not tell. Any thread.
TQ_UTL_EXPORT std::string user_name();

} // namespace tarqa::utilities
