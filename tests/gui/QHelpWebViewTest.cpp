#include "QHelpWebViewFixture.h"
#include "quickhelp/QuickHelpFixture.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"

#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QDir>
#include <QtTest/QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>

// The help browser: its page, its title, and scripts.

using namespace help_test;
using pkBase::pkProductInfo;
using support::LogCapture;
using testing::IsEmpty;

namespace {

/// The operations of a page that only the web view calls.
template <class Page>
class Exposed : public Page
{
public:
    using Page::javaScriptConsoleMessage;
    using Page::userAgentForUrl;
};

Lines s_qt_messages;

/// Takes what Qt says while it lives.
class QtMessages
{
public:
    QtMessages()
        : m_former(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            s_qt_messages.push_back(text.toStdString());
        }))
    { }
    ~QtMessages() { qInstallMessageHandler(m_former); }

private:
    QtMessageHandler m_former;
};

class QHelpWebViewBasics : public WebViewFixture
{
protected:
    QString evaluate(const QString& script) { return main_frame().evaluateJavaScript(script).toString(); }
};

} // namespace

// Construction

TEST_F(QHelpWebViewBasics, ShowsTheLocalFile)
{
    open(write(QString::fromUtf8(u8"Übersicht & mehr+%20.html"),
        QString::fromUtf8(u8"Willkommen, größte Übersicht")));
    EXPECT_EQ(url(QString::fromUtf8(u8"Übersicht & mehr+%20.html")), view->url());
    EXPECT_EQ(QString::fromUtf8(u8"Willkommen, größte Übersicht"), text());
}

TEST_F(QHelpWebViewBasics, PathMayBeRelative)
{
    write("index.html", "Welcome");
    write("pages/index.html", "another page");
    ASSERT_TRUE(QDir::setCurrent(directory()));
    open("index.html");
    EXPECT_EQ(url("index.html"), view->url());
    EXPECT_EQ("Welcome", text());
    open("pages/../pages/./index.html");
    EXPECT_EQ("another page", text());
}

TEST_F(QHelpWebViewBasics, TitleNamesTheProduct)
{
    pkProductInfo::instance().product_name("TarqTerrain");
    pkProductInfo::instance().marketing_name("Terrain, Professional");
    open_page("<script>document.title = 'Title of the page'</script>");
    EXPECT_EQ("Online Help: TarqTerrain", view->windowTitle());
    EXPECT_EQ("Title of the page", view->title());
}

TEST_F(QHelpWebViewBasics, DelegatesExternalLinks)
{
    open_page("");
    EXPECT_EQ(QWebPage::DelegateExternalLinks, view->page()->linkDelegationPolicy());
}

TEST_F(QHelpWebViewBasics, HasAPageOfItsOwnClass)
{
    open_page("");
    EXPECT_TRUE(qobject_cast<QHelpWebViewPage*>(view->page()));
    EXPECT_EQ(view.get(), view->page()->view());
}

TEST_F(QHelpWebViewBasics, PageGoesWithTheView)
{
    open_page("");
    const QPointer<QWebPage> page = view->page();
    view.reset();
    EXPECT_FALSE(page);
}

TEST_F(QHelpWebViewBasics, MayHaveAParent)
{
    QWidget parent;
    const auto* const p_view = new QHelpWebView(write("index.html", "text"), &parent);
    EXPECT_EQ(&parent, p_view->parentWidget());
    EXPECT_EQ(nullptr, QHelpWebView(path("index.html")).parentWidget());
}

TEST_F(QHelpWebViewBasics, SlotsStandInTheirOrder)
{
    const QMetaObject& meta = QHelpWebView::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::gui::QHelpWebView", meta.className());
    EXPECT_EQ(quickhelp_test::methods(meta, QMetaMethod::Slot),
        (Lines{"void pageLoaded(bool)", "void resetControler()", "void linkClicked(QUrl)",
            "void openInBrowser()", "void openCurrentPageInBrowser()", "void onPrintRequested(QWebFrame*)"}));
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        EXPECT_EQ(QMetaMethod::Private, meta.method(i).access()) << meta.method(i).name().toStdString();
    }
    EXPECT_THAT(quickhelp_test::methods(meta, QMetaMethod::Signal), IsEmpty());
}

TEST_F(QHelpWebViewBasics, PointsForLaterUseAreConnectedAndDoNothing)
{
    open_page("text");
    EXPECT_TRUE(QMetaObject::invokeMethod(view.get(), "pageLoaded", Q_ARG(bool, false)));
    EXPECT_TRUE(QMetaObject::invokeMethod(view.get(), "resetControler"));
    EXPECT_EQ("text", text());
    EXPECT_TRUE(QObject::disconnect(view.get(), &QWebView::loadFinished, view.get(), nullptr));
    EXPECT_TRUE(
        QObject::disconnect(&main_frame(), &QWebFrame::javaScriptWindowObjectCleared, view.get(), nullptr));
}

TEST_F(QHelpWebViewBasics, PageWithoutColoursStandsOnWhitePaperOnADarkDesktopToo)
{
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    QApplication::setPalette(dark);
    open_page("");
    EXPECT_EQ(QColor(Qt::white), view->grab().toImage().pixelColor(300, 200));
    QWebView plain;
    plain.resize(view->size());
    plain.setHtml("<html><body></body></html>");
    EXPECT_EQ(QColor(Qt::black), plain.grab().toImage().pixelColor(300, 200)); // which texts are, too
}

TEST_F(QHelpWebViewBasics, TitleIsInTheUsersLanguage)
{
    const ClassTranslator translator("tarqa::housekeeping::gui::QHelpWebView");
    open_page("");
    EXPECT_EQ("[T]Online Help: TarqHelpful", view->windowTitle());
}

// Scripts of the program

TEST_F(QHelpWebViewBasics, ScriptRunsAtOnce)
{
    open_page("text");
    EXPECT_FALSE(TestAccess::defer_js(*view));
    TestAccess::execJS(*view, "document.title = 'by script'");
    EXPECT_EQ("by script", evaluate("document.title"));
    EXPECT_THAT(TestAccess::pending_js(*view), IsEmpty());
}

TEST_F(QHelpWebViewBasics, DeferredScriptWaits)
{
    open_page("text");
    TestAccess::defer_js(*view) = true;
    TestAccess::execJS(*view, "document.title = 'first'");
    TestAccess::execJS(*view, "document.title = 'second'");
    EXPECT_EQ("", evaluate("document.title"));
    EXPECT_EQ(QStringList({"document.title = 'first'", "document.title = 'second'"}),
        TestAccess::pending_js(*view));
}

TEST_F(QHelpWebViewBasics, FlushedScriptsNeverRun)
{
    open_page("text");
    TestAccess::defer_js(*view) = true;
    TestAccess::execJS(*view, "document.title = 'deferred'");
    TestAccess::flushJS(*view);
    EXPECT_THAT(TestAccess::pending_js(*view), IsEmpty());
    EXPECT_EQ("", evaluate("document.title"));
    EXPECT_TRUE(TestAccess::defer_js(*view)); // as it was
    TestAccess::flushJS(*view); // an empty list
    TestAccess::defer_js(*view) = false;
    TestAccess::execJS(*view, "document.title = 'at once'");
    EXPECT_EQ("at once", evaluate("document.title"));
}

TEST_F(QHelpWebViewBasics, ScriptThatRunsAtOnceLeavesTheDeferredOnes)
{
    open_page("text");
    TestAccess::defer_js(*view) = true;
    TestAccess::execJS(*view, "document.title = 'deferred'");
    TestAccess::defer_js(*view) = false;
    TestAccess::execJS(*view, "document.body.id = 'changed'");
    EXPECT_EQ("changed", evaluate("document.body.id"));
    EXPECT_EQ("", evaluate("document.title"));
    EXPECT_EQ(1, TestAccess::pending_js(*view).size());
}

TEST_F(QHelpWebViewBasics, DeferringIsLeftAloneWhenPagesLoad)
{
    write("second.html", "second page");
    open_page("<a id='link' href='second.html'>second</a>");
    TestAccess::defer_js(*view) = true;
    TestAccess::execJS(*view, "document.title = 'deferred'");
    click("link");
    expect_text("second page");
    EXPECT_TRUE(TestAccess::defer_js(*view));
    EXPECT_EQ(1, TestAccess::pending_js(*view).size());
    EXPECT_EQ("", evaluate("document.title"));
}

TEST_F(QHelpWebViewBasics, HasNoControllerForScripts)
{
    open_page("text");
    EXPECT_EQ(nullptr, TestAccess::js_controller(*view));
}

// Scripts of the pages

TEST_F(QHelpWebViewBasics, ScriptsOfThePageRun)
{
    open_page("<p id='p'>before</p><script>document.getElementById('p').innerHTML = 'after'</script>");
    EXPECT_EQ("after", text());
}

TEST_F(QHelpWebViewBasics, ScriptsOfThePageAnswerClicks)
{
    open_page("<a id='link' href='other.html' onclick=\"document.title = 'clicked'; return false\">x</a>");
    click("link");
    EXPECT_EQ("clicked", evaluate("document.title"));
    EXPECT_EQ(url("index.html"), view->url());
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

TEST_F(QHelpWebViewBasics, WhatScriptsSayIsDiscarded)
{
    const LogCapture log;
    s_qt_messages.clear();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
        const QtMessages messages;
        open_page("<script>console.log('said %1 %2 %3'); console.error('wrong'); nothing.at_all();</script>");
        QMetaObject::invokeMethod(view.get(), "resetControler");
    }
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    for (const std::string& message : s_qt_messages) {
        EXPECT_THAT(message, testing::Not(testing::ContainsRegex("said|wrong|at_all")));
    }
}

TEST_F(QHelpWebViewBasics, AnyMessageOfAScriptMayBeFormatted)
{
    const LogCapture log;
    Exposed<QHelpWebViewPage> page;
    page.javaScriptConsoleMessage("%1 %2 %3 %%", -1, QString());
    page.javaScriptConsoleMessage(QString(), 2147483647, "%3 %2");
    EXPECT_TRUE(log.lines().empty());
}

TEST_F(QHelpWebViewBasics, UserAgentIsTheDefaultOne)
{
    const Exposed<QHelpWebViewPage> page;
    const Exposed<QWebPage> plain;
    for (const char* const address : {"file:///help/index.html", "https://help.example/", ""}) {
        EXPECT_NE("", page.userAgentForUrl(QUrl(address)));
        EXPECT_EQ(plain.userAgentForUrl(QUrl(address)), page.userAgentForUrl(QUrl(address)));
    }
    open_page("text");
    EXPECT_EQ(plain.userAgentForUrl(view->url()), evaluate("navigator.userAgent"));
}

// Pages that are not there

TEST_F(QHelpWebViewBasics, MissingFirstPageIsNamedInItsPlace)
{
    const LogCapture log;
    open(path(QString::fromUtf8(u8"nicht dä.html")));
    EXPECT_TRUE(text().contains(QString::fromUtf8(u8"nicht dä.html"))) << text().toStdString();
    EXPECT_EQ("Online Help: TarqHelpful", view->windowTitle());
}

TEST_F(QHelpWebViewBasics, NameOfAMissingPageIsNoMarkUp)
{
    open(path("a <b id='bold'>page</b> & more.html"));
    EXPECT_TRUE(text().contains("<b id='bold'>page<")) << text().toStdString();
    EXPECT_TRUE(text().contains("& more.html"));
    EXPECT_EQ("", evaluate("document.getElementById('bold') ? 'marked up' : ''"));
}

TEST_F(QHelpWebViewBasics, MissingPageSaysWhatIsWrongInTheUsersLanguage)
{
    const ClassTranslator translator("tarqa::housekeeping::gui::QHelpWebViewPage");
    open(path("missing.html"));
    EXPECT_EQ("[T]This page cannot be shown", evaluate("document.getElementsByTagName('h1')[0].textContent"));
    EXPECT_EQ("[T]This page cannot be shown", evaluate("document.title"));
    EXPECT_EQ("2", evaluate("document.getElementsByTagName('p').length")); // which page, and why
    EXPECT_NE("", evaluate("document.getElementsByTagName('p')[1].textContent"));
    EXPECT_EQ(url("missing.html"), view->url()); // as what it was asked for
}

TEST_F(QHelpWebViewBasics, MissingLinkedPageIsNamedInItsPlace)
{
    open_page("<a id='link' href='missing.html'>missing</a>");
    click("link");
    expect_text("missing.html");
}

TEST_F(QHelpWebViewBasics, MissingTopicIsNamedInItsFrame)
{
    open_page("the contents<iframe name='topic' src='missing.html'></iframe>");
    ASSERT_TRUE(frame("topic"));
    EXPECT_TRUE(
        support::wait_until([this] { return frame("topic")->toPlainText().contains("missing.html"); }));
    EXPECT_TRUE(main_frame().toPlainText().contains("the contents"));
}

TEST_F(QHelpWebViewBasics, PageWithAMissingPictureIsShown)
{
    open_page("the text<img src='missing.png'>");
    EXPECT_TRUE(text().contains("the text"));
    EXPECT_FALSE(text().contains("missing.png"));
}

TEST_F(QHelpWebViewBasics, OnlyAPageThatCouldNotBeReadIsNamedInItsPlace)
{
    QHelpWebViewPage page;
    QWebPage& base = page;
    QWebPage::ErrorPageExtensionOption option;
    option.url = url("missing.html");
    option.domain = QWebPage::WebKit; // the page was left to another program
    QWebPage::ErrorPageExtensionReturn answer;
    EXPECT_FALSE(base.extension(QWebPage::ErrorPageExtension, &option, &answer));
    EXPECT_TRUE(answer.content.isEmpty());
    option.domain = QWebPage::QtNetwork;
    EXPECT_TRUE(base.extension(QWebPage::ErrorPageExtension, &option, &answer));
    EXPECT_TRUE(answer.content.contains("missing.html"));
}
