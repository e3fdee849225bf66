#pragma once

#include <tarqa/testkit/DialogDriver.h>

#include <QtWidgets/QMessageBox>

namespace tarqa::housekeeping::testkit {

/// While it lives, errors show boxes, and those are answered: a composite's question whether to go on as one
/// is told, any other with Ok or No. Main thread, in a program that may show boxes.
class BoxAnswers
{
public:
    /// @param answer Cancel, Yes or YesToAll
    explicit BoxAnswers(QMessageBox::StandardButton answer);
    ~BoxAnswers();
    BoxAnswers(const BoxAnswers&) = delete;
    BoxAnswers& operator=(const BoxAnswers&) = delete;

    /// How many questions were answered.
    int questions() const { return m_questions; }

private:
    void answer_next();
    void answer(QDialog& dialog);

    QMessageBox::StandardButton m_answer;
    int m_questions = 0;
    DialogDriver m_driver;
};

} // namespace tarqa::housekeeping::testkit
