#include "language/UnitText.h"

#include <QtCore/QObject>

namespace terrain {

QString height_unit_text(const boost::shared_ptr<const housekeeping::DataSource>& sp_source)
{
    using housekeeping::DataSource;
    if (!sp_source) {
        return {};
    }
    switch (sp_source->z_units()) {
    case DataSource::Inches:
        return QObject::tr("inches");
    case DataSource::Feet:
        return QObject::tr("feet");
    case DataSource::Miles:
        return QObject::tr("miles");
    case DataSource::Kilometres:
        return QObject::tr("kilometres");
    case DataSource::Seconds:
        return QObject::tr("seconds");
    case DataSource::Milliseconds:
        return QObject::tr("milliseconds");
    case DataSource::Decimetres:
        return QObject::tr("decimetres");
    case DataSource::Metres:
        break;
    }
    return QObject::tr("metres");
}

QString unit_text(const std::string& name)
{
    if (name == "metre") {
        return QObject::tr("metre");
    }
    if (name == "foot") {
        return QObject::tr("foot");
    }
    if (name == "US survey foot") {
        return QObject::tr("US survey foot");
    }
    if (name == "degree") {
        return QObject::tr("degree");
    }
    return QString::fromStdString(name);
}

} // namespace terrain
