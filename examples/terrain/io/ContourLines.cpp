#include "io/ContourLines.h"

#include "ErrorCode.h"
#include "documents/Raster.h"
#include "documents/RasterSummary.h"
#include "documents/RoundStep.h"
#include "io/GdalMessages.h"
#include "language/NumberText.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QObject>

#include <gdal_alg.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>

namespace terrain {

namespace {

const char* const s_source = "terrain/io/ContourLines";

const double s_most_steps = 25; ///< in an interval that contour_interval() gives

[[noreturn]] void fail(const QString& reason, unsigned int line)
{
    throw tarqa::housekeeping::HousekeepingException(
        CannotCompute, QObject::tr("The contour lines cannot be made: %1").arg(reason), s_source, line);
}

/// Takes in GDAL's lines. To GDAL the lowest multiple is 0 and the interval 1, or it would lose its way among
/// large numbers.
class Writer
{
public:
    Writer(double first_multiple, double interval)
        : m_first(first_multiple)
        , m_interval(interval)
    { }

    static CPLErr write(double level, int points, double* p_x, double* p_y, void* p_writer)
    {
        static_cast<Writer*>(p_writer)->add(level, points, p_x, p_y);
        return CE_None;
    }

    std::vector<ContourLine> take() // rethrows what must not go through GDAL
    {
        if (m_failure) {
            std::rethrow_exception(m_failure);
        }
        return std::move(m_lines);
    }

private:
    void add(double level, int points, const double* p_x, const double* p_y) noexcept
    {
        try {
            ContourLine line{(m_first + std::round(level)) * m_interval, {}};
            line.points.reserve(static_cast<std::size_t>(points));
            for (int i = 0; i < points; ++i) {
                line.points.emplace_back(p_x[i], p_y[i]);
            }
            m_lines.push_back(std::move(line));
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    double m_first; // the lowest height, as a multiple of the interval
    double m_interval;
    std::vector<ContourLine> m_lines;
    std::exception_ptr m_failure;
};

} // namespace

std::vector<ContourLine> contour_lines(const Raster& raster, double interval)
{
    const RasterSummary summary(raster.cells);
    if (summary.valid == 0) {
        return {};
    }
    const double first = std::floor(summary.minimum / interval);
    const double steps = summary.maximum / interval - first;
    if (!(interval > 0 && steps <= most_contour_heights)) { // nor if they are no numbers
        fail(QObject::tr("lines every %1 would be too close together").arg(number_text(interval)), __LINE__);
    }
    const GdalMessages messages;
    Writer writer(first, interval);
    std::unique_ptr<void, decltype(&GDAL_CG_Destroy)> generator(
        GDAL_CG_Create(raster.columns, raster.rows, FALSE, 0, 1, 0, &Writer::write, &writer),
        &GDAL_CG_Destroy);
    bool succeeded = generator != nullptr;
    std::vector<double> row(static_cast<std::size_t>(raster.columns));
    for (int number = 0; succeeded && number < raster.rows; ++number) {
        const auto begin = raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(0, number));
        std::transform(
            begin, begin + raster.columns, row.begin(), [&](double cell) { return cell / interval - first; });
        succeeded = GDAL_CG_FeedLine(generator.get(), row.data()) == CE_None;
    }
    generator.reset(); // writes the lines that are not closed
    if (!succeeded || messages.failed()) {
        fail(QString::fromStdString(messages.text()), __LINE__);
    }
    return writer.take();
}

double contour_interval(double lowest, double highest)
{
    // Divided before they are subtracted, or huge heights overflow.
    const double smallest_step = highest / s_most_steps - lowest / s_most_steps;
    if (!std::isnormal(smallest_step) || smallest_step < 0) {
        return 1;
    }
    // The largest round number below two and a half times the smallest step is never below that step.
    return round_step(smallest_step * 2.5);
}

} // namespace terrain
