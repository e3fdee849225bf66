#include "LocalAccess.h"

#include <QtNetwork/QNetworkRequest>

namespace tarqa::housekeeping::gui {

LocalAccess::LocalAccess(QObject* p_parent)
    : QNetworkAccessManager(p_parent)
{ }

bool LocalAccess::is_local(const QUrl& url)
{
    const QString scheme = url.scheme();
    return scheme == "file" || scheme == "qrc" || scheme == "about" || url.isEmpty();
}

QNetworkReply* LocalAccess::createRequest(
    Operation operation, const QNetworkRequest& request, QIODevice* p_data)
{
    const bool reads = operation == GetOperation || operation == HeadOperation;
    const bool is_data = request.url().scheme() == "data"; // a picture that stands in the page
    if (reads && (is_local(request.url()) || is_data)) {
        return QNetworkAccessManager::createRequest(operation, request, p_data);
    }
    return QNetworkAccessManager::createRequest(GetOperation, QNetworkRequest(), nullptr); // fails
}

} // namespace tarqa::housekeeping::gui
