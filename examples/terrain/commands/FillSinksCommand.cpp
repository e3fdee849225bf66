#include "commands/FillSinksCommand.h"

#include "commands/Shore.h"
#include "documents/Raster.h"
#include "parallel/LargeMemory.h"
#include "windows/Icons.h"

#include <cstdint>
#include <limits>
#include <queue>
#include <utility>

namespace terrain {

namespace {

const std::size_t s_report_every = 1 << 16; ///< cells

/// A flag for each cell of a raster, and for those of a frame around it, which are set: what is outside needs
/// no other treatment.
class FramedFlags
{
public:
    FramedFlags(int columns, int rows)
        : m_width(static_cast<std::size_t>(columns) + 2)
        , m_words(m_width * (static_cast<std::size_t>(rows) + 2) / s_bits + 2)
    {
        for (int column = -1; column <= columns; ++column) {
            set(column, -1);
            set(column, rows);
        }
        for (int row = 0; row < rows; ++row) {
            set(-1, row);
            set(columns, row);
        }
    }

    void set(int column, int row)
    {
        const std::size_t bit = bit_of(column, row);
        m_words[bit / s_bits] |= std::uint32_t(1) << bit % s_bits;
    }

    bool is_set(int column, int row) const
    {
        const std::size_t bit = bit_of(column, row);
        return (m_words[bit / s_bits] >> bit % s_bits & 1) != 0;
    }

    /// Of a cell and those at its left and its right: 1, 2 and 4 from the left.
    unsigned int three(int column, int row) const
    {
        const std::size_t bit = bit_of(column - 1, row);
        const std::uint64_t words
            = m_words[bit / s_bits] | std::uint64_t(m_words[bit / s_bits + 1]) << s_bits;
        return static_cast<unsigned int>(words >> bit % s_bits) & 7;
    }

private:
    static constexpr std::size_t s_bits = 32;

    std::size_t bit_of(int column, int row) const
    {
        return static_cast<std::size_t>(row + 1) * m_width + static_cast<std::size_t>(column + 1);
    }

    std::size_t m_width;
    std::vector<std::uint32_t> m_words;
};

std::pair<double, double> range_of(const std::vector<double>& heights)
{
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const double height : heights) { // comparisons with no_data are false
        lowest = height < lowest ? height : lowest;
        highest = height > highest ? height : highest;
    }
    return {lowest, highest};
}

/// The flood, which rises from the outlets and reaches every cell once, at the height that water would stand
/// there.
class Flood
{
public:
    explicit Flood(const Raster& raster)
        : m_raster(raster)
        , m_reached(raster.columns, raster.rows)
        , m_shore(range_of(raster.cells), raster.cells.size())
    {
        reserve_large(m_heights, raster.cells.size());
        m_heights = raster.cells;
        start_from_no_data();
        start_from_border();
    }

    bool done() const { return m_hollow.empty() && m_shore.empty(); }

    /// Goes on from the lowest cell that the flood has reached.
    void advance()
    {
        const CellPlace from = take_lowest();
        const double water = m_heights[index_of(from)];
        const int column = static_cast<int>(from.column);
        for (int row = static_cast<int>(from.row) - 1; row <= static_cast<int>(from.row) + 1; ++row) {
            const unsigned int reached = m_reached.three(column, row);
            for (int beside = 0; beside < 3; ++beside) {
                if ((reached >> beside & 1) == 0) {
                    reach(column - 1 + beside, row, water);
                }
            }
        }
    }

    std::vector<double> take_heights() { return std::move(m_heights); }

private:
    std::size_t index_of(const CellPlace& place) const
    {
        return m_raster.index(static_cast<int>(place.column), static_cast<int>(place.row));
    }

    static CellPlace place_of(int column, int row)
    {
        return {static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(column)};
    }

    /// Into cells without data water flows off, and they are never reached.
    void start_from_no_data()
    {
        for_each_without_data([this](int column, int row) { m_reached.set(column, row); });
        for_each_without_data([this](int column, int row) {
            for (int y = row - 1; y <= row + 1; ++y) {
                for (int x = column - 1; x <= column + 1; ++x) {
                    start_from(x, y);
                }
            }
        });
    }

    template <class Visit>
    void for_each_without_data(Visit visit) const
    {
        for (int row = 0; row < m_raster.rows; ++row) {
            for (int column = 0; column < m_raster.columns; ++column) {
                if (is_no_data(m_raster.cell(column, row))) {
                    visit(column, row);
                }
            }
        }
    }

    void start_from_border()
    {
        for (int column = 0; column < m_raster.columns; ++column) {
            start_from(column, 0);
            start_from(column, m_raster.rows - 1);
        }
        for (int row = 0; row < m_raster.rows; ++row) {
            start_from(0, row);
            start_from(m_raster.columns - 1, row);
        }
    }

    void start_from(int column, int row)
    {
        if (!m_reached.is_set(column, row)) {
            m_reached.set(column, row);
            m_shore.add({m_heights[m_raster.index(column, row)], place_of(column, row)});
        }
    }

    void reach(int column, int row, double water)
    {
        m_reached.set(column, row);
        double& height = m_heights[m_raster.index(column, row)];
        if (height <= water) {
            height = water;
            m_hollow.push(place_of(column, row)); // as low as any other, so it need not be sorted in
        } else {
            m_shore.add({height, place_of(column, row)});
        }
    }

    CellPlace take_lowest()
    {
        if (m_hollow.empty()) {
            return m_shore.take().place;
        }
        const CellPlace place = m_hollow.front();
        m_hollow.pop();
        return place;
    }

    const Raster& m_raster;
    std::vector<double> m_heights;
    FramedFlags m_reached;
    Shore m_shore;
    std::queue<CellPlace> m_hollow;
};

} // namespace

FillSinksCommand::FillSinksCommand(housekeeping::DocumentId document_id)
    : TerrainCommand(document_id, tr("Fill sinks"))
{
    setIcon(icon("fill-sinks"));
}

std::vector<double> FillSinksCommand::new_cells(const Raster& raster) const
{
    Flood flood(raster);
    for (std::size_t cells = 0; !flood.done(); ++cells) {
        if (cells % s_report_every == 0) {
            report(cells, raster.cells.size());
        }
        flood.advance();
    }
    return flood.take_heights();
}

QString FillSinksCommand::parameters() const
{
    return {};
}

} // namespace terrain
