#pragma once

#include "views/Footprint.h"
#include "views/HillShade.h"

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QPointF>
#include <QtWidgets/QWidget>

#include <optional>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainDocument;

/// What a map says about the place under the pointer.
struct Reading
{
    int column; ///< of the cell, counted from 0
    int row;
    double height; ///< no_data if the cell holds none
};

/**
 * A map of one document's raster, with a scale bar and a legend. The wheel zooms at the pointer, dragging
 * moves the map.
 *
 * It draws a picture that was made from the cells; refresh() makes it anew. It may outlive its document, and
 * then shows the last picture. Main thread.
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

    /// Draws the document's cells as they are now; the map stays where it is. Not while a command runs.
    void refresh();

    /// How large the map is drawn, in pixels for the height of a cell.
    double scale() const { return m_scale; }
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
    QPointF pixels_per_cell() const;
    double fitting_scale() const;
    void set_scale(double scale);
    void keep_map_in_sight();
    void map_moved();

    housekeeping::DocumentId m_document;
    Footprint m_footprint;
    HillShade m_shade;
    QSizeF m_cells; // columns and rows
    QString m_unit;

    double m_scale = 1;
    QPointF m_centre; // of the widget, as map_position()
    bool m_fits = true; // until the user zooms or moves
    std::optional<QPointF> m_drag; // where the pointer was last, while it drags
    std::optional<QPointF> m_pointer; // while it is over the map
};

} // namespace terrain
