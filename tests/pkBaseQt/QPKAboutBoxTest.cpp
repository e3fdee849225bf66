#include "support/App.h"
#include "support/PrivateHome.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/QPKAboutBox.h>
#include <pkBaseQt/pkProductInfo.h>

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>
#include <QtWidgets/QTextBrowser>

using pkBase::pkProductInfo;

/// Takes the addresses that would be opened by other programs.
class Outside : public QObject
{
    Q_OBJECT

public:
    Outside()
    {
        for (const char* scheme : {"http", "https", "mailto", "file"}) {
            QDesktopServices::setUrlHandler(scheme, this, "open");
        }
    }
    ~Outside() override
    {
        for (const char* scheme : {"http", "https", "mailto", "file"}) {
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    QStringList opened;

public slots:
    void open(const QUrl& url) { opened.append(url.toString()); }
};

/// What happens to windows, in order.
class Steps : public QObject
{
public:
    void watch(QWidget& window, const QString& name)
    {
        window.setObjectName(name);
        window.installEventFilter(this);
    }
    bool eventFilter(QObject* p_window, QEvent* p_event) override
    {
        switch (p_event->type()) {
        case QEvent::Hide:
            taken.append(p_window->objectName() + " closed");
            break;
        case QEvent::Show:
        case QEvent::WindowActivate:
        case QEvent::ZOrderChange:
            taken.append(p_window->objectName() + " shown or activated");
            break;
        default:
            break;
        }
        return false;
    }

    QStringList taken;
};

/// A product, a page about it and a log file.
class QPKAboutBox : public testing::Test
{
protected:
    QPKAboutBox()
    {
        pkProductInfo& product = pkProductInfo::instance();
        product.product_name("TarqTerrain");
        product.marketing_name("Tarq Terr\xc3\xa4in <b>&");
        product.version("2.4.1");
        product.build_number(4711);
        write(m_page,
            "<html><head><meta charset=\"utf-8\"></head><body><h1>About "
            "us</h1><p>Gel\xc3\xa4nde</p></body></html>");
        write(m_log, "an entry\n");
    }
    ~QPKAboutBox() override { pkBase::pkDestructor::run(); } // with the viewer, before the application object

    static void write(const QString& file, const QByteArray& bytes)
    {
        QFile writer(file);
        ASSERT_TRUE(writer.open(QIODevice::WriteOnly));
        writer.write(bytes);
    }
    static QString scratch(const QString& name)
    {
        return QString::fromStdString(support::PrivateHome::scratch_directory()) + '/' + name;
    }
    /// The text of the page as it is read.
    static QString page_text(const QDialog& box) { return box.findChild<QTextBrowser*>()->toPlainText(); }
    /// The label that shows @p text as it stands, or null.
    static const QLabel* label_with(const QDialog& box, const QString& text)
    {
        for (const QLabel* const p_label : box.findChildren<QLabel*>()) {
            if (p_label->text().contains(text)
                && (p_label->textFormat() == Qt::PlainText
                    || (p_label->textFormat() == Qt::AutoText && !Qt::mightBeRichText(p_label->text())))) {
                return p_label;
            }
        }
        return nullptr;
    }
    /// Everything that the box says in labels.
    static QString labels(const QDialog& box)
    {
        QString all;
        for (const QLabel* const p_label : box.findChildren<QLabel*>()) {
            all += p_label->text() + '\n';
        }
        return all;
    }
    static void click_link(QDialog& box, const QString& text)
    {
        box.resize(600, 500);
        box.show();
        QCoreApplication::processEvents();
        auto* const p_browser = box.findChild<QTextBrowser*>();
        QTextCursor cursor = p_browser->document()->find(text);
        ASSERT_FALSE(cursor.isNull());
        cursor.setPosition(cursor.selectionStart() + text.size() / 2);
        QTest::mouseClick(
            p_browser->viewport(), Qt::LeftButton, Qt::NoModifier, p_browser->cursorRect(cursor).center());
    }

    support::App m_app;
    const QString m_page = scratch("about.htm");
    const QString m_log = scratch("Tarq_1.log");
};

TEST_F(QPKAboutBox, ShowsProductVersionAndBuild)
{
    const pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    EXPECT_NE(label_with(box, QString::fromUtf8("Tarq Terr\xc3\xa4in <b>&")), nullptr)
        << labels(box).toStdString();
    EXPECT_TRUE(labels(box).contains("2.4.1"));
    EXPECT_TRUE(labels(box).contains("4711"));
}

TEST_F(QPKAboutBox, ShowsThePage)
{
    const pkBase::QPKAboutBox box(m_page);
    EXPECT_EQ(page_text(box), QString::fromUtf8("About us\nGel\xc3\xa4nde"));
    EXPECT_TRUE(box.findChild<QTextBrowser*>("page")->isReadOnly());
}

TEST_F(QPKAboutBox, PathOfThePageMayHoldWhatIsSpecialInAnAddress)
{
    for (const char* const name : {"100%.htm", "a#b.htm", "a?b.htm", "a%20b.htm", "%23#?&+ ;:.htm"}) {
        write(scratch(name), "<p>the page</p><a href=\"#end\">to the end</a><a name=\"end\">end</a>");
        pkBase::QPKAboutBox box(scratch(name));
        EXPECT_TRUE(page_text(box).startsWith("the page")) << name;
        const Outside outside;
        click_link(box, "to the end"); // which is in the page
        EXPECT_EQ(outside.opened, QStringList()) << name;
    }
}

TEST_F(QPKAboutBox, LinksOfAPageWithAnOddPathLeadToItsNeighbours)
{
    write(scratch("100% #1?.htm"), "<a href=\"licence.txt\">to the licence</a>");
    const Outside outside;
    pkBase::QPKAboutBox box(scratch("100% #1?.htm"));
    click_link(box, "to the licence");
    EXPECT_EQ(outside.opened, QStringList(QUrl::fromLocalFile(scratch("licence.txt")).toString()));
}

TEST_F(QPKAboutBox, PathOfACompiledInPageMayHoldWhatIsSpecialInAnAddress)
{
    for (const char* const name : {":/pages/plain.htm", ":/pages/100% #1 a?b.htm", ":/pages/a%20b.htm"}) {
        ASSERT_TRUE(QFile::exists(name)) << name;
        const pkBase::QPKAboutBox box(name);
        EXPECT_EQ(page_text(box).trimmed(), "A compiled-in page") << name;
    }
}

TEST_F(QPKAboutBox, PathOfThePageMayBeRelative)
{
    ASSERT_TRUE(QDir::setCurrent(scratch(".")));
    write("page.htm", "<a href=\"licence.txt\">to the licence</a>");
    const Outside outside;
    pkBase::QPKAboutBox box("page.htm");
    EXPECT_EQ(page_text(box), "to the licence");
    ASSERT_TRUE(QDir::setCurrent("/")); // the program goes elsewhere meanwhile
    click_link(box, "to the licence");
    EXPECT_EQ(outside.opened, QStringList(QUrl::fromLocalFile(scratch("licence.txt")).toString()));
}

TEST_F(QPKAboutBox, PageThatCannotBeReadIsNamedInItsPlace)
{
    for (const QString& page : {scratch("missing.htm"), QString(":/no/such/page.htm"),
             scratch("no <b>such</b> &amp; page.htm"), scratch("."), scratch("missing %1 %2.htm")}) {
        const pkBase::QPKAboutBox box(page, nullptr, m_log);
        EXPECT_TRUE(page_text(box).contains(page)) << page_text(box).toStdString();
        EXPECT_NE(label_with(box, m_log), nullptr); // and the rest is there
    }
}

TEST_F(QPKAboutBox, EmptyPageHurtsNobody)
{
    const pkBase::QPKAboutBox box((QString()));
    EXPECT_TRUE(labels(box).contains("2.4.1"));
    write(m_page, "");
    const pkBase::QPKAboutBox empty(m_page);
    EXPECT_TRUE(labels(empty).contains("2.4.1"));
}

TEST_F(QPKAboutBox, PathOfTheLogIsShownAndCanBeSelected)
{
    const pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    EXPECT_EQ(box.log_file(), m_log);
    const QLabel* const p_label = label_with(box, m_log);
    ASSERT_NE(p_label, nullptr) << labels(box).toStdString();
    EXPECT_TRUE(p_label->textInteractionFlags() & Qt::TextSelectableByMouse);
    EXPECT_FALSE(p_label->isHidden());
}

TEST_F(QPKAboutBox, OddPathOfTheLogIsShownAsItIs)
{
    const QString log = scratch(QString::fromUtf8("<b>Gel\xc3\xa4nde</b> &amp; %1.log"));
    const pkBase::QPKAboutBox box(m_page, nullptr, log);
    EXPECT_NE(label_with(box, log), nullptr) << labels(box).toStdString();
    EXPECT_TRUE(box.facts().contains(log));
}

TEST_F(QPKAboutBox, WithoutALogNoneIsNamed)
{
    const pkBase::QPKAboutBox with(m_page, nullptr, m_log);
    const pkBase::QPKAboutBox without(m_page);
    EXPECT_EQ(without.log_file(), QString());
    EXPECT_EQ(with.facts().trimmed().count('\n'), without.facts().trimmed().count('\n') + 1);
    EXPECT_FALSE(without.facts().contains(".log"));
    EXPECT_FALSE(labels(without).contains(".log"));
}

TEST_F(QPKAboutBox, FactsAreWhatAReportShouldSay)
{
    const pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    const QStringList lines = box.facts().trimmed().split('\n');
    const auto has = [&lines](const QString& fact) { return !lines.filter(fact).isEmpty(); };
    EXPECT_TRUE(has(QString::fromUtf8("Tarq Terr\xc3\xa4in <b>&"))) << box.facts().toStdString();
    EXPECT_TRUE(has("2.4.1"));
    EXPECT_TRUE(has("4711"));
    EXPECT_TRUE(has(qVersion()));
    EXPECT_TRUE(has(QSysInfo::prettyProductName()) || has(QSysInfo::kernelVersion()));
    EXPECT_TRUE(has(m_log));
    EXPECT_EQ(lines.size(), 6); // a line each
}

TEST_F(QPKAboutBox, FactsWithPlaceHoldersStayAsTheyAre)
{
    pkProductInfo::instance().marketing_name("Tarq %1 %2 %3 %9");
    const pkBase::QPKAboutBox box(m_page, nullptr, scratch("%1 %2 %L1.log"));
    EXPECT_TRUE(box.facts().contains("Tarq %1 %2 %3 %9"));
    EXPECT_TRUE(box.facts().contains("%1 %2 %L1.log"));
    EXPECT_TRUE(labels(box).contains("Tarq %1 %2 %3 %9"));
}

TEST_F(QPKAboutBox, FactsAreCopied)
{
    pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    QApplication::clipboard()->setText("before");
    box.copy_facts();
    EXPECT_EQ(QApplication::clipboard()->text(), box.facts());
}

TEST_F(QPKAboutBox, ButtonCopiesTheFacts)
{
    pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    box.show();
    QApplication::clipboard()->setText("before");
    for (QAbstractButton* const p_button : box.findChildren<QAbstractButton*>()) {
        if (p_button->text().contains("Copy")) {
            p_button->click();
        }
    }
    EXPECT_EQ(QApplication::clipboard()->text(), box.facts());
    EXPECT_TRUE(box.isVisible());
}

TEST_F(QPKAboutBox, TabKeyReachesEverythingFromTheTopDown)
{
    pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    box.show();
    QApplication::setActiveWindow(&box);
    box.findChild<QTextBrowser*>()->setFocus();
    QStringList stops;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const auto* const p_button = qobject_cast<const QAbstractButton*>(QApplication::focusWidget());
        stops.append(p_button ? p_button->text().remove('&') : "page");
    }
    EXPECT_EQ(stops, QStringList({"Show Log File", "Copy", "Close", "page"}));
}

TEST_F(QPKAboutBox, ShowsTheLogInItsViewerAndCloses)
{
    pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    box.show();
    box.show_log_file();
    pkBase::QLogFileViewer& viewer = pkBase::QLogFileViewer::instance();
    EXPECT_TRUE(viewer.isVisible());
    EXPECT_EQ(viewer.path(), m_log);
    EXPECT_EQ(viewer.text(), "an entry\n");
    EXPECT_FALSE(box.isVisible());
}

TEST_F(QPKAboutBox, ButtonShowsTheLogOverAModalBox)
{
    pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    QTimer::singleShot(0, &box, [&box] {
        for (QAbstractButton* const p_button : box.findChildren<QAbstractButton*>()) {
            if (p_button->text().contains("Log", Qt::CaseInsensitive)) {
                p_button->click();
                return;
            }
        }
        ADD_FAILURE() << "no button for the log";
        box.close();
    });
    box.exec();
    EXPECT_TRUE(pkBase::QLogFileViewer::instance().isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QPKAboutBox, ViewerComesWhenTheBoxHasClosed)
{
    pkBase::QLogFileViewer& viewer = pkBase::QLogFileViewer::instance();
    for (const bool is_open_already : {false, true}) {
        viewer.setVisible(is_open_already);
        pkBase::QPKAboutBox box(m_page, nullptr, m_log);
        box.show();
        Steps steps;
        steps.watch(box, "box");
        steps.watch(viewer, "viewer");
        box.show_log_file();
        EXPECT_TRUE(viewer.isVisible());
        EXPECT_EQ(steps.taken.value(0), "box closed");
        EXPECT_TRUE(steps.taken.mid(1).contains("viewer shown or activated")) << is_open_already;
    }
}

TEST_F(QPKAboutBox, ViewerOfAnotherFileShowsThisLog)
{
    write(scratch("other.log"), "other\n");
    pkBase::QLogFileViewer::instance().setPath(scratch("other.log"));
    pkBase::QLogFileViewer::instance().show();
    pkBase::QPKAboutBox box(m_page, nullptr, m_log);
    box.show_log_file();
    EXPECT_EQ(pkBase::QLogFileViewer::instance().text(), "an entry\n");
}

TEST_F(QPKAboutBox, LinksOpenOutside)
{
    write(m_page,
        "<a href=\"http://tarq.example/a?b=c\">first link</a><p>"
        "<a href=\"https://tarq.example/\">second link</a><p>"
        "<a href=\"mailto:help@tarq.example\">third link</a>");
    Outside outside;
    pkBase::QPKAboutBox box(m_page);
    const QString before = page_text(box);
    click_link(box, "first link");
    click_link(box, "second link");
    click_link(box, "third link");
    EXPECT_EQ(outside.opened,
        QStringList({"http://tarq.example/a?b=c", "https://tarq.example/", "mailto:help@tarq.example"}));
    EXPECT_EQ(page_text(box), before); // the page stays
}

TEST_F(QPKAboutBox, LinkToAnotherFileOpensOutsideToo)
{
    write(scratch("licence.txt"), "the licence");
    write(m_page, "<a href=\"licence.txt\">to the licence</a>");
    Outside outside;
    pkBase::QPKAboutBox box(m_page);
    click_link(box, "to the licence");
    EXPECT_EQ(outside.opened, QStringList(QUrl::fromLocalFile(scratch("licence.txt")).toString()));
    EXPECT_EQ(page_text(box), "to the licence");
}

TEST_F(QPKAboutBox, LinkIntoThePageOpensNothingOutside)
{
    write(m_page, "<a href=\"#libraries\">to the libraries</a><h2><a name=\"libraries\">Libraries</a></h2>");
    Outside outside;
    pkBase::QPKAboutBox box(m_page);
    const QString before = page_text(box);
    click_link(box, "to the libraries");
    EXPECT_EQ(outside.opened, QStringList());
    EXPECT_EQ(page_text(box), before);
}

TEST_F(QPKAboutBox, LinkThatNothingOpensIsNamed)
{
    write(m_page, "<a href=\"http://tarq.example/a?b=c\">a link</a>");
    pkBase::QPKAboutBox box(m_page);
    EXPECT_EQ(label_with(box, "http://tarq.example"), nullptr);
    click_link(box, "a link"); // this platform opens nothing of its own accord
    const QLabel* const p_remark = label_with(box, "http://tarq.example/a?b=c");
    ASSERT_NE(p_remark, nullptr) << labels(box).toStdString();
    EXPECT_TRUE(p_remark->isVisible());
    EXPECT_TRUE(p_remark->textInteractionFlags() & Qt::TextSelectableByMouse);
    EXPECT_TRUE(box.isVisible());
}

TEST_F(QPKAboutBox, LinkThatIsOpenedIsNotNamed)
{
    write(m_page, "<a href=\"http://tarq.example/a?b=c\">a link</a>");
    const Outside outside;
    pkBase::QPKAboutBox box(m_page);
    click_link(box, "a link");
    EXPECT_EQ(outside.opened.size(), 1);
    EXPECT_EQ(label_with(box, "http://tarq.example"), nullptr);
}

TEST_F(QPKAboutBox, TextBesideLinksOpensNothing)
{
    write(m_page, "<p>plain words</p><a href=\"http://tarq.example/\">a link</a>");
    Outside outside;
    pkBase::QPKAboutBox box(m_page);
    click_link(box, "plain words");
    EXPECT_EQ(outside.opened, QStringList());
}

TEST_F(QPKAboutBox, ClosesByEscapeAndByItsButton)
{
    pkBase::QPKAboutBox box(m_page);
    box.show();
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_FALSE(box.isVisible());
    box.show();
    for (QAbstractButton* const p_button : box.findChildren<QAbstractButton*>()) {
        if (p_button->text().remove('&') == "Close" || p_button->text().remove('&') == "OK") {
            p_button->click();
        }
    }
    EXPECT_FALSE(box.isVisible());
}

TEST_F(QPKAboutBox, NameOfTheProductStandsOut)
{
    QFont small;
    small.setPointSize(8);
    QApplication::setFont(small);
    const pkBase::QPKAboutBox box(m_page);
    EXPECT_EQ(box.findChild<QLabel*>("product")->font().pointSize(), 12);
}

TEST_F(QPKAboutBox, NameOfTheProductStandsOutInAFontThatIsSizedInPixels)
{
    QFont small;
    small.setPixelSize(20);
    QApplication::setFont(small);
    const pkBase::QPKAboutBox box(m_page);
    EXPECT_EQ(box.findChild<QLabel*>("product")->font().pixelSize(), 30);
}

TEST_F(QPKAboutBox, TakesAParentAndHasATitle)
{
    QWidget parent;
    const pkBase::QPKAboutBox box(m_page, &parent);
    EXPECT_EQ(box.parentWidget(), &parent);
    EXPECT_TRUE(box.isWindow());
    EXPECT_FALSE(box.windowTitle().isEmpty());
}

TEST_F(QPKAboutBox, KeepsTheWindowBelowFromBeingUsed)
{
    const pkBase::QPKAboutBox box(m_page);
    EXPECT_TRUE(box.isModal());
}

TEST_F(QPKAboutBox, WorksBeforeTheProductIsNamed)
{
    pkBase::pkDestructor::run(); // the next product information is fresh
    const pkBase::QPKAboutBox box(m_page);
    EXPECT_TRUE(box.facts().contains("Tarq"));
    EXPECT_TRUE(box.facts().contains("0.0.0"));
}

#include "QPKAboutBoxTest.moc"
