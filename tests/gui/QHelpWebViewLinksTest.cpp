#include "QHelpWebViewFixture.h"
#include "support/MessageSpy.h"

#include <QtTest/QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Which links stay in the help browser, which open outside, and which do neither.

using namespace help_test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

QString umlauts(const char* text)
{
    return QString::fromUtf8(text);
}

class QHelpWebViewLinks : public WebViewFixture
{
protected:
    void open_link(const QString& target, const QString& attributes = "")
    {
        open_page("the index <a id='link' href='" + target + "' " + attributes + ">link</a>");
    }

    /// Clicks a link, which is expected to open outside, once, and to leave the page as it is.
    void expect_outside(const QString& target, const QUrl& address)
    {
        open_link(target);
        click("link");
        EXPECT_THAT(opened.take(), ElementsAre(address)) << target.toStdString();
        QTest::qWait(20);
        EXPECT_EQ(url("index.html"), view->url());
        EXPECT_TRUE(text().contains("the index"));
    }

    /// Clicks a link, which is expected to be followed inside.
    void expect_inside(const QString& target, const QString& file)
    {
        write(file, "the other page");
        open_link(target);
        click("link");
        expect_text("the other page");
        EXPECT_EQ(path(file), view->url().toLocalFile());
        EXPECT_THAT(opened.take_texts(), IsEmpty());
    }

    /// Calls the slot that links are sent to.
    void send_link(const QUrl& address)
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(view.get(), "linkClicked", Q_ARG(QUrl, address)));
    }
};

} // namespace

// Pages stay

TEST_F(QHelpWebViewLinks, HtmlFileStays)
{
    expect_inside("other.html", "other.html");
}

TEST_F(QHelpWebViewLinks, HtmFileStays)
{
    expect_inside("other.htm", "other.htm");
}

TEST_F(QHelpWebViewLinks, FileWhoseSuffixBeginsLikeHtmlStays)
{
    expect_inside("archive.pdf.html", "archive.pdf.html");
}

TEST_F(QHelpWebViewLinks, FileInAnotherDirectoryStays)
{
    expect_inside("part/other.html", "part/other.html");
}

TEST_F(QHelpWebViewLinks, FileWithSpecialCharactersStays)
{
    expect_inside(umlauts(u8"St%C3%B6rung%20%23%25.html"), umlauts(u8"Störung #%.html"));
}

TEST_F(QHelpWebViewLinks, AnchorOfAnotherPageStays)
{
    expect_inside("other.html#part", "other.html");
    EXPECT_EQ("part", view->url().fragment());
}

TEST_F(QHelpWebViewLinks, AnchorOfThePageStays)
{
    open_page("<a id='link' href='#part'>link</a><div style='height: 5000px'></div><p id='part'>part</p>");
    click("link");
    EXPECT_TRUE(support::wait_until([this] { return view->url().fragment() == "part"; }));
    EXPECT_GT(main_frame().scrollPosition().y(), 0);
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

TEST_F(QHelpWebViewLinks, PageStaysInItsFrame)
{
    write("topic.html", "<a id='link' href='other.html'>link</a>");
    write("other.html", "the other page");
    open_page("the index <iframe name='topic' src='topic.html'></iframe>");
    click("link", *frame("topic"));
    EXPECT_TRUE(support::wait_until([this] { return frame("topic")->toPlainText() == "the other page"; }));
    EXPECT_TRUE(text().contains("the index"));
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

// Others open outside

TEST_F(QHelpWebViewLinks, PdfFileOpensOutside)
{
    write("manual.pdf", "");
    expect_outside("manual.pdf", url("manual.pdf"));
}

TEST_F(QHelpWebViewLinks, PdfFileThatIsMissingOpensOutsideAllTheSame)
{
    expect_outside("missing.pdf", url("missing.pdf"));
}

TEST_F(QHelpWebViewLinks, FileWithoutASuffixOpensOutside)
{
    expect_outside("README", url("README"));
}

TEST_F(QHelpWebViewLinks, OnlyTheLastSuffixCounts)
{
    expect_outside("page.html.pdf", url("page.html.pdf"));
}

TEST_F(QHelpWebViewLinks, FileWithSpecialCharactersOpensOutside)
{
    expect_outside("St%C3%B6rung%20%23%25.pdf", url(umlauts(u8"Störung #%.pdf")));
}

TEST_F(QHelpWebViewLinks, AnchorOfAPdfFileOpensOutside)
{
    QUrl address = url("manual.pdf");
    address.setFragment("page=2");
    expect_outside("manual.pdf#page=2", address);
}

TEST_F(QHelpWebViewLinks, WebAddressOpensOutside)
{
    expect_outside("https://help.example/", QUrl("https://help.example/"));
}

TEST_F(QHelpWebViewLinks, PlainWebAddressOpensOutside)
{
    expect_outside("http://help.example/a/b?c=d#e", QUrl("http://help.example/a/b?c=d#e"));
}

TEST_F(QHelpWebViewLinks, HtmlPageOfTheWebOpensOutside)
{
    expect_outside("https://help.example/index.html", QUrl("https://help.example/index.html"));
}

TEST_F(QHelpWebViewLinks, LinkOfAFrameOpensOutside)
{
    write("topic.html",
        "the topic <a id='file' href='manual.pdf'>file</a> <a id='web' href='https://help.example/'>web</a>");
    open_page("the index <iframe name='topic' src='topic.html'></iframe>");
    click("file", *frame("topic"));
    click("web", *frame("topic"));
    EXPECT_THAT(opened.take(), ElementsAre(url("manual.pdf"), QUrl("https://help.example/")));
    EXPECT_TRUE(frame("topic")->toPlainText().contains("the topic"));
}

TEST_F(QHelpWebViewLinks, WebAddressForANewWindowOpensOutside)
{
    open_link("https://help.example/", "target='_blank'");
    click("link");
    EXPECT_THAT(opened.take(), ElementsAre(QUrl("https://help.example/")));
}

TEST_F(QHelpWebViewLinks, FileForANewWindowOpensOutside)
{
    open_link("manual.pdf", "target='_blank'");
    click("link");
    EXPECT_THAT(opened.take(), ElementsAre(url("manual.pdf")));
}

TEST_F(QHelpWebViewLinks, PageForANewWindowStaysInTheOnlyOne)
{
    write("other.html", "the other page");
    open_link("other.html", "target='_blank'");
    click("link");
    expect_text("the other page");
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

TEST_F(QHelpWebViewLinks, EachClickOpensOnce)
{
    open_link("manual.pdf");
    click("link");
    click("link");
    EXPECT_THAT(opened.take(), ElementsAre(url("manual.pdf"), url("manual.pdf")));
}

TEST_F(QHelpWebViewLinks, OnlyClicksOpenOutside)
{
    write("notes.txt", "the notes");
    open_page("the index");
    main_frame().evaluateJavaScript("window.location = 'notes.txt'");
    expect_text("the notes");
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

// The slot

TEST_F(QHelpWebViewLinks, SlotOpensWebAddressesAndFiles)
{
    open_page("the index");
    const std::vector<QUrl> addresses = {QUrl("http://help.example/"), QUrl("https://help.example/a.html"),
        QUrl("https://help.example/a.htm"), url("manual.pdf"), url("README"), url("page.xhtml"),
        url("page.ht"), url("picture.svg"), url("html"), url("page.html.gz")};
    for (const QUrl& address : addresses) {
        send_link(address);
        EXPECT_THAT(opened.take(), ElementsAre(address)) << address.toString().toStdString();
    }
}

TEST_F(QHelpWebViewLinks, SlotLeavesPagesToTheView)
{
    open_page("the index");
    for (const char* const name : {"page.html", "page.htm", "page.htmlx", "page.htms", "a.b.html"}) {
        send_link(url(name));
    }
    QUrl anchor = url("page.html");
    anchor.setFragment("part.pdf");
    send_link(anchor);
    QTest::qWait(20);
    EXPECT_THAT(opened.take_texts(), IsEmpty());
    EXPECT_EQ(url("index.html"), view->url()); // and does not load them either
}

class QHelpWebViewOtherScheme : public QHelpWebViewLinks, public testing::WithParamInterface<const char*>
{ };

TEST_P(QHelpWebViewOtherScheme, IsIgnored)
{
    open_link(GetParam());
    send_link(QUrl(GetParam()));
    click("link");
    EXPECT_THAT(opened.take_texts(), IsEmpty());
    EXPECT_EQ(url("index.html"), view->url());
    EXPECT_TRUE(text().contains("the index"));
}

INSTANTIATE_TEST_SUITE_P(QHelpWebView, QHelpWebViewOtherScheme,
    testing::Values("mailto:somebody@help.example", "ftp://help.example/manual.pdf", "tel:123",
        "javascript:void(0)", "unknown://help.example/page.html", "filesystem:a.pdf"));

TEST_F(QHelpWebViewLinks, AddressWithoutASchemeIsIgnored)
{
    open_page("the index");
    for (const char* const address : {"", "manual.pdf", "/manual.pdf", "//help.example/"}) {
        send_link(QUrl(address));
    }
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

// The rule

TEST(QHelpWebViewPage, LocalFilesThatAreNoPagesOpenOutside)
{
    for (const char* const address : {"file:///help/manual.pdf", "file:///help/README",
             "file:///help/page.html.pdf", "file:///help/a.b/README", "file:///help/page.xhtml",
             "file:///help/manual.pdf#page.html", "file:///help/St%C3%B6rung.pdf"}) {
        EXPECT_TRUE(QHelpWebViewPage::opens_outside(QUrl(address))) << address;
    }
}

TEST(QHelpWebViewPage, SuffixOfAPageIsWrittenInSmallLetters)
{
    for (const char* const address : {"file:///help/page.HTML", "file:///help/page.HTM",
             "file:///help/page.Html", "file:///help/page.hTm"}) {
        EXPECT_TRUE(QHelpWebViewPage::opens_outside(QUrl(address))) << address;
    }
}

TEST(QHelpWebViewPage, PagesAndTheWebAreNoneOfThem)
{
    for (const char* const address :
        {"file:///help/page.html", "file:///help/page.htm", "file:///help/page.html#part.pdf",
            "file:///help/archive.pdf.html", "file:///help/St%C3%B6rung.html", "https://help.example/a.pdf",
            "http://help.example/", "mailto:somebody@help.example", "ftp://help.example/a.pdf"}) {
        EXPECT_FALSE(QHelpWebViewPage::opens_outside(QUrl(address))) << address;
    }
}
