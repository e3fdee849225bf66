#include <tarqa/testkit/DialogDriver.h>

#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>

#include <utility>

namespace tarqa::housekeeping::testkit {

namespace {

const int s_poll_interval = 5; // ms
const int s_patience = 600; // polls after which an answered dialog that is still there counts as stuck

QLineEdit* file_name_edit(const QFileDialog& dialog)
{
    return dialog.findChild<QLineEdit*>("fileNameEdit");
}

std::string title_of(const QDialog& dialog)
{
    return "the dialog \"" + dialog.windowTitle().toStdString() + '"';
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
    if (const auto* p_input = qobject_cast<const QInputDialog*>(&dialog)) {
        shown.text = p_input->labelText();
    }
    if (const auto* p_files = qobject_cast<const QFileDialog*>(&dialog)) {
        const QLineEdit* p_edit = file_name_edit(*p_files);
        shown.file = p_edit ? p_edit->text() : QString();
        shown.filters = p_files->nameFilters();
        shown.saves = p_files->acceptMode() == QFileDialog::AcceptSave;
    }
    return shown;
}

void press_escape(QDialog& dialog)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        const QPointer<QDialog> alive = &dialog;
        QKeyEvent event(type, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&dialog, &event);
        if (!alive) {
            return;
        }
    }
}

} // namespace

DialogDriver::DialogDriver()
{
    poll_soon();
}

DialogDriver::~DialogDriver() = default;

DialogDriver& DialogDriver::click(QMessageBox::StandardButton button)
{
    return answer([this, button](QDialog& dialog) { click_button(dialog, button); });
}

DialogDriver& DialogDriver::choose_file(const QString& file)
{
    return answer([this, file](QDialog& dialog) { enter_file(dialog, file); });
}

DialogDriver& DialogDriver::enter(const QString& text)
{
    return answer([this, text](QDialog& dialog) { enter_value(dialog, text); });
}

DialogDriver& DialogDriver::cancel()
{
    return answer(&press_escape);
}

DialogDriver& DialogDriver::answer(Answer answer)
{
    m_script.push_back(std::move(answer));
    return *this;
}

std::vector<std::string> DialogDriver::problems() const
{
    std::vector<std::string> problems = m_problems;
    if (!m_script.empty()) {
        problems.push_back(std::to_string(pending()) + " dialog(s) that were to be answered did not appear");
    }
    return problems;
}

void DialogDriver::problem(const std::string& text)
{
    m_problems.push_back(text);
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
        reject(*p_dialog, title_of(*p_dialog) + " did not close");
    }
}

void DialogDriver::answer_next(QDialog& dialog)
{
    m_shown.push_back(describe(dialog));
    m_answered.push_back({&dialog, 0});
    if (m_script.empty()) {
        reject(dialog,
            "unexpected dialog \"" + dialog.windowTitle().toStdString()
                + "\": " + m_shown.back().text.toStdString());
    } else {
        const Answer answer = m_script.front();
        m_script.pop_front();
        answer(dialog);
    }
    forget_closed(); // the same object may be shown again
}

void DialogDriver::reject(QDialog& dialog, const std::string& text)
{
    problem(text);
    dialog.done(QDialog::Rejected);
}

void DialogDriver::click_button(QDialog& dialog, QMessageBox::StandardButton button)
{
    auto* p_box = qobject_cast<QMessageBox*>(&dialog);
    QAbstractButton* p_button = p_box ? p_box->button(button) : nullptr;
    if (!p_button) {
        reject(dialog, title_of(dialog) + " has no button " + std::to_string(button));
        return;
    }
    p_button->click();
}

void DialogDriver::enter_file(QDialog& dialog, const QString& file)
{
    auto* p_files = qobject_cast<QFileDialog*>(&dialog);
    QLineEdit* p_edit = p_files ? file_name_edit(*p_files) : nullptr;
    if (!p_edit) {
        reject(dialog, title_of(dialog) + " asks for no file");
        return;
    }
    // A proposed file that exists is selected, and counts before the text while the text has no focus.
    for (QAbstractItemView* const p_view : dialog.findChildren<QAbstractItemView*>()) {
        p_view->clearSelection();
    }
    p_edit->setText(file);
    dialog.accept();
}

void DialogDriver::enter_value(QDialog& dialog, const QString& text)
{
    auto* p_input = qobject_cast<QInputDialog*>(&dialog);
    if (!p_input) {
        reject(dialog, title_of(dialog) + " asks for no text");
        return;
    }
    switch (p_input->inputMode()) {
    case QInputDialog::TextInput:
        p_input->setTextValue(text);
        break;
    case QInputDialog::IntInput:
        p_input->setIntValue(text.toInt());
        break;
    case QInputDialog::DoubleInput:
        p_input->setDoubleValue(text.toDouble());
        break;
    }
    dialog.accept();
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

} // namespace tarqa::housekeeping::testkit
