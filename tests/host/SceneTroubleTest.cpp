#include "SceneViewFixture.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/GdalMessages.h"
#include "preferences/PreferencesChanged.h"
#include "scene/ReliefScene.h"
#include "scene/SceneNavigator.h"
#include "scene/SceneOverlay.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtGui/QMouseEvent>
#include <QtGui/QOpenGLContext>

#include <gdal_priv.h>
#include <sched.h>

#include <functional>
#include <memory>
#include <new>
#include <utility>
#include <vector>

using namespace host_test;
using housekeeping::ApplicationManager;
using housekeeping::DocumentManager;
using terrain::SceneView;

namespace {

void move_mouse(QWidget& widget, const QPoint& to, Qt::MouseButtons held)
{
    QMouseEvent event(QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

/// While it lives, GDAL cannot shade.
class NoShading
{
public:
    NoShading() { GetGDALDriverManager()->DeregisterDriver(m_p_memory); }
    ~NoShading() { GetGDALDriverManager()->RegisterDriver(m_p_memory); }
    NoShading(const NoShading&) = delete;
    NoShading& operator=(const NoShading&) = delete;

private:
    static GDALDriver* memory_driver()
    {
        const terrain::GdalMessages with_drivers; // the program registers them once
        return GetGDALDriverManager()->GetDriverByName("MEM");
    }

    GDALDriver* m_p_memory = memory_driver(); // not owned
};

/// How high the surface of a view lies on a cell.
double level(const SceneView& view, int column, int row)
{
    const terrain::ReliefGrid& grid = view.scene()->grid();
    return grid.level_at(grid.space().place({column + 0.5, row + 0.5})).value_or(-1e9);
}

/// What goes wrong beside a view, or changes behind its back.
class SceneTroubleTest : public SceneViewTest
{ };

} // namespace

TEST_F(SceneTroubleTest, ThreadsKeepTheirProcessors)
{
    cpu_set_t before;
    ASSERT_EQ(sched_getaffinity(0, sizeof before, &before), 0);
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    show(view);
    cpu_set_t after;
    ASSERT_EQ(sched_getaffinity(0, sizeof after, &after), 0);
    EXPECT_TRUE(CPU_EQUAL(&before, &after)) << CPU_COUNT(&before) << " and " << CPU_COUNT(&after);
}

TEST_F(SceneTroubleTest, IsNotCalledByItsContextWhenItHasGone)
{
    auto p_view = std::make_unique<SceneView>(make_document(raster_of(80, 60, hill)).id());
    show(*p_view);
    const QObject* const p_canvas = p_view->canvas();
    const QOpenGLContext* const p_context = p_view->canvas()->context();
    int ends = 0;
    QObject::connect(p_context, &QOpenGLContext::aboutToBeDestroyed, p_context, [&] {
        ++ends;
        EXPECT_FALSE(QObject::disconnect(p_context, &QOpenGLContext::aboutToBeDestroyed, p_canvas, nullptr));
    });
    p_view.reset();
    EXPECT_EQ(ends, 1);
}

TEST_F(SceneTroubleTest, ADragEndsWhenItCannotGoOn)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    show(view);
    terrain::SceneCanvas& canvas = *view.canvas();
    const auto hide_and_show = [&] {
        view.hide();
        view.show();
    };
    const auto take_keyboard = [&] {
        QFocusEvent event(QEvent::FocusOut);
        QCoreApplication::sendEvent(&canvas, &event);
    };
    const auto move_without_button = [&] { move_mouse(canvas, {260, 200}, Qt::NoButton); };
    for (const auto& end :
        std::vector<std::function<void()>>{hide_and_show, take_keyboard, move_without_button}) {
        QTest::mousePress(&canvas, Qt::LeftButton, Qt::NoModifier, {250, 200});
        EXPECT_EQ(canvas.cursor().shape(), Qt::ClosedHandCursor);
        end();
        EXPECT_EQ(canvas.cursor().shape(), Qt::OpenHandCursor);
        const double heading = view.navigator().camera().heading;
        move_mouse(canvas, {330, 220}, Qt::LeftButton);
        EXPECT_EQ(view.navigator().camera().heading, heading);
        QTest::mouseRelease(&canvas, Qt::LeftButton, Qt::NoModifier, {330, 220});
    }
}

TEST_F(SceneTroubleTest, ChangesThatFailAreSaidAndDoneLater)
{
    terrain::TerrainDocument& document = make_document(raster_of(200, 200, hill));
    SceneView view(document.id());
    show(view);
    const double before = level(view, 10, 10);
    document.terrain().cells()[10 * 200 + 10] = 25;
    {
        const NoShading broken;
        view.refresh(cells({10, 10, 1, 1}));
    }
    EXPECT_TRUE(view.canvas()->overlay().problem().startsWith("The relief cannot be shaded"));
    view.refresh(cells({150, 150, 1, 1}));
    EXPECT_EQ(view.canvas()->overlay().problem(), "");
    EXPECT_GT(level(view, 10, 10), before + 0.5) << "what failed is not forgotten";
}

TEST_F(SceneTroubleTest, LayersThatFailAreSaidAndShownLater)
{
    SceneView view(make_document(raster_of(200, 200, hill)).id());
    terrain::MapLayers layers;
    layers.relief = false;
    view.show(layers);
    show(view);
    const QImage plain = picture(view);
    layers.relief = true;
    {
        const NoShading broken;
        view.show(layers);
        EXPECT_NE(view.canvas()->overlay().problem(), "");
        EXPECT_EQ(picture(view), plain);
    }
    view.refresh(cells({10, 10, 1, 1}));
    EXPECT_EQ(view.canvas()->overlay().problem(), "");
    EXPECT_NE(picture(view), plain);
}

TEST_F(SceneTroubleTest, AViewThatCouldNotBeMadeIsMadeLater)
{
    SceneView view(make_document(raster_of(80, 60, hill)).id());
    {
        const NoShading broken;
        show(view);
        EXPECT_EQ(view.scene(), nullptr);
        EXPECT_NE(view.canvas()->overlay().problem(), "");
    }
    view.hide();
    view.show();
    EXPECT_NE(view.scene(), nullptr);
    EXPECT_EQ(view.canvas()->overlay().problem(), "");
}

TEST_F(SceneTroubleTest, WithoutMemoryItStartsOver)
{
    SceneView view(make_document(raster_of(200, 200, hill)).id());
    show(view);
    const int all = view.scene()->patches_made();
    bool is_full = true;
    QObject::connect(&view.navigator(), &terrain::SceneNavigator::moved, &view, [&is_full] {
        if (std::exchange(is_full, false)) {
            throw std::bad_alloc();
        }
    });
    view.refresh(cells({10, 10, 1, 1}));
    EXPECT_EQ(view.canvas()->overlay().problem(), "std::bad_alloc");
    EXPECT_EQ(view.scene()->patches_made(), all + 1);
    view.refresh(cells({150, 150, 1, 1}));
    EXPECT_EQ(view.canvas()->overlay().problem(), "");
    EXPECT_EQ(view.scene()->patches_made(), 2 * all + 1);
}

TEST_F(SceneTroubleTest, FollowsThePreferredSampling)
{
    ApplicationManager& preferences = ApplicationManager::instance();
    preferences.setHQDownsample(true);
    terrain::TerrainDocument& document
        = make_document(raster_of(2500, 30, [](int column, int) { return column % 2 * 100; }));
    SceneView view(document.id());
    show(view);
    const auto prefer = [&preferences](bool mean) {
        preferences.setHQDownsample(mean);
        terrain::send_preferences_changed();
    };
    using terrain::Sampling;
    EXPECT_EQ(view.scene()->sampling(), Sampling::Mean);
    view.exaggeration(3);
    const double mean = level(view, 1000, 10);
    prefer(false);
    EXPECT_EQ(view.scene()->sampling(), Sampling::Nearest);
    EXPECT_NE(level(view, 1000, 10), mean);
    EXPECT_EQ(view.exaggeration(), 3);
    view.hide();
    prefer(true);
    EXPECT_EQ(view.scene()->sampling(), Sampling::Nearest) << "until it is seen again";
    view.show();
    EXPECT_NEAR(level(view, 1000, 10), mean, 1e-9);
    DocumentManager::instance().document_busy(document.id(), true);
    prefer(false);
    EXPECT_EQ(view.scene()->sampling(), Sampling::Mean) << "until the cells may be read";
    DocumentManager::instance().document_busy(document.id(), false);
    EXPECT_EQ(view.scene()->sampling(), Sampling::Nearest);
    const int made = view.scene()->patches_made();
    terrain::send_preferences_changed();
    EXPECT_EQ(view.scene()->patches_made(), made);
}
