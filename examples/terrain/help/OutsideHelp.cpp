#include "help/OutsideHelp.h"

#include "help/HelpPages.h"
#include "help/ShortcutsTable.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QStandardPaths>
#include <QtGui/QDesktopServices>

namespace terrain {

namespace {

const char* const s_head = "<head>";
const char* const s_place = "id=\"shortcuts\">"; ///< the end of the tag of the element to fill
const char* const s_place_end = "</div>"; ///< which the element itself does not hold

void log(const QString& text)
{
    housekeeping::ErrorProtocol::instance().log_message(text.toStdString());
}

QByteArray content_of(const QUrl& address)
{
    QFile file(address.toLocalFile());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The page with the list in its place. Its links go on leading to the folder that it comes from.
QString filled(const HelpPages& pages, const QUrl& address)
{
    QString page = QString::fromUtf8(content_of(address));
    const int begin = page.indexOf(s_place) + static_cast<int>(qstrlen(s_place));
    const int end = page.indexOf(s_place_end, begin);
    if (!page.contains(s_head) || !page.contains(s_place) || end < 0) {
        return page; // as it is, it says where to find the list
    }
    page.replace(begin, end - begin,
        shortcuts_table(housekeeping::DocumentManager::const_instance().current_document_id()));
    const QString folder = QString::fromUtf8(QUrl::fromLocalFile(pages.folder() + '/').toEncoded());
    page.insert(page.indexOf(s_head) + static_cast<int>(qstrlen(s_head)),
        QString("<base href=\"%1\">").arg(folder.toHtmlEscaped()));
    return page;
}

/// A file that only the user can read. @return its address; that of the page itself if it cannot be written
QUrl filled_copy(const HelpPages& pages, const QUrl& address)
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + "/help");
    QDir().mkpath(folder.path());
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QSaveFile copy(folder.filePath(address.fileName()));
    const QByteArray content = filled(pages, address).toUtf8();
    const bool is_open = copy.open(QIODevice::WriteOnly);
    copy.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    if (!is_open || copy.write(content) != content.size() || !copy.commit()) {
        log(QObject::tr("\"%1\" cannot be written: %2").arg(copy.fileName(), copy.errorString()));
        return address;
    }
    return QUrl::fromLocalFile(copy.fileName());
}

} // namespace

bool open_help_outside(const HelpPages& pages, const QUrl& address)
{
    if (!HelpPages::exists(address)) {
        return false;
    }
    const QUrl opened = pages.is_shortcuts(address) ? filled_copy(pages, address) : address;
    if (QDesktopServices::openUrl(opened)) {
        return true;
    }
    log(QObject::tr("No web browser was found that opens \"%1\"").arg(opened.toString()));
    return false;
}

} // namespace terrain
