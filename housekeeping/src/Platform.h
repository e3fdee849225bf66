#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace tarqa::housekeeping {

// What start-up asks of the operating system, each platform in a file of its own.

/// Whether GDAL and PROJ are to be pointed at a data folder of the installation. @param folder ends with a
/// separator @param file one that it must hold; empty for none
bool use_data_folder(const QString& folder, const QString& file);

/// The file that a QSettings of these names stores; empty where settings are in no file. It is not looked at:
/// the first QSettings that reads it is the only one that is told of damage.
QString settings_file(const QString& organization, const QString& application);
/// Keeps what the file holds beside it until the change that now begins has ended, under a second name, which
/// needs no room. @return whether it could; not everywhere can a file have two names
bool keep_settings_file(const QString& file);
/// To be called after a change. @param holds_values whether there are some to be in the file. @return whether
/// it is whole; if not, and it was kept, it is what it was
bool end_of_settings_change(const QString& file, bool was_kept, bool holds_values);
/// The same for a process that was killed meanwhile.
void mend_settings_file(const QString& file);
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
