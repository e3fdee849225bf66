#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour about the window, its documents and its panels: each with what it does and what is to
// be seen then.

void open_first(TourStage& stage);
std::vector<TourCheck> see_relief(TourStage& stage);

void zoom_in(TourStage& stage);
std::vector<TourCheck> see_value(TourStage& stage);

void open_second(TourStage& stage);
std::vector<TourCheck> see_second(TourStage& stage);

void open_recent_menu(TourStage& stage);
std::vector<TourCheck> see_recent_menu(TourStage& stage);

void choose_first(TourStage& stage);
std::vector<TourCheck> see_first_again(TourStage& stage);

void show_quick_help(TourStage& stage);
std::vector<TourCheck> see_quick_help(TourStage& stage);

void tear_panel_off(TourStage& stage);
std::vector<TourCheck> see_floating_panel(TourStage& stage);

void close_floating_panel(TourStage& stage);
std::vector<TourCheck> see_docked_panel(TourStage& stage);

void close_documents(TourStage& stage);
std::vector<TourCheck> see_start_page(TourStage& stage);

} // namespace terrain
