#include "commands/Triangulation.h"

#include "commands/DataArea.h"
#include "commands/Facet.h"
#include "documents/Raster.h"

#include <QtCore/QObject>

// As the library that takes its messages; otherwise the handlers would be others here.
#pragma GCC visibility push(default)
#include <CGAL/assertions.h>
#pragma GCC visibility pop

#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_face_base_with_info_2.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>
#include <CGAL/hilbert_sort.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace terrain {

const double bytes_per_vertex = 300;

namespace {

const std::size_t s_work_in_a_moment = 1 << 19; ///< cells that are looked at
const std::size_t s_work_of_an_insertion = 500; ///< takes as long as looking at so many cells
const std::size_t s_most_entries = 4; ///< in the queue for each vertex, which are twice as many as of use
const double s_of_outline = 0.02; ///< part of the time until all of the outline is there
const double s_of_magnitude = 0.4; ///< part of the time that the magnitude of the error stands for

typedef CGAL::Exact_predicates_inexact_constructions_kernel Kernel;
typedef CGAL::Triangulation_vertex_base_with_info_2<std::uint32_t, Kernel> VertexBase;
typedef CGAL::Triangulation_face_base_with_info_2<WorstCell, Kernel,
    CGAL::Constrained_triangulation_face_base_2<Kernel>>
    FaceBase;
typedef CGAL::Triangulation_data_structure_2<VertexBase, FaceBase> DataStructure;
typedef CGAL::Constrained_Delaunay_triangulation_2<Kernel, DataStructure,
    CGAL::No_constraint_intersection_requiring_constructions_tag>
    Delaunay;

CellPlace place_of(const Delaunay::Vertex_handle& vertex)
{
    return {static_cast<int>(vertex->point().x()), static_cast<int>(vertex->point().y())};
}

/// The triangulation while it grows.
class Growth
{
public:
    Growth(const Raster& raster, double tolerance, std::size_t most_vertices,
        const std::function<void(double)>& each_moment)
        : m_raster(raster)
        , m_area(raster)
        , m_tolerance(tolerance)
        , m_most_vertices(most_vertices)
        , m_each_moment(each_moment)
    { }

    void make()
    {
        m_each_moment(0);
        add_outline();
        look_at_all();
        m_first_error = m_queue.empty() ? m_tolerance : m_queue.front().worst.error;
        while (!m_queue.empty()) {
            const Entry entry = take_worst();
            if (entry.face->info().cell == entry.worst.cell) { // the face is still what it was
                insert(entry);
            }
        }
    }

    Mesh mesh() const
    {
        Mesh mesh;
        mesh.tolerance = m_tolerance;
        mesh.vertices.reserve(m_delaunay.number_of_vertices());
        for (auto vertex = m_delaunay.finite_vertices_begin(); vertex != m_delaunay.finite_vertices_end();
             ++vertex) {
            const CellPlace place = place_of(vertex);
            vertex->info() = static_cast<std::uint32_t>(mesh.vertices.size());
            mesh.vertices.push_back(
                {place.column + 0.5, place.row + 0.5, m_raster.cell(place.column, place.row)});
        }
        std::size_t count = 0;
        for_faces([&count](const Delaunay::Face_handle&) { ++count; });
        mesh.triangles.reserve(count);
        for_faces([&mesh](const Delaunay::Face_handle& face) {
            mesh.triangles.push_back(
                {face->vertex(0)->info(), face->vertex(1)->info(), face->vertex(2)->info()});
        });
        return mesh;
    }

    std::size_t cells_left_out() const { return m_area.cells_left_out(); }

private:
    /// A face that waits for its worst cell; or waited, it may have become another one.
    struct Entry
    {
        WorstCell worst;
        Delaunay::Face_handle face;

        /// The order of a heap; of equal errors the first cell is the worst.
        friend bool operator<(const Entry& one, const Entry& other)
        {
            return one.worst.error != other.worst.error ? one.worst.error < other.worst.error
                                                        : one.worst.cell > other.worst.cell;
        }
    };

    // --- the outline

    void add_outline()
    {
        const std::vector<DataArea::Piece> pieces
            = m_area.outline([this](int) { work(static_cast<std::size_t>(m_raster.columns), 0); });
        if (pieces.empty()) {
            throw TriangulationFailure(QObject::tr(
                "Triangles need three cells with data beside and below each other; there are none")
                                           .toStdString());
        }
        std::vector<Kernel::Point_2> points;
        points.reserve(2 * pieces.size());
        for (const DataArea::Piece& piece : pieces) {
            points.push_back(point_at(piece.from));
            points.push_back(point_at(piece.to));
        }
        const std::vector<Delaunay::Vertex_handle> corners = add_corners(std::move(points));
        for (const DataArea::Piece& piece : pieces) {
            m_delaunay.insert_constraint(corner_at(piece.from, corners), corner_at(piece.to, corners));
            work(s_work_of_an_insertion, 0);
        }
    }

    static Kernel::Point_2 point_at(const CellPlace& place) { return {place.column, place.row}; }

    /// @return the vertices, in an order in which corner_at() finds them
    std::vector<Delaunay::Vertex_handle> add_corners(std::vector<Kernel::Point_2> points)
    {
        std::sort(points.begin(), points.end());
        points.erase(std::unique(points.begin(), points.end()), points.end());
        // Each near the one before, so that its place is soon found.
        CGAL::hilbert_sort(points.begin(), points.end());
        std::vector<Delaunay::Vertex_handle> corners;
        corners.reserve(points.size());
        Delaunay::Face_handle near;
        for (const Kernel::Point_2& point : points) {
            check_room();
            corners.push_back(m_delaunay.insert(point, near));
            near = corners.back()->face();
            work(s_work_of_an_insertion, 0);
        }
        std::sort(corners.begin(), corners.end(),
            [](const auto& one, const auto& other) { return one->point() < other->point(); });
        return corners;
    }

    static Delaunay::Vertex_handle corner_at(
        const CellPlace& place, const std::vector<Delaunay::Vertex_handle>& corners)
    {
        return *std::lower_bound(corners.begin(), corners.end(), point_at(place),
            [](const Delaunay::Vertex_handle& corner, const Kernel::Point_2& point) {
                return corner->point() < point;
            });
    }

    // --- the worst cells

    std::array<CellPlace, 3> corners_of(const Delaunay::Face_handle& face) const
    {
        return {place_of(face->vertex(0)), place_of(face->vertex(1)), place_of(face->vertex(2))};
    }

    /// Calls @p visit for all faces that lie in the area.
    template <class Visit>
    void for_faces(Visit visit) const
    {
        for (auto face = m_delaunay.finite_faces_begin(); face != m_delaunay.finite_faces_end(); ++face) {
            if (m_area.holds(corners_of(face))) {
                visit(face);
            }
        }
    }

    void look_at_all()
    {
        std::vector<Delaunay::Face_handle> faces;
        for_faces([&faces](const Delaunay::Face_handle& face) { faces.push_back(face); });
        for (const Delaunay::Face_handle& face : faces) {
            look_at(face, s_of_outline);
        }
    }

    /// Finds the worst cell of a face in the area, and puts the face in the queue if it has one.
    void look_at(const Delaunay::Face_handle& face, double share)
    {
        const std::array<CellPlace, 3> corners = corners_of(face);
        std::size_t looked_at = 0;
        face->info() = Facet(m_raster, corners).worst_cell(m_tolerance, looked_at);
        if (face->info().cell != WorstCell::none) {
            m_queue.push_back({face->info(), face});
            std::push_heap(m_queue.begin(), m_queue.end());
        }
        work(looked_at, share);
    }

    Entry take_worst()
    {
        std::pop_heap(m_queue.begin(), m_queue.end());
        const Entry entry = m_queue.back();
        m_queue.pop_back();
        return entry;
    }

    void insert(const Entry& entry)
    {
        check_room();
        const auto columns = static_cast<std::size_t>(m_raster.columns);
        const CellPlace place
            = {static_cast<int>(entry.worst.cell % columns), static_cast<int>(entry.worst.cell / columns)};
        const std::array<CellPlace, 3> corners = corners_of(entry.face);
        const int edge = Facet(m_raster, corners).edge_at(place);
        const Delaunay::Vertex_handle vertex = m_delaunay.insert(
            point_at(place), edge < 3 ? Delaunay::EDGE : Delaunay::FACE, entry.face, edge < 3 ? edge : 0);
        look_around(vertex, share_at(entry.worst.error));
        work(s_work_of_an_insertion, share_at(entry.worst.error));
        drop_stale_entries();
    }

    /// All faces that have changed are around the new vertex.
    void look_around(const Delaunay::Vertex_handle& vertex, double share)
    {
        const Delaunay::Face_circulator first = m_delaunay.incident_faces(vertex);
        Delaunay::Face_circulator face = first;
        do {
            face->info() = WorstCell(); // also of those beside the area: they may have been others before
            if (!m_delaunay.is_infinite(face) && m_area.holds(corners_of(face))) {
                look_at(face, share);
            }
        } while (++face != first);
    }

    void drop_stale_entries()
    {
        if (m_queue.size() < s_most_entries * m_delaunay.number_of_vertices()) {
            return;
        }
        m_queue.erase(std::remove_if(m_queue.begin(), m_queue.end(),
                          [](const Entry& entry) { return entry.face->info().cell != entry.worst.cell; }),
            m_queue.end());
        std::make_heap(m_queue.begin(), m_queue.end());
    }

    void check_room() const
    {
        if (m_delaunay.number_of_vertices() >= m_most_vertices) {
            throw TriangulationFailure(
                QObject::tr("There is not enough memory for more than %1 vertices. With a larger tolerance "
                            "there are fewer")
                    .arg(m_most_vertices)
                    .toStdString());
        }
    }

    // --- progress

    /// The part of the work that is done when the worst error is no larger than @p error. There are about
    /// twice as many vertices with half the error, and the cells are all looked at for each magnitude.
    double share_at(double error) const
    {
        if (!std::isfinite(m_first_error) || m_first_error <= m_tolerance) {
            return s_of_outline;
        }
        const double magnitude
            = std::log(m_first_error / std::max(error, m_tolerance)) / std::log(m_first_error / m_tolerance);
        const double vertices = m_tolerance / std::max(error, m_tolerance);
        return s_of_outline
            + (1 - s_of_outline) * (s_of_magnitude * magnitude + (1 - s_of_magnitude) * vertices);
    }

    void work(std::size_t amount, double share)
    {
        m_work += amount;
        m_share = std::max(m_share, share); // the errors do not always become smaller
        if (m_work >= s_work_in_a_moment) {
            m_work = 0;
            m_each_moment(m_share);
        }
    }

    const Raster& m_raster;
    DataArea m_area;
    double m_tolerance;
    std::size_t m_most_vertices;
    const std::function<void(double)>& m_each_moment;
    Delaunay m_delaunay;
    std::vector<Entry> m_queue; // a heap
    double m_first_error = 0;
    double m_share = 0;
    std::size_t m_work = 0; // since each_moment was told
};

} // namespace

Triangulated triangulate(const Raster& raster, double tolerance, std::size_t most_vertices,
    const std::function<void(double share)>& each_moment)
{
    try {
        Growth growth(raster, tolerance, most_vertices, each_moment);
        growth.make();
        each_moment(1);
        return {growth.mesh(), growth.cells_left_out()};
    } catch (const CGAL::Failure_exception& failure) {
        throw TriangulationFailure(
            QObject::tr("The triangulation went wrong: %1").arg(failure.what()).toStdString());
    }
}

} // namespace terrain
