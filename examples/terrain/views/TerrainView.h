#pragma once

#include "views/Camera.h"
#include "views/Footprint.h"
#include "views/MapLayers.h"
#include "views/MapPicture.h"
#include "views/Reading.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QPointF>
#include <QtCore/QVariantAnimation>
#include <QtGui/QTransform>
#include <QtWidgets/QWidget>

#include <optional>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainDocument;

/**
 * A map of one document's raster, with contour lines, a scale bar and a legend, as its layers say. The wheel
 * zooms at the pointer, dragging moves the map: with the left button, and with those that the user's mouse
 * mode moves views with.
 *
 * The slots are for keys and menus: if the user prefers it, they let the map glide to where they lead, for a
 * moment. Everything that is asked about the map is answered for its new place from the beginning; whoever
 * takes hold of the map meanwhile with the mouse, zoom() or pan() has it stop where it is.
 *
 * It draws a picture that was made from the cells; refresh() makes it anew. It may outlive its document, and
 * then shows the last picture, whose layers can still be changed. Main thread.
 */
class TerrainView : public QWidget
{
    Q_OBJECT

public:
    static constexpr Qt::MouseButton drag_button = Qt::LeftButton;

    /// Shows the whole raster. @throws housekeeping::HousekeepingException if there is no such document, or
    /// it cannot be drawn
    explicit TerrainView(const housekeeping::DocumentId& document, QWidget* p_parent = nullptr);

    const housekeeping::DocumentId& document() const { return m_document; }

    /// Draws the document's cells as they are now. The map stays where it is on the ground, also if the
    /// raster has another extent or resolution than before. Not while a command runs.
    void refresh();

    const MapLayers& layers() const { return m_layers; }
    /// Draws the map with other layers. @throws housekeeping::HousekeepingException if it cannot be drawn;
    /// it stays as it is then
    void set_layers(const MapLayers& layers);
    /// What the map shows of the cells.
    const MapPicture& picture() const { return m_picture; }

    /// How large the map is drawn, in pixels for the height of a cell.
    double scale() const { return m_camera.scale; }
    /// Zooms so that what lies under @p fixed stays there. @param factor above 1 to see less
    void zoom(double factor, const QPointF& fixed);
    /// Moves the map by a number of pixels.
    void pan(const QPointF& by);

    /// Where a point of the widget lies on the map: columns and rows of cells from the upper left corner of
    /// the map.
    QPointF map_position(const QPointF& point) const;
    /// The inverse of map_position().
    QPointF widget_position(const QPointF& map_position) const;
    /// The cell under a point of the widget; nothing outside of the raster, and nothing while a command may
    /// change the cells in another thread.
    std::optional<Reading> reading(const QPointF& point) const;
    /// The same for people, in the document's units: height, cell and coordinates. "" outside.
    QString reading_text(const QPointF& point) const;

    /// Whether the map is still on its way.
    bool is_gliding() const;

    QSize sizeHint() const override;

public slots:
    /// Shows the whole raster, and goes on doing so when the widget changes its size.
    void fit();
    void zoom_in();
    void zoom_out();
    void pan_left();
    void pan_right();
    void pan_up();
    void pan_down();

signals:
    /// The pointer is over another place, or has left. @param text as reading_text()
    void reading_changed(const QString& text);
    /// The map is drawn larger or smaller. @param scale as scale()
    void scale_changed(double scale);
    /// The map is drawn with other layers than before.
    void layers_changed(const terrain::MapLayers& layers);

private slots:
    /// Draws the map as the user prefers it now.
    void handle_message(housekeeping::ApplicationMessage& message);

protected:
    void paintEvent(QPaintEvent* p_event) override;
    void resizeEvent(QResizeEvent* p_event) override;
    void wheelEvent(QWheelEvent* p_event) override;
    void mousePressEvent(QMouseEvent* p_event) override;
    void mouseMoveEvent(QMouseEvent* p_event) override;
    void mouseReleaseEvent(QMouseEvent* p_event) override;
    void leaveEvent(QEvent* p_event) override;

private:
    const TerrainDocument* terrain_document() const;
    void take_place(const Raster& raster);
    void follow_raster(const Raster& raster);
    QColor background() const;

    QPointF pixels_per_cell(const Camera& camera) const;
    QPointF map_position(const QPointF& point, const Camera& camera) const;
    QPointF widget_position(const QPointF& map_position, const Camera& camera) const;
    double fitting_scale() const;
    void set_scale(double scale);
    void show_whole();
    void change_scale(double factor, const QPointF& fixed);
    void move_by(const QPointF& pixels);
    void keep_map_in_sight();
    void map_moved();

    /// Does @p change, which moves the camera, and lets the map glide there.
    template <class Change>
    void glide(Change change);
    Camera drawn_camera() const;
    void stop_gliding();

    const Raster* readable_raster() const;
    void draw_furniture(QPainter& painter, const Camera& camera) const;

    housekeeping::DocumentId m_document;
    MapLayers m_layers;
    Footprint m_footprint;
    MapPicture m_picture;
    QSizeF m_cells; // columns and rows
    std::optional<QTransform> m_ground; // of the map, if it is known
    QString m_unit;

    Camera m_camera; // where the map is, or glides to
    Camera m_left; // where it came from, while it glides
    QVariantAnimation m_glide; // from 0 to 1, the part of the way
    bool m_fits = true; // until the user zooms or moves
    bool m_hq_downsample = true; // as the picture was made
    std::optional<QPointF> m_drag; // where the pointer was last, while it drags
    Qt::MouseButton m_drag_button = Qt::NoButton; // that began it
    std::optional<QPointF> m_pointer; // while it is over the map
};

} // namespace terrain
