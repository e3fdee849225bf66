#pragma once

#include "documents/Raster.h"

#include <vector>

/// Operations on rasters as one writes them without looking for more, on one core: the peers of the terrain
/// host's.
namespace plain {

/// The mean over a square window around each cell, over its cells with data; cells without data stay so.
/// Sums over the columns of the windows move down with them, and sums over the windows along the row, so the
/// time does not depend on the radius.
std::vector<double> smoothed(const terrain::Raster& raster, int radius);

/// Without hollows. The priority-flood, algorithm 1 of R. Barnes, C. Lehman, D. Mulla (2014), Priority-flood:
/// An optimal depression-filling and watershed-labeling algorithm for digital elevation models, Computers &
/// Geosciences 62, 117-127. Water leaves at the border and into cells without data.
std::vector<double> filled(const terrain::Raster& raster);

} // namespace plain
