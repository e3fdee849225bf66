#pragma once

#include "windows/RecentFiles.h"

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <optional>

class QMainWindow;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class ChangedFiles;
class Deeds;
class FileWork;
class TerrainDocument;
struct TerrainFile;

/**
 * Opens, saves, exports and closes documents for the user: asks for files, shows what goes wrong in boxes,
 * and keeps the list of recent files.
 *
 * Saving writes a GeoTIFF, which holds all there is, and so does an export to one: the document has no
 * changes after that. Other exports leave it as it is. What is asked for while a file is being read or
 * written is refused, but for files to open, which are opened next. Main thread.
 */
class DocumentFiles : public QObject
{
    Q_OBJECT

public:
    /// @param p_window over which the dialogs are; becomes the parent
    /// @param show shows a new document; what it throws is shown in a box, and the document closed again
    DocumentFiles(QMainWindow* p_window, std::function<void(const TerrainDocument&)> show);

    /// Lets the actions for files do their work.
    void obey(const Deeds& deeds);

    /// Opens a raster as the current document. @return whether it was opened
    bool open(const QString& path);
    /// Opens one after the other, until the user cancels.
    void open(const QStringList& paths);
    /// Writes the current document's raster, as what the extension says.
    /// @param interval between contour lines; the usual one if none is given @return whether it was written
    bool write_export(const QString& path, std::optional<double> interval = std::nullopt);

    void ask_and_open();
    /// @return whether a file was written
    bool ask_and_export();
    /// Saves the current document to its own file, after asking once whether the file that it was read from
    /// may be overwritten; without an own file as save_as(). @return whether it is saved
    bool save();
    /// Saves the current document to a file that the user chooses, which is its own from then on.
    /// @return whether it is saved
    bool save_as();
    /// Closes the current document, unless it is busy or the user wants to keep it.
    void close_current();

    /// Whether a document may be closed: it has no changes that are not written, or the user does not want
    /// them.
    bool may_lose(const housekeeping::DocumentId& document);

    const RecentFiles& recent() const { return m_recent; }
    FileWork& work() const { return *m_p_work; }

signals:
    /// The current document was written.
    void written(const QString& path);

private:
    enum class End
    {
        Done,
        Failed,
        Cancelled
    };

    bool current_document_is_free(const QString& title);
    template <class Work>
    End attempt(const QString& title, Work work);
    End open_one(const QString& path, const housekeeping::DocumentId& replaced);
    void reload(const housekeeping::DocumentId& id);
    std::optional<TerrainFile> read(const QString& path);
    bool write(const QString& title, const QString& path, double interval);
    bool save_to(const QString& path);

    QMainWindow* m_p_window; // the parent
    std::function<void(const TerrainDocument&)> m_show;
    FileWork* m_p_work; // child of the window
    ChangedFiles* m_p_changed; // child of the window
    QStringList m_waiting; // asked for while another one was opened
    RecentFiles m_recent;
};

} // namespace terrain
