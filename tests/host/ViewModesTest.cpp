#include "RasterFiles.h"
#include "SceneScreen.h"
#include "WindowFixture.h"
#include "documents/TerrainDocument.h"
#include "scene/SceneCanvas.h"
#include "scene/SceneView.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/DocumentPage.h"
#include "windows/DocumentViews.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QTest>
#include <QtWidgets/QAction>

#include <gtest/gtest.h>

using namespace host_test;
using housekeeping::ApplicationManager;
using terrain::Deed;
using terrain::DocumentPage;
using terrain::ViewMode;

namespace {

/// Without OpenGL.
class ViewModesTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        ApplicationManager::instance().setAnimateCameraJumps(false);
    }

    DocumentPage& page() const { return *window->views().current_page(); }
    QAction& action(Deed deed) const { return window->action(deed); }
};

/// With it: the screen is there before the application object.
class ScreenFirst
{
protected:
    SceneScreen screen;
};

class SceneModesTest : private ScreenFirst, public ViewModesTest
{
protected:
    void SetUp() override
    {
        ViewModesTest::SetUp();
        ApplicationManager::instance().setUse3DViewByDefault(false);
    }
};

} // namespace

TEST_F(ViewModesTest, ADocumentBeginsWithItsMap)
{
    EXPECT_FALSE(action(Deed::View3D).isEnabled());
    ApplicationManager::instance().setUse3DViewByDefault(true);
    open_terrain_file("a.tif");
    EXPECT_EQ(page().mode(), ViewMode::Map) << "there is no OpenGL";
    EXPECT_EQ(page().scene(), nullptr);
    EXPECT_TRUE(action(Deed::ViewMap).isChecked());
    EXPECT_TRUE(action(Deed::View3D).isEnabled());
    EXPECT_FALSE(action(Deed::Fly).isEnabled());
    EXPECT_FALSE(action(Deed::ExaggerateMore).isEnabled());
}

TEST_F(ViewModesTest, WithoutOpenGlTheViewSaysSo)
{
    open_terrain_file("a.tif");
    action(Deed::ViewBoth).trigger();
    ASSERT_NE(page().scene(), nullptr);
    EXPECT_TRUE(page().scene()->isVisible());
    EXPECT_EQ(page().scene()->canvas(), nullptr);
    EXPECT_FALSE(action(Deed::Fly).isEnabled());
    action(Deed::ViewMap).trigger();
    EXPECT_FALSE(page().scene()->isVisible());
}

TEST_F(ViewModesTest, TheMapStaysTheCurrentOne)
{
    open_terrain_file("a.tif");
    terrain::TerrainView* const p_map = window->view();
    action(Deed::View3D).trigger();
    EXPECT_EQ(window->view(), p_map);
    EXPECT_FALSE(p_map->isVisible());
    action(Deed::ViewMap).trigger();
    EXPECT_TRUE(p_map->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), p_map);
}

TEST_F(ViewModesTest, EachDocumentRemembersItsViews)
{
    open_terrain_file("a.tif");
    const auto first = current().id();
    action(Deed::ViewBoth).trigger();
    open_terrain_file("b.tif");
    EXPECT_EQ(page().mode(), ViewMode::Map);
    EXPECT_TRUE(action(Deed::ViewMap).isChecked());
    housekeeping::DocumentManager::instance().current_document(first);
    EXPECT_EQ(page().mode(), ViewMode::Both);
    EXPECT_TRUE(action(Deed::ViewBoth).isChecked());
    EXPECT_FALSE(action(Deed::ViewMap).isChecked());
    window->close_document();
    window->close_document();
    EXPECT_EQ(window->views().current_page(), nullptr);
    EXPECT_FALSE(action(Deed::ViewBoth).isEnabled());
}

TEST_F(SceneModesTest, NothingOfAViewIsMadeBeforeItIsWanted)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(page().scene(), nullptr);
    EXPECT_TRUE(window->findChildren<QOpenGLWidget*>().isEmpty());
}

TEST_F(SceneModesTest, NewDocumentsHaveBothViewsIfTheUserPrefersThat)
{
    ApplicationManager::instance().setUse3DViewByDefault(true);
    open_terrain_file("a.tif");
    EXPECT_EQ(page().mode(), ViewMode::Both);
    EXPECT_TRUE(page().map().isVisible());
    EXPECT_TRUE(page().scene()->isVisible());
    EXPECT_NE(page().scene()->scene(), nullptr);
    EXPECT_TRUE(action(Deed::ViewBoth).isChecked());
    EXPECT_TRUE(action(Deed::Orbit).isChecked());
    EXPECT_EQ(page().scene_in_hand(), nullptr) << "the map has the keyboard";
}

TEST_F(SceneModesTest, MovesGoToTheOnlyView)
{
    open_terrain_file("a.tif");
    action(Deed::View3D).trigger();
    const double scale = page().map().scale();
    const double distance = page().scene()->navigator().camera().distance;
    action(Deed::ZoomIn).trigger();
    EXPECT_LT(page().scene()->navigator().camera().distance, distance);
    EXPECT_EQ(page().map().scale(), scale);
    action(Deed::Fit).trigger();
    EXPECT_NEAR(page().scene()->navigator().camera().distance, distance, 1e-6);
    action(Deed::PanRight).trigger();
    EXPECT_NE(page().scene()->navigator().camera().heading, 0);
    action(Deed::ViewMap).trigger();
    action(Deed::ZoomIn).trigger();
    EXPECT_GT(page().map().scale(), scale);
}

TEST_F(SceneModesTest, SideBySideMovesGoToTheViewWithTheKeyboard)
{
    open_terrain_file("a.tif");
    action(Deed::ViewBoth).trigger();
    terrain::SceneView& scene = *page().scene();
    const double scale = page().map().scale();
    const double distance = scene.navigator().camera().distance;
    terrain::give_keyboard(*scene.canvas());
    action(Deed::ZoomIn).trigger();
    EXPECT_LT(scene.navigator().camera().distance, distance);
    EXPECT_EQ(page().map().scale(), scale);
    terrain::give_keyboard(page().map());
    action(Deed::ZoomIn).trigger();
    EXPECT_GT(page().map().scale(), scale);
}

TEST_F(SceneModesTest, DeedsSwitchTheScene)
{
    open_terrain_file("a.tif");
    action(Deed::View3D).trigger();
    terrain::SceneView& scene = *page().scene();
    action(Deed::Fly).trigger();
    EXPECT_EQ(scene.mode(), terrain::SceneMode::Fly);
    EXPECT_FALSE(action(Deed::Orbit).isChecked());
    scene.mode(terrain::SceneMode::Orbit);
    EXPECT_TRUE(action(Deed::Orbit).isChecked());
    const double before = scene.exaggeration();
    action(Deed::ExaggerateMore).trigger();
    EXPECT_GT(scene.exaggeration(), before);
    action(Deed::ExaggerateLess).trigger();
    EXPECT_NEAR(scene.exaggeration(), before, 1e-9);
    action(Deed::ViewMap).trigger();
    EXPECT_FALSE(action(Deed::ExaggerateLess).isEnabled());
}

TEST_F(SceneModesTest, LayersOfTheMapAreThoseOfTheScene)
{
    open_terrain_file("a.tif");
    action(Deed::ViewBoth).trigger();
    const QImage before = page().scene()->canvas()->grabFramebuffer();
    terrain::MapLayers layers = page().map().layers();
    layers.colours = false;
    page().map().set_layers(layers);
    EXPECT_NE(page().scene()->canvas()->grabFramebuffer(), before);
}

TEST_F(SceneModesTest, UndoWorksInTheScene)
{
    open_terrain_file("a.tif");
    action(Deed::View3D).trigger();
    EXPECT_EQ(page().scene()->canvas()->actions().size(), 2);
}

TEST_F(SceneModesTest, ADocumentIsClosedWhileItIsSeen)
{
    open_terrain_file("a.tif");
    action(Deed::ViewBoth).trigger();
    open_terrain_file("b.tif");
    action(Deed::View3D).trigger();
    window->close_document();
    EXPECT_EQ(page().mode(), ViewMode::Both);
    window->close_document();
    EXPECT_EQ(window->view(), nullptr);
}
