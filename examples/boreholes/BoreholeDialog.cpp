#include "BoreholeDialog.h"

#include "BoreholesController.h"

#include <QtCore/QObject>
#include <QtWidgets/QDialog>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace boreholes {

namespace {

const double s_farthest = 1e7; ///< metres; no place on the Earth is farther
const double s_deepest = 15000; ///< metres
const double s_usual_depth = 100; ///< metres

QDoubleSpinBox* length_box(const BoreholesController& controller, double least, double most, double metres)
{
    auto* const p_box = new QDoubleSpinBox;
    p_box->setDecimals(2);
    p_box->setRange(controller.in_unit(least), controller.in_unit(most));
    p_box->setSuffix(' ' + controller.unit_text());
    p_box->setValue(controller.in_unit(metres));
    return p_box;
}

} // namespace

std::optional<Borehole> ask_for_borehole(
    const BoreholesController& controller, const QPointF& place, QWidget* p_parent)
{
    QDialog dialog(p_parent);
    dialog.setWindowTitle(QObject::tr("Add Borehole"));
    auto* const p_name = new QLineEdit(QObject::tr("Borehole %1").arg(controller.boreholes().size() + 1));
    QDoubleSpinBox* const p_x = length_box(controller, -s_farthest, s_farthest, place.x());
    QDoubleSpinBox* const p_y = length_box(controller, -s_farthest, s_farthest, place.y());
    QDoubleSpinBox* const p_depth = length_box(controller, 0, s_deepest, s_usual_depth);
    auto* const p_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QPushButton* const p_ok = p_buttons->button(QDialogButtonBox::Ok);

    auto* const p_form = new QFormLayout(&dialog);
    p_form->addRow(QObject::tr("&Name:"), p_name);
    p_form->addRow(QObject::tr("&East:"), p_x);
    p_form->addRow(QObject::tr("N&orth:"), p_y);
    p_form->addRow(QObject::tr("&Depth:"), p_depth);
    p_form->addRow(p_buttons);
    QObject::connect(p_buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(p_buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(p_name, &QLineEdit::textChanged, p_ok,
        [p_ok](const QString& name) { p_ok->setEnabled(!name.trimmed().isEmpty()); });

    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return Borehole{p_name->text().trimmed(), controller.in_metres(p_x->value()),
        controller.in_metres(p_y->value()), controller.in_metres(p_depth->value())};
}

} // namespace boreholes
