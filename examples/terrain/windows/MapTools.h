#pragma once

#include "commands/CommandsController.h"
#include "help/Bindings.h"
#include "views/BrushTool.h"
#include "views/PolygonTool.h"

#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class BrushBar;
class CommandQueue;
class Deeds;

/**
 * The tools of the map on top: which one is in use, what it is used with, and the commands that come of it. A
 * stroke that is finished while another one is still at work waits for it. The chosen tool goes from document
 * to document; what is under way does not. Main thread.
 */
class MapTools : public QObject
{
    Q_OBJECT

public:
    explicit MapTools(QObject* p_parent = nullptr);

    /// Lets the deeds choose the tool.
    void obey(const Deeds& deeds);
    /// Puts the tool in use on this map; null for none.
    void use_on(TerrainView* p_view);

    /// The options of the tool in use, for the tool bar, which owns it from then on.
    BrushBar& bar() const;
    /// The tool in use; null if the map is moved.
    MapTool* tool() const;
    CommandQueue& queue() const { return *m_p_queue; }

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    void choose(Deed tool);
    void show_brush();
    void change_radius(double radius);
    void change_height(double height);
    void flatten(const std::vector<QPointF>& corners);
    void draw_stroke(const BrushCommand::Path& path);
    QString objection(const housekeeping::DocumentId& document) const;
    Brush brush_of_document() const;
    CommandsController::State* state() const;

    // Children.
    BrushTool* m_p_brush;
    PolygonTool* m_p_polygon;
    CommandQueue* m_p_queue;
    QPointer<BrushBar> m_p_bar; // the tool bar's

    Deed m_tool;
    QPointer<TerrainView> m_p_view; // not owned
};

} // namespace terrain
