#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QMessageBox>

#include <optional>

class QWidget;

namespace terrain {

// What the main window asks and tells the user in dialogs. Main thread.

/// Rasters to open; none if the user thought better of it.
QStringList ask_for_rasters(QWidget* p_parent);
/// Where to write what, by the extension; "" if the user thought better of it. A name without an extension
/// gets that of the format that was chosen. @param has_mesh whether there is a triangulation to be written
QString ask_for_export_file(QWidget* p_parent, bool has_mesh);
/// Where to save a GeoTIFF; "" if the user thought better of it. @param proposed a file
QString ask_for_file_to_save(QWidget* p_parent, const QString& proposed);
/// The interval between contour lines; none if the user thought better of it.
/// @param proposed above 0 @param unit of the heights
std::optional<double> ask_for_interval(QWidget* p_parent, double proposed, const QString& unit);

/// What to do with changes that are not written: Save, Discard or Cancel.
QMessageBox::StandardButton ask_about_changes(QWidget* p_parent, const QString& document);
/// What to do with a document's own file: Yes to write it, No to save to another one, or Cancel.
/// @param reason why there is a question
QMessageBox::StandardButton ask_about_own_file(QWidget* p_parent, const QString& reason);
/// Whether to open an overview of a raster that is too large. @param reason with the numbers
/// @param reduction of how many columns and rows of the raster one stands for
bool ask_for_overview(QWidget* p_parent, const QString& reason, int reduction);

void say_that_it_is_busy(const QString& title, const QString& text);

} // namespace terrain
