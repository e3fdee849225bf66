#include "Platform.h"

namespace tarqa::housekeeping {

/// Always: there are no other data.
bool use_data_folder(const QString&, const QString&)
{
    return true;
}

QByteArray as_data_path(const QString& path)
{
    return path.toLatin1();
}

} // namespace tarqa::housekeeping
