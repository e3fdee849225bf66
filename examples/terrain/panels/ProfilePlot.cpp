#include "panels/ProfilePlot.h"

#include "documents/Raster.h"
#include "panels/HeightProfile.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_marker.h>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_headroom = 0.06; ///< above and below the curve, in proportion to its heights
const double s_flat_room = 0.1; ///< the same for a flat one, in proportion to the height
const double s_line_width = 1.5;
const double s_paleness = 0.2; ///< of what is below the curve
const double s_dot_radius = 2.5; ///< of a height that stands alone
const QColor s_pointer(255, 120, 0); ///< as on the map
const QSize s_dot(9, 9); ///< of what is pointed at

/// A curve with a gap wherever there is no height.
class CurveWithGaps : public QwtPlotCurve
{
public:
    void drawSeries(QPainter* p_painter, const QwtScaleMap& x_map, const QwtScaleMap& y_map,
        const QRectF& canvas, int from, int to) const override
    {
        const int end = to < 0 ? static_cast<int>(dataSize()) : to + 1;
        for (int i = from; i < end; ++i) {
            const int begin = i;
            while (i < end && !is_no_data(sample(i).y())) {
                ++i;
            }
            if (i - begin == 1) {
                draw_dot(*p_painter,
                    QPointF(x_map.transform(sample(begin).x()), y_map.transform(sample(begin).y())));
            } else if (i > begin) {
                QwtPlotCurve::drawSeries(p_painter, x_map, y_map, canvas, begin, i - 1);
            }
        }
    }

private:
    void draw_dot(QPainter& painter, const QPointF& at) const
    {
        painter.save();
        painter.setPen(Qt::NoPen);
        painter.setBrush(pen().color());
        painter.drawEllipse(at, s_dot_radius, s_dot_radius);
        painter.restore();
    }
};

QString distance_text(DistanceUnit unit)
{
    switch (unit) {
    case DistanceUnit::Metres:
        return ProfilePlot::tr("Distance (m)");
    case DistanceUnit::Kilometres:
        return ProfilePlot::tr("Distance (km)");
    case DistanceUnit::Cells:
        break;
    }
    return ProfilePlot::tr("Distance (cells)");
}

/// The part of the height axis that the profile needs.
QwtInterval heights_of(const HeightProfile& profile)
{
    double room = (profile.highest - profile.lowest) * s_headroom;
    if (room == 0) {
        room = profile.lowest == 0 ? 1 : std::abs(profile.lowest) * s_flat_room;
    }
    return {profile.lowest - room, profile.highest + room};
}

} // namespace

ProfilePlot::ProfilePlot(QWidget* p_parent)
    : PanelPlot(p_parent)
    , m_p_curve(new CurveWithGaps)
    , m_p_marker(new QwtPlotMarker)
    , m_p_pointer(new QwtPlotMarker)
{
    m_p_curve->attach(this);
    m_p_curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    m_p_curve->setPaintAttribute(QwtPlotCurve::FilterPoints);
    m_p_marker->setLineStyle(QwtPlotMarker::VLine);
    m_p_marker->attach(this);
    m_p_pointer->setLineStyle(QwtPlotMarker::VLine);
    m_p_pointer->attach(this);
    m_p_pointer->hide();
    canvas()->setMouseTracking(true); // the base watches its events already
    setAccessibleName(tr("Profile"));
    ProfilePlot::dress();
}

void ProfilePlot::clear()
{
    m_p_curve->setSamples(QVector<QPointF>());
    m_p_pointer->hide();
    replot();
}

void ProfilePlot::show_pointed(const std::optional<int>& cell)
{
    const bool is_on_profile = cell && *cell >= 0 && *cell < static_cast<int>(m_p_curve->dataSize());
    m_p_pointer->setVisible(is_on_profile);
    if (is_on_profile) {
        const QPointF point = m_p_curve->sample(*cell);
        const bool has_height = !is_no_data(point.y());
        m_p_pointer->setValue(point.x(), has_height ? point.y() : m_p_curve->baseline());
    }
    replot();
}

/// The cell of the profile that is nearest to a distance; nothing if there is no profile.
std::optional<int> ProfilePlot::cell_at(double x) const
{
    const int cells = static_cast<int>(m_p_curve->dataSize());
    if (cells == 0) {
        return {};
    }
    const double step = cells > 1 ? m_p_curve->sample(1).x() - m_p_curve->sample(0).x() : 1;
    return static_cast<int>(std::clamp(std::round(x / step), 0.0, cells - 1.0));
}

bool ProfilePlot::eventFilter(QObject* p_watched, QEvent* p_event)
{
    if (p_watched == canvas()) {
        if (p_event->type() == QEvent::MouseMove) {
            const double at = static_cast<QMouseEvent*>(p_event)->localPos().x();
            emit pointed(cell_at(canvasMap(xBottom).invTransform(at)));
        } else if (p_event->type() == QEvent::Leave) {
            emit pointed({});
        }
    }
    return PanelPlot::eventFilter(p_watched, p_event);
}

bool ProfilePlot::show_profile(const HeightProfile& profile, const QString& unit)
{
    clear();
    const QwtInterval heights = heights_of(profile);
    const double longest = profile.points.last().x();
    if (!profile.has_heights || !can_draw(heights.minValue(), heights.maxValue())
        || (longest > 0 && !can_draw(0, longest))) {
        return false;
    }
    m_p_curve->setSamples(profile.points);
    m_p_curve->setBaseline(heights.minValue());
    m_p_marker->setXValue(profile.here.x());
    set_axis(xBottom, distance_text(profile.unit), longest > 0 ? 0 : -1, longest > 0 ? longest : 1);
    set_axis(yLeft, height_text(unit), heights.minValue(), heights.maxValue());
    replot();
    return true;
}

void ProfilePlot::dress()
{
    PanelPlot::dress();
    QColor colour = palette().color(QPalette::Highlight);
    m_p_curve->setPen(colour, s_line_width);
    colour.setAlphaF(s_paleness);
    m_p_curve->setBrush(colour);
    m_p_marker->setLinePen(palette().color(QPalette::Text), 0, Qt::DashLine);
    m_p_pointer->setLinePen(palette().color(QPalette::Text), 0);
    m_p_pointer->setSymbol(
        new QwtSymbol(QwtSymbol::Ellipse, s_pointer, palette().color(QPalette::Text), s_dot)); // takes it
}

} // namespace terrain
