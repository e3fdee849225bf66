#include "views/TerrainView.h"

#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "views/MapFurniture.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_margin = 12; ///< pixels around a raster that is shown whole
const double s_zoom_step = 1.25; ///< of a notch of the wheel and of a key
const double s_notch = 120; ///< what Qt counts for a notch
const double s_pan_part = 0.15; ///< of the widget that a key moves the map by
const double s_largest_scale = 64; ///< pixels for a cell, or if this is more ...
const double s_largest_part = 8; ///< ... this multiple of the scale at which the raster is shown whole
const double s_smallest_part = 0.25; ///< of the scale at which the raster is shown whole
const double s_pixels_of_visible_cells = 3; ///< cells that are drawn larger than this have edges

QString number(double value, bool angular)
{
    return QString::number(value, 'f', angular ? 5 : 1);
}

} // namespace

TerrainView::TerrainView(const housekeeping::DocumentId& document, QWidget* p_parent)
    : QWidget(p_parent)
    , m_document(document)
    , m_footprint(TerrainModel::of(document).raster())
    , m_shade(TerrainModel::of(document).raster(), m_footprint)
{
    const TerrainDocument& shown = *terrain_document();
    const Raster& raster = shown.terrain().raster();
    m_cells = QSizeF(std::max(raster.columns, 1), std::max(raster.rows, 1)); // an empty one has a map too
    m_unit = shown.datasource() ? shown.datasource()->z_units_string() : QString();
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 90);
    setCursor(Qt::OpenHandCursor);
    setAccessibleName(tr("Map"));
    fit();
}

void TerrainView::refresh()
{
    if (const TerrainDocument* const p_document = terrain_document()) {
        m_shade = HillShade(p_document->terrain().raster(), m_footprint);
        update();
        map_moved();
    }
}

const TerrainDocument* TerrainView::terrain_document() const
{
    const auto& manager = housekeeping::DocumentManager::const_instance();
    return manager.document_exists(m_document)
        ? dynamic_cast<const TerrainDocument*>(&manager.document_from_id(m_document))
        : nullptr;
}

// --- where the map is

QPointF TerrainView::pixels_per_cell() const
{
    return {m_scale * m_footprint.cell_width / m_footprint.cell_height, m_scale};
}

QPointF TerrainView::map_position(const QPointF& point) const
{
    const QPointF pixels = pixels_per_cell();
    return {m_centre.x() + (point.x() - width() / 2.0) / pixels.x(),
        m_centre.y() + (point.y() - height() / 2.0) / pixels.y()};
}

QPointF TerrainView::widget_position(const QPointF& map_position) const
{
    const QPointF pixels = pixels_per_cell();
    return {width() / 2.0 + (map_position.x() - m_centre.x()) * pixels.x(),
        height() / 2.0 + (map_position.y() - m_centre.y()) * pixels.y()};
}

double TerrainView::fitting_scale() const
{
    const double proportion = m_footprint.cell_width / m_footprint.cell_height;
    const double across = std::max(width() - 2 * s_margin, 1.0) / (m_cells.width() * proportion);
    const double down = std::max(height() - 2 * s_margin, 1.0) / m_cells.height();
    return std::min(across, down);
}

void TerrainView::set_scale(double scale)
{
    const double smallest = std::min(fitting_scale() * s_smallest_part, 1.0);
    const double largest = std::max(s_largest_scale, fitting_scale() * s_largest_part);
    const double bounded = std::clamp(scale, smallest, largest);
    if (bounded != m_scale) {
        m_scale = bounded;
        emit scale_changed(m_scale);
    }
}

void TerrainView::keep_map_in_sight()
{
    m_centre = QPointF(
        std::clamp(m_centre.x(), 0.0, m_cells.width()), std::clamp(m_centre.y(), 0.0, m_cells.height()));
}

void TerrainView::fit()
{
    m_fits = true;
    m_centre = QPointF(m_cells.width() / 2, m_cells.height() / 2);
    set_scale(fitting_scale());
    map_moved();
}

void TerrainView::zoom(double factor, const QPointF& fixed)
{
    const QPointF place = map_position(fixed);
    m_fits = false;
    set_scale(m_scale * factor);
    m_centre += place - map_position(fixed);
    keep_map_in_sight();
    map_moved();
}

void TerrainView::pan(const QPointF& by)
{
    const QPointF pixels = pixels_per_cell();
    m_fits = false;
    m_centre -= QPointF(by.x() / pixels.x(), by.y() / pixels.y());
    keep_map_in_sight();
    map_moved();
}

void TerrainView::zoom_in()
{
    zoom(s_zoom_step, QRectF(rect()).center());
}

void TerrainView::zoom_out()
{
    zoom(1 / s_zoom_step, QRectF(rect()).center());
}

void TerrainView::pan_left()
{
    pan({width() * s_pan_part, 0});
}

void TerrainView::pan_right()
{
    pan({-width() * s_pan_part, 0});
}

void TerrainView::pan_up()
{
    pan({0, height() * s_pan_part});
}

void TerrainView::pan_down()
{
    pan({0, -height() * s_pan_part});
}

void TerrainView::map_moved()
{
    update();
    if (m_pointer) {
        emit reading_changed(reading_text(*m_pointer));
    }
}

// --- what lies under the pointer

std::optional<Reading> TerrainView::reading(const QPointF& point) const
{
    const TerrainDocument* const p_document = terrain_document();
    const QPointF place = map_position(point);
    if (!p_document || place.x() < 0 || place.y() < 0
        || housekeeping::DocumentManager::const_instance().document_busy(m_document)) {
        return {};
    }
    const Raster& raster = p_document->terrain().raster();
    if (place.x() >= raster.columns || place.y() >= raster.rows) {
        return {};
    }
    const int column = static_cast<int>(place.x());
    const int row = static_cast<int>(place.y());
    Reading found{m_footprint.columns_run_west ? raster.columns - 1 - column : column,
        m_footprint.rows_run_north ? raster.rows - 1 - row : row, no_data};
    found.height = raster.cell(found.column, found.row);
    return found;
}

QString TerrainView::reading_text(const QPointF& point) const
{
    const auto found = reading(point);
    if (!found) {
        return {};
    }
    const QString height = is_no_data(found->height)
        ? tr("no data")
        : QString("%1 %2").arg(height_text(found->height), m_unit).trimmed();
    const QString cell = tr("column %1, row %2").arg(found->column).arg(found->row);
    const auto& geotransform = terrain_document()->terrain().raster().geotransform;
    if (!geotransform) {
        return tr("%1   at %2").arg(height, cell);
    }
    const std::array<double, 6>& g = *geotransform;
    const double column = found->column + 0.5;
    const double row = found->row + 0.5;
    const double x = g[0] + column * g[1] + row * g[2];
    const double y = g[3] + column * g[4] + row * g[5];
    return tr("%1   at %2, %3   (%4)")
        .arg(height, number(x, m_footprint.angular), number(y, m_footprint.angular), cell);
}

// --- events

QSize TerrainView::sizeHint() const
{
    return {900, 680};
}

void TerrainView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    const QImage& picture = m_shade.picture();
    const double step = m_shade.cells_per_pixel();
    const QRectF target(widget_position(QPointF(0, 0)),
        widget_position(QPointF(picture.width() * step, picture.height() * step)));
    // Far in, the cells are to be seen as they are; far out, a smooth picture hides fewer of them.
    painter.setRenderHint(
        QPainter::SmoothPixmapTransform, m_scale / devicePixelRatioF() < s_pixels_of_visible_cells);
    painter.drawImage(target, picture, picture.rect());
    if (m_shade.has_heights()) {
        draw_legend(painter, rect(), m_shade.lowest(), m_shade.highest(), m_unit);
    }
    draw_scale_bar(painter, rect(), m_footprint.in_metres ? m_footprint.cell_height / m_scale : 0);
}

void TerrainView::resizeEvent(QResizeEvent*)
{
    if (m_fits) {
        fit();
    } else {
        map_moved();
    }
}

void TerrainView::wheelEvent(QWheelEvent* p_event)
{
    const double notches = p_event->angleDelta().y() / s_notch;
    if (notches != 0) {
        zoom(std::pow(s_zoom_step, notches), p_event->position());
    }
    p_event->accept();
}

void TerrainView::mousePressEvent(QMouseEvent* p_event)
{
    if (p_event->button() != drag_button) {
        QWidget::mousePressEvent(p_event);
        return;
    }
    m_drag = p_event->localPos();
    setCursor(Qt::ClosedHandCursor);
}

void TerrainView::mouseMoveEvent(QMouseEvent* p_event)
{
    m_pointer = p_event->localPos();
    if (m_drag) {
        const QPointF by = *m_pointer - *m_drag;
        m_drag = m_pointer;
        pan(by);
    } else {
        emit reading_changed(reading_text(*m_pointer));
    }
}

void TerrainView::mouseReleaseEvent(QMouseEvent* p_event)
{
    if (p_event->button() == drag_button) {
        m_drag.reset();
        setCursor(Qt::OpenHandCursor);
    }
}

void TerrainView::leaveEvent(QEvent*)
{
    m_pointer.reset();
    emit reading_changed(QString());
}

} // namespace terrain
