#include "ModalBox.h"

#include <QtCore/QPointer>
#include <QtWidgets/QFileDialog>

namespace tarqa::housekeeping::modal_box {

QMessageBox::StandardButton ask(QWidget* p_parent, QMessageBox::Icon icon, const QString& title,
    const QString& text, QMessageBox::StandardButtons buttons)
{
    const QPointer<QMessageBox> p_box = new QMessageBox(icon, title, text, buttons, p_parent);
    p_box->setTextFormat(Qt::PlainText); // titles and exceptions may look like HTML
    p_box->exec();
    if (!p_box) {
        return QMessageBox::NoButton;
    }
    const QMessageBox::StandardButton answer = p_box->standardButton(p_box->clickedButton());
    delete p_box;
    return answer;
}

QString ask_for_file(QWidget* p_parent, const QString& title, const QString& proposal, const QString& filter)
{
    const QPointer<QFileDialog> p_dialog = new QFileDialog(p_parent, title, QString(), filter);
    p_dialog->setAcceptMode(QFileDialog::AcceptSave);
    p_dialog->setFileMode(QFileDialog::AnyFile);
    p_dialog->setSupportedSchemes({"file"});
    p_dialog->selectFile(proposal);
    const bool is_accepted = p_dialog->exec() == QDialog::Accepted;
    if (!p_dialog) {
        return QString();
    }
    const QString file = is_accepted ? p_dialog->selectedFiles().value(0) : QString();
    delete p_dialog;
    return file;
}

} // namespace tarqa::housekeeping::modal_box
