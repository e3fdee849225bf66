#include "tour/FileSteps.h"

#include "documents/RasterSummary.h"
#include "help/Bindings.h"
#include "io/RasterReader.h"
#include "tour/CommandSteps.h"
#include "tour/TourLooks.h"
#include "windows/MainWindow.h"

#include <pkBaseQt/QLogFileViewer.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const char* const s_saved = "saved.tif";
const char* const s_raster_copies[] = {"copy.tif", "copy.asc"};
const char* const s_other_copies[] = {"contours.gpkg", "triangles.ply"};

/// Names a file of the tour's own folder, if the dialog asks for one.
void name_file(const TourStage& stage, QDialog& dialog, const QString& name)
{
    auto* const p_dialog = qobject_cast<QFileDialog*>(&dialog);
    if (!p_dialog) {
        return;
    }
    p_dialog->setDirectory(stage.samples.path());
    if (auto* const p_name = dialog.findChild<QLineEdit*>("fileNameEdit")) {
        p_name->setText(name);
    }
}

TourCheck file_is_there(const TourStage& stage, const QString& name)
{
    const QFileInfo file(stage.samples.filePath(name));
    return {QObject::tr("\"%1\" has %2 bytes").arg(name).arg(file.size()), file.size() > 0};
}

/// Whether a file holds the cells as they are in the window.
TourCheck file_holds_cells(const TourStage& stage, const QString& name)
{
    const QFileInfo file(stage.samples.filePath(name));
    const QString text = QObject::tr("\"%1\" holds the heights exactly").arg(name);
    return {text, file.exists() && checksum(read_raster(file.filePath().toStdString())) == stage.cells};
}

} // namespace

void save_as(TourStage& stage)
{
    stage.cells = current_cells();
    stage.window.action(Deed::SaveAs).trigger();
}

void name_saved_file(TourStage& stage, QDialog& dialog)
{
    name_file(stage, dialog, s_saved);
}

std::vector<TourCheck> see_file_dialog(TourStage& stage)
{
    const auto* const p_dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    stage.own_window = QApplication::activeModalWidget();
    if (!p_dialog) {
        return {{QObject::tr("there is a dialog for the file"), false}};
    }
    const QString file = QFileInfo(p_dialog->selectedFiles().value(0)).fileName();
    return {{QObject::tr("the dialog is shown"), p_dialog->isVisible()},
        is_text(QObject::tr("the file"), file, s_saved)};
}

void wait_for_saving(TourStage&) { }

std::vector<TourCheck> see_saved(TourStage& stage)
{
    return {file_holds_cells(stage, s_saved), title_names(stage.window, s_saved),
        {QObject::tr("the title says that there are no changes"), !stage.window.isWindowModified()}};
}

void export_files(TourStage& stage)
{
    stage.exports.clear();
    for (const char* const name : s_raster_copies) {
        stage.exports.append(name);
    }
    for (const char* const name : s_other_copies) {
        stage.exports.append(name);
    }
    for (int i = stage.exports.size(); i > 0; --i) {
        stage.window.action(Deed::Export).trigger();
    }
}

void name_exported_file(TourStage& stage, QDialog& dialog)
{
    if (qobject_cast<QFileDialog*>(&dialog)) { // the other one asks for the interval, which stays
        name_file(stage, dialog, stage.exports.takeFirst());
    }
}

std::vector<TourCheck> see_exported(TourStage& stage)
{
    Checks checks;
    for (const char* const name : s_raster_copies) {
        checks.push_back(file_holds_cells(stage, name));
    }
    for (const char* const name : s_other_copies) {
        checks.push_back(file_is_there(stage, name));
    }
    return checks;
}

void close_with_changes(TourStage& stage)
{
    pkBase::QLogFileViewer::instance().close();
    clean_up(stage);
    stage.window.action(Deed::Close).trigger();
}

std::vector<TourCheck> see_question(TourStage& stage)
{
    const auto* const p_box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!p_box) {
        return {{QObject::tr("there is a question"), false}};
    }
    return {{QObject::tr("the question \"%1\" names the file").arg(p_box->text()),
                p_box->isVisible() && p_box->text().contains(QFileInfo(s_saved).completeBaseName())},
        {QObject::tr("the title says that there are changes"), stage.window.isWindowModified()},
        document_count_is(2)};
}

} // namespace terrain
