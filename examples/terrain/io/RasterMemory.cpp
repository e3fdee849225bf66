#include "io/RasterMemory.h"

#include "ErrorCode.h"
#include "language/NumberText.h"

#include <tarqa/utilities/Hardware.h>

#include <QtCore/QObject>

#include <algorithm>
#include <limits>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/RasterMemory";

const double s_bytes_per_cell = 3 * sizeof(double); ///< before and after a command, and for undo
const double s_bytes_per_pixel = 2 * sizeof(double);
const int s_picture_side = 2000; ///< pixels, at most
const double s_share = 0.75; ///< of the machine's memory; other programs want some, too
const double s_gigabyte = 1e9;

double s_limit = 0; // 0 for that of the machine

QString in_gigabytes(double bytes)
{
    return number_text(bytes / s_gigabyte, 'f', bytes < s_gigabyte ? 3 : 1);
}

QString explanation(const std::string& path, int columns, int rows)
{
    return QObject::tr("Cannot read \"%1\": its %2 x %3 cells need %4 GB of memory, and of this machine's a "
                       "raster may take %5 GB")
        .arg(QString::fromStdString(path), QString::number(columns), QString::number(rows),
            in_gigabytes(memory_needed(columns, rows)), in_gigabytes(memory_limit()));
}

/// A power of two, as the overviews in files have it.
int sufficient_reduction(int columns, int rows)
{
    int reduction = 2;
    while (memory_needed(reduced(columns, reduction), reduced(rows, reduction)) > memory_limit()
        && reduction < std::max(columns, rows) && reduction < (1 << 29)) {
        reduction *= 2;
    }
    return reduction;
}

} // namespace

double memory_needed(int columns, int rows)
{
    const auto pixels = [](int count) { return static_cast<double>(std::min(count, s_picture_side)); };
    return s_bytes_per_cell * columns * rows + s_bytes_per_pixel * pixels(columns) * pixels(rows);
}

double memory_limit()
{
    const auto memory = static_cast<double>(tarqa::utilities::Hardware::physical_memory());
    if (s_limit == 0 && memory == 0) {
        return std::numeric_limits<double>::max(); // nobody knows
    }
    return s_limit > 0 ? s_limit : s_share * memory;
}

void memory_limit(double bytes)
{
    s_limit = bytes;
}

int reduced(int count, int reduction)
{
    return (count - 1) / reduction + 1;
}

RasterTooLarge::RasterTooLarge(const std::string& path, int columns, int rows)
    : InvalidPath(CannotRead, explanation(path, columns, rows), s_source, __LINE__, path)
    , m_reduction(sufficient_reduction(columns, rows))
{ }

} // namespace terrain
