#include "CommandFixture.h"
#include "PreferencesFixture.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "preferences/PreferencesChanged.h"
#include "support/MessageSpy.h"
#include "tour/UserInput.h"
#include "views/HillShade.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QTest>

using namespace host_test;
using terrain::Camera;
using terrain::TerrainView;

namespace {

const QSize s_size(400, 300);
const QPoint s_middle(200, 150);

/// 20 columns and 15 rows; the first cell holds no height.
terrain::Raster small_raster()
{
    std::vector<double> cells;
    for (int i = 0; i < 20 * 15; ++i) {
        cells.push_back(100.0 * (i / 20) + i % 20);
    }
    cells[0] = terrain::no_data;
    return make_raster(20, 15, cells);
}

/// So large that a pixel stands for two by two cells, whose means are all the same and whose corners are not.
terrain::Raster large_raster()
{
    const int side = terrain::HillShade::max_side * 2;
    std::vector<double> cells;
    for (int i = 0; i < side * 2; ++i) {
        const int column = i % side;
        const bool high = (column / 2) % 2 == (column + i / side) % 2;
        cells.push_back(high ? 100 : 0);
    }
    return make_raster(side, 2, cells);
}

/// More cells than the map has pixels, high and low by turns.
terrain::Raster chessboard()
{
    const int columns = 600;
    const int rows = 450;
    std::vector<double> cells;
    for (int i = 0; i < columns * rows; ++i) {
        cells.push_back((i % columns + i / columns) % 2 == 0 ? 100 : 0);
    }
    return make_raster(columns, rows, cells);
}

/// Maps, and the preferences page that changes how they look.
class PreferencesEffects : public PreferencesTest
{
protected:
    void SetUp() override
    {
        start();
        page = make_page("ViewerPreferences");
    }

    /// Shows a map of a new document, which jumps as long as the test says nothing else.
    std::unique_ptr<TerrainView> make_view(const terrain::Raster& raster = small_raster())
    {
        if (manager().animateCameraJumps()) {
            set("animate_jumps", "false");
        }
        auto view = std::make_unique<TerrainView>(make_document(raster).id());
        view->resize(s_size);
        view->show();
        return view;
    }

    /// So near that each pixel of the picture can be seen, and no nearer: there the cells themselves would
    /// be.
    std::unique_ptr<TerrainView> make_near_view(const terrain::Raster& raster)
    {
        auto view = make_view(raster);
        view->zoom(1 / (view->scale() * view->picture().shade().cells_per_pixel()), s_middle);
        return view;
    }

    /// As a user does.
    void set(const std::string& key, const std::string& value)
    {
        enter(*page, key, value);
        page->accept();
    }

    std::unique_ptr<housekeeping::gui::AbstractPreferences> page;
};

QImage picture(TerrainView& view)
{
    return view.grab().toImage();
}

void expect_near(const QPointF& a, const QPointF& b)
{
    EXPECT_NEAR(a.x(), b.x(), 1e-6);
    EXPECT_NEAR(a.y(), b.y(), 1e-6);
}

} // namespace

// Background

TEST_F(PreferencesEffects, BackgroundIsAroundTheTerrainAndWhereThereIsNoDataInAllMaps)
{
    const auto first = make_view();
    const auto second = make_view();
    for (const char* const colour : {"#204060", "#000000", "#ffffff"}) {
        if (manager().viewBackgroundColour() != QColor(colour)) {
            set("background_color", colour);
        }
        for (TerrainView* const p_view : {first.get(), second.get()}) {
            const QImage shown_map = picture(*p_view);
            EXPECT_EQ(shown_map.pixelColor(1, 1), QColor(colour));
            EXPECT_EQ(shown_map.pixelColor(p_view->widget_position({0.5, 0.5}).toPoint()), QColor(colour));
            EXPECT_NE(shown_map.pixelColor(s_middle), QColor(colour));
        }
    }
}

TEST_F(PreferencesEffects, BackgroundIsPaintedWithoutBeingAskedFor)
{
    const auto view = make_view();
    QCoreApplication::processEvents();
    struct Painted : QObject
    {
        bool eventFilter(QObject*, QEvent* p_event) override
        {
            count += p_event->type() == QEvent::Paint;
            return false;
        }
        int count = 0;
    } painted;
    view->installEventFilter(&painted);
    set("background_color", "#204060");
    EXPECT_TRUE(support::wait_until([&painted] { return painted.count > 0; }));
}

TEST_F(PreferencesEffects, MapOfADocumentWithoutARasterIsBackground)
{
    set("background_color", "#204060");
    const auto view = make_view(terrain::Raster());
    EXPECT_EQ(picture(*view).pixelColor(s_middle), QColor("#204060"));
}

TEST_F(PreferencesEffects, BackgroundLeavesTheTerrainAndItsFurnitureReadable)
{
    const auto view = make_view();
    const QRect inside(view->widget_position({1, 1}).toPoint(), view->widget_position({19, 14}).toPoint());
    const QImage before = picture(*view).copy(inside.adjusted(20, 0, -120, 0));
    const QPoint legend(s_size.width() - 20, 20); // in its box, above the bar
    set("background_color", "#000000");
    const QImage after = picture(*view);
    EXPECT_EQ(after.copy(inside.adjusted(20, 0, -120, 0)), before);
    EXPECT_GT(qGray(after.pixel(legend)), 200);
}

// Averages

TEST_F(PreferencesEffects, LargeRastersAreAveragedOrNotAtOnce)
{
    const auto view = make_near_view(large_raster());
    const QImage averaged = picture(*view);
    set("hq_image_downsample", "false");
    const QImage sampled = picture(*view);
    EXPECT_NE(sampled, averaged);
    set("hq_image_downsample", "true");
    EXPECT_EQ(picture(*view), averaged);
}

TEST_F(PreferencesEffects, NewMapsAreAsTheUserPrefers)
{
    set("hq_image_downsample", "false");
    const auto view = make_near_view(large_raster());
    const QImage sampled = picture(*view);
    set("hq_image_downsample", "true");
    EXPECT_NE(picture(*view), sampled);
}

TEST_F(PreferencesEffects, CellsOfABusyDocumentAreNotLookedAtBeforeTheMapIsRefreshed)
{
    const auto view = make_near_view(large_raster());
    auto& documents = housekeeping::DocumentManager::instance();
    const QImage averaged = picture(*view);
    set("hq_image_downsample", "false");
    const QImage sampled = picture(*view);
    set("hq_image_downsample", "true");
    documents.document_busy(view->document(), true);
    auto& document = dynamic_cast<terrain::TerrainDocument&>(documents.document_from_id(view->document()));
    for (double& cell : document.terrain().cells()) {
        cell = 7;
    }
    set("hq_image_downsample", "false");
    set("hq_image_downsample", "true");
    EXPECT_EQ(picture(*view), averaged);
    set("hq_image_downsample", "false");
    documents.document_busy(view->document(), false);
    view->refresh();
    EXPECT_NE(picture(*view), averaged);
    EXPECT_NE(picture(*view), sampled);
}

TEST_F(PreferencesEffects, WhatIsDrawnSmallerThanItsPictureIsSmoothOrNot)
{
    const auto view = make_view(chessboard());
    ASSERT_LT(view->scale(), 1);
    const QImage smooth = picture(*view);
    set("hq_image_downsample", "false");
    EXPECT_NE(picture(*view), smooth);
    set("hq_image_downsample", "true");
    EXPECT_EQ(picture(*view), smooth);
}

TEST_F(PreferencesEffects, WhatIsDrawnAsLargeAsItIsDoesNotDependOnAverages)
{
    const auto view = make_view();
    const QImage before = picture(*view);
    set("hq_image_downsample", "false");
    EXPECT_EQ(picture(*view), before);
}

TEST_F(PreferencesEffects, AMapOutlivesItsDocument)
{
    const auto view = make_near_view(large_raster());
    const QImage before = picture(*view);
    housekeeping::DocumentManager::instance().destroy_document(
        view->document(), true, false, false, housekeeping::DocumentId::null());
    set("background_color", "#204060");
    EXPECT_EQ(picture(*view).pixelColor(1, 1), QColor("#204060"));
    EXPECT_NE(picture(*view), before);
}

TEST(PreferencesSampling, ThePixelShowsTheCellInTheMiddleOfItsSquare)
{
    using terrain::HillShade;
    const int side = HillShade::max_side * 3 - 1; // the last squares are not whole
    std::vector<double> cells(static_cast<std::size_t>(side) * 2, 10.0);
    const std::size_t column = 1000;
    cells[static_cast<std::size_t>(side) + 3 * column + 1] = terrain::no_data; // the middle one, in row 1
    cells[0] = 20;
    const terrain::Raster raster = make_raster(side, 2, cells);
    const terrain::Footprint footprint(raster);
    const HillShade nearest(raster, footprint, HillShade::Sampling::Nearest);
    const HillShade mean(raster, footprint, HillShade::Sampling::Mean);
    EXPECT_EQ(nearest.picture().size(), QSize(HillShade::max_side, 1));
    EXPECT_EQ(nearest.cells_per_pixel(), 3);
    EXPECT_EQ(qAlpha(nearest.picture().pixel(static_cast<int>(column), 0)), 0);
    EXPECT_EQ(qAlpha(nearest.picture().pixel(static_cast<int>(column) + 1, 0)), 255);
    EXPECT_EQ(qAlpha(nearest.picture().pixel(HillShade::max_side - 1, 0)), 255);
    EXPECT_EQ(qAlpha(mean.picture().pixel(static_cast<int>(column), 0)), 255);
    EXPECT_EQ(nearest.highest(), 20) << "the range is that of all cells";
    EXPECT_EQ(HillShade(raster, footprint).picture(), mean.picture()) << "means, unless asked otherwise";
}

TEST(PreferencesSampling, EachPixelIsThatOfItsCellWhereThereAreNoFewer)
{
    using terrain::HillShade;
    const terrain::Raster raster = small_raster();
    const terrain::Footprint footprint(raster);
    EXPECT_EQ(HillShade(raster, footprint, HillShade::Sampling::Nearest).picture(),
        HillShade(raster, footprint, HillShade::Sampling::Mean).picture());
}

// Mouse

namespace {

struct Gesture
{
    const char* mode; ///< as it is stored
    Qt::MouseButton button;
    Qt::KeyboardModifiers modifiers;
    bool moves;
};

const Gesture s_gestures[] = {
    {"0", Qt::LeftButton, Qt::NoModifier, true},
    {"0", Qt::MiddleButton, Qt::NoModifier, true},
    {"0", Qt::RightButton, Qt::NoModifier, false},
    {"1", Qt::LeftButton, Qt::NoModifier, true},
    {"1", Qt::LeftButton, Qt::AltModifier, true},
    {"1", Qt::MiddleButton, Qt::NoModifier, false},
    {"1", Qt::RightButton, Qt::NoModifier, false},
    {"2", Qt::LeftButton, Qt::NoModifier, true},
    {"2", Qt::LeftButton, Qt::AltModifier, false},
    {"2", Qt::MiddleButton, Qt::NoModifier, false},
    {"2", Qt::RightButton, Qt::NoModifier, true},
};

void move_with(TerrainView& view, Qt::MouseButton button, const QPoint& to)
{
    QMouseEvent event(QEvent::MouseMove, to, view.mapToGlobal(to), Qt::NoButton, button, Qt::NoModifier);
    QApplication::sendEvent(&view, &event);
}

} // namespace

TEST_F(PreferencesEffects, MouseModeSaysWhichButtonsMoveTheMap)
{
    const auto general = make_page("GeneralPreferences");
    const auto view = make_view();
    view->zoom(3, s_middle);
    for (const Gesture& gesture : s_gestures) {
        enter(*general, "mouse_mode", gesture.mode);
        general->accept();
        const QPointF place = view->map_position(s_middle);
        QTest::mousePress(view.get(), gesture.button, gesture.modifiers, s_middle);
        move_with(*view, gesture.button, s_middle + QPoint(10, 5));
        QTest::mouseRelease(view.get(), gesture.button, gesture.modifiers, s_middle + QPoint(10, 5));
        const QPointF end = gesture.moves ? QPointF(210, 155) : QPointF(200, 150);
        SCOPED_TRACE(std::string("mode ") + gesture.mode + ", button " + std::to_string(gesture.button));
        expect_near(view->map_position(end), place);
    }
}

TEST_F(PreferencesEffects, OnlyTheButtonThatBeganADragEndsIt)
{
    const auto view = make_view();
    view->zoom(3, s_middle);
    const QPointF place = view->map_position(s_middle);
    QTest::mousePress(view.get(), Qt::MiddleButton, Qt::NoModifier, s_middle);
    EXPECT_EQ(view->cursor().shape(), Qt::ClosedHandCursor);
    QTest::mousePress(view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QTest::mouseRelease(view.get(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    move_with(*view, Qt::MiddleButton, s_middle + QPoint(10, 5));
    expect_near(view->map_position({210, 155}), place);
    QTest::mouseRelease(view.get(), Qt::MiddleButton, Qt::NoModifier, s_middle + QPoint(10, 5));
    EXPECT_EQ(view->cursor().shape(), Qt::OpenHandCursor);
    move_with(*view, Qt::NoButton, QPoint(50, 50));
    expect_near(view->map_position({210, 155}), place);
}

// Gliding

TEST_F(PreferencesEffects, WithoutAnimationTheMapIsThereAtOnce)
{
    const auto view = make_view();
    const QImage before = picture(*view);
    view->zoom_in();
    EXPECT_FALSE(view->is_gliding());
    EXPECT_NE(picture(*view), before);
}

TEST_F(PreferencesEffects, TheMapGlidesFromWhereItIsToWhereItWouldJump)
{
    const auto view = make_view();
    for (const auto move : {&TerrainView::zoom_in, &TerrainView::pan_left, &TerrainView::pan_up,
             &TerrainView::pan_right, &TerrainView::pan_down, &TerrainView::zoom_out, &TerrainView::fit}) {
        view->zoom(2, {150, 100}); // so that there is somewhere to go
        const auto jumping = make_view();
        jumping->zoom(view->scale() / jumping->scale(), s_middle);
        jumping->pan(s_middle - jumping->widget_position(view->map_position(s_middle)));
        ((*jumping).*move)();

        const QImage before = picture(*view);
        set("animate_jumps", "true");
        ((*view).*move)();
        EXPECT_TRUE(view->is_gliding());
        EXPECT_EQ(picture(*view), before);
        EXPECT_DOUBLE_EQ(view->scale(), jumping->scale()) << "asked, it tells where it goes";
        expect_near(view->map_position({0, 0}), jumping->map_position({0, 0}));
        ASSERT_TRUE(support::wait_until([&view] { return !view->is_gliding(); }));
        expect_near(view->map_position({0, 0}), jumping->map_position({0, 0}));
        EXPECT_NE(picture(*view), before);
        set("animate_jumps", "false");
    }
}

TEST_F(PreferencesEffects, KeysGoOnFromWhereTheMapGoes)
{
    const auto view = make_view();
    const double scale = view->scale();
    set("animate_jumps", "true");
    for (int i = 0; i < 3; ++i) {
        view->zoom_in();
    }
    EXPECT_NEAR(view->scale(), scale * 1.25 * 1.25 * 1.25, 1e-9);
    ASSERT_TRUE(support::wait_until([&view] { return !view->is_gliding(); }));
    EXPECT_NEAR(view->scale(), scale * 1.25 * 1.25 * 1.25, 1e-9);
}

TEST_F(PreferencesEffects, TakingHoldOfTheMapStopsItWhereItIs)
{
    const auto view = make_view();
    const double scale = view->scale();
    const QImage before = picture(*view);
    set("animate_jumps", "true");

    view->zoom_in(); // it has not moved yet
    QTest::mousePress(view.get(), Qt::LeftButton, Qt::NoModifier, s_middle);
    EXPECT_FALSE(view->is_gliding());
    EXPECT_DOUBLE_EQ(view->scale(), scale);
    EXPECT_EQ(picture(*view), before);
    QTest::mouseRelease(view.get(), Qt::LeftButton, Qt::NoModifier, s_middle);

    view->zoom_in();
    terrain::turn_wheel(*view, s_middle, 2);
    EXPECT_FALSE(view->is_gliding());
    EXPECT_DOUBLE_EQ(view->scale(), scale * 1.25 * 1.25);
}

TEST_F(PreferencesEffects, WheelAndDraggingNeverGlide)
{
    const auto view = make_view();
    set("animate_jumps", "true");
    terrain::turn_wheel(*view, s_middle, 3);
    EXPECT_FALSE(view->is_gliding());
    terrain::drag(*view, s_middle, {180, 140});
    EXPECT_FALSE(view->is_gliding());
}

TEST_F(PreferencesEffects, AMapThatHasNowhereToGoDoesNotGlide)
{
    const auto view = make_view();
    set("animate_jumps", "true");
    view->fit();
    EXPECT_FALSE(view->is_gliding());
}

TEST_F(PreferencesEffects, AHiddenMapDoesNotGlide)
{
    const auto view = make_view();
    set("animate_jumps", "true");
    view->hide();
    view->zoom_in();
    EXPECT_FALSE(view->is_gliding());
}

TEST_F(PreferencesEffects, SwitchingAnimationOffEndsAGlideAtItsEnd)
{
    const auto view = make_view();
    set("animate_jumps", "true");
    view->zoom_in();
    const double scale = view->scale();
    set("animate_jumps", "false");
    EXPECT_FALSE(view->is_gliding());
    EXPECT_EQ(view->scale(), scale);
}

TEST_F(PreferencesEffects, AWholeRasterStaysWholeWhenTheSizeChangesWhileItGlides)
{
    const auto view = make_view();
    view->zoom(4, {10, 10});
    set("animate_jumps", "true");
    view->fit();
    view->resize(200, 400);
    EXPECT_FALSE(view->is_gliding());
    EXPECT_TRUE(QRectF(view->rect())
                    .contains(QRectF(view->widget_position({0, 0}), view->widget_position({20, 15}))));
}

TEST(PreferencesCamera, BeginsAndEndsWhereItShould)
{
    const Camera from{2, {10, 20}};
    const Camera to{8, {40, -4}};
    for (const auto& [part, expected] : {std::make_pair(0.0, from), std::make_pair(1.0, to)}) {
        const Camera between = terrain::between(from, to, part);
        EXPECT_DOUBLE_EQ(between.scale, expected.scale);
        expect_near(between.centre, expected.centre);
    }
    EXPECT_DOUBLE_EQ(terrain::between(from, to, 0.5).scale, 4) << "by equal factors";
}

TEST(PreferencesCamera, KeepsAPlaceThatBothShowAtTheSamePoint)
{
    // 30 pixels right of the middle, both show column 25.
    const Camera from{2, {10, 0}};
    const Camera to{10, {22, 0}};
    for (const double part : {0.2, 0.5, 0.9}) {
        const Camera between = terrain::between(from, to, part);
        EXPECT_NEAR(between.centre.x() + 30 / between.scale, 25, 1e-9);
    }
}

TEST(PreferencesCamera, MovesEvenlyAtOneScale)
{
    expect_near(terrain::between({3, {0, 0}}, {3, {8, 4}}, 0.25).centre, {2, 1});
}
