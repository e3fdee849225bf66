#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace tarqa::housekeeping {

// What start-up asks of the operating system, each platform in a file of its own.

/// Whether GDAL and PROJ are to be pointed at a data folder of the installation. @param folder ends with a
/// separator @param file one that it must hold; empty for none
bool use_data_folder(const QString& folder, const QString& file);

/// The file of the settings that a QSettings without arguments stores; empty where they are in no file. It is
/// not looked at: the first QSettings that reads it is the only one that is told of damage.
QString settings_file();
/// Makes the directory of the file of the stored settings, for this user only. One that exists stays as it
/// is.
void make_settings_directory(const QString& file);
/// Makes the file of the stored settings, and its directory, for this user only. Qt would let everybody read
/// them, but keeps the rights of a file that exists. What exists stays as it is, but for a lock that a killed
/// process left beside the file half made.
void make_settings_file(const QString& file);

/// A path as GDAL and PROJ take it.
QByteArray as_data_path(const QString& path);

} // namespace tarqa::housekeeping
