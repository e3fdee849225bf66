#include "commands/FlattenCommand.h"

#include "documents/Raster.h"
#include "documents/RasterSummary.h"
#include "windows/Icons.h"

#include <algorithm>
#include <functional>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/FlattenCommand";
const double s_farthest = 1e9; ///< cells from the raster's corner; keeps products of lengths in bounds

FlattenCommand::Polygon bounded(FlattenCommand::Polygon polygon)
{
    for (QPointF& corner : polygon) {
        if (std::isfinite(corner.x()) && std::isfinite(corner.y())) { // the others are objected to
            corner = QPointF(std::clamp(corner.x(), -s_farthest, s_farthest),
                std::clamp(corner.y(), -s_farthest, s_farthest));
        }
    }
    return polygon;
}

/// The cells whose centres lie between two places in a line of @p count: the first and the one behind the
/// last.
std::pair<int, int> centres_between(double from, double to, int count)
{
    const double last = count;
    return {static_cast<int>(std::clamp(std::ceil(from - 0.5), 0.0, last)),
        static_cast<int>(std::clamp(std::ceil(to - 0.5), 0.0, last))};
}

QRect area_of(const Raster& raster, const FlattenCommand::Polygon& polygon)
{
    double left = polygon.front().x();
    double right = left;
    double top = polygon.front().y();
    double bottom = top;
    for (const QPointF& corner : polygon) {
        left = std::min(left, corner.x());
        right = std::max(right, corner.x());
        top = std::min(top, corner.y());
        bottom = std::max(bottom, corner.y());
    }
    const auto columns = centres_between(left, right, raster.columns);
    const auto rows = centres_between(top, bottom, raster.rows);
    return {columns.first, rows.first, columns.second - columns.first, rows.second - rows.first};
}

/// Where the sides of a polygon cross the middle of a row, from left to right. A corner counts for one of the
/// two sides that meet there, so the number is even.
std::vector<double> crossings(const FlattenCommand::Polygon& polygon, double y)
{
    std::vector<double> found;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const QPointF& from = polygon[i];
        const QPointF& to = polygon[(i + 1) % polygon.size()];
        if ((from.y() <= y) != (to.y() <= y)) {
            found.push_back(from.x() + (y - from.y()) / (to.y() - from.y()) * (to.x() - from.x()));
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

/// Calls @p found for the cells with data whose centres lie in the polygon, and @p row_done after each row.
void for_cells_inside(const Raster& raster, const FlattenCommand::Polygon& polygon, const QRect& area,
    const std::function<void(int column, int row)>& found, const std::function<void(int row)>& row_done)
{
    for (int row = area.top(); row <= area.bottom(); ++row) {
        const std::vector<double> sides = crossings(polygon, row + 0.5);
        for (std::size_t i = 0; i + 1 < sides.size(); i += 2) {
            const auto columns = centres_between(sides[i], sides[i + 1], raster.columns);
            // A rounding error must not lead out of the area.
            const int end = std::min(columns.second, area.right() + 1);
            for (int column = std::max(columns.first, area.left()); column < end; ++column) {
                if (!is_no_data(raster.cell(column, row))) {
                    found(column, row);
                }
            }
        }
        row_done(row);
    }
}

std::optional<double> mean_of(const std::vector<double>& heights)
{
    const RasterSummary summary(heights);
    return summary.valid > 0 ? std::make_optional(summary.mean) : std::nullopt;
}

} // namespace

FlattenCommand::FlattenCommand(
    housekeeping::DocumentId document_id, const Polygon& polygon, const std::optional<double>& height)
    : AreaCommand(document_id, tr("Flatten"))
    , m_polygon(bounded(polygon))
    , m_height(height)
{
    setIcon(icon("flatten"));
}

QString FlattenCommand::objection(const Polygon& polygon)
{
    const auto is_good
        = [](const QPointF& corner) { return std::isfinite(corner.x()) && std::isfinite(corner.y()); };
    if (!std::all_of(polygon.begin(), polygon.end(), is_good)) {
        return tr("A corner of the polygon is not a number");
    }
    const auto differs = [&polygon](const QPointF& corner) {
        return corner.x() != polygon.front().x() || corner.y() != polygon.front().y();
    };
    const auto second = std::find_if(polygon.begin(), polygon.end(), differs);
    const auto is_off_line = [&](const QPointF& corner) {
        const QPointF side = *second - polygon.front();
        const QPointF other = corner - polygon.front();
        return side.x() * other.y() != side.y() * other.x();
    };
    if (second == polygon.end() || std::none_of(second, polygon.end(), is_off_line)) {
        return tr("A polygon needs three corners that are not on a line");
    }
    return {};
}

std::optional<double> FlattenCommand::mean_inside(const Raster& raster, const Polygon& polygon)
{
    const Polygon corners = bounded(polygon);
    if (!objection(corners).isEmpty()) {
        return {};
    }
    std::vector<double> heights;
    for_cells_inside(
        raster, corners, area_of(raster, corners),
        [&](int column, int row) { heights.push_back(raster.cell(column, row)); }, [](int) {});
    return mean_of(heights);
}

QString FlattenCommand::parameters() const
{
    const QString corners = tr("%1 corners").arg(m_polygon.size());
    return m_height ? tr("height %1, %2").arg(height_text(*m_height), corners)
                    : tr("mean height, %1").arg(corners);
}

QRect FlattenCommand::area(const Raster& raster) const
{
    const QString objection_to_polygon = objection(m_polygon);
    if (!objection_to_polygon.isEmpty()) {
        fail(objection_to_polygon, s_source, __LINE__);
    }
    if (m_height && !std::isfinite(*m_height)) {
        fail(tr("The height is not a number"), s_source, __LINE__);
    }
    const QRect area = area_of(raster, m_polygon);
    if (area.isEmpty()) {
        fail(tr("No cell lies in the polygon"), s_source, __LINE__);
    }
    return area;
}

std::vector<double> FlattenCommand::cells_after(const Raster& raster, const QRect& area) const
{
    const auto rows = static_cast<std::size_t>(area.height());
    const auto width = static_cast<std::size_t>(area.width());
    std::vector<std::size_t> inside; // places in the area
    std::vector<double> heights;
    for_cells_inside(
        raster, m_polygon, area,
        [&](int column, int row) {
            const auto before = static_cast<std::size_t>(row - area.top()) * width;
            inside.push_back(before + static_cast<std::size_t>(column - area.left()));
            heights.push_back(raster.cell(column, row));
        },
        [&](int row) { report(static_cast<std::size_t>(row - area.top() + 1), rows); });
    if (inside.empty()) {
        fail(tr("No cell with data lies in the polygon"), s_source, __LINE__);
    }
    const double height = m_height ? *m_height : *mean_of(heights);
    std::vector<double> cells = cells_of(raster, area);
    for (const std::size_t cell : inside) {
        cells[cell] = height;
    }
    return cells;
}

} // namespace terrain
