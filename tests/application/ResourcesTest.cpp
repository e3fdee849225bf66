#include "support/App.h"
#include "support/Picture.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/CommandDetails.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStatusBar>

#include <gtest/gtest.h>

namespace {

using support::compiled_in_picture;

const QString s_about = ":/tarqa/Resources/about.htm";
const QString s_style_sheet = ":/tarq/Resources/tarq.qss";

/// A library's resources register when it is loaded: a linker that drops what nobody calls must find a call.
const tarqa::housekeeping::CommandDetails s_keeps_the_library;

QString text_of(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QString product_icon(const QString& size)
{
    const QString name = QString::fromStdString(pkBase::pkProductInfo::const_instance().product_name());
    return ":/tarq/Resources/" + name.toLower() + size + ".png";
}

/// A cursor must not hide what lies at the edges of its square.
void expect_transparent_corners(const QImage& cursor)
{
    const int last = cursor.width() - 1;
    for (const QPoint& corner : {QPoint(0, 0), QPoint(last, 0), QPoint(0, last), QPoint(last, last)}) {
        EXPECT_EQ(0, qAlpha(cursor.pixel(corner)));
    }
}

int width_of_label_in_status_bar()
{
    QStatusBar bar;
    auto* p_label = new QLabel("12 cells"); // owned by the bar
    bar.addWidget(p_label);
    p_label->ensurePolished();
    return p_label->sizeHint().width();
}

} // namespace

// Icons

TEST(Resources, LargeIconOfTheProductWithoutAName)
{
    EXPECT_EQ(":/tarq/Resources/tarq64x64.png", product_icon("64x64"));
    compiled_in_picture(product_icon("64x64"), 64);
}

TEST(Resources, SmallIconOfTheProductWithoutAName)
{
    EXPECT_EQ(":/tarq/Resources/tarq16x16.png", product_icon("16x16"));
    compiled_in_picture(product_icon("16x16"), 16);
}

TEST(Resources, HelpIcon)
{
    compiled_in_picture(":/vista/Resources/help.png", 32);
}

TEST(Resources, UndoIcon)
{
    compiled_in_picture(":/pkBaseQt/Resources/undo.png", 32);
}

TEST(Resources, RedoIconPointsTheOtherWay)
{
    const QImage redo = compiled_in_picture(":/pkBaseQt/Resources/redo.png", 32);
    const QImage undo(":/pkBaseQt/Resources/undo.png");
    const int tip_of_the_arrow = 11;
    EXPECT_LT(qAlpha(redo.pixel(3, tip_of_the_arrow)), qAlpha(redo.pixel(28, tip_of_the_arrow)));
    EXPECT_GT(qAlpha(undo.pixel(3, tip_of_the_arrow)), qAlpha(undo.pixel(28, tip_of_the_arrow)));
}

// Cursors

TEST(Resources, OpenHandCursor)
{
    const QImage hand = compiled_in_picture(":/tarq/Resources/cursors/open_hand.png", 32);
    expect_transparent_corners(hand);
    EXPECT_EQ(qRgb(255, 255, 255), hand.pixel(16, 20));
}

TEST(Resources, ClosedHandCursor)
{
    const QImage hand = compiled_in_picture(":/tarq/Resources/cursors/closed_hand.png", 32);
    expect_transparent_corners(hand);
    EXPECT_EQ(qRgb(255, 255, 255), hand.pixel(16, 20));
    EXPECT_NE(QImage(":/tarq/Resources/cursors/open_hand.png").convertToFormat(hand.format()), hand);
}

TEST(Resources, CrossCursorMarksItsHotSpot)
{
    const QImage cross = compiled_in_picture(":/tarq/Resources/cursors/cross.png", 32);
    expect_transparent_corners(cross);
    EXPECT_EQ(qRgb(0, 0, 0), cross.pixel(16, 16));
    for (const QPoint& beside : {QPoint(15, 16), QPoint(17, 16), QPoint(16, 15), QPoint(16, 17)}) {
        EXPECT_EQ(qRgb(255, 255, 255), cross.pixel(beside));
    }
}

// Texts

TEST(Resources, AboutPageNamesTheLibrariesAndTheirLicences)
{
    const QString page = text_of(s_about);
    EXPECT_TRUE(page.startsWith("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01"));
    EXPECT_TRUE(page.endsWith("</html>\n"));
    EXPECT_TRUE(page.contains("housekeeping application framework"));
    const QStringList rows = page.split("<tr>");
    const auto names = [&rows](const QString& library, const QStringList& licences) {
        const QStringList row = rows.filter("<b>" + library + "</b>");
        ASSERT_EQ(1, row.size()) << library.toStdString();
        for (const QString& licence : licences) {
            EXPECT_TRUE(row.first().contains(licence))
                << library.toStdString() << ' ' << licence.toStdString();
        }
    };
    names("Qt", {"(LGPL)"});
    names("QtWebKit", {"(LGPL)", "BSD"});
    names("Boost", {"(BSL)"});
    names("GDAL", {"MIT"});
    names("CGAL", {"(GPL)", "(LGPL)"});
    names("OpenSceneGraph", {"(OSGPL)"});
}

TEST(Resources, AboutPageShowsOnlyPicturesThatAreCompiledIn)
{
    const QString page = text_of(s_about);
    auto pictures = QRegularExpression("<img src=\"qrc([^\"]*)\"").globalMatch(page);
    EXPECT_TRUE(pictures.hasNext());
    EXPECT_EQ(page.count("<img"), page.count("<img src=\"qrc:"));
    while (pictures.hasNext()) {
        compiled_in_picture(pictures.next().captured(1), 64);
    }
}

TEST(Resources, AboutPageHasNoLinkThatLeadsAwayFromIt)
{
    EXPECT_FALSE(text_of(s_about).contains("href=\"", Qt::CaseInsensitive));
}

TEST(Resources, StyleSheetIsUnderstood)
{
    const support::App app;
    const int plain = width_of_label_in_status_bar();
    qApp->setStyleSheet(text_of(s_style_sheet));
    EXPECT_GE(width_of_label_in_status_bar(), plain + 2 * 6);
}

TEST(Resources, StyleSheetSetsTextAndBackgroundOfToolTipsTogether)
{
    const QString rule = text_of(s_style_sheet).section("QToolTip {", 1).section('}', 0, 0);
    EXPECT_TRUE(rule.contains(" background-color: #"));
    EXPECT_TRUE(rule.contains(" color: #"));
}
