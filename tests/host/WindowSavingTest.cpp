#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/ScaleCommand.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterMemory.h"
#include "io/RasterReader.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "support/DialogDriver.h"
#include "windows/DocumentBox.h"
#include "windows/RecentFiles.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAction>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>

#include <filesystem>

using namespace host_test;
using support::DialogDriver;
using terrain::Deed;
using terrain::read_raster;
using testing::ElementsAre;

namespace {

class WindowSavingTest : public WindowTest
{
protected:
    void change() { run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2)); }
    void trigger(Deed deed) { window->action(deed).trigger(); }

    /// Whether a file holds what the current document does.
    static bool is_saved(const std::string& path)
    {
        return bits(read_raster(path).cells) == bits(current().terrain().raster().cells);
    }
    static QString in_scratch(const std::string& name) { return QString::fromStdString(scratch(name)); }

    /// Opens an ASCII grid.
    void open_grid()
    {
        write_text(scratch("grid.asc"), "ncols 2\nnrows 1\nxllcorner 10\nyllcorner 20\ncellsize 5\n1 2\n");
        ASSERT_TRUE(window->open(in_scratch("grid.asc")));
        log.take_all();
    }
};

} // namespace

TEST_F(WindowSavingTest, SaveAsksOnceBeforeItOverwritesTheSource)
{
    open_terrain_file("a.tif");
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes);
    trigger(Deed::Save);
    EXPECT_TRUE(dialogs.shown().at(0).text.startsWith('"' + in_scratch("a.tif") + '"'));
    EXPECT_EQ(dialogs.shown().at(0).parent, window.get());
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(is_saved(scratch("a.tif")));

    change();
    EXPECT_FALSE(is_saved(scratch("a.tif")));
    trigger(Deed::Save);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(is_saved(scratch("a.tif")));
    EXPECT_FALSE(window->isWindowModified());
    log.take_all();
}

TEST_F(WindowSavingTest, TheSourceStaysAsItIsUnlessTheUserAgrees)
{
    open_terrain_file("a.tif");
    const std::string before = read_text(scratch("a.tif"));
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel).click(QMessageBox::No).cancel();
    trigger(Deed::Save);
    trigger(Deed::Save);
    EXPECT_EQ(dialogs.shown().at(2).title, "Save As");
    EXPECT_EQ(read_text(scratch("a.tif")), before);
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(WindowSavingTest, SaveAsGivesTheDocumentAnotherFile)
{
    open_terrain_file("a.tif");
    const std::string before = read_text(scratch("a.tif"));
    change();
    DialogDriver dialogs;
    dialogs.choose_file(in_scratch("b"));
    trigger(Deed::SaveAs);
    EXPECT_TRUE(dialogs.shown().at(0).saves);
    EXPECT_EQ(dialogs.shown().at(0).file, "a 2.tif") << "nothing is overwritten in haste";
    EXPECT_EQ(dialogs.shown().at(0).filters, QStringList("GeoTIFF (*.tif *.tiff)"));
    EXPECT_TRUE(is_saved(scratch("b.tif")));
    EXPECT_EQ(read_text(scratch("a.tif")), before);
    EXPECT_EQ(current().title(), scratch("b.tif"));
    EXPECT_EQ(window->windowTitle(), in_scratch("b.tif") + "[*] - Tarq Terrain");
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(window->document_box().currentText(), "b");
    EXPECT_EQ(window->quick_help().sheet().title(), "b");

    change();
    trigger(Deed::Save); // without a question: the program made the file
    EXPECT_TRUE(is_saved(scratch("b.tif")));
    EXPECT_EQ(documents(), 1);
    log.take_all();
}

TEST_F(WindowSavingTest, WhatIsNoGeoTiffIsSavedAsOne)
{
    open_grid();
    const std::string before = read_text(scratch("grid.asc"));
    change();
    DialogDriver dialogs;
    dialogs.choose_file(in_scratch("grid.tif"));
    trigger(Deed::Save);
    EXPECT_EQ(dialogs.shown().at(0).title, "Save As");
    EXPECT_EQ(dialogs.shown().at(0).file, "grid.tif");
    EXPECT_TRUE(is_saved(scratch("grid.tif")));
    EXPECT_EQ(read_text(scratch("grid.asc")), before);
    EXPECT_FALSE(window->isWindowModified());
    log.take_all();
}

TEST_F(WindowSavingTest, AFileThatHoldsMoreThanTheHeightsIsNeverOverwritten)
{
    make_tiff(scratch("two.tif"), 2, 1, GDT_Float32, {3, 4}, nullptr, {}, 2);
    ASSERT_TRUE(window->open(in_scratch("two.tif")));
    change();
    DialogDriver dialogs;
    dialogs.cancel();
    trigger(Deed::Save);
    EXPECT_EQ(dialogs.shown().at(0).title, "Save As");
    EXPECT_TRUE(window->isWindowModified());
    log.take_all();
}

TEST_F(WindowSavingTest, OnlyGeoTiffHoldsAllThereIs)
{
    open_terrain_file("a.tif");
    change();
    DialogDriver dialogs;
    dialogs.choose_file(in_scratch("b.asc")).click(QMessageBox::Ok);
    trigger(Deed::SaveAs);
    EXPECT_TRUE(dialogs.shown().at(1).text.contains("the name must end in \".tif\""));
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_FALSE(std::filesystem::exists(scratch("b.asc")));
    log.take_all();
}

TEST_F(WindowSavingTest, WithoutChangesThereIsNothingToSave)
{
    open_terrain_file("a.tif");
    const auto before = std::filesystem::last_write_time(scratch("a.tif"));
    trigger(Deed::Save);
    EXPECT_EQ(window->statusBar()->currentMessage(), "There are no changes to save");
    EXPECT_EQ(std::filesystem::last_write_time(scratch("a.tif")), before);
}

TEST_F(WindowSavingTest, AFileThatIsGoneIsWrittenAgain)
{
    open_terrain_file("a.tif");
    std::filesystem::remove(scratch("a.tif"));
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes);
    trigger(Deed::Save);
    EXPECT_TRUE(is_saved(scratch("a.tif")));
    log.take_all();
}

TEST_F(WindowSavingTest, AFailureIsShownAndLosesNothing)
{
    open_terrain_file("a.tif");
    change();
    DialogDriver dialogs;
    dialogs.choose_file("/proc/nowhere.tif").click(QMessageBox::Ok);
    trigger(Deed::SaveAs);
    EXPECT_EQ(dialogs.shown().at(1).title, "Save");
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_EQ(current().title(), scratch("a.tif"));
    EXPECT_EQ(current().own_file(), scratch("a.tif"));
    EXPECT_FALSE(current().is_busy());
    log.take_all();
}

TEST_F(WindowSavingTest, ClosingSavesToTheOwnFile)
{
    open_terrain_file("a.tif");
    change();
    const auto cells = bits(current());
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Save).click(QMessageBox::Yes);
    trigger(Deed::Close);
    EXPECT_EQ(documents(), 0);
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), cells);
    log.take_all();
}

TEST_F(WindowSavingTest, ClosingIsOffWhenTheSourceIsNotToBeOverwritten)
{
    open_terrain_file("a.tif");
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Save).click(QMessageBox::Cancel);
    trigger(Deed::Close);
    EXPECT_EQ(documents(), 1);
}

TEST_F(WindowSavingTest, KeysAndToolBarSave)
{
    EXPECT_FALSE(window->action(Deed::Save).isEnabled());
    open_terrain_file("a.tif");
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel).cancel();
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
    QApplication::setActiveWindow(window.get());
    QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(dialogs.shown().size(), 2u);
    EXPECT_TRUE(window->tool_bar().actions().contains(&window->action(Deed::Save)));
    EXPECT_FALSE(window->action(Deed::Save).icon().isNull());
}

// --- export

TEST_F(WindowSavingTest, AnExportToGeoTiffSavesAndOthersDoNot)
{
    open_terrain_file("a.tif");
    change();
    EXPECT_TRUE(window->write_export(in_scratch("out.asc")));
    EXPECT_TRUE(window->isWindowModified()) << "it cannot hold all there is";
    EXPECT_TRUE(window->write_export(in_scratch("out.gpkg")));
    EXPECT_TRUE(window->isWindowModified()) << "lines are no raster";
    EXPECT_TRUE(window->write_export(in_scratch("out.tif")));
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_EQ(current().title(), scratch("a.tif")) << "an export leaves the document its file";
    log.take_all();
}

TEST_F(WindowSavingTest, ExportOffersTheFormatsAndAddsTheirExtensions)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs.answer([](QDialog& dialog) {
        auto& files = dynamic_cast<QFileDialog&>(dialog);
        files.selectNameFilter("ASCII grid (*.asc)");
        emit files.filterSelected("ASCII grid (*.asc)"); // as a choice by the user does
        files.findChild<QLineEdit*>("fileNameEdit")->setText(in_scratch("out"));
        dialog.accept();
    });
    trigger(Deed::Export);
    EXPECT_EQ(dialogs.shown().at(0).filters,
        (QStringList{"GeoTIFF (*.tif *.tiff)", "ASCII grid (*.asc)", "Contour lines (*.gpkg)"}));
    EXPECT_TRUE(log.take("Exported \"" + scratch("out.asc") + "\""));
    EXPECT_EQ(read_raster(scratch("out.asc")).columns, 20);
}

TEST_F(WindowSavingTest, ContourLinesAskForTheirIntervalAndProposeOne)
{
    open_terrain_file("a.tif"); // heights from 0 to nearly 500
    double proposed = 0;
    DialogDriver dialogs;
    dialogs.choose_file(in_scratch("out.gpkg"))
        .answer([&proposed](QDialog& dialog) {
            proposed = dialog.findChild<QDoubleSpinBox*>()->value();
            dialog.findChild<QDoubleSpinBox*>()->setValue(100);
            dialog.accept();
        })
        .choose_file(in_scratch("no.gpkg"))
        .cancel();
    trigger(Deed::Export);
    EXPECT_EQ(dialogs.shown().at(1).title, "Contour Lines");
    EXPECT_EQ(proposed, 20);
    EXPECT_TRUE(log.take("Exported \"" + scratch("out.gpkg") + "\""));
    trigger(Deed::Export);
    EXPECT_FALSE(std::filesystem::exists(scratch("no.gpkg")));
}

TEST_F(WindowSavingTest, ContourLinesAreNoRecentFile)
{
    open_terrain_file("a.tif");
    EXPECT_TRUE(window->write_export(in_scratch("out.gpkg")));
    EXPECT_EQ(terrain::RecentFiles().list().size(), 1u);
    EXPECT_TRUE(window->write_export(in_scratch("out.asc")));
    EXPECT_EQ(terrain::RecentFiles().list().size(), 2u);
    log.take_all();
}

// --- overviews

namespace {

/// What the window does with rasters that are too large.
class WindowOverviewTest : public WindowSavingTest
{
protected:
    void SetUp() override
    {
        WindowSavingTest::SetUp();
        open_terrain_file("small.tif");
        make_tiff(scratch("large.tif"), 80, 60, GDT_Float32, std::vector<double>(80 * 60, 5));
        terrain::memory_limit(terrain::memory_needed(20, 15));
    }
    void TearDown() override
    {
        terrain::memory_limit(0);
        WindowSavingTest::TearDown();
    }
};

} // namespace

TEST_F(WindowOverviewTest, AnOverviewIsOfferedOfARasterThatIsTooLarge)
{
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Open);
    EXPECT_TRUE(window->open(in_scratch("large.tif")));
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("its 80 x 60 cells need "));
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("one cell for 4 x 4 of the raster"));
    EXPECT_EQ(current().terrain().raster().columns, 20);
    EXPECT_EQ(window->windowTitle(), in_scratch("large.tif") + "[*] (overview) - Tarq Terrain");
    log.take_all();
}

TEST_F(WindowOverviewTest, WithoutTheOverviewNothingIsOpenedAndTheRestIs)
{
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel);
    window->open(QStringList{in_scratch("large.tif"), in_scratch("small.tif")});
    EXPECT_EQ(documents(), 2);
    EXPECT_EQ(current().title(), scratch("small.tif") + " 2");
    log.take_all();
}

TEST_F(WindowOverviewTest, AnOverviewIsNeverSavedOverItsSource)
{
    const std::string before = read_text(scratch("large.tif"));
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Open);
    ASSERT_TRUE(window->open(in_scratch("large.tif")));
    change();
    dialogs.answer([](QDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "large-overview.tif");
        dialog.reject();
    });
    trigger(Deed::Save);
    dialogs.click(QMessageBox::Ok);
    EXPECT_FALSE(window->write_export(in_scratch("large.tif")));
    EXPECT_TRUE(dialogs.shown().at(2).text.contains("the document is an overview of it"));
    EXPECT_EQ(read_text(scratch("large.tif")), before);
    EXPECT_TRUE(window->isWindowModified());
    log.take_all();
}

TEST_F(WindowOverviewTest, AnOverviewThatHasItsOwnFileIsARasterAsAnyOther)
{
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Open).choose_file(in_scratch("overview.tif"));
    ASSERT_TRUE(window->open(in_scratch("large.tif")));
    trigger(Deed::SaveAs);
    EXPECT_EQ(window->windowTitle(), in_scratch("overview.tif") + "[*] - Tarq Terrain");
    EXPECT_EQ(read_raster(scratch("overview.tif")).columns, 20);
    log.take_all();
}
