#include "TerrainText.h"

#include "CommandFixture.h"
#include "documents/Mesh.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/DataSource.h>

#include <limits>
#include <sstream>

namespace host_test {

namespace {

void append(std::ostream& text, const terrain::Raster& raster)
{
    text << "size: " << raster.columns << " x " << raster.rows << ", " << raster.cells.size() << " cells\n";
    if (raster.geotransform) {
        text << "place:";
        for (const double number : *raster.geotransform) {
            text << ' ' << number;
        }
        text << '\n';
    }
    text << "reference system: " << raster.reference_system << "\narea or point: " << raster.area_or_point
         << "\nunit: " << raster.unit << "\ndata type: " << raster.data_type << '\n';
    if (raster.file_no_data) {
        text << "marks no data: " << *raster.file_no_data << '\n';
    }
    const std::vector<unsigned long long> all_bits = bits(raster.cells);
    for (std::size_t i = 0; i < raster.cells.size(); ++i) {
        text << "cell " << i << ": " << raster.cells[i] << " (" << std::hex << all_bits[i] << std::dec
             << ")\n";
    }
}

void append(std::ostream& text, const terrain::Mesh& mesh)
{
    text << "triangulation within " << mesh.tolerance << '\n';
    for (const terrain::Mesh::Vertex& vertex : mesh.vertices) {
        text << "vertex " << vertex.column << ' ' << vertex.row << ' ' << vertex.height << '\n';
    }
    for (const auto& triangle : mesh.triangles) {
        text << "triangle " << triangle[0] << ' ' << triangle[1] << ' ' << triangle[2] << '\n';
    }
}

} // namespace

std::string text_of(const housekeeping::AbstractDocument& document)
{
    const auto& terrain = dynamic_cast<const terrain::TerrainDocument&>(document);
    std::ostringstream text;
    text.precision(std::numeric_limits<double>::max_digits10);
    text << "own file: " << terrain.own_file() << ", may be overwritten: " << terrain.may_overwrite()
         << "\nsource file: " << terrain.source_file() << ", format: " << terrain.source_format()
         << "\nreduction: " << terrain.reduction() << '\n';
    if (const auto sp_source = terrain.datasource()) {
        text << "data source: " << sp_source->key() << ", units " << sp_source->z_units() << '\n';
    }
    append(text, terrain.terrain().raster());
    if (const auto& sp_mesh = terrain.terrain().mesh()) {
        append(text, *sp_mesh);
    }
    return text.str();
}

} // namespace host_test
