#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtWebKitWidgets/QWebView>

class QWebFrame;

namespace tarqa::housekeeping {
class TestAccess;
}

namespace tarqa::housekeeping::gui {

/**
 * The help browser: shows the HTML pages of a help, which are files on disk, with the links between them.
 * Links to web addresses, and to files that are no HTML pages, open outside the program; others ("mailto:")
 * do nothing. Made by the host's help launcher, which owns it; links against QtWebKit. Main thread.
 */
class TQ_HK_EXPORT QHelpWebView : public QWebView
{
    Q_OBJECT

public:
    /// @param localFile path of the page that is shown first; a page that cannot be read is named in its
    /// place
    /// @param p_parent owns the view; may be null
    explicit QHelpWebView(const QString& localFile, QWidget* p_parent = nullptr);
    ~QHelpWebView() override;

protected:
    /// Offers what can be done with the page.
    void contextMenuEvent(QContextMenuEvent* p_event) override;

private slots:
    // The first two are places to connect to and do nothing yet.
    void pageLoaded(bool ok);
    void resetControler();
    void linkClicked(const QUrl& url);
    void openInBrowser();
    void openCurrentPageInBrowser();
    void onPrintRequested(QWebFrame* p_frame);

private:
    friend class housekeeping::TestAccess;

    void execJS(const QString& script);
    void flushJS();
    QUrl current_page() const;

    QStringList m_pending_js; // scripts that wait while m_defer_js is set
    bool m_defer_js = false;
    QObject* m_p_controller = nullptr; // what scripts of the pages may call one day
};

} // namespace tarqa::housekeeping::gui
