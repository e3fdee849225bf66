#include "scene/ReliefPatch.h"

#include "scene/ReliefGrid.h"
#include "scene/ReliefTexture.h"

#include <osg/Geometry>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace terrain {

namespace {

const int s_coarse_step = 8; ///< cells that a triangle of the coarse surface may be wide

class PatchBuilder
{
public:
    PatchBuilder(const ReliefGrid& grid, const ReliefTexture& texture, const QPoint& number)
        : m_grid(grid)
        , m_texture(texture)
        , m_first(number * patch_side)
        , m_end(std::min(m_first.x() + patch_side, grid.columns() + 1),
              std::min(m_first.y() + patch_side, grid.rows() + 1))
        , m_vertices(new osg::Vec3Array)
        , m_texture_places(new osg::Vec2Array)
        , m_numbers((patch_side + 1) * (patch_side + 1), 0)
    { }

    osg::ref_ptr<osg::Group> make()
    {
        for (int v = m_first.y(); v < m_end.y(); ++v) {
            for (int u = m_first.x(); u < m_end.x(); ++u) {
                add_corner(u, v);
            }
        }
        if (m_triangles.empty()) {
            return {};
        }
        const std::vector<GLuint> fine = std::exchange(m_triangles, {});
        for (int v = m_first.y(); v < m_end.y(); v += s_coarse_step) {
            for (int u = m_first.x(); u < m_end.x(); u += s_coarse_step) {
                add_block(u, v, s_coarse_step);
            }
        }
        osg::ref_ptr<osg::Group> group(new osg::Group);
        group->addChild(surface(fine, fine_surface));
        group->addChild(surface(m_triangles, coarse_surface));
        return group;
    }

private:
    /// Joins the cells around the corner to the left of column @p u and above row @p v.
    void add_corner(int u, int v)
    {
        const std::array<QPoint, 4> cells
            = {QPoint(u - 1, v - 1), QPoint(u, v - 1), QPoint(u - 1, v), QPoint(u, v)};
        const auto has = [this](const QPoint& cell) { return m_grid.has(cell.x(), cell.y()); };
        const auto count = std::count_if(cells.begin(), cells.end(), has);
        if (count == 4) {
            add_square(cells);
            return;
        }
        if (count == 0) {
            return;
        }
        double sum = 0;
        for (const QPoint& cell : cells) {
            sum += has(cell) ? level(cell) / static_cast<double>(count) : 0;
        }
        for (const QPoint& cell : cells) {
            if (has(cell)) {
                add_quarter(cell, QPoint(2 * u - 1 - cell.x(), 2 * v - 1 - cell.y()), QPoint(u, v), sum);
            }
        }
    }

    /// The quarter of a cell at a corner. @param opposite the cell at the other side of the corner
    void add_quarter(const QPoint& cell, const QPoint& opposite, const QPoint& corner, double corner_level)
    {
        const QPointF middle = m_grid.middle(cell.x(), cell.y());
        const QPointF at(m_grid.left(corner.x()), m_grid.top(corner.y()));
        const auto between = [this, &cell](const QPoint& beside) {
            return m_grid.has(beside.x(), beside.y()) ? (level(cell) + level(beside)) / 2 : level(cell);
        };
        const GLuint first = number_of(cell);
        const GLuint side = add_vertex(QPointF(at.x(), middle.y()), between({opposite.x(), cell.y()}));
        const GLuint end = add_vertex(at, corner_level);
        const GLuint other = add_vertex(QPointF(middle.x(), at.y()), between({cell.x(), opposite.y()}));
        add_triangle(first, side, end);
        add_triangle(first, end, other);
    }

    /// Along the diagonal that is more level, which keeps ridges and valleys.
    void add_square(const std::array<QPoint, 4>& cells)
    {
        const GLuint a = number_of(cells[0]);
        const GLuint b = number_of(cells[1]);
        const GLuint c = number_of(cells[2]);
        const GLuint d = number_of(cells[3]);
        if (std::abs(level(cells[0]) - level(cells[3])) <= std::abs(level(cells[1]) - level(cells[2]))) {
            add_triangle(a, c, d);
            add_triangle(a, d, b);
        } else {
            add_triangle(a, c, b);
            add_triangle(b, c, d);
        }
    }

    /// Some corners at once if all cells around have heights, else in smaller blocks.
    void add_block(int u, int v, int size)
    {
        if (u >= m_end.x() || v >= m_end.y()) {
            return;
        }
        if (size == 1) {
            add_corner(u, v);
            return;
        }
        if (is_full(u, v, size)) {
            add_square({QPoint(u - 1, v - 1), QPoint(u + size - 1, v - 1), QPoint(u - 1, v + size - 1),
                QPoint(u + size - 1, v + size - 1)});
            return;
        }
        const int half = size / 2;
        add_block(u, v, half);
        add_block(u + half, v, half);
        add_block(u, v + half, half);
        add_block(u + half, v + half, half);
    }

    bool is_full(int u, int v, int size) const
    {
        if (u + size > m_end.x() || v + size > m_end.y()) {
            return false;
        }
        for (int row = v - 1; row < v + size; ++row) {
            for (int column = u - 1; column < u + size; ++column) {
                if (!m_grid.has(column, row)) {
                    return false;
                }
            }
        }
        return true;
    }

    double level(const QPoint& cell) const { return m_grid.level(cell.x(), cell.y()); }

    /// Of the vertex in the middle of a cell.
    GLuint number_of(const QPoint& cell)
    {
        const QPoint inside = cell - m_first + QPoint(1, 1);
        GLuint& number = m_numbers[static_cast<std::size_t>(inside.y() * (patch_side + 1) + inside.x())];
        if (number == 0) {
            number = 1 + add_vertex(m_grid.middle(cell.x(), cell.y()), level(cell));
        }
        return number - 1;
    }

    GLuint add_vertex(const QPointF& map, double level)
    {
        const QPointF place = m_grid.space().place(map);
        m_vertices->push_back(osg::Vec3(
            static_cast<float>(place.x()), static_cast<float>(place.y()), static_cast<float>(level)));
        m_texture_places->push_back(m_texture.place(map));
        return static_cast<GLuint>(m_vertices->size() - 1);
    }

    void add_triangle(GLuint a, GLuint b, GLuint c) { m_triangles.insert(m_triangles.end(), {a, b, c}); }

    osg::ref_ptr<osg::Geometry> surface(const std::vector<GLuint>& triangles, unsigned int mask) const
    {
        osg::ref_ptr<osg::Geometry> geometry(new osg::Geometry);
        geometry->setUseDisplayList(false);
        geometry->setUseVertexBufferObjects(true);
        geometry->setVertexArray(m_vertices);
        geometry->setTexCoordArray(0, m_texture_places);
        geometry->addPrimitiveSet(new osg::DrawElementsUInt(
            GL_TRIANGLES, static_cast<unsigned int>(triangles.size()), triangles.data()));
        geometry->setNodeMask(mask);
        return geometry;
    }

    const ReliefGrid& m_grid;
    const ReliefTexture& m_texture;
    QPoint m_first; // corner
    QPoint m_end; // of the corners
    osg::ref_ptr<osg::Vec3Array> m_vertices;
    osg::ref_ptr<osg::Vec2Array> m_texture_places;
    std::vector<GLuint> m_numbers; // of the vertices in the middles of cells, plus 1; 0 for none yet
    std::vector<GLuint> m_triangles;
};

} // namespace

osg::ref_ptr<osg::Group> make_patch(
    const ReliefGrid& grid, const ReliefTexture& texture, const QPoint& number)
{
    return PatchBuilder(grid, texture, number).make();
}

} // namespace terrain
