#pragma once

#include <QtNetwork/QNetworkAccessManager>

namespace tarqa::housekeeping::gui {

/**
 * What the help browser gets the contents of its pages through: reads files of this machine and what is
 * compiled in, and nothing else. So no page, whatever its scripts do, asks or tells the network anything, and
 * none writes a file. Main thread.
 */
class LocalAccess : public QNetworkAccessManager
{
public:
    explicit LocalAccess(QObject* p_parent);

    /// Whether @p url leads to a file, to something compiled in, or nowhere.
    static bool is_local(const QUrl& url);

protected:
    QNetworkReply* createRequest(
        Operation operation, const QNetworkRequest& request, QIODevice* p_data) override;
};

} // namespace tarqa::housekeeping::gui
