#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour that look at the terrain in three dimensions, each with what it does and what is to
// be seen then. On a screen without OpenGL the view says so, and that is what they look at.

void show_scene(TourStage& stage);
std::vector<TourCheck> see_scene(TourStage& stage);

void turn_scene(TourStage& stage);
std::vector<TourCheck> see_turned_scene(TourStage& stage);

void show_both(TourStage& stage);
std::vector<TourCheck> see_both(TourStage& stage);

void show_triangles(TourStage& stage);
std::vector<TourCheck> see_triangles(TourStage& stage);

} // namespace terrain
