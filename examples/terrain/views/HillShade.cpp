#include "views/HillShade.h"

#include "ErrorCode.h"
#include "documents/Raster.h"
#include "io/GdalMessages.h"
#include "views/ElevationColours.h"
#include "views/Footprint.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QObject>

#include <gdal_priv.h>
#include <gdal_utils.h>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_source = "terrain/views/HillShade";

const double s_steep_part = 0.9; ///< this part of the slopes is not steeper ...
const double s_steep_slope = 0.8; ///< ... than this one, as rise over run

const double s_light_of_the_plain = 181; ///< GDAL's number for level ground
const double s_brightest = 255;
const double s_darkest_part = 0.25; ///< of a colour that is left in full shade
const double s_glare = 0.45; ///< of white that is added in full light

const float s_no_height = std::numeric_limits<float>::quiet_NaN();

/// The heights as the picture needs them: one for each pixel, from 0 for the lowest to 1 for the highest one.
struct Grid
{
    int columns;
    int rows;
    std::vector<float> heights;

    std::size_t index(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns)
            + static_cast<std::size_t>(column);
    }
    float height(int column, int row) const { return heights[index(column, row)]; }
};

int divided_up(int number, int divisor)
{
    return (number - 1) / divisor + 1;
}

/// Where the height lies between two others. The halves keep huge numbers from overflowing.
double fraction_of(double height, double lowest, double highest)
{
    const double range = highest / 2 - lowest / 2;
    return range > 0 ? (height / 2 - lowest / 2) / range : 0.5;
}

/// Takes one height for each square of cells.
class Sampler
{
public:
    Sampler(const Raster& raster, const Footprint& footprint, int cells_per_pixel)
        : m_raster(raster)
        , m_footprint(footprint)
        , m_step(cells_per_pixel)
    { }

    /// The height in the middle; no_data where that cell holds none.
    double nearest(int column, int row) const
    {
        return cell(std::min(column * m_step + m_step / 2, m_raster.columns - 1),
            std::min(row * m_step + m_step / 2, m_raster.rows - 1));
    }

    /// The mean of all heights, row by row; no_data where no cell of the square holds one.
    double mean(int column, int row) const
    {
        const int last_column = std::min((column + 1) * m_step, m_raster.columns);
        const int last_row = std::min((row + 1) * m_step, m_raster.rows);
        // Divided before they are added up, or huge heights overflow.
        const double share = 1.0 / (m_step * m_step);
        double sum = 0;
        int count = 0;
        for (int v = row * m_step; v < last_row; ++v) {
            for (int u = column * m_step; u < last_column; ++u) {
                const double height = cell(u, v);
                if (!is_no_data(height)) {
                    sum += height * share;
                    ++count;
                }
            }
        }
        return count == 0 ? no_data : sum / (count * share);
    }

private:
    /// Counted from the upper left corner of the map.
    double cell(int u, int v) const
    {
        return m_raster.cell(m_footprint.columns_run_west ? m_raster.columns - 1 - u : u,
            m_footprint.rows_run_north ? m_raster.rows - 1 - v : v);
    }

    const Raster& m_raster;
    const Footprint& m_footprint;
    int m_step;
};

/// How much steeper the grid's slopes must be so that they show.
double exaggeration(const Grid& grid, double width, double height)
{
    std::vector<float> slopes;
    slopes.reserve(grid.heights.size());
    for (int row = 0; row + 1 < grid.rows; ++row) {
        for (int column = 0; column + 1 < grid.columns; ++column) {
            const double here = grid.height(column, row);
            const double slope = std::hypot((grid.height(column + 1, row) - here) / width,
                (grid.height(column, row + 1) - here) / height);
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

/// GDAL's shading of the grid, 1 to 255; 0 where there is no height.
std::vector<unsigned char> light_on(Grid grid, const GdalMessages& messages, double width, double height)
{
    GDALDriver* const p_memory = GetGDALDriverManager()->GetDriverByName("MEM");
    const GDALDatasetUniquePtr source(
        p_memory ? p_memory->Create("", grid.columns, grid.rows, 1, GDT_Float32, nullptr) : nullptr);
    if (!source) {
        fail(messages);
    }
    std::array<double, 6> geotransform = {0, width, 0, 0, 0, -height};
    source->SetGeoTransform(geotransform.data());
    GDALRasterBand& band = *source->GetRasterBand(1);
    band.SetNoDataValue(no_data);
    const std::string factor = QByteArray::number(exaggeration(grid, width, height), 'g', 17).toStdString();
    CPLStringList words;
    for (const char* word :
        {"-of", "MEM", "-compute_edges", "-az", "315", "-alt", "45", "-z", factor.c_str()}) {
        words.AddString(word);
    }
    const std::unique_ptr<GDALDEMProcessingOptions, decltype(&GDALDEMProcessingOptionsFree)> options(
        GDALDEMProcessingOptionsNew(words.List(), nullptr), &GDALDEMProcessingOptionsFree);
    const bool written = band.RasterIO(GF_Write, 0, 0, grid.columns, grid.rows, grid.heights.data(),
                             grid.columns, grid.rows, GDT_Float32, 0, 0, nullptr)
        == CE_None;
    const GDALDatasetUniquePtr shaded(written && options
            ? GDALDataset::FromHandle(GDALDEMProcessing(
                "", GDALDataset::ToHandle(source.get()), "hillshade", nullptr, options.get(), nullptr))
            : nullptr);
    std::vector<unsigned char> light(grid.heights.size());
    if (!shaded
        || shaded->GetRasterBand(1)->RasterIO(GF_Read, 0, 0, grid.columns, grid.rows, light.data(),
               grid.columns, grid.rows, GDT_Byte, 0, 0, nullptr)
            != CE_None) {
        fail(messages);
    }
    return light;
}

QRgb lit(QRgb colour, unsigned char light)
{
    const double relative = light / s_light_of_the_plain;
    const double kept = s_darkest_part + (1 - s_darkest_part) * std::min(relative, 1.0);
    const double white = std::max(relative - 1, 0.0) / (s_brightest / s_light_of_the_plain - 1) * s_glare;
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
    Palette()
        : m_colours(s_heights * s_lights)
    {
        for (std::size_t height = 0; height < s_heights; ++height) {
            const QRgb colour = elevation_colour(static_cast<double>(height) / (s_heights - 1));
            for (std::size_t light = 0; light < s_lights; ++light) {
                m_colours[height * s_lights + light] = lit(colour, static_cast<unsigned char>(light));
            }
        }
    }
    QRgb colour(float height, unsigned char light) const
    {
        return m_colours[static_cast<std::size_t>(height * (s_heights - 1)) * s_lights + light];
    }

private:
    static constexpr std::size_t s_heights = 256;
    static constexpr std::size_t s_lights = 256;

    std::vector<QRgb> m_colours;
};

QImage painted(const Grid& grid, const std::vector<unsigned char>& light, int light_columns)
{
    const Palette palette;
    QImage picture(grid.columns, grid.rows, QImage::Format_ARGB32_Premultiplied);
    for (int row = 0; row < grid.rows; ++row) {
        auto* const p_pixels = reinterpret_cast<QRgb*>(picture.scanLine(row));
        const unsigned char* const p_light
            = light.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(light_columns);
        for (int column = 0; column < grid.columns; ++column) {
            const float height = grid.height(column, row);
            p_pixels[column]
                = std::isnan(height) ? qRgba(0, 0, 0, 0) : palette.colour(height, p_light[column]);
        }
    }
    return picture;
}

} // namespace

HillShade::HillShade(const Raster& raster, const Footprint& footprint, Sampling sampling)
{
    for (const double cell : raster.cells) {
        if (!is_no_data(cell)) {
            m_lowest = m_has_heights ? std::min(m_lowest, cell) : cell;
            m_highest = m_has_heights ? std::max(m_highest, cell) : cell;
            m_has_heights = true;
        }
    }
    if (raster.cells.empty()) {
        return;
    }
    m_cells_per_pixel = divided_up(std::max(raster.columns, raster.rows), max_side);
    Grid grid{divided_up(raster.columns, m_cells_per_pixel), divided_up(raster.rows, m_cells_per_pixel), {}};
    grid.heights.reserve(grid.index(0, grid.rows));
    const Sampler sampler(raster, footprint, m_cells_per_pixel);
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column) {
            const double height
                = sampling == Sampling::Mean ? sampler.mean(column, row) : sampler.nearest(column, row);
            grid.heights.push_back(is_no_data(height)
                    ? s_no_height
                    : static_cast<float>(std::clamp(fraction_of(height, m_lowest, m_highest), 0.0, 1.0)));
        }
    }
    // Only the proportion counts, and numbers near 1 are the safest.
    const double longer = std::max(footprint.cell_width, footprint.cell_height);
    const Grid shaded = at_least_two_by_two(grid);
    const GdalMessages messages;
    const std::vector<unsigned char> light
        = light_on(shaded, messages, footprint.cell_width / longer, footprint.cell_height / longer);
    m_picture = painted(grid, light, shaded.columns);
}

} // namespace terrain
