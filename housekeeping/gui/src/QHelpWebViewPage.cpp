#include <tarqa/housekeeping/gui/QHelpWebViewPage.h>

#include "LocalAccess.h"

#include <QtCore/QFileInfo>
#include <QtNetwork/QNetworkRequest>
#include <QtWebKitWidgets/QWebFrame>

namespace tarqa::housekeeping::gui {

QHelpWebViewPage::QHelpWebViewPage(QObject* p_parent)
    : QWebPage(p_parent)
{
    setNetworkAccessManager(new LocalAccess(this));
}

QHelpWebViewPage::~QHelpWebViewPage() = default;

bool QHelpWebViewPage::opens_outside(const QUrl& url)
{
    return url.isLocalFile() && QFileInfo(url.toLocalFile()).suffix().left(3) != "htm";
}

bool QHelpWebViewPage::acceptNavigationRequest(
    QWebFrame* p_frame, const QNetworkRequest& request, NavigationType type)
{
    if (type == NavigationTypeLinkClicked && opens_outside(request.url())) {
        emit linkClicked(request.url());
        return false;
    }
    if (!p_frame && type == NavigationTypeLinkClicked && request.url().isLocalFile()) {
        mainFrame()->load(request); // it asks for a window of its own, and there is but one
        return false;
    }
    // Which sends a clicked web address to linkClicked(). Nothing leaves without a click.
    return QWebPage::acceptNavigationRequest(p_frame, request, type) && LocalAccess::is_local(request.url());
}

bool QHelpWebViewPage::supportsExtension(Extension extension) const
{
    return extension == ErrorPageExtension || QWebPage::supportsExtension(extension);
}

bool QHelpWebViewPage::extension(
    Extension extension, const ExtensionOption* p_option, ExtensionReturn* p_output)
{
    if (extension != ErrorPageExtension || !p_option || !p_output) {
        return QWebPage::extension(extension, p_option, p_output);
    }
    const auto& error = *static_cast<const ErrorPageExtensionOption*>(p_option);
    if (error.domain == QWebPage::WebKit) {
        return false; // nothing is missing: the page was left to another program
    }
    const QString title = tr("This page cannot be shown");
    auto& answer = *static_cast<ErrorPageExtensionReturn*>(p_output);
    answer.baseUrl = error.url;
    answer.content = QString("<!DOCTYPE html><html><head><title>%1</title></head><body style=\"margin: 2em;"
                             " font-family: sans-serif\"><h1>%1</h1><p>%2</p><p>%3</p></body></html>")
                         .arg(title, error.url.toDisplayString(QUrl::PreferLocalFile).toHtmlEscaped(),
                             error.errorString.toHtmlEscaped())
                         .toUtf8();
    return true;
}

void QHelpWebViewPage::javaScriptConsoleMessage(const QString& message, int line, const QString& source)
{
    // To be seen in a debugger, and nowhere else.
    const QString text = QString("%1 %2: %3").arg(source, QString::number(line, 10), message);
    Q_UNUSED(text)
}

QString QHelpWebViewPage::userAgentForUrl(const QUrl& url) const
{
    return QWebPage::userAgentForUrl(url);
}

} // namespace tarqa::housekeeping::gui
