#include "scene/SceneNavigator.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "scene/ReliefScene.h"
#include "support/App.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <cmath>

using namespace host_test;
using terrain::ReliefScene;
using terrain::scene_drag;
using terrain::SceneDrag;
using terrain::SceneMode;
using terrain::SceneNavigator;

namespace {

const QSizeF s_widget(400, 300);
const QPointF s_middle(200, 150);

/// A hill in the middle of a plain.
class SceneNavigatorTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QCoreApplication::setOrganizationName("Tarqa"); // for a place to store preferences
        housekeeping::ApplicationManager::instance().setAnimateCameraJumps(false);
        navigator.resize(s_widget);
        navigator.show(&scene);
    }

    /// Where a place is seen, in pixels.
    QPointF seen(const osg::Vec3d& place) const
    {
        const terrain::SceneCamera& camera = navigator.camera();
        const osg::Vec3d at
            = place * camera.view_matrix() * camera.projection_matrix(s_widget, scene.bounds());
        return {(at.x() + 1) / 2 * s_widget.width(), (1 - at.y()) / 2 * s_widget.height()};
    }

    /// How far the eye is above what is below it.
    double clearance() const
    {
        const osg::Vec3d eye = navigator.camera().eye();
        return eye.z() - scene.surface({eye.x(), eye.y()}).value_or(scene.bounds().zMin());
    }

    support::App application;
    ReliefScene scene{
        raster_of(40, 40,
            [](int column, int row) { return std::max(0.0, 10 - std::hypot(column - 19.5, row - 19.5)); }),
        nullptr, terrain::HeightMeaning(), terrain::Sampling::Mean, terrain::HillShade::Look()};
    SceneNavigator navigator;
};

} // namespace

TEST_F(SceneNavigatorTest, BeginsWithTheWholeTerrainFromTheSouth)
{
    EXPECT_EQ(navigator.camera().heading, 0);
    const QRectF widget(QPointF(), s_widget);
    for (unsigned int i = 0; i < 8; ++i) {
        EXPECT_TRUE(widget.contains(seen(scene.bounds().corner(i)))) << i;
    }
    EXPECT_LT(seen({-400, 0, 0}).x(), 100) << "west is left";
    EXPECT_LT(seen({0, 400, 0}).y(), seen({0, -400, 0}).y()) << "north is further away";
}

TEST_F(SceneNavigatorTest, DraggingTurnsAroundTheTarget)
{
    const osg::Vec3d target = navigator.camera().target;
    const double distance = navigator.camera().distance;
    const QSignalSpy moved(&navigator, &SceneNavigator::moved);
    navigator.drag(SceneDrag::Turn, {50, 20});
    EXPECT_GT(moved.count(), 0);
    EXPECT_GT(navigator.camera().heading, 0);
    EXPECT_EQ((navigator.camera().target - target).length(), 0);
    EXPECT_EQ(navigator.camera().distance, distance);
    EXPECT_GT(seen({0, -500, 0}).x(), s_middle.x()) << "what is in front goes with the pointer";
}

TEST_F(SceneNavigatorTest, DraggingMovesTheGroundWithThePointer)
{
    const QPointF before = seen({0, 0, 0});
    navigator.drag(SceneDrag::Move, {30, 0});
    EXPECT_NEAR(seen({0, 0, 0}).x(), before.x() + 30, 3);
    navigator.drag(SceneDrag::Move, {0, 20});
    EXPECT_GT(seen({0, 0, 0}).y(), before.y());
}

TEST_F(SceneNavigatorTest, ZoomKeepsWhatIsUnderThePointer)
{
    const QPointF pointer(230, 190);
    const auto place = navigator.place_under(pointer);
    ASSERT_TRUE(place);
    const double distance = navigator.camera().distance;
    navigator.zoom(1.5, pointer);
    EXPECT_NEAR(navigator.camera().distance, distance / 1.5, 1e-9);
    EXPECT_NEAR(seen(*place).x(), pointer.x(), 0.1);
    EXPECT_NEAR(seen(*place).y(), pointer.y(), 0.1);
}

TEST_F(SceneNavigatorTest, GoesToAPlace)
{
    const QPointF pointer(250, 200);
    const auto place = navigator.place_under(pointer);
    ASSERT_TRUE(place);
    navigator.centre(pointer);
    EXPECT_NEAR(seen(*place).x(), s_middle.x(), 0.1);
    EXPECT_NEAR(seen(*place).y(), s_middle.y(), 0.1);
    const osg::Vec3d target = navigator.camera().target;
    navigator.centre({-5000, -5000});
    EXPECT_EQ((navigator.camera().target - target).length(), 0) << "there is nothing";
}

TEST_F(SceneNavigatorTest, NorthAndBack)
{
    navigator.turn(3, 0);
    const double heading = navigator.camera().heading;
    EXPECT_NE(heading, 0);
    navigator.north();
    EXPECT_NEAR(navigator.camera().heading, 0, 1e-9);
    navigator.north();
    EXPECT_NEAR(navigator.camera().heading, heading, 1e-9);
}

TEST_F(SceneNavigatorTest, HomeShowsTheWholeTerrainAgain)
{
    const terrain::SceneCamera home = navigator.camera();
    navigator.zoom(5, {10, 200});
    navigator.turn(4, 2);
    navigator.home();
    EXPECT_EQ(navigator.camera().heading, home.heading);
    EXPECT_NEAR(navigator.camera().distance, home.distance, 1e-9);
    navigator.resize({200, 300});
    EXPECT_GT(navigator.camera().distance, home.distance) << "and goes on doing so";
}

TEST_F(SceneNavigatorTest, KeepsThePlaceWhenTheSizeChangesAfterAMovement)
{
    navigator.zoom_in();
    const double distance = navigator.camera().distance;
    navigator.resize({200, 200});
    EXPECT_EQ(navigator.camera().distance, distance);
}

TEST_F(SceneNavigatorTest, IsNeverLostNorBelowTheGround)
{
    for (const SceneMode mode : {SceneMode::Orbit, SceneMode::Fly}) {
        navigator.mode(mode);
        for (const QPointF& by : {QPointF(0, -100000), QPointF(100000, 0), QPointF(-7777, 99999)}) {
            navigator.drag(SceneDrag::Turn, by);
            EXPECT_GT(clearance(), 0);
            navigator.drag(SceneDrag::Move, by);
            EXPECT_GT(clearance(), 0);
            navigator.zoom(1e6, s_middle);
            EXPECT_GT(clearance(), 0);
            EXPECT_LT(navigator.camera().eye().length(), 1e4);
            navigator.zoom(1e-6, s_middle);
            EXPECT_LT(navigator.camera().eye().length(), 1e4);
            EXPECT_GT(clearance(), 0);
        }
        navigator.home();
    }
}

TEST_F(SceneNavigatorTest, GlidesWhereTheUserPrefersThat)
{
    housekeeping::ApplicationManager::instance().setAnimateCameraJumps(true);
    const double before = navigator.camera().distance;
    navigator.zoom_in();
    EXPECT_TRUE(navigator.is_moving());
    EXPECT_LT(navigator.camera().distance, before);
    EXPECT_NEAR(navigator.drawn_camera().distance, before, before * 0.05);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !navigator.is_moving(); }));
    EXPECT_EQ(navigator.drawn_camera().distance, navigator.camera().distance);
}

TEST_F(SceneNavigatorTest, TheHandStopsAGlide)
{
    housekeeping::ApplicationManager::instance().setAnimateCameraJumps(true);
    navigator.zoom(3, s_middle);
    navigator.home();
    EXPECT_TRUE(navigator.is_moving());
    navigator.drag(SceneDrag::Turn, {1, 0});
    EXPECT_FALSE(navigator.is_moving());
}

TEST_F(SceneNavigatorTest, FliesWhileKeysAreHeld)
{
    navigator.press(Qt::Key_W);
    EXPECT_FALSE(navigator.is_moving()) << "only in the mode for it";
    navigator.mode(SceneMode::Fly);
    const osg::Vec3d eye = navigator.camera().eye();
    navigator.press(Qt::Key_W);
    navigator.press(Qt::Key_Right);
    EXPECT_TRUE(navigator.is_moving());
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return (navigator.camera().eye() - eye) * navigator.camera().forward() > 1
            && navigator.camera().heading > 0;
    }));
    navigator.release(Qt::Key_W);
    EXPECT_TRUE(navigator.is_moving());
    navigator.release(Qt::Key_Right);
    EXPECT_FALSE(navigator.is_moving());
}

TEST_F(SceneNavigatorTest, LookingAroundStaysAtThePlace)
{
    navigator.mode(SceneMode::Fly);
    const osg::Vec3d eye = navigator.camera().eye();
    navigator.drag(SceneDrag::Turn, {40, 30});
    EXPECT_NEAR((navigator.camera().eye() - eye).length(), 0, 1e-9);
    EXPECT_NE(navigator.camera().heading, 0);
}

TEST_F(SceneNavigatorTest, GoesAroundWhatWasInTheMiddleOfAFlight)
{
    navigator.mode(SceneMode::Fly);
    navigator.drag(SceneDrag::Turn, {30, 0});
    const osg::Vec3d eye = navigator.camera().eye();
    const osg::Vec3d forward = navigator.camera().forward();
    navigator.mode(SceneMode::Orbit);
    EXPECT_NEAR((navigator.camera().eye() - eye).length(), 0, 1e-6);
    EXPECT_NEAR((navigator.camera().forward() - forward).length(), 0, 1e-6);
    EXPECT_NEAR(navigator.camera().target.z(),
        *scene.surface({navigator.camera().target.x(), navigator.camera().target.y()}), 1e-2);
}

TEST_F(SceneNavigatorTest, WithoutASceneNothingHappens)
{
    navigator.show(nullptr);
    navigator.drag(SceneDrag::Turn, {10, 10});
    navigator.zoom(2, s_middle);
    navigator.centre(s_middle);
    navigator.north();
    navigator.mode(SceneMode::Fly);
    navigator.mode(SceneMode::Orbit);
    navigator.home();
    EXPECT_FALSE(navigator.place_under(s_middle));
}

TEST_F(SceneNavigatorTest, ButtonsDoWhatTheMouseModeSays)
{
    using namespace housekeeping;
    const auto none = Qt::NoModifier;
    EXPECT_EQ(scene_drag(THREE_BUTTON_MOUSE_MODE, Qt::LeftButton, none), SceneDrag::Turn);
    EXPECT_EQ(scene_drag(THREE_BUTTON_MOUSE_MODE, Qt::MiddleButton, none), SceneDrag::Move);
    EXPECT_EQ(scene_drag(THREE_BUTTON_MOUSE_MODE, Qt::RightButton, none), SceneDrag::Turn);
    EXPECT_EQ(scene_drag(TWO_BUTTON_MOUSE_MODE, Qt::LeftButton, none), SceneDrag::Turn);
    EXPECT_EQ(scene_drag(TWO_BUTTON_MOUSE_MODE, Qt::LeftButton,
                  ApplicationManager::const_instance().keyboardModifier()),
        SceneDrag::Move);
    EXPECT_EQ(scene_drag(TWO_BUTTON_MOUSE_MODE, Qt::RightButton, none), SceneDrag::Turn);
    EXPECT_EQ(scene_drag(LEFT_BUTTON_NAVIGATION_MOUSE_MODE, Qt::LeftButton, none), SceneDrag::Turn);
    EXPECT_EQ(scene_drag(LEFT_BUTTON_NAVIGATION_MOUSE_MODE, Qt::RightButton, none), SceneDrag::Move);
    for (const auto mode :
        {THREE_BUTTON_MOUSE_MODE, TWO_BUTTON_MOUSE_MODE, LEFT_BUTTON_NAVIGATION_MOUSE_MODE}) {
        EXPECT_EQ(scene_drag(mode, Qt::LeftButton, Qt::ShiftModifier), SceneDrag::Move);
        EXPECT_EQ(scene_drag(mode, Qt::BackButton, none), SceneDrag::None);
    }
}
