#include "windows/WindowPlace.h"

#include "HelpWindowFixture.h"
#include "WindowFixture.h"
#include "help/HelpTopics.h"

#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtCore/QSettings>
#include <QtGui/QScreen>
#include <QtWidgets/QSplitter>

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

// Places of windows that are stored, and those that nobody stored.

using namespace host_test;
using terrain::help_key;
using terrain::restore_place;
using terrain::Topic;

namespace {

/// A byte is missing, so that the window seems to be some hundred million rows below the screen.
QByteArray damaged()
{
    return QByteArray::fromHex(
        "01d9d0cb0003000000000064000000780000012b00000103000000680000008c00000127000000ff"
        "000000000000000003200000007c36380000008c00000127000000ff");
}

bool is_on_screen(const QWidget& window)
{
    return window.screen()->availableGeometry().intersects(window.frameGeometry());
}

class WindowPlaceMainTest : public WindowTest
{
protected:
    /// The widths of panels and map with this width of the panels stored.
    QList<int> widths(int stored)
    {
        QSettings().setValue("MainWindow/panelWidth", stored);
        make_window_anew();
        return window->findChild<QSplitter*>()->sizes();
    }
};

class WindowPlaceHelpTest : public HelpWindowTest
{ };

} // namespace

TEST(WindowPlace, IsTheOneThatWasSaved)
{
    const support::App application;
    QWidget before;
    before.setGeometry(120, 130, 240, 250);
    QWidget window;
    restore_place(window, before.saveGeometry());
    EXPECT_EQ(window.geometry(), QRect(120, 130, 240, 250));
}

TEST(WindowPlace, StaysWithoutOne)
{
    const support::App application;
    QWidget window;
    window.setGeometry(120, 130, 240, 250);
    restore_place(window, QByteArray());
    restore_place(window, "no place");
    EXPECT_EQ(window.geometry(), QRect(120, 130, 240, 250));
}

TEST(WindowPlace, IsOnTheScreenWhateverIsStored)
{
    const support::App application;
    QWidget lost;
    ASSERT_TRUE(lost.restoreGeometry(damaged()));
    ASSERT_FALSE(is_on_screen(lost));

    QWidget window;
    window.resize(240, 250);
    restore_place(window, damaged());
    EXPECT_TRUE(is_on_screen(window));
    EXPECT_EQ(window.size(), QSize(240, 250));
}

TEST_F(WindowPlaceMainTest, MainWindowIsOnTheScreenWhateverIsStored)
{
    QSettings().setValue("MainWindow/geometry", damaged());
    make_window_anew();
    EXPECT_TRUE(is_on_screen(*window));
}

TEST_F(WindowPlaceMainTest, WidthOfThePanelsFitsIntoTheWindow)
{
    const QList<int> usual = widths(300);
    EXPECT_EQ(usual.first(), 300);
    const QList<int> smallest = widths(0);
    EXPECT_LT(smallest.first(), usual.first());
    EXPECT_EQ(widths(-1), smallest);
    EXPECT_EQ(widths(std::numeric_limits<int>::min()), smallest);
    const QList<int> largest = widths(window->width());
    EXPECT_GT(largest.first(), usual.first());
    EXPECT_EQ(widths(std::numeric_limits<int>::max()), largest);
}

TEST_F(WindowPlaceHelpTest, HelpIsOnTheScreenWhateverIsStored)
{
    QSettings().setValue("HelpWindow/geometry", damaged());
    show(help_key(Topic::Map));
    EXPECT_TRUE(is_on_screen(*window));
}

TEST_F(WindowPlaceHelpTest, SizeOfTheTextsIsOneOfItsOwnWhateverIsStored)
{
    const std::vector<std::pair<QString, double>> sizes
        = {{"nan", 1}, {"inf", 3}, {"-inf", 0.5}, {"2", 2}, {"large", 0.5}};
    for (const auto& [stored, expected] : sizes) {
        QSettings().setValue("HelpWindow/zoom", stored);
        window.reset();
        show(help_key(Topic::Map));
        EXPECT_EQ(window->view().zoomFactor(), expected) << stored.toStdString();
    }
}
