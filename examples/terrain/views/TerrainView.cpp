#include "views/TerrainView.h"

#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "language/UnitText.h"
#include "preferences/PreferencesChanged.h"
#include "views/MapFurniture.h"
#include "views/MapTool.h"

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

const housekeeping::ApplicationManager& preferences()
{
    return housekeeping::ApplicationManager::const_instance();
}

Sampling sampling()
{
    return preferences().hqDownsample() ? Sampling::Mean : Sampling::Nearest;
}

} // namespace

TerrainView::TerrainView(const housekeeping::DocumentId& document, QWidget* p_parent)
    : QWidget(p_parent)
    , m_document(document)
    , m_watch(
          document, [this](const CellChanges& changes) { refresh(changes); },
          [this](const QString& problem) {
              m_problem = problem;
              map_moved();
          })
    , m_footprint(TerrainModel::of(document).raster())
    , m_picture(TerrainModel::of(document).raster(), m_footprint, sampling(), m_layers)
    , m_glide([this] { update(); })
    , m_hq_downsample(preferences().hqDownsample())
{
    const TerrainDocument& shown = *terrain_document();
    take_place(shown.terrain().raster());
    show_mesh(shown.terrain());
    m_unit = height_unit_text(shown.datasource());
    setLayoutDirection(Qt::LeftToRight); // in every language: west is left
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 90);
    show_cursor();
    setAccessibleName(tr("Map"));
    housekeeping::ApplicationMessage::subscribe(this, Qt::AutoConnection);
    show_whole();
}

void TerrainView::refresh()
{
    const TerrainDocument* const p_document = terrain_document();
    if (!p_document) {
        return;
    }
    const Raster& raster = p_document->terrain().raster();
    m_picture.refresh(raster, Footprint(raster), sampling());
    m_hq_downsample = preferences().hqDownsample();
    m_problem.clear();
    follow_raster(raster);
    show_mesh(p_document->terrain());
    map_moved();
}

void TerrainView::refresh(const CellChanges& changes)
{
    const TerrainDocument* const p_document = terrain_document();
    if (changes.reshaped || !m_problem.isEmpty()) {
        refresh(); // the last change may not have been drawn, or only in parts
        return;
    }
    if (p_document && !changes.cells.isEmpty()) {
        m_picture.refresh(p_document->terrain().raster(), changes.cells);
        map_moved();
    }
    if (p_document && changes.mesh) {
        show_mesh(p_document->terrain());
        update();
    }
}

void TerrainView::show_mesh(const TerrainModel& terrain)
{
    const QSize size(terrain.raster().columns, terrain.raster().rows);
    m_picture.show(terrain.mesh(), map_of_cells(size, m_footprint));
}

void TerrainView::set_layers(const MapLayers& layers)
{
    if (layers == m_layers) {
        return;
    }
    m_picture.show(layers);
    m_layers = layers;
    update();
    emit layers_changed(m_layers);
}

void TerrainView::show_profile_line(const std::optional<ProfileLine>& line)
{
    if (!(line == m_profile_line)) {
        m_profile_line = line;
        update();
    }
}

void TerrainView::set_tool(MapTool* p_tool)
{
    if (m_p_tool) {
        m_p_tool->leave(*this);
    }
    m_p_tool = p_tool;
    if (p_tool) {
        p_tool->enter(*this);
    }
    show_cursor();
    update();
}

MapTool* TerrainView::tool() const
{
    return m_p_tool;
}

void TerrainView::show_cursor()
{
    const QCursor hand = m_drag.is_under_way() ? Qt::ClosedHandCursor : Qt::OpenHandCursor;
    setCursor(m_p_tool && !m_drag.is_under_way() ? m_p_tool->cursor() : hand);
}

std::optional<int> TerrainView::place_on_profile(const QPointF& point) const
{
    return m_profile_line
        ? place_on_line(*m_profile_line, {m_cells.toSize(), m_footprint, to_widget(m_camera)}, point)
        : std::nullopt;
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
    const bool is_sampled = m_picture.shade().cells_per_pixel() > 1;
    // After a command the map is refreshed anyway.
    if (is_sampled && readable_raster() && m_hq_downsample != preferences().hqDownsample()) {
        refresh();
    }
    update();
}

// --- where the map is

/// Takes over how a raster lies on the ground.
void TerrainView::take_place(const Raster& raster)
{
    m_footprint = Footprint(raster);
    m_ground = ground_of_map(raster, m_footprint);
    m_cells = QSizeF(std::max(raster.columns, 1), std::max(raster.rows, 1)); // an empty one has a map too
}

/// Takes over how a changed raster lies on the ground, and looks at the same place as before.
void TerrainView::follow_raster(const Raster& raster)
{
    const QSizeF cells = m_cells;
    const auto ground = m_ground;
    const double cell_height = m_footprint.cell_height;
    take_place(raster);
    if (m_cells == cells && m_ground == ground) {
        return;
    }
    m_glide.stop();
    if (m_fits || !ground || !m_ground) {
        show_whole();
        return;
    }
    m_camera.centre = m_ground->inverted().map(ground->map(m_camera.centre));
    set_scale(m_camera.scale * m_footprint.cell_height / cell_height);
    keep_map_in_sight();
}

/// From columns and rows of the map to pixels.
QTransform TerrainView::to_widget(const Camera& camera) const
{
    const double across = camera.scale * m_footprint.cell_width / m_footprint.cell_height;
    return QTransform(across, 0, 0, camera.scale, width() / 2.0 - camera.centre.x() * across,
        height() / 2.0 - camera.centre.y() * camera.scale);
}

QPointF TerrainView::map_position(const QPointF& point) const
{
    return to_widget(m_camera).inverted().map(point);
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
    const QTransform pixels = to_widget(m_camera);
    m_fits = false;
    m_camera.centre -= QPointF(by.x() / pixels.m11(), by.y() / pixels.m22());
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

void TerrainView::look(double across, double down)
{
    glide([=] { move_by({-across * s_pan_part * width(), -down * s_pan_part * height()}); });
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
    const Camera left = m_glide.now(m_camera);
    m_glide.stop();
    change();
    const bool moved = left.scale != m_camera.scale || left.centre != m_camera.centre;
    if (moved && isVisible() && preferences().animateCameraJumps()) {
        m_glide.start_from(left);
    }
}

/// Leaves the map where it is drawn.
void TerrainView::stop_gliding()
{
    if (!is_gliding()) {
        return;
    }
    const Camera drawn = m_glide.now(m_camera);
    m_glide.stop();
    m_fits = false;
    m_camera.centre = drawn.centre;
    set_scale(drawn.scale);
    map_moved();
}

// --- what lies under the pointer

std::optional<Reading> TerrainView::reading(const QPointF& point) const
{
    const Raster* const p_raster = readable_raster();
    return p_raster ? reading_at(map_position(point), *p_raster, m_footprint) : std::optional<Reading>();
}

QString TerrainView::reading_text(const QPointF& point) const
{
    const auto found = reading(point);
    return found
        ? terrain::reading_text(*found, terrain_document()->terrain().raster(), m_unit, m_footprint.angular)
        : QString();
}

// --- events

QColor TerrainView::background() const
{
    const QColor colour = preferences().viewBackgroundColour();
    return colour.isValid() ? colour : palette().color(QPalette::Base); // before the preferences were read
}

/// The raster, unless the document has gone, a command may change the cells in another thread, or the picture
/// is none of these cells.
const Raster* TerrainView::readable_raster() const
{
    const TerrainDocument* const p_document = terrain_document();
    return p_document && m_problem.isEmpty()
            && !housekeeping::DocumentManager::const_instance().document_busy(m_document)
        ? &p_document->terrain().raster()
        : nullptr;
}

void TerrainView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), background());
    const Camera camera = m_glide.now(m_camera);
    const QTransform map = to_widget(camera);
    // While it glides, it must not wait for details.
    const Raster* const p_raster = is_gliding() ? nullptr : readable_raster();
    if (!m_picture.draw(painter, map, rect(), p_raster, preferences().hqDownsample())) {
        update();
    }
    if (m_profile_line) {
        draw_profile_line(painter, *m_profile_line, {m_cells.toSize(), m_footprint, map}, rect());
    }
    if (m_p_tool) {
        m_p_tool->draw(painter, widget_of_cells());
    }
    const double metres_per_pixel = m_footprint.in_metres ? m_footprint.cell_height / camera.scale : 0;
    m_picture.draw_furniture(painter, rect(), palette(), m_unit, metres_per_pixel);
    draw_note(painter, rect(), palette(), m_problem);
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
    if (!m_drag.begin(*p_event, m_p_tool != nullptr)) {
        QWidget::mousePressEvent(p_event);
        return;
    }
    stop_gliding();
    show_cursor();
}

void TerrainView::mouseMoveEvent(QMouseEvent* p_event)
{
    m_pointer = p_event->localPos();
    if (m_drag.is_under_way()) {
        pan(m_drag.move(*p_event));
    } else {
        emit reading_changed(reading_text(*m_pointer));
    }
}

void TerrainView::mouseReleaseEvent(QMouseEvent* p_event)
{
    m_drag.end(*p_event);
    show_cursor();
}

void TerrainView::leaveEvent(QEvent*)
{
    m_pointer.reset();
    emit reading_changed(QString());
}

} // namespace terrain
