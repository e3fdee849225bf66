#include "io/MeshWriter.h"
#include "CommandFixture.h"
#include "FileSizeLimit.h"
#include "HeightsOf.h"
#include "RasterFiles.h"
#include "commands/Triangulation.h"
#include "documents/ExportTerrain.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/ReferenceSystem.h"

#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/InvalidPath.h>

#include <CGAL/IO/OBJ.h>
#include <CGAL/IO/OFF.h>
#include <CGAL/IO/PLY.h>
#include <CGAL/IO/STL.h>
#include <CGAL/Simple_cartesian.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <fstream>
#include <locale>

using namespace host_test;
using terrain::Mesh;
using terrain::Raster;
using terrain::write_mesh;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

typedef CGAL::Simple_cartesian<double> Kernel;

/// What stands in a mesh file.
struct Soup
{
    explicit Soup(const std::string& path)
    {
        std::ifstream in(path);
        const std::string extension = path.substr(path.size() - 3);
        if (extension == "ply") {
            is_read = CGAL::IO::read_PLY(in, points, triangles);
        } else if (extension == "obj") {
            is_read = CGAL::IO::read_OBJ(in, points, triangles);
        } else if (extension == "off") {
            is_read = CGAL::IO::read_OFF(in, points, triangles);
        } else {
            is_read = CGAL::IO::read_STL(in, points, triangles);
        }
    }

    const Kernel::Point_3& corner(std::size_t triangle, std::size_t number) const
    {
        return points.at(triangles.at(triangle).at(number));
    }

    bool is_read;
    std::vector<Kernel::Point_3> points;
    std::vector<std::vector<std::size_t>> triangles;
};

/// Heights with many digits.
Raster ground()
{
    Raster raster = raster_of(30, 20,
        [](int column, int row) { return std::sin(column / 5.0) * 100 / 3 - std::cos(row / 3.0) / 7; });
    raster.cells[raster.index(4, 5)] = N;
    raster.geotransform = {440000.1, 30.3, 0, 5400000.7, 0, -29.9};
    raster.reference_system = terrain::reference_system_from_epsg(32632);
    raster.unit = "metre";
    return raster;
}

Mesh mesh_of(const Raster& raster, double tolerance = 2)
{
    return terrain::triangulate(raster, tolerance, 100000, [](double) {}).mesh;
}

std::vector<std::string> extensions()
{
    return {"ply", "obj", "off", "stl"};
}

/// Expects the corners of all triangles where they lie on the Earth, with all digits.
void expect_triangles(const Soup& soup, const Mesh& mesh, const std::array<double, 6>& place)
{
    ASSERT_TRUE(soup.is_read);
    ASSERT_EQ(soup.triangles.size(), mesh.triangles.size());
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const Kernel::Point_3& a = soup.corner(i, 0);
        const Kernel::Point_3& b = soup.corner(i, 1);
        const Kernel::Point_3& c = soup.corner(i, 2);
        EXPECT_GT((b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x()), 0)
            << "against the clock, seen from above";
        for (const std::uint32_t number : mesh.triangles[i]) {
            const Mesh::Vertex& vertex = mesh.vertices[number];
            const Kernel::Point_3 expected(place[0] + vertex.column * place[1] + vertex.row * place[2],
                place[3] + vertex.column * place[4] + vertex.row * place[5], vertex.height);
            EXPECT_TRUE(a == expected || b == expected || c == expected) << expected;
        }
    }
}

std::string refusal(const Raster& raster, const Mesh& mesh, const std::string& path)
{
    try {
        write_mesh(mesh, raster, path);
    } catch (const tarqa::housekeeping::InvalidPath& exception) {
        return exception.what();
    }
    return "(no refusal)";
}

/// Lets the program speak a language with other numbers, as far as the machine knows one.
class OtherNumbers
{
public:
    OtherNumbers()
        : m_old(std::locale::global(std::locale(std::locale::classic(), new Punctuation)))
    { }
    ~OtherNumbers() { std::locale::global(m_old); }

private:
    class Punctuation : public std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale m_old;
};

} // namespace

TEST(MeshWriter, WritesAllTrianglesWithAllDigitsInEveryFormat)
{
    const Raster raster = ground();
    const Mesh mesh = mesh_of(raster);
    for (const std::string& extension : extensions()) {
        SCOPED_TRACE(extension);
        write_mesh(mesh, raster, scratch("out." + extension));
        const Soup soup(scratch("out." + extension));
        expect_triangles(soup, mesh, *raster.geotransform);
        EXPECT_EQ(soup.points.size(), mesh.vertices.size()) << "each corner once";
    }
}

TEST(MeshWriter, FollowsRastersThatAreTurned)
{
    const std::array<double, 6> places[] = {{1000, 10, 0, 2000, 0, 10}, {1000, -10, 0, 2000, 0, -10},
        {1000, -10, 0, 2000, 0, 10}, {1000, 0, 30, 2000, 30, 0}, {1000, 3, -4, 2000, 4, 3}};
    Raster raster = ground();
    const Mesh mesh = mesh_of(raster);
    for (const auto& place : places) {
        raster.geotransform = place;
        write_mesh(mesh, raster, scratch("out.ply"));
        expect_triangles(Soup(scratch("out.ply")), mesh, place);
    }
}

TEST(MeshWriter, CountsCellsWhereTheRasterHasNoPlace)
{
    Raster raster = ground();
    raster.geotransform.reset();
    raster.reference_system.clear();
    const Mesh mesh = mesh_of(raster);
    write_mesh(mesh, raster, scratch("out.off"));
    expect_triangles(Soup(scratch("out.off")), mesh, {0, 1, 0, 0, 0, -1});
    EXPECT_THAT(read_text(scratch("out.off")), HasSubstr("# x: columns of cells"));
}

TEST(MeshWriter, TellsWhereTheMeshComesFrom)
{
    Raster raster = ground();
    raster.unit = "a unit\nin two lines";
    const Mesh mesh = mesh_of(raster, 20);
    for (const std::string& extension : extensions()) {
        write_mesh(mesh, raster, scratch("out." + extension));
        EXPECT_TRUE(Soup(scratch("out." + extension)).is_read) << extension;
    }
    EXPECT_THAT(read_text(scratch("out.ply")), StartsWith("ply\nformat ascii 1.0\ncomment tarq-terrain "));
    EXPECT_THAT(read_text(scratch("out.ply")),
        HasSubstr("comment reference system: WGS 84 / UTM zone 32N (EPSG:32632)\n"
                  "comment unit of the heights: a unit in two lines\n"));
    EXPECT_THAT(read_text(scratch("out.obj")), StartsWith("# tarq-terrain "));
    EXPECT_THAT(read_text(scratch("out.obj")), HasSubstr("# reference system: WGS 84 / UTM"));
    EXPECT_THAT(read_text(scratch("out.off")), StartsWith("OFF\n# tarq-terrain "));
    EXPECT_THAT(read_text(scratch("out.stl")), StartsWith("solid tarq-terrain "));
}

TEST(MeshWriter, SpeaksTheSameNumbersInEveryLanguage)
{
    const Raster raster = ground();
    const Mesh mesh = mesh_of(raster);
    write_mesh(mesh, raster, scratch("one.ply"));
    const OtherNumbers numbers;
    write_mesh(mesh, raster, scratch("other.ply"));
    EXPECT_EQ(read_text(scratch("one.ply")), read_text(scratch("other.ply")));
}

TEST(MeshWriter, ReplacesAnExistingFileAndTakesTheExtensionInCapitals)
{
    const std::string directory = make_directory("out");
    const Raster raster = ground();
    write_text(directory + "/Höhe.PLY", "something else");
    write_mesh(mesh_of(raster), raster, directory + "/Höhe.PLY");
    EXPECT_THAT(names_in(directory), ElementsAre("Höhe.PLY"));
    EXPECT_THAT(read_text(directory + "/Höhe.PLY"), StartsWith("ply\n"));
}

TEST(MeshWriter, AFullDiskLeavesTheOldFileAlone)
{
    const std::string directory = make_directory("out");
    const Raster raster = raster_of(120, 120, [](int column, int row) { return column * row % 17; });
    const Mesh mesh = mesh_of(raster, 0.5);
    for (const std::string& extension : extensions()) {
        const std::string file = directory + "/a." + extension;
        write_text(file, "the old file");
        for (const auto size : {0u, 20000u, 100000u, 200000u}) {
            const FileSizeLimit limit(size);
            EXPECT_THAT(refusal(raster, mesh, file), HasSubstr("Cannot write \"" + file + "\": ")) << size;
        }
        EXPECT_EQ(read_text(file), "the old file");
    }
    EXPECT_THAT(names_in(directory), ElementsAre("a.obj", "a.off", "a.ply", "a.stl"));
}

TEST(MeshWriter, RefusesPlacesWhereNothingCanBeWritten)
{
    const Raster raster = ground();
    const Mesh mesh = mesh_of(raster);
    EXPECT_THAT(refusal(raster, mesh, scratch("nowhere/a.ply")), HasSubstr("there is no directory"));
    make_directory("folder.ply");
    EXPECT_THAT(refusal(raster, mesh, scratch("folder.ply")), HasSubstr("it is a directory"));
}

TEST(MeshWriter, TellsHowFarItIsAndCanBeStopped)
{
    const std::string directory = make_directory("out");
    const Raster raster = raster_of(150, 150, [](int column, int row) { return column * row % 17; });
    const Mesh mesh = mesh_of(raster, 0.5);
    for (const std::string& extension : extensions()) {
        SCOPED_TRACE(extension);
        const std::string file = directory + "/a." + extension;
        std::vector<double> shares;
        write_mesh(mesh, raster, file, [&](double share) {
            shares.push_back(share);
            return true;
        });
        EXPECT_GT(shares.size(), 5u);
        EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
        EXPECT_EQ(shares.front(), 0);
        EXPECT_GT(shares.back(), 0.98);
        EXPECT_LE(shares.back(), 1);
        std::remove(file.c_str());
        for (const double stop : {0.0, 0.1, 0.7}) {
            EXPECT_THROW(write_mesh(mesh, raster, file, [stop](double share) { return share < stop; }),
                terrain::FileCancelled);
        }
        EXPECT_THAT(names_in(directory), ElementsAre());
    }
}

// --- the export

TEST(MeshExport, WritesTheDocumentsTriangulation)
{
    terrain::TerrainDocument& document = make_document(ground());
    const auto sp_mesh = boost::make_shared<const Mesh>(mesh_of(ground()));
    document.terrain().mesh(sp_mesh);
    terrain::export_terrain(document.terrain(), scratch("out.obj"), 0);
    expect_triangles(Soup(scratch("out.obj")), *sp_mesh, *ground().geotransform);
}

TEST(MeshExport, WithoutATriangulationSaysWhatToDo)
{
    const std::string directory = make_directory("out");
    const terrain::TerrainDocument& document = make_document(ground());
    for (const std::string& extension : extensions()) {
        try {
            terrain::export_terrain(document.terrain(), directory + "/a." + extension, 0);
            ADD_FAILURE() << extension;
        } catch (const tarqa::housekeeping::InvalidPath& exception) {
            EXPECT_THAT(exception.what(), HasSubstr("there is no triangulation. Triangulate first"));
        }
    }
    EXPECT_THAT(names_in(directory), ElementsAre());
}
