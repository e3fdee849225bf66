#include "LogViewerFixture.h"

#include <QtGui/QClipboard>
#include <QtGui/QTextBlock>

#include <utility>
#include <vector>

// Finding, copying and the place that is shown while the file grows.

namespace {

QString clipboard()
{
    return QApplication::clipboard()->text();
}

/// The numbers of the lines in which something is marked.
std::vector<int> marked_lines(const QPlainTextEdit& edit)
{
    std::vector<int> marked;
    for (const QTextEdit::ExtraSelection& mark : edit.extraSelections()) {
        marked.push_back(mark.cursor.blockNumber());
    }
    return marked;
}

/// The numbers of the first line on the screen and of the last one that is there in part.
std::pair<int, int> lines_on_the_screen(const QPlainTextEdit& edit)
{
    const QRect screen = edit.viewport()->rect();
    return {edit.cursorForPosition(screen.topLeft()).blockNumber(),
        edit.cursorForPosition(screen.bottomRight()).blockNumber()};
}

/// Whether a text that is in each line is marked in those on the screen, and nowhere else.
void expect_marks_on_the_screen(const QPlainTextEdit& edit)
{
    const std::vector<int> marked = marked_lines(edit);
    const auto [first, last] = lines_on_the_screen(edit);
    ASSERT_FALSE(marked.empty());
    EXPECT_EQ(marked.front(), first);
    EXPECT_GE(marked.back(), last - 1); // at least up to the last whole one
    EXPECT_LE(marked.back(), last);
}

} // namespace

// Finding

TEST_F(QLogFileViewer, FindsTheNextPlaces)
{
    view("alpha beta\nbeta gamma\nbeta\n");
    move_to(QTextCursor::Start);
    search_line().setText("beta");
    for (const int place : {6, 11, 22}) {
        viewer().find_next();
        EXPECT_EQ(selection(), "beta");
        EXPECT_EQ(begin_of_selection(), place);
    }
}

TEST_F(QLogFileViewer, FindsFromTheOtherEndOnAfterTheLastPlace)
{
    view("alpha beta\nbeta gamma\n");
    move_to(QTextCursor::Start);
    search_line().setText("beta");
    viewer().find_next();
    viewer().find_next();
    viewer().find_next();
    EXPECT_EQ(begin_of_selection(), 6);
    viewer().find_previous();
    EXPECT_EQ(begin_of_selection(), 11);
}

TEST_F(QLogFileViewer, FindsThePreviousPlaces)
{
    view("alpha beta\nbeta gamma\nbeta\n");
    move_to(QTextCursor::End);
    search_line().setText("beta");
    for (const int place : {22, 11, 6, 22}) {
        viewer().find_previous();
        EXPECT_EQ(selection(), "beta");
        EXPECT_EQ(begin_of_selection(), place);
    }
}

TEST_F(QLogFileViewer, OnlyPlaceIsFoundAgainAndAgain)
{
    view("alpha beta\n");
    search_line().setText("beta");
    for (int i = 0; i < 3; ++i) {
        viewer().find_next();
        EXPECT_EQ(begin_of_selection(), 6);
        viewer().find_previous();
        EXPECT_EQ(begin_of_selection(), 6);
    }
}

TEST_F(QLogFileViewer, TextThatIsNotThereIsRemarkedAndSelectsNothing)
{
    view("alpha beta\n");
    const QString before = remarks();
    search_line().setText("delta");
    viewer().find_next();
    EXPECT_EQ(selection(), "");
    EXPECT_NE(remarks(), before);
    viewer().find_previous();
    EXPECT_NE(remarks(), before);
    move_to(QTextCursor::Start);
    search_line().setText("beta");
    viewer().find_next();
    EXPECT_EQ(selection(), "beta");
    EXPECT_EQ(remarks(), before);
}

TEST_F(QLogFileViewer, TextThatIsNotThereMovesNothing)
{
    view("needle\n" + lines(0, 500));
    show();
    search_line().setText("needle");
    viewer().find_next();
    ASSERT_EQ(selection(), "needle");
    QScrollBar& bar = *edit().verticalScrollBar();
    bar.setValue(200); // the user has scrolled on
    search_line().setText("delta");
    viewer().find_next();
    EXPECT_EQ(bar.value(), 200);
    EXPECT_EQ(selection(), "needle");
    viewer().find_previous();
    EXPECT_EQ(bar.value(), 200);
    EXPECT_EQ(selection(), "needle");
    EXPECT_EQ(begin_of_selection(), 0);
}

TEST_F(QLogFileViewer, AnotherTextToFindTakesTheRemarkAway)
{
    view("alpha beta\n");
    show();
    const QString before = remarks();
    search_line().setText("delta");
    viewer().find_next();
    ASSERT_NE(remarks(), before);
    QTest::keyClicks(&search_line(), "x");
    EXPECT_EQ(remarks(), before);
}

TEST_F(QLogFileViewer, RemarkOfTheSearchStaysWhileNothingHappens)
{
    view("alpha beta\n");
    show();
    search_line().setText("delta");
    viewer().find_next();
    const QString said = remarks();
    viewer().refresh(); // as the window does by itself
    EXPECT_EQ(remarks(), said);
}

TEST_F(QLogFileViewer, EmptySearchFindsNothing)
{
    view("alpha beta\n");
    search_line().clear();
    viewer().find_next();
    viewer().find_previous();
    EXPECT_EQ(selection(), "");
}

TEST_F(QLogFileViewer, SearchInNothingFindsNothing)
{
    viewer().find_next();
    viewer().find_previous();
    viewer().refresh();
    search_line().setText("beta");
    viewer().find_next();
    EXPECT_EQ(text(), "");
}

TEST_F(QLogFileViewer, CaseCountsWhenItIsToMatch)
{
    view("Beta beta BETA\n");
    move_to(QTextCursor::Start);
    search_line().setText("beta");
    match_case().setChecked(false);
    for (const int place : {0, 5, 10, 0}) {
        viewer().find_next();
        EXPECT_EQ(begin_of_selection(), place);
    }
    match_case().setChecked(true);
    for (int i = 0; i < 2; ++i) {
        viewer().find_next();
        EXPECT_EQ(begin_of_selection(), 5);
    }
    search_line().setText("bETA");
    const QString before = remarks();
    viewer().find_next();
    EXPECT_NE(remarks(), before);
}

TEST_F(QLogFileViewer, CaseDoesNotCountAtFirst)
{
    view("Beta\n");
    EXPECT_FALSE(match_case().isChecked());
}

TEST_F(QLogFileViewer, SearchedTextStandsForItself)
{
    view("a.c abc [x]* \\d 100% Gel\xc3\xa4nde\n");
    for (const char* text : {"a.c", "[x]*", "\\d", "100%", "l\xc3\xa4n"}) {
        search_line().setText(QString::fromUtf8(text));
        viewer().find_next();
        EXPECT_EQ(selection(), text);
    }
}

TEST_F(QLogFileViewer, FindsWhatWasAppended)
{
    view("alpha\n");
    search_line().setText("omega");
    viewer().find_next();
    EXPECT_EQ(selection(), "");
    refresh_after("omega\n");
    viewer().find_next();
    EXPECT_EQ(selection(), "omega");
}

TEST_F(QLogFileViewer, AllPlacesOnTheScreenAreMarked)
{
    view("alpha beta\nbeta gamma\nBETA\n");
    show();
    search_line().setText("beta");
    viewer().find_next();
    QCoreApplication::processEvents();
    std::vector<std::string> marked;
    for (const QTextEdit::ExtraSelection& mark : edit().extraSelections()) {
        marked.push_back(mark.cursor.selectedText().toStdString());
    }
    EXPECT_EQ(marked, std::vector<std::string>({"beta", "beta", "BETA"}));
}

TEST_F(QLogFileViewer, MarksGoWithTheSearchedText)
{
    view("alpha beta\n");
    show();
    search_line().setText("beta");
    viewer().find_next();
    EXPECT_EQ(edit().extraSelections().size(), 1);
    search_line().setText("delta");
    viewer().find_next();
    EXPECT_TRUE(edit().extraSelections().isEmpty());
}

TEST_F(QLogFileViewer, MarksFollowTheScrolling)
{
    view(lines(0, 500));
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    search_line().setText("line");
    for (const int place : {0, 200, bar.maximum(), 100}) {
        bar.setValue(place);
        expect_marks_on_the_screen(edit());
    }
}

TEST_F(QLogFileViewer, MarksFollowTheTextThatComes)
{
    view("alpha beta\n");
    show();
    search_line().setText("beta");
    ASSERT_EQ(marked_lines(edit()), std::vector<int>({0}));
    refresh_after("gamma\nbeta\n"); // which fits, so that nothing is scrolled
    EXPECT_EQ(marked_lines(edit()), std::vector<int>({0, 2}));
    replace("beta gamma\nbeta\n");
    viewer().refresh();
    EXPECT_EQ(marked_lines(edit()), std::vector<int>({0, 1}));
}

TEST_F(QLogFileViewer, FoundPlaceIsBroughtIntoView)
{
    view("needle\n" + lines(0, 2000));
    show();
    move_to(QTextCursor::End);
    search_line().setText("needle");
    viewer().find_previous();
    EXPECT_EQ(selection(), "needle");
    EXPECT_TRUE(edit().viewport()->rect().contains(edit().cursorRect().center()));
}

TEST_F(QLogFileViewer, FoundPlaceStaysInViewWhileTheFileGrows)
{
    view("needle\n" + lines(0, 2000));
    show();
    search_line().setText("needle");
    viewer().find_next();
    refresh_after(lines(2000, 2100));
    EXPECT_EQ(selection(), "needle");
    EXPECT_TRUE(edit().viewport()->rect().contains(edit().cursorRect().center()));
}

// Copying

TEST_F(QLogFileViewer, CopiesEverythingWithoutASelection)
{
    view("first\nGel\xc3\xa4nde\n");
    QApplication::clipboard()->clear();
    viewer().copy();
    EXPECT_EQ(clipboard().toStdString(), "first\nGel\xc3\xa4nde\n");
    EXPECT_EQ(selection(), ""); // still none
}

TEST_F(QLogFileViewer, CopiesTheSelectedText)
{
    view("first\nsecond\nthird\n");
    QTextCursor cursor = edit().textCursor();
    cursor.setPosition(2);
    cursor.setPosition(9, QTextCursor::KeepAnchor);
    edit().setTextCursor(cursor);
    viewer().copy();
    EXPECT_EQ(clipboard().toStdString(), "rst\nsec");
}

TEST_F(QLogFileViewer, CopiesWhatWasFound)
{
    view("alpha beta\n");
    search_line().setText("beta");
    viewer().find_next();
    viewer().copy();
    EXPECT_EQ(clipboard(), "beta");
}

TEST_F(QLogFileViewer, CopyOfNothingHurtsNobody)
{
    viewer().copy();
    view("");
    viewer().copy();
    EXPECT_EQ(text(), "");
}

// The place that is shown

TEST_F(QLogFileViewer, FollowsTheEndAtFirst)
{
    view(lines(0, 500));
    EXPECT_TRUE(follow().isChecked());
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    ASSERT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
    const int before = bar.maximum();
    refresh_after(lines(500, 600));
    EXPECT_GT(bar.maximum(), before);
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(QLogFileViewer, FollowsTheFirstLinesThatDoNotFit)
{
    view(lines(0, 2));
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    refresh_after(lines(2, 600));
    ASSERT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(QLogFileViewer, PlaceStaysWhenItIsNotToFollow)
{
    view(lines(0, 500));
    show();
    follow().setChecked(false);
    QScrollBar& bar = *edit().verticalScrollBar();
    for (const int place : {0, 200, bar.maximum()}) {
        bar.setValue(place);
        refresh_after(lines(500, 600));
        EXPECT_EQ(bar.value(), place);
        EXPECT_GT(bar.maximum(), place);
    }
}

TEST_F(QLogFileViewer, PlaceStaysWhenTheUserHasScrolledUp)
{
    view(lines(0, 500));
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    bar.triggerAction(QAbstractSlider::SliderPageStepSub);
    bar.triggerAction(QAbstractSlider::SliderPageStepSub);
    const int place = bar.value();
    ASSERT_LT(place, bar.maximum());
    refresh_after(lines(500, 600));
    EXPECT_EQ(bar.value(), place);
    refresh_after(lines(600, 700));
    EXPECT_EQ(bar.value(), place);
}

TEST_F(QLogFileViewer, FollowsAgainWhenItIsToldTo)
{
    view(lines(0, 500));
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    follow().setChecked(false);
    bar.setValue(0);
    refresh_after(lines(500, 600));
    follow().setChecked(true);
    bar.triggerAction(QAbstractSlider::SliderToMaximum);
    refresh_after(lines(600, 700));
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(QLogFileViewer, SelectionStaysWhileTheFileGrows)
{
    view("alpha beta\n");
    show();
    search_line().setText("beta");
    viewer().find_next();
    refresh_after(lines(0, 500));
    EXPECT_EQ(selection(), "beta");
    EXPECT_EQ(begin_of_selection(), 6);
}

TEST_F(QLogFileViewer, SelectionAtTheEndStaysWhileTheFileGrows)
{
    view("alpha beta");
    show();
    search_line().setText("beta");
    viewer().find_next();
    refresh_after(" gamma\n");
    EXPECT_EQ(selection(), "beta");
}

TEST_F(QLogFileViewer, SelectionStaysWhileASmallFileGrowsAgainAndAgain)
{
    view("alpha beta\n");
    show();
    search_line().setText("beta");
    viewer().find_next();
    for (const char* const piece : {"gamma\n", "delta\n", "epsilon\n"}) {
        refresh_after(piece);
        EXPECT_EQ(selection(), "beta") << piece;
        EXPECT_EQ(begin_of_selection(), 6) << piece;
    }
}

TEST_F(QLogFileViewer, UnchangedFileLeavesThePlace)
{
    view(lines(0, 500));
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    bar.setValue(100);
    viewer().refresh();
    viewer().refresh();
    EXPECT_EQ(bar.value(), 100);
}

TEST_F(QLogFileViewer, AnotherFileIsShownFromItsTopToWhoeverReadsFurtherUp)
{
    view(lines(0, 500));
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    bar.setValue(100);
    replace("other\n" + lines(0, 800));
    viewer().refresh();
    ASSERT_GT(bar.maximum(), 100);
    EXPECT_EQ(bar.value(), 0);
}

TEST_F(QLogFileViewer, AnotherFileIsShownAtItsEndToWhoeverWasAtTheEnd)
{
    view(lines(0, 500));
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    ASSERT_EQ(bar.value(), bar.maximum());
    replace("other\n" + lines(0, 800));
    viewer().refresh();
    ASSERT_GT(bar.maximum(), 0);
    EXPECT_EQ(bar.value(), bar.maximum());
}

TEST_F(QLogFileViewer, CutOfAVeryLargeFileKeepsWhoeverWasAtTheEndThere)
{
    QByteArray half;
    for (qint64 i = 0; half.size() < Viewer::longest_text; ++i) {
        half += "a longer line of the log, number " + QByteArray::number(i) + '\n';
    }
    view(half);
    show();
    QScrollBar& bar = *edit().verticalScrollBar();
    refresh_after(half);
    refresh_after(half); // begins anew
    ASSERT_FALSE(viewer().text().startsWith("a longer line"));
    EXPECT_EQ(bar.value(), bar.maximum());
}
