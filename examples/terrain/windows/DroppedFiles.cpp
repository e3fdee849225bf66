#include "windows/DroppedFiles.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/FilesInsertMessage.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QMimeData>
#include <QtCore/QUrl>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

tarqa::utilities::UrlList urls_of_files(const QMimeData& data)
{
    tarqa::utilities::UrlList urls;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            urls.push_back(url.toString(QUrl::FullyEncoded).toStdString());
        }
    }
    return urls;
}

void ask_to_insert(const tarqa::utilities::UrlList& urls)
{
    std::vector<std::string> files;
    for (const std::string& url : urls) {
        files.push_back(tarqa::utilities::url_to_filesystem(url));
    }
    auto* const p_message = housekeeping::FilesInsertMessage::instance();
    p_message->documentId(housekeeping::DocumentManager::const_instance().current_document_id());
    p_message->files(files);
    housekeeping::Message::dispatch(p_message); // not posted: a file that cannot be opened opens a box
}

} // namespace terrain
