#include "windows/DocumentFiles.h"

#include "documents/ExportTerrain.h"
#include "documents/OpenTerrain.h"
#include "documents/TerrainDocument.h"
#include "windows/Questions.h"
#include "windows/WaitCursor.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/utilities/Exception.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QWidget>

#include <boost/make_shared.hpp>

#include <utility>

namespace terrain {

namespace {

housekeeping::DocumentManager& documents()
{
    return housekeeping::DocumentManager::instance();
}

TerrainDocument& current_document()
{
    return dynamic_cast<TerrainDocument&>(documents().current_document());
}

/// Does @p work, which takes a while. What goes wrong is shown in a box. @return whether all went well
template <class Work>
bool done(const QString& title, Work work)
{
    housekeeping::ErrorHandler& errors = housekeeping::ErrorHandler::instance();
    try {
        const WaitCursor cursor;
        work();
        return true;
    } catch (const tarqa::Exception& exception) {
        errors.message(title.toStdString(), exception, QMessageBox::Ok);
    } catch (const std::exception& exception) {
        errors.message(title.toStdString(), exception, QMessageBox::Ok);
    }
    return false;
}

/// The same file under a name without "./" and "../", so that it is not listed twice. What is no file stays
/// as it is, and so does a name whose "../" leads out of a linked folder.
QString tidied(const QString& path)
{
    const QString file = QFileInfo(path).canonicalFilePath();
    const QString tidy = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    return !file.isEmpty() && QFileInfo(tidy).canonicalFilePath() == file ? tidy : path;
}

/// Where a raster was written to, to be read as the document was.
boost::shared_ptr<housekeeping::DataSource> source_at(const QString& path, const TerrainDocument& document)
{
    const auto sp_original = document.datasource();
    if (!sp_original) {
        return {};
    }
    const auto sp_source = boost::make_shared<housekeeping::DataSource>(
        tarqa::utilities::filesystem_to_url(tidied(path).toStdString()), sp_original->data_information());
    sp_source->z_units(sp_original->z_units());
    sp_source->z_sign(sp_original->z_sign());
    return sp_source;
}

} // namespace

DocumentFiles::DocumentFiles(QWidget* p_window, std::function<void(const TerrainDocument&)> show)
    : QObject(p_window)
    , m_p_window(p_window)
    , m_show(std::move(show))
{ }

bool DocumentFiles::open(const QString& path)
{
    return done(tr("Open"), [this, &path] {
        const std::string file = tidied(path).toStdString();
        TerrainDocument& document = open_terrain(file);
        try {
            m_show(document);
        } catch (...) {
            // A document that nobody sees could never be closed.
            documents().destroy_document(document.id(), true, false, false, housekeeping::DocumentId::null());
            throw;
        }
        log_opened(document, file);
        m_recent.add(document.datasource());
    });
}

void DocumentFiles::open(const QStringList& paths)
{
    for (const QString& path : paths) {
        open(path);
    }
}

bool DocumentFiles::write_export(const QString& path)
{
    if (!is_export_name(path.toStdString())) {
        housekeeping::ErrorHandler::instance().message(tr("Export").toStdString(),
            tr("\"%1\" is not written: the name must end in \".tif\"").arg(path).toStdString(),
            QMessageBox::Ok);
        return false;
    }
    if (!done(tr("Export"), [&path] { export_terrain(current_document(), path.toStdString()); })) {
        return false;
    }
    current_document().set_modified(false);
    m_recent.add(source_at(path, current_document()));
    emit written(path);
    return true;
}

void DocumentFiles::ask_and_open()
{
    open(ask_for_rasters(m_p_window));
}

bool DocumentFiles::ask_and_export()
{
    if (!current_document_is_free(tr("Export"))) {
        return false;
    }
    const QString file = ask_for_export_file(m_p_window);
    return !file.isEmpty() && write_export(file);
}

void DocumentFiles::close_current()
{
    const housekeeping::DocumentId id = documents().current_document_id();
    if (current_document_is_free(tr("Close")) && may_lose(id)) {
        documents().destroy_document(id, false, false, false, housekeeping::DocumentId::null());
    }
}

/// Whether there is a current document that no command is running on; says so if one is.
bool DocumentFiles::current_document_is_free(const QString& title)
{
    const housekeeping::DocumentId id = documents().current_document_id();
    if (id == housekeeping::DocumentId::null()) {
        return false;
    }
    if (!documents().document_busy(id)) {
        return true;
    }
    say_that_it_is_busy(title,
        tr("\"%1\" is busy. Wait until the running command has ended, or cancel it.")
            .arg(QString::fromStdString(documents().current_document().title())));
    return false;
}

bool DocumentFiles::may_lose(const housekeeping::DocumentId& id)
{
    const auto& document = dynamic_cast<const TerrainDocument&>(documents().document_from_id(id));
    if (!document.is_modified()) {
        return true;
    }
    documents().current_document(id); // so that people see what they are asked about
    const QMessageBox::StandardButton answer
        = ask_about_changes(m_p_window, QString::fromStdString(document.short_title()));
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && ask_and_export());
}

} // namespace terrain
