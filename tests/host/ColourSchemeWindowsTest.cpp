#include "BatchProcess.h"
#include "FakePortal.h"
#include "HelpWindowFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "help/HelpTopics.h"
#include "panels/HistogramPlot.h"
#include "panels/QuickHelpPanel.h"
#include "style/ColourScheme.h"
#include "support/MessageBus.h"
#include "support/MessageSpy.h"
#include "support/VirtualScreen.h"
#include "views/MapFurniture.h"
#include "views/TerrainView.h"
#include "windows/StartPage.h"

#include <tarqa/housekeeping/gui/PreferencesDialog.h>
#include <tarqa/housekeeping/gui/QHelpWebView.h>

#include <QtGui/QImage>
#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolTip>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

using namespace host_test;
using terrain::ColourScheme;
using terrain::Deed;

namespace {

const int s_middle = 128; ///< lightness between dark and light

/// How light most of what a widget shows is, from 0 to 255.
int lightness_of(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    std::vector<int> lightness;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            lightness.push_back(picture.pixelColor(x, y).lightness());
        }
    }
    if (lightness.empty()) {
        return s_middle;
    }
    std::nth_element(lightness.begin(), lightness.begin() + lightness.size() / 2, lightness.end());
    return lightness[lightness.size() / 2];
}

/// How light a text is: what differs most from the paper.
int text_lightness(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    const int paper = lightness_of(widget);
    int text = paper;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int lightness = picture.pixelColor(x, y).lightness();
            text = std::abs(lightness - paper) > std::abs(text - paper) ? lightness : text;
        }
    }
    return text;
}

/// The window of the program on a desktop that is light at first.
class ColourSchemeWindows : public WindowTest
{
protected:
    void SetUp() override
    {
        scheme = std::make_unique<ColourScheme>();
        WindowTest::SetUp();
    }
    void TearDown() override
    {
        WindowTest::TearDown();
        scheme.reset();
    }

    void become(unsigned int colours)
    {
        ASSERT_TRUE(support::wait_until([this] { return portal.questions() > 0; }));
        portal.announce(colours);
        ASSERT_TRUE(support::wait_until(
            [this, colours] { return scheme->is_dark() == (colours == FakePortal::dark); }));
    }

    /// Checks that a widget is light, dark as soon as the desktop is, and light again.
    void expect_to_follow(QWidget& widget)
    {
        const auto is_light = [&widget] { return lightness_of(widget) > s_middle; };
        EXPECT_TRUE(support::wait_until(is_light)) << "light at first";
        become(FakePortal::dark);
        EXPECT_TRUE(support::wait_until([&is_light] { return !is_light(); })) << "dark";
        become(FakePortal::light);
        EXPECT_TRUE(support::wait_until(is_light)) << "light again";
    }

    support::MessageBus bus{support::session_bus};
    FakePortal portal{bus, FakePortal::light};
    std::unique_ptr<ColourScheme> scheme;
};

} // namespace

TEST_F(ColourSchemeWindows, MainWindowWithItsStartPageFollows)
{
    expect_to_follow(*window);
}

TEST_F(ColourSchemeWindows, LinksOfTheStartPageFollow)
{
    open_terrain_file("recent.tif");
    window->action(Deed::Close).trigger();
    ASSERT_EQ(documents(), 0);
    const auto has_link = [this](bool light) {
        for (QLabel* const p_label : window->findChild<terrain::StartPage*>()->findChildren<QLabel*>()) {
            if (p_label->isVisible() && p_label->text().startsWith("<a ")) {
                return (text_lightness(*p_label) > s_middle) == light;
            }
        }
        return false;
    };
    EXPECT_TRUE(support::wait_until([&has_link] { return has_link(false); }));
    become(FakePortal::dark);
    EXPECT_TRUE(support::wait_until([&has_link] { return has_link(true); }));
}

TEST_F(ColourSchemeWindows, MenusFollow)
{
    expect_to_follow(menu("&File"));
}

TEST_F(ColourSchemeWindows, DialogsFollow)
{
    window->action(Deed::Preferences).trigger();
    auto* const p_dialog = window->findChild<housekeeping::gui::PreferencesDialog*>();
    ASSERT_NE(p_dialog, nullptr);
    expect_to_follow(*p_dialog);
}

TEST_F(ColourSchemeWindows, QuickHelpFollows)
{
    window->action(Deed::QuickHelp).trigger();
    auto& panel = *window->findChild<terrain::QuickHelpPanel*>();
    ASSERT_TRUE(panel.isVisible());
    expect_to_follow(panel);
}

TEST_F(ColourSchemeWindows, PlotsFollow)
{
    terrain::HistogramPlot plot;
    plot.resize(300, 200);
    plot.show();
    expect_to_follow(plot);
}

TEST_F(ColourSchemeWindows, FurnitureOfTheMapFollowsButNotItsBackground)
{
    open_terrain_file("map.tif");
    terrain::TerrainView& view = *window->view();
    view.resize(600, 500);
    const auto colour_at = [&view](int x, int y) { return view.grab().toImage().pixelColor(x, y); };
    const QColor background = colour_at(2, 2);
    // The upper right corner of the box around the legend.
    const int inset = static_cast<int>(terrain::furniture_margin) + 6;
    EXPECT_GT(colour_at(view.width() - inset, inset).lightness(), s_middle);
    become(FakePortal::dark);
    EXPECT_LT(colour_at(view.width() - inset, inset).lightness(), s_middle);
    EXPECT_EQ(colour_at(2, 2), background);
}

TEST_F(ColourSchemeWindows, ToolTipsFollow)
{
    const auto lightness_of_a_tip = [this](const QString& text) {
        QToolTip::showText(QPoint(100, 100), text, window.get());
        for (QWidget* const p_widget : QApplication::topLevelWidgets()) {
            if (p_widget->inherits("QTipLabel")) {
                return lightness_of(*p_widget);
            }
        }
        return s_middle;
    };
    EXPECT_GT(lightness_of_a_tip("A tip"), s_middle);
    become(FakePortal::dark);
    EXPECT_LT(lightness_of_a_tip("Another tip"), s_middle);
}

TEST_F(HelpWindowTest, FollowsTheColoursOfTheDesktop)
{
    const support::MessageBus bus(support::session_bus);
    FakePortal portal(bus, FakePortal::light);
    const ColourScheme scheme;
    show(terrain::help_key(terrain::Topic::Map));
    const ShownHelp shown(*window);
    shown.expect_page("map.html");
    const auto is_light = [this] { return lightness_of(window->view()) > s_middle; };
    EXPECT_TRUE(support::wait_until(is_light));
    portal.announce(FakePortal::dark);
    EXPECT_TRUE(support::wait_until([&is_light] { return !is_light(); }));
    shown.expect_page("map.html");
    portal.announce(FakePortal::light);
    EXPECT_TRUE(support::wait_until(is_light));
    window.reset();
}

TEST_F(HelpWindowTest, SaysWhatIsMissingOnADarkDesktop)
{
    QApplication::setPalette(terrain::scheme_palette(true));
    show("nowhere", terrain::HelpPages(own_folder() + "/missing"));
    ShownHelp(*window).expect_text("The help is not installed");
    EXPECT_TRUE(log.take("The help is not installed"));
    EXPECT_TRUE(support::wait_until([this] {
        return std::abs(text_lightness(window->view()) - lightness_of(window->view())) > s_middle;
    }));
}

// The program

TEST(ColourSchemeProgram, WindowAsksTheDesktop)
{
    const support::MessageBus bus(support::session_bus);
    const support::App application;
    FakePortal portal(bus, FakePortal::dark);
    const support::VirtualScreen screen;
    BatchProcess program;
    program.show_on(screen.display());
    program.start({});
    EXPECT_TRUE(support::wait_until([&portal] { return portal.questions() > 0; }));
}

TEST(ColourSchemeProgram, WindowComesUpOnADesktopWithASilentBus)
{
    const support::App application;
    const support::SilentBus bus;
    support::MessageBus::use(support::session_bus, bus.address());
    BatchProcess program;
    QProcessEnvironment environment = program.process().processEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen"); // others wait for the bus themselves
    program.process().setProcessEnvironment(environment);
    const std::string folder = make_directory("pictures");
    program.start({"--tour", folder});
    EXPECT_TRUE(
        support::wait_until([&folder] { return std::filesystem::exists(folder + "/01-relief.png"); }));
}

TEST(ColourSchemeProgram, BatchAsksNobody)
{
    const support::MessageBus bus(support::session_bus);
    const support::App application;
    FakePortal portal(bus, FakePortal::dark);
    EXPECT_EQ(run_script("info\n", {make_terrain_file("batch.tif")}).code, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(portal.questions(), 0);
}
