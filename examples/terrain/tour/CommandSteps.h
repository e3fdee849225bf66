#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour that have to do with commands: each with what it does and what is to be seen then.

void open_parameters(TourStage& stage);
std::vector<TourCheck> see_parameters(TourStage& stage);

void run_three_commands(TourStage& stage);
std::vector<TourCheck> see_history(TourStage& stage);

void point_into_undo_list(TourStage& stage);
std::vector<TourCheck> see_undo_list(TourStage& stage);

void begin_long_command(TourStage& stage);
std::vector<TourCheck> see_progress(TourStage& stage);

void cancel_command(TourStage& stage);
std::vector<TourCheck> see_nothing_changed(TourStage& stage);

void undo_all(TourStage& stage);
std::vector<TourCheck> see_first_cells(TourStage& stage);

} // namespace terrain
