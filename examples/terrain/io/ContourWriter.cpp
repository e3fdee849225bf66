#include "io/ContourWriter.h"

#include "documents/Raster.h"
#include "io/ContourLines.h"
#include "io/GdalMessages.h"
#include "io/NewFile.h"
#include "language/NumberText.h"

#include <QtCore/QObject>

#include <ogrsf_frmts.h>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/ContourWriter";

const char* const s_layer = "contours";
const char* const s_field = "height";
const double s_computing = 0.5; ///< share of the time until the lines are there

OGRLineString line_on_earth(const ContourLine& line, const std::array<double, 6>& place)
{
    OGRLineString geometry;
    geometry.setNumPoints(static_cast<int>(line.points.size()), FALSE);
    int number = 0;
    for (const QPointF& point : line.points) {
        geometry.setPoint(number++, place[0] + point.x() * place[1] + point.y() * place[2],
            place[3] + point.x() * place[4] + point.y() * place[5]);
    }
    return geometry;
}

OGRLayer* make_layer(GDALDataset& dataset, const std::string& reference_system)
{
    OGRSpatialReference system;
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    const bool has_system
        = !reference_system.empty() && system.importFromWkt(reference_system.c_str()) == OGRERR_NONE;
    OGRLayer* const p_layer = dataset.CreateLayer(s_layer, has_system ? &system : nullptr, wkbLineString);
    OGRFieldDefn field(s_field, OFTReal);
    return p_layer && p_layer->CreateField(&field) == OGRERR_NONE ? p_layer : nullptr;
}

bool add_line(OGRLayer& layer, const ContourLine& line, const std::array<double, 6>& place)
{
    const OGRFeatureUniquePtr feature(OGRFeature::CreateFeature(layer.GetLayerDefn()));
    const OGRLineString geometry = line_on_earth(line, place);
    feature->SetField(s_field, line.height);
    return feature->SetGeometry(&geometry) == OGRERR_NONE
        && layer.CreateFeature(feature.get()) == OGRERR_NONE;
}

bool write_file(const Raster& raster, const std::vector<ContourLine>& lines, const std::string& path,
    const GdalMessages& messages, const FileProgress& progress)
{
    GDALDriver* const p_driver = GetGDALDriverManager()->GetDriverByName("GPKG");
    if (!p_driver) {
        return false;
    }
    GDALDatasetUniquePtr dataset(p_driver->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    OGRLayer* const p_layer = dataset ? make_layer(*dataset, raster.reference_system) : nullptr;
    if (!p_layer || dataset->StartTransaction() != OGRERR_NONE) {
        return false;
    }
    const std::array<double, 6> place
        = raster.geotransform.value_or(std::array<double, 6>{0, 1, 0, 0, 0, -1});
    double done = 0;
    for (const ContourLine& line : lines) {
        report(progress, s_computing + (1 - s_computing) * done++ / static_cast<double>(lines.size()));
        if (!add_line(*p_layer, line, place)) {
            return false;
        }
    }
    if (dataset->CommitTransaction() != OGRERR_NONE) {
        return false;
    }
    dataset.reset();
    return !messages.failed(); // closing tells by a message only
}

bool verify_file(const std::vector<ContourLine>& lines, const std::string& path)
{
    const GDALDatasetUniquePtr dataset(
        GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_VERBOSE_ERROR));
    OGRLayer* const p_layer = dataset ? dataset->GetLayerByName(s_layer) : nullptr;
    return p_layer && p_layer->GetFeatureCount() == static_cast<GIntBig>(lines.size());
}

} // namespace

void write_contours(
    const Raster& raster, double interval, const std::string& path, const FileProgress& progress)
{
    const NewFile file(path);
    report(progress, 0);
    const std::vector<ContourLine> lines = contour_lines(raster, interval);
    if (lines.empty()) {
        file.fail(QObject::tr("there are no contour lines at an interval of %1").arg(number_text(interval)),
            s_source, __LINE__);
    }
    const GdalMessages messages;
    if (!write_file(raster, lines, file.temporary(), messages, progress)) {
        file.fail(messages, s_source, __LINE__);
    }
    if (!verify_file(lines, file.temporary())) {
        file.fail(QObject::tr("what was written cannot be read back. %1").arg(messages.text().c_str()),
            s_source, __LINE__);
    }
    file.put_in_place();
}

} // namespace terrain
