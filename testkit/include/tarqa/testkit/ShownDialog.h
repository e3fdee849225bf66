#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtWidgets/QMessageBox>

namespace tarqa::housekeeping::testkit {

/// What a modal dialog looked like when it appeared; see DialogDriver. A value.
struct ShownDialog
{
    QString class_name; ///< for example "QMessageBox"
    QString title; ///< of its window
    QWidget* parent = nullptr; ///< may be gone by now

    // Message boxes
    QString text; ///< for input dialogs their label
    QMessageBox::Icon icon = QMessageBox::NoIcon; ///< beside the text
    QMessageBox::StandardButtons buttons = QMessageBox::NoButton; ///< that can be chosen

    // File dialogs
    QString file; ///< the proposed file name, as it stands in the dialog
    QStringList filters; ///< of names, as the dialog offers them
    bool saves = false; ///< asks for a file to write
};

} // namespace tarqa::housekeeping::testkit
