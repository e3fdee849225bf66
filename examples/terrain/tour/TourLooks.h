#pragma once

#include "tour/TourSteps.h"

#include <string>
#include <vector>

class QPoint;

namespace terrain {

class TerrainView;

// What several steps of the tour look at.

TourCheck document_count_is(unsigned long long expected);
TourCheck title_names(const MainWindow& window, const QString& file);
/// Whether there are about as many colours on the map as there are heights.
TourCheck relief_is_drawn(const MainWindow& window);
TourCheck entry_count_is(const MainWindow& window, int expected);
/// Whether the entry of the menu offers to undo @p command; nothing if that is empty.
TourCheck undo_names(const QString& command = {});
TourCheck is_text(const QString& what, const QString& text, const QString& expected);

/// A text of the library's undo and redo in the language of the program.
QString undo_word(const char* text);
/// Checksum of the current document's raster.
std::string current_cells();
/// A point of the map that holds a height, near the middle.
QPoint interesting_point(const TerrainView& view);

} // namespace terrain
