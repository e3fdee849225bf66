#include "support/DialogDriver.h"

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>

#include <gtest/gtest.h>

namespace support {

namespace {

const int s_poll_interval = 5; // ms
const int s_patience = 600; // polls after which an answered dialog that is still there counts as stuck

QLineEdit* file_name_edit(const QFileDialog& dialog)
{
    return dialog.findChild<QLineEdit*>("fileNameEdit");
}

ShownDialog describe(const QDialog& dialog)
{
    ShownDialog shown;
    shown.class_name = dialog.metaObject()->className();
    shown.title = dialog.windowTitle();
    shown.parent = dialog.parentWidget();
    if (const auto* p_box = qobject_cast<const QMessageBox*>(&dialog)) {
        shown.text = p_box->text();
        shown.icon = p_box->icon();
        shown.buttons = p_box->standardButtons();
    }
    if (const auto* p_files = qobject_cast<const QFileDialog*>(&dialog)) {
        const QLineEdit* p_edit = file_name_edit(*p_files);
        shown.file = p_edit ? p_edit->text() : QString();
        shown.filters = p_files->nameFilters();
        shown.saves = p_files->acceptMode() == QFileDialog::AcceptSave;
    }
    return shown;
}

void click_button(QDialog& dialog, QMessageBox::StandardButton button)
{
    auto* p_box = qobject_cast<QMessageBox*>(&dialog);
    QAbstractButton* p_button = p_box ? p_box->button(button) : nullptr;
    if (!p_button) {
        ADD_FAILURE() << "the dialog \"" << dialog.windowTitle().toStdString() << "\" has no button "
                      << button;
        dialog.done(QDialog::Rejected);
        return;
    }
    p_button->click();
}

void enter_file(QDialog& dialog, const QString& file)
{
    auto* p_files = qobject_cast<QFileDialog*>(&dialog);
    QLineEdit* p_edit = p_files ? file_name_edit(*p_files) : nullptr;
    if (!p_edit) {
        ADD_FAILURE() << "the dialog \"" << dialog.windowTitle().toStdString() << "\" asks for no file";
        dialog.done(QDialog::Rejected);
        return;
    }
    // A proposed file that exists is selected, and counts before the text while the text has no focus.
    for (QAbstractItemView* const p_view : dialog.findChildren<QAbstractItemView*>()) {
        p_view->clearSelection();
    }
    p_edit->setText(file);
    dialog.accept();
}

} // namespace

DialogDriver::DialogDriver()
{
    poll_soon();
}

DialogDriver::~DialogDriver()
{
    if (!m_script.empty()) {
        ADD_FAILURE() << m_script.size() << " dialog(s) that were to be answered did not appear";
    }
}

DialogDriver& DialogDriver::click(QMessageBox::StandardButton button)
{
    return answer([button](QDialog& dialog) { click_button(dialog, button); });
}

DialogDriver& DialogDriver::choose_file(const QString& file)
{
    return answer([file](QDialog& dialog) { enter_file(dialog, file); });
}

DialogDriver& DialogDriver::cancel()
{
    return answer([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
}

DialogDriver& DialogDriver::answer(Answer answer)
{
    m_script.push_back(std::move(answer));
    return *this;
}

void DialogDriver::poll_soon()
{
    // A new shot each time: a timer does not fire again while its slot runs, and an answer may open the next
    // dialog.
    QTimer::singleShot(s_poll_interval, this, [this] { poll(); });
}

void DialogDriver::poll()
{
    poll_soon();
    forget_closed();
    auto* p_dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!p_dialog || !p_dialog->isVisible()) {
        return;
    }
    Answered* p_answered = find_answered(p_dialog);
    if (!p_answered) {
        answer_next(*p_dialog);
        return;
    }
    if (++p_answered->polls > s_patience) {
        ADD_FAILURE() << "the dialog \"" << p_dialog->windowTitle().toStdString() << "\" did not close";
        p_dialog->done(QDialog::Rejected);
    }
}

void DialogDriver::answer_next(QDialog& dialog)
{
    m_shown.push_back(describe(dialog));
    m_answered.push_back({&dialog, 0});
    if (m_script.empty()) {
        ADD_FAILURE() << "unexpected dialog \"" << dialog.windowTitle().toStdString()
                      << "\": " << m_shown.back().text.toStdString();
        dialog.done(QDialog::Rejected);
    } else {
        const Answer answer = m_script.front();
        m_script.pop_front();
        answer(dialog);
    }
    forget_closed(); // the same object may be shown again
}

DialogDriver::Answered* DialogDriver::find_answered(QDialog* p_dialog)
{
    for (Answered& answered : m_answered) {
        if (answered.dialog == p_dialog) {
            return &answered;
        }
    }
    return nullptr;
}

void DialogDriver::forget_closed()
{
    m_answered.remove_if(
        [](const Answered& answered) { return !answered.dialog || !answered.dialog->isVisible(); });
}

} // namespace support
