#include "Platform.h"

namespace tarqa::housekeeping {

/// Always: there are no other data.
bool use_data_folder(const QString&, const QString&)
{
    return true;
}

/// They are in the registry.
QString settings_file(const QString&, const QString&)
{
    return {};
}

bool keep_settings_file(const QString&)
{
    return false;
}

bool end_of_settings_change(const QString&, bool, bool)
{
    return true;
}

void mend_settings_file(const QString&) { }

void make_settings_directory(const QString&) { }

void make_settings_file(const QString&) { }

QByteArray as_data_path(const QString& path)
{
    return path.toLatin1();
}

} // namespace tarqa::housekeeping
