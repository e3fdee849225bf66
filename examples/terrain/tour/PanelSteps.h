#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour that have to do with panels about the current map: each with what it does and what is
// to be seen then.

void open_statistics(TourStage& stage);
std::vector<TourCheck> see_statistics(TourStage& stage);

void open_layers(TourStage& stage);
std::vector<TourCheck> see_layers(TourStage& stage);

} // namespace terrain
