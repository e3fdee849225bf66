#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour through the preferences: each with what it does and what is to be seen then.

void open_general_page(TourStage& stage);
std::vector<TourCheck> see_general_page(TourStage& stage);

void open_viewer_page(TourStage& stage);
std::vector<TourCheck> see_viewer_page(TourStage& stage);

void open_performance_page(TourStage& stage);
std::vector<TourCheck> see_performance_page(TourStage& stage);

void open_animation_page(TourStage& stage);
std::vector<TourCheck> see_animation_page(TourStage& stage);

void change_background(TourStage& stage);
std::vector<TourCheck> see_changed_background(TourStage& stage);

void change_background_back(TourStage& stage);
std::vector<TourCheck> see_first_background(TourStage& stage);

} // namespace terrain
