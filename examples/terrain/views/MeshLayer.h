#pragma once

#include <QtCore/QLineF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QTransform>

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <vector>

class QPainter;

namespace terrain {

struct Mesh;

/**
 * The edges of a map's triangulation, as thin lines. Where they would lie so close together that they hide
 * the map, the short ones fade, so that one sees the coarse triangles of a whole country and the fine ones
 * of a valley; however many triangles there are, about the same number of lines is drawn.
 *
 * The edges are collected when they are drawn first, and once for a triangulation. Of a triangulation for
 * which that would take too long, or for whose edges there is no memory, none are drawn. Main thread.
 */
class MeshLayer
{
public:
    static constexpr std::size_t most_triangles = 1000000; ///< of which edges are drawn; more would be felt

    /// Draws another triangulation from now on. @param sp_mesh null for none @param to_map from the raster's
    /// columns and rows to those of the map
    void show(const boost::shared_ptr<const Mesh>& sp_mesh, const QTransform& to_map);

    /// What goes wrong is told by problem().
    /// @param to_widget from columns and rows of the map to the painter's coordinates, without a rotation
    /// @param visible in the painter's coordinates
    void draw(QPainter& painter, const QTransform& to_widget, const QRectF& visible);

    /// The triangulation that is shown; null for none.
    const boost::shared_ptr<const Mesh>& mesh() const { return m_sp_mesh; }
    /// Why no edges are drawn, for people; empty if they are, or there are none.
    const QString& problem() const { return m_problem; }
    /// How many edges have been collected.
    std::size_t count() const { return m_edges.size(); }
    /// How many lines were drawn the last time.
    std::size_t drawn() const { return m_drawn; }

private:
    /// Edges that lie near each other, the longest first.
    struct Group
    {
        std::size_t begin; ///< in m_edges
        std::size_t end;
        QRectF bounds;
    };

    void clear();
    void collect();
    void group();
    std::vector<const Group*> groups_in(const QRectF& area) const;
    double shortest_to_draw(const std::vector<const Group*>& groups, double shortest) const;
    void draw_edges(QPainter& painter, const QTransform& to_widget, const QRectF& visible);

    boost::shared_ptr<const Mesh> m_sp_mesh;
    QTransform m_to_map;
    bool m_is_collected = true; // of no triangulation there is nothing to collect
    std::vector<QLineF> m_edges; // on the map
    std::vector<Group> m_groups;
    QString m_problem;
    std::size_t m_drawn = 0;
};

} // namespace terrain
