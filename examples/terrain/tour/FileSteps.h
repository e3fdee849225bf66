#pragma once

#include "tour/TourSteps.h"

#include <vector>

namespace terrain {

// The steps of the tour that write files, which go to a folder of its own, and the one that closes a document
// with changes: each with what it does, how it fills in its dialogs, and what is to be seen then.

void save_as(TourStage& stage);
void name_saved_file(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_file_dialog(TourStage& stage);

void wait_for_saving(TourStage& stage);
std::vector<TourCheck> see_saved(TourStage& stage);

void export_files(TourStage& stage);
void name_exported_file(TourStage& stage, QDialog& dialog);
std::vector<TourCheck> see_exported(TourStage& stage);

void close_with_changes(TourStage& stage);
std::vector<TourCheck> see_question(TourStage& stage);

} // namespace terrain
