#include "commands/BrushCommand.h"

#include "documents/Raster.h"
#include "documents/TerrainModel.h"
#include "language/NumberText.h"
#include "windows/Icons.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QLocale>

#include <algorithm>
#include <limits>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/BrushCommand";
/// Cells of a command from which on strokes do not become part of it: each one would go through all of them.
const std::size_t s_most_merged = 1000000;
const double s_farthest = 1e9; ///< cells from the raster's corner; keeps squares of distances in bounds

bool is_depth(const housekeeping::DocumentId& document)
{
    auto& manager = housekeeping::DocumentManager::instance();
    if (!manager.document_exists(document)) {
        return false;
    }
    const auto sp_source = manager.document_from_id(document).datasource();
    return sp_source && sp_source->z_sign() == housekeeping::DataSource::Depth;
}

BrushCommand::Path usable(const BrushCommand::Path& path)
{
    BrushCommand::Path found;
    for (const QPointF& place : path) {
        if (!std::isfinite(place.x()) || !std::isfinite(place.y())) {
            continue;
        }
        const QPointF bounded(
            std::clamp(place.x(), -s_farthest, s_farthest), std::clamp(place.y(), -s_farthest, s_farthest));
        if (found.empty() || found.back().x() != bounded.x() || found.back().y() != bounded.y()) {
            found.push_back(bounded);
        }
    }
    return found;
}

/// The cells that reach into the span from @p from to @p to, of @p count in a line: the first and the one
/// behind the last.
std::pair<int, int> cells_in(double from, double to, int count)
{
    const double last = count;
    return {static_cast<int>(std::clamp(std::floor(from), 0.0, last)),
        static_cast<int>(std::clamp(std::ceil(to), 0.0, last))};
}

/// The columns and rows that a brush may reach.
QRect reach(const BrushCommand::Path& path, double radius, const Raster& raster)
{
    const auto by_column = [](const QPointF& a, const QPointF& b) { return a.x() < b.x(); };
    const auto by_row = [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); };
    const auto columns = std::minmax_element(path.begin(), path.end(), by_column);
    const auto rows = std::minmax_element(path.begin(), path.end(), by_row);
    const auto [left, right]
        = cells_in(columns.first->x() - radius, columns.second->x() + radius, raster.columns);
    const auto [top, bottom] = cells_in(rows.first->y() - radius, rows.second->y() + radius, raster.rows);
    return {left, top, right - left, bottom - top};
}

/// The square of the distance of a place from the line between two others.
double squared_distance(double x, double y, const QPointF& from, const QPointF& way, double squared_length)
{
    const double along = (x - from.x()) * way.x() + (y - from.y()) * way.y();
    const double part = squared_length > 0 ? std::clamp(along / squared_length, 0.0, 1.0) : 0;
    const double across = x - from.x() - part * way.x();
    const double down = y - from.y() - part * way.y();
    return across * across + down * down;
}

/// Of the columns from @p from on to @p to, those that a line comes nearer to than @p radius somewhere in a
/// row.
/// @param y the middle of the row
std::pair<double, double> columns_near(double y, double radius, const QPointF& from, const QPointF& way)
{
    double first = 0;
    double last = 1;
    if (way.y() != 0) {
        const double one = (y - radius - from.y()) / way.y();
        const double other = (y + radius - from.y()) / way.y();
        first = std::clamp(std::min(one, other), 0.0, 1.0);
        last = std::clamp(std::max(one, other), 0.0, 1.0);
    }
    const double begin = from.x() + first * way.x();
    const double end = from.x() + last * way.x();
    return {std::min(begin, end) - radius, std::max(begin, end) + radius};
}

/// Takes the distances from a part of the path into account. @param area whose squares of distances these are
void come_nearer(const QPointF& from, const QPointF& to, double radius, const QRect& area,
    const QRect& reached, std::vector<double>& squares)
{
    const QPointF way = to - from;
    const double squared_length = QPointF::dotProduct(way, way);
    for (int row = reached.top(); row <= reached.bottom(); ++row) {
        const double y = row + 0.5;
        const auto near = columns_near(y, radius, from, way);
        const auto columns = cells_in(near.first, near.second, reached.right() + 1);
        const auto begin
            = static_cast<std::size_t>(row - area.top()) * static_cast<std::size_t>(area.width());
        for (int column = std::max(columns.first, reached.left()); column < columns.second; ++column) {
            double& square = squares[begin + static_cast<std::size_t>(column - area.left())];
            square = std::min(square, squared_distance(column + 0.5, y, from, way, squared_length));
        }
    }
}

/// How much of the height there is at a distance: all in the middle, nothing at the radius, and level at
/// both.
double part_at(double squared_distance, double squared_radius)
{
    if (!(squared_distance < squared_radius)) {
        return 0;
    }
    const double rest = 1 - squared_distance / squared_radius;
    return rest * rest;
}

} // namespace

BrushCommand::BrushCommand(housekeeping::DocumentId document_id, const Brush& brush, const Path& path)
    : AreaCommand(document_id, brush.direction == Brush::Direction::Raise ? tr("Raise") : tr("Lower"))
    , m_brush(brush)
    , m_makes_larger((brush.direction == Brush::Direction::Raise) != is_depth(document_id))
    , m_strokes{usable(path)}
{
    m_stack_identical = true;
    setIcon(icon(brush.direction == Brush::Direction::Raise ? "brush-raise" : "brush-lower"));
}

bool BrushCommand::stackWith(boost::shared_ptr<housekeeping::AbstractCommand> newer)
{
    const auto sp_newer = boost::dynamic_pointer_cast<BrushCommand>(newer);
    // One that failed, or was cancelled, has nothing that another stroke could become part of.
    if (!sp_newer || !is_done() || sp_newer->document_id() != document_id() || !(sp_newer->m_brush == m_brush)
        || sp_newer->m_makes_larger != m_makes_larger || old_cells().changed() > s_most_merged) {
        return false;
    }
    sp_newer->m_sp_older = weak_from_this().lock();
    return sp_newer->m_sp_older != nullptr;
}

QString BrushCommand::change(TerrainModel& model)
{
    const QString text = AreaCommand::change(model);
    if (m_sp_older) {
        m_sp_older->absorb(*this, model);
    }
    return text;
}

/// Makes what a newer command did its own. If there is not enough memory for it, both are as before.
void BrushCommand::absorb(BrushCommand& newer, const TerrainModel& model)
{
    m_strokes.push_back(newer.m_strokes.front());
    try {
        old_cells().add(newer.old_cells(), model.raster().cells);
    } catch (...) {
        m_strokes.pop_back();
        throw;
    }
    newer.old_cells() = CellPatch();
    setDescription(parameters().toStdString());
    appendDescription(changed_text().toStdString());
}

void BrushCommand::finished(bool succeeded)
{
    m_sp_older.reset();
    AreaCommand::finished(succeeded);
}

QString BrushCommand::parameters() const
{
    const QString brush = tr("radius %1, height %2")
                              .arg(number_text(m_brush.radius, 'g', QLocale::FloatingPointShortest),
                                  height_text(m_brush.height));
    return m_strokes.size() == 1 ? tr("%1; 1 stroke").arg(brush)
                                 : tr("%1; %2 strokes").arg(brush, QString::number(m_strokes.size()));
}

void BrushCommand::check() const
{
    if (!(m_brush.radius >= Brush::least_radius && m_brush.radius <= Brush::largest_radius)) {
        fail(tr("The radius must be from %1 to %2 cells").arg(Brush::least_radius).arg(Brush::largest_radius),
            s_source, __LINE__);
    }
    if (!(std::isfinite(m_brush.height) && m_brush.height > 0)) {
        fail(tr("The height of the brush must be above 0"), s_source, __LINE__);
    }
    if (m_strokes.front().empty()) {
        fail(tr("The stroke leads nowhere"), s_source, __LINE__);
    }
}

QRect BrushCommand::area(const Raster& raster) const
{
    check();
    QRect area;
    for (const Path& path : m_strokes) {
        const QRect reached = reach(path, m_brush.radius, raster);
        area |= reached.isEmpty() ? QRect() : reached;
    }
    return area;
}

std::vector<double> BrushCommand::cells_after(const Raster& raster, const QRect& area) const
{
    std::size_t total = 0;
    for (const Path& path : m_strokes) {
        total += path.size();
    }
    std::vector<double> cells = cells_of(raster, area);
    std::size_t done = 0;
    for (const Path& path : m_strokes) {
        draw(raster, path, area, cells, done, total);
        done += path.size();
    }
    return cells;
}

/// Draws a stroke. @param cells those of the area @param done how many positions were drawn before, of all
void BrushCommand::draw(const Raster& raster, const Path& path, const QRect& area, std::vector<double>& cells,
    std::size_t done, std::size_t total) const
{
    const QRect reached = reach(path, m_brush.radius, raster);
    if (reached.isEmpty()) {
        return;
    }
    const auto width = static_cast<std::size_t>(reached.width());
    std::vector<double> squares(
        width * static_cast<std::size_t>(reached.height()), std::numeric_limits<double>::infinity());
    for (std::size_t i = 0; i < path.size(); ++i) {
        const QPointF& from = path[i == 0 ? 0 : i - 1]; // a dab is a line without a length
        come_nearer(
            from, path[i], m_brush.radius, reached, reach({from, path[i]}, m_brush.radius, raster), squares);
        report(done + i + 1, total);
    }
    const double height = m_makes_larger ? m_brush.height : -m_brush.height;
    const double squared_radius = m_brush.radius * m_brush.radius;
    for (std::size_t i = 0; i < squares.size(); ++i) {
        const double part = part_at(squares[i], squared_radius);
        const std::size_t row = i / width + static_cast<std::size_t>(reached.top() - area.top());
        const std::size_t column = i % width + static_cast<std::size_t>(reached.left() - area.left());
        double& cell = cells[row * static_cast<std::size_t>(area.width()) + column];
        if (part > 0 && !is_no_data(cell)) {
            cell += height * part;
        }
    }
}

} // namespace terrain
