#pragma once

#include "io/ContourLines.h"

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QPolygonF>
#include <QtGui/QTransform>

#include <vector>

class QPainter;

namespace terrain {

class HillShade;

/**
 * The contour lines of a map: thin ones, and each fifth bolder with its height on it. They follow the heights
 * of the map's picture, so those of a large raster are made from the same means as the picture.
 *
 * Lines are made when they are drawn first, and once for a state of the cells and an interval: making them
 * takes as long as shading. Main thread.
 */
class ContourLayer
{
public:
    /// Forgets the lines; the cells are not as they were.
    void clear();

    /// Makes sure that the lines are there. What goes wrong is told by problem().
    /// @param interval in the unit of the heights; 0 for one that suits them
    void make(const HillShade& shade, double interval);

    /// Draws the lines as make() left them. Texts are in the painter's font, a bit smaller.
    /// @param to_widget from columns and rows of cells to the painter's coordinates @param visible in the
    /// painter's coordinates
    void draw(QPainter& painter, const QTransform& to_widget, const QRectF& visible) const;

    /// The height between two lines, as it came out; 0 before make().
    double interval() const { return m_interval; }
    /// Why there are no lines, for people; empty if there are, or there is nothing to draw.
    const QString& problem() const { return m_problem; }
    /// How many lines there are.
    std::size_t count() const { return m_lines.size(); }
    /// How often lines were made.
    int times_made() const { return m_times_made; }

private:
    struct Line
    {
        QPolygonF points; ///< columns and rows of cells
        QRectF bounds;
        QString label; ///< empty for a thin line
    };

    std::vector<Line> m_lines;
    double m_asked_interval = -1; // none yet
    double m_interval = 0;
    QString m_problem;
    int m_times_made = 0;
};

} // namespace terrain
