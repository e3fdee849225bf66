#include "Notice.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

namespace tarqa::housekeeping::gui {

namespace {

/// There is one, so that what is asked for again and again does not pile up.
QPointer<QMessageBox>& box()
{
    static QPointer<QMessageBox> s_p_box;
    return s_p_box;
}

} // namespace

void show_notice(const QString& title, const QString& text, QWidget* p_parent)
{
    ErrorProtocol::instance().log_message(text.toStdString());
    if (!ErrorHandler::instance().may_show_dialogs()) {
        return;
    }
    delete box().data();
    box() = new QMessageBox(QMessageBox::Information, title, text, QMessageBox::Ok,
        p_parent ? p_parent : QApplication::activeWindow());
    box()->setAttribute(Qt::WA_DeleteOnClose);
    box()->setAttribute(Qt::WA_QuitOnClose, false); // it keeps no program running
    box()->setTextFormat(Qt::PlainText);
    box()->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box()->setModal(false);
    box()->show();
}

} // namespace tarqa::housekeeping::gui
