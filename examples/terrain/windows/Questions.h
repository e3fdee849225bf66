#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QMessageBox>

class QWidget;

namespace terrain {

// What the main window asks and tells the user in dialogs. Main thread.

/// Rasters to open; none if the user thought better of it.
QStringList ask_for_rasters(QWidget* p_parent);
/// Where to write a GeoTIFF; "" if the user thought better of it.
QString ask_for_export_file(QWidget* p_parent);
/// What to do with changes that are not written: Save, Discard or Cancel.
QMessageBox::StandardButton ask_about_changes(QWidget* p_parent, const QString& document);

void say_that_it_is_busy(const QString& title, const QString& text);

} // namespace terrain
