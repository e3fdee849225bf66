#pragma once

#include <tarqa/housekeeping/DataSource.h>

#include <QtCore/QString>

#include <boost/shared_ptr.hpp>

#include <string>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// The unit of a source's heights for people, for example "metres"; "" without a source. The source's own
/// word for it is for files.
QString height_unit_text(const boost::shared_ptr<const housekeeping::DataSource>& sp_source);

/// A unit of length or angle for people, as registers call it: "metre". One that is not known stays as it is.
QString unit_text(const std::string& name);

} // namespace terrain
