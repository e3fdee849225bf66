#include "documents/OpenTerrain.h"

#include "documents/RasterInformation.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterReader.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QObject>

#include <boost/make_shared.hpp>

#include <filesystem>
#include <iterator>
#include <map>

namespace terrain {

namespace {

/// A file's URL; the name of a subdataset is no path and stays as it is.
std::string url_of(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored) ? tarqa::utilities::filesystem_to_url(path) : path;
}

} // namespace

TerrainFile read_terrain(const std::string& path, const FileProgress& progress, int reduction)
{
    const FileStamp stamp = file_stamp(path); // whoever writes it while it is read is noticed later
    const RasterFile file(path, RasterInformation().band());
    return {path, file.read(progress, reduction), reduction == 1 && file.is_plain_geotiff(), stamp, reduction,
        file.format()};
}

TerrainDocument& open_terrain(TerrainFile file)
{
    const auto information = boost::make_shared<RasterInformation>();
    const auto source = boost::make_shared<housekeeping::DataSource>(url_of(file.path), information);
    source->z_units(units_of(file.raster.unit));

    auto& document
        = dynamic_cast<TerrainDocument&>(housekeeping::DocumentManager::instance().create_document());
    document.terrain().raster(std::move(file.raster));
    document.datasource(source);
    document.source_file(file.path, file.stamp);
    document.source_format(file.format);
    document.reduction(file.reduction);
    document.own_file(file.can_be_saved ? file.path : std::string(), false);
    document.add_history();
    document.buildModel();
    return document;
}

TerrainDocument& open_terrain(const std::string& path)
{
    // Everything that may fail comes before the document, so that a failure leaves no trace.
    return open_terrain(read_terrain(path));
}

void log_opened(const TerrainDocument& document, const std::string& path)
{
    const std::string run = std::prev(document.history_end())->description();
    housekeeping::ErrorProtocol::instance().log_message(
        QObject::tr("Opened \"%1\" (%2)").arg(path.c_str(), run.c_str()).toStdString());
}

housekeeping::DataSource::Units units_of(const std::string& unit)
{
    using housekeeping::DataSource;
    static const std::map<QString, DataSource::Units> s_units = {
        {"in", DataSource::Inches},
        {"inch", DataSource::Inches},
        {"inches", DataSource::Inches},
        {"ft", DataSource::Feet},
        {"foot", DataSource::Feet},
        {"feet", DataSource::Feet},
        {"us survey foot", DataSource::Feet},
        {"us-ft", DataSource::Feet},
        {"ftus", DataSource::Feet},
        {"mi", DataSource::Miles},
        {"mile", DataSource::Miles},
        {"miles", DataSource::Miles},
        {"dm", DataSource::Decimetres},
        {"decimetre", DataSource::Decimetres},
        {"km", DataSource::Kilometres},
        {"kilometre", DataSource::Kilometres},
        {"kilometer", DataSource::Kilometres},
        {"s", DataSource::Seconds},
        {"sec", DataSource::Seconds},
        {"seconds", DataSource::Seconds},
        {"ms", DataSource::Milliseconds},
        {"msec", DataSource::Milliseconds},
        {"milliseconds", DataSource::Milliseconds},
    };
    const auto found = s_units.find(QString::fromStdString(unit).trimmed().toLower());
    return found == s_units.end() ? DataSource::Metres : found->second;
}

} // namespace terrain
