#include "io/ReferenceSystem.h"

#include "io/GdalMessages.h"

#include <cpl_conv.h>
#include <ogr_spatialref.h>

namespace terrain {

namespace {

bool import(OGRSpatialReference& system, const std::string& wkt)
{
    return !wkt.empty() && system.importFromWkt(wkt.c_str()) == OGRERR_NONE;
}

std::string text(const char* p_text)
{
    return p_text ? p_text : "";
}

} // namespace

std::string reference_system_name(const std::string& wkt)
{
    const GdalMessages messages;
    OGRSpatialReference system;
    if (!import(system, wkt)) {
        return {};
    }
    const std::string name = text(system.GetName());
    const std::string authority = text(system.GetAuthorityName(nullptr));
    const std::string code = text(system.GetAuthorityCode(nullptr));
    return authority.empty() || code.empty() ? name : name + " (" + authority + ":" + code + ")";
}

std::string reference_system_unit(const std::string& wkt)
{
    const GdalMessages messages;
    OGRSpatialReference system;
    if (!import(system, wkt)) {
        return {};
    }
    const char* p_name = nullptr;
    if (system.IsGeographic()) {
        system.GetAngularUnits(&p_name);
    } else {
        system.GetLinearUnits(&p_name);
    }
    return text(p_name);
}

CoordinateUnit coordinate_unit(const std::string& wkt)
{
    const GdalMessages messages;
    OGRSpatialReference system;
    if (!import(system, wkt)) {
        return {};
    }
    const bool angular = system.IsGeographic() != 0;
    return {angular, angular ? system.GetAngularUnits() : system.GetLinearUnits()};
}

std::string reference_system_from_epsg(int code)
{
    const GdalMessages messages;
    OGRSpatialReference system;
    char* p_wkt = nullptr;
    if (system.importFromEPSG(code) != OGRERR_NONE || system.exportToWkt(&p_wkt) != OGRERR_NONE) {
        CPLFree(p_wkt);
        return {};
    }
    const std::string wkt = text(p_wkt);
    CPLFree(p_wkt);
    return wkt;
}

} // namespace terrain
