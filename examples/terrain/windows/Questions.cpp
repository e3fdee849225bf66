#include "windows/Questions.h"

#include "documents/ExportTerrain.h"
#include "windows/ParameterDialog.h"

#include <tarqa/housekeeping/ErrorHandler.h>

#include <QtCore/QObject>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QFileDialog>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_largest_interval = 1e9;
const int s_most_decimals = 12;

QString filter_of(const ExportFormatEntry& entry)
{
    return QObject::tr("%1 (%2)").arg(entry.name, "*." + entry.extensions.join(" *."));
}

/// Asks for a file to write in one of some formats. @param proposed "" for none
QString ask_for_file(QWidget* p_parent, const QString& title, const std::vector<ExportFormatEntry>& formats,
    const QString& proposed)
{
    QStringList filters;
    for (const ExportFormatEntry& entry : formats) {
        filters.append(filter_of(entry));
    }
    QFileDialog dialog(p_parent, title, QString(), filters.join(";;"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(formats.front().extensions.first());
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        dialog.setDefaultSuffix(
            formats[static_cast<std::size_t>(filters.indexOf(filter))].extensions.first());
    });
    if (!proposed.isEmpty()) {
        dialog.selectFile(proposed);
    }
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

QStringList ask_for_rasters(QWidget* p_parent)
{
    return QFileDialog::getOpenFileNames(p_parent, QObject::tr("Open"), QString(),
        QObject::tr("Rasters (*.tif *.tiff *.asc *.vrt *.img *.hgt);;All files (*)"));
}

QString ask_for_export_file(QWidget* p_parent, bool has_mesh)
{
    std::vector<ExportFormatEntry> formats;
    for (const ExportFormatEntry& entry : export_formats()) {
        if (has_mesh || entry.format != ExportFormat::Mesh) {
            formats.push_back(entry);
        }
    }
    return ask_for_file(p_parent, QObject::tr("Export"), formats, QString());
}

QString ask_for_file_to_save(QWidget* p_parent, const QString& proposed)
{
    return ask_for_file(p_parent, QObject::tr("Save As"), {export_formats().front()}, proposed);
}

std::optional<double> ask_for_interval(QWidget* p_parent, double proposed, const QString& unit)
{
    // So many that the proposal and a tenth of it can be told.
    const int decimals
        = std::clamp(1 - static_cast<int>(std::floor(std::log10(proposed))), 1, s_most_decimals);
    ParameterDialog dialog(QObject::tr("Contour Lines"), Topic::Files,
        {{QObject::tr("&Interval:"), proposed, std::pow(10, -decimals), s_largest_interval, decimals, unit}},
        p_parent);
    return dialog.exec() == QDialog::Accepted ? std::optional<double>(dialog.value(0)) : std::nullopt;
}

QMessageBox::StandardButton ask_about_changes(QWidget* p_parent, const QString& document)
{
    QMessageBox box(QMessageBox::Question, QObject::tr("Close"),
        QObject::tr("\"%1\" has changes that are not written to a file.").arg(document),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, p_parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::Save);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

QMessageBox::StandardButton ask_about_own_file(QWidget* p_parent, const QString& reason)
{
    QMessageBox box(QMessageBox::Question, QObject::tr("Save"), reason,
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, p_parent);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Yes)->setText(QObject::tr("&Write This File"));
    box.button(QMessageBox::No)->setText(QObject::tr("Save &As…"));
    box.setDefaultButton(QMessageBox::No);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

bool ask_for_overview(QWidget* p_parent, const QString& reason, int reduction)
{
    QMessageBox box(QMessageBox::Question, QObject::tr("Open"),
        QObject::tr(
            "%1.\n\nAn overview has one cell for %2 x %2 of the raster. It can be looked at and changed as "
            "any other, and saved to another file.")
            .arg(reason, QString::number(reduction)),
        QMessageBox::Open | QMessageBox::Cancel, p_parent);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Open)->setText(QObject::tr("&Open Overview"));
    return box.exec() == QMessageBox::Open;
}

void say_that_it_is_busy(const QString& title, const QString& text)
{
    tarqa::housekeeping::ErrorHandler::instance().message(
        title.toStdString(), text.toStdString(), QMessageBox::Ok);
}

} // namespace terrain
