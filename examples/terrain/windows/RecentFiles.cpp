#include "windows/RecentFiles.h"

#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSettings>
#include <QtCore/QStringList>
#include <QtGui/QTextDocument>

#include <algorithm>

namespace terrain {

namespace {

const char* const s_lock_file = "recent-files.lock";
const int s_lock_patience = 1000; ///< milliseconds

/// Beside the settings, so that all programs that share them share it too.
QString lock_file()
{
    const QDir folder = QFileInfo(QSettings().fileName()).dir();
    folder.mkpath(".");
    return folder.filePath(s_lock_file);
}

/// File names may hold line breaks, and tabs, which a menu would take for the beginning of a shortcut.
QString on_one_line(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; }, QChar(' '));
    return text;
}

} // namespace

RecentFiles::RecentFiles(QObject* p_parent)
    : QObject(p_parent)
{ }

void RecentFiles::add(const boost::shared_ptr<housekeeping::DataSource>& sp_source)
{
    if (!sp_source) {
        return;
    }
    // Two programs that store at the same time must not take each other's entries away. A lock that cannot
    // be had, in a folder that cannot be written for example, is no reason to forget the file.
    QLockFile lock(lock_file());
    lock.tryLock(s_lock_patience);
    housekeeping::RecentDocumentsQueue& queue = housekeeping::RecentDocumentsQueue::instance();
    queue.load();
    queue.push(sp_source);
    queue.save();
    lock.unlock();
    emit changed();
}

std::vector<RecentFile> RecentFiles::list() const
{
    housekeeping::RecentDocumentsQueue& queue = housekeeping::RecentDocumentsQueue::instance();
    queue.load();
    std::vector<RecentFile> files;
    QStringList names;
    for (const auto& sp_source : queue) {
        const QFileInfo file(QString::fromStdString(tarqa::utilities::url_to_filesystem(sp_source->url())));
        if (file.exists()) {
            files.push_back({file.filePath(), on_one_line(file.fileName())});
            names.append(files.back().label);
        }
    }
    for (RecentFile& file : files) {
        if (names.count(file.label) > 1) {
            const QString folder = QDir::toNativeSeparators(QFileInfo(file.path).path());
            file.label = tr("%1 – %2").arg(file.label, on_one_line(folder));
        }
    }
    std::reverse(files.begin(), files.end());
    return files;
}

QString plain_tool_tip(const QString& text)
{
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped().replace('\n', "<br>") : text;
}

} // namespace terrain
