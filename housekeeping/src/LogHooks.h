#pragma once

namespace tarqa::housekeeping {

// Send the messages of the libraries below to the error log, from whichever thread they come. Each stays in
// place until the process ends, unless there is a function that takes it out.

void install_qt_log_hook();
/// Gives Qt its own message handler back.
void remove_qt_log_hook();

/// CGAL's errors and warnings. An error that CGAL reports throws all the same.
void install_cgal_log_hooks();

/// Takes GDAL's messages; pkBase::GDALErrorHandler::restore() gives GDAL its former handler back.
void install_gdal_log_hook();

void install_osg_log_hook();

} // namespace tarqa::housekeeping
