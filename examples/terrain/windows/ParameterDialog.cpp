#include "windows/ParameterDialog.h"

#include <pkBaseQt/QFinalPolish.h>
#include <pkBaseQt/QPKHelpButton.h>

#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

namespace terrain {

Parameter::Parameter(const QString& its_label, double its_value, double its_lowest, double its_highest,
    int its_decimals, const QString& its_unit)
    : label(its_label)
    , value(its_value)
    , lowest(its_lowest)
    , highest(its_highest)
    , decimals(its_decimals)
    , unit(its_unit)
{ }

Parameter::Parameter(const QString& its_label, const QStringList& its_choices, int chosen)
    : label(its_label)
    , value(chosen)
    , lowest(0)
    , highest(its_choices.size() - 1)
    , choices(its_choices)
{ }

ParameterDialog::ParameterDialog(
    const QString& title, Topic topic, const std::vector<Parameter>& parameters, QWidget* p_parent)
    : QDialog(p_parent)
    , m_p_form(new QFormLayout(this))
    , m_p_note(new QLabel)
    , m_p_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false); // there is a button that does more
    for (const Parameter& parameter : parameters) {
        QWidget* const p_input
            = parameter.choices.isEmpty() ? make_number(parameter) : make_choice(parameter);
        m_p_form->addRow(parameter.label, p_input);
        m_inputs.push_back(p_input);
    }
    m_p_note->setObjectName("note");
    m_p_note->setTextFormat(Qt::PlainText);
    m_p_note->hide();
    m_p_form->addRow(m_p_note);
    auto* const p_help = new pkBase::QPKHelpButton(help_key(topic));
    p_help->setShortcut(QKeySequence::HelpContents);
    p_help->setAutoDefault(false);
    m_p_buttons->addButton(p_help, QDialogButtonBox::HelpRole);
    m_p_form->addRow(m_p_buttons);
    connect(m_p_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_p_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pkBase::QFinalPolish::apply(this);
    if (auto* const p_first = qobject_cast<QDoubleSpinBox*>(m_inputs.front())) {
        p_first->selectAll();
    }
}

double ParameterDialog::value(std::size_t parameter) const
{
    return number(parameter).value();
}

int ParameterDialog::choice(std::size_t parameter) const
{
    return qobject_cast<const QComboBox*>(m_inputs.at(parameter))->currentIndex();
}

QDoubleSpinBox& ParameterDialog::number(std::size_t parameter) const
{
    return *qobject_cast<QDoubleSpinBox*>(m_inputs.at(parameter));
}

QWidget* ParameterDialog::make_number(const Parameter& parameter)
{
    auto* const p_number = new QDoubleSpinBox;
    p_number->setDecimals(parameter.decimals);
    p_number->setRange(parameter.lowest, parameter.highest);
    p_number->setValue(parameter.value);
    p_number->setSuffix(parameter.unit.isEmpty() ? QString() : ' ' + parameter.unit);
    connect(p_number, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &ParameterDialog::changed);
    return p_number;
}

QWidget* ParameterDialog::make_choice(const Parameter& parameter)
{
    auto* const p_choice = new QComboBox;
    p_choice->addItems(parameter.choices);
    p_choice->setCurrentIndex(static_cast<int>(parameter.value));
    connect(p_choice, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ParameterDialog::changed);
    return p_choice;
}

void ParameterDialog::add_button(QPushButton* p_button)
{
    p_button->setAutoDefault(false); // Enter is for running the command
    m_p_form->insertRow(static_cast<int>(m_inputs.size()), QString(), p_button);
    setTabOrder(m_inputs.back(), p_button);
}

void ParameterDialog::say(const QString& text, bool may_run)
{
    m_p_note->setText(text);
    m_p_note->show();
    m_p_buttons->button(QDialogButtonBox::Ok)->setEnabled(may_run);
}

} // namespace terrain
