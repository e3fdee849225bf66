#include "scene/ReliefScene.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "documents/CellChanges.h"
#include "documents/Mesh.h"
#include "scene/MeshSurface.h"
#include "scene/ReliefPatch.h"
#include "views/ElevationColours.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/TriangleIndexFunctor>

#include <gtest/gtest.h>

#include <cmath>

using namespace host_test;
using terrain::CellChanges;
using terrain::HeightMeaning;
using terrain::HillShade;
using terrain::Raster;
using terrain::ReliefScene;
using terrain::Sampling;

namespace {

const boost::shared_ptr<const terrain::Mesh> s_no_mesh;
const HillShade::Look s_even{true, false}; // plain colours, no shading

ReliefScene scene_of(const Raster& raster, const HeightMeaning& meaning = {})
{
    return ReliefScene(raster, s_no_mesh, meaning, Sampling::Mean, s_even);
}

/// With square cells of a number of metres.
Raster in_metres(Raster raster, double cell)
{
    raster.geotransform = {0, cell, 0, 0, 0, -cell};
    raster.reference_system
        = "LOCAL_CS[\"flat\",UNIT[\"metre\",1],AXIS[\"Easting\",EAST],AXIS[\"Northing\",NORTH]]";
    return raster;
}

/// What is drawn of a scene, measured on the ground.
class Drawn : public osg::NodeVisitor
{
public:
    Drawn(ReliefScene& scene, unsigned int surfaces)
        : osg::NodeVisitor(TRAVERSE_ACTIVE_CHILDREN)
    {
        setTraversalMask(surfaces);
        scene.node().accept(*this);
    }

    void apply(osg::Geometry& geometry) override
    {
        const auto& places = dynamic_cast<const osg::Vec3Array&>(*geometry.getVertexArray());
        for (const auto& set : geometry.getPrimitiveSetList()) {
            if (set->getMode() == GL_LINES) {
                lines += set->getNumIndices() / 2;
                continue;
            }
            for (unsigned int i = 0; i + 2 < set->getNumIndices(); i += 3) {
                const osg::Vec3d a = places[set->index(i)];
                const osg::Vec3d b = places[set->index(i + 1)];
                const osg::Vec3d c = places[set->index(i + 2)];
                area += std::abs(((b - a) ^ (c - a)).z()) / 2;
                ++triangles;
            }
        }
        vertices += places.size();
    }

    double area = 0; ///< seen from above
    std::size_t triangles = 0;
    std::size_t vertices = 0;
    std::size_t lines = 0;
};

/// The part of the whole ground that is drawn.
double covered(ReliefScene& scene, unsigned int surfaces = terrain::fine_surface)
{
    const QRectF& ground = scene.grid().space().ground();
    return Drawn(scene, surfaces).area / (ground.width() * ground.height());
}

CellChanges cells(const QRect& changed)
{
    CellChanges changes;
    changes.cells = changed;
    return changes;
}

double slope(int column, int row)
{
    return column + 2 * row;
}

} // namespace

// --- what is drawn

TEST(ReliefScene, CoversTheWholeRaster)
{
    for (const QSize& size :
        {QSize(1, 1), QSize(1, 9), QSize(9, 1), QSize(63, 64), QSize(64, 65), QSize(130, 70)}) {
        ReliefScene scene = scene_of(raster_of(size.width(), size.height(), slope));
        EXPECT_NEAR(covered(scene), 1, 1e-4) << size.width() << " x " << size.height();
        EXPECT_NEAR(covered(scene, terrain::coarse_surface), 1, 1e-4);
    }
}

TEST(ReliefScene, CellsWithoutDataAreHoles)
{
    const Raster raster = raster_of(
        100, 80, [](int column, int row) { return (column * 7 + row * 3) % 5 == 0 ? N : column; });
    double present = 0;
    for (const double cell : raster.cells) {
        present += terrain::is_no_data(cell) ? 0 : 1;
    }
    ReliefScene scene = scene_of(raster);
    EXPECT_NEAR(covered(scene), present / 8000, 1e-4);
    EXPECT_NEAR(covered(scene, terrain::coarse_surface), present / 8000, 1e-4);
}

TEST(ReliefScene, TheCoarseSurfaceHasFewTriangles)
{
    ReliefScene scene = scene_of(raster_of(200, 200, slope));
    EXPECT_LT(
        Drawn(scene, terrain::coarse_surface).triangles * 10, Drawn(scene, terrain::fine_surface).triangles);
}

TEST(ReliefScene, HugeRastersAreDrawnFromMeans)
{
    ReliefScene scene = scene_of(raster_of(2500, 1500, slope));
    EXPECT_LE(scene.grid().columns(), terrain::ReliefGrid::max_side);
    EXPECT_LT(Drawn(scene, terrain::fine_surface).vertices, 1000000U);
    EXPECT_NEAR(covered(scene), 1, 1e-4);
}

TEST(ReliefScene, WithoutDataThereIsNothing)
{
    for (const Raster& raster : {Raster(), make_raster(2, 2, {N, N, N, N})}) {
        ReliefScene scene = scene_of(raster);
        EXPECT_EQ(Drawn(scene, ~0U).triangles, 0U);
        EXPECT_FALSE(scene.has_heights());
        EXPECT_FALSE(scene.hit({0, 0, 100}, {0, 0, -1}));
        scene.exaggeration(3);
        EXPECT_TRUE(scene.bounds().valid());
    }
}

TEST(ReliefScene, TheColoursAreTheMaps)
{
    const Raster raster = make_raster(3, 1, {0, 50, 100});
    const ReliefScene scene = scene_of(raster);
    const osg::Image& picture = scene.texture().image();
    ASSERT_EQ(picture.s(), 3);
    for (int column = 0; column < 3; ++column) {
        const unsigned char* const p_colour = picture.data(static_cast<unsigned int>(column), 0);
        EXPECT_EQ(qRgb(p_colour[0], p_colour[1], p_colour[2]), scene.shade().picture().pixel(column, 0));
        const QRgb expected = terrain::elevation_colour(column / 2.0);
        EXPECT_NEAR(p_colour[0], qRed(expected), 1);
        EXPECT_NEAR(p_colour[1], qGreen(expected), 1);
        EXPECT_EQ(p_colour[3], 255);
    }
}

TEST(ReliefScene, WithoutDataThePictureIsTransparentInTheColourBeside)
{
    const ReliefScene scene = scene_of(make_raster(3, 1, {0, N, 0}));
    const osg::Image& picture = scene.texture().image();
    EXPECT_EQ(picture.data(1, 0)[3], 0);
    EXPECT_EQ(picture.data(1, 0)[0], picture.data(0, 0)[0]);
}

TEST(ReliefScene, AnotherLookIsAnotherPicture)
{
    ReliefScene scene = scene_of(raster_of(20, 20, slope));
    const unsigned char red = scene.texture().image().data(0, 0)[0];
    scene.show({false, false});
    const unsigned char* const p_colour = scene.texture().image().data(0, 0);
    EXPECT_EQ(p_colour[0], p_colour[1]) << "grey";
    EXPECT_NE(p_colour[0], red);
}

// --- where it lies

TEST(ReliefScene, NorthIsAheadAndWestIsLeft)
{
    Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    raster.geotransform = {1000, -10, 0, 500, 0, 10}; // the first cell is in the south-east
    const ReliefScene scene = scene_of(raster);
    const double quarter = terrain::SceneSpace::side / 4;
    EXPECT_NEAR(*scene.grid().level_at({quarter, -quarter}), 0, 1e-9);
    EXPECT_NEAR(*scene.grid().level_at({-quarter, quarter}), 1, 1e-9);
    EXPECT_FALSE(scene.surface({terrain::SceneSpace::side, 0}));
}

TEST(ReliefScene, DepthsRunDownwards)
{
    HeightMeaning depths;
    depths.depth = true;
    const ReliefScene scene = scene_of(make_raster(2, 1, {10, 20}), depths);
    EXPECT_GT(*scene.surface({-250, 0}), *scene.surface({250, 0}));
}

TEST(ReliefScene, MetresOnMetresAreTrueToScale)
{
    ReliefScene scene = scene_of(in_metres(make_raster(2, 1, {0, 3}), 10));
    EXPECT_TRUE(scene.is_to_scale());
    EXPECT_EQ(scene.exaggeration(), 1) << "the relief shows";
    EXPECT_NEAR(*scene.surface({250, 0}) - *scene.surface({-250, 0}), 1000 * 3 / 20.0, 1e-9);
    scene.exaggeration(2);
    EXPECT_NEAR(*scene.surface({250, 0}) - *scene.surface({-250, 0}), 1000 * 6 / 20.0, 1e-9);
    HeightMeaning feet;
    feet.metres = 0.3048;
    ReliefScene lower = scene_of(in_metres(make_raster(2, 1, {0, 3}), 10), feet);
    lower.exaggeration(1);
    EXPECT_NEAR(lower.bounds().zMax(), 1000 * 3 * 0.3048 / 20, 1e-9);
}

TEST(ReliefScene, FlatTerrainIsExaggeratedAndSteepTerrainFlattened)
{
    const ReliefScene flat = scene_of(in_metres(make_raster(2, 1, {0, 0.01}), 10));
    EXPECT_GT(flat.exaggeration(), 10);
    EXPECT_NEAR(flat.bounds().zMax(), 80, 25);
    const ReliefScene steep = scene_of(in_metres(make_raster(2, 1, {0, 200}), 10));
    EXPECT_LT(steep.exaggeration(), 0.1);
    EXPECT_TRUE(steep.is_to_scale());
    EXPECT_LE(steep.bounds().zMax(), 401);
}

TEST(ReliefScene, TimesAndUnknownGroundsAreNotToScale)
{
    HeightMeaning times;
    times.metres = 0;
    for (const ReliefScene& scene :
        {scene_of(in_metres(make_raster(2, 1, {0, 3}), 10), times), scene_of(make_raster(2, 1, {0, 3}))}) {
        EXPECT_FALSE(scene.is_to_scale());
        EXPECT_EQ(scene.exaggeration(), 1);
        EXPECT_NEAR(scene.bounds().zMax(), 80, 1e-9);
    }
}

TEST(ReliefScene, NumbersAreNeverTooLargeOrSmall)
{
    const double huge = 1.7e308;
    for (const double cell : {1e-300, 1.0, 1e300}) {
        for (const auto& heights : {std::vector<double>{-huge, huge}, {0, 1e-300}, {5, 5}, {0, 1}}) {
            const ReliefScene scene = scene_of(in_metres(make_raster(2, 1, heights), cell));
            const osg::BoundingBoxd box = scene.bounds();
            EXPECT_TRUE(std::isfinite(box.zMin()) && std::isfinite(box.zMax())) << cell << " " << heights[0];
            EXPECT_LE(box.zMax() - box.zMin(), terrain::SceneSpace::side) << cell << " " << heights[0];
            EXPECT_GT(scene.exaggeration(), 0);
            EXPECT_TRUE(std::isfinite(scene.exaggeration()));
        }
    }
}

TEST(ReliefScene, TheExaggerationHasBounds)
{
    ReliefScene scene = scene_of(make_raster(2, 1, {0, 3}));
    scene.exaggeration(1e9);
    EXPECT_EQ(scene.exaggeration(), scene.most_exaggeration());
    scene.exaggeration(0);
    EXPECT_EQ(scene.exaggeration(), scene.least_exaggeration());
    EXPECT_GT(scene.exaggeration(), 0);
}

TEST(ReliefScene, RaysMeetTheSurface)
{
    const ReliefScene scene = scene_of(make_raster(3, 3, {0, 0, 0, 0, 9, 0, 0, 0, N}));
    const auto top = scene.hit({0, 0, 500}, {0, 0, -3});
    ASSERT_TRUE(top);
    EXPECT_NEAR(top->z(), *scene.surface({0, 0}), 1e-3);
    EXPECT_FALSE(scene.hit({0, 0, 500}, {0, 0, 1})) << "away from it";
    EXPECT_FALSE(scene.hit({2000, 0, 500}, {0, 0, -1})) << "beside it";
    EXPECT_FALSE(scene.hit({450, -450, 500}, {0, 0, -1})) << "through a hole";
    const auto side = scene.hit({-2000, 0, 40}, {1, 0, 0});
    ASSERT_TRUE(side);
    EXPECT_LT(side->x(), 0) << "the slope that one sees";
    EXPECT_NEAR(*scene.surface({side->x(), 0}), 40, 1e-2);
}

// --- changes

TEST(ReliefScene, OnlyPatchesWithChangedCellsAreMadeAnew)
{
    Raster raster = raster_of(300, 200, slope);
    ReliefScene scene = scene_of(raster);
    const int all = scene.patches_made();
    EXPECT_EQ(all, 5 * 4);
    raster.cells[raster.index(30, 30)] += 1;
    scene.refresh(raster, s_no_mesh, cells({30, 30, 1, 1}));
    EXPECT_EQ(scene.patches_made(), all + 1);
    EXPECT_NEAR(*scene.grid().level_at(scene.grid().space().place({30.5, 30.5})),
        scene.grid().space().level(raster.cell(30, 30)), 1e-9);
    scene.refresh(raster, s_no_mesh, cells({63, 30, 1, 1}));
    EXPECT_EQ(scene.patches_made(), all + 3) << "at an edge both sides have it";
    scene.refresh(raster, s_no_mesh, cells({63, 63, 1, 1}));
    EXPECT_EQ(scene.patches_made(), all + 7);
    scene.refresh(raster, s_no_mesh, CellChanges());
    EXPECT_EQ(scene.patches_made(), all + 7);
}

TEST(ReliefScene, ChangesAreWhereTheRasterStoresThem)
{
    Raster raster = raster_of(200, 200, slope);
    raster.geotransform = {0, -1, 0, 0, 0, 1};
    ReliefScene scene = scene_of(raster);
    raster.cells[raster.index(0, 0)] = 300;
    scene.refresh(raster, s_no_mesh, cells({0, 0, 1, 1}));
    EXPECT_NEAR(*scene.grid().level_at(scene.grid().space().place({199.5, 199.5})),
        scene.grid().space().level(300), 1e-9);
}

TEST(ReliefScene, ARefreshedSceneIsAsANewOne)
{
    Raster raster = raster_of(150, 90, slope);
    raster.cells[raster.index(70, 50)] = N;
    ReliefScene scene = scene_of(raster);
    raster.cells[raster.index(70, 50)] = 80;
    raster.cells[raster.index(64, 64)] = N;
    raster.cells[raster.index(0, 0)] = N;
    raster.cells[raster.index(1, 0)] = 0;
    scene.refresh(raster, s_no_mesh, cells({0, 0, 71, 65}));
    ReliefScene fresh = scene_of(raster);
    EXPECT_NEAR(covered(scene), covered(fresh), 1e-6);
    EXPECT_EQ(Drawn(scene, ~0U).triangles, Drawn(fresh, ~0U).triangles);
    const osg::Image& one = scene.texture().image();
    const osg::Image& other = fresh.texture().image();
    ASSERT_EQ(one.getTotalSizeInBytes(), other.getTotalSizeInBytes());
    EXPECT_TRUE(std::equal(one.data(), one.data() + one.getTotalSizeInBytes(), other.data()));
}

TEST(ReliefScene, AnotherRangeOfHeightsChangesColoursAndKeepsTheScale)
{
    Raster raster = raster_of(100, 100, slope);
    ReliefScene scene = scene_of(raster);
    const double before = *scene.surface({0, 0});
    const int red = scene.texture().image().data(50, 50)[0];
    const int made = scene.patches_made();
    raster.cells[0] = 900;
    scene.refresh(raster, s_no_mesh, cells({0, 0, 1, 1}));
    EXPECT_EQ(scene.patches_made(), made + 1);
    EXPECT_NEAR(*scene.surface({0, 0}), before, 1e-9);
    EXPECT_NE(scene.texture().image().data(50, 50)[0], red);
    EXPECT_NEAR(scene.bounds().zMax(), 900 / 297.0 * 80, 1);
}

TEST(ReliefScene, ARangeOfAnotherKindIsScaledAnew)
{
    Raster raster = raster_of(100, 100, slope);
    ReliefScene scene = scene_of(raster);
    const int made = scene.patches_made();
    raster.cells[0] = 1e9;
    scene.refresh(raster, s_no_mesh, cells({0, 0, 1, 1}));
    EXPECT_EQ(scene.patches_made(), 2 * made);
    EXPECT_NEAR(scene.bounds().zMax(), 80, 1e-6);
}

TEST(ReliefScene, HeightsComeAndGo)
{
    Raster raster = make_raster(2, 1, {N, N});
    ReliefScene scene = scene_of(raster);
    raster.cells = {1, 2};
    scene.refresh(raster, s_no_mesh, cells({0, 0, 2, 1}));
    EXPECT_NEAR(covered(scene), 1, 1e-4);
    raster.cells = {N, N};
    scene.refresh(raster, s_no_mesh, cells({0, 0, 2, 1}));
    EXPECT_EQ(Drawn(scene, ~0U).triangles, 0U);
}

TEST(ReliefScene, AnotherRasterTakesItsPlace)
{
    ReliefScene scene = scene_of(raster_of(100, 100, slope));
    scene.exaggeration(3);
    const Raster smaller = raster_of(10, 5, slope);
    CellChanges changes;
    changes.reshaped = true;
    scene.refresh(smaller, s_no_mesh, changes);
    EXPECT_EQ(scene.grid().columns(), 10);
    EXPECT_NEAR(covered(scene), 1, 1e-4);
    EXPECT_EQ(scene.exaggeration(), 1);
}

// --- a mesh

namespace {

/// Two triangles over a raster of two columns and rows; one stands above.
boost::shared_ptr<const terrain::Mesh> two_triangles()
{
    auto sp_mesh = boost::make_shared<terrain::Mesh>();
    sp_mesh->vertices = {{0, 0, 1}, {2, 0, 2}, {2, 2, 4}, {0, 2, 3}};
    sp_mesh->triangles = {{0, 1, 2}, {0, 2, 3}};
    return sp_mesh;
}

/// So many triangles in the same places.
boost::shared_ptr<const terrain::Mesh> many_triangles(std::size_t count)
{
    auto sp_mesh = boost::make_shared<terrain::Mesh>(*two_triangles());
    sp_mesh->triangles.assign(count, {0, 1, 2});
    return sp_mesh;
}

} // namespace

TEST(ReliefScene, AMeshStandsInForTheCells)
{
    const Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    ReliefScene scene(raster, two_triangles(), HeightMeaning(), Sampling::Mean, s_even);
    const Drawn drawn(scene, terrain::fine_surface);
    EXPECT_EQ(drawn.triangles, 2U);
    EXPECT_EQ(drawn.lines, 5U) << "the shared edge once";
    EXPECT_NEAR(covered(scene), 1, 1e-6);
    scene.shows_mesh(false);
    EXPECT_EQ(Drawn(scene, terrain::fine_surface).lines, 0U);
    EXPECT_GT(Drawn(scene, terrain::fine_surface).triangles, 2U);
    EXPECT_NEAR(covered(scene), 1, 1e-6);
}

TEST(ReliefScene, AMeshComesAndGoes)
{
    const Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    ReliefScene scene = scene_of(raster);
    EXPECT_FALSE(scene.has_mesh());
    CellChanges changes;
    changes.mesh = true;
    const int made = scene.patches_made();
    scene.refresh(raster, two_triangles(), changes);
    EXPECT_EQ(Drawn(scene, terrain::fine_surface).triangles, 2U);
    scene.refresh(raster, s_no_mesh, changes);
    EXPECT_GT(Drawn(scene, terrain::fine_surface).triangles, 2U);
    EXPECT_EQ(scene.patches_made(), made) << "the cells are as they were";
}

TEST(ReliefScene, AMeshOfNothingIsNothing)
{
    const Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    ReliefScene scene(raster, boost::make_shared<terrain::Mesh>(), HeightMeaning(), Sampling::Mean, s_even);
    EXPECT_EQ(Drawn(scene, terrain::fine_surface).triangles, 0U);
}

TEST(ReliefScene, AMeshIsMadeOnce)
{
    const Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    ReliefScene scene(raster, two_triangles(), HeightMeaning(), Sampling::Mean, s_even);
    for (int i = 0; i < 3; ++i) {
        scene.shows_mesh(false);
        EXPECT_EQ(Drawn(scene, terrain::fine_surface).lines, 0U);
        scene.shows_mesh(true);
        EXPECT_EQ(Drawn(scene, terrain::fine_surface).lines, 5U);
    }
    EXPECT_EQ(scene.meshes_made(), 1);
    CellChanges changes;
    changes.mesh = true;
    scene.shows_mesh(false);
    scene.refresh(raster, many_triangles(7), changes);
    EXPECT_EQ(scene.meshes_made(), 1) << "nobody sees it";
    scene.shows_mesh(true);
    EXPECT_EQ(Drawn(scene, terrain::fine_surface).triangles, 7U) << "not the old one";
}

TEST(ReliefScene, LargeMeshesHaveNoLines)
{
    const Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    const std::size_t most = terrain::most_lined_triangles;
    ReliefScene lined(raster, many_triangles(most), HeightMeaning(), Sampling::Mean, s_even);
    EXPECT_EQ(Drawn(lined, terrain::fine_surface).lines, 3U);
    ReliefScene plain(raster, many_triangles(most + 1), HeightMeaning(), Sampling::Mean, s_even);
    EXPECT_EQ(Drawn(plain, terrain::fine_surface).lines, 0U);
    EXPECT_EQ(Drawn(plain, terrain::fine_surface).triangles, most + 1);
}

TEST(ReliefScene, TooLargeMeshesAreNotDrawn)
{
    const Raster raster = make_raster(2, 2, {1, 2, 3, 4});
    const std::size_t most = terrain::most_surface_triangles;
    ReliefScene scene(raster, many_triangles(most + 1), HeightMeaning(), Sampling::Mean, s_even);
    EXPECT_LT(Drawn(scene, terrain::fine_surface).triangles, 100U);
    EXPECT_NEAR(covered(scene), 1, 1e-6) << "the cells are";
    EXPECT_EQ(scene.meshes_made(), 0);
    CellChanges changes;
    changes.mesh = true;
    scene.refresh(raster, many_triangles(most), changes);
    EXPECT_EQ(Drawn(scene, terrain::fine_surface).triangles, most);
}

TEST(ReliefScene, AnotherSamplingIsAnotherSurfaceOfTheSameScale)
{
    const Raster raster = raster_of(2500, 3, [](int column, int) { return column % 2 * 100; });
    ReliefScene scene = scene_of(raster);
    const double mean = *scene.grid().level_at({0, 0});
    scene.exaggeration(3);
    scene.sampling(raster, Sampling::Nearest);
    EXPECT_EQ(scene.sampling(), Sampling::Nearest);
    EXPECT_NE(*scene.grid().level_at({0, 0}), mean);
    EXPECT_EQ(scene.exaggeration(), 3);
    ReliefScene small = scene_of(make_raster(2, 2, {1, 2, 3, 4}));
    small.sampling(make_raster(2, 2, {1, 2, 3, 4}), Sampling::Nearest);
    EXPECT_EQ(small.patches_made(), 1) << "all of its cells are seen anyway";
}
