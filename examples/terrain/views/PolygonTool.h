#pragma once

#include "views/MapTool.h"

#include <vector>

namespace terrain {

/**
 * Draws polygons: each click adds a corner, a double click or Enter closes the polygon, Backspace takes the
 * last corner back, Escape gives up. The inside is shown by the even-odd rule. It draws nothing itself but
 * tells what was drawn. Main thread.
 */
class PolygonTool : public MapTool
{
    Q_OBJECT

public:
    using MapTool::MapTool;

    /// Of the polygon under way.
    const std::vector<QPointF>& corners() const { return m_corners; }
    /// Goes on with a polygon that was drawn: for the one who was told, if nothing came of it.
    void resume(const std::vector<QPointF>& corners);

    void draw(QPainter& painter, const QTransform& widget_of_cells) const override;
    bool is_under_way() const override { return !m_corners.empty(); }

signals:
    /// A polygon was drawn on the tool's map; it has an inside. The tool has none under way then.
    void drawn(const std::vector<QPointF>& corners);

protected:
    void press(const QPointF& at) override;
    void release(const QPointF&) override { }
    void double_click(const QPointF& at) override;
    void move(const QPointF&) override { }
    bool key(const QKeyEvent& event) override;
    void forget() override { m_corners.clear(); }

private:
    void close();

    std::vector<QPointF> m_corners;
};

} // namespace terrain
