#pragma once

#include "tour/TourSteps.h"

#include <vector>

class QString;

namespace terrain {

// The steps of the tour through the Tools menu: each with what it does, how it fills in its dialog, and what
// is to be seen then.

void open_tools_menu(TourStage& stage);
std::vector<TourCheck> see_tools_menu(TourStage& stage);

void fill_sinks(TourStage& stage);
std::vector<TourCheck> see_sinks_filled(TourStage& stage);

void smooth(TourStage& stage);
void fill_in_radius(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_parameters(TourStage& stage);
std::vector<TourCheck> see_smoothed(TourStage& stage);

void clamp_heights(TourStage& stage);
void fill_in_bounds(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_clamped(TourStage& stage);

void scale_heights(TourStage& stage);
void fill_in_factor(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_scaled(TourStage& stage);

void triangulate(TourStage& stage);
void accept_proposal(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_triangulated(TourStage& stage);

void resample(TourStage& stage);
void fill_in_cell_size(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_cell_size(TourStage& stage);
std::vector<TourCheck> see_resampled(TourStage& stage);

void crop(TourStage& stage);
void fill_in_range(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_range(TourStage& stage);
std::vector<TourCheck> see_cropped(TourStage& stage);

void clean_up(TourStage& stage);
std::vector<TourCheck> see_cleaned_up(TourStage& stage);

/// Waits for the command that the step before has begun.
void wait_for_command(TourStage& stage);

/// Remembers the cells, and that the history of the first document gets another entry.
void expect_command(TourStage& stage);
/// Whether the command of the step is the last one in the history, and nothing is running.
std::vector<TourCheck> see_done(const TourStage& stage, const QString& name);
/// Whether it has changed the cells.
TourCheck cells_differ(const TourStage& stage);

} // namespace terrain
