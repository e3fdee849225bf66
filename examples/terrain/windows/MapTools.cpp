#include "windows/MapTools.h"

#include "commands/CommandQueue.h"
#include "documents/RoundStep.h"
#include "documents/TerrainDocument.h"
#include "language/UnitText.h"
#include "presentations/CommandsPresentation.h"
#include "views/TerrainView.h"
#include "windows/BrushBar.h"
#include "windows/Deeds.h"
#include "windows/Icons.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QActionGroup>

#include <boost/make_shared.hpp>

namespace terrain {

namespace {

const double s_part_of_range = 0.02; ///< of the heights, that a stroke changes if nobody says otherwise

bool is_brush(Deed tool)
{
    return tool == Deed::ToolRaise || tool == Deed::ToolLower;
}

/// A round height that shows.
double usual_height(const HillShade& shade)
{
    const double range = shade.has_heights() ? shade.highest() - shade.lowest() : 0;
    const double height = std::isfinite(range) && range > 0 ? round_step(range * s_part_of_range) : 1;
    return QString::number(height, 'g', 1).toDouble(); // 5e-6, not 4.9999999999999996e-6
}

} // namespace

MapTools::MapTools(QObject* p_parent)
    : QObject(p_parent)
    , m_p_queue(new CommandQueue(CommandsController::instance().runner(), this))
    , m_p_bar(new BrushBar)
    , m_tool(Deed::ToolNavigate)
{
    const auto objection_to
        = [this](const housekeeping::DocumentId& document) { return objection(document); };
    m_p_brush = new BrushTool(objection_to, this);
    m_p_polygon = new PolygonTool(objection_to, this);
    for (const MapTool* const p_tool :
        {static_cast<MapTool*>(m_p_brush), static_cast<MapTool*>(m_p_polygon)}) {
        connect(p_tool, &MapTool::said, this, &CommandsPresentation::say);
    }
    connect(m_p_brush, &BrushTool::drawn, this, &MapTools::draw_stroke);
    connect(m_p_brush, &BrushTool::radius_chosen, this, &MapTools::change_radius);
    connect(m_p_polygon, &PolygonTool::drawn, this, &MapTools::flatten);
    connect(m_p_bar, &BrushBar::radius_chosen, this, &MapTools::change_radius);
    connect(m_p_bar, &BrushBar::height_chosen, this, &MapTools::change_height);
    connect(m_p_queue, &CommandQueue::dropped, this, [](int count) {
        CommandsPresentation::say(count == 1 ? tr("1 stroke was not carried out")
                                             : tr("%1 strokes were not carried out").arg(count));
    });
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

void MapTools::obey(const Deeds& deeds)
{
    auto* const p_group = new QActionGroup(this);
    for (const Deed deed : {Deed::ToolNavigate, Deed::ToolRaise, Deed::ToolLower, Deed::ToolFlatten}) {
        p_group->addAction(&deeds.action(deed));
        connect(&deeds.action(deed), &QAction::triggered, this, [this, deed] { choose(deed); });
    }
    deeds.action(m_tool).setChecked(true);
}

void MapTools::choose(Deed chosen)
{
    m_tool = chosen;
    use_on(m_p_view);
}

BrushBar& MapTools::bar() const
{
    return *m_p_bar;
}

MapTool* MapTools::tool() const
{
    if (is_brush(m_tool)) {
        return m_p_brush;
    }
    return m_tool == Deed::ToolFlatten ? m_p_polygon : nullptr;
}

void MapTools::use_on(TerrainView* p_view)
{
    if (m_p_bar && m_p_view != p_view) {
        m_p_bar->take_input(); // it is about the document of before
    }
    if (m_p_view && (m_p_view != p_view || m_p_view->tool() != tool())) {
        m_p_view->set_tool(nullptr);
    }
    m_p_view = p_view;
    if (p_view && p_view->tool() != tool()) {
        p_view->set_tool(tool());
    }
    show_brush();
}

void MapTools::show_brush()
{
    if (!m_p_view || !is_brush(m_tool) || !state()) {
        if (m_p_bar) {
            m_p_bar->hide_brush();
        }
        return;
    }
    m_p_brush->set_brush(brush_of_document());
    if (m_p_bar) {
        const auto& document
            = housekeeping::DocumentManager::instance().document_from_id(m_p_view->document());
        m_p_bar->show_brush(m_p_brush->brush(), height_unit_text(document.datasource()),
            usual_height(m_p_view->picture().shade()));
    }
}

void MapTools::change_radius(double radius)
{
    if (CommandsController::State* const p_state = state()) {
        p_state->brush_radius = radius;
        show_brush();
    }
}

void MapTools::change_height(double height)
{
    if (CommandsController::State* const p_state = state()) {
        p_state->brush_height = height;
        show_brush();
    }
}

Brush MapTools::brush_of_document() const
{
    CommandsController::State& chosen = *state();
    if (!chosen.brush_height) {
        chosen.brush_height = usual_height(m_p_view->picture().shade());
    }
    const auto direction = m_tool == Deed::ToolRaise ? Brush::Direction::Raise : Brush::Direction::Lower;
    return {direction, chosen.brush_radius, *chosen.brush_height};
}

/// Of the document whose map this is; null if it has gone.
CommandsController::State* MapTools::state() const
{
    auto& documents = housekeeping::DocumentManager::instance();
    if (!m_p_view || !documents.document_exists(m_p_view->document())) {
        return nullptr;
    }
    auto& document = documents.document_from_id(m_p_view->document());
    return boost::dynamic_pointer_cast<CommandsController::State>(
        document.state(CommandsController::product_name))
        .get();
}

void MapTools::draw_stroke(const BrushCommand::Path& path)
{
    const auto sp_command = boost::make_shared<BrushCommand>(m_p_view->document(), m_p_brush->brush(), path);
    sp_command->setIcon(icon(key_binding(m_tool).icon));
    m_p_queue->add(sp_command);
}

/// Flattens a polygon; if that does not come about, the polygon goes on where it was drawn.
void MapTools::flatten(const std::vector<QPointF>& corners)
{
    const TerrainView* const p_view = m_p_polygon->view();
    // Whoever is asked for the height may have time for something else.
    if (!CommandsPresentation::instance().flatten(corners) && p_view && m_p_polygon->view() == p_view) {
        m_p_polygon->resume(corners);
    }
}

/// Strokes may be drawn while strokes are carried out.
QString MapTools::objection(const housekeeping::DocumentId& document) const
{
    const auto& documents = housekeeping::DocumentManager::const_instance();
    if (!documents.document_exists(document)) {
        return tr("The document was closed.");
    }
    return documents.documents_busy() && !m_p_queue->is_running() ? CommandsPresentation::wait_text()
                                                                  : QString();
}

void MapTools::handle_message(housekeeping::DocumentMessage& message)
{
    MapTool* const p_tool = tool();
    if (p_tool && m_p_view && message.id() == m_p_view->document()
        && message.doc_change_type() == housekeeping::DocumentMessage::Busy && !m_p_queue->is_running()) {
        p_tool->abandon(tr("A command changes the raster; what was being drawn is given up."));
    }
}

} // namespace terrain
