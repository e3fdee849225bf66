#include "BoxAnswers.h"

#include <tarqa/housekeeping/ErrorHandler.h>

#include <QtWidgets/QAbstractButton>

namespace tarqa::housekeeping::testkit {

BoxAnswers::BoxAnswers(QMessageBox::StandardButton answer)
    : m_answer(answer)
{
    answer_next();
    ErrorHandler::show_dialogs(true);
}

BoxAnswers::~BoxAnswers()
{
    ErrorHandler::show_dialogs(false);
}

/// Nobody knows how many boxes there will be: each answer is followed by another one.
void BoxAnswers::answer_next()
{
    m_driver.answer([this](QDialog& dialog) {
        answer_next();
        answer(dialog);
    });
}

void BoxAnswers::answer(QDialog& dialog)
{
    auto* const p_box = qobject_cast<QMessageBox*>(&dialog);
    const bool is_question = p_box && p_box->button(QMessageBox::YesToAll) && p_box->button(m_answer);
    m_questions += is_question ? 1 : 0;
    for (const QMessageBox::StandardButton choice : {m_answer, QMessageBox::Ok, QMessageBox::No}) {
        QAbstractButton* const p_button = p_box ? p_box->button(choice) : nullptr;
        if (p_button && (is_question || choice != m_answer)) {
            p_button->click();
            return;
        }
    }
    dialog.done(QDialog::Rejected);
}

} // namespace tarqa::housekeeping::testkit
