#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtWebKitWidgets/QWebPage>

namespace tarqa::housekeeping::gui {

/// The page of the help browser: sends clicked files that are no HTML pages to linkClicked(), which Qt does
/// for web addresses only, and names a page that cannot be read in its place. It shows files of this machine
/// and compiled-in pages only, and reads nothing else, whoever asks. Main thread.
class TQ_HK_EXPORT QHelpWebViewPage : public QWebPage
{
    Q_OBJECT

public:
    /// @param p_parent owns the page; may be null
    explicit QHelpWebViewPage(QObject* p_parent = nullptr);
    ~QHelpWebViewPage() override;

    /// Says yes to error pages, and to what QWebPage supports.
    bool supportsExtension(Extension extension) const override;
    /// Makes the page that stands in for one that cannot be read.
    bool extension(Extension extension, const ExtensionOption* p_option, ExtensionReturn* p_output) override;

    /// Whether @p url is a local file that the browser does not show itself: its suffix does not begin with
    /// "htm", deliberately in small letters only.
    static bool opens_outside(const QUrl& url);

protected:
    /// Whether the browser goes to that page: only to local ones. The others are announced with linkClicked()
    /// if the user clicked.
    bool acceptNavigationRequest(
        QWebFrame* p_frame, const QNetworkRequest& request, NavigationType type) override;
    /// Discards what scripts say.
    void javaScriptConsoleMessage(const QString& message, int line, const QString& source) override;
    /// As QWebPage.
    QString userAgentForUrl(const QUrl& url) const override;
};

} // namespace tarqa::housekeeping::gui
