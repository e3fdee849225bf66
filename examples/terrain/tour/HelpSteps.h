#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour through the Help menu: each with what it does and what is to be seen then.

void open_help(TourStage& stage);
std::vector<TourCheck> see_contents(TourStage& stage);

void open_help_about_panel(TourStage& stage);
std::vector<TourCheck> see_help_about_panel(TourStage& stage);

void open_shortcuts(TourStage& stage);
std::vector<TourCheck> see_shortcuts(TourStage& stage);

void open_about_box(TourStage& stage);
std::vector<TourCheck> see_about_box(TourStage& stage);

void open_log(TourStage& stage);
std::vector<TourCheck> see_log(TourStage& stage);

} // namespace terrain
