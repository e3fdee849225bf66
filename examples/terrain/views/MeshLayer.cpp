#include "views/MeshLayer.h"

#include "documents/Mesh.h"

#include <QtCore/QObject>
#include <QtGui/QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <new>
#include <utility>

namespace terrain {

namespace {

const std::size_t s_edges_in_group = 256; ///< about
const std::size_t s_most_lines = 40000; ///< that are drawn at once; more would be felt
const double s_shortest = 2; ///< pixels; a shorter line is not drawn ...
const double s_in_full = 12; ///< ... and a longer one not faded
const double s_wider = 1.25; ///< step by which less is drawn where there is too much
const std::size_t s_shades = 6; ///< between faded and full
const QColor s_ink(25, 20, 45);
const int s_full_ink = 170; ///< of 255

typedef std::pair<std::uint32_t, std::uint32_t> Numbers; // of vertices, the lower one first

/// Each edge once.
std::vector<Numbers> edges_of(const Mesh& mesh)
{
    std::vector<Numbers> edges;
    edges.reserve(3 * mesh.triangles.size());
    for (const auto& triangle : mesh.triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            edges.emplace_back(std::minmax(triangle[i], triangle[(i + 1) % 3]));
        }
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    return edges;
}

double square_of_length(const QLineF& line)
{
    return line.dx() * line.dx() + line.dy() * line.dy();
}

QRectF bounds_of(const QLineF& line)
{
    return QRectF(line.p1(), line.p2()).normalized();
}

/// By hand, as QRectF takes a straight line's bounds for nothing.
bool meet(const QRectF& one, const QRectF& other)
{
    return one.right() >= other.left() && one.left() <= other.right() && one.bottom() >= other.top()
        && one.top() <= other.bottom();
}

QRectF united(const QRectF& one, const QRectF& other)
{
    return {QPointF(std::min(one.left(), other.left()), std::min(one.top(), other.top())),
        QPointF(std::max(one.right(), other.right()), std::max(one.bottom(), other.bottom()))};
}

/// Which of the shades a line has. @param shortest where they begin
std::size_t shade_of(double length, double shortest)
{
    if (shortest >= s_in_full) {
        return s_shades - 1;
    }
    const double part = (length - shortest) / (s_in_full - shortest);
    return static_cast<std::size_t>(std::clamp(part, 0.0, 1.0) * (s_shades - 1));
}

QString too_many()
{
    return QObject::tr("There are too many triangles to draw their edges.");
}

} // namespace

void MeshLayer::show(const boost::shared_ptr<const Mesh>& sp_mesh, const QTransform& to_map)
{
    if (sp_mesh == m_sp_mesh && to_map == m_to_map) {
        return;
    }
    m_sp_mesh = sp_mesh;
    m_to_map = to_map;
    clear();
    m_problem.clear();
    m_is_collected = !sp_mesh;
}

/// Forgets the edges.
void MeshLayer::clear()
{
    m_edges = {};
    m_groups = {};
    m_drawn = 0;
}

void MeshLayer::collect()
{
    if (m_is_collected) {
        return;
    }
    m_is_collected = true;
    if (m_sp_mesh->triangles.size() > most_triangles) {
        m_problem = too_many();
        return;
    }
    const std::vector<Numbers> edges = edges_of(*m_sp_mesh);
    const auto place = [this](std::uint32_t number) {
        const Mesh::Vertex& vertex = m_sp_mesh->vertices[number];
        return m_to_map.map(QPointF(vertex.column, vertex.row));
    };
    m_edges.reserve(edges.size());
    for (const auto& [from, to] : edges) {
        m_edges.emplace_back(place(from), place(to));
    }
    group();
}

/// Puts edges together by the square of a grid in which their middle lies.
void MeshLayer::group()
{
    QRectF all = m_edges.empty() ? QRectF() : bounds_of(m_edges.front());
    for (const QLineF& edge : m_edges) {
        all = united(all, bounds_of(edge));
    }
    const double squares = std::ceil(std::sqrt(static_cast<double>(m_edges.size() / s_edges_in_group + 1)));
    const auto square = [&](const QLineF& edge) {
        const QPointF middle = edge.center() - all.topLeft();
        return std::make_pair(
            std::floor(middle.y() * squares / all.height()), std::floor(middle.x() * squares / all.width()));
    };
    std::vector<std::pair<std::pair<double, double>, QLineF>> sorted;
    sorted.reserve(m_edges.size());
    for (const QLineF& edge : m_edges) {
        sorted.emplace_back(square(edge), edge);
    }
    std::sort(sorted.begin(), sorted.end(), [](const auto& one, const auto& other) {
        return one.first != other.first ? one.first < other.first
                                        : square_of_length(one.second) > square_of_length(other.second);
    });
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const QLineF& edge = sorted[i].second;
        if (i == 0 || sorted[i].first != sorted[i - 1].first) {
            m_groups.push_back({i, i, bounds_of(edge)});
        }
        m_groups.back().end = i + 1;
        m_groups.back().bounds = united(m_groups.back().bounds, bounds_of(edge));
        m_edges[i] = edge;
    }
}

std::vector<const MeshLayer::Group*> MeshLayer::groups_in(const QRectF& area) const
{
    std::vector<const Group*> groups;
    for (const Group& group : m_groups) {
        if (meet(group.bounds, area)) {
            groups.push_back(&group);
        }
    }
    return groups;
}

/// From which length on edges are few enough to be drawn. @param shortest below which none is drawn anyway
double MeshLayer::shortest_to_draw(const std::vector<const Group*>& groups, double shortest) const
{
    const auto lines = [&](double length) {
        std::size_t count = 0;
        for (const Group* const p_group : groups) {
            const auto begin = m_edges.begin() + static_cast<std::ptrdiff_t>(p_group->begin);
            const auto end = m_edges.begin() + static_cast<std::ptrdiff_t>(p_group->end);
            count += static_cast<std::size_t>(std::partition_point(begin, end, [length](const QLineF& edge) {
                return square_of_length(edge) >= length * length;
            }) - begin);
        }
        return count;
    };
    while (lines(shortest) > s_most_lines) {
        shortest *= s_wider;
    }
    return shortest;
}

void MeshLayer::draw(QPainter& painter, const QTransform& to_widget, const QRectF& visible)
{
    m_drawn = 0;
    try {
        collect();
        draw_edges(painter, to_widget, visible);
    } catch (const std::bad_alloc&) { // the map is being painted, which cannot fail
        clear();
        m_problem = too_many();
    }
}

void MeshLayer::draw_edges(QPainter& painter, const QTransform& to_widget, const QRectF& visible)
{
    const QRectF area = to_widget.inverted().mapRect(visible);
    const std::vector<const Group*> groups = groups_in(area);
    const double scale = std::sqrt(std::abs(to_widget.determinant())); // pixels per cell
    const double shortest = shortest_to_draw(groups, s_shortest / scale);
    std::array<std::vector<QLineF>, s_shades> lines;
    for (const Group* const p_group : groups) {
        for (std::size_t i = p_group->begin; i < p_group->end; ++i) {
            const double length = std::sqrt(square_of_length(m_edges[i]));
            if (length < shortest) {
                break;
            }
            if (meet(bounds_of(m_edges[i]), area)) {
                lines[shade_of(length * scale, shortest * scale)].push_back(to_widget.map(m_edges[i]));
                ++m_drawn;
            }
        }
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t shade = 0; shade < s_shades; ++shade) {
        QColor ink = s_ink;
        ink.setAlpha(s_full_ink * static_cast<int>(shade + 1) / static_cast<int>(s_shades));
        painter.setPen(QPen(ink, 1));
        painter.drawLines(lines[shade].data(), static_cast<int>(lines[shade].size()));
    }
    painter.restore();
}

} // namespace terrain
