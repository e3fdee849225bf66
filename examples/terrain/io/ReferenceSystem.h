#pragma once

#include <string>

namespace terrain {

/// A reference system for people, for example "WGS 84 / UTM zone 32N (EPSG:32632)". "" gives "".
/// @param wkt as in Raster::reference_system
std::string reference_system_name(const std::string& wkt);

/// The unit of a reference system's axes, for example "metre" or "degree"; "" if unknown.
std::string reference_system_unit(const std::string& wkt);

/// What a reference system's coordinates are measured in.
struct CoordinateUnit
{
    bool angular = false; ///< angles, else lengths
    double factor = 0; ///< of one unit: radians or metres; 0 if unknown
};
CoordinateUnit coordinate_unit(const std::string& wkt);

/// A reference system of the EPSG's register as WKT; "" if it is unknown.
std::string reference_system_from_epsg(int code);

} // namespace terrain
