#include "CommandFixture.h"
#include "HeightsOf.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/CommandsController.h"
#include "commands/TriangulateCommand.h"
#include "documents/Mesh.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "help/HelpTopics.h"
#include "presentations/CommandsPresentation.h"
#include "support/DialogDriver.h"
#include "views/TerrainView.h"
#include "windows/RecentFiles.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QDoubleSpinBox>

#include <gmock/gmock.h>

#include <filesystem>

using namespace host_test;
using support::DialogDriver;
using terrain::CommandsPresentation;
using terrain::Deed;
using testing::HasSubstr;

namespace {

class WindowTriangulateTest : public WindowTest
{
protected:
    static QAction& entry() { return *CommandsPresentation::instance().triangulate_action(); }

    /// Chooses the entry, and waits until what the dialog may have started has ended.
    static void choose_entry()
    {
        entry().trigger();
        runner().wait();
    }
    static boost::shared_ptr<const terrain::Mesh> mesh() { return current().terrain().mesh(); }
    static QString in_scratch(const std::string& name) { return QString::fromStdString(scratch(name)); }

    /// What the dialog proposes for heights of some range.
    double proposed(double lowest, double highest)
    {
        const std::string file = scratch("heights.tif");
        make_tiff(file, 2, 2, GDT_Float64, {lowest, lowest, lowest, highest});
        EXPECT_TRUE(window->open(QString::fromStdString(file)));
        double value = 0;
        DialogDriver dialogs;
        dialogs.answer([&value](QDialog& dialog) {
            value = dialog.findChild<QDoubleSpinBox*>()->value();
            dialog.reject();
        });
        choose_entry();
        return value;
    }
};

QDoubleSpinBox& tolerance(const QDialog& dialog)
{
    return *dialog.findChild<QDoubleSpinBox*>();
}

} // namespace

TEST_F(WindowTriangulateTest, NeedsADocument)
{
    EXPECT_FALSE(entry().isEnabled());
    EXPECT_FALSE(entry().icon().isNull());
    EXPECT_FALSE(entry().statusTip().isEmpty());
    open_terrain_file("a.tif");
    EXPECT_TRUE(entry().isEnabled());
}

TEST_F(WindowTriangulateTest, AsksForTheToleranceAndRemembersIt)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs
        .answer([](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Triangulate");
            EXPECT_EQ(tolerance(dialog).suffix(), " metres");
            EXPECT_GT(tolerance(dialog).minimum(), 0);
            EXPECT_EQ(dialog.findChild<pkBase::QPKHelpButton*>()->helpKey(),
                terrain::help_key(terrain::Topic::Triangulate));
            tolerance(dialog).setValue(25);
            dialog.accept();
        })
        .answer([](QDialog& dialog) {
            EXPECT_EQ(tolerance(dialog).value(), 25) << "as the last time";
            dialog.reject();
        });
    choose_entry();
    ASSERT_TRUE(mesh());
    EXPECT_EQ(mesh()->tolerance, 25);
    const auto sp_mesh = mesh();
    choose_entry();
    EXPECT_EQ(mesh(), sp_mesh);
    EXPECT_EQ(current().document_history().undoSize(), 1u);
}

TEST_F(WindowTriangulateTest, ProposesARoundPartOfTheRangeOfTheHeights)
{
    EXPECT_EQ(proposed(100, 900), 5);
    EXPECT_EQ(proposed(0, 100), 1);
    EXPECT_EQ(proposed(-50, 4000), 20);
    EXPECT_NEAR(proposed(0, 0.003), 2e-5, 1e-12);
    EXPECT_EQ(proposed(7, 7), 1);
    log.take_all();
}

TEST_F(WindowTriangulateTest, TheMapShowsItUntilItIsUndone)
{
    open_terrain_file("a.tif");
    const QImage without = window->view()->grab().toImage();
    run(boost::make_shared<terrain::TriangulateCommand>(current().id(), 100));
    EXPECT_EQ(window->view()->picture().triangulation().mesh(), mesh());
    EXPECT_NE(window->view()->grab().toImage(), without);
    QTest::keyClick(window.get(), Qt::Key_T);
    EXPECT_FALSE(window->view()->layers().triangulation);
    EXPECT_FALSE(window->action(Deed::Triangulation).isChecked());
    EXPECT_EQ(window->view()->grab().toImage(), without);
    QTest::keyClick(window.get(), Qt::Key_T);
    EXPECT_NE(window->view()->grab().toImage(), without);
    undo(current());
    EXPECT_FALSE(window->view()->picture().triangulation().mesh());
    EXPECT_EQ(window->view()->grab().toImage(), without);
}

// --- export

TEST_F(WindowTriangulateTest, ExportOffersMeshFilesWhenThereIsAMesh)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs.cancel().cancel();
    window->action(Deed::Export).trigger();
    run(boost::make_shared<terrain::TriangulateCommand>(current().id(), 100));
    window->action(Deed::Export).trigger();
    const QStringList always{"GeoTIFF (*.tif *.tiff)", "ASCII grid (*.asc)", "Contour lines (*.gpkg)"};
    EXPECT_EQ(dialogs.shown().at(0).filters, always);
    EXPECT_EQ(dialogs.shown().at(1).filters,
        always
            + QStringList({"Triangulation as PLY (*.ply)", "Triangulation as OBJ (*.obj)",
                "Triangulation as OFF (*.off)", "Triangulation as STL (*.stl)"}));
}

TEST_F(WindowTriangulateTest, AMeshFileIsWrittenAndIsNoRecentFile)
{
    open_terrain_file("a.tif");
    run(boost::make_shared<terrain::TriangulateCommand>(current().id(), 100));
    DialogDriver dialogs;
    dialogs.choose_file(in_scratch("out.ply"));
    window->action(Deed::Export).trigger();
    EXPECT_THAT(read_text(scratch("out.ply")),
        HasSubstr("element face " + std::to_string(mesh()->triangles.size()) + "\n"));
    EXPECT_TRUE(log.take("Exported \"" + scratch("out.ply") + "\""));
    EXPECT_EQ(terrain::RecentFiles().list().size(), 1u);
    EXPECT_TRUE(window->isWindowModified()) << "it does not hold all there is";
}

TEST_F(WindowTriangulateTest, WithoutAMeshABoxSaysWhatToDo)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    EXPECT_FALSE(window->write_export(in_scratch("out.stl")));
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("Triangulate first"));
    EXPECT_FALSE(std::filesystem::exists(scratch("out.stl")));
    log.take_all();
}
