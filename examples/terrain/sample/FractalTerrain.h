#pragma once

#include "documents/Raster.h"

namespace terrain {

/// A made-up landscape: fractal mountains of 100 to 900 metres with pits in them, in cells of 30 metres
/// somewhere in the zone 32 of UTM, without data in the south-eastern corner. The same size and seed give the
/// same cells on every machine.
/// @param size columns and rows, from 1 on
Raster fractal_terrain(int size, unsigned long long seed);

} // namespace terrain
