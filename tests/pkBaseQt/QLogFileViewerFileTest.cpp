#include "LogViewerFixture.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

// What the viewer makes of the file, whatever happens to it.

namespace {

const qint64 s_longest = pkBase::QLogFileViewer::longest_text;
const qint64 s_notice = 1000; // more than a line of remark
const qint64 s_megabyte = 1024 * 1024;

/// Lines of 20 bytes, numbered, up to @p size bytes.
QByteArray numbered(qint64 size)
{
    QByteArray bytes;
    bytes.reserve(static_cast<int>(size));
    for (int i = 0; bytes.size() < size; ++i) {
        bytes += QByteArray::number(i).rightJustified(19, '.') + '\n';
    }
    return bytes;
}

/// The process cannot read what belongs to others while it lives, also if it began as the superuser.
class WithoutRights
{
public:
    WithoutRights()
        : m_id(geteuid())
    {
        if (m_id == 0) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    ~WithoutRights()
    {
        if (m_id == 0) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    WithoutRights(const WithoutRights&) = delete;
    WithoutRights& operator=(const WithoutRights&) = delete;

private:
    uid_t m_id;
};

} // namespace

TEST_F(QLogFileViewer, ShowsNothingWithoutAPath)
{
    viewer().refresh();
    EXPECT_EQ(text(), "");
    show();
    viewer().refresh();
    EXPECT_EQ(text(), "");
}

TEST_F(QLogFileViewer, ShowsTheFileAsItIs)
{
    const QByteArray bytes = "first\n\n  indented\t<b>&amp;</b> %1\nno end";
    view(bytes);
    EXPECT_EQ(viewer().text().toUtf8(), bytes);
    EXPECT_EQ(edit().toPlainText().toUtf8(), bytes);
}

TEST_F(QLogFileViewer, EmptyFileIsNothing)
{
    view("");
    EXPECT_EQ(text(), "");
    refresh_after("first\n");
    EXPECT_EQ(text(), "first\n");
}

TEST_F(QLogFileViewer, RefreshWithoutAChangeChangesNothing)
{
    view("first\n");
    const QString before = remarks();
    viewer().refresh();
    viewer().refresh();
    EXPECT_EQ(text(), "first\n");
    EXPECT_EQ(remarks(), before);
}

TEST_F(QLogFileViewer, LineIsContinuedWhereItEnded)
{
    view("fir");
    refresh_after("st\nsec");
    refresh_after("ond");
    EXPECT_EQ(text(), "first\nsecond");
}

TEST_F(QLogFileViewer, FileIsNeverWritten)
{
    write("first\n");
    QFile file(path());
    ASSERT_TRUE(file.setPermissions(QFileDevice::ReadOwner));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QDateTime when = QFileInfo(path()).lastModified();
    viewer().setPath(path());
    show();
    viewer().refresh();
    viewer().copy();
    viewer().close();
    EXPECT_EQ(content(), "first\n");
    EXPECT_EQ(QFileInfo(path()).lastModified(), when);
}

TEST_F(QLogFileViewer, MissingFileIsShownWhenItComes)
{
    viewer().setPath(path());
    viewer().refresh();
    EXPECT_EQ(text(), "");
    write("first\n");
    viewer().refresh();
    EXPECT_EQ(text(), "first\n");
}

TEST_F(QLogFileViewer, MissingFileIsRemarked)
{
    view("first\n");
    const QString before = remarks();
    viewer().setPath(path("missing.log"));
    viewer().refresh();
    EXPECT_EQ(text(), "");
    EXPECT_NE(remarks().replace("missing.log", "Tarq_1.log"), before);
}

TEST_F(QLogFileViewer, RemarksSayWhyThereIsNothing)
{
    viewer().refresh();
    EXPECT_NE(remarks().indexOf("There is no log file."), -1) << remarks().toStdString();
    viewer().setPath(path("."));
    viewer().refresh();
    EXPECT_NE(remarks().indexOf("It is no file."), -1) << remarks().toStdString();
}

TEST_F(QLogFileViewer, DeletedFileStaysToBeSeenWithARemark)
{
    view("first\nsecond\n");
    const QString before = remarks();
    QFile::remove(path());
    viewer().refresh();
    EXPECT_EQ(text(), "first\nsecond\n");
    EXPECT_NE(remarks(), before);
    const QString said = remarks();
    viewer().refresh();
    EXPECT_EQ(text(), "first\nsecond\n");
    EXPECT_EQ(remarks(), said);
}

TEST_F(QLogFileViewer, RecreatedFileIsShownFromItsBeginning)
{
    view("first\n");
    const QString before = remarks();
    QFile::remove(path());
    viewer().refresh();
    write("a new file, longer than the old one\n");
    viewer().refresh();
    EXPECT_EQ(text(), "a new file, longer than the old one\n");
    EXPECT_EQ(remarks(), before); // the remark is gone
}

TEST_F(QLogFileViewer, FileThatIsCutShortIsShownFromItsBeginning)
{
    view("first\nsecond\n");
    write("new\n");
    viewer().refresh();
    EXPECT_EQ(text(), "new\n");
}

TEST_F(QLogFileViewer, FileThatIsEmptiedShowsNothing)
{
    view("first\n");
    write("");
    viewer().refresh();
    EXPECT_EQ(text(), "");
    refresh_after("again\n");
    EXPECT_EQ(text(), "again\n");
}

TEST_F(QLogFileViewer, AnotherFileInItsPlaceIsShownFromItsBeginning)
{
    view("first\nsecond\n");
    replace("other\n");
    viewer().refresh();
    EXPECT_EQ(text(), "other\n");
    replace("other\nand longer\n");
    viewer().refresh();
    EXPECT_EQ(text(), "other\nand longer\n");
}

TEST_F(QLogFileViewer, AnotherFileOfTheSameLengthIsShown)
{
    view("first\n");
    replace("other\n");
    viewer().refresh();
    EXPECT_EQ(text(), "other\n");
}

TEST_F(QLogFileViewer, FileWrittenAnewWithTheSameLengthIsShown)
{
    view("first\n");
    QTest::qSleep(20); // another time of change
    write("other\n");
    viewer().refresh();
    EXPECT_EQ(text(), "other\n");
}

TEST_F(QLogFileViewer, FileWrittenAnewAndLongerIsShownFromItsBeginning)
{
    view("first\n");
    QTest::qSleep(20);
    write("other\nand longer\n");
    viewer().refresh();
    EXPECT_EQ(text(), "other\nand longer\n");
}

TEST_F(QLogFileViewer, AnotherLongerFileWithTheSameBeginningIsShownFromItsBeginning)
{
    const QByteArray head = numbered(600);
    view(head + "first\n");
    replace(head + "other\nand longer\n");
    viewer().refresh();
    EXPECT_EQ(viewer().text().toUtf8(), head + "other\nand longer\n");
}

TEST_F(QLogFileViewer, FileWithTheSameBeginningThatWasAppendedToIsShownFromItsBeginning)
{
    const QByteArray head = numbered(600);
    view(head);
    refresh_after("first\n"); // what tells the next one apart came later
    replace(head + "other\nand longer\n");
    viewer().refresh();
    EXPECT_EQ(viewer().text().toUtf8(), head + "other\nand longer\n");
}

TEST_F(QLogFileViewer, AnotherPathShowsAnotherFile)
{
    view("first\n");
    write("second\n", path("Tarq_2.log"));
    viewer().setPath(path("Tarq_2.log"));
    viewer().refresh();
    EXPECT_EQ(text(), "second\n");
    append("old\n"); // to the first one
    viewer().refresh();
    EXPECT_EQ(text(), "second\n");
    viewer().setPath(path());
    viewer().refresh();
    EXPECT_EQ(text(), "first\nold\n");
}

TEST_F(QLogFileViewer, NoPathAnyMoreShowsNothing)
{
    view("first\n");
    viewer().setPath(QString());
    viewer().refresh();
    EXPECT_EQ(text(), "");
}

TEST_F(QLogFileViewer, SamePathAgainShowsTheFileOnce)
{
    view("first\n");
    viewer().setPath(path());
    viewer().refresh();
    EXPECT_EQ(text(), "first\n");
}

TEST_F(QLogFileViewer, DirectoryShowsNothing)
{
    viewer().setPath(path("."));
    viewer().refresh();
    EXPECT_EQ(text(), "");
    view("first\n");
    EXPECT_EQ(text(), "first\n");
}

TEST_F(QLogFileViewer, DirectoryInPlaceOfTheFileKeepsWhatWasRead)
{
    view("first\n");
    const QString before = remarks();
    QFile::remove(path());
    ASSERT_EQ(::mkdir(path().toLocal8Bit().constData(), 0700), 0);
    viewer().refresh();
    EXPECT_EQ(text(), "first\n");
    EXPECT_NE(remarks(), before);
}

TEST_F(QLogFileViewer, PipeIsNotWaitedFor)
{
    view("first\n");
    const QString before = remarks();
    QFile::remove(path());
    ASSERT_EQ(::mkfifo(path().toLocal8Bit().constData(), 0600), 0);
    ::alarm(60); // ends the test that waits all the same
    viewer().refresh();
    EXPECT_EQ(text(), "first\n");
    EXPECT_NE(remarks(), before);
    viewer().setPath(path()); // as a file of its own
    show();
    ::alarm(0);
    EXPECT_EQ(text(), "");
}

TEST_F(QLogFileViewer, LinkThatLeadsNowhereShowsNothing)
{
    ASSERT_TRUE(QFile::link(path("missing.log"), path()));
    viewer().setPath(path());
    viewer().refresh();
    EXPECT_EQ(text(), "");
}

TEST_F(QLogFileViewer, FileThatMayNotBeReadAnyMoreStaysToBeSeenWithARemark)
{
    view("first\n");
    ASSERT_TRUE(QFile::setPermissions(path(), QFileDevice::Permissions()));
    const QString before = remarks();
    {
        const WithoutRights without;
        viewer().refresh();
    }
    EXPECT_EQ(text(), "first\n");
    EXPECT_NE(remarks(), before);
    ASSERT_TRUE(QFile::setPermissions(path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    refresh_after("second\n");
    EXPECT_TRUE(viewer().text().endsWith("second\n"));
    EXPECT_EQ(viewer().text().count("first"), 1);
    EXPECT_EQ(remarks(), before);
}

TEST_F(QLogFileViewer, FileThatMayNotBeReadShowsNothing)
{
    write("first\n");
    viewer().setPath(path());
    ASSERT_TRUE(QFile::setPermissions(path(), QFileDevice::Permissions()));
    const WithoutRights without;
    viewer().refresh();
    EXPECT_EQ(text(), "");
}

TEST_F(QLogFileViewer, CharacterThatIsWrittenInTwoPartsIsShownWhole)
{
    view("Gel\xc3");
    refresh_after("\xa4nde \xe2\x82");
    refresh_after("\xac \xf0");
    refresh_after("\x9f");
    refresh_after("\x98\x80 end");
    EXPECT_EQ(text(), "Gel\xc3\xa4nde \xe2\x82\xac \xf0\x9f\x98\x80 end");
}

TEST_F(QLogFileViewer, LineEndThatIsWrittenInTwoPartsIsOne)
{
    view("first\r");
    viewer().refresh();
    refresh_after("\nsecond\r");
    viewer().refresh();
    refresh_after("\n\r");
    refresh_after("\n");
    EXPECT_EQ(text(), "first\nsecond\n\n");
}

TEST_F(QLogFileViewer, HalfACharacterOfAnOldFileIsForgotten)
{
    view("first \xc3");
    replace("\xa4 other\n");
    viewer().refresh();
    EXPECT_EQ(text().find("\xc3\xa4"), std::string::npos);
    EXPECT_TRUE(viewer().text().endsWith(" other\n"));
}

TEST_F(QLogFileViewer, BytesThatAreNoTextHurtNobody)
{
    view(QByteArray("begin \xff\xfe\xc0\x80 \xed\xa0\x80 ") + '\0' + "\x01\x1b end\n");
    EXPECT_TRUE(viewer().text().startsWith("begin "));
    EXPECT_TRUE(viewer().text().endsWith(" end\n"));
    refresh_after("next\n");
    EXPECT_TRUE(viewer().text().endsWith(" end\nnext\n"));
}

TEST_F(QLogFileViewer, LargestFileIsShownWhole)
{
    const QByteArray bytes = numbered(s_longest).left(static_cast<int>(s_longest));
    view(bytes);
    EXPECT_EQ(viewer().text().size(), s_longest);
    EXPECT_TRUE(viewer().text().startsWith("..................0\n"));
}

TEST_F(QLogFileViewer, EndOfAVeryLargeFileIsShownAndTheFirstLineSaysSo)
{
    const QByteArray bytes = numbered(20 * s_megabyte);
    view(bytes);
    const QString shown = edit().toPlainText();
    EXPECT_LE(shown.size(), s_longest + s_notice);
    EXPECT_GE(shown.size(), s_longest / 2);
    EXPECT_TRUE(shown.endsWith(QString::fromUtf8(bytes.right(1000000))));
    const QString first_line = shown.section('\n', 0, 0);
    EXPECT_FALSE(first_line.isEmpty());
    EXPECT_FALSE(first_line.contains(".........")) << first_line.toStdString();
}

TEST_F(QLogFileViewer, VeryLargeFileGoesOnToBeFollowedWithinItsLimit)
{
    view(numbered(10 * s_megabyte));
    refresh_after("appended\n");
    EXPECT_TRUE(edit().toPlainText().endsWith("appended\n"));
    append(numbered(s_megabyte));
    refresh_after("the end\n");
    const QString shown = edit().toPlainText();
    EXPECT_TRUE(shown.endsWith("\nthe end\n"));
    EXPECT_LE(shown.size(), 2 * s_longest + s_notice);
    EXPECT_FALSE(shown.section('\n', 0, 0).contains("........."));
}

TEST_F(QLogFileViewer, FileThatGrowsVeryLargeIsCutAtItsBeginning)
{
    view("beginning\n");
    for (int i = 0; i < 3; ++i) {
        refresh_after(numbered(3 * s_megabyte));
    }
    const QString shown = edit().toPlainText();
    EXPECT_LE(shown.size(), s_longest + s_notice);
    EXPECT_FALSE(shown.section('\n', 0, 1).contains("beginning"));
    EXPECT_FALSE(shown.section('\n', 0, 0).contains("........."));
    EXPECT_TRUE(shown.endsWith(QString::fromUtf8(numbered(3 * s_megabyte).right(1000))));
}

TEST_F(QLogFileViewer, FileThatHasGrownVeryLargeUnseenIsCutAtItsBeginning)
{
    view("beginning\n");
    refresh_after(numbered(20 * s_megabyte));
    const QString shown = edit().toPlainText();
    EXPECT_LE(shown.size(), s_longest + s_notice);
    EXPECT_FALSE(shown.contains("beginning"));
    EXPECT_FALSE(shown.section('\n', 0, 0).contains("........."));
    EXPECT_TRUE(shown.endsWith(QString::fromUtf8(numbered(20 * s_megabyte).right(1000))));
}

TEST_F(QLogFileViewer, EndOfAVeryLongLineIsShown)
{
    view(QByteArray(9 * s_megabyte, 'x') + " the end");
    EXPECT_TRUE(edit().toPlainText().endsWith("xxx the end"));
    EXPECT_LE(edit().toPlainText().size(), s_longest + s_notice);
}

TEST_F(QLogFileViewer, CharacterAtTheCutIsNotTorn)
{
    QByteArray bytes("x");
    for (qint64 i = 0; i < s_longest; ++i) {
        bytes += i % 50 == 49 ? "\n" : "\xc3\xa4";
    }
    view(bytes);
    EXPECT_FALSE(edit().toPlainText().contains(QChar(QChar::ReplacementCharacter)));
    EXPECT_TRUE(edit().toPlainText().endsWith(QString::fromUtf8(bytes).right(1000)));
}

TEST_F(QLogFileViewer, SmallFileAfterAVeryLargeOneIsShownWhole)
{
    view(numbered(10 * s_megabyte));
    replace("small\n");
    viewer().refresh();
    EXPECT_EQ(text(), "small\n");
    EXPECT_EQ(edit().toPlainText(), "small\n");
}
