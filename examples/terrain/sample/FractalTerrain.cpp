#include "sample/FractalTerrain.h"

#include "io/ReferenceSystem.h"

#include <algorithm>
#include <random>

namespace terrain {

namespace {

const double s_roughness = 0.55; ///< how much of the height remains when the distance is halved
const double s_lowest = 100; ///< metres
const double s_highest = 900;
const double s_cell_size = 30;
const double s_west = 440000; ///< UTM coordinates of the north-western corner
const double s_north = 5400000;
const int s_epsg_code = 32632;
const int s_cells_per_pit = 2000;

/// Random numbers by arithmetic that is the same everywhere, unlike that of the standard distributions.
class Dice
{
public:
    explicit Dice(unsigned long long seed)
        : m_engine(seed)
    { }
    /// From 0 (included) to 1 (excluded).
    double fraction() { return static_cast<double>(m_engine() >> 11) * 0x1p-53; }
    double between(double low, double high) { return low + (high - low) * fraction(); }
    int below(int end) { return static_cast<int>(fraction() * end); }

private:
    std::mt19937_64 m_engine;
};

/// A square of heights made by the diamond-square algorithm; its side is a power of two and one.
class Fractal
{
public:
    Fractal(int size, Dice& dice)
        : m_dice(dice)
    {
        while (m_side < size) {
            m_side = 2 * m_side - 1;
        }
        m_heights.resize(static_cast<std::size_t>(m_side) * static_cast<std::size_t>(m_side));
        for (const int row : {0, m_side - 1}) {
            for (const int column : {0, m_side - 1}) {
                height(column, row) = m_dice.between(-1, 1);
            }
        }
        double amplitude = 1;
        for (int step = m_side - 1; step > 1; step /= 2) {
            amplitude *= s_roughness;
            fill_centres(step, amplitude);
            fill_edges(step, amplitude);
        }
    }

    double& height(int column, int row)
    {
        return m_heights[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_side)
            + static_cast<std::size_t>(column)];
    }

private:
    void fill_centres(int step, double amplitude)
    {
        const int half = step / 2;
        for (int row = half; row < m_side; row += step) {
            for (int column = half; column < m_side; column += step) {
                const double mean
                    = (height(column - half, row - half) + height(column + half, row - half)
                          + height(column - half, row + half) + height(column + half, row + half))
                    / 4;
                height(column, row) = mean + amplitude * m_dice.between(-1, 1);
            }
        }
    }

    void fill_edges(int step, double amplitude)
    {
        const int half = step / 2;
        for (int row = 0; row < m_side; row += half) {
            for (int column = row % step == 0 ? half : 0; column < m_side; column += step) {
                height(column, row) = mean_around(column, row, half) + amplitude * m_dice.between(-1, 1);
            }
        }
    }

    double mean_around(int column, int row, int distance)
    {
        double sum = 0;
        int count = 0;
        const auto add = [&](int x, int y) {
            if (x >= 0 && y >= 0 && x < m_side && y < m_side) {
                sum += height(x, y);
                ++count;
            }
        };
        add(column - distance, row);
        add(column + distance, row);
        add(column, row - distance);
        add(column, row + distance);
        return sum / count;
    }

    Dice& m_dice;
    int m_side = 2;
    std::vector<double> m_heights; // row by row
};

/// Stretches the heights to the range of the landscape.
void stretch(Raster& raster)
{
    const auto [p_lowest, p_highest] = std::minmax_element(raster.cells.begin(), raster.cells.end());
    const double lowest = *p_lowest;
    const double range = *p_highest > lowest ? *p_highest - lowest : 1;
    for (double& cell : raster.cells) {
        cell = s_lowest + (s_highest - s_lowest) * (cell - lowest) / range;
    }
}

/// Digs a round pit into the landscape.
void dig_pit(Raster& raster, Dice& dice)
{
    const int column = dice.below(raster.columns);
    const int row = dice.below(raster.rows);
    const int radius = 1 + dice.below(4);
    const double depth = dice.between(2, 20);
    for (int y = std::max(row - radius, 0); y <= std::min(row + radius, raster.rows - 1); ++y) {
        for (int x = std::max(column - radius, 0); x <= std::min(column + radius, raster.columns - 1); ++x) {
            const double distance = (x - column) * (x - column) + (y - row) * (y - row);
            const double share = 1 - distance / (radius * radius + 1);
            raster.cells[raster.index(x, y)] -= depth * std::max(share, 0.0);
        }
    }
}

/// Takes the data out of the south-eastern corner, an eighth of the size wide, unless that is all there is.
void cut_corner(Raster& raster)
{
    const int corner = raster.columns / 8;
    for (int row = raster.rows - corner; row < raster.rows; ++row) {
        const int first = raster.columns - (row - (raster.rows - corner)) - 1;
        std::fill(raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(first, row)),
            raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(0, row + 1)), no_data);
    }
}

} // namespace

Raster fractal_terrain(int size, unsigned long long seed)
{
    Dice dice(seed);
    Raster raster;
    raster.columns = size;
    raster.rows = size;
    raster.cells.reserve(raster.index(0, size));
    {
        Fractal fractal(size, dice);
        for (int row = 0; row < size; ++row) {
            for (int column = 0; column < size; ++column) {
                raster.cells.push_back(fractal.height(column, row));
            }
        }
    }
    stretch(raster);
    for (std::size_t pit = 0; pit < raster.cells.size() / s_cells_per_pit; ++pit) {
        dig_pit(raster, dice);
    }
    // Centimetres in 32-bit numbers, as a survey would deliver them.
    for (double& cell : raster.cells) {
        cell = static_cast<double>(static_cast<float>(std::round(cell * 100) / 100));
    }
    cut_corner(raster);

    raster.geotransform = {s_west, s_cell_size, 0, s_north, 0, -s_cell_size};
    raster.reference_system = reference_system_from_epsg(s_epsg_code);
    raster.unit = "metre";
    raster.file_no_data = -9999;
    return raster;
}

} // namespace terrain
