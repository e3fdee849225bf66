#include "HelpPageFile.h"
#include "HelpWindowFixture.h"
#include "help/FindBar.h"
#include "help/HelpTopics.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtCore/QTimer>
#include <QtGui/QWindow>
#include <QtTest/QTest>
#include <QtWebKit/QWebElement>
#include <QtWebKitWidgets/QWebFrame>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

using namespace host_test;
using terrain::help_key;
using terrain::HelpDeed;
using terrain::HelpPages;
using terrain::HelpWindow;
using terrain::Topic;

namespace {

const HelpDeed s_deeds[] = {HelpDeed::Back, HelpDeed::Forward, HelpDeed::Contents, HelpDeed::Larger,
    HelpDeed::Smaller, HelpDeed::FirstSize, HelpDeed::Find, HelpDeed::FindNext, HelpDeed::FindPrevious,
    HelpDeed::Print, HelpDeed::OpenOutside, HelpDeed::Close};

/// Enters a text to find.
void look_for(HelpWindow& window, const QString& text)
{
    window.action(HelpDeed::Find).trigger();
    window.find_bar().line().setText(text);
}

QString answer(const HelpWindow& window)
{
    return window.find_bar().findChild<QLabel*>()->text();
}

QString selected(const HelpWindow& window)
{
    return window.view().selectedText();
}

/// How far down the page the selected place is.
int selected_at(const HelpWindow& window)
{
    return window.view().page()->currentFrame()->scrollPosition().y();
}

} // namespace

// Pages

TEST_F(HelpWindowTest, ShowsThePageOfAKeyUnderItsTitle)
{
    show(help_key(Topic::Map));
    const ShownHelp shown(*window);
    shown.expect_page("map.html");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), "Map - Tarq Terrain Help");
}

TEST_F(HelpWindowTest, ShowsAPageOfThisName)
{
    show("undo.html");
    ShownHelp(*window).expect_page("undo.html");
}

TEST_F(HelpWindowTest, ShowsAPartOfAPage)
{
    show(help_key(Topic::Preferences) + "#pathToFFmpegExecutable");
    ShownHelp(*window).expect_page("preferences.html");
    EXPECT_EQ(window->view().url().fragment(), "pathToFFmpegExecutable");
    EXPECT_TRUE(support::wait_until(
        [this] { return window->view().page()->mainFrame()->scrollPosition().y() > 500; }));
}

TEST_F(HelpWindowTest, ShowsEveryPageWithEveryPicture)
{
    for (const terrain::HelpTopic& topic : terrain::help_topics()) {
        show(topic.key);
        const ShownHelp shown(*window);
        shown.expect_page(topic.page);
        EXPECT_EQ(shown.title(), HelpPageFile(help_file(topic.page)).title);
        EXPECT_FALSE(shown.element("main").isNull()) << topic.page.toStdString();
    }
}

TEST_F(HelpWindowTest, GoesBackAndForwardAndToTheContents)
{
    show(help_key(Topic::Map));
    const ShownHelp shown(*window);
    shown.expect_page("map.html");
    EXPECT_FALSE(window->action(HelpDeed::Back).isEnabled());
    shown.click("nav a[href=\"files.html\"]");
    shown.expect_page("files.html");
    EXPECT_TRUE(window->action(HelpDeed::Back).isEnabled());
    EXPECT_FALSE(window->action(HelpDeed::Forward).isEnabled());
    window->action(HelpDeed::Back).trigger();
    shown.expect_page("map.html");
    window->action(HelpDeed::Forward).trigger();
    shown.expect_page("files.html");
    window->action(HelpDeed::Contents).trigger();
    shown.expect_page("index.html");
    window->action(HelpDeed::Back).trigger();
    shown.expect_page("files.html");
    EXPECT_TRUE(opened.urls.empty());
}

TEST_F(HelpWindowTest, OpensAnotherKindOfFileOutside)
{
    show(help_key(Topic::Contents));
    const ShownHelp shown(*window);
    shown.expect_page("index.html");
    shown.click("a[href=\"reference-card.pdf\"]");
    ASSERT_EQ(opened.urls.size(), 1U);
    EXPECT_EQ(opened.urls[0], QUrl::fromLocalFile(help_file("reference-card.pdf")));
    shown.expect_page("index.html");
}

TEST_F(HelpWindowTest, OpensTheWebOutside)
{
    show(help_key(Topic::Files));
    const ShownHelp shown(*window);
    shown.expect_page("files.html");
    shown.click("a[href^=\"https:\"]");
    ASSERT_EQ(opened.urls.size(), 1U);
    EXPECT_EQ(opened.urls[0], QUrl("https://gdal.org/drivers/raster/index.html"));
    shown.expect_page("files.html");
}

TEST_F(HelpWindowTest, SaysWhereALinkLeads)
{
    show(help_key(Topic::Files));
    emit window->view().page()->linkHovered("https://gdal.org/", QString(), QString());
    EXPECT_EQ(window->statusBar()->currentMessage(), "Opens in another program: https://gdal.org/");
    emit window->view().page()->linkHovered("file:///help/map.html", QString(), QString());
    EXPECT_EQ(window->statusBar()->currentMessage(), "map.html");
    emit window->view().page()->linkHovered(QString(), QString(), QString());
    EXPECT_EQ(window->statusBar()->currentMessage(), QString());
}

// What is missing

TEST_F(HelpWindowTest, NamesAnUnknownTopicAndLogsIt)
{
    show("NO_<b>SUCH</b>_KEY & more");
    const ShownHelp shown(*window);
    shown.expect_text("The help has no page about \"NO_<b>SUCH</b>_KEY & more\".");
    EXPECT_EQ(window->windowTitle(), "There is no such page - Tarq Terrain Help");
    EXPECT_TRUE(log.take("The help has no page about \"NO_<b>SUCH</b>_KEY & more\"."));
    shown.click("body a");
    shown.expect_page("index.html");
    window->action(HelpDeed::Back).trigger();
    shown.expect_text("NO_<b>SUCH</b>_KEY & more");
    EXPECT_TRUE(log.take("The help has no page about"));
}

TEST_F(HelpWindowTest, DoesNotTakeATopicForAFile)
{
    write_page("../secret.html", "Secret", "not to be read");
    write_page("index.html", "Contents", "contents");
    show("../secret.html", HelpPages(own_folder()));
    ShownHelp(*window).expect_text("The help has no page about \"../secret.html\".");
    EXPECT_TRUE(log.take("The help has no page about \"../secret.html\"."));
}

TEST_F(HelpWindowTest, NamesAMissingFileAndLogsIt)
{
    write_page("index.html", "Contents", "contents");
    show(help_key(Topic::Map), HelpPages(own_folder()));
    ShownHelp(*window).expect_text("The page \"" + own_folder() + "/map.html\" of the help is missing.");
    EXPECT_TRUE(log.take(own_folder().toStdString() + "/map.html"));
}

TEST_F(HelpWindowTest, NamesAMissingFolderAndLogsIt)
{
    const QString folder = own_folder() + "/not there";
    show(help_key(Topic::Contents), HelpPages(folder));
    const ShownHelp shown(*window);
    shown.expect_text("The help is not installed: there is no folder \"" + folder + "\".");
    shown.expect_text("Installing the program again brings the help back.");
    EXPECT_TRUE(shown.element("a").isNull());
    EXPECT_TRUE(log.take("The help is not installed: there is no folder \"" + folder.toStdString() + "\"."));
}

TEST_F(HelpWindowTest, NamesThePageThatABrokenLinkLeadsTo)
{
    write_page("index.html", "Contents", "<a href=\"gone.html\">a link</a>");
    show(help_key(Topic::Contents), HelpPages(own_folder()));
    const ShownHelp shown(*window);
    shown.expect_text("a link");
    shown.click("a");
    shown.expect_text("/gone.html\" of the help is missing.");
    EXPECT_TRUE(log.take("/gone.html\" of the help is missing."));
    window->action(HelpDeed::Back).trigger();
    shown.expect_text("a link");
}

// Tools

TEST_F(HelpWindowTest, FindsTextFromPlaceToPlaceAndRoundTheEnds)
{
    write_page("index.html", "Contents",
        "<p>basalt</p><div style=\"height: 3000px\"></div><p>Basalt</p>"
        "<div style=\"height: 3000px\"></div><p>granite</p>");
    show(help_key(Topic::Contents), HelpPages(own_folder()));
    ShownHelp(*window).expect_text("granite");
    look_for(*window, "basalt");
    EXPECT_EQ(selected(*window), "basalt");
    EXPECT_EQ(selected_at(*window), 0);
    window->action(HelpDeed::FindNext).trigger();
    EXPECT_EQ(selected(*window), "Basalt");
    const int second = selected_at(*window);
    EXPECT_GT(second, 1000);
    QTest::keyClick(&window->find_bar().line(), Qt::Key_Return);
    EXPECT_EQ(selected(*window), "basalt");
    window->action(HelpDeed::FindPrevious).trigger();
    EXPECT_EQ(selected(*window), "Basalt");
    QTest::keyClick(&window->find_bar().line(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(selected(*window), "basalt");
    EXPECT_EQ(answer(*window), QString());
}

TEST_F(HelpWindowTest, StaysAtAPlaceWhileItsTextIsEntered)
{
    write_page("index.html", "Contents", "<p>base</p><p>basalt</p><p>basanite</p>");
    show(help_key(Topic::Contents), HelpPages(own_folder()));
    ShownHelp(*window).expect_text("basanite");
    look_for(*window, "bas");
    EXPECT_EQ(selected(*window), "bas");
    look_for(*window, "basa");
    look_for(*window, "basan");
    EXPECT_EQ(selected(*window), "basan");
    look_for(*window, "basanite");
    EXPECT_EQ(selected(*window), "basanite");
}

TEST_F(HelpWindowTest, SaysThatATextIsNotOnThePage)
{
    show(help_key(Topic::Map));
    ShownHelp(*window).expect_page("map.html");
    look_for(*window, "no such words");
    EXPECT_EQ(answer(*window), "Not on this page");
    look_for(*window, "wheel");
    EXPECT_EQ(answer(*window), QString());
    look_for(*window, QString());
    EXPECT_EQ(answer(*window), QString());
}

TEST_F(HelpWindowTest, MarksAllPlacesUntilTheLineIsLeft)
{
    write_page("index.html", "Contents", "<p>basalt</p><p>granite</p><p>granite</p>");
    show(help_key(Topic::Contents), HelpPages(own_folder()));
    ShownHelp(*window).expect_text("granite");
    const auto picture = [this] { return window->view().grab().toImage(); };
    const QImage plain = picture();
    look_for(*window, "granite");
    window->view().resize(window->view().width(), window->view().height() + window->find_bar().height());
    EXPECT_NE(picture(), plain);
    // Without the selection the other marks are still there.
    window->view().page()->triggerAction(QWebPage::Unselect);
    EXPECT_NE(picture(), plain);
    window->action(HelpDeed::Close).trigger();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->find_bar().isVisible());
    window->view().page()->triggerAction(QWebPage::Unselect);
    EXPECT_TRUE(support::wait_until([&] { return picture() == plain; }));
}

TEST_F(HelpWindowTest, ChangesTheSizeOfTheTextsWithinBounds)
{
    show(help_key(Topic::Map));
    EXPECT_EQ(window->view().zoomFactor(), 1);
    window->action(HelpDeed::Larger).trigger();
    EXPECT_NEAR(window->view().zoomFactor(), 1.1, 1e-6);
    EXPECT_EQ(window->statusBar()->currentMessage(), "110 %");
    window->action(HelpDeed::Smaller).trigger();
    window->action(HelpDeed::Smaller).trigger();
    EXPECT_NEAR(window->view().zoomFactor(), 1 / 1.1, 1e-6);
    for (int i = 0; i < 30; ++i) {
        window->action(HelpDeed::Larger).trigger();
    }
    EXPECT_EQ(window->view().zoomFactor(), 3);
    window->action(HelpDeed::FirstSize).trigger();
    EXPECT_EQ(window->view().zoomFactor(), 1);
    for (int i = 0; i < 30; ++i) {
        window->action(HelpDeed::Smaller).trigger();
    }
    EXPECT_EQ(window->view().zoomFactor(), 0.5);
}

TEST_F(HelpWindowTest, TheWheelChangesTheSizeWithCtrlOnly)
{
    show(help_key(Topic::Map));
    const auto turn = [this](int degrees, Qt::KeyboardModifiers modifiers) {
        const QPoint at(100, 100);
        QWheelEvent event(at, window->view().mapToGlobal(at), QPoint(), QPoint(0, degrees), Qt::NoButton,
            modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&window->view(), &event);
    };
    turn(120, Qt::NoModifier);
    EXPECT_EQ(window->view().zoomFactor(), 1);
    turn(120, Qt::ControlModifier);
    EXPECT_NEAR(window->view().zoomFactor(), 1.1, 1e-6);
    turn(-120, Qt::ControlModifier);
    EXPECT_NEAR(window->view().zoomFactor(), 1, 1e-6);
}

TEST_F(HelpWindowTest, PrintsAfterAsking)
{
    show(help_key(Topic::Map));
    ShownHelp(*window).expect_page("map.html");
    support::DialogDriver dialogs;
    dialogs.cancel();
    window->action(HelpDeed::Print).trigger();
    ASSERT_EQ(dialogs.shown().size(), 1U);
    EXPECT_EQ(dialogs.shown()[0].title, "Print Help");
    EXPECT_EQ(dialogs.shown()[0].parent, &window->view());
}

TEST_F(HelpWindowTest, OpensItsPageInTheWebBrowser)
{
    show(help_key(Topic::Map));
    ShownHelp(*window).expect_page("map.html");
    window->action(HelpDeed::OpenOutside).trigger();
    ASSERT_EQ(opened.urls.size(), 1U);
    EXPECT_EQ(opened.urls[0], QUrl::fromLocalFile(help_file("map.html")));
}

TEST_F(HelpWindowTest, SaysThatThereIsNoWebBrowser)
{
    const NoBrowser nothing;
    show(help_key(Topic::Map));
    ShownHelp(*window).expect_page("map.html");
    window->action(HelpDeed::OpenOutside).trigger();
    EXPECT_EQ(window->statusBar()->currentMessage(), "No web browser was found that opens this page.");
    EXPECT_TRUE(log.take("No web browser was found that opens \"file:///"));
}

TEST_F(HelpWindowTest, SaysWhatIsMissingInsteadOfOpeningItOutside)
{
    show("NO_SUCH_KEY");
    ShownHelp(*window).expect_text("NO_SUCH_KEY");
    EXPECT_TRUE(log.take("NO_SUCH_KEY"));
    window->action(HelpDeed::OpenOutside).trigger();
    EXPECT_EQ(window->statusBar()->currentMessage(), "The help has no page about \"NO_SUCH_KEY\".");
    EXPECT_TRUE(opened.urls.empty());
}

TEST_F(HelpWindowTest, ToolsHavePicturesAndKeysThatTheContentsTell)
{
    show(help_key(Topic::Contents));
    const QString contents = HelpPageFile(help_file("index.html")).text;
    for (const HelpDeed deed : s_deeds) {
        const QAction& action = window->action(deed);
        const QString keys = action.shortcut().toString(QKeySequence::NativeText);
        EXPECT_FALSE(action.text().isEmpty());
        EXPECT_TRUE(contents.contains(keys)) << keys.toStdString();
        EXPECT_TRUE(action.toolTip().contains(keys)) << keys.toStdString();
    }
    const QToolBar* const p_bar = window->findChild<QToolBar*>("navigation");
    int buttons = 0;
    for (const QAction* const p_action : p_bar->actions()) {
        if (!p_action->isSeparator()) {
            EXPECT_FALSE(p_action->icon().isNull()) << p_action->text().toStdString();
            ++buttons;
        }
    }
    EXPECT_EQ(buttons, 8);
}

TEST_F(HelpWindowTest, NoTwoToolsShareAKey)
{
    show(help_key(Topic::Contents));
    QList<QKeySequence> keys;
    for (const HelpDeed deed : s_deeds) {
        for (const QKeySequence& sequence : window->action(deed).shortcuts()) {
            EXPECT_FALSE(keys.contains(sequence)) << sequence.toString().toStdString();
            keys.append(sequence);
        }
    }
}

TEST_F(HelpWindowTest, KeysWorkWhereverTheKeyboardIs)
{
    show(help_key(Topic::Map));
    ShownHelp(*window).expect_page("map.html");
    QApplication::setActiveWindow(window.get());
    window->view().setFocus();
    QTest::keyClick(&window->view(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(window->find_bar().line().hasFocus());
    QTest::keyClick(&window->find_bar().line(), Qt::Key_Home, Qt::AltModifier);
    ShownHelp(*window).expect_page("index.html");
    QTest::keyClick(&window->find_bar().line(), Qt::Key_Escape);
    EXPECT_FALSE(window->find_bar().isVisible());
    EXPECT_TRUE(window->view().hasFocus());
    QTest::keyClick(&window->view(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

// The window

TEST_F(HelpWindowTest, KeepsNoProgramAlive)
{
    show(help_key(Topic::Map));
    EXPECT_FALSE(window->testAttribute(Qt::WA_QuitOnClose));
    QWidget main_window;
    main_window.show();
    QTimer::singleShot(0, &main_window, &QWidget::close);
    QApplication::exec(); // comes back when the last window that counts is closed
    EXPECT_FALSE(window->isVisible()) << "it closes with the program";
}

TEST_F(HelpWindowTest, OpensAgainAfterItWasClosed)
{
    show(help_key(Topic::Map));
    ShownHelp(*window).expect_page("map.html");
    window->close();
    EXPECT_FALSE(window->isVisible());
    show(help_key(Topic::Undo));
    EXPECT_TRUE(window->isVisible());
    ShownHelp(*window).expect_page("undo.html");
    EXPECT_TRUE(window->action(HelpDeed::Back).isEnabled());
}

TEST_F(HelpWindowTest, ComesBackWhenItIsMinimized)
{
    show(help_key(Topic::Map));
    window->showMinimized();
    show(help_key(Topic::Map));
    EXPECT_FALSE(window->isMinimized());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(HelpWindowTest, RemembersItsSizeAndThatOfTheTexts)
{
    show(help_key(Topic::Map));
    window->resize(640, 480);
    window->action(HelpDeed::Larger).trigger();
    window->close();
    window.reset();
    show(help_key(Topic::Map));
    EXPECT_EQ(window->size(), QSize(640, 480));
    EXPECT_NEAR(window->view().zoomFactor(), 1.1, 1e-6);
}

TEST_F(HelpWindowTest, CanBeReadBesideADialogThatBlocksTheOtherWindows)
{
    show(help_key(Topic::Contents));
    ShownHelp(*window).expect_page("index.html");
    QDialog dialog;
    support::DialogDriver dialogs;
    dialogs.answer([this](QDialog& shown) {
        show(help_key(Topic::Smooth));
        QTest::keyClick(window->windowHandle(), Qt::Key_F, Qt::ControlModifier);
        EXPECT_TRUE(window->find_bar().isVisible()) << "the window gets no keys";
        shown.reject();
    });
    dialog.exec();
    EXPECT_EQ(window->windowHandle()->transientParent(), nullptr);
    EXPECT_TRUE(window->isVisible());
    ShownHelp(*window).expect_page("smooth.html");
}

TEST_F(HelpWindowTest, IsDarkOnADarkDesktop)
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(palette);
    show(help_key(Topic::Map));
    const ShownHelp shown(*window);
    shown.expect_page("map.html");
    const auto colour = [&shown](const QString& selector, const QString& property) {
        return shown.element(selector).styleProperty(property, QWebElement::ComputedStyle);
    };
    EXPECT_EQ(colour("nav", "background-color"), "rgb(38, 44, 49)");
    EXPECT_EQ(colour("main", "color"), "rgb(226, 230, 234)");
}

TEST_F(HelpWindowTest, IsLightElsewhere)
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    QApplication::setPalette(palette);
    show(help_key(Topic::Map));
    const ShownHelp shown(*window);
    shown.expect_page("map.html");
    EXPECT_EQ(shown.element("nav").styleProperty("background-color", QWebElement::ComputedStyle),
        "rgb(244, 246, 247)");
}
