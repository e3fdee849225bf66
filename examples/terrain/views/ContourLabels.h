#pragma once

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QFont>
#include <QtGui/QPolygonF>
#include <QtGui/QTransform>

#include <vector>

class QLineF;
class QPainter;

namespace terrain {

/**
 * Heights that stand on contour lines, along them, and upright: at places that stay when the map is moved,
 * where a line is straight enough, and not too close to each other. For one drawing.
 */
class ContourLabels
{
public:
    /// @param to_widget from columns and rows of cells to the painter's coordinates, without a rotation
    /// @param visible in the painter's coordinates
    ContourLabels(const QFont& font, const QTransform& to_widget, const QRectF& visible);

    /// Finds places on a line. @param line columns and rows of cells
    void place(const QPolygonF& line, const QString& text);
    /// Draws what was placed.
    void draw(QPainter& painter) const;

private:
    struct Label
    {
        QPointF centre;
        double angle; ///< degrees, as QPainter counts them
        QString text;
        QRectF room; ///< that no other label may take
    };

    void place_at(const QLineF& chord, const QString& text);

    QFont m_font;
    const QTransform& m_to_widget;
    QRectF m_visible;
    double m_distance; // between the labels of a line, in pixels
    std::vector<Label> m_labels;
};

} // namespace terrain
