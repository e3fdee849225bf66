#include "views/TerrainView.h"

#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "preferences/PreferencesChanged.h"
#include "views/MapFurniture.h"
#include "views/MapMouse.h"

#include <tarqa/housekeeping/ApplicationManager.h>
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
const int s_glide_time = 180; ///< milliseconds

QString number(double value, bool angular)
{
    return QString::number(value, 'f', angular ? 5 : 1);
}

const housekeeping::ApplicationManager& preferences()
{
    return housekeeping::ApplicationManager::const_instance();
}

HillShade::Sampling sampling()
{
    return preferences().hqDownsample() ? HillShade::Sampling::Mean : HillShade::Sampling::Nearest;
}

} // namespace

TerrainView::TerrainView(const housekeeping::DocumentId& document, QWidget* p_parent)
    : QWidget(p_parent)
    , m_document(document)
    , m_footprint(TerrainModel::of(document).raster())
    , m_shade(TerrainModel::of(document).raster(), m_footprint, sampling())
    , m_hq_downsample(preferences().hqDownsample())
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
    m_glide.setStartValue(0.0);
    m_glide.setEndValue(1.0);
    m_glide.setDuration(s_glide_time);
    m_glide.setEasingCurve(QEasingCurve::OutCubic);
    connect(&m_glide, &QVariantAnimation::valueChanged, this, [this] { update(); });
    housekeeping::ApplicationMessage::subscribe(this, Qt::AutoConnection);
    show_whole();
}

void TerrainView::refresh()
{
    if (const TerrainDocument* const p_document = terrain_document()) {
        m_shade = HillShade(p_document->terrain().raster(), m_footprint, sampling());
        m_hq_downsample = preferences().hqDownsample();
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

void TerrainView::handle_message(housekeeping::ApplicationMessage& message)
{
    if (!is_preferences_changed(message)) {
        return;
    }
    if (!preferences().animateCameraJumps()) {
        m_glide.stop();
    }
    const bool is_sampled = m_shade.cells_per_pixel() > 1;
    // After a command the map is refreshed anyway.
    const bool is_busy = housekeeping::DocumentManager::const_instance().document_busy(m_document);
    if (is_sampled && !is_busy && m_hq_downsample != preferences().hqDownsample()) {
        refresh();
    }
    update();
}

// --- where the map is

QPointF TerrainView::pixels_per_cell(const Camera& camera) const
{
    return {camera.scale * m_footprint.cell_width / m_footprint.cell_height, camera.scale};
}

QPointF TerrainView::map_position(const QPointF& point, const Camera& camera) const
{
    const QPointF pixels = pixels_per_cell(camera);
    return {camera.centre.x() + (point.x() - width() / 2.0) / pixels.x(),
        camera.centre.y() + (point.y() - height() / 2.0) / pixels.y()};
}

QPointF TerrainView::widget_position(const QPointF& map_position, const Camera& camera) const
{
    const QPointF pixels = pixels_per_cell(camera);
    return {width() / 2.0 + (map_position.x() - camera.centre.x()) * pixels.x(),
        height() / 2.0 + (map_position.y() - camera.centre.y()) * pixels.y()};
}

QPointF TerrainView::map_position(const QPointF& point) const
{
    return map_position(point, m_camera);
}

QPointF TerrainView::widget_position(const QPointF& map_position) const
{
    return widget_position(map_position, m_camera);
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
    if (bounded != m_camera.scale) {
        m_camera.scale = bounded;
        emit scale_changed(bounded);
    }
}

void TerrainView::keep_map_in_sight()
{
    const QPointF centre = m_camera.centre;
    m_camera.centre = QPointF(
        std::clamp(centre.x(), 0.0, m_cells.width()), std::clamp(centre.y(), 0.0, m_cells.height()));
}

void TerrainView::show_whole()
{
    m_fits = true;
    m_camera.centre = QPointF(m_cells.width() / 2, m_cells.height() / 2);
    set_scale(fitting_scale());
    map_moved();
}

void TerrainView::change_scale(double factor, const QPointF& fixed)
{
    const QPointF place = map_position(fixed);
    m_fits = false;
    set_scale(m_camera.scale * factor);
    m_camera.centre += place - map_position(fixed);
    keep_map_in_sight();
    map_moved();
}

void TerrainView::move_by(const QPointF& by)
{
    const QPointF pixels = pixels_per_cell(m_camera);
    m_fits = false;
    m_camera.centre -= QPointF(by.x() / pixels.x(), by.y() / pixels.y());
    keep_map_in_sight();
    map_moved();
}

void TerrainView::zoom(double factor, const QPointF& fixed)
{
    stop_gliding();
    change_scale(factor, fixed);
}

void TerrainView::pan(const QPointF& by)
{
    stop_gliding();
    move_by(by);
}

void TerrainView::fit()
{
    glide([this] { show_whole(); });
}

void TerrainView::zoom_in()
{
    glide([this] { change_scale(s_zoom_step, QRectF(rect()).center()); });
}

void TerrainView::zoom_out()
{
    glide([this] { change_scale(1 / s_zoom_step, QRectF(rect()).center()); });
}

void TerrainView::pan_left()
{
    glide([this] { move_by({width() * s_pan_part, 0}); });
}

void TerrainView::pan_right()
{
    glide([this] { move_by({-width() * s_pan_part, 0}); });
}

void TerrainView::pan_up()
{
    glide([this] { move_by({0, height() * s_pan_part}); });
}

void TerrainView::pan_down()
{
    glide([this] { move_by({0, -height() * s_pan_part}); });
}

void TerrainView::map_moved()
{
    update();
    if (m_pointer) {
        emit reading_changed(reading_text(*m_pointer));
    }
}

// --- gliding

template <class Change>
void TerrainView::glide(Change change)
{
    const Camera left = drawn_camera();
    m_glide.stop();
    change();
    const bool moved = left.scale != m_camera.scale || left.centre != m_camera.centre;
    if (moved && isVisible() && preferences().animateCameraJumps()) {
        m_left = left;
        m_glide.start();
    }
}

bool TerrainView::is_gliding() const
{
    return m_glide.state() == QAbstractAnimation::Running;
}

Camera TerrainView::drawn_camera() const
{
    return is_gliding() ? between(m_left, m_camera, m_glide.currentValue().toDouble()) : m_camera;
}

/// Leaves the map where it is drawn.
void TerrainView::stop_gliding()
{
    if (!is_gliding()) {
        return;
    }
    const Camera drawn = drawn_camera();
    m_glide.stop();
    m_fits = false;
    m_camera.centre = drawn.centre;
    set_scale(drawn.scale);
    map_moved();
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

QColor TerrainView::background() const
{
    const QColor colour = preferences().viewBackgroundColour();
    return colour.isValid() ? colour : palette().color(QPalette::Base); // before the preferences were read
}

/// Far in, the cells are to be seen as they are; far out, a smooth picture hides fewer of them, but is
/// slower.
bool TerrainView::is_smooth(const Camera& camera) const
{
    const double ratio = devicePixelRatioF();
    const bool is_reduced = camera.scale * m_shade.cells_per_pixel() * ratio < 1;
    return camera.scale / ratio < s_pixels_of_visible_cells && (!is_reduced || preferences().hqDownsample());
}

void TerrainView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), background());
    const Camera camera = drawn_camera();
    const QImage& picture = m_shade.picture();
    const double step = m_shade.cells_per_pixel();
    const QRectF target(widget_position(QPointF(0, 0), camera),
        widget_position(QPointF(picture.width() * step, picture.height() * step), camera));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, is_smooth(camera));
    painter.drawImage(target, picture, picture.rect());
    if (m_shade.has_heights()) {
        draw_legend(painter, rect(), m_shade.lowest(), m_shade.highest(), m_unit);
    }
    draw_scale_bar(painter, rect(), m_footprint.in_metres ? m_footprint.cell_height / camera.scale : 0);
}

void TerrainView::resizeEvent(QResizeEvent*)
{
    if (m_fits) {
        m_glide.stop();
        show_whole();
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
    if (m_drag || !moves_map(preferences().mouseMode(), p_event->button(), p_event->modifiers())) {
        QWidget::mousePressEvent(p_event);
        return;
    }
    stop_gliding();
    m_drag = p_event->localPos();
    m_drag_button = p_event->button();
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
    if (m_drag && p_event->button() == m_drag_button) {
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
