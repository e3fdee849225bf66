#include "views/Shading.h"

#include "ErrorCode.h"
#include "documents/Raster.h"
#include "io/GdalMessages.h"
#include "parallel/Workers.h"
#include "views/ElevationColours.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QObject>
#include <QtCore/QRect>

#include <gdal_priv.h>
#include <gdal_utils.h>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_source = "terrain/views/Shading";

const double s_steep_part = 0.9; ///< this part of the slopes is not steeper ...
const double s_steep_slope = 0.8; ///< ... than this one, as rise over run

const unsigned char s_light_of_the_plain = 181; ///< GDAL's number for level ground
const double s_brightest = 255;
const double s_darkest_part = 0.25; ///< of a colour that is left in full shade
const double s_glare = 0.45; ///< of white that is added in full light
const QRgb s_grey = qRgb(206, 206, 206); ///< of a map without colours

const int s_rows_of_shading = 8; ///< for one of other work: GDAL needs its time to begin a part

const float s_no_height = std::numeric_limits<float>::quiet_NaN();

/// The heights of some rows as fractions of their range.
struct Grid
{
    Grid(const Raster& raster, const Shading& shading, int first_row, int end_row)
        : columns(raster.columns)
        , rows(end_row - first_row)
    {
        const std::size_t first = raster.index(0, first_row);
        heights.resize(raster.index(0, end_row) - first);
        // The halves keep huge numbers from overflowing.
        const double range = shading.highest / 2 - shading.lowest / 2;
        const double half_lowest = shading.lowest / 2;
        for (std::size_t i = 0; i < heights.size(); ++i) {
            const double cell = raster.cells[first + i];
            const double fraction = range > 0 ? (cell / 2 - half_lowest) / range : 0.5;
            heights[i] = is_no_data(cell) ? s_no_height : static_cast<float>(std::clamp(fraction, 0.0, 1.0));
        }
    }

    float height(int column, int row) const
    {
        return heights[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns)
            + static_cast<std::size_t>(column)];
    }

    int columns;
    int rows;
    std::vector<float> heights; ///< from 0 for the lowest to 1 for the highest one
};

/// GDAL leaves out rasters of one row or one column, so those get a second one that is the same.
Grid at_least_two_by_two(Grid grid)
{
    if (grid.rows == 1) {
        const std::vector<float> row = grid.heights;
        grid.heights.insert(grid.heights.end(), row.begin(), row.end());
        grid.rows = 2;
    }
    if (grid.columns == 1) {
        std::vector<float> doubled;
        for (const float height : grid.heights) {
            doubled.insert(doubled.end(), 2, height);
        }
        grid.heights = std::move(doubled);
        grid.columns = 2;
    }
    return grid;
}

[[noreturn]] void fail(const GdalMessages& messages)
{
    throw tarqa::housekeeping::HousekeepingException(CannotCompute,
        QObject::tr("The relief cannot be shaded: %1").arg(QString::fromStdString(messages.text())), s_source,
        __LINE__);
}

QRgb lit(QRgb colour, unsigned char light)
{
    const double plain = s_light_of_the_plain;
    const double relative = light / plain;
    const double kept = s_darkest_part + (1 - s_darkest_part) * std::min(relative, 1.0);
    const double white = std::max(relative - 1, 0.0) / (s_brightest / plain - 1) * s_glare;
    const auto channel = [&](int number) {
        const double shaded = number * kept;
        return static_cast<int>(std::lround(shaded + (s_brightest - shaded) * white));
    };
    return qRgb(channel(qRed(colour)), channel(qGreen(colour)), channel(qBlue(colour)));
}

/// The colours of all heights in all lights, to be looked up.
class Palette
{
public:
    static const Palette& of(bool colours)
    {
        static const Palette s_coloured(true);
        static const Palette s_plain(false);
        return colours ? s_coloured : s_plain;
    }

    QRgb colour(float height, unsigned char light) const
    {
        return m_colours[static_cast<std::size_t>(height * (s_heights - 1)) * s_lights + light];
    }

private:
    static constexpr std::size_t s_heights = 256;
    static constexpr std::size_t s_lights = 256;

    explicit Palette(bool colours)
        : m_colours(s_heights * s_lights)
    {
        for (std::size_t height = 0; height < s_heights; ++height) {
            const QRgb colour
                = colours ? elevation_colour(static_cast<double>(height) / (s_heights - 1)) : s_grey;
            for (std::size_t light = 0; light < s_lights; ++light) {
                m_colours[height * s_lights + light] = lit(colour, static_cast<unsigned char>(light));
            }
        }
    }

    std::vector<QRgb> m_colours;
};

/// The light on a part of a grid. @param p_light gets it, row by row
void shade(
    const Grid& grid, const Shading& shading, const QSizeF& pixel, const QRect& part, unsigned char* p_light)
{
    const GdalMessages messages;
    GDALDriver* const p_memory = GetGDALDriverManager()->GetDriverByName("MEM");
    const GDALDatasetUniquePtr source(
        p_memory ? p_memory->Create("", grid.columns, grid.rows, 1, GDT_Float32, nullptr) : nullptr);
    if (!source) {
        fail(messages);
    }
    std::array<double, 6> geotransform = {0, pixel.width(), 0, 0, 0, -pixel.height()};
    source->SetGeoTransform(geotransform.data());
    GDALRasterBand& band = *source->GetRasterBand(1);
    band.SetNoDataValue(no_data);
    const std::string factor = QByteArray::number(shading.exaggeration, 'g', 17).toStdString();
    CPLStringList words;
    for (const char* word :
        {"-of", "MEM", "-compute_edges", "-az", "315", "-alt", "45", "-z", factor.c_str()}) {
        words.AddString(word);
    }
    const std::unique_ptr<GDALDEMProcessingOptions, decltype(&GDALDEMProcessingOptionsFree)> options(
        GDALDEMProcessingOptionsNew(words.List(), nullptr), &GDALDEMProcessingOptionsFree);
    auto* const p_heights = const_cast<float*>(grid.heights.data()); // which GDAL only reads
    const bool written = band.RasterIO(GF_Write, 0, 0, grid.columns, grid.rows, p_heights, grid.columns,
                             grid.rows, GDT_Float32, 0, 0, nullptr)
        == CE_None;
    const GDALDatasetUniquePtr shaded(written && options
            ? GDALDataset::FromHandle(GDALDEMProcessing(
                "", GDALDataset::ToHandle(source.get()), "hillshade", nullptr, options.get(), nullptr))
            : nullptr);
    if (!shaded
        || shaded->GetRasterBand(1)->RasterIO(GF_Read, part.left(), part.top(), part.width(), part.height(),
               p_light, part.width(), part.height(), GDT_Byte, 0, 0, nullptr)
            != CE_None) {
        fail(messages);
    }
}

} // namespace

double exaggeration(const Raster& heights, const Shading& shading, const QSizeF& pixel)
{
    const Grid grid = at_least_two_by_two(Grid(heights, shading, 0, heights.rows));
    std::vector<float> slopes;
    slopes.reserve(grid.heights.size());
    for (int row = 0; row + 1 < grid.rows; ++row) {
        for (int column = 0; column + 1 < grid.columns; ++column) {
            const double here = grid.height(column, row);
            const double slope = std::hypot((grid.height(column + 1, row) - here) / pixel.width(),
                (grid.height(column, row + 1) - here) / pixel.height());
            if (slope > 0) { // not between cells without data
                slopes.push_back(static_cast<float>(slope));
            }
        }
    }
    if (slopes.empty()) {
        return 1;
    }
    const auto steep
        = slopes.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(slopes.size() - 1) * s_steep_part);
    std::nth_element(slopes.begin(), steep, slopes.end());
    return s_steep_slope / static_cast<double>(*steep);
}

std::vector<unsigned char> light_on(const Raster& heights, const Shading& shading, const QSizeF& pixel)
{
    std::vector<unsigned char> light(heights.cells.size());
    Workers workers;
    const int rows_of_part = rows_worth_a_thread(heights.columns) * s_rows_of_shading;
    workers.run_rows(heights.rows, rows_of_part, [&](int first, int end) {
        // The light on a pixel depends on its neighbours.
        const int above = std::min(first, 1);
        const int below = std::min(heights.rows - end, 1);
        const Grid grid = at_least_two_by_two(Grid(heights, shading, first - above, end + below));
        shade(grid, shading, pixel, QRect(0, above, heights.columns, end - first),
            light.data() + heights.index(0, first));
    });
    return light;
}

QImage painted(
    const Raster& heights, const Shading& shading, const std::vector<unsigned char>& light, bool colours)
{
    const Palette& palette = Palette::of(colours);
    QImage picture(heights.columns, heights.rows, QImage::Format_ARGB32_Premultiplied);
    auto* const p_pixels = reinterpret_cast<QRgb*>(picture.bits()); // lines of 32-bit pixels have no gaps
    Workers workers;
    workers.run_rows(heights.rows, rows_worth_a_thread(heights.columns), [&](int first, int end) {
        const Grid grid(heights, shading, first, end);
        std::size_t pixel = heights.index(0, first);
        for (const float height : grid.heights) {
            p_pixels[pixel] = std::isnan(height)
                ? qRgba(0, 0, 0, 0)
                : palette.colour(height, light.empty() ? s_light_of_the_plain : light[pixel]);
            ++pixel;
        }
    });
    return picture;
}

} // namespace terrain
