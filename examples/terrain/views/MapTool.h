#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtGui/QCursor>

#include <functional>
#include <optional>

class QKeyEvent;
class QMouseEvent;
class QPainter;
class QPainterPath;
class QTransform;
class QWheelEvent;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainView;

/**
 * Something to draw with on a map: a tool has the left mouse button, and keys, before the map itself, and
 * draws on it what is under way. It is on one map at a time, which TerrainView::set_tool() puts it on;
 * without a tool the map is moved.
 *
 * Positions are columns and rows of cells as the raster stores them. Belongs to the one who made it; main
 * thread.
 */
class MapTool : public QObject
{
    Q_OBJECT

public:
    /// Says why a document must not be drawn on now, for the user; empty if it may.
    typedef std::function<QString(const housekeeping::DocumentId& document)> Objection;

    explicit MapTool(const Objection& objection, QObject* p_parent = nullptr);
    ~MapTool() override;

    // For TerrainView::set_tool().
    void enter(TerrainView& view);
    /// Gives up what is under way.
    void leave(TerrainView& view);

    /// The map that the tool is on; null if it is on none.
    TerrainView* view() const;
    virtual QCursor cursor() const { return Qt::CrossCursor; }
    /// Draws what is under way. @param widget_of_cells from positions to the painter's coordinates
    virtual void draw(QPainter& painter, const QTransform& widget_of_cells) const = 0;
    /// Whether the user has begun something.
    virtual bool is_under_way() const = 0;

    /// Gives up what is under way, and tells @p why. Nothing if there is nothing.
    void abandon(const QString& why);

signals:
    /// Something that the user should know.
    void said(const QString& text);

protected:
    /// Hands over to the functions below what the map would get.
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

    // The left button. What a tool does not want is to have no effect, so the map gets none of it.
    virtual void press(const QPointF& at) = 0;
    virtual void release(const QPointF& at) = 0;
    virtual void double_click(const QPointF& at) = 0;
    /// The pointer has moved, with or without the button.
    virtual void move(const QPointF& to) = 0;
    /// The pointer moves without the button, whether or not the tool was told of the release: another window
    /// may have had it.
    virtual void button_is_up() { }
    // Whether the tool took it; the map gets it otherwise.
    virtual bool key(const QKeyEvent& event) = 0;
    virtual bool wheel(const QWheelEvent& event);
    /// Forgets what is under way.
    virtual void forget() = 0;

    /// Whether something may begin here and now; tells why not.
    bool may_begin();
    /// Draws the map again.
    void update() const;
    /// Where the pointer is, while it is over the map.
    const std::optional<QPointF>& pointer() const { return m_pointer; }

    /// Draws a line with light and dark beside each other, so that it is seen on every ground.
    static void draw_outline(QPainter& painter, const QPainterPath& outline);

private:
    QPointF position(const QPointF& on_widget) const;
    bool mouse(const QMouseEvent& event);
    void pointer_moved(const QMouseEvent& event);

    Objection m_objection;
    QPointer<TerrainView> m_p_view; // not owned
    std::optional<QPointF> m_pointer;
};

} // namespace terrain
