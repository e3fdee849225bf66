#include "views/MapTiles.h"

#include "views/HillShade.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <memory>

namespace terrain {

namespace {

/// What the whole picture shows there.
void draw_whole(QPainter& painter, const QRect& target, const QPoint& place, int step, const HillShade& whole)
{
    const double pixels = static_cast<double>(step) / whole.cells_per_pixel();
    painter.drawImage(
        QRectF(target), whole.picture(), QRectF(QPointF(place) * pixels, QSizeF(target.size()) * pixels));
}

} // namespace

void MapTiles::forget(const QRect& cells)
{
    for (const Key& key : m_tiles.keys()) {
        const QRect shown(
            key.column * side * key.step, key.row * side * key.step, side * key.step, side * key.step);
        if (shown.adjusted(-key.step, -key.step, key.step, key.step).intersects(cells)) {
            m_tiles.remove(key);
        }
    }
}

MapTiles::Part MapTiles::part(const QRect& pixels, int step, const Source& source)
{
    // Were fewer kept than are seen at once, the first would have gone when the last is made, for ever.
    const int columns = pixels.right() / side - pixels.left() / side + 1;
    const int rows = pixels.bottom() / side - pixels.top() / side + 1;
    m_tiles.setMaxCost(std::max(most_kept, columns * rows));

    Part part{QImage(pixels.size(), QImage::Format_ARGB32_Premultiplied), true};
    part.picture.fill(Qt::transparent);
    QPainter painter(&part.picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    int made = 0;
    for (int row = pixels.top() / side; row <= pixels.bottom() / side; ++row) {
        for (int column = pixels.left() / side; column <= pixels.right() / side; ++column) {
            const QPoint corner(column * side, row * side);
            const QImage* const p_tile = tile({step, column, row}, source, made);
            if (p_tile) {
                painter.drawImage(corner - pixels.topLeft(), *p_tile);
            } else {
                const QRect missing = QRect(corner, QSize(side, side)) & pixels;
                draw_whole(
                    painter, missing.translated(-pixels.topLeft()), missing.topLeft(), step, source.whole);
                part.has_all_tiles = false;
            }
        }
    }
    return part;
}

const QImage* MapTiles::tile(const Key& key, const Source& source, int& made)
{
    const QImage* const p_kept = m_tiles.object(key);
    if (p_kept || !source.p_raster || made >= source.most_made) {
        return p_kept;
    }
    ++made;
    const QRect square(key.column * side, key.row * side, side, side);
    auto tile = std::make_unique<QImage>(source.whole.detail(*source.p_raster, key.step, square));
    const QImage* const p_made = tile.get();
    m_tiles.insert(key, tile.release());
    return p_made;
}

} // namespace terrain
