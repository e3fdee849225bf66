#include "panels/LayersPanel.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "documents/TerrainDocument.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include <set>

using namespace host_test;
using housekeeping::DocumentManager;
using terrain::Deed;
using terrain::LayersPanel;
using terrain::MapLayers;

namespace {

const auto s_all = {&MapLayers::colours, &MapLayers::relief, &MapLayers::contours, &MapLayers::triangulation,
    &MapLayers::legend, &MapLayers::scale_bar};

class LayersPanelTest : public WindowTest
{
protected:
    LayersPanel& panel() const { return window->layers(); }

    void show_panel() const { window->show_panel(panel()); }

    void type_interval(const QString& text) const
    {
        panel().interval().setFocus();
        panel().interval().selectAll();
        QTest::keyClicks(&panel().interval(), text);
        QTest::keyClick(&panel().interval(), Qt::Key_Return);
    }
};

} // namespace

TEST_F(LayersPanelTest, IsDisabledWithoutAMap)
{
    show_panel();
    for (const auto layer : s_all) {
        EXPECT_FALSE(panel().box(layer).isEnabled());
    }
    EXPECT_FALSE(panel().interval().isEnabled());
    EXPECT_EQ(panel().hint().text(), "No document is open.");
    EXPECT_TRUE(panel().hint().isVisible());
}

TEST_F(LayersPanelTest, ShowsWhatTheMapShows)
{
    open_terrain_file("a.tif");
    show_panel();
    for (const auto layer : s_all) {
        EXPECT_TRUE(panel().box(layer).isEnabled());
        EXPECT_EQ(panel().box(layer).isChecked(), window->view()->layers().*layer);
    }
    EXPECT_FALSE(panel().hint().isVisible());
    EXPECT_EQ(panel().interval().text(), "automatic");
}

TEST_F(LayersPanelTest, EachBoxChangesItsLayerAndNoOther)
{
    open_terrain_file("a.tif");
    show_panel();
    for (const auto layer : s_all) {
        MapLayers expected = window->view()->layers();
        expected.*layer = !(expected.*layer);
        panel().box(layer).setFocus();
        QTest::keyClick(&panel().box(layer), Qt::Key_Space);
        EXPECT_TRUE(window->view()->layers() == expected) << panel().box(layer).text().toStdString();
    }
}

TEST_F(LayersPanelTest, FollowsTheMapWhoeverChangesIt)
{
    open_terrain_file("a.tif");
    MapLayers layers;
    layers.colours = false;
    layers.contours = true;
    layers.contour_interval = 12.5;
    window->view()->set_layers(layers);
    EXPECT_FALSE(panel().box(&MapLayers::colours).isChecked());
    EXPECT_TRUE(panel().box(&MapLayers::contours).isChecked());
    EXPECT_EQ(panel().interval().value(), 12.5);
    EXPECT_TRUE(panel().interval().isEnabled());
}

TEST_F(LayersPanelTest, IsInStepWithTheViewMenu)
{
    open_terrain_file("a.tif");
    const std::pair<Deed, bool MapLayers::*> entries[]
        = {{Deed::ContourLines, &MapLayers::contours}, {Deed::Triangulation, &MapLayers::triangulation},
            {Deed::Legend, &MapLayers::legend}, {Deed::ScaleBar, &MapLayers::scale_bar}};
    for (const auto& [deed, layer] : entries) {
        const bool before = panel().box(layer).isChecked();
        window->action(deed).trigger();
        EXPECT_EQ(panel().box(layer).isChecked(), !before);
        panel().box(layer).click();
        EXPECT_EQ(window->action(deed).isChecked(), before);
    }
}

TEST_F(LayersPanelTest, TheIntervalNeedsContourLines)
{
    open_terrain_file("a.tif");
    show_panel();
    EXPECT_FALSE(panel().interval().isEnabled());
    panel().box(&MapLayers::contours).click();
    EXPECT_TRUE(panel().interval().isEnabled());
    type_interval("25");
    EXPECT_EQ(window->view()->layers().contour_interval, 25);
    EXPECT_EQ(panel().interval().text(), "25.000 metres");
    type_interval("0");
    EXPECT_EQ(window->view()->layers().contour_interval, 0);
    EXPECT_EQ(panel().interval().text(), "automatic");
}

TEST_F(LayersPanelTest, LinesAreNotMadeForEachDigit)
{
    open_terrain_file("a.tif");
    show_panel();
    panel().box(&MapLayers::contours).click();
    const QSignalSpy changes(window->view(), &terrain::TerrainView::layers_changed);
    type_interval("125");
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(LayersPanelTest, IsAboutTheMapThatIsShown)
{
    open_terrain_file("a.tif");
    const housekeeping::DocumentId first = current().id();
    panel().box(&MapLayers::legend).click();
    open_terrain_file("b.tif");
    EXPECT_TRUE(panel().box(&MapLayers::legend).isChecked()) << "each map has layers of its own";
    panel().box(&MapLayers::relief).click();
    DocumentManager::instance().current_document(first);
    EXPECT_FALSE(panel().box(&MapLayers::legend).isChecked());
    EXPECT_TRUE(panel().box(&MapLayers::relief).isChecked());
    EXPECT_TRUE(window->view()->layers().relief);
}

TEST_F(LayersPanelTest, IsDisabledWhenTheLastMapIsGone)
{
    open_terrain_file("a.tif");
    window->close_document();
    EXPECT_FALSE(panel().box(&MapLayers::relief).isEnabled());
    panel().box(&MapLayers::relief).click();
    panel().interval().setValue(3);
    EXPECT_EQ(panel().hint().text(), "No document is open.");
}

TEST_F(LayersPanelTest, FloatsAndComesBack)
{
    open_terrain_file("a.tif");
    tear_off(panel());
    panel().box(&MapLayers::contours).click();
    EXPECT_TRUE(window->view()->layers().contours);
    panel().window()->close();
    EXPECT_EQ(panel().window(), window.get());
    EXPECT_TRUE(panel().isVisible());
    panel().box(&MapLayers::contours).click();
    EXPECT_FALSE(window->view()->layers().contours);
}

TEST_F(LayersPanelTest, MnemonicsAreUniqueAndEverythingIsExplained)
{
    std::set<std::string> keys;
    for (const auto layer : s_all) {
        const QCheckBox& box = panel().box(layer);
        EXPECT_TRUE(keys.insert(QKeySequence::mnemonic(box.text()).toString().toStdString()).second);
        EXPECT_FALSE(box.toolTip().isEmpty());
        EXPECT_FALSE(box.accessibleDescription().isEmpty());
        EXPECT_TRUE(box.focusPolicy() & Qt::TabFocus);
    }
    EXPECT_FALSE(panel().interval().accessibleName().isEmpty());
    EXPECT_EQ(keys.count(""), 0u);
}

TEST_F(LayersPanelTest, FitsIntoANarrowPanelInTextsOfAllSizes)
{
    open_terrain_file("a.tif");
    tear_off(panel()); // has the size that it wants to have
    for (const int size : {9, 11, 14}) {
        QFont font = QApplication::font();
        font.setPointSize(size);
        QApplication::setFont(font);
        QCoreApplication::processEvents();
        EXPECT_LE(panel().minimumSizeHint().width(), 220) << size;
    }
}
