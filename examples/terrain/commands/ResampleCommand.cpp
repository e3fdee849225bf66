#include "commands/ResampleCommand.h"

#include "io/RasterMemory.h"
#include "language/NumberText.h"
#include "windows/Icons.h"

#include <QtCore/QLocale>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_source = "terrain/commands/ResampleCommand";

const double s_rounding = 1e-9; ///< old cells; less is an error of rounding
const double s_sliver = 1e-6; ///< new cells; a cell that covers less of the raster is one of rounding

/// The part of the old columns (or rows) that a new one is made from.
class Stretch
{
public:
    /// @param position of the new column @param size the number of old ones
    Stretch(int position, int size, double factor, Resampling method)
    {
        const double centre = std::min((position + 0.5) * factor, static_cast<double>(size));
        if (method == Resampling::Nearest) {
            m_first = std::min(static_cast<int>(centre + s_rounding), size - 1);
            m_last = m_first;
            m_begin = m_first;
            m_end = m_first + 1;
            return;
        }
        const bool is_average = method == Resampling::Average;
        m_begin = is_average ? position * factor : centre - 0.5;
        m_end = is_average ? (position + 1) * factor : centre + 0.5;
        m_first = std::max(static_cast<int>(std::floor(m_begin + s_rounding)), 0);
        m_last = std::min(static_cast<int>(std::ceil(m_end - s_rounding)), size) - 1;
    }

    int first() const { return m_first; }
    int last() const { return m_last; }
    bool is_single() const { return m_first == m_last; }
    /// How much of an old column from first() to last() lies in it.
    double weight(int old) const { return std::min(m_end, old + 1.0) - std::max<double>(m_begin, old); }

private:
    double m_begin; // in old columns, from the first one's edge
    double m_end;
    int m_first; // of the old columns that lie in it
    int m_last;
};

/// A weighted mean of heights. It sums up the differences from the first one, so that level ground stays
/// exactly level.
class Mean
{
public:
    void add(double height, double weight)
    {
        m_largest_weight = std::max(m_largest_weight, weight);
        if (is_no_data(height)) {
            return;
        }
        m_largest_weight_of_data = std::max(m_largest_weight_of_data, weight);
        m_first = m_weight == 0 ? height : m_first;
        m_sum += weight * (height - m_first);
        m_weight += weight;
    }

    bool has_data() const { return m_weight > 0; }
    /// Whether what weighs most has data, or, of several such, one of them.
    bool has_data_at_heaviest() const { return m_largest_weight_of_data > m_largest_weight - s_rounding; }
    /// Infinite if a difference was too large for a number.
    double value() const
    {
        const double mean = m_first + m_sum / m_weight;
        return std::isnan(mean) ? std::numeric_limits<double>::infinity() : mean;
    }

private:
    double m_first = 0;
    double m_sum = 0; // of the differences from the first
    double m_weight = 0; // of those with data
    double m_largest_weight = 0;
    double m_largest_weight_of_data = 0;
};

double resampled_cell(const Raster& raster, const Stretch& columns, const Stretch& rows, Resampling method)
{
    if (columns.is_single() && rows.is_single()) {
        return raster.cell(columns.first(), rows.first());
    }
    Mean mean;
    for (int row = rows.first(); row <= rows.last(); ++row) {
        for (int column = columns.first(); column <= columns.last(); ++column) {
            mean.add(raster.cell(column, row), columns.weight(column) * rows.weight(row));
        }
    }
    const bool has_data = method == Resampling::Average ? mean.has_data() : mean.has_data_at_heaviest();
    return has_data ? mean.value() : no_data;
}

/// For people; name_of() is for scripts.
QString method_text(Resampling method)
{
    switch (method) {
    case Resampling::Nearest:
        return ResampleCommand::tr("nearest");
    case Resampling::Bilinear:
        return ResampleCommand::tr("bilinear");
    case Resampling::Average:
        return ResampleCommand::tr("average");
    }
    return {};
}

} // namespace

ResampleCommand::ResampleCommand(housekeeping::DocumentId document_id, double factor, Resampling method)
    : ReshapeCommand(document_id, tr("Resample"))
    , m_factor(factor)
    , m_method(method)
{
    setIcon(icon("resample"));
}

long long ResampleCommand::resampled(int size, double factor)
{
    return std::max(static_cast<long long>(std::ceil(size / factor - s_sliver)), 1LL);
}

QString ResampleCommand::objection(int columns, int rows, double factor, Resampling method)
{
    if (columns < 1 || rows < 1) {
        return tr("The raster has no cells");
    }
    if (!(factor >= smallest_factor && factor <= largest_factor)) {
        return tr("The factor must be from %1 to %2")
            .arg(number_text(smallest_factor), number_text(largest_factor));
    }
    if (method == Resampling::Average && factor < 1) {
        return tr("Averages are for larger cells: the factor must not be below 1");
    }
    return factor < 1 ? objection_to_size(resampled(columns, factor), resampled(rows, factor)) : QString();
}

QString ResampleCommand::objection_to_size(long long columns, long long rows)
{
    // Each number of its own first, for their product may not be one.
    if (columns > most_cells || rows > most_cells || columns * rows > most_cells) {
        return tr("The result would have %1 x %2 cells; more than %3 million are not possible")
            .arg(QString::number(columns), QString::number(rows), QString::number(most_cells / 1'000'000));
    }
    const double memory = memory_needed(static_cast<int>(columns), static_cast<int>(rows));
    if (memory > memory_limit()) {
        const double gigabyte = 1e9;
        return tr("The result would have %1 x %2 cells and need %3 GB of memory; %4 GB may be used")
            .arg(QString::number(columns), QString::number(rows), number_text(memory / gigabyte, 'g', 3),
                number_text(memory_limit() / gigabyte, 'g', 3));
    }
    return QString();
}

const char* ResampleCommand::name_of(Resampling method)
{
    switch (method) {
    case Resampling::Nearest:
        return "nearest";
    case Resampling::Bilinear:
        return "bilinear";
    case Resampling::Average:
        return "average";
    }
    return "";
}

std::optional<Raster> ResampleCommand::new_raster(const Raster& raster) const
{
    const QString objection = ResampleCommand::objection(raster.columns, raster.rows, m_factor, m_method);
    if (!objection.isEmpty()) {
        fail(objection, s_source, __LINE__);
    }
    if (m_factor == 1) {
        return {};
    }
    Raster made = description_of(raster);
    if (made.geotransform) {
        for (const std::size_t step : {1, 2, 4, 5}) {
            (*made.geotransform)[step] *= m_factor;
        }
    }
    made.columns = static_cast<int>(resampled(raster.columns, m_factor));
    made.rows = static_cast<int>(resampled(raster.rows, m_factor));
    made.cells.reserve(made.index(0, made.rows));
    for (int row = 0; row < made.rows; ++row) {
        const Stretch old_rows(row, raster.rows, m_factor, m_method);
        for (int column = 0; column < made.columns; ++column) {
            const Stretch old_columns(column, raster.columns, m_factor, m_method);
            made.cells.push_back(resampled_cell(raster, old_columns, old_rows, m_method));
            if (std::isinf(made.cells.back())) {
                fail(tr("The result in column %1 and row %2 is too large for a number")
                         .arg(QString::number(column), QString::number(row)),
                    s_source, __LINE__);
            }
        }
        report(made.cells.size(), made.index(0, made.rows));
    }
    return made;
}

QString ResampleCommand::parameters() const
{
    return tr("factor %1, %2")
        .arg(number_text(m_factor, 'g', QLocale::FloatingPointShortest), method_text(m_method));
}

} // namespace terrain
