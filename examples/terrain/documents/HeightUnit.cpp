#include "documents/HeightUnit.h"

namespace terrain {

double metres_per(housekeeping::DataSource::Units unit)
{
    using housekeeping::DataSource;
    switch (unit) {
    case DataSource::Inches:
        return 0.0254;
    case DataSource::Feet:
        return 0.3048;
    case DataSource::Miles:
        return 1609.344;
    case DataSource::Kilometres:
        return 1000;
    case DataSource::Decimetres:
        return 0.1;
    default:
        return 1;
    }
}

} // namespace terrain
