#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour about what was done: cancelling, undo and redo. Each with what it does and what is to
// be seen then.

void show_history(TourStage& stage);
std::vector<TourCheck> see_history(TourStage& stage);

void begin_long_command(TourStage& stage);
std::vector<TourCheck> see_progress(TourStage& stage);

void cancel_command(TourStage& stage);
std::vector<TourCheck> see_nothing_changed(TourStage& stage);

void point_into_undo_list(TourStage& stage);
std::vector<TourCheck> see_undo_list(TourStage& stage);

void choose_in_undo_list(TourStage& stage);
std::vector<TourCheck> see_several_undone(TourStage& stage);

void click_on_first_line(TourStage& stage);
std::vector<TourCheck> see_first_cells(TourStage& stage);

void click_on_triangulation(TourStage& stage);
std::vector<TourCheck> see_redone(TourStage& stage);

} // namespace terrain
