#pragma once

#include "panels/HeightProfile.h"

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QObject>
#include <QtCore/QPoint>

#include <optional>

class QMouseEvent;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainView;

/// Tells which cells are clicked on: with the left button, and without moving the map. Main thread.
class MapClicks : public QObject
{
    Q_OBJECT

public:
    explicit MapClicks(QObject* p_parent = nullptr);

    /// Watches a map as long as that exists.
    void follow(TerrainView& view);

signals:
    void clicked(const housekeeping::DocumentId& document, const terrain::CellPlace& cell);

protected:
    /// Takes nothing away from the map.
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    void mouse(const QObject& watched, const QMouseEvent& event);
    void tell(const TerrainView& view, const QPointF& at);

    std::optional<QPoint> m_pressed; // where, as long as it may become a click
};

} // namespace terrain
