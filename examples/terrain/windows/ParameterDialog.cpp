#include "windows/ParameterDialog.h"

#include <pkBaseQt/QFinalPolish.h>
#include <pkBaseQt/QPKHelpButton.h>

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>

namespace terrain {

ParameterDialog::ParameterDialog(
    const QString& title, Topic topic, const std::vector<Parameter>& parameters, QWidget* p_parent)
    : QDialog(p_parent)
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false); // there is a button that does more
    auto* const p_form = new QFormLayout(this);
    for (const Parameter& parameter : parameters) {
        auto* const p_number = new QDoubleSpinBox;
        p_number->setDecimals(parameter.decimals);
        p_number->setRange(parameter.lowest, parameter.highest);
        p_number->setValue(parameter.value);
        p_number->setSuffix(parameter.unit.isEmpty() ? QString() : ' ' + parameter.unit);
        p_form->addRow(parameter.label, p_number);
        m_numbers.push_back(p_number);
    }
    auto* const p_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* const p_help = new pkBase::QPKHelpButton(help_key(topic));
    p_help->setShortcut(QKeySequence::HelpContents);
    p_help->setAutoDefault(false);
    p_buttons->addButton(p_help, QDialogButtonBox::HelpRole);
    p_form->addRow(p_buttons);
    connect(p_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(p_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pkBase::QFinalPolish::apply(this);
    m_numbers.front()->selectAll();
}

double ParameterDialog::value(std::size_t parameter) const
{
    return m_numbers.at(parameter)->value();
}

} // namespace terrain
