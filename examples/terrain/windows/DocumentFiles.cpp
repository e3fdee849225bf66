#include "windows/DocumentFiles.h"

#include "documents/ExportTerrain.h"
#include "documents/OpenTerrain.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterMemory.h"
#include "windows/ChangedFiles.h"
#include "windows/Deeds.h"
#include "windows/FileWork.h"
#include "windows/Questions.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/utilities/Exception.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QAction>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QStatusBar>

#include <boost/make_shared.hpp>

#include <utility>

namespace terrain {

namespace {

const int s_message_time = 6000; ///< milliseconds

housekeeping::DocumentManager& documents()
{
    return housekeeping::DocumentManager::instance();
}

TerrainDocument& current_document()
{
    return dynamic_cast<TerrainDocument&>(documents().current_document());
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

/// The extension of files that hold all there is.
bool is_lossless(const QString& path)
{
    return export_format(path.toStdString()) == ExportFormat::GeoTiff;
}

bool is_same_file(const QString& one, const std::string& other)
{
    const QString file = QFileInfo(one).canonicalFilePath();
    return !file.isEmpty() && file == QFileInfo(QString::fromStdString(other)).canonicalFilePath();
}

/// What is proposed for saving a document: a GeoTIFF beside its source that is not there yet.
QString proposed_file(const TerrainDocument& document)
{
    const QDir folder = QFileInfo(QString::fromStdString(document.source_file())).dir();
    const QString kind = document.reduction() > 1 ? QObject::tr("-overview") : QString();
    const QString base = folder.filePath(QString::fromStdString(document.short_title()) + kind);
    QString file = base + ".tif";
    for (int number = 2; QFileInfo::exists(file); ++number) {
        file = QString("%1 %2.tif").arg(base, QString::number(number));
    }
    return file;
}

/// Why people are to be asked before a document is saved to its own file; "" if they are not.
QString reason_to_ask(const TerrainDocument& document)
{
    const QString file = QString::fromStdString(document.own_file());
    const FileStamp now = file_stamp(document.own_file());
    if (!now.exists) {
        return QObject::tr("\"%1\" is gone. Write it again?").arg(file);
    }
    if (now != document.source_stamp()) {
        return QObject::tr("\"%1\" has changed on disk since it was read. Overwrite it all the same?")
            .arg(file);
    }
    if (document.may_overwrite()) {
        return {};
    }
    return QObject::tr("\"%1\" is the file that the raster was read from. Overwrite it with the changed "
                       "raster?\n\nColours, overviews and remarks in the file are not kept.")
        .arg(file);
}

QString name_of(const QString& path)
{
    return QFileInfo(path).fileName();
}

/// A document that commands and closing leave alone while the object lives.
class Reserved
{
public:
    explicit Reserved(const housekeeping::DocumentId& id)
        : m_id(id)
    {
        documents().document_busy(m_id, true);
    }
    ~Reserved() { documents().document_busy(m_id, false); }
    Reserved(const Reserved&) = delete;
    Reserved& operator=(const Reserved&) = delete;

private:
    housekeeping::DocumentId m_id;
};

} // namespace

DocumentFiles::DocumentFiles(QMainWindow* p_window, std::function<void(const TerrainDocument&)> show)
    : QObject(p_window)
    , m_p_window(p_window)
    , m_show(std::move(show))
    , m_p_work(new FileWork(p_window))
    , m_p_changed(new ChangedFiles(p_window))
{
    connect(m_p_changed, &ChangedFiles::reload_asked, this, &DocumentFiles::reload);
}

void DocumentFiles::obey(const Deeds& deeds)
{
    const auto on = [this, &deeds](Deed deed, auto slot) {
        connect(&deeds.action(deed), &QAction::triggered, this, slot);
    };
    on(Deed::Open, [this] { ask_and_open(); });
    on(Deed::Save, [this] { save(); });
    on(Deed::SaveAs, [this] { save_as(); });
    on(Deed::Export, [this] { ask_and_export(); });
    on(Deed::Close, [this] { close_current(); });
}

/// Does @p work. What goes wrong is shown in a box.
template <typename Work> // lupdate takes "class Work" for the class that the texts belong to
DocumentFiles::End DocumentFiles::attempt(const QString& title, Work work)
{
    housekeeping::ErrorHandler& errors = housekeeping::ErrorHandler::instance();
    try {
        work();
        return End::Done;
    } catch (const FileCancelled&) {
        m_p_window->statusBar()->showMessage(tr("%1: cancelled").arg(title), s_message_time);
        return End::Cancelled;
    } catch (const tarqa::Exception& exception) {
        errors.message(title.toStdString(), exception, QMessageBox::Ok);
    } catch (const std::exception& exception) {
        errors.message(title.toStdString(), exception, QMessageBox::Ok);
    }
    return End::Failed;
}

// --- opening

/// A raster, or an overview of one that is too large; nothing if the user wants none.
std::optional<TerrainFile> DocumentFiles::read(const QString& path)
{
    const auto read_reduced = [&](int reduction) {
        TerrainFile file;
        m_p_work->run(tr("Reading %1").arg(name_of(path)), [&](const FileProgress& progress) {
            file = read_terrain(tidied(path).toStdString(), progress, reduction);
        });
        return file;
    };
    try {
        return read_reduced(1);
    } catch (const RasterTooLarge& refusal) {
        if (!ask_for_overview(m_p_window, refusal.what(), refusal.reduction())) {
            return std::nullopt;
        }
        return read_reduced(refusal.reduction());
    }
}

/// @param replaced a document that goes once the file is read; null for none
DocumentFiles::End DocumentFiles::open_one(const QString& path, const housekeeping::DocumentId& replaced)
{
    bool is_wanted = false;
    const End end = attempt(tr("Open"), [&] {
        std::optional<Reserved> reserved;
        if (replaced != housekeeping::DocumentId::null()) {
            reserved.emplace(replaced); // a stroke that waits must not begin in what goes
        }
        std::optional<TerrainFile> file = read(path);
        if (!file) {
            return;
        }
        is_wanted = true;
        if (reserved) {
            reserved.reset();
            documents().destroy_document(replaced, false, false, false, housekeeping::DocumentId::null());
        }
        TerrainDocument& document = open_terrain(std::move(*file));
        try {
            m_show(document);
        } catch (...) {
            // A document that nobody sees could never be closed.
            documents().destroy_document(document.id(), true, false, false, housekeeping::DocumentId::null());
            throw;
        }
        log_opened(document, tidied(path).toStdString());
        m_recent.add(document.datasource());
    });
    return end == End::Done && !is_wanted ? End::Failed : end;
}

/// Undo would bring back cells of the former file, so there is a new document.
void DocumentFiles::reload(const housekeeping::DocumentId& id)
{
    documents().current_document(id);
    if (!m_p_work->is_running() && current_document_is_free(tr("Reload"))) {
        open_one(QString::fromStdString(current_document().source_file()), id);
        m_p_changed->look();
    }
}

bool DocumentFiles::open(const QString& path)
{
    if (m_p_work->is_running()) {
        m_waiting.append(path);
        return false;
    }
    const End end = open_one(path, housekeeping::DocumentId::null());
    open(std::exchange(m_waiting, {}));
    return end == End::Done;
}

void DocumentFiles::open(const QStringList& paths)
{
    if (m_p_work->is_running()) {
        m_waiting.append(paths);
        return;
    }
    QStringList left = paths;
    while (
        !left.isEmpty() && open_one(left.takeFirst(), housekeeping::DocumentId::null()) != End::Cancelled) {
        left.append(std::exchange(m_waiting, {}));
    }
    m_waiting.clear();
}

void DocumentFiles::ask_and_open()
{
    open(ask_for_rasters(m_p_window));
}

// --- writing

/// Writes the current document, which is free. @return whether it was written
bool DocumentFiles::write(const QString& title, const QString& path, double interval)
{
    TerrainDocument& document = current_document();
    if (document.reduction() > 1 && is_same_file(path, document.source_file())) {
        housekeeping::ErrorHandler::instance().message(title.toStdString(),
            tr("\"%1\" is not written: the document is an overview of it, and would take its place")
                .arg(path)
                .toStdString(),
            QMessageBox::Ok);
        return false;
    }
    const std::string file = path.toStdString();
    const End end = attempt(title, [&] {
        const Reserved reserved(document.id());
        const TerrainModel& terrain = document.terrain();
        m_p_work->run(tr("Writing %1").arg(name_of(path)),
            [&](const FileProgress& progress) { export_terrain(terrain, file, interval, progress); });
    });
    if (end != End::Done) {
        return false;
    }
    log_exported(file);
    if (is_same_file(path, document.source_file())) {
        document.source_file(document.source_file(), file_stamp(document.source_file()));
    }
    m_p_changed->look();
    if (is_lossless(path)) {
        document.set_modified(false);
    }
    if (holds_raster(file)) {
        m_recent.add(source_at(path, document));
    }
    return true;
}

bool DocumentFiles::write_export(const QString& path, std::optional<double> interval)
{
    if (m_p_work->is_running() || !current_document_is_free(tr("Export"))) {
        return false;
    }
    if (!export_format(path.toStdString())) {
        housekeeping::ErrorHandler::instance().message(tr("Export").toStdString(),
            tr("\"%1\" is not written: %2").arg(path, unknown_export_format()).toStdString(),
            QMessageBox::Ok);
        return false;
    }
    TerrainDocument& document = current_document();
    if (!write(tr("Export"), path, interval ? *interval : usual_interval(document.terrain().raster()))) {
        return false;
    }
    if (is_same_file(path, document.own_file())) {
        document.own_file(document.own_file(), true);
    }
    emit written(path);
    return true;
}

bool DocumentFiles::ask_and_export()
{
    if (!current_document_is_free(tr("Export"))) {
        return false;
    }
    const QString file = ask_for_export_file(m_p_window, current_document().terrain().mesh() != nullptr);
    if (file.isEmpty()) {
        return false;
    }
    if (export_format(file.toStdString()) != ExportFormat::Contours) {
        return write_export(file);
    }
    const Raster& raster = current_document().terrain().raster();
    const std::optional<double> interval
        = ask_for_interval(m_p_window, usual_interval(raster), QString::fromStdString(raster.unit));
    return interval && write_export(file, interval);
}

bool DocumentFiles::save()
{
    if (!current_document_is_free(tr("Save"))) {
        return false;
    }
    const TerrainDocument& document = current_document();
    const QString file = QString::fromStdString(document.own_file());
    if (file.isEmpty()) {
        return save_as();
    }
    if (!document.is_modified() && QFileInfo::exists(file)) {
        m_p_window->statusBar()->showMessage(tr("There are no changes to save"), s_message_time);
        return true;
    }
    if (const QString reason = reason_to_ask(document); !reason.isEmpty()) {
        const QMessageBox::StandardButton answer = ask_about_own_file(m_p_window, reason);
        if (answer != QMessageBox::Yes) {
            return answer == QMessageBox::No && save_as();
        }
    }
    return save_to(file);
}

bool DocumentFiles::save_as()
{
    if (!current_document_is_free(tr("Save As"))) {
        return false;
    }
    const QString file = ask_for_file_to_save(m_p_window, proposed_file(current_document()));
    if (file.isEmpty()) {
        return false;
    }
    if (is_lossless(file)) {
        return save_to(file);
    }
    housekeeping::ErrorHandler::instance().message(tr("Save As").toStdString(),
        tr("\"%1\" is not written: only GeoTIFF holds all there is, so the name must end in \".tif\"")
            .arg(file)
            .toStdString(),
        QMessageBox::Ok);
    return false;
}

bool DocumentFiles::save_to(const QString& path)
{
    if (m_p_work->is_running() || !current_document_is_free(tr("Save")) || !write(tr("Save"), path, 0)) {
        return false;
    }
    TerrainDocument& document = current_document();
    const bool is_moved = !is_same_file(path, document.own_file());
    document.own_file(tidied(path).toStdString(), true);
    document.source_file(document.own_file(), file_stamp(document.own_file()));
    document.source_format("GeoTIFF"); // the one format that holds all there is
    document.reduction(1); // all that its file holds
    if (const auto sp_source = is_moved ? source_at(path, document) : nullptr) {
        document.datasource(sp_source);
    }
    emit written(path);
    return true;
}

// --- closing

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
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

} // namespace terrain
