#include "commands/DataArea.h"

#include "documents/Raster.h"

namespace terrain {

namespace {

// The corners of a square of four neighbours that have data.
const unsigned int s_upper_left = 1;
const unsigned int s_upper_right = 2;
const unsigned int s_lower_left = 4;
const unsigned int s_lower_right = 8;
const unsigned int s_all = 15;

/// Whether a square has enough corners with data for an area.
bool is_area(unsigned int corners)
{
    return corners == s_all || corners == s_all - s_upper_left || corners == s_all - s_upper_right
        || corners == s_all - s_lower_left || corners == s_all - s_lower_right;
}

} // namespace

DataArea::DataArea(const Raster& raster)
    : m_raster(raster)
{ }

const std::array<DataArea::Direction, 4>& DataArea::directions()
{
    static const std::array<Direction, 4> s_directions = {{{1, 0, &DataArea::side_across},
        {0, 1, &DataArea::side_down}, {1, 1, &DataArea::side_falling}, {1, -1, &DataArea::side_rising}}};
    return s_directions;
}

/// Which corners have data, of the square whose upper left one is given; none beyond the raster.
unsigned int DataArea::square(int column, int row) const
{
    if (column < 0 || row < 0 || column + 1 >= m_raster.columns || row + 1 >= m_raster.rows) {
        return 0;
    }
    const double* const p_upper = m_raster.cells.data() + m_raster.index(column, row);
    const double* const p_lower = p_upper + m_raster.columns;
    return (is_no_data(p_upper[0]) ? 0 : s_upper_left) | (is_no_data(p_upper[1]) ? 0 : s_upper_right)
        | (is_no_data(p_lower[0]) ? 0 : s_lower_left) | (is_no_data(p_lower[1]) ? 0 : s_lower_right);
}

/// Whether the area of a square reaches some corners of it.
bool DataArea::spans(int column, int row, unsigned int corners) const
{
    const unsigned int there = square(column, row);
    return is_area(there) && (there & corners) == corners;
}

DataArea::Side DataArea::side_across(int column, int row) const
{
    const bool above = spans(column, row - 1, s_lower_left | s_lower_right);
    const bool below = spans(column, row, s_upper_left | s_upper_right);
    return above == below ? None : above ? First : Second;
}

DataArea::Side DataArea::side_down(int column, int row) const
{
    const bool left = spans(column - 1, row, s_upper_right | s_lower_right);
    const bool right = spans(column, row, s_upper_left | s_lower_left);
    return left == right ? None : left ? First : Second;
}

DataArea::Side DataArea::side_falling(int column, int row) const
{
    const unsigned int corners = square(column, row);
    return corners == s_all - s_upper_right ? First : corners == s_all - s_lower_left ? Second : None;
}

DataArea::Side DataArea::side_rising(int column, int row) const
{
    const unsigned int corners = square(column, row - 1);
    return corners == s_all - s_upper_left ? First : corners == s_all - s_lower_right ? Second : None;
}

std::vector<DataArea::Piece> DataArea::outline(const std::function<void(int rows)>& each_row) const
{
    std::vector<Piece> pieces;
    for (int row = 0; row < m_raster.rows; ++row) {
        for (int column = 0; column < m_raster.columns; ++column) {
            add_pieces_from(column, row, pieces);
        }
        each_row(row + 1);
    }
    return pieces;
}

void DataArea::add_pieces_from(int column, int row, std::vector<Piece>& pieces) const
{
    const unsigned int corners = square(column, row);
    if ((corners == 0 || corners == s_all) && corners == square(column - 1, row)
        && corners == square(column, row - 1)) {
        return; // most cells are far from any outline, and this is quick
    }
    for (const Direction& direction : directions()) {
        const Side side = (this->*direction.side)(column, row);
        if (side == None
            || (this->*direction.side)(column - direction.columns, row - direction.rows) == side) {
            continue;
        }
        CellPlace end = {column, row};
        do {
            end = {end.column + direction.columns, end.row + direction.rows};
        } while ((this->*direction.side)(end.column, end.row) == side);
        pieces.push_back({{column, row}, end});
    }
}

bool DataArea::holds(const std::array<CellPlace, 3>& triangle) const
{
    // The triangle is on one side as a whole, so its middle tells. It is counted in thirds to be exact.
    const long long thirds_across = 0LL + triangle[0].column + triangle[1].column + triangle[2].column;
    const long long thirds_down = 0LL + triangle[0].row + triangle[1].row + triangle[2].row;
    const long long right = thirds_across % 3;
    const long long down = thirds_down % 3;
    switch (square(static_cast<int>(thirds_across / 3), static_cast<int>(thirds_down / 3))) {
    case s_all:
        return true;
    case s_all - s_upper_left:
        return right + down > 3;
    case s_all - s_lower_right:
        return right + down < 3;
    case s_all - s_upper_right:
        return right < down;
    case s_all - s_lower_left:
        return right > down;
    default:
        return false;
    }
}

std::size_t DataArea::cells_left_out() const
{
    std::size_t count = 0;
    for (int row = 0; row < m_raster.rows; ++row) {
        for (int column = 0; column < m_raster.columns; ++column) {
            count += is_left_out(column, row) ? 1 : 0;
        }
    }
    return count;
}

bool DataArea::is_left_out(int column, int row) const
{
    return !is_no_data(m_raster.cell(column, row)) && !spans(column, row, s_upper_left)
        && !spans(column - 1, row, s_upper_right) && !spans(column, row - 1, s_lower_left)
        && !spans(column - 1, row - 1, s_lower_right);
}

} // namespace terrain
