#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

namespace terrain {

struct Raster;

/// A cell's place in a raster.
struct CellPlace
{
    int column;
    int row;
};

/**
 * The part of the plane that the cells with data of a raster span: all squares between the centres of four
 * neighbours with data, and the halves of squares of which three corners have data. Narrower rows of cells,
 * and cells by themselves, span nothing.
 *
 * Places are centres of cells, counted in whole columns and rows, and all answers are exact. The raster must
 * outlive the object. Any thread, while nobody changes the raster.
 */
class DataArea
{
public:
    /// A straight piece of the outline, with the area on one side of it.
    struct Piece
    {
        CellPlace from;
        CellPlace to;
    };

    explicit DataArea(const Raster& raster);

    /// The pieces of the outline, as long as they can be, also around gaps. @param each_row told the number
    /// of rows that are done; what it throws ends the work
    std::vector<Piece> outline(const std::function<void(int rows)>& each_row) const;

    /// Whether a triangle that the outline does not cross lies in the area, and not beside it.
    bool holds(const std::array<CellPlace, 3>& triangle) const;

    /// How many cells with data do not lie in the area.
    std::size_t cells_left_out() const;

private:
    enum Side // of a piece; which one is which does not matter
    {
        None,
        First,
        Second
    };
    struct Direction
    {
        int columns;
        int rows;
        Side (DataArea::*side)(int column, int row) const; // of the piece that begins there
    };
    static const std::array<Direction, 4>& directions();

    unsigned int square(int column, int row) const;
    bool spans(int column, int row, unsigned int corners) const;
    Side side_across(int column, int row) const;
    Side side_down(int column, int row) const;
    Side side_falling(int column, int row) const;
    Side side_rising(int column, int row) const;
    void add_pieces_from(int column, int row, std::vector<Piece>& pieces) const;
    bool is_left_out(int column, int row) const;

    const Raster& m_raster;
};

} // namespace terrain
