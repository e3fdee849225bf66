#include "QHelpWebViewFixture.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"

#include <pkBaseQt/pkProductInfo.h>

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QGuiApplication>
#include <QtPrintSupport/QPrintDialog>
#include <QtPrintSupport/QPrinter>
#include <QtTest/QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

// The help browser's context menu, and printing.

using namespace help_test;
using pkBase::pkProductInfo;
using support::DialogDriver;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class QHelpWebViewMenu : public WebViewFixture
{
protected:
    enum Entry
    {
        Back,
        Forward,
        Copy,
        Separator,
        OpenHelp,
        OpenCurrentPage
    };

    /// Opens the context menu and closes it after @p answer.
    void with_menu(const std::function<void(QMenu&)>& answer, const QPoint& global = QPoint(40, 60))
    {
        bool answered = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&answer, &answered] {
            auto* const p_menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (p_menu && !answered) {
                answered = true;
                const QPointer<QMenu> menu = p_menu;
                answer(*p_menu);
                if (menu) {
                    menu->close();
                }
            }
        });
        poll.start(5);
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), global);
        QApplication::sendEvent(view.get(), &event);
        EXPECT_TRUE(support::wait_until([&answered] { return answered; }));
        QTest::qWait(10);
        EXPECT_FALSE(QApplication::activePopupWidget());
    }

    /// Chooses an entry as the user does.
    void choose(Entry entry)
    {
        with_menu([entry](QMenu& menu) {
            menu.setActiveAction(menu.actions().at(entry));
            QTest::keyClick(&menu, Qt::Key_Return);
        });
    }
};

/// What the print dialog looked like.
struct ShownDialog
{
    bool is_print_dialog = false;
    bool modal = false;
    QString creator;
};

class QHelpWebViewPrint : public WebViewFixture
{
protected:
    /// Answers the next dialog, after @p meanwhile; what is printed then goes into a file.
    void answer(
        DialogDriver& dialogs, QDialog::DialogCode code, const std::function<void()>& meanwhile = [] {})
    {
        dialogs.answer([this, code, meanwhile](QDialog& dialog) {
            auto* const p_dialog = qobject_cast<QPrintDialog*>(&dialog);
            shown.is_print_dialog = p_dialog;
            shown.modal = dialog.isModal();
            if (p_dialog) {
                shown.creator = p_dialog->printer()->creator();
                p_dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
                p_dialog->printer()->setOutputFileName(path("printed.pdf"));
            }
            meanwhile();
            dialog.done(code);
        });
    }

    void print(QWebFrame* p_frame)
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(view.get(), "onPrintRequested", Q_ARG(QWebFrame*, p_frame)));
    }

    /// How many pages were printed; -1 if nothing was.
    static int printed_pages()
    {
        QFile file(path("printed.pdf"));
        if (!file.open(QIODevice::ReadOnly)) {
            return -1;
        }
        const QByteArray content = file.readAll();
        return content.count("/Type /Page\n");
    }

    ShownDialog shown;
};

} // namespace

// The context menu

TEST_F(QHelpWebViewMenu, HasItsEntriesInOrder)
{
    open_page("text");
    with_menu([this](QMenu& menu) {
        const QList<QAction*> entries = menu.actions();
        ASSERT_EQ(6, entries.size());
        EXPECT_EQ(view->pageAction(QWebPage::Back), entries[Back]);
        EXPECT_EQ(view->pageAction(QWebPage::Forward), entries[Forward]);
        EXPECT_EQ(view->pageAction(QWebPage::Copy), entries[Copy]);
        EXPECT_TRUE(entries[Separator]->isSeparator());
        EXPECT_EQ("Open Help in Web Browser", entries[OpenHelp]->text());
        EXPECT_EQ("Open Current Page Web Browser", entries[OpenCurrentPage]->text());
    });
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

TEST_F(QHelpWebViewMenu, IsInTheUsersLanguage)
{
    const ClassTranslator translator("tarqa::housekeeping::gui::QHelpWebView");
    open_page("text");
    with_menu([](QMenu& menu) {
        EXPECT_EQ("[T]Open Help in Web Browser", menu.actions().at(OpenHelp)->text());
        EXPECT_EQ("[T]Open Current Page Web Browser", menu.actions().at(OpenCurrentPage)->text());
    });
}

TEST_F(QHelpWebViewMenu, AppearsWhereTheEventWas)
{
    open_page("text");
    for (const QPoint& place : {QPoint(40, 60), QPoint(200, 123)}) {
        with_menu([&place](QMenu& menu) { EXPECT_EQ(place, menu.pos()); }, place);
    }
}

TEST_F(QHelpWebViewMenu, IsTheSameEachTime)
{
    open_page("text");
    const auto menus = [this] { return view->findChildren<QMenu*>().size(); };
    with_menu([](QMenu& menu) { EXPECT_EQ(6, menu.actions().size()); });
    const int left_over = menus(); // WebKit's own
    EXPECT_LE(left_over, 1);
    for (int i = 0; i < 3; ++i) {
        with_menu([](QMenu& menu) { EXPECT_EQ(6, menu.actions().size()); });
        EXPECT_EQ(left_over, menus());
    }
}

TEST_F(QHelpWebViewMenu, GoesBackAndForward)
{
    write("second.html", "the second page");
    open_page("the index <a id='link' href='second.html'>link</a>");
    with_menu([](QMenu& menu) {
        EXPECT_FALSE(menu.actions().at(Back)->isEnabled());
        EXPECT_FALSE(menu.actions().at(Forward)->isEnabled());
    });
    click("link");
    expect_text("the second page");
    choose(Back);
    expect_text("the index");
    choose(Forward);
    expect_text("the second page");
}

TEST_F(QHelpWebViewMenu, CopiesWhatIsSelected)
{
    open_page("text to be copied");
    view->page()->triggerAction(QWebPage::SelectAll);
    choose(Copy);
    EXPECT_EQ("text to be copied", QGuiApplication::clipboard()->text());
}

TEST_F(QHelpWebViewMenu, OpensTheHelpOutside)
{
    write("topic.html", "the topic");
    open_page("<iframe name='topic' src='topic.html'></iframe>");
    choose(OpenHelp);
    EXPECT_THAT(opened.take(), ElementsAre(url("index.html")));
}

TEST_F(QHelpWebViewMenu, OpensTheTopicOutside)
{
    write("topic.html", "the topic");
    write("aside.html", "something else");
    open_page("<iframe name='aside' src='aside.html'></iframe><iframe name='topic' src='topic.html'>"
              "</iframe><iframe name='Topic' src='aside.html'></iframe>");
    choose(OpenCurrentPage);
    EXPECT_THAT(opened.take(), ElementsAre(url("topic.html")));
}

TEST_F(QHelpWebViewMenu, OpensTheTopicWhoseAddressIsOnlyRequested)
{
    write("topic.html", "the topic");
    open_page("<iframe name='topic' src='topic.html'></iframe>");
    ASSERT_TRUE(frame("topic"));
    ASSERT_EQ(QUrl(), frame("topic")->url()); // the browser's own oddity
    EXPECT_TRUE(QMetaObject::invokeMethod(view.get(), "openCurrentPageInBrowser"));
    EXPECT_THAT(opened.take(), ElementsAre(url("topic.html")));
}

TEST_F(QHelpWebViewMenu, OpensTheTopicThatWasFollowed)
{
    write("topic.html", "<a id='link' href='next.html'>link</a> <a id='file' href='manual.pdf'>file</a>");
    write("next.html", "the next topic <a id='file' href='manual.pdf'>file</a>");
    open_page("<iframe name='topic' src='topic.html'></iframe>");
    click("file", *frame("topic")); // opens outside
    choose(OpenCurrentPage);
    EXPECT_THAT(opened.take(), ElementsAre(url("manual.pdf"), url("topic.html")));
    click("link", *frame("topic"));
    EXPECT_TRUE(
        support::wait_until([this] { return frame("topic")->toPlainText().contains("the next topic"); }));
    choose(OpenCurrentPage);
    EXPECT_THAT(opened.take(), ElementsAre(url("next.html")));
}

TEST_F(QHelpWebViewMenu, OpensThePageOutsideWithoutATopic)
{
    write("aside.html", "something else");
    open_page("<iframe name='aside' src='aside.html'></iframe>");
    choose(OpenCurrentPage);
    choose(OpenHelp);
    EXPECT_THAT(opened.take(), ElementsAre(url("index.html"), url("index.html")));
}

TEST_F(QHelpWebViewMenu, OpensThePageThatIsShownNow)
{
    write("second.html", "the second page");
    open_page("<a id='link' href='second.html'>link</a>");
    click("link");
    expect_text("the second page");
    choose(OpenHelp);
    choose(OpenCurrentPage);
    EXPECT_THAT(opened.take(), ElementsAre(url("second.html"), url("second.html")));
}

TEST_F(QHelpWebViewMenu, ClosedMenuDoesNothing)
{
    open_page("text");
    with_menu([](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
    EXPECT_THAT(opened.take_texts(), IsEmpty());
    EXPECT_EQ("text", text());
}

TEST_F(QHelpWebViewMenu, GoesWithTheViewWhileItIsOpen)
{
    open_page("text");
    with_menu([this](QMenu&) { view.reset(); });
    EXPECT_FALSE(view);
    EXPECT_THAT(opened.take_texts(), IsEmpty());
}

// Printing

TEST_F(QHelpWebViewPrint, AsksForThePrinter)
{
    pkProductInfo::instance().marketing_name("Terrain, Professional");
    open_page("text");
    DialogDriver dialogs;
    answer(dialogs, QDialog::Rejected);
    print(&main_frame());
    ASSERT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ("Print Help", dialogs.shown()[0].title);
    EXPECT_EQ(view.get(), dialogs.shown()[0].parent);
    EXPECT_TRUE(shown.is_print_dialog);
    EXPECT_TRUE(shown.modal);
    EXPECT_EQ("Terrain, Professional", shown.creator);
}

TEST_F(QHelpWebViewPrint, AsksInTheUsersLanguage)
{
    const ClassTranslator translator("tarqa::housekeeping::gui::QHelpWebView");
    open_page("text");
    DialogDriver dialogs;
    answer(dialogs, QDialog::Rejected);
    print(&main_frame());
    ASSERT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ("[T]Print Help", dialogs.shown()[0].title);
}

TEST_F(QHelpWebViewPrint, CreatorIsTheProductWithoutAMarketingName)
{
    open_page("text");
    DialogDriver dialogs;
    answer(dialogs, QDialog::Rejected);
    print(&main_frame());
    EXPECT_EQ(s_product, shown.creator);
}

TEST_F(QHelpWebViewPrint, PrintsWhenAccepted)
{
    open_page("text");
    DialogDriver dialogs;
    answer(dialogs, QDialog::Accepted);
    print(&main_frame());
    EXPECT_EQ(1, printed_pages());
}

TEST_F(QHelpWebViewPrint, PrintsNothingWhenRejected)
{
    open_page("text");
    DialogDriver dialogs;
    answer(dialogs, QDialog::Rejected);
    print(&main_frame());
    EXPECT_EQ(-1, printed_pages());
}

TEST_F(QHelpWebViewPrint, PrintsTheFrameThatAsks)
{
    write("topic.html", QString("<p>a line of a long topic</p>").repeated(300));
    open_page("<iframe name='topic' src='topic.html'></iframe>");
    DialogDriver dialogs;
    answer(dialogs, QDialog::Accepted);
    print(frame("topic"));
    EXPECT_GT(printed_pages(), 1);
    answer(dialogs, QDialog::Accepted);
    print(&main_frame());
    EXPECT_EQ(1, printed_pages());
}

TEST_F(QHelpWebViewPrint, PrintsNothingWhenTheViewGoesMeanwhile)
{
    open_page("text");
    DialogDriver dialogs;
    dialogs.answer([this](QDialog&) { view.reset(); });
    print(&main_frame());
    EXPECT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ(-1, printed_pages());
}

TEST_F(QHelpWebViewPrint, PrintsNothingWhenTheFrameGoesMeanwhile)
{
    write("topic.html", "the topic");
    open_page("<iframe id='frame' name='topic' src='topic.html'></iframe>");
    const QPointer<QWebFrame> topic = frame("topic");
    ASSERT_TRUE(topic);
    DialogDriver dialogs;
    answer(dialogs, QDialog::Accepted, [this] {
        main_frame().evaluateJavaScript("document.body.removeChild(document.getElementById('frame'))");
    });
    print(topic);
    EXPECT_EQ(1u, dialogs.shown().size());
    EXPECT_FALSE(topic);
    EXPECT_EQ(-1, printed_pages());
    answer(dialogs, QDialog::Accepted); // and the rest can be printed still
    print(&main_frame());
    EXPECT_EQ(1, printed_pages());
}

TEST_F(QHelpWebViewPrint, PagesMayAskForIt)
{
    open_page("<button id='print' onclick='window.print()'>Print</button>");
    DialogDriver dialogs;
    answer(dialogs, QDialog::Accepted);
    click("print");
    ASSERT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ("Print Help", dialogs.shown()[0].title);
    EXPECT_EQ(1, printed_pages());
}
