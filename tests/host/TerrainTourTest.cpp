#include "BatchProcess.h"
#include "RasterFiles.h"
#include "support/VirtualScreen.h"
#include "tour/TourReport.h"
#include "tour/TourSteps.h"
#include "tour/Watchdog.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSettings>
#include <QtCore/QUrl>
#include <QtGui/QImage>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <future>

using namespace host_test;
using terrain::TourReport;
using terrain::Watchdog;
using testing::ContainsRegex;
using testing::HasSubstr;

namespace {

/// A tour on a screen of its own.
class TourProcess : public BatchProcess
{
public:
    /// @param prepare called before it is started
    explicit TourProcess(const std::vector<std::string>& arguments,
        const std::function<void(TourProcess& process)>& prepare = nullptr)
    {
        std::vector<std::string> words = {"--tour"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        show_on(m_screen.display());
        if (prepare) {
            prepare(*this);
        }
        start(words);
    }

private:
    support::VirtualScreen m_screen;
};

/// What a user might have set; all of it would be seen in the tour.
void write_settings(const std::string& home, const std::string& recent_file)
{
    const QString folder = QString::fromStdString(home) + "/Tarqa/";
    QSettings settings(folder + "TarqTerrain.conf", QSettings::IniFormat);
    settings.setValue("application/useExternalHelpViewer", true);
    settings.setValue("viewer_options/background_color", "#102030");
    settings.setValue("viewer_options/animate_jumps", false);
    settings.setValue("Q4DAbstractControlPanel/History/floating", true);
    settings.setValue("Q4DAbstractControlPanel/tabOrder", QStringList{"Quick Help", "Home"});
    QSettings shared(folder + "TarqAllVersions.conf", QSettings::IniFormat);
    shared.setValue("RecentFileList/recently_viewed_doc0",
        QStringList{QUrl::fromLocalFile(QString::fromStdString(recent_file)).toString(), "raster",
            "elevation", "metres", "1"});
}

/// Programs that the desktop would open web pages with, which write down that they were started.
std::string make_browsers(const std::string& witness)
{
    const std::string folder = make_directory("browsers");
    for (const char* const name : {"xdg-open", "x-www-browser", "www-browser", "sensible-browser", "firefox",
             "chromium", "google-chrome", "gnome-open", "kde-open", "gio"}) {
        write_text(folder + "/" + name, "#!/bin/sh\necho \"$0 $@\" >>'" + witness + "'\n");
        std::filesystem::permissions(folder + "/" + name, std::filesystem::perms::owner_all);
    }
    return folder;
}

QJsonObject list_in(const std::string& folder)
{
    const std::string text = read_text(folder + "/" + TourReport::list_name);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text;
    return document.object();
}

QJsonArray steps_in(const std::string& folder)
{
    return list_in(folder).value("steps").toArray();
}

/// Expects all pictures of a tour that went well.
void expect_all_steps(const std::string& folder)
{
    const QJsonArray steps = steps_in(folder);
    ASSERT_EQ(steps.size(), static_cast<int>(terrain::tour_steps().size()));
    int duration = 0;
    for (int i = 0; i < steps.size(); ++i) {
        const QJsonObject step = steps[i].toObject();
        EXPECT_EQ(step.value("number").toInt(), i + 1);
        const QString name = step.value("name").toString();
        EXPECT_EQ(name, terrain::tour_steps()[static_cast<std::size_t>(i)].name);
        EXPECT_EQ(
            step.value("picture").toString(), QString("%1-%2.png").arg(i + 1, 2, 10, QChar('0')).arg(name));
        const QImage picture(QString::fromStdString(folder) + "/" + step.value("picture").toString());
        ASSERT_FALSE(picture.isNull()) << name.toStdString();
        EXPECT_EQ(step.value("width").toInt(), picture.width());
        EXPECT_EQ(step.value("height").toInt(), picture.height());
        EXPECT_TRUE(terrain::is_varied(picture)) << name.toStdString();
        EXPECT_GE(step.value("duration").toInt(-1), 0);
        duration += step.value("duration").toInt();
        const QJsonArray checks = step.value("checks").toArray();
        EXPECT_GE(checks.size(), 3);
        for (const QJsonValue& check : checks) {
            EXPECT_TRUE(check.toObject().value("result").toBool())
                << check.toObject().value("text").toString().toStdString();
        }
    }
    EXPECT_EQ(list_in(folder).value("duration").toInt(), duration);
}

/// The steps that the program has named, in their order, and the sum.
void expect_durations(const std::string& out)
{
    std::string expected;
    for (const terrain::TourStep& step : terrain::tour_steps()) {
        expected += std::string("[0-9]+ ms  ") + step.name + "\n *[0-9]+ +";
    }
    expected.erase(expected.rfind(" *[0-9]+ +"));
    EXPECT_THAT(out, ContainsRegex(expected + " *[0-9]+ ms  all steps\n"));
}

} // namespace

TEST(TerrainTour, LeavesPictures)
{
    const std::string folder = scratch("pictures/of the tour");
    TourProcess process({folder});
    EXPECT_EQ(process.finish(), 0) << process.error();
    EXPECT_THAT(process.out(), HasSubstr("pictures of the tour are in " + folder));
    EXPECT_THAT(process.log(), HasSubstr("END OF ERROR LOG")) << "all was taken down in order";
    expect_all_steps(folder);
    expect_durations(process.out());
}

TEST(TerrainTour, ShowsAFile)
{
    const std::string folder = scratch("pictures");
    TourProcess process({folder, make_terrain_file("hollows.tif")});
    EXPECT_EQ(process.finish(), 0) << process.error();
    expect_all_steps(folder);
    const QString title
        = steps_in(folder)[0].toObject().value("checks").toArray()[1].toObject()["text"].toString();
    EXPECT_THAT(title.toStdString(), HasSubstr("hollows.tif"));
}

TEST(TerrainTour, LeavesTheFileThatItShowsAsItIs)
{
    const std::string file = make_terrain_file("hollows.tif");
    const std::string content = read_text(file);
    TourProcess process({scratch("pictures"), file});
    EXPECT_EQ(process.finish(), 0) << process.error();
    EXPECT_EQ(read_text(file), content);
    EXPECT_THAT(steps_in(scratch("pictures")).size(), static_cast<int>(terrain::tour_steps().size()));
}

TEST(TerrainTour, WithoutOpenGLItLooksAtWhatTheViewSays)
{
    const std::string folder = scratch("pictures");
    TourProcess process({folder, make_terrain_file("hollows.tif")},
        [](TourProcess& tour) { tour.set_variable("QT_XCB_GL_INTEGRATION", "none"); });
    EXPECT_EQ(process.finish(), 0) << process.error();
    expect_all_steps(folder);
    const std::string list = read_text(folder + "/" + TourReport::list_name);
    EXPECT_THAT(list, HasSubstr("there is no OpenGL here, as the view says"));
}

TEST(TerrainTour, NeitherReadsNorChangesTheSettings)
{
    const std::string recent_file = make_terrain_file("recent.tif");
    TourProcess process({scratch("pictures"), make_terrain_file("hollows.tif")},
        [&recent_file](const TourProcess& tour) { write_settings(tour.home(), recent_file); });
    const std::string folder = process.home() + "/Tarqa";
    const std::vector<std::string> names = names_in(folder);
    ASSERT_THAT(names, testing::ElementsAre("TarqAllVersions.conf", "TarqTerrain.conf"));
    const std::string own = read_text(folder + "/" + names[1]);
    const std::string shared = read_text(folder + "/" + names[0]);
    EXPECT_EQ(process.finish(), 0) << process.error();
    expect_all_steps(scratch("pictures"));
    EXPECT_EQ(names_in(folder), names);
    EXPECT_EQ(read_text(folder + "/" + names[1]), own);
    EXPECT_EQ(read_text(folder + "/" + names[0]), shared);
}

TEST(TerrainTour, StartsNoBrowser)
{
    const std::string witness = scratch("started");
    TourProcess process({scratch("pictures"), make_terrain_file("hollows.tif")},
        [&witness](TourProcess& tour) { tour.find_programs_in(make_browsers(witness)); });
    EXPECT_EQ(process.finish(), 0) << process.error();
    EXPECT_FALSE(std::filesystem::exists(witness)) << read_text(witness);
}

TEST(TerrainTour, ShowsWhatThereIs)
{
    QStringList names;
    for (const terrain::TourStep& step : terrain::tour_steps()) {
        names.append(step.name);
    }
    for (const char* const name : {"relief", "layers", "scene", "map-and-scene", "statistics", "recent-files",
             "floating-panel", "docked-panel", "tools-menu", "sinks-filled", "smoothed", "clamped", "scaled",
             "raised", "lowered", "polygon", "flattened", "triangulated", "triangles-in-scene", "resampled",
             "cropped", "cleaned-up", "parameters", "cell-size", "range", "history", "cancelled",
             "several-undone", "all-undone", "redone", "save-as", "saved", "exported", "preferences-general",
             "preferences-viewer", "preferences-performance", "preferences-animation", "another-background",
             "first-background", "help-contents", "help-about-panel", "shortcuts", "about", "log",
             "unsaved-changes", "start-page"}) {
        EXPECT_EQ(names.count(name), 1) << name;
    }
}

TEST(TerrainTour, TwoAtOnce)
{
    const std::string file = make_terrain_file("hollows.tif");
    TourProcess one({scratch("one"), file});
    TourProcess other({scratch("other"), file});
    EXPECT_EQ(one.finish(), 0) << one.error();
    EXPECT_EQ(other.finish(), 0) << other.error();
    expect_all_steps(scratch("one"));
    expect_all_steps(scratch("other"));
}

TEST(TerrainTour, AFileThatCannotBeOpenedEndsIt)
{
    write_text(scratch("rubbish.tif"), "rubbish");
    TourProcess process({scratch("pictures"), scratch("rubbish.tif")});
    EXPECT_EQ(process.finish(), 1);
    EXPECT_THAT(process.error(), HasSubstr("step 1, relief: a dialog appeared: Cannot read"));
    EXPECT_TRUE(steps_in(scratch("pictures")).isEmpty());
}

TEST(TerrainTour, AFolderThatCannotBeMadeEndsIt)
{
    write_text(scratch("file"), "");
    TourProcess process({scratch("file") + "/pictures"});
    EXPECT_EQ(process.finish(), 1);
    EXPECT_THAT(process.error(), HasSubstr("cannot be made"));
}

TEST(TerrainTour, AFolderThatCannotBeWrittenEndsIt)
{
    TourProcess process({"/proc/self"});
    EXPECT_EQ(process.finish(), 1);
    EXPECT_THAT(process.error(), HasSubstr("\"/proc/self/tour.json\" cannot be written"));
}

TEST(TerrainTour, WithoutADisplayItSaysSo)
{
    for (const std::vector<std::string>& arguments :
        {std::vector<std::string>{}, {"a.tif"}, {"--tour", scratch("pictures")}}) {
        BatchProcess process;
        process.start(arguments);
        EXPECT_EQ(process.finish(), 1);
        EXPECT_THAT(process.error(), HasSubstr("there is no display"));
    }
}

TEST(TourReport, ListsWhatItWrote)
{
    TourReport report(QString::fromStdString(scratch("report")));
    EXPECT_TRUE(steps_in(scratch("report")).isEmpty());
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    report.add({7, "red", picture, 12, {{"it is red", true}, {"it is blue", false}}});
    const QJsonArray steps = steps_in(scratch("report"));
    ASSERT_EQ(steps.size(), 1);
    EXPECT_EQ(steps[0].toObject().value("picture").toString(), "07-red.png");
    EXPECT_EQ(steps[0].toObject().value("duration").toInt(), 12);
    const QJsonArray checks = steps[0].toObject().value("checks").toArray();
    EXPECT_EQ(checks[1].toObject().value("text").toString(), "it is blue");
    EXPECT_FALSE(checks[1].toObject().value("result").toBool(true));
    EXPECT_EQ(QImage(QString::fromStdString(scratch("report/07-red.png"))).size(), QSize(3, 2));
    EXPECT_EQ(report.entries(), 1);
    report.add({8, "again", picture, 30, {}});
    EXPECT_EQ(report.duration(), 42);
    EXPECT_EQ(list_in(scratch("report")).value("duration").toInt(), 42);
}

TEST(TourReport, AMissingPictureIsAnError)
{
    TourReport report(QString::fromStdString(scratch("report")));
    EXPECT_THROW(report.add({1, "nothing", QImage(), 0, {}}), std::runtime_error);
    EXPECT_EQ(names_in(scratch("report")), std::vector<std::string>{"tour.json"});
}

TEST(Watchdog, CallsWhenNobodyIsAlive)
{
    std::promise<void> called;
    const Watchdog watchdog(std::chrono::milliseconds(1), [&called] { called.set_value(); });
    EXPECT_EQ(called.get_future().wait_for(std::chrono::minutes(1)), std::future_status::ready);
}

TEST(Watchdog, IsQuietWhenItGoesInTime)
{
    std::atomic<bool> called{false};
    {
        Watchdog watchdog(std::chrono::hours(1), [&called] { called = true; });
        watchdog.alive();
    }
    EXPECT_FALSE(called);
}
