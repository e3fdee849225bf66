#pragma once

#include <tarqa/housekeeping/DataSource.h>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// How many metres a document's unit of heights is long; 1 for times, which have no length.
double metres_per(housekeeping::DataSource::Units unit);

} // namespace terrain
