#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <tarqa/housekeeping/gui/QHelpWebViewPage.h>

#include <pkBaseQt/pkProductInfo.h>

#include "OpenOutside.h"

#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QPalette>
#include <QtPrintSupport/QPrintDialog>
#include <QtPrintSupport/QPrinter>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWidgets/QMenu>

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_topic_frame = "topic";

const pkBase::pkProductInfo& product()
{
    return pkBase::pkProductInfo::const_instance();
}

} // namespace

QHelpWebView::QHelpWebView(const QString& localFile, QWidget* p_parent)
    : QWebView(p_parent)
{
    setPage(new QHelpWebViewPage(this));
    // What a page without colours of its own stands on; its texts are black, however dark the desktop is.
    QPalette paper;
    paper.setColor(QPalette::Base, Qt::white);
    setPalette(paper);
    load(QUrl::fromLocalFile(QFileInfo(localFile).absoluteFilePath()));
    page()->setLinkDelegationPolicy(QWebPage::DelegateExternalLinks);
    setWindowTitle(tr("Online Help: ") + QString::fromStdString(product().product_name()));
    connect(this, SIGNAL(loadFinished(bool)), this, SLOT(pageLoaded(bool)));
    connect(page()->mainFrame(), SIGNAL(javaScriptWindowObjectCleared()), this, SLOT(resetControler()));
    connect(page(), SIGNAL(linkClicked(QUrl)), this, SLOT(linkClicked(QUrl)));
    connect(page(), SIGNAL(printRequested(QWebFrame*)), this, SLOT(onPrintRequested(QWebFrame*)));
}

QHelpWebView::~QHelpWebView() = default;

void QHelpWebView::pageLoaded(bool) { }

void QHelpWebView::resetControler() { }

void QHelpWebView::execJS(const QString& script)
{
    if (m_defer_js) {
        m_pending_js.append(script);
    } else {
        page()->mainFrame()->evaluateJavaScript(script);
    }
}

// Deliberately without running them.
void QHelpWebView::flushJS()
{
    m_pending_js.clear();
}

void QHelpWebView::linkClicked(const QUrl& url)
{
    const QString scheme = url.scheme();
    if (scheme != "file" && scheme != "http" && scheme != "https") {
        return;
    }
    // A web address has no local form, and so no suffix.
    if (!url.isLocalFile() || QHelpWebViewPage::opens_outside(url)) {
        open_outside(url, this);
    }
}

void QHelpWebView::contextMenuEvent(QContextMenuEvent* p_event)
{
    const QPointer<QMenu> p_menu = new QMenu(this); // it may go with the view while it is open
    p_menu->addAction(pageAction(QWebPage::Back));
    p_menu->addAction(pageAction(QWebPage::Forward));
    p_menu->addAction(pageAction(QWebPage::Copy));
    p_menu->addSeparator();
    p_menu->addAction(tr("Open Help in Web Browser"), this, SLOT(openInBrowser()));
    p_menu->addAction(tr("Open Current Page Web Browser"), this, SLOT(openCurrentPageInBrowser()));
    p_menu->exec(p_event->globalPos());
    delete p_menu.data();
}

void QHelpWebView::openInBrowser()
{
    open_outside(url(), this);
}

void QHelpWebView::openCurrentPageInBrowser()
{
    open_outside(current_page(), this);
}

QUrl QHelpWebView::current_page() const
{
    for (const QWebFrame* const p_frame : page()->mainFrame()->childFrames()) {
        if (p_frame->frameName() == s_topic_frame) {
            // A page that a frame was sent to by its name alone is known as what was asked for.
            return p_frame->url().isEmpty() ? p_frame->requestedUrl() : p_frame->url();
        }
    }
    return url();
}

void QHelpWebView::onPrintRequested(QWebFrame* p_frame)
{
    // Either may go while the dialog is open.
    const QPointer<QWebFrame> p_wanted = p_frame;
    QPrinter printer;
    printer.setCreator(QString::fromStdString(product().marketing_name()));
    const QPointer<QPrintDialog> p_dialog = new QPrintDialog(&printer, this);
    p_dialog->setWindowTitle(tr("Print Help"));
    if (p_dialog->exec() == QDialog::Accepted && p_wanted) {
        p_wanted->print(&printer);
    }
    delete p_dialog.data();
}

} // namespace tarqa::housekeeping::gui
