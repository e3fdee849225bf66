#include "LogViewerFixture.h"

#include <QtCore/QTimer>
#include <QtGui/QHideEvent>

#include <algorithm>
#include <type_traits>

// The one viewer as a window: its path, when it looks at the file, and how it ends.

namespace {

bool looks_by_itself(const QObject& viewer)
{
    const auto timers = viewer.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(
        timers.begin(), timers.end(), [](const QTimer* p_timer) { return p_timer->isActive(); });
}

/// Runs the main loop until the program would end. @return false if it has to be ended by force
bool main_loop_ends()
{
    QTimer patience;
    patience.setSingleShot(true);
    QObject::connect(&patience, &QTimer::timeout, [] { QCoreApplication::exit(1); });
    patience.start(20000);
    return QApplication::exec() == 0;
}

} // namespace

TEST_F(QLogFileViewer, IsOneWidgetWithoutAPath)
{
    EXPECT_EQ(&Viewer::instance(), &Viewer::instance());
    EXPECT_TRUE((std::is_base_of_v<QWidget, Viewer>));
    EXPECT_FALSE(std::is_default_constructible_v<Viewer>);
    EXPECT_EQ(viewer().path(), QString());
    EXPECT_EQ(viewer().text(), QString());
    EXPECT_FALSE(viewer().isVisible());
}

TEST_F(QLogFileViewer, KeepsThePathThatWasSetLast)
{
    viewer().setPath(QString::fromUtf8("/home/Gel\xc3\xa4nde/Tarq_1.log"));
    EXPECT_EQ(viewer().path(), QString::fromUtf8("/home/Gel\xc3\xa4nde/Tarq_1.log"));
    viewer().setPath("relative %1");
    EXPECT_EQ(viewer().path(), "relative %1");
    viewer().setPath(QString());
    EXPECT_EQ(viewer().path(), QString());
}

TEST_F(QLogFileViewer, IsDestroyedInPhaseFiveAndFreshAfterwards)
{
    static bool s_lived_in_phase_four = false;
    static bool s_gone_in_phase_six = false;
    static QPointer<Viewer> s_viewer;
    s_viewer = &viewer();
    s_viewer->setPath("/path");
    show();
    pkBase::pkDestructor(pkBase::pkDestructionPhase(4), [] { s_lived_in_phase_four = !s_viewer.isNull(); });
    pkBase::pkDestructor(pkBase::pkDestructionPhase(6), [] { s_gone_in_phase_six = s_viewer.isNull(); });
    pkBase::pkDestructor::run();
    EXPECT_TRUE(s_lived_in_phase_four);
    EXPECT_TRUE(s_gone_in_phase_six);
    EXPECT_EQ(viewer().path(), QString());
    EXPECT_FALSE(viewer().isVisible());
    pkBase::pkDestructor::run();
}

TEST_F(QLogFileViewer, ShowsTheFileWhenItIsShown)
{
    write("first\nsecond\n");
    viewer().setPath(path());
    show();
    EXPECT_EQ(text(), "first\nsecond\n");
    EXPECT_EQ(edit().toPlainText().toStdString(), "first\nsecond\n");
    EXPECT_TRUE(viewer().isWindow());
    EXPECT_FALSE(viewer().windowTitle().isEmpty());
}

TEST_F(QLogFileViewer, NamesTheFile)
{
    write("first\n");
    viewer().setPath(path());
    show();
    EXPECT_TRUE((remarks() + viewer().windowTitle()).contains("Tarq_1.log"));
}

TEST_F(QLogFileViewer, TextCannotBeEdited)
{
    view("first\n");
    show();
    EXPECT_TRUE(edit().isReadOnly());
    QTest::keyClicks(&edit(), "x");
    QTest::keyClick(&edit(), Qt::Key_Delete);
    EXPECT_EQ(text(), "first\n");
    EXPECT_EQ(content(), "first\n");
}

TEST_F(QLogFileViewer, FollowsTheFileWhileItIsShown)
{
    write("first\n");
    viewer().setPath(path());
    show();
    append("second\n");
    EXPECT_TRUE(comes_to([] { return text() == "first\nsecond\n"; }));
    append("third\n");
    EXPECT_TRUE(comes_to([] { return text() == "first\nsecond\nthird\n"; }));
}

TEST_F(QLogFileViewer, SeesByItselfThatTheFileIsGoneAndBack)
{
    write("first\n");
    viewer().setPath(path());
    show();
    const QString before = remarks();
    QFile::remove(path());
    EXPECT_TRUE(comes_to([&] { return remarks() != before; }));
    write("new\n");
    EXPECT_TRUE(comes_to([] { return text() == "new\n"; }));
}

TEST_F(QLogFileViewer, LooksOncePerSecondWhileItIsShownOnly)
{
    view("first\n");
    EXPECT_FALSE(looks_by_itself(viewer()));
    show();
    EXPECT_TRUE(looks_by_itself(viewer()));
    for (const QTimer* const p_timer :
        viewer().findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly)) {
        EXPECT_EQ(p_timer->interval(), 1000);
    }
    viewer().close();
    EXPECT_FALSE(looks_by_itself(viewer()));
    show();
    EXPECT_TRUE(looks_by_itself(viewer()));
    viewer().hide();
    EXPECT_FALSE(looks_by_itself(viewer()));
}

TEST_F(QLogFileViewer, PathThatIsSetDoesNotMakeItLook)
{
    write("first\n");
    viewer().setPath(path());
    EXPECT_FALSE(looks_by_itself(viewer()));
}

TEST_F(QLogFileViewer, HiddenWindowReadsWhenItIsToldTo)
{
    view("first\n");
    EXPECT_EQ(text(), "first\n");
    refresh_after("second\n");
    EXPECT_EQ(text(), "first\nsecond\n");
    EXPECT_FALSE(viewer().isVisible());
}

TEST_F(QLogFileViewer, WindowThatIsShownAgainShowsWhatCameMeanwhile)
{
    view("first\n");
    show();
    viewer().close();
    append("second\n");
    show();
    EXPECT_EQ(text(), "first\nsecond\n");
}

TEST_F(QLogFileViewer, WindowMayBeUsedAgainAfterItWasClosed)
{
    const QPointer<Viewer> p_viewer(&viewer());
    show();
    viewer().close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_FALSE(p_viewer.isNull());
    EXPECT_EQ(&viewer(), p_viewer.data());
}

TEST_F(QLogFileViewer, PresentingShowsWhatTheFileHoldsNow)
{
    view("first\n");
    show();
    append("second\n");
    viewer().present();
    EXPECT_EQ(text(), "first\nsecond\n");
}

TEST_F(QLogFileViewer, MinimisedWindowIsPresentedAgain)
{
    view("first\n");
    viewer().showMinimized();
    ASSERT_TRUE(viewer().isMinimized());
    append("second\n");
    viewer().present();
    EXPECT_FALSE(viewer().isMinimized());
    EXPECT_TRUE(viewer().isVisible());
    EXPECT_EQ(text(), "first\nsecond\n");
}

TEST_F(QLogFileViewer, HidingBeforeItIsFirstShownDoesNothing)
{
    viewer().hide();
    viewer().close();
    QHideEvent hidden; // by the window system
    QCoreApplication::sendEvent(&viewer(), &hidden);
    EXPECT_FALSE(viewer().isVisible());
    EXPECT_FALSE(looks_by_itself(viewer()));
    write("first\n");
    viewer().setPath(path());
    viewer().present();
    EXPECT_EQ(text(), "first\n");
    EXPECT_TRUE(looks_by_itself(viewer()));
}

TEST_F(QLogFileViewer, SizeOfTheHostIsKept)
{
    viewer().resize(777, 333);
    viewer().refresh(); // the window is built by now
    EXPECT_EQ(viewer().size(), QSize(777, 333));
    viewer().show();
    EXPECT_EQ(viewer().size(), QSize(777, 333));
}

TEST_F(QLogFileViewer, HasASizeOfItsOwnWithoutTheHosts)
{
    const QSize of_any_widget = QWidget().size();
    viewer().show();
    EXPECT_NE(viewer().size(), of_any_widget);
    EXPECT_GE(viewer().width(), 600); // a line of the log fits
}

TEST_F(QLogFileViewer, EscapeCloses)
{
    view("first\n");
    show();
    QTest::keyClick(&viewer(), Qt::Key_Escape);
    EXPECT_FALSE(viewer().isVisible());
    show();
    QTest::keyClick(&edit(), Qt::Key_Escape);
    EXPECT_FALSE(viewer().isVisible());
    show();
    QTest::keyClick(&search_line(), Qt::Key_Escape);
    EXPECT_FALSE(viewer().isVisible());
}

TEST_F(QLogFileViewer, OtherKeysDoNotClose)
{
    show();
    QTest::keyClick(&viewer(), Qt::Key_A);
    QTest::keyClick(&viewer(), Qt::Key_Return);
    EXPECT_TRUE(viewer().isVisible());
}

TEST_F(QLogFileViewer, DoesNotKeepTheProgramAliveAndGoesWithTheLastOtherWindow)
{
    EXPECT_FALSE(viewer().testAttribute(Qt::WA_QuitOnClose));
    QWidget window;
    window.show();
    show();
    QTimer::singleShot(0, &window, [&window] { window.close(); });
    EXPECT_TRUE(main_loop_ends());
    EXPECT_FALSE(viewer().isVisible());
}

TEST_F(QLogFileViewer, StaysWhileAnotherWindowIsOpen)
{
    QWidget first;
    QWidget second;
    first.show();
    second.show();
    show();
    bool stayed = false;
    QTimer::singleShot(0, &first, [&first] { first.close(); });
    QTimer::singleShot(100, &second, [&] {
        stayed = viewer().isVisible();
        second.close();
    });
    EXPECT_TRUE(main_loop_ends());
    EXPECT_TRUE(stayed);
    EXPECT_FALSE(viewer().isVisible());
}

TEST_F(QLogFileViewer, ProgramGoesOnWhenTheViewerIsClosed)
{
    QWidget window;
    window.show();
    show();
    bool went_on = false;
    QTimer::singleShot(0, &window, [] { viewer().close(); });
    QTimer::singleShot(100, &window, [&] {
        went_on = true;
        window.close();
    });
    EXPECT_TRUE(main_loop_ends());
    EXPECT_TRUE(went_on);
}
