#include "Platform.h"

#include <QtCore/QFile>
#include <QtCore/QtGlobal>

namespace tarqa::housekeeping {

/// The system has data of its own, without which no reference system could be looked up.
bool use_data_folder(const QString& folder, const QString& file)
{
    return QFile::exists(folder + file);
}

QByteArray as_data_path(const QString& path)
{
    return QFile::encodeName(path);
}

} // namespace tarqa::housekeeping
