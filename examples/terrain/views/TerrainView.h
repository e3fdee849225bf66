#pragma once

#include "views/Camera.h"
#include "views/Footprint.h"
#include "views/Glide.h"
#include "views/MapLayers.h"
#include "views/MapMouse.h"
#include "views/MapPicture.h"
#include "views/ProfileLine.h"
#include "views/Reading.h"
#include "views/TerrainWatch.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtGui/QTransform>
#include <QtWidgets/QWidget>

#include <optional>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class MapTool;
class TerrainDocument;
class TerrainModel;

/**
 * A map of one document's raster, with contour lines, a scale bar and a legend, as its layers say. The wheel
 * zooms at the pointer, dragging moves the map: with the left button, and with those that the user's mouse
 * mode moves views with.
 *
 * The slots are for keys and menus: if the user prefers it, they let the map glide to where they lead, for a
 * moment. Everything that is asked about the map is answered for its new place from the beginning; whoever
 * takes hold of the map meanwhile with the mouse, zoom() or pan() has it stop where it is.
 *
 * It draws a picture that was made from the cells, and follows their changes as the terrain controller tells
 * them, which must exist; refresh() is for changes that it does not hear of. If a change cannot be drawn, the
 * picture of before stays, with a note why, until the next change can. It may outlive its document, and
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
    /// @throws housekeeping::HousekeepingException if it cannot be drawn
    void refresh();

    /// The same if only this has changed: what looks as before is not made anew.
    void refresh(const CellChanges& changes);

    const MapLayers& layers() const { return m_layers; }
    /// Draws the map with other layers. @throws housekeeping::HousekeepingException if it cannot be drawn;
    /// it stays as it is then
    void set_layers(const MapLayers& layers);
    /// What the map shows of the cells.
    const MapPicture& picture() const { return m_picture; }
    /// Why it shows older cells than the document's; empty if it does not.
    const QString& problem() const { return m_problem; }

    /// Shows where a profile runs; nothing to show none.
    void show_profile_line(const std::optional<ProfileLine>& line);
    const std::optional<ProfileLine>& profile_line() const { return m_profile_line; }
    /// The place on that line, as ProfileLine::pointed, that is beside a point of the widget; nothing if no
    /// line is near.
    std::optional<int> place_on_profile(const QPointF& point) const;

    /// Lets a tool have what the user does with mouse and keys on the map, before the map itself, which is
    /// moved with the right and the middle button then; null for none. Not owned.
    void set_tool(MapTool* p_tool);
    MapTool* tool() const;

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
    QPointF widget_position(const QPointF& on_map) const { return to_widget(m_camera).map(on_map); }
    /// From columns and rows of cells, as the raster stores them, to the widget, as the map is drawn now.
    QTransform widget_of_cells() const
    {
        return map_of_cells(m_cells.toSize(), m_footprint) * to_widget(m_glide.now(m_camera));
    }
    /// The cell under a point of the widget; nothing outside of the raster, and nothing while a command may
    /// change the cells in another thread.
    std::optional<Reading> reading(const QPointF& point) const;
    /// The same for people, in the document's units: height, cell and coordinates. "" outside.
    QString reading_text(const QPointF& point) const;

    /// Whether the map is still on its way.
    bool is_gliding() const { return m_glide.is_running(); }

    QSize sizeHint() const override { return {900, 680}; }

public slots:
    /// Shows the whole raster, and goes on doing so when the widget changes its size.
    void fit();
    void zoom_in();
    void zoom_out();
    void pan_left() { look(-1, 0); }
    void pan_right() { look(1, 0); }
    void pan_up() { look(0, -1); }
    void pan_down() { look(0, 1); }

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
    void show_mesh(const TerrainModel& terrain);
    void take_place(const Raster& raster);
    void follow_raster(const Raster& raster);
    QColor background() const;

    QTransform to_widget(const Camera& camera) const;
    double fitting_scale() const;
    void set_scale(double scale);
    void show_whole();
    void change_scale(double factor, const QPointF& fixed);
    void move_by(const QPointF& pixels);
    void look(double across, double down);
    void keep_map_in_sight();
    void map_moved();

    /// Does @p change, which moves the camera, and lets the map glide there.
    template <class Change>
    void glide(Change change);
    void stop_gliding();

    const Raster* readable_raster() const;
    void show_cursor();

    housekeeping::DocumentId m_document;
    TerrainWatch m_watch;
    MapLayers m_layers;
    Footprint m_footprint;
    MapPicture m_picture;
    QSizeF m_cells; // columns and rows
    std::optional<QTransform> m_ground; // of the map, if it is known
    QString m_unit;
    QString m_problem;
    std::optional<ProfileLine> m_profile_line;
    QPointer<MapTool> m_p_tool; // not owned

    Camera m_camera; // where the map is, or glides to
    Glide m_glide;
    bool m_fits = true; // until the user zooms or moves
    bool m_hq_downsample = true; // as the picture was made
    MapDrag m_drag;
    std::optional<QPointF> m_pointer; // while it is over the map
};

} // namespace terrain
