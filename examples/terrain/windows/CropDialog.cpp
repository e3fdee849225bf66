#include "windows/CropDialog.h"

#include "windows/Icons.h"

#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QPushButton>

namespace terrain {

namespace {

std::vector<Parameter> parameters(const Raster& raster)
{
    const double last_column = std::max(raster.columns, 1) - 1;
    const double last_row = std::max(raster.rows, 1) - 1;
    return {{CropDialog::tr("&First column:"), 0, 0, last_column, 0, QString()},
        {CropDialog::tr("&Last column:"), last_column, 0, last_column, 0, QString()},
        {CropDialog::tr("First &row:"), 0, 0, last_row, 0, QString()},
        {CropDialog::tr("Last ro&w:"), last_row, 0, last_row, 0, QString()}};
}

} // namespace

CropDialog::CropDialog(const Raster& raster, QWidget* p_parent)
    : ParameterDialog(tr("Crop"), Topic::Crop, parameters(raster), p_parent)
    , m_columns(raster.columns)
    , m_rows(raster.rows)
    , m_data(range_of_data(raster))
{
    auto* const p_button = new QPushButton(icon("fit"), tr("Crop to &data"));
    p_button->setEnabled(m_data.has_value());
    add_button(p_button);
    connect(p_button, &QPushButton::clicked, this, [this] { range(*m_data); });
    connect(this, &CropDialog::changed, this, &CropDialog::show_result);
    show_result();
}

CellRange CropDialog::range() const
{
    const auto place = [this](std::size_t parameter) { return static_cast<int>(value(parameter)); };
    return {place(0), place(1), place(2), place(3)};
}

void CropDialog::range(const CellRange& range)
{
    number(0).setValue(range.first_column);
    number(1).setValue(range.last_column);
    number(2).setValue(range.first_row);
    number(3).setValue(range.last_row);
}

void CropDialog::show_result()
{
    const QString objection = CropCommand::objection(range(), m_columns, m_rows);
    QString text = objection.isEmpty()
        ? tr("%1 × %2 of %3 × %4 cells are kept.")
              .arg(QString::number(range().columns()), QString::number(range().rows()),
                  QString::number(m_columns), QString::number(m_rows))
        : objection + '.';
    if (!m_data) {
        text += '\n' + tr("No cell has data.");
    }
    say(text, objection.isEmpty());
}

} // namespace terrain
