#pragma once

#include "windows/RecentFiles.h"

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

class QWidget;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class TerrainDocument;

/// Opens, writes and closes documents for the user: asks for files, shows what goes wrong in boxes, and keeps
/// the list of recent files. Main thread.
class DocumentFiles : public QObject
{
    Q_OBJECT

public:
    /// @param p_window over which the dialogs are; becomes the parent
    /// @param show shows a new document; what it throws is shown in a box, and the document closed again
    DocumentFiles(QWidget* p_window, std::function<void(const TerrainDocument&)> show);

    /// Opens a raster as the current document. @return whether it was opened
    bool open(const QString& path);
    void open(const QStringList& paths);
    /// Writes the current document's raster. @return whether it was written
    bool write_export(const QString& path);

    void ask_and_open();
    /// @return whether a file was written
    bool ask_and_export();
    /// Closes the current document, unless it is busy or the user wants to keep it.
    void close_current();

    /// Whether a document may be closed: it has no changes that are not written, or the user does not want
    /// them.
    bool may_lose(const housekeeping::DocumentId& document);

    const RecentFiles& recent() const { return m_recent; }

signals:
    /// The current document was written.
    void written(const QString& path);

private:
    bool current_document_is_free(const QString& title);

    QWidget* m_p_window; // the parent
    std::function<void(const TerrainDocument&)> m_show;
    RecentFiles m_recent;
};

} // namespace terrain
