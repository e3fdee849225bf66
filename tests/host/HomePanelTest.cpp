#include "panels/HomePanel.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/ScaleCommand.h"
#include "documents/TerrainDocument.h"
#include "io/ReferenceSystem.h"
#include "panels/FactsText.h"
#include "support/DialogDriver.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QFile>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QScrollBar>

#include <boost/make_shared.hpp>

#include <filesystem>

using namespace host_test;
using housekeeping::DataSource;
using housekeeping::DocumentManager;

namespace {

class HomePanelTest : public WindowTest
{
protected:
    terrain::HomePanel& panel() const { return window->home(); }

    QStringList lines(int row) const { return panel().documents().item(row)->text().split('\n'); }
    /// What is told of the current document under a name; "-" if nothing is.
    QString fact(const QString& name) const
    {
        for (const QString& line : panel().facts().toPlainText().split('\n')) {
            if (line.section('\t', 0, 0) == name) {
                return line.section('\t', 1);
            }
        }
        return "-";
    }

    void open(const std::string& path)
    {
        ASSERT_TRUE(window->open(QString::fromStdString(path)));
        EXPECT_TRUE(log.take("Opened"));
    }
};

/// A raster with a reference system and a unit.
std::string make_placed_file(const std::string& name)
{
    const std::string path = scratch(name);
    make_tiff(
        path, 4, 3, GDT_Int16, std::vector<double>(12, 5), [](GDALDatasetH dataset, GDALRasterBandH band) {
            double place[] = {500000, 30, 0, 5000000, 0, -30};
            GDALSetGeoTransform(dataset, place);
            GDALSetProjection(dataset, terrain::reference_system_from_epsg(32632).c_str());
            GDALSetRasterUnitType(band, "ft");
        });
    return path;
}

} // namespace

TEST_F(HomePanelTest, SaysNothingOfNoDocument)
{
    EXPECT_FALSE(panel().facts().isVisible());
    open_terrain_file("a.tif");
    EXPECT_TRUE(panel().facts().isVisible());
    window->close_document();
    EXPECT_FALSE(panel().facts().isVisible());
}

TEST_F(HomePanelTest, TellsTheFactsOfTheCurrentDocument)
{
    open(make_placed_file("a.tif"));
    EXPECT_EQ(fact("File").toStdString(), scratch("a.tif"));
    EXPECT_EQ(fact("Format"), "GeoTIFF");
    EXPECT_EQ(fact("Size"), "4 × 3 cells");
    EXPECT_EQ(fact("Cells as"), "Int16");
    EXPECT_EQ(fact("Heights in"), "feet");
    EXPECT_EQ(fact("Vertical sign"), "elevation, up is positive");
    EXPECT_EQ(fact("Band"), "1");
    EXPECT_EQ(fact("Reference system"), "WGS 84 / UTM zone 32N (EPSG:32632)");
    EXPECT_EQ(fact("Saved to").toStdString(), scratch("a.tif"));
    EXPECT_EQ(fact("State"), "as in its file");
    EXPECT_EQ(fact("Overview"), "-");
}

TEST_F(HomePanelTest, TellsWhatIsUnknown)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(fact("Reference system"), "unknown");
    EXPECT_EQ(fact("Heights in"), "metres");
}

TEST_F(HomePanelTest, TellsDepths)
{
    open_terrain_file("a.tif");
    current().datasource()->z_sign(DataSource::Depth);
    DocumentManager::instance().document_busy(current().id(), true);
    DocumentManager::instance().document_busy(current().id(), false);
    EXPECT_EQ(fact("Vertical sign"), "depth, down is positive");
}

TEST_F(HomePanelTest, ADocumentWithoutADataSourceIsToldAllTheSame)
{
    open_terrain_file("a.tif");
    make_document(make_raster(2, 1, {1, 2}));
    ASSERT_EQ(panel().documents().count(), 1) << "nobody has shown it";
    DocumentManager::instance().current_document(DocumentManager::instance().current_documents().front());
    ASSERT_EQ(panel().documents().count(), 2);
    EXPECT_EQ(lines(1).value(1), "2 × 1 cells");
    EXPECT_EQ(lines(1).value(3), "no file of its own");
}

TEST_F(HomePanelTest, TellsWhatIsModified)
{
    open_terrain_file("a.tif");
    EXPECT_EQ(lines(0).size(), 3) << "nothing is special about it";
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    EXPECT_EQ(lines(0).value(3), "modified");
    EXPECT_EQ(fact("State"), "modified");
}

TEST_F(HomePanelTest, TellsWhatIsBusyAndWhenThatIsOver)
{
    open_terrain_file("a.tif");
    open_terrain_file("b.tif");
    const housekeeping::DocumentId first = DocumentManager::instance().current_documents().front();
    DocumentManager::instance().document_busy(first, true);
    EXPECT_EQ(lines(0), (QStringList{"a", "20 × 15 cells", QString::fromStdString(scratch("a.tif")), "busy"}))
        << "the size is told, though nobody may look";
    EXPECT_EQ(lines(1).size(), 3);
    DocumentManager::instance().document_busy(first, false);
    EXPECT_EQ(lines(0).size(), 3);
}

TEST_F(HomePanelTest, TellsOverviewsAndWhatHasNoFileOfItsOwn)
{
    open_terrain_file("a.tif");
    current().reduction(4);
    current().own_file("", false);
    DocumentManager::instance().document_busy(current().id(), true);
    DocumentManager::instance().document_busy(current().id(), false);
    EXPECT_EQ(lines(0).value(3), "overview, no file of its own");
    EXPECT_EQ(fact("Overview"), "1 of 4 columns and rows");
    EXPECT_EQ(fact("Saved to"), "no file of its own; Save asks for one");
}

TEST_F(HomePanelTest, TellsFilesThatMayNotBeWritten)
{
    const std::string path = make_terrain_file("a.tif");
    QFile::setPermissions(QString::fromStdString(path), QFile::ReadOwner);
    open(path);
    EXPECT_EQ(lines(0).value(3), "read-only file");
    EXPECT_EQ(fact("State"), "read-only file");
}

TEST_F(HomePanelTest, TellsOtherFormatsAndTheOneThatADocumentIsSavedIn)
{
    write_text(scratch("a.asc"),
        "ncols 2\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 1\nNODATA_value -9\n1 2\n3 4\n");
    open(scratch("a.asc"));
    EXPECT_EQ(fact("Format"), "Arc/Info ASCII Grid");
    EXPECT_EQ(lines(0).value(3), "no file of its own");
    support::DialogDriver dialogs;
    dialogs.choose_file(QString::fromStdString(scratch("b.tif")));
    window->action(terrain::Deed::SaveAs).trigger();
    EXPECT_EQ(fact("Format"), "GeoTIFF");
    EXPECT_EQ(fact("File").toStdString(), scratch("b.tif"));
    EXPECT_EQ(lines(0).size(), 3);
    log.take_all();
}

TEST_F(HomePanelTest, AllFactsCanBeMarkedAndCopied)
{
    open_terrain_file("a.tif");
    terrain::FactsText& facts = panel().facts();
    facts.setFocus();
    ASSERT_EQ(QApplication::focusWidget(), &facts);
    QTest::keyClick(&facts, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&facts, Qt::Key_C, Qt::ControlModifier);
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(
        copied.startsWith("File\t" + QString::fromStdString(scratch("a.tif")) + "\nFormat\tGeoTIFF\n"))
        << copied.toStdString();
    QTest::keyClick(&facts, Qt::Key_X);
    EXPECT_EQ(fact("Format"), "GeoTIFF") << "nobody writes into it";
}

TEST_F(HomePanelTest, WhatIsMarkedStaysWhenNothingChanges)
{
    open_terrain_file("a.tif");
    terrain::FactsText& facts = panel().facts();
    facts.selectAll();
    DocumentManager::instance().current_document(current().id());
    panel().list({current().id()}, current().id());
    EXPECT_TRUE(facts.textCursor().hasSelection());
}

TEST_F(HomePanelTest, TheKeysOfUndoAndRedoWorkInTheFacts)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    const auto after = bits(current());
    terrain::FactsText& facts = panel().facts();
    facts.setFocus();
    QTest::keyClick(&facts, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(bits(current()), before);
    QTest::keyClick(&facts, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(bits(current()), after);
}

TEST_F(HomePanelTest, LongPathsAreBrokenAndReadAsAWhole)
{
    const std::string folder = make_directory(std::string(200, 'x'));
    const std::string path = folder + "/" + std::string(180, 'y') + ".tif";
    std::filesystem::copy_file(make_terrain_file("a.tif"), path);
    open(path);
    panel().resize(410, 560);
    EXPECT_EQ(fact("File").toStdString(), path);
    EXPECT_LE(panel().facts().document()->size().width(), panel().facts().viewport()->width());
    EXPECT_FALSE(panel().facts().horizontalScrollBar()->isVisible());
    EXPECT_EQ(panel().documents().textElideMode(), Qt::ElideMiddle);
    EXPECT_EQ(panel().documents().item(0)->toolTip().toStdString(), path);
}

TEST_F(HomePanelTest, EnterChoosesADocument)
{
    open_terrain_file("a.tif");
    open_terrain_file("b.tif");
    QListWidget& list = panel().documents();
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_EQ(current().short_title(), "b");
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(current().short_title(), "a");
    EXPECT_EQ(fact("File").toStdString(), scratch("a.tif"));
}

TEST_F(HomePanelTest, StaysWhereItIsWhenADocumentIsChosen)
{
    for (const char name : std::string("abcdefghijkl")) {
        open_terrain_file(std::string(1, name) + ".tif");
    }
    QListWidget& list = panel().documents();
    const int place = list.verticalScrollBar()->value();
    ASSERT_GT(place, 0);
    const QPoint first_in_sight = list.visualItemRect(list.itemAt(20, 40)).center();
    const int row = list.row(list.itemAt(20, 40));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, first_in_sight);
    EXPECT_EQ(list.currentRow(), row);
    EXPECT_NEAR(list.verticalScrollBar()->value(), place, list.visualItemRect(list.item(0)).height());
}
