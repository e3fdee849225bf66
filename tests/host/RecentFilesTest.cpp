#include "windows/RecentFiles.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "documents/RasterInformation.h"
#include "support/ChildProcess.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "support/TestAccess.h"
#include "views/TerrainView.h"
#include "windows/DocumentViews.h"
#include "windows/RecentMenu.h"
#include "windows/StartPage.h"

#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>

#include <boost/make_shared.hpp>

#include <filesystem>

using namespace host_test;
using housekeeping::RecentDocumentsQueue;
using support::DialogDriver;
using terrain::Deed;

namespace {

boost::shared_ptr<housekeeping::DataSource> source(const std::string& path)
{
    return boost::make_shared<housekeeping::DataSource>(
        tarqa::utilities::filesystem_to_url(path), boost::make_shared<terrain::RasterInformation>());
}

class RecentFilesTest : public WindowTest
{
protected:
    terrain::RecentMenu& recent() const { return window->recent_menu(); }

    QAction& recent_entry() const { return *recent().menuAction(); }

    /// Lets the menu be filled as if the user opened it.
    QStringList shown() const
    {
        menu("&File").popup(QPoint());
        recent().popup(QPoint());
        const QStringList found = texts(recent());
        recent().hide();
        menu("&File").hide();
        return found;
    }

    /// Another program that shares the list, and opens a file.
    static void open_elsewhere(const std::string& path)
    {
        support::ChildProcess other([path] {
            RecentDocumentsQueue::instance().load();
            RecentDocumentsQueue::instance().push(source(path));
            RecentDocumentsQueue::instance().save();
            return "done";
        });
        EXPECT_EQ(other.report(), "done");
        other.let_go();
    }

    /// What a program finds that starts now, the newest first.
    static std::vector<std::string> stored()
    {
        support::ChildProcess other([] {
            housekeeping::TestAccess::destroy<RecentDocumentsQueue>();
            RecentDocumentsQueue::instance().load();
            std::string names;
            for (const auto& sp_source : RecentDocumentsQueue::const_instance()) {
                names = std::filesystem::path(sp_source->url()).filename().string() + "\n" + names;
            }
            return names;
        });
        std::istringstream stream(other.report());
        other.let_go();
        std::vector<std::string> names;
        for (std::string name; std::getline(stream, name);) {
            names.push_back(name);
        }
        return names;
    }

    void open_files(const std::vector<std::string>& names)
    {
        for (const std::string& name : names) {
            open_terrain_file(name);
        }
    }

    /// The links on the start page.
    QList<QLabel*> links() const
    {
        QCoreApplication::processEvents(); // new ones are shown soon
        QList<QLabel*> found;
        for (QLabel* const p_label : window->views().start_page().findChildren<QLabel*>()) {
            if (p_label->isVisible() && p_label->text().contains("<a ")) {
                found.append(p_label);
            }
        }
        return found;
    }
};

typedef std::vector<std::string> Names;

} // namespace

TEST_F(RecentFilesTest, TheMenuIsDisabledWhileThereAreNone)
{
    EXPECT_FALSE(recent_entry().isEnabled());
    EXPECT_TRUE(links().isEmpty());
    open_terrain_file("a.tif");
    shown();
    EXPECT_TRUE(recent_entry().isEnabled());
}

TEST_F(RecentFilesTest, TheNewestComesFirst)
{
    open_files({"a.tif", "b.tif", "c.tif", "a.tif"});
    EXPECT_EQ(shown(), (QStringList{"&1 a.tif", "&2 c.tif", "&3 b.tif"}));
    EXPECT_EQ(recent().actions()[1]->statusTip().toStdString(), scratch("c.tif"));
    EXPECT_EQ(recent().actions()[1]->toolTip().toStdString(), scratch("c.tif"));
    EXPECT_TRUE(recent().toolTipsVisible());
}

TEST_F(RecentFilesTest, TheFirstNineHaveNumbersToPress)
{
    Names names;
    for (int i = 1; i <= 11; ++i) {
        names.push_back(std::to_string(i) + ".tif");
    }
    open_files(names);
    const QStringList texts = shown();
    ASSERT_EQ(texts.size(), 11);
    EXPECT_EQ(texts[8], "&9 3.tif");
    EXPECT_EQ(texts[9], "10 2.tif");
    EXPECT_EQ(texts[10], "11 1.tif");
}

TEST_F(RecentFilesTest, AtMostTwentyAreKept)
{
    Names names;
    for (int i = 1; i <= 22; ++i) {
        names.push_back(std::to_string(i) + ".tif");
    }
    open_files(names);
    const QStringList texts = shown();
    EXPECT_EQ(texts.size(), 20);
    EXPECT_EQ(texts.last(), "20 3.tif");
}

TEST_F(RecentFilesTest, AnEntryOpensItsFile)
{
    open_files({"a.tif", "b.tif"});
    window->close_document();
    window->close_document();
    shown();
    recent().actions()[1]->trigger();
    EXPECT_TRUE(log.take("Opened"));
    ASSERT_EQ(documents(), 1);
    EXPECT_TRUE(window->windowTitle().contains("a.tif"));
    EXPECT_EQ(shown(), (QStringList{"&1 a.tif", "&2 b.tif"}));
}

TEST_F(RecentFilesTest, AnEntryIsChosenByItsNumber)
{
    open_files({"a.tif", "b.tif"});
    menu("&File").popup(QPoint());
    recent().popup(QPoint());
    QTest::keyClick(&recent(), Qt::Key_2);
    EXPECT_TRUE(window->windowTitle().contains("a.tif"));
    EXPECT_TRUE(log.take("Opened"));
}

TEST_F(RecentFilesTest, FilesOfTheSameNameAreToldWithTheirFolder)
{
    make_directory("one");
    make_directory("two");
    open_files({"one/a.tif", "b.tif", "two/a.tif"});
    EXPECT_EQ(shown(),
        (QStringList{"&1 a.tif – " + QString::fromStdString(scratch("two")), "&2 b.tif",
            "&3 a.tif – " + QString::fromStdString(scratch("one"))}));
}

TEST_F(RecentFilesTest, AmpersandsInNamesAreNoMnemonics)
{
    open_terrain_file("a & b&c.tif");
    EXPECT_EQ(shown(), QStringList{"&1 a && b&&c.tif"});
    EXPECT_EQ(recent().actions()[0]->statusTip().toStdString(), scratch("a & b&c.tif"));
}

TEST_F(RecentFilesTest, OddNamesAreShownAsTheyAre)
{
    open_files({"<b>bold.tif", u8"Höhe 山 %1 #?.tif", "two\tparts\nand lines.tif"});
    EXPECT_EQ(
        shown(), (QStringList{"&1 two parts and lines.tif", u8"&2 Höhe 山 %1 #?.tif", "&3 <b>bold.tif"}));
    EXPECT_FALSE(recent().actions()[2]->toolTip().contains("<b>")) << "it is no markup";
    window->close_document();
    shown();
    recent().actions()[1]->trigger();
    EXPECT_TRUE(window->windowTitle().contains(u8"Höhe 山 %1 #?.tif"));
    log.take_all();
}

TEST_F(RecentFilesTest, VeryLongNamesAreShortenedInTheMiddle)
{
    std::string name;
    for (int i = 0; i < 60; ++i) {
        name += u8"山";
    }
    open_terrain_file("first " + name + " last.tif");
    const QString text = shown()[0];
    EXPECT_TRUE(text.startsWith("&1 first ")) << text.toStdString();
    EXPECT_TRUE(text.endsWith(" last.tif"));
    EXPECT_LT(text.size(), 70);
    EXPECT_TRUE(recent().actions()[0]->statusTip().contains(QString::fromStdString(name)));
}

TEST_F(RecentFilesTest, OneFileIsListedOnceWhateverThePathToIt)
{
    make_directory("folder");
    open_terrain_file("a.tif");
    EXPECT_TRUE(window->open(QString::fromStdString(scratch("folder/../a.tif"))));
    EXPECT_TRUE(window->open(QString::fromStdString(scratch("./a.tif"))));
    EXPECT_EQ(shown(), QStringList{"&1 a.tif"});
    log.take_all();
}

TEST_F(RecentFilesTest, ALinkedFolderIsLeftByItsOwnWay)
{
    make_directory("far");
    make_directory("far/away");
    std::filesystem::create_directory_symlink(scratch("far/away"), scratch("link"));
    make_terrain_file("far/a.tif");
    EXPECT_TRUE(window->open(QString::fromStdString(scratch("link/../a.tif"))));
    EXPECT_EQ(recent().isEmpty(), true);
    EXPECT_EQ(shown(), QStringList{"&1 a.tif"});
    log.take_all();
}

TEST_F(RecentFilesTest, AFileThatIsGoneIsLeftOut)
{
    open_files({"a.tif", "b.tif"});
    QFile::remove(QString::fromStdString(scratch("b.tif")));
    EXPECT_EQ(shown(), QStringList{"&1 a.tif"});
    QFile::remove(QString::fromStdString(scratch("a.tif")));
    EXPECT_EQ(shown(), QStringList());
    EXPECT_FALSE(recent_entry().isEnabled());
}

TEST_F(RecentFilesTest, AFileThatVanishesWhileTheMenuIsOpenIsToldInABox)
{
    open_terrain_file("a.tif");
    shown();
    QFile::remove(QString::fromStdString(scratch("a.tif")));
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    recent().actions()[0]->trigger();
    EXPECT_EQ(dialogs.shown().at(0).text.trimmed().toStdString(),
        "Cannot read \"" + scratch("a.tif") + "\": there is no such file");
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(shown(), QStringList());
    log.take_all();
}

TEST_F(RecentFilesTest, AFileThatCannotBeOpenedIsNotListed)
{
    write_text(scratch("rubbish.tif"), "rubbish");
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    EXPECT_FALSE(window->open(QString::fromStdString(scratch("rubbish.tif"))));
    EXPECT_EQ(shown(), QStringList());
    log.take_all();
}

TEST_F(RecentFilesTest, AnExportedFileIsTheNewestOne)
{
    open_terrain_file("a.tif");
    EXPECT_TRUE(window->write_export(QString::fromStdString(scratch("out.tif"))));
    EXPECT_EQ(shown(), (QStringList{"&1 out.tif", "&2 a.tif"}));
    EXPECT_EQ(stored(), (Names{"out.tif", "a.tif"}));
    recent().actions()[0]->trigger();
    EXPECT_TRUE(window->windowTitle().contains("out.tif"));
    log.take_all();
}

TEST_F(RecentFilesTest, AFailedExportIsNotListed)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    EXPECT_FALSE(window->write_export(QString::fromStdString(scratch("nowhere/out.tif"))));
    EXPECT_EQ(shown(), QStringList{"&1 a.tif"});
    log.take_all();
}

// --- other programs

TEST_F(RecentFilesTest, AreStoredAfterEachChange)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(stored(), Names{"a.tif"});
    open_terrain_file("b.tif");
    EXPECT_EQ(stored(), (Names{"b.tif", "a.tif"}));
    open_terrain_file("a.tif");
    EXPECT_EQ(stored(), (Names{"a.tif", "b.tif"}));
}

TEST_F(RecentFilesTest, WhatAnotherProgramHasOpenedIsInTheMenu)
{
    open_terrain_file("a.tif");
    open_elsewhere(make_terrain_file("other.tif"));
    EXPECT_EQ(shown(), (QStringList{"&1 other.tif", "&2 a.tif"}));
}

TEST_F(RecentFilesTest, WhatAnotherProgramHasOpenedIsKept)
{
    open_terrain_file("a.tif");
    open_elsewhere(make_terrain_file("other.tif"));
    open_terrain_file("b.tif");
    EXPECT_EQ(stored(), (Names{"b.tif", "other.tif", "a.tif"}));
}

TEST_F(RecentFilesTest, TheMenuIsEnabledByAnotherProgramsFile)
{
    open_elsewhere(make_terrain_file("other.tif"));
    EXPECT_FALSE(recent_entry().isEnabled());
    EXPECT_EQ(shown(), QStringList{"&1 other.tif"});
    EXPECT_TRUE(recent_entry().isEnabled());
}

TEST_F(RecentFilesTest, ProgramsThatOpenFilesAtTheSameTimeLoseNone)
{
    std::vector<std::unique_ptr<support::ChildProcess>> programs;
    const int files = 6;
    for (const char letter : {'a', 'b', 'c'}) {
        for (int i = 0; i < files; ++i) {
            make_terrain_file(letter + std::to_string(i) + ".tif");
        }
        programs.push_back(std::make_unique<support::ChildProcess>([letter] {
            terrain::RecentFiles recent;
            for (int i = 0; i < files; ++i) {
                recent.add(source(scratch(letter + std::to_string(i) + ".tif")));
            }
            return "done";
        }));
    }
    for (const auto& program : programs) {
        EXPECT_EQ(program->report(), "done");
        program->let_go();
    }
    Names names = stored();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names.size(), 3u * files);
    EXPECT_EQ(names.front(), "a0.tif");
    EXPECT_EQ(names.back(), "c5.tif");
}

TEST_F(RecentFilesTest, AreThereAfterARestart)
{
    open_files({"a.tif", "b.tif"});
    ASSERT_TRUE(window->close());
    make_window_anew();
    EXPECT_TRUE(recent_entry().isEnabled());
    EXPECT_EQ(shown(), (QStringList{"&1 b.tif", "&2 a.tif"}));
}

TEST_F(RecentFilesTest, RubbishInTheSettingsDoesNoHarm)
{
    const std::string file = make_terrain_file("good.tif");
    {
        QSettings settings("Tarqa", "TarqAllVersions");
        settings.beginGroup("RecentFileList");
        settings.setValue("recently_viewed_doc0",
            QStringList{QString::fromStdString(tarqa::utilities::filesystem_to_url(file)), "no such kind",
                "upwards", "furlongs", "many"});
        settings.setValue("recently_viewed_doc1", 17);
        settings.setValue("recently_viewed_doc2", QStringList());
        settings.setValue("recently_viewed_doc3", QStringList{"file:///%zz", "", "", ""});
        settings.setValue("recently_viewed_doc4", QByteArray("\0\xff\xfe", 3));
    }
    EXPECT_EQ(shown(), QStringList{"&1 good.tif"});
    recent().actions()[0]->trigger();
    EXPECT_TRUE(window->windowTitle().contains("good.tif"));
    log.take_all();
    open_terrain_file("b.tif");
    EXPECT_EQ(shown(), (QStringList{"&1 b.tif", "&2 good.tif"}));
}

TEST_F(RecentFilesTest, ASettingsFileThatIsNoneDoesNoHarm)
{
    const QString file = QSettings("Tarqa", "TarqAllVersions").fileName();
    write_text(file.toStdString(), "[RecentFileList\n\xff\xfe=@Variant(\\0\\0\\0\\x7f\n====");
    EXPECT_EQ(shown(), QStringList());
    open_terrain_file("a.tif");
    EXPECT_EQ(shown(), QStringList{"&1 a.tif"});
}

TEST_F(RecentFilesTest, SettingsThatCannotBeWrittenDoNoHarm)
{
    const QString file = QSettings("Tarqa", "TarqAllVersions").fileName();
    std::filesystem::remove_all(file.toStdString());
    std::filesystem::create_directories(file.toStdString() + "/in the way");
    open_terrain_file("a.tif");
    EXPECT_EQ(shown(), QStringList{"&1 a.tif"}) << "for this program at least";
    EXPECT_TRUE(log.take("The recent documents could not be stored in " + file.toStdString()));
}

// --- start page

TEST_F(RecentFilesTest, TheNewestOnesAreOnTheStartPage)
{
    open_files({"1.tif", "2.tif", "3.tif", "4.tif", "5.tif", "6 <i>&.tif"});
    while (documents() > 0) {
        window->close_document();
    }
    const QList<QLabel*> found = links();
    ASSERT_EQ(found.size(), terrain::StartPage::most_links);
    EXPECT_EQ(found[0]->text(), "<a href=\"file\">6 &lt;i&gt;&amp;.tif</a>");
    EXPECT_EQ(found[1]->toolTip().toStdString(), scratch("5.tif"));
    emit found[1]->linkActivated("file");
    EXPECT_TRUE(window->windowTitle().contains("5.tif"));
    EXPECT_TRUE(log.take("Opened"));
}

TEST_F(RecentFilesTest, ALinkOfTheStartPageWhoseFileIsGoneGoesToo)
{
    open_files({"a.tif", "b.tif"});
    while (documents() > 0) {
        window->close_document();
    }
    QFile::remove(QString::fromStdString(scratch("b.tif")));
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    emit links()[0]->linkActivated("file");
    ASSERT_EQ(links().size(), 1);
    EXPECT_TRUE(links()[0]->text().contains("a.tif"));
    log.take_all();
}
