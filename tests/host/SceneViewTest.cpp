#include "scene/SceneView.h"
#include "SceneViewFixture.h"
#include "documents/Mesh.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "preferences/PreferencesChanged.h"
#include "scene/ReliefScene.h"
#include "scene/SceneBar.h"
#include "scene/SceneOverlay.h"
#include "tour/UserInput.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>

#include <set>

using namespace host_test;
using housekeeping::ApplicationManager;
using housekeeping::DocumentManager;
using terrain::CellChanges;
using terrain::SceneView;

namespace {

/// The part of the pixels that are not the background.
double drawn_part(const QImage& picture)
{
    int drawn = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor colour = picture.pixelColor(x, y);
            drawn += colour.blue() > colour.red() + colour.green() ? 0 : 1;
        }
    }
    return static_cast<double>(drawn) / (picture.width() * picture.height());
}

/// With OpenGL at a scale of 200 %.
class SharpSceneViewTest : public testing::Test
{
protected:
    void SetUp() override { prepare(); }

    SceneScreen screen{2};
    support::App application;
};

} // namespace

TEST_F(SceneViewTest, DrawsTheTerrainInItsColours)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    EXPECT_EQ(view.scene(), nullptr) << "until it is seen";
    show(view);
    const QImage image = picture(view);
    EXPECT_GT(drawn_part(image), 0.2);
    EXPECT_LT(drawn_part(image), 0.9);
    EXPECT_EQ(image.pixelColor(2, 2), s_ground);
    std::set<QRgb> colours;
    for (int x = 0; x < image.width(); ++x) {
        colours.insert(image.pixel(x, image.height() / 2));
    }
    EXPECT_GT(colours.size(), 20U);
}

TEST_F(SceneViewTest, HasTheColoursOfTheMap)
{
    SceneView view(make_document(raster_of(20, 20, [](int, int row) { return row < 10 ? 0.0 : 1e-9; })).id());
    terrain::MapLayers plain;
    plain.relief = false;
    view.show(plain);
    show(view);
    for (int i = 0; i < 10; ++i) {
        view.look_down(); // until the ground is seen from above
    }
    const terrain::SceneNavigator& navigator = view.navigator();
    const QPointF at(250, 120);
    const auto place = navigator.place_under(at);
    ASSERT_TRUE(place);
    const QPoint pixel = view.scene()->grid().space().map({place->x(), place->y()}).toPoint();
    const QColor expected = view.scene()->shade().picture().pixelColor(pixel);
    const QColor found = picture(view).pixelColor(at.toPoint());
    EXPECT_NEAR(found.red(), expected.red(), 3);
    EXPECT_NEAR(found.green(), expected.green(), 3);
    EXPECT_NEAR(found.blue(), expected.blue(), 3);
}

TEST_F(SceneViewTest, DrawsOnlyWhenSomethingChanges)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    show(view);
    EXPECT_TRUE(QTest::qWaitFor([&view] {
        const int frames = view.canvas()->frames();
        QCoreApplication::processEvents();
        return view.canvas()->frames() == frames;
    })) << "comes to rest";
    const QImage before = picture(view);
    EXPECT_EQ(picture(view), before);
    terrain::drag(*view.canvas(), {250, 200}, {330, 220});
    EXPECT_NE(picture(view), before);
}

TEST_F(SceneViewTest, KeysAndWheelMoveIt)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    show(view);
    terrain::SceneCanvas& canvas = *view.canvas();
    const terrain::SceneNavigator& navigator = view.navigator();
    const double distance = navigator.camera().distance;
    terrain::turn_wheel(canvas, {250, 200}, 1);
    EXPECT_LT(navigator.camera().distance, distance);
    QTest::keyClick(&canvas, Qt::Key_0);
    EXPECT_NEAR(navigator.camera().distance, distance, 1e-6);
    QTest::keyClick(&canvas, Qt::Key_Plus);
    EXPECT_LT(navigator.camera().distance, distance);
    QTest::keyClick(&canvas, Qt::Key_Minus);
    EXPECT_NEAR(navigator.camera().distance, distance, 1e-6);
    QTest::keyClick(&canvas, Qt::Key_Right);
    EXPECT_GT(navigator.camera().heading, 0);
    QTest::keyClick(&canvas, Qt::Key_N);
    EXPECT_NEAR(navigator.camera().heading, 0, 1e-9);
    const double pitch = navigator.camera().pitch;
    QTest::keyClick(&canvas, Qt::Key_Down);
    EXPECT_GT(navigator.camera().pitch, pitch);
    QTest::mouseDClick(&canvas, Qt::LeftButton, Qt::NoModifier, {250, 250});
    EXPECT_FALSE(canvas.accessibleName().isEmpty());
}

TEST_F(SceneViewTest, FliesWithKeys)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    show(view);
    view.mode(terrain::SceneMode::Fly);
    const osg::Vec3d eye = view.navigator().camera().eye();
    QTest::keyPress(view.canvas(), Qt::Key_W);
    EXPECT_TRUE(view.navigator().is_moving());
    EXPECT_TRUE(QTest::qWaitFor([&] { return (view.navigator().camera().eye() - eye).length() > 1; }));
    QTest::keyRelease(view.canvas(), Qt::Key_W);
    EXPECT_FALSE(view.navigator().is_moving());
    QTest::keyPress(view.canvas(), Qt::Key_W);
    view.hide();
    EXPECT_FALSE(view.navigator().is_moving()) << "nothing moves behind the scenes";
}

TEST_F(SceneViewTest, FollowsChangesWhileItIsSeen)
{
    terrain::TerrainDocument& document = make_document(raster_of(200, 200, hill));
    SceneView view(document.id());
    show(view);
    const QImage before = picture(view);
    const int made = view.scene()->patches_made();
    for (int i = 0; i < 20; ++i) {
        document.terrain().cells()[static_cast<std::size_t>(100 * 200 + 90 + i)] = 25;
    }
    view.refresh(cells({90, 100, 20, 1}));
    EXPECT_EQ(view.scene()->patches_made(), made + 1);
    EXPECT_NE(picture(view), before);
}

TEST_F(SceneViewTest, HiddenItWaits)
{
    terrain::TerrainDocument& document = make_document(raster_of(200, 200, hill));
    SceneView view(document.id());
    show(view);
    const int made = view.scene()->patches_made();
    view.hide();
    view.refresh(cells({10, 10, 1, 1}));
    view.refresh(cells({20, 20, 1, 1}));
    EXPECT_EQ(view.scene()->patches_made(), made);
    view.show();
    EXPECT_EQ(view.scene()->patches_made(), made + 1) << "once for both";
}

TEST_F(SceneViewTest, ABusyDocumentIsNotRead)
{
    terrain::TerrainDocument& document = make_document(raster_of(80, 60, hill));
    DocumentManager& manager = DocumentManager::instance();
    manager.document_busy(document.id(), true);
    SceneView view(document.id());
    show(view);
    EXPECT_EQ(view.scene(), nullptr);
    EXPECT_EQ(drawn_part(picture(view)), 0);
    manager.document_busy(document.id(), false);
    EXPECT_NE(view.scene(), nullptr);
    EXPECT_GT(drawn_part(picture(view)), 0.2);
    const int made = view.scene()->patches_made();
    manager.document_busy(document.id(), true);
    view.refresh(cells({10, 10, 1, 1}));
    EXPECT_EQ(view.scene()->patches_made(), made);
    manager.document_busy(document.id(), false);
    EXPECT_GT(view.scene()->patches_made(), made);
}

TEST_F(SceneViewTest, OutlivesItsDocument)
{
    terrain::TerrainDocument& document = make_document(raster_of(80, 60, hill));
    SceneView view(document.id());
    show(view);
    const QImage before = picture(view);
    DocumentManager::instance().destroy_document(
        document.id(), true, false, false, housekeeping::DocumentId::null());
    view.refresh(CellChanges::everything());
    EXPECT_EQ(picture(view), before);
    view.zoom_in();
    EXPECT_NE(picture(view), before);
    view.exaggerate_more();
}

TEST_F(SceneViewTest, TwoDocumentsHaveViewsOfTheirOwn)
{
    SceneView one(make_document(raster_of(80, 60, hill)).id());
    show(one);
    const QImage before = picture(one);
    {
        SceneView other(make_document(raster_of(30, 60, hill)).id());
        show(other);
        EXPECT_GT(drawn_part(picture(other)), 0.05);
        EXPECT_NE(picture(other), before);
    }
    EXPECT_EQ(picture(one), before) << "the other one took only what was its own";
    one.zoom_in();
    EXPECT_NE(picture(one), before);
}

TEST_F(SceneViewTest, MovesToAnotherWindow)
{
    QWidget window;
    window.resize(s_size);
    auto* const p_view = new SceneView(make_document(raster_of(80, 60, hill)).id());
    show(*p_view);
    p_view->setParent(&window);
    p_view->resize(s_size);
    p_view->show();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_GT(drawn_part(picture(*p_view)), 0.2);
}

TEST_F(SceneViewTest, OddRastersAreShown)
{
    const double huge = 1.7e308;
    for (const terrain::Raster& raster :
        {make_raster(1, 1, {5}), raster_of(90, 1, hill), raster_of(1, 90, hill),
            raster_of(20, 20, [](int, int) { return 7; }), make_raster(2, 2, {-huge, huge, 1e-300, 0})}) {
        SceneView view(make_document(raster).id());
        show(view);
        EXPECT_GT(drawn_part(picture(view)), 0.001) << raster.columns << " x " << raster.rows;
        view.exaggerate_less();
        view.fit();
    }
    terrain::Raster tiny = make_raster(2, 2, {1, 2, 3, 4});
    tiny.geotransform = {0, 1e-300, 0, 0, 0, -1e-300};
    SceneView view(make_document(tiny).id());
    show(view);
    EXPECT_GT(drawn_part(picture(view)), 0.05);
}

TEST_F(SceneViewTest, WithoutHeightsItSaysSo)
{
    for (const terrain::Raster& raster : {terrain::Raster(), make_raster(2, 2, {N, N, N, N})}) {
        SceneView view(make_document(raster).id());
        show(view);
        EXPECT_EQ(drawn_part(picture(view)), 0);
        EXPECT_EQ(view.canvas()->overlay().note(), "");
        EXPECT_FALSE(view.bar().isEnabled());
        view.zoom_in();
        QTest::mouseDClick(view.canvas(), Qt::LeftButton, Qt::NoModifier, {250, 200});
    }
}

TEST_F(SceneViewTest, HolesShowTheBackground)
{
    SceneView whole(make_document(raster_of(60, 60, [](int, int) { return 1; })).id());
    show(whole);
    SceneView holed(make_document(raster_of(60, 60, [](int column, int row) {
        return column > 14 && column < 45 && row > 14 && row < 45 ? N : 1;
    })).id());
    show(holed);
    EXPECT_NEAR(drawn_part(picture(holed)) / drawn_part(picture(whole)), 0.75, 0.04);
}

TEST_F(SceneViewTest, ATriangulationIsALayer)
{
    terrain::TerrainDocument& document = make_document(raster_of(80, 60, hill));
    SceneView view(document.id());
    show(view);
    const QImage cells_only = picture(view);
    auto sp_mesh = boost::make_shared<terrain::Mesh>();
    sp_mesh->vertices = {{0, 0, 0}, {80, 0, 10}, {80, 60, 0}, {0, 60, 30}};
    sp_mesh->triangles = {{0, 1, 2}, {0, 2, 3}};
    document.terrain().mesh(sp_mesh);
    CellChanges changes;
    changes.mesh = true;
    view.refresh(changes);
    EXPECT_NE(picture(view), cells_only);
    terrain::MapLayers layers;
    layers.triangulation = false;
    view.show(layers);
    EXPECT_EQ(picture(view), cells_only);
}

TEST_F(SceneViewTest, HolesSmallerThanTheSurfaceKnowsShowTheBackground)
{
    // Three of these cells along a side are one of the surface, and each of those has a height.
    SceneView whole(make_document(raster_of(1401, 1401, [](int, int) { return 1; })).id());
    show(whole);
    SceneView holed(make_document(raster_of(1401, 1401, [](int column, int) {
        return column % 6 == 2 || column % 6 == 3 ? N : 1;
    })).id());
    show(holed);
    for (SceneView* const p_view : {&whole, &holed}) {
        for (int i = 0; i < 40; ++i) {
            p_view->zoom_in();
        }
    }
    EXPECT_LT(drawn_part(picture(holed)), drawn_part(picture(whole)) * 0.85);
}

TEST_F(SceneViewTest, TheExaggerationIsToldAndSet)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    EXPECT_EQ(view.exaggeration(), 1) << "without a scene";
    show(view);
    EXPECT_EQ(view.canvas()->overlay().note(), "heights not to scale, 1×");
    EXPECT_EQ(view.bar().box().value(), 1);
    view.exaggerate_more();
    EXPECT_EQ(view.exaggeration(), 1.25);
    EXPECT_EQ(view.bar().box().value(), 1.25);
    EXPECT_EQ(view.canvas()->overlay().note(), "heights not to scale, 1.25×");
    view.bar().box().setValue(3);
    EXPECT_EQ(view.exaggeration(), 3);
    view.bar().slider().setValue(view.bar().slider().maximum());
    EXPECT_NEAR(view.exaggeration(), 20, 1e-9);
    view.exaggerate_more();
    EXPECT_NEAR(view.exaggeration(), 20, 1e-9);
    view.bar().box().setValue(0);
    EXPECT_EQ(view.exaggeration(), 0.05);
    EXPECT_EQ(view.bar().box().value(), 0.05);
}

TEST_F(SceneViewTest, FollowsThePreferredBackground)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    show(view);
    ApplicationManager::instance().setViewBackgroundColour(Qt::red);
    terrain::send_preferences_changed();
    EXPECT_EQ(picture(view).pixelColor(2, 2), QColor(Qt::red));
}

TEST_F(SceneViewTest, DepthsHangDown)
{
    terrain::TerrainDocument& document = make_document(raster_of(80, 60, hill));
    const auto source = boost::make_shared<housekeeping::DataSource>();
    source->z_sign(housekeeping::DataSource::Depth);
    document.datasource(source);
    SceneView view(document.id());
    show(view);
    EXPECT_LT(view.scene()->bounds().zMin(), -10);
    EXPECT_EQ(view.scene()->bounds().zMax(), 0);
}

TEST_F(SharpSceneViewTest, HasAllPixelsOfASharpScreen)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    show(view);
    const QImage image = picture(view);
    EXPECT_EQ(image.size(), view.canvas()->size() * 2);
    EXPECT_GT(drawn_part(image), 0.2);
    EXPECT_EQ(image.pixelColor(image.width() - 3, 3), s_ground);
    EXPECT_GT(drawn_part(image.copy(image.width() / 2, 0, image.width() / 2, image.height())), 0.15)
        << "the right half too";
}

TEST(SceneViewWithoutOpenGl, SaysWhyThereIsNoPicture)
{
    const support::App application;
    prepare();
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    view.resize(s_size);
    view.show();
    EXPECT_FALSE(terrain::has_scene_graphics());
    EXPECT_EQ(view.canvas(), nullptr);
    EXPECT_EQ(view.scene(), nullptr);
    const auto* const p_text = view.findChild<QLabel*>();
    EXPECT_TRUE(view.focusProxy()->inherits("QLabel"));
    EXPECT_NE(p_text, nullptr);
    view.zoom_in();
    view.exaggerate_more();
    view.refresh(CellChanges::everything());
    view.mode(terrain::SceneMode::Fly);
    EXPECT_FALSE(view.grab().isNull());
}
