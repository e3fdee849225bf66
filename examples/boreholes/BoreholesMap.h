#pragma once

#include "Borehole.h"

#include <QtCore/QPointF>
#include <QtWidgets/QWidget>

namespace boreholes {

class BoreholesController;

/// A map of all boreholes, north up, as large as the widget allows: dots with names, coordinates at the rim,
/// and a bar that shows the scale. A click selects a borehole. It keeps no data of its own: each painting
/// asks the controller. Main thread.
class BoreholesMap : public QWidget
{
    Q_OBJECT

public:
    /// @param controller must outlive the map
    explicit BoreholesMap(BoreholesController& controller, QWidget* p_parent = nullptr);

    /// The place in the middle, in metres.
    QPointF middle() const;

signals:
    /// The user wants a borehole at a place, in metres.
    void borehole_wanted(const QPointF& place);

protected:
    void paintEvent(QPaintEvent* p_event) override;
    void mousePressEvent(QMouseEvent* p_event) override;

private:
    /// From metres to pixels; the same scale in both directions.
    QTransform view() const;
    void draw_grid(QPainter& painter, const QTransform& view) const;
    void draw_boreholes(QPainter& painter, const QTransform& view) const;
    void draw_scale(QPainter& painter, const QTransform& view) const;
    /// A round length, in metres, that is about so many pixels long; round in the unit that is shown.
    double round_length(double pixels, const QTransform& view) const;

    BoreholesController& m_controller; // the controller manager's
};

} // namespace boreholes
