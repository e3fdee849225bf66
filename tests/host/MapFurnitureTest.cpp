#include "views/MapFurniture.h"
#include "support/App.h"
#include "views/ElevationColours.h"
#include "views/MapLegend.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPalette>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using terrain::legend_ticks;
using terrain::LegendTick;
using terrain::MapLegend;

namespace {

const QSize s_map(800, 600);
const QRgb s_ground = qRgb(90, 200, 90);

std::vector<std::string> texts(const std::vector<LegendTick>& ticks)
{
    std::vector<std::string> found;
    for (const LegendTick& tick : ticks) {
        found.push_back(tick.text.toStdString());
    }
    return found;
}

QPalette dark()
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(35, 38, 41));
    palette.setColor(QPalette::Text, QColor(239, 240, 241));
    return palette;
}

QPalette light()
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

QImage drawn(const MapLegend& legend, const QPalette& palette, int points, const QSize& size = s_map)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(s_ground);
    QPainter painter(&picture);
    QFont font = painter.font();
    font.setPointSize(points);
    painter.setFont(font);
    draw_legend(painter, picture.rect(), palette, legend);
    return picture;
}

/// What differs from the ground.
QRect changed(const QImage& picture)
{
    QRect area;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != s_ground) {
                area |= QRect(x, y, 1, 1);
            }
        }
    }
    return area;
}

class MapFurnitureTest : public testing::Test
{
protected:
    support::App application; // for fonts
};

} // namespace

TEST_F(MapFurnitureTest, LengthsHaveTheirUnit)
{
    EXPECT_EQ(terrain::length_text(0.5), "0.5 m");
    EXPECT_EQ(terrain::length_text(500), "500 m");
    EXPECT_EQ(terrain::length_text(2000), "2 km");
}

TEST_F(MapFurnitureTest, HeightsHaveSixDigits)
{
    EXPECT_EQ(terrain::height_text(523.4049), "523.405");
    EXPECT_EQ(terrain::height_text(-12), "-12");
    EXPECT_EQ(terrain::height_text(1e300), "1e+300");
}

TEST_F(MapFurnitureTest, MultiplesOfAStepHaveItsDigits)
{
    EXPECT_EQ(terrain::tick_text(1250, 50), "1250");
    EXPECT_EQ(terrain::tick_text(0.30000000000000004, 0.1), "0.3");
    EXPECT_EQ(terrain::tick_text(2, 0.5), "2.0");
    EXPECT_EQ(terrain::tick_text(-0.0, 0.5), "0");
    EXPECT_EQ(terrain::tick_text(1234567, 100), "1234567");
    EXPECT_EQ(terrain::tick_text(2e300, 1e300), "2e+300");
    EXPECT_EQ(terrain::tick_text(3e-9, 1e-9), "3e-09");
}

TEST_F(MapFurnitureTest, TheLegendHasRoundNumbersBetweenTheTrueEnds)
{
    EXPECT_EQ(texts(legend_ticks(141.2, 546.9, 0.15)), (std::vector<std::string>{"141", "300", "400", "547"}))
        << "200 would stand too close to the lower end, 500 to the upper one";
    EXPECT_EQ(
        texts(legend_ticks(-30, 70, 0.15)), (std::vector<std::string>{"-30.0", "0", "20", "40", "70.0"}));
    EXPECT_EQ(texts(legend_ticks(0, 1, 0.15)),
        (std::vector<std::string>{"0", "0.2", "0.4", "0.6", "0.8", "1.000"}));
}

TEST_F(MapFurnitureTest, NumbersOfTheLegendKeepTheirDistance)
{
    for (double range = 1e-3; range < 1e7; range *= 1.37) {
        const auto ticks = legend_ticks(-range / 3, range, 0.12);
        EXPECT_EQ(ticks.front().fraction, 0);
        EXPECT_EQ(ticks.back().fraction, 1);
        EXPECT_GE(ticks.size(), 4U) << range;
        for (std::size_t i = 1; i < ticks.size(); ++i) {
            EXPECT_GE(ticks[i].fraction - ticks[i - 1].fraction, 0.12 - 1e-9) << range;
        }
    }
}

TEST_F(MapFurnitureTest, AnEvenRasterHasASingleNumber)
{
    const auto ticks = legend_ticks(320.5, 320.5, 0.15);
    ASSERT_EQ(ticks.size(), 1U);
    EXPECT_EQ(ticks[0].text, "320.5");
    EXPECT_EQ(ticks[0].fraction, 0.5);
}

TEST_F(MapFurnitureTest, HugeNumbersAndSmallDifferencesHaveALegendToo)
{
    const double huge = std::numeric_limits<double>::max();
    EXPECT_GE(legend_ticks(-huge, huge, 0.15).size(), 3U);
    EXPECT_GE(legend_ticks(1e16, 1e16 + 4, 0.15).size(), 2U);
    EXPECT_GE(legend_ticks(0, 5e-324, 0.15).size(), 1U);
}

TEST_F(MapFurnitureTest, TheLegendIsReadableAtAllSizesAndInBothPalettes)
{
    const MapLegend legend{141.2, 546.9, "metres", true, 20};
    for (int points = 9; points <= 16; ++points) {
        const QImage on_light = drawn(legend, light(), points);
        const QImage on_dark = drawn(legend, dark(), points);
        const QRect box = changed(on_light);
        EXPECT_EQ(changed(on_dark), box);
        EXPECT_TRUE(QImage(s_map, QImage::Format_RGB32).rect().adjusted(5, 5, -5, -5).contains(box))
            << points;
        const QPoint paper = box.topRight() + QPoint(-6, 6);
        EXPECT_GT(qGray(on_light.pixel(paper)), 220);
        EXPECT_LT(qGray(on_dark.pixel(paper)), 80);
        int ink = 0;
        for (int y = box.top(); y < box.bottom(); ++y) {
            for (int x = box.left() + box.width() / 2; x < box.right(); ++x) { // right of the bar
                ink += qGray(on_dark.pixel(x, y)) > 200 && qGray(on_light.pixel(x, y)) < 60;
            }
        }
        EXPECT_GT(ink, 60) << points;
    }
}

TEST_F(MapFurnitureTest, TheLegendGrowsWithTheFont)
{
    const MapLegend legend{141.2, 546.9, "metres", true, 0};
    EXPECT_GT(changed(drawn(legend, light(), 16)).height(), changed(drawn(legend, light(), 9)).height());
}

TEST_F(MapFurnitureTest, TheLegendShowsTheColoursFromLowToHigh)
{
    const QImage picture = drawn({0, 100, "m", true, 0}, light(), 9);
    const QRect box = changed(picture);
    const int x = box.left() + static_cast<int>(terrain::furniture_padding) + 8;
    const int bottom = box.bottom() - static_cast<int>(terrain::furniture_padding) - 12;
    const QColor lowest(picture.pixel(x, bottom));
    EXPECT_GT(lowest.green(), lowest.red());
    EXPECT_GT(qGray(picture.pixel(x, box.top() + box.height() / 4)), qGray(picture.pixel(x, bottom)));
}

TEST_F(MapFurnitureTest, WithoutColoursTheLegendTellsTheRangeOnly)
{
    const QImage with = drawn({0, 100, "metres", true, 0}, light(), 9);
    const QImage without = drawn({0, 100, "metres", false, 0}, light(), 9);
    EXPECT_LT(changed(without).height(), changed(with).height() / 3);
    EXPECT_GT(changed(drawn({0, 100, "metres", false, 10}, light(), 9)).height(), changed(without).height())
        << "and how far contour lines are apart";
}

TEST_F(MapFurnitureTest, ASmallMapHasNoFurniture)
{
    const QSize small(250, 600);
    EXPECT_TRUE(changed(drawn({0, 100, "metres", true, 10}, light(), 9, small)).isEmpty());
}

TEST_F(MapFurnitureTest, TheLegendFitsIntoTheSmallestMapThatHasOne)
{
    const QSize small(260, 260);
    for (const int points : {9, 12, 16}) {
        const QRect box = changed(drawn({0, 8848, "metres", true, 500}, light(), points, small));
        EXPECT_TRUE(QRect(QPoint(0, 0), small).adjusted(5, 5, -5, -5).contains(box)) << points;
    }
}
