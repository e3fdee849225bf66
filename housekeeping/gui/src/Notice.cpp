#include "Notice.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

namespace tarqa::housekeeping::gui {

void show_notice(const QString& title, const QString& text, QWidget* p_parent)
{
    ErrorProtocol::instance().log_message(text.toStdString());
    auto* const p_box = new QMessageBox(QMessageBox::Information, title, text, QMessageBox::Ok,
        p_parent ? p_parent : QApplication::activeWindow());
    p_box->setAttribute(Qt::WA_DeleteOnClose);
    p_box->setAttribute(Qt::WA_QuitOnClose, false); // it keeps no program running
    p_box->setTextInteractionFlags(Qt::TextBrowserInteraction);
    p_box->setTextFormat(Qt::PlainText);
    p_box->setModal(false);
    p_box->show();
}

} // namespace tarqa::housekeeping::gui
