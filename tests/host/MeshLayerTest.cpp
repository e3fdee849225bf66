#include "views/MeshLayer.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "commands/SmoothCommand.h"
#include "commands/TriangulateCommand.h"
#include "documents/Mesh.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/App.h"
#include "support/Sanitizers.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <gtest/gtest.h>

#include <fstream>

#include <sys/resource.h>
#include <unistd.h>

using namespace host_test;
using terrain::MapLayers;
using terrain::Mesh;
using terrain::MeshLayer;
using terrain::TerrainView;

namespace {

typedef boost::shared_ptr<const Mesh> MeshPointer;

const QSize s_size(600, 400);
const int s_dark = 215; ///< a line that two rows of pixels share is no darker

/// Two triangles: a square of the columns and rows from 0.5 to 9.5, cut by the falling diagonal.
MeshPointer square()
{
    Mesh mesh;
    mesh.vertices = {{0.5, 0.5, 0}, {9.5, 0.5, 0}, {9.5, 9.5, 0}, {0.5, 9.5, 0}};
    mesh.triangles = {{0, 1, 2}, {0, 2, 3}};
    return boost::make_shared<const Mesh>(mesh);
}

/// Two triangles for each square of four cells.
MeshPointer dense(std::uint32_t columns, std::uint32_t rows)
{
    Mesh mesh;
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint32_t column = 0; column < columns; ++column) {
            mesh.vertices.push_back({column + 0.5, row + 0.5, 0});
            if (column > 0 && row > 0) {
                const std::uint32_t here = row * columns + column;
                const std::uint32_t above = here - columns;
                mesh.triangles.push_back({above - 1, above, here});
                mesh.triangles.push_back({above - 1, here, here - 1});
            }
        }
    }
    return boost::make_shared<const Mesh>(mesh);
}

QTransform scaled(double pixels)
{
    return QTransform::fromScale(pixels, pixels);
}

QImage drawn(MeshLayer& layer, const QTransform& to_widget)
{
    QImage picture(s_size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    layer.draw(painter, to_widget, picture.rect());
    return picture;
}

/// Whether a line leads through a place, or past it less than two pixels away.
bool is_dark(const QImage& picture, const QPointF& place)
{
    for (int y = -1; y <= 1; ++y) {
        for (int x = -1; x <= 1; ++x) {
            if (qGray(picture.pixel(place.toPoint() + QPoint(x, y))) < s_dark) {
                return true;
            }
        }
    }
    return false;
}

/// Whether a line of one picture, which the other does not have, leads through a place, or past it less than
/// two pixels away.
bool differs(const QImage& one, const QImage& other, const QPointF& place)
{
    const QRect there(place.toPoint() - QPoint(1, 1), QSize(3, 3));
    return one.copy(there) != other.copy(there);
}

/// Lets this process have little more memory than it has.
class MemoryLimit
{
public:
    explicit MemoryLimit(rlim_t bytes)
    {
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        getrlimit(RLIMIT_AS, &m_old);
        rlimit limit = m_old;
        limit.rlim_cur = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + bytes;
        setrlimit(RLIMIT_AS, &limit);
    }
    ~MemoryLimit() { setrlimit(RLIMIT_AS, &m_old); }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    rlimit m_old = {};
};

} // namespace

TEST(MeshLayer, DrawsEachEdgeOnce)
{
    MeshLayer layer;
    layer.show(square(), QTransform());
    const QImage picture = drawn(layer, scaled(30));
    EXPECT_EQ(layer.count(), 5u);
    EXPECT_EQ(layer.drawn(), 5u);
    for (const QPointF& place :
        {QPointF(15, 150), QPointF(285, 150), QPointF(150, 15), QPointF(150, 285), QPointF(150, 150)}) {
        EXPECT_TRUE(is_dark(picture, place)) << place.x() << ", " << place.y();
    }
    EXPECT_FALSE(is_dark(picture, QPointF(200, 100)));
    EXPECT_FALSE(is_dark(picture, QPointF(100, 200)));
    EXPECT_FALSE(is_dark(picture, QPointF(320, 150)));
}

TEST(MeshLayer, TurnsWithTheMap)
{
    MeshLayer layer;
    layer.show(square(), QTransform(-1, 0, 0, 1, 20, 0)); // the columns run west, from 20 on
    const QImage picture = drawn(layer, scaled(30));
    EXPECT_TRUE(is_dark(picture, QPointF((20 - 0.5) * 30, 150)));
    EXPECT_TRUE(is_dark(picture, QPointF((20 - 2) * 30, 60))) << "the diagonal rises to the right";
    EXPECT_FALSE(is_dark(picture, QPointF((20 - 2) * 30, 240)));
}

TEST(MeshLayer, WithoutATriangulationThereIsNothing)
{
    MeshLayer layer;
    const QImage white = drawn(layer, scaled(30));
    EXPECT_EQ(layer.drawn(), 0u);
    layer.show(square(), QTransform());
    EXPECT_NE(drawn(layer, scaled(30)), white);
    layer.show(nullptr, QTransform());
    EXPECT_EQ(drawn(layer, scaled(30)), white);
    layer.show(boost::make_shared<const Mesh>(), QTransform());
    EXPECT_EQ(drawn(layer, scaled(30)), white);
}

TEST(MeshLayer, CollectsEdgesWhenTheyAreDrawnAndOnce)
{
    MeshLayer layer;
    const MeshPointer sp_mesh = square();
    layer.show(sp_mesh, QTransform());
    EXPECT_EQ(layer.count(), 0u);
    drawn(layer, scaled(30));
    EXPECT_EQ(layer.count(), 5u);
    layer.show(sp_mesh, QTransform());
    EXPECT_EQ(layer.count(), 5u) << "the same one";
    layer.show(sp_mesh, QTransform::fromTranslate(1, 0));
    EXPECT_EQ(layer.count(), 0u);
}

TEST(MeshLayer, DrawsOnlyWhatIsInSight)
{
    MeshLayer layer;
    layer.show(dense(300, 200), QTransform());
    drawn(layer, scaled(60)); // 10 by 7 cells
    EXPECT_GT(layer.drawn(), 10u * 6 * 3);
    EXPECT_LT(layer.drawn(), 13u * 10 * 3);
    drawn(layer, scaled(60) * QTransform::fromTranslate(-100000, 0));
    EXPECT_EQ(layer.drawn(), 0u);
}

TEST(MeshLayer, ManyTrianglesAreNotDrawnAtOnceAndShowWhenOneZoomsIn)
{
    MeshLayer layer;
    layer.show(dense(500, 500), QTransform());
    const QImage far = drawn(layer, scaled(0.8));
    EXPECT_GT(layer.count(), 740000u);
    EXPECT_EQ(layer.drawn(), 0u) << "they would be black";
    EXPECT_EQ(qGray(far.pixel(200, 200)), 255);
    drawn(layer, scaled(2.2));
    EXPECT_LT(layer.drawn(), 40001u);
    const QImage near = drawn(layer, scaled(20));
    EXPECT_GT(layer.drawn(), 28u * 18 * 3);
    EXPECT_TRUE(is_dark(near, QPointF(210, 200)));
}

TEST(MeshLayer, EdgesOfVeryManyTrianglesAreNotDrawnAndItTellsWhy)
{
    MeshLayer layer;
    layer.show(square(), QTransform());
    const QImage white = drawn(layer, QTransform::fromTranslate(-1e6, 0));
    Mesh mesh = *square();
    mesh.triangles.resize(MeshLayer::most_triangles, mesh.triangles.front());
    layer.show(boost::make_shared<const Mesh>(mesh), QTransform());
    EXPECT_NE(drawn(layer, scaled(30)), white);
    EXPECT_EQ(layer.problem(), "") << "as many as can be";
    mesh.triangles.push_back(mesh.triangles.front());
    layer.show(boost::make_shared<const Mesh>(mesh), QTransform());
    EXPECT_EQ(drawn(layer, scaled(30)), white);
    EXPECT_EQ(layer.count(), 0u);
    EXPECT_EQ(layer.drawn(), 0u);
    EXPECT_EQ(layer.problem(), "There are too many triangles to draw their edges.");
    layer.show(square(), QTransform());
    EXPECT_EQ(layer.problem(), "");
    EXPECT_NE(drawn(layer, scaled(30)), white);
}

#ifndef HK_SANITIZED // which ends the program where memory ends

TEST(MeshLayer, WithoutMemoryForTheEdgesNoneAreDrawnAndItTellsWhy)
{
    const rlim_t little_memory = 8 << 20; // bytes; less than the edges of many triangles take
    const QImage white = [] {
        MeshLayer nothing;
        return drawn(nothing, scaled(30));
    }();
    Mesh mesh = *square();
    mesh.triangles.resize(MeshLayer::most_triangles, mesh.triangles.front());
    MeshLayer layer;
    layer.show(boost::make_shared<const Mesh>(mesh), QTransform());
    QImage picture = white;
    QPainter painter(&picture);
    {
        const MemoryLimit limit(little_memory);
        EXPECT_NO_THROW(layer.draw(painter, scaled(30), picture.rect()));
    }
    EXPECT_EQ(picture, white);
    EXPECT_EQ(layer.count(), 0u);
    EXPECT_NE(layer.problem(), "");
    layer.draw(painter, scaled(30), picture.rect());
    EXPECT_EQ(picture, white) << "it is not tried at each repaint";
}

#endif

TEST(MeshLayer, LongEdgesShowWhereShortOnesFade)
{
    Mesh mesh = *dense(200, 200);
    const auto first = static_cast<std::uint32_t>(mesh.vertices.size());
    mesh.vertices.insert(mesh.vertices.end(), {{250, 10, 0}, {350, 10, 0}, {300, 190, 0}});
    mesh.triangles.push_back({first, first + 1, first + 2});
    MeshLayer layer;
    layer.show(boost::make_shared<const Mesh>(mesh), QTransform());
    const QImage picture = drawn(layer, scaled(1.2));
    EXPECT_EQ(layer.drawn(), 3u);
    EXPECT_TRUE(is_dark(picture, QPointF(360, 12)));
    EXPECT_FALSE(is_dark(picture, QPointF(120, 120)));
}

// --- on a map

namespace {

class MeshOnMap : public testing::Test
{
protected:
    void SetUp() override
    {
        QCoreApplication::setOrganizationName("Tarqa"); // for a place to store preferences
        housekeeping::ApplicationManager::instance().setAnimateCameraJumps(false);
    }

    void show(const std::function<double(int, int)>& height,
        const std::array<double, 6>& place = {0, 10, 0, 0, 0, -10})
    {
        terrain::Raster raster = raster_of(40, 30, height);
        raster.geotransform = place;
        p_document = &make_document(raster);
        view = std::make_unique<TerrainView>(p_document->id());
        view->resize(s_size);
        view->show();
    }
    QImage picture() const { return view->grab().toImage(); }
    std::size_t drawn() const
    {
        picture();
        return view->picture().triangulation().drawn();
    }
    /// As a command does, and the controller that hears of it.
    void triangulate(double tolerance) const
    {
        insert(boost::make_shared<terrain::TriangulateCommand>(p_document->id(), tolerance));
        view->refresh(p_document->terrain().take_changes());
    }

    support::App application;
    terrain::TerrainDocument* p_document = nullptr;
    std::unique_ptr<TerrainView> view;
};

double slope(int column, int)
{
    return 10.0 * column;
}

double edge_of_plateau(int column, int row)
{
    return column < 10 && row < 5 ? 100 : 0;
}

} // namespace

TEST_F(MeshOnMap, ATriangulationIsShownWhenItComesAndGoesWithIt)
{
    show(slope);
    const QImage without = picture();
    triangulate(1);
    const QImage with = picture();
    EXPECT_NE(with, without);
    EXPECT_EQ(drawn(), 5u);
    undo(*p_document);
    view->refresh(p_document->terrain().take_changes());
    EXPECT_EQ(picture(), without);
    redo(*p_document);
    view->refresh(p_document->terrain().take_changes());
    EXPECT_EQ(picture(), with);
    insert(boost::make_shared<terrain::SmoothCommand>(p_document->id(), 1));
    view->refresh(p_document->terrain().take_changes());
    EXPECT_FALSE(view->picture().triangulation().mesh());
}

TEST_F(MeshOnMap, AMapThatIsMadeLaterShowsItToo)
{
    show(slope);
    triangulate(1);
    TerrainView later(p_document->id());
    EXPECT_TRUE(later.picture().triangulation().mesh());
}

TEST_F(MeshOnMap, CanBeHidden)
{
    show(slope);
    const QImage without = picture();
    triangulate(1);
    MapLayers layers = view->layers();
    EXPECT_TRUE(layers.triangulation) << "from the beginning";
    layers.triangulation = false;
    view->set_layers(layers);
    EXPECT_EQ(picture(), without);
    layers.triangulation = true;
    view->set_layers(layers);
    EXPECT_NE(picture(), without);
}

TEST_F(MeshOnMap, LiesWhereTheCellsLieHoweverTheyRun)
{
    const std::array<double, 6> places[]
        = {{0, 10, 0, 0, 0, -10}, {0, -10, 0, 0, 0, -10}, {0, 10, 0, 0, 0, 10}, {0, -10, 0, 0, 0, 10}};
    for (const auto& place : places) {
        show(edge_of_plateau, place);
        triangulate(1);
        MapLayers layers;
        layers.colours = layers.relief = layers.legend = layers.scale_bar = false;
        view->set_layers(layers);
        const QImage with = picture();
        layers.triangulation = false;
        view->set_layers(layers);
        const QImage without = picture();
        const auto has_edge = [&](double column, double row) {
            return differs(with, without,
                view->widget_position({place[1] < 0 ? 40 - column : column, place[5] > 0 ? 30 - row : row}));
        };
        SCOPED_TRACE(testing::Message() << place[1] << ", " << place[5]);
        // The foot of the plateau runs down between the columns 9 and 10, to row 5.
        EXPECT_TRUE(has_edge(10.5, 2.5));
        EXPECT_FALSE(has_edge(5, 1.5)) << "on the plateau, beside its diagonal";
        EXPECT_FALSE(has_edge(40 - 10.5, 2.5));
        EXPECT_FALSE(has_edge(10.5, 30 - 2.5));
        EXPECT_FALSE(has_edge(40 - 10.5, 30 - 2.5));
    }
}

TEST_F(MeshOnMap, TellsThatThereAreTooManyTriangles)
{
    show(slope);
    const QImage without = picture();
    Mesh mesh = *square();
    mesh.triangles.resize(MeshLayer::most_triangles + 1, mesh.triangles.front());
    p_document->terrain().mesh(boost::make_shared<const Mesh>(mesh));
    view->refresh(p_document->terrain().take_changes());
    const QPoint place_of_note(s_size.width() / 2, 20);
    EXPECT_TRUE(differs(picture(), without, place_of_note));
    MapLayers layers = view->layers();
    layers.triangulation = false;
    view->set_layers(layers);
    EXPECT_EQ(picture(), without);
}

TEST_F(MeshOnMap, StaysWhenTheDocumentHasGone)
{
    show(slope);
    triangulate(1);
    housekeeping::DocumentManager::instance().destroy_document(
        p_document->id(), true, false, false, housekeeping::DocumentId::null());
    EXPECT_EQ(drawn(), 5u);
}
