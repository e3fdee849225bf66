#pragma once

#include <tarqa/housekeeping/DataSource.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <boost/shared_ptr.hpp>

#include <vector>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// A raster that was opened or written not long ago.
struct RecentFile
{
    QString path;
    QString label; ///< the file's name, with its folder if another one has the same name
};

/**
 * The rasters that were opened or written last, by this program and by others that run meanwhile: the
 * library's queue of recent documents, loaded before each look and stored after each change. Main thread.
 */
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    explicit RecentFiles(QObject* p_parent = nullptr);

    /// Makes a raster the newest one. Null, as of a document without a source, changes nothing.
    void add(const boost::shared_ptr<housekeeping::DataSource>& sp_source);

    /// Those whose file exists, the newest first.
    std::vector<RecentFile> list() const;

signals:
    /// A raster was added.
    void changed();
};

/// A text that may hold anything, as a tool tip that shows it as it is.
QString plain_tool_tip(const QString& text);

} // namespace terrain
