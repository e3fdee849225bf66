#include "panels/HeightProfile.h"

#include "documents/Raster.h"
#include "views/Footprint.h"

#include <algorithm>

namespace terrain {

namespace {

const double s_metres_in_kilometre = 1000;
const double s_long = 10000; ///< metres; longer profiles are told in kilometres

} // namespace

HeightProfile::HeightProfile(const Raster& raster, const CellPlace& through, Direction along)
    : direction(along)
{
    const Footprint footprint(raster);
    const bool is_row = along == Direction::Row;
    const int count = is_row ? raster.columns : raster.rows;
    const bool is_reversed = is_row ? footprint.columns_run_west : footprint.rows_run_north;
    double step = 1;
    if (footprint.in_metres) {
        step = is_row ? footprint.cell_width : footprint.cell_height;
        unit = step * (count - 1) < s_long ? DistanceUnit::Metres : DistanceUnit::Kilometres;
        step /= unit == DistanceUnit::Metres ? 1 : s_metres_in_kilometre;
    }
    points.reserve(count);
    for (int i = 0; i < count; ++i) {
        const int cell = is_reversed ? count - 1 - i : i;
        const double height = is_row ? raster.cell(cell, through.row) : raster.cell(through.column, cell);
        points.append(QPointF(i * step, height));
        if (cell == (is_row ? through.column : through.row)) {
            here = points.last();
        }
        if (!is_no_data(height)) {
            lowest = has_heights ? std::min(lowest, height) : height;
            highest = has_heights ? std::max(highest, height) : height;
            has_heights = true;
        }
    }
}

} // namespace terrain
