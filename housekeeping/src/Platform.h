#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace tarqa::housekeeping {

// What start-up asks of the operating system, each platform in a file of its own.

/// Whether GDAL and PROJ are to be pointed at a data folder of the installation. @param folder ends with a
/// separator @param file one that it must hold; empty for none
bool use_data_folder(const QString& folder, const QString& file);

/// A path as GDAL and PROJ take it.
QByteArray as_data_path(const QString& path);

} // namespace tarqa::housekeeping
