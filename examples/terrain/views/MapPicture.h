#pragma once

#include "views/ContourLayer.h"
#include "views/HillShade.h"
#include "views/MapLayers.h"
#include "views/MapLegend.h"
#include "views/MapTiles.h"
#include "views/MeshLayer.h"

#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtGui/QTransform>

class QPainter;
class QPalette;

namespace terrain {

/**
 * What a map shows of a raster's cells: the relief, as a whole and, of large rasters, in detail where one
 * looks closely, and the contour lines. All but the whole is made when it is drawn. Main thread.
 */
class MapPicture
{
public:
    /// @throws housekeeping::HousekeepingException if GDAL cannot shade
    MapPicture(const Raster& raster, const Footprint& footprint, Sampling sampling, const MapLayers& layers);

    /// Shows the cells as they are now. @throws housekeeping::HousekeepingException if GDAL cannot shade; it
    /// stays as it is then
    void refresh(const Raster& raster, const Footprint& footprint, Sampling sampling);
    /// The same if only some cells have other heights; makes nothing anew that looks as before.
    /// @param cells columns and rows, as the raster stores them
    void refresh(const Raster& raster, const QRect& cells);
    /// Shows other layers; makes nothing anew that looks as before.
    /// @throws housekeeping::HousekeepingException if GDAL cannot shade
    void show(const MapLayers& layers);
    /// Shows another triangulation. @param sp_mesh null for none @param to_map from the raster's columns and
    /// rows to those of the map
    void show(const boost::shared_ptr<const Mesh>& sp_mesh, const QTransform& to_map);

    /**
     * Draws the map.
     * @param to_widget from columns and rows of cells to the painter's coordinates, without a rotation
     * @param visible in the painter's coordinates @param p_raster the raster as it was when the picture was
     * made; null if nobody may look at it now @param blurs whether pixels are blurred, which is slower, when
     * there are more of them than can be drawn
     * @return whether it is all there; if not, there is more to see the next time
     */
    bool draw(QPainter& painter, const QTransform& to_widget, const QRectF& visible, const Raster* p_raster,
        bool blurs);

    /// Draws what stands beside the terrain, as the layers say: legend, scale bar, why there are no lines or
    /// edges.
    /// @param metres_per_pixel how large the map is drawn; 0 if unknown
    void draw_furniture(QPainter& painter, const QRectF& area, const QPalette& palette, const QString& unit,
        double metres_per_pixel) const;

    /// What the map's legend tells. @param unit of the heights
    MapLegend legend(const QString& unit) const;

    const HillShade& shade() const { return m_shade; }
    const ContourLayer& contours() const { return m_contours; }
    const MapTiles& tiles() const { return m_tiles; }
    const MeshLayer& triangulation() const { return m_triangulation; }

private:
    QString problems() const;
    int cells_per_pixel(double pixels_per_cell) const;
    bool draw_relief(QPainter& painter, const QTransform& to_widget, const QRectF& visible, int step,
        const Raster* p_raster);

    MapLayers m_layers;
    HillShade m_shade;
    ContourLayer m_contours;
    MapTiles m_tiles;
    MeshLayer m_triangulation;
};

} // namespace terrain
