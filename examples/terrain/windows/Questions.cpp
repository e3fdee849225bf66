#include "windows/Questions.h"

#include <tarqa/housekeeping/ErrorHandler.h>

#include <QtCore/QObject>
#include <QtWidgets/QFileDialog>

namespace terrain {

QStringList ask_for_rasters(QWidget* p_parent)
{
    return QFileDialog::getOpenFileNames(p_parent, QObject::tr("Open"), QString(),
        QObject::tr("Rasters (*.tif *.tiff *.asc *.vrt *.img *.hgt);;All files (*)"));
}

QString ask_for_export_file(QWidget* p_parent)
{
    QFileDialog dialog(p_parent, QObject::tr("Export"), QString(), QObject::tr("GeoTIFF (*.tif *.tiff)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("tif");
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QMessageBox::StandardButton ask_about_changes(QWidget* p_parent, const QString& document)
{
    return QMessageBox::question(p_parent, QObject::tr("Close"),
        QObject::tr("\"%1\" has changes that are not written to a file.").arg(document),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
}

void say_that_it_is_busy(const QString& title, const QString& text)
{
    tarqa::housekeeping::ErrorHandler::instance().message(
        title.toStdString(), text.toStdString(), QMessageBox::Ok);
}

} // namespace terrain
