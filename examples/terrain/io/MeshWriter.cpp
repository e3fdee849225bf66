#include "io/MeshWriter.h"

#include "Product.h"
#include "documents/Mesh.h"
#include "documents/Raster.h"
#include "io/NewFile.h"
#include "io/ReferenceSystem.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>

// As the library that takes its messages; otherwise the handlers would be others here.
#pragma GCC visibility push(default)
#include <CGAL/assertions.h>
#pragma GCC visibility pop

#include <CGAL/IO/OBJ.h>
#include <CGAL/IO/OFF.h>
#include <CGAL/IO/PLY.h>
#include <CGAL/IO/STL.h>
#include <CGAL/Simple_cartesian.h>

#include <algorithm>
#include <functional>
#include <ios>
#include <limits>
#include <locale>
#include <ostream>
#include <streambuf>
#include <utility>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/MeshWriter";

const int s_buffer = 1 << 16; ///< bytes that are written at once
const auto s_checksum = QCryptographicHash::Md5;
const int s_digits = std::numeric_limits<double>::max_digits10;

typedef CGAL::Simple_cartesian<double> Kernel;
typedef std::vector<Kernel::Point_3> Points;
typedef std::vector<std::array<std::uint32_t, 3>> Triangles;

/// What the formats differ in.
struct Format
{
    const char* extension;
    const char*
        beginning; ///< what CGAL writes in front of the remarks; whatever it writes, as many bytes of it
    const char* remark; ///< what a line of the remarks begins with; null if they are one word
    std::size_t lines_per_vertex;
    std::size_t lines_per_triangle;
    bool (*write)(std::ostream& out, const Points& points, const Triangles& triangles);
};

const Format s_formats[] = {
    {"ply", "ply\nformat ascii 1.0\n", "comment ", 1, 1,
        [](std::ostream& out, const Points& points, const Triangles& triangles) {
            return CGAL::IO::write_PLY(out, points, triangles, CGAL::parameters::stream_precision(s_digits));
        }},
    {"obj", "", "# ", 1, 1,
        [](std::ostream& out, const Points& points, const Triangles& triangles) {
            return CGAL::IO::write_OBJ(out, points, triangles, CGAL::parameters::stream_precision(s_digits));
        }},
    {"off", "OFF\n", "# ", 1, 1,
        [](std::ostream& out, const Points& points, const Triangles& triangles) {
            return CGAL::IO::write_OFF(out, points, triangles, CGAL::parameters::stream_precision(s_digits));
        }},
    {"stl", "solid", nullptr, 0, 7,
        [](std::ostream& out, const Points& points, const Triangles& triangles) {
            return CGAL::IO::write_STL(out, points, triangles, CGAL::parameters::stream_precision(s_digits));
        }},
};

/// Takes what a stream is given to a file, puts remarks in, and tells how many lines there were.
class FileSink : public std::streambuf
{
public:
    /// @param place of the remarks, in bytes @param each_part told the number of lines, as it grows; what it
    /// throws ends the writing
    FileSink(QFile& file, std::size_t place, QByteArray remarks, std::function<void(std::size_t)> each_part)
        : m_file(file)
        , m_to_remarks(place)
        , m_remarks(std::move(remarks))
        , m_each_part(std::move(each_part))
    {
        m_buffer.reserve(s_buffer);
    }

    /// Writes what is left. @return whether all has been written
    bool finish() { return write() && m_file.flush(); }

    /// Of all that was written.
    QByteArray checksum() const { return m_checksum.result(); }

private:
    int_type overflow(int_type letter) override
    {
        const char one = traits_type::to_char_type(letter);
        return xsputn(&one, 1) == 1 ? letter : traits_type::eof();
    }

    std::streamsize xsputn(const char* p_text, std::streamsize size) override
    {
        std::streamsize left = size;
        if (!m_remarks.isEmpty()) {
            const auto before = std::min<std::streamsize>(left, static_cast<std::streamsize>(m_to_remarks));
            append(p_text, before);
            m_to_remarks -= static_cast<std::size_t>(before);
            p_text += before;
            left -= before;
            if (m_to_remarks == 0) {
                m_buffer.append(std::exchange(m_remarks, {}));
            }
        }
        append(p_text, left);
        return m_buffer.size() < s_buffer || write() ? size : 0;
    }

    void append(const char* p_text, std::streamsize size) { m_buffer.append(p_text, static_cast<int>(size)); }

    bool write()
    {
        const bool is_written = m_file.write(m_buffer) == m_buffer.size();
        m_checksum.addData(m_buffer);
        m_lines += static_cast<std::size_t>(std::count(m_buffer.begin(), m_buffer.end(), '\n'));
        m_buffer.resize(0); // keeps the room
        if (is_written) {
            m_each_part(m_lines);
        }
        return is_written;
    }

    QFile& m_file;
    std::size_t m_to_remarks; // bytes until they come
    QByteArray m_remarks; // empty once they are written
    std::function<void(std::size_t)> m_each_part;
    QByteArray m_buffer;
    QCryptographicHash m_checksum{s_checksum};
    std::size_t m_lines = 0;
};

const Format& format_of(const std::string& path)
{
    const QString extension = QFileInfo(QString::fromStdString(path)).suffix().toLower();
    return *std::find_if(std::begin(s_formats), std::end(s_formats) - 1,
        [&extension](const Format& format) { return extension == format.extension; });
}

QByteArray remarks(const Format& format, const Raster& raster)
{
    const QByteArray product = QByteArray("tarq-terrain ") + product::version;
    if (!format.remark) {
        return ' ' + product;
    }
    const auto line = [&format](const QByteArray& text) {
        return format.remark + text.simplified() + '\n'; // one line, whatever the texts are
    };
    const std::string system = reference_system_name(raster.reference_system);
    QByteArray lines = line(product);
    if (!system.empty()) {
        lines += line("reference system: " + QByteArray::fromStdString(system));
    }
    if (!raster.geotransform) {
        lines += line("x: columns of cells, y: rows of cells, downwards from 0");
    }
    if (!raster.unit.empty()) {
        lines += line("unit of the heights: " + QByteArray::fromStdString(raster.unit));
    }
    return lines;
}

Points points_on_earth(const Mesh& mesh, const std::array<double, 6>& place)
{
    Points points;
    points.reserve(mesh.vertices.size());
    for (const Mesh::Vertex& vertex : mesh.vertices) {
        points.emplace_back(place[0] + vertex.column * place[1] + vertex.row * place[2],
            place[3] + vertex.column * place[4] + vertex.row * place[5], vertex.height);
    }
    return points;
}

/// Against the clock, seen from above.
Triangles turned_triangles(const Mesh& mesh, const std::array<double, 6>& place)
{
    Triangles triangles = mesh.triangles;
    if (place[1] * place[5] - place[2] * place[4] < 0) { // rows go to the right of columns, as on most maps
        for (auto& triangle : triangles) {
            std::swap(triangle[1], triangle[2]);
        }
    }
    return triangles;
}

bool has_checksum(const QString& path, const QByteArray& checksum)
{
    QFile file(path);
    QCryptographicHash of_file(s_checksum);
    return file.open(QIODevice::ReadOnly) && of_file.addData(&file) && of_file.result() == checksum;
}

void write_file(const Mesh& mesh, const Raster& raster, const NewFile& new_file, const FileProgress& progress)
{
    const Format& format = format_of(new_file.temporary());
    const std::array<double, 6> place
        = raster.geotransform.value_or(std::array<double, 6>{0, 1, 0, 0, 0, -1});
    const Points points = points_on_earth(mesh, place);
    const Triangles triangles = turned_triangles(mesh, place);
    QFile file(QString::fromStdString(new_file.temporary()));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        new_file.fail(file.errorString(), s_source, __LINE__);
    }
    const double lines = static_cast<double>(
        points.size() * format.lines_per_vertex + triangles.size() * format.lines_per_triangle);
    FileSink sink(file, std::string(format.beginning).size(), remarks(format, raster),
        [&](std::size_t done) { report(progress, std::min(static_cast<double>(done) / lines, 1.0)); });
    std::ostream out(&sink);
    out.imbue(std::locale::classic());
    out.exceptions(std::ios_base::badbit); // lets through what the sink throws
    CGAL::IO::set_ascii_mode(out);
    bool is_written = false;
    try {
        is_written = format.write(out, points, triangles) && sink.finish();
    } catch (const std::ios_base::failure&) { // the file tells more
    }
    if (!is_written) {
        new_file.fail(file.errorString(), s_source, __LINE__);
    }
    file.close();
    if (!has_checksum(file.fileName(), sink.checksum())) {
        new_file.fail(QObject::tr("what was written cannot be read back. %1").arg(file.errorString()),
            s_source, __LINE__);
    }
}

} // namespace

void write_mesh(const Mesh& mesh, const Raster& raster, const std::string& path, const FileProgress& progress)
{
    const NewFile file(path);
    report(progress, 0);
    write_file(mesh, raster, file, progress);
    file.put_in_place();
}

} // namespace terrain
