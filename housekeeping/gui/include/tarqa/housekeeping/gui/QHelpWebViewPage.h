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
    explicit QHelpWebViewPage(QObject* p_parent = nullptr);
    ~QHelpWebViewPage() override;

    bool supportsExtension(Extension extension) const override;
    bool extension(Extension extension, const ExtensionOption* p_option, ExtensionReturn* p_output) override;

    /// Whether @p url is a local file that the browser does not show itself: its suffix does not begin with
    /// "htm", deliberately in small letters only.
    static bool opens_outside(const QUrl& url);

protected:
    bool acceptNavigationRequest(
        QWebFrame* p_frame, const QNetworkRequest& request, NavigationType type) override;
    /// Discards what scripts say.
    void javaScriptConsoleMessage(const QString& message, int line, const QString& source) override;
    QString userAgentForUrl(const QUrl& url) const override;
};

} // namespace tarqa::housekeeping::gui
