#pragma once

#include "commands/BrushCommand.h"
#include "views/MapTool.h"

namespace terrain {

/**
 * Draws the strokes of a brush: a stroke lasts as long as the left button is held, and is told when it is let
 * go. A circle shows what the brush reaches, a band what the stroke has. Escape gives a stroke up; [ and ],
 * and the wheel with Ctrl, make the brush smaller and larger, between strokes.
 *
 * It draws nothing itself but tells what was drawn. Main thread.
 */
class BrushTool : public MapTool
{
    Q_OBJECT

public:
    using MapTool::MapTool;

    const Brush& brush() const { return m_brush; }
    /// Gives up the stroke under way, if the brush is another one.
    void set_brush(const Brush& brush);

    void draw(QPainter& painter, const QTransform& widget_of_cells) const override;
    bool is_under_way() const override { return !m_path.empty(); }

signals:
    /// A stroke was drawn on the tool's map. @param path of the positions; one for a dab
    void drawn(const terrain::BrushCommand::Path& path);
    /// The user wants another radius.
    void radius_chosen(double radius);

protected:
    void press(const QPointF& at) override;
    void release(const QPointF& at) override;
    void double_click(const QPointF& at) override { press(at); }
    void move(const QPointF& to) override;
    void button_is_up() override;
    bool key(const QKeyEvent& event) override;
    bool wheel(const QWheelEvent& event) override;
    void forget() override { m_path.clear(); }

private:
    void choose_radius(double factor);

    Brush m_brush;
    BrushCommand::Path m_path; // of the stroke under way
};

} // namespace terrain
