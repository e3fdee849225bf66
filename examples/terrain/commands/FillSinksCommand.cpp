#include "commands/FillSinksCommand.h"

#include "documents/Raster.h"
#include "windows/Icons.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <utility>

namespace terrain {

namespace {

const std::size_t s_report_every = 1 << 16; ///< cells

/// The flood, which rises from the outlets and reaches every cell once, at the height that water would stand
/// there.
class Flood
{
public:
    explicit Flood(const Raster& raster)
        : m_raster(raster)
        , m_heights(raster.cells)
        , m_reached(raster.cells.size(), false)
    {
        for (int row = 0; row < raster.rows; ++row) {
            for (int column = 0; column < raster.columns; ++column) {
                if (is_outlet(column, row)) {
                    start_from(raster.index(column, row));
                }
            }
        }
    }

    bool done() const { return m_hollow.empty() && m_shore.empty(); }

    /// Goes on from the lowest cell that the flood has reached.
    void advance()
    {
        const std::size_t from = take_lowest();
        const auto columns = static_cast<std::size_t>(m_raster.columns);
        const auto spread
            = [this, from](int column, int row) { reach(m_raster.index(column, row), m_heights[from]); };
        for_neighbours(static_cast<int>(from % columns), static_cast<int>(from / columns), spread);
    }

    std::vector<double> take_heights() { return std::move(m_heights); }

private:
    typedef std::pair<double, std::size_t> Cell; // height, index
    typedef std::priority_queue<Cell, std::vector<Cell>, std::greater<Cell>> LowestFirst;

    template <class Visit>
    void for_neighbours(int column, int row, Visit visit) const
    {
        for (int y = std::max(row - 1, 0); y <= std::min(row + 1, m_raster.rows - 1); ++y) {
            for (int x = std::max(column - 1, 0); x <= std::min(column + 1, m_raster.columns - 1); ++x) {
                if (x != column || y != row) {
                    visit(x, y);
                }
            }
        }
    }

    bool is_outlet(int column, int row) const
    {
        if (is_no_data(m_raster.cell(column, row))) {
            return false;
        }
        bool outlet = column == 0 || row == 0 || column == m_raster.columns - 1 || row == m_raster.rows - 1;
        for_neighbours(
            column, row, [&](int x, int y) { outlet = outlet || is_no_data(m_raster.cell(x, y)); });
        return outlet;
    }

    void start_from(std::size_t index)
    {
        m_reached[index] = true;
        m_shore.emplace(m_heights[index], index);
    }

    void reach(std::size_t index, double water)
    {
        if (m_reached[index] || is_no_data(m_heights[index])) {
            return;
        }
        m_reached[index] = true;
        if (m_heights[index] <= water) {
            m_heights[index] = water;
            m_hollow.push(index); // as low as any other, so it need not be sorted in
        } else {
            m_shore.emplace(m_heights[index], index);
        }
    }

    std::size_t take_lowest()
    {
        std::size_t index = 0;
        if (m_hollow.empty()) {
            index = m_shore.top().second;
            m_shore.pop();
        } else {
            index = m_hollow.front();
            m_hollow.pop();
        }
        return index;
    }

    const Raster& m_raster;
    std::vector<double> m_heights;
    std::vector<bool> m_reached;
    LowestFirst m_shore;
    std::queue<std::size_t> m_hollow;
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
