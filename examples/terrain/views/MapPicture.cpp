#include "views/MapPicture.h"

#include "views/MapFurniture.h"

#include <QtCore/QStringList>
#include <QtGui/QPainter>

#include <algorithm>

namespace terrain {

namespace {

const int s_most_made_at_once = 12; ///< tiles; more would be felt
const double s_pixels_of_visible_cells = 3; ///< cells that are drawn larger than this have edges

HillShade::Look look_of(const MapLayers& layers)
{
    return {layers.colours, layers.relief};
}

/// Far in, the cells are to be seen as they are; far out, a smooth picture hides fewer of them, but is
/// slower.
bool is_smooth(double pixels_per_cell, int cells_per_pixel, bool blurs)
{
    return pixels_per_cell < s_pixels_of_visible_cells && (pixels_per_cell * cells_per_pixel >= 1 || blurs);
}

/// The whole pixels that cover an area, with one more around it for smooth edges.
QRect pixels_in(const QRectF& cells, int step, const QSize& size)
{
    const QRectF pixels(cells.topLeft() / step, cells.size() / step);
    return pixels.toAlignedRect().adjusted(-1, -1, 1, 1) & QRect(QPoint(0, 0), size);
}

} // namespace

MapPicture::MapPicture(
    const Raster& raster, const Footprint& footprint, Sampling sampling, const MapLayers& layers)
    : m_layers(layers)
    , m_shade(raster, footprint, sampling, look_of(layers))
{ }

void MapPicture::refresh(const Raster& raster, const Footprint& footprint, Sampling sampling)
{
    m_shade = HillShade(raster, footprint, sampling, look_of(m_layers));
    m_contours.clear();
    m_tiles.clear();
}

void MapPicture::refresh(const Raster& raster, const QRect& cells)
{
    if (m_shade.refresh(raster, cells)) {
        m_tiles.forget(m_shade.on_map(cells));
    } else {
        m_tiles.clear();
    }
    m_contours.clear();
}

void MapPicture::show(const MapLayers& layers)
{
    if (layers.colours != m_layers.colours || layers.relief != m_layers.relief) {
        m_shade.show(look_of(layers));
        m_tiles.clear();
    }
    m_layers = layers;
}

void MapPicture::show(const boost::shared_ptr<const Mesh>& sp_mesh, const QTransform& to_map)
{
    m_triangulation.show(sp_mesh, to_map);
}

void MapPicture::draw_furniture(QPainter& painter, const QRectF& area, const QPalette& palette,
    const QString& unit, double metres_per_pixel) const
{
    if (m_layers.legend && m_shade.has_heights()) {
        draw_legend(painter, area, palette, legend(unit));
    }
    if (m_layers.scale_bar) {
        draw_scale_bar(painter, area, palette, metres_per_pixel);
    }
    draw_note(painter, area, palette, problems());
}

/// Why layers that were asked for are not there, a line for each.
QString MapPicture::problems() const
{
    QStringList problems;
    if (m_layers.contours) {
        problems.append(m_contours.problem());
    }
    if (m_layers.triangulation) {
        problems.append(m_triangulation.problem());
    }
    problems.removeAll(QString());
    return problems.join('\n');
}

MapLegend MapPicture::legend(const QString& unit) const
{
    MapLegend legend{m_shade.lowest(), m_shade.highest(), unit, m_layers.colours, 0};
    if (m_layers.contours && m_contours.problem().isEmpty()) {
        legend.contour_interval = m_contours.interval();
    }
    return legend;
}

/// How many cells a pixel of what is drawn stands for: as many as are not seen anyway. @param pixels_per_cell
/// of the device
int MapPicture::cells_per_pixel(double pixels_per_cell) const
{
    int step = 1;
    while (step * 2 * pixels_per_cell <= 1 && step < m_shade.cells_per_pixel()) {
        step *= 2;
    }
    return std::min(step, m_shade.cells_per_pixel());
}

bool MapPicture::draw(
    QPainter& painter, const QTransform& to_widget, const QRectF& visible, const Raster* p_raster, bool blurs)
{
    const double pixels = std::max(to_widget.m11(), to_widget.m22()) * painter.device()->devicePixelRatioF();
    const int step = cells_per_pixel(pixels);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, is_smooth(pixels, step, blurs));
    const bool is_complete = draw_relief(painter, to_widget, visible, step, p_raster);
    if (m_layers.triangulation) {
        m_triangulation.draw(painter, to_widget, visible);
    }
    if (m_layers.contours) {
        m_contours.make(m_shade, m_layers.contour_interval);
        m_contours.draw(painter, to_widget, visible);
    }
    return is_complete;
}

bool MapPicture::draw_relief(
    QPainter& painter, const QTransform& to_widget, const QRectF& visible, int step, const Raster* p_raster)
{
    const auto draw_image = [&](const QImage& picture, const QPoint& place, int cells) {
        painter.drawImage(
            to_widget.mapRect(QRectF(place * cells, picture.size() * cells)), picture, picture.rect());
    };
    if (step == m_shade.cells_per_pixel()) {
        draw_image(m_shade.picture(), QPoint(0, 0), step);
        return true;
    }
    const QRect pixels = pixels_in(to_widget.inverted().mapRect(visible), step, m_shade.size_in_detail(step));
    if (pixels.isEmpty()) {
        return true;
    }
    try {
        const MapTiles::Part part = m_tiles.part(pixels, step, {m_shade, p_raster, s_most_made_at_once});
        draw_image(part.picture, pixels.topLeft(), step);
        return part.has_all_tiles || !p_raster;
    } catch (...) { // the map is being painted, which cannot fail, and there is always the whole
        draw_image(m_shade.picture(), QPoint(0, 0), m_shade.cells_per_pixel());
        return true;
    }
}

} // namespace terrain
