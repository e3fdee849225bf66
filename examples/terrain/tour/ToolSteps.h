#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour with the tools of the map: each with what it does and what is to be seen then.

void raise_ground(TourStage& stage);
std::vector<TourCheck> see_raised(TourStage& stage);

void lower_ground(TourStage& stage);
std::vector<TourCheck> see_lowered(TourStage& stage);

void click_corners(TourStage& stage);
std::vector<TourCheck> see_corners(TourStage& stage);

void close_polygon(TourStage& stage);
std::vector<TourCheck> see_flattened(TourStage& stage);

} // namespace terrain
