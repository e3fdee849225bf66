#pragma once

#include <QtCore/QPointF>
#include <QtCore/Qt>

#include <optional>

class QMouseEvent;

namespace terrain {

/// Moving a map with the mouse: from a button that moves maps until that is released. A plain value; main
/// thread.
class MapDrag
{
public:
    /// @param has_tool whether a tool has the left button; the other two move the map then, in every mode
    /// @return whether this begins to move the map
    bool begin(const QMouseEvent& event, bool has_tool);
    /// By how much the pointer has moved, in pixels. While it is under way.
    QPointF move(const QMouseEvent& event);
    void end(const QMouseEvent& event);
    bool is_under_way() const { return m_last.has_value(); }

private:
    std::optional<QPointF> m_last; // where the pointer was last
    Qt::MouseButton m_button = Qt::NoButton; // that began it
};

} // namespace terrain
