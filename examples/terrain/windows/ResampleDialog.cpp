#include "windows/ResampleDialog.h"

#include "io/ReferenceSystem.h"
#include "language/NumberText.h"
#include "language/UnitText.h"

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QDoubleSpinBox>

#include <algorithm>

namespace terrain {

namespace {

const int s_decimals_of_factor = 4;
const int s_digits_of_size = 6; ///< of which all are shown
const int s_most_decimals = 12;
const double s_same = 1e-6; ///< part of a length; less is an error of rounding

QString size_text(double size)
{
    return number_text(size, 'g', s_digits_of_size);
}

int decimals_of(double size)
{
    const int digits = static_cast<int>(std::floor(std::log10(size))) + 1; // in front of the point
    return std::clamp(s_digits_of_size - digits, 0, s_most_decimals);
}

/// To whole columns and rows, as people read them.
QString grid_text(long long columns, long long rows)
{
    return ResampleDialog::tr("%1 × %2").arg(QString::number(columns), QString::number(rows));
}

} // namespace

ResampleDialog::CellSize ResampleDialog::cell_size(const Raster& raster)
{
    if (!raster.geotransform) {
        return {};
    }
    const std::array<double, 6>& g = *raster.geotransform;
    const double width = std::hypot(g[1], g[4]);
    const double height = std::hypot(g[2], g[5]);
    if (!std::isnormal(width) || !std::isnormal(height)) {
        return {};
    }
    return {width, height, unit_text(reference_system_unit(raster.reference_system))};
}

std::vector<Parameter> ResampleDialog::parameters(const CellSize& cell, double factor, Resampling method)
{
    std::vector<Parameter> parameters{{tr("&Factor:"), factor, ResampleCommand::smallest_factor,
        ResampleCommand::largest_factor, s_decimals_of_factor, QString()}};
    if (!cell.unit.isEmpty()) {
        const bool is_square = std::abs(cell.width / cell.height - 1) < s_same;
        parameters.push_back({is_square ? tr("Cell &size:") : tr("Cell &width:"), cell.width * factor,
            cell.width * ResampleCommand::smallest_factor, cell.width * ResampleCommand::largest_factor,
            decimals_of(cell.width), cell.unit});
    }
    parameters.push_back(
        {tr("&Method:"), {tr("Nearest cell"), tr("Bilinear"), tr("Average")}, static_cast<int>(method)});
    return parameters;
}

ResampleDialog::ResampleDialog(const Raster& raster, double factor, Resampling method, QWidget* p_parent)
    : ResampleDialog(raster, cell_size(raster), factor, method, p_parent)
{ }

ResampleDialog::ResampleDialog(
    const Raster& raster, const CellSize& cell, double factor, Resampling method, QWidget* p_parent)
    : ParameterDialog(tr("Resample"), Topic::Resample, parameters(cell, factor, method), p_parent)
    , m_cell(cell)
    , m_columns(raster.columns)
    , m_rows(raster.rows)
    , m_factor(factor)
{
    const auto value_changed = QOverload<double>::of(&QDoubleSpinBox::valueChanged);
    connect(&number(0), value_changed, this, &ResampleDialog::follow_factor);
    if (has_size()) {
        connect(&number(1), value_changed, this, &ResampleDialog::follow_width);
    }
    connect(this, &ResampleDialog::changed, this, &ResampleDialog::show_result);
    show_result();
}

Resampling ResampleDialog::method() const
{
    return static_cast<Resampling>(choice(has_size() ? 2 : 1));
}

void ResampleDialog::follow_factor(double factor)
{
    m_factor = factor;
    if (has_size()) {
        const QSignalBlocker blocker(number(1)); // or rounding would come back
        number(1).setValue(m_cell.width * factor);
    }
    show_result();
}

void ResampleDialog::follow_width(double width)
{
    // Rounding may have brought the limits a little too far out.
    m_factor
        = std::clamp(width / m_cell.width, ResampleCommand::smallest_factor, ResampleCommand::largest_factor);
    const QSignalBlocker blocker(number(0));
    number(0).setValue(m_factor);
    // Who gives the size that the cells have now, as far as it is shown, means that very size.
    const double rounded = number(0).value();
    if (std::abs(m_cell.width * rounded - width) < std::pow(0.1, number(1).decimals())) {
        m_factor = rounded;
    }
    show_result();
}

void ResampleDialog::show_result()
{
    const QString objection = ResampleCommand::objection(m_columns, m_rows, m_factor, method());
    if (!objection.isEmpty()) {
        say(objection + '.', false);
        return;
    }
    const QString before = grid_text(m_columns, m_rows);
    const QString after = grid_text(
        ResampleCommand::resampled(m_columns, m_factor), ResampleCommand::resampled(m_rows, m_factor));
    QString text = tr("%1 cells become %2.").arg(before, after);
    if (has_size()) {
        text += '\n'
            + tr("Each one measures %1 × %2 %3.")
                  .arg(size_text(m_cell.width * m_factor), size_text(m_cell.height * m_factor), m_cell.unit);
    }
    say(text, true);
}

} // namespace terrain
