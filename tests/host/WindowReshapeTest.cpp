#include "CommandFixture.h"
#include "WindowFixture.h"
#include "commands/CommandsController.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "help/HelpTopics.h"
#include "io/ReferenceSystem.h"
#include "panels/HistoryModel.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "presentations/CommandsPresentation.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "tour/Gate.h"
#include "views/TerrainView.h"
#include "windows/CropDialog.h"
#include "windows/ResampleDialog.h"

#include <pkBaseQt/QPKHelpButton.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>

using namespace host_test;
using housekeeping::gui::UndoRedoPresentation;
using support::DialogDriver;
using terrain::CellRange;
using terrain::CommandsPresentation;
using terrain::CropCommand;
using terrain::CropDialog;
using terrain::help_key;
using terrain::Raster;
using terrain::ResampleCommand;
using terrain::ResampleDialog;
using terrain::Resampling;
using terrain::Topic;

namespace {

/// The commands that change the size of a raster, as the window shows them and their results.
class WindowReshapeTest : public WindowTest
{
protected:
    static CommandsPresentation& tools() { return CommandsPresentation::instance(); }

    QString home_text() const { return window->home().documents().item(0)->text().section('\n', 1, 1); }
    QString quick_help_text() const { return window->quick_help().sheet().description().section(',', 0, 0); }

    void expect_size(const QString& size) const
    {
        EXPECT_EQ(home_text(), size);
        EXPECT_EQ(quick_help_text(), size);
    }
};

typedef WindowTest ReshapeDialogTest;

QString note_of(const QDialog& dialog)
{
    return dialog.findChild<QLabel*>("note")->text();
}

bool may_run(const QDialog& dialog)
{
    return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
}

QStringList labels_of(const QDialog& dialog)
{
    QStringList labels;
    for (const QWidget* const p_input : dialog.findChildren<QWidget*>()) {
        const auto* const p_form = qobject_cast<QFormLayout*>(dialog.layout());
        if (const auto* const p_label
            = qobject_cast<QLabel*>(p_form->labelForField(const_cast<QWidget*>(p_input)))) {
            labels.append(p_label->text());
        }
    }
    return labels;
}

QDoubleSpinBox& number(const QDialog& dialog, int place)
{
    return *dialog.findChildren<QDoubleSpinBox*>().at(place);
}

QPushButton& data_button(const QDialog& dialog)
{
    for (QPushButton* const p_button : dialog.findChildren<QPushButton*>()) {
        if (p_button->text() == "Crop to &data") {
            return *p_button;
        }
    }
    throw std::out_of_range("there is no such button");
}

/// 8 columns and 6 rows of cells of 30 by @p height metres.
Raster placed_raster(double height)
{
    Raster raster = make_raster(8, 6, std::vector<double>(48, 1));
    raster.geotransform = {440000, 30, 0, 5400000, 0, -height};
    raster.reference_system = terrain::reference_system_from_epsg(32632);
    return raster;
}

} // namespace

// --- the dialog of the crop

TEST_F(ReshapeDialogTest, CropProposesTheWholeRasterWithinItsLimits)
{
    const CropDialog dialog(make_raster(4, 3, std::vector<double>(12, 1)));
    EXPECT_EQ(dialog.windowTitle(), "Crop");
    EXPECT_EQ(
        labels_of(dialog), (QStringList{"&First column:", "&Last column:", "First &row:", "Last ro&w:"}));
    const std::vector<double> proposed = {0, 3, 0, 2};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(number(dialog, i).value(), proposed[static_cast<std::size_t>(i)]);
        EXPECT_EQ(number(dialog, i).minimum(), 0);
        EXPECT_EQ(number(dialog, i).maximum(), i < 2 ? 3 : 2);
        EXPECT_EQ(number(dialog, i).decimals(), 0);
    }
    EXPECT_EQ(note_of(dialog), "4 × 3 of 4 × 3 cells are kept.");
    EXPECT_TRUE(may_run(dialog));
    EXPECT_EQ(dialog.findChild<pkBase::QPKHelpButton*>()->helpKey(), help_key(Topic::Crop));
}

TEST_F(ReshapeDialogTest, CropTellsWhatIsKeptAndWhyNothingCanBe)
{
    const CropDialog dialog(make_raster(4, 3, std::vector<double>(12, 1)));
    number(dialog, 0).setValue(2);
    number(dialog, 3).setValue(0);
    EXPECT_EQ(note_of(dialog), "2 × 1 of 4 × 3 cells are kept.");
    number(dialog, 1).setValue(1);
    EXPECT_EQ(note_of(dialog), "The first column is behind the last one.");
    EXPECT_FALSE(may_run(dialog));
    number(dialog, 1).setValue(2);
    EXPECT_EQ(note_of(dialog), "1 × 1 of 4 × 3 cells are kept.");
    EXPECT_TRUE(may_run(dialog));
}

TEST_F(ReshapeDialogTest, TheButtonFillsInTheRangeOfTheData)
{
    const CropDialog dialog(make_raster(4, 3, {N, N, N, N, N, 5, 6, N, N, N, N, N}));
    EXPECT_TRUE(data_button(dialog).isEnabled());
    EXPECT_FALSE(data_button(dialog).autoDefault()) << "Enter is for running the command";
    data_button(dialog).click();
    const CellRange range = dialog.range();
    EXPECT_EQ(range.first_column, 1);
    EXPECT_EQ(range.last_column, 2);
    EXPECT_EQ(range.first_row, 1);
    EXPECT_EQ(range.last_row, 1);
    EXPECT_EQ(note_of(dialog), "2 × 1 of 4 × 3 cells are kept.");
    EXPECT_EQ(dialog.result(), 0) << "it stays open";
}

TEST_F(ReshapeDialogTest, WithoutDataThereIsNothingToFillIn)
{
    const CropDialog dialog(make_raster(2, 1, {N, N}));
    EXPECT_FALSE(data_button(dialog).isEnabled());
    EXPECT_EQ(note_of(dialog), "2 × 1 of 2 × 1 cells are kept.\nNo cell has data.");
    EXPECT_TRUE(may_run(dialog));
}

TEST_F(ReshapeDialogTest, CropCopesWithOneCellAndWithNone)
{
    const CropDialog one(make_raster(1, 1, {1}));
    EXPECT_EQ(number(one, 1).maximum(), 0);
    EXPECT_TRUE(may_run(one));
    const CropDialog none((Raster()));
    EXPECT_EQ(note_of(none), "The raster has no cells.\nNo cell has data.");
    EXPECT_FALSE(may_run(none));
}

// --- the dialog of the resampling

TEST_F(ReshapeDialogTest, ResampleAsksForAFactorWhereTheUnitIsUnknown)
{
    Raster raster = placed_raster(30);
    raster.reference_system.clear();
    for (const Raster& unknown : {raster, make_raster(8, 6, std::vector<double>(48, 1))}) {
        const ResampleDialog dialog(unknown, 2, Resampling::Bilinear);
        EXPECT_EQ(dialog.windowTitle(), "Resample");
        EXPECT_EQ(labels_of(dialog), (QStringList{"&Factor:", "&Method:"}));
        EXPECT_EQ(number(dialog, 0).value(), 2);
        EXPECT_EQ(number(dialog, 0).minimum(), 0.1);
        EXPECT_EQ(number(dialog, 0).maximum(), 10);
        EXPECT_EQ(note_of(dialog), "8 × 6 cells become 4 × 3.");
        EXPECT_EQ(dialog.method(), Resampling::Bilinear);
        EXPECT_EQ(dialog.findChild<pkBase::QPKHelpButton*>()->helpKey(), help_key(Topic::Resample));
    }
}

TEST_F(ReshapeDialogTest, ResampleAsksForASizeToo)
{
    const ResampleDialog dialog(placed_raster(30), 2, Resampling::Nearest);
    EXPECT_EQ(labels_of(dialog), (QStringList{"&Factor:", "Cell &size:", "&Method:"}));
    EXPECT_EQ(number(dialog, 1).suffix(), " metre");
    EXPECT_EQ(number(dialog, 1).value(), 60);
    EXPECT_EQ(number(dialog, 1).minimum(), 3);
    EXPECT_EQ(number(dialog, 1).maximum(), 300);
    EXPECT_EQ(note_of(dialog), "8 × 6 cells become 4 × 3.\nEach one measures 60 × 60 metre.");

    number(dialog, 1).setValue(100);
    EXPECT_EQ(dialog.factor(), 100 / 30.0) << "not what the other number shows of it";
    EXPECT_NEAR(number(dialog, 0).value(), 3.3333, 1e-9);
    EXPECT_EQ(note_of(dialog), "8 × 6 cells become 3 × 2.\nEach one measures 100 × 100 metre.");

    number(dialog, 0).setValue(0.5);
    EXPECT_EQ(dialog.factor(), 0.5);
    EXPECT_EQ(number(dialog, 1).value(), 15);
    EXPECT_EQ(note_of(dialog), "8 × 6 cells become 16 × 12.\nEach one measures 15 × 15 metre.");
}

TEST_F(ReshapeDialogTest, CellsThatAreNoSquaresHaveAWidth)
{
    const ResampleDialog dialog(placed_raster(20), 2, Resampling::Nearest);
    EXPECT_EQ(labels_of(dialog).at(1), "Cell &width:");
    EXPECT_EQ(note_of(dialog), "8 × 6 cells become 4 × 3.\nEach one measures 60 × 40 metre.");
}

TEST_F(ReshapeDialogTest, WhoGivesTheSizeThatIsShownMeansTheVerySize)
{
    Raster raster = make_raster(4001, 1, std::vector<double>(4001, 1));
    raster.geotransform = {6, 1 / 1200.0, 0, 49, 0, -1 / 1200.0};
    raster.reference_system = terrain::reference_system_from_epsg(4326);
    const ResampleDialog dialog(raster, 2, Resampling::Nearest);
    EXPECT_EQ(number(dialog, 1).suffix(), " degree");
    number(dialog, 1).setValue(0.000833333);
    EXPECT_EQ(dialog.factor(), 1) << "and not a little more";
    number(dialog, 1).setValue(0.000416667);
    EXPECT_EQ(dialog.factor(), 0.5);
    number(dialog, 1).setValue(0.001);
    EXPECT_NEAR(dialog.factor(), 1.2, 1e-12);
    number(dialog, 1).setValue(0);
    EXPECT_GE(dialog.factor(), 0.1);
    number(dialog, 1).setValue(1);
    EXPECT_LE(dialog.factor(), 10);
}

TEST_F(ReshapeDialogTest, ResampleTellsWhyItCannot)
{
    const ResampleDialog dialog(placed_raster(30), 0.5, Resampling::Nearest);
    auto* const p_method = dialog.findChild<QComboBox*>();
    EXPECT_EQ(p_method->count(), 3);
    EXPECT_EQ(p_method->itemText(2), "Average");
    p_method->setCurrentIndex(2);
    EXPECT_EQ(dialog.method(), Resampling::Average);
    EXPECT_EQ(note_of(dialog), "Averages are for larger cells: the factor must not be below 1.");
    EXPECT_FALSE(may_run(dialog));
    number(dialog, 0).setValue(2);
    EXPECT_TRUE(may_run(dialog));

    Raster large;
    large.columns = 30000;
    large.rows = 30000;
    const ResampleDialog too_large(large, 0.5, Resampling::Nearest);
    EXPECT_TRUE(note_of(too_large).startsWith("The result would have 60000 x 60000 cells"));
    EXPECT_FALSE(may_run(too_large));
}

// --- in the window

TEST_F(WindowReshapeTest, TheToolsNeedADocument)
{
    EXPECT_FALSE(tools().crop_action()->isEnabled());
    EXPECT_FALSE(tools().resample_action()->isEnabled());
    open_terrain_file("a.tif");
    EXPECT_TRUE(tools().crop_action()->isEnabled());
    EXPECT_TRUE(tools().resample_action()->isEnabled());
}

TEST_F(WindowReshapeTest, WhatTheDialogsGiveIsDone)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs
        .answer([](QDialog& dialog) {
            number(dialog, 0).setValue(4);
            number(dialog, 3).setValue(9);
            dialog.accept();
        })
        .answer([](QDialog& dialog) {
            number(dialog, 0).setValue(3);
            dialog.findChild<QComboBox*>()->setCurrentIndex(2);
            dialog.accept();
        })
        .answer([](QDialog& dialog) {
            EXPECT_EQ(number(dialog, 0).value(), 3) << "as the last time";
            EXPECT_EQ(dialog.findChild<QComboBox*>()->currentText(), "Average");
            dialog.reject();
        });
    tools().crop_action()->trigger();
    runner().wait();
    EXPECT_EQ(window->statusBar()->currentMessage(), "Crop: done");
    tools().resample_action()->trigger();
    runner().wait();
    tools().resample_action()->trigger();
    EXPECT_FALSE(runner().is_running());
    const terrain::HistoryModel& history = window->history().model();
    ASSERT_EQ(history.commands(), 2);
    EXPECT_EQ(history.lines()[1].text, "Crop: columns 4 to 19, rows 0 to 9, 20 x 15 cells became 16 x 10");
    EXPECT_EQ(history.lines()[0].text, "Resample: factor 3, average, 16 x 10 cells became 6 x 4");
}

TEST_F(WindowReshapeTest, TheSizeIsToldAnewAfterTheCommandItsUndoAndItsRedo)
{
    open_terrain_file("a.tif");
    expect_size("20 × 15 cells");
    run(boost::make_shared<CropCommand>(current().id(), CellRange{1, 7, 2, 4}));
    expect_size("7 × 3 cells");
    run(boost::make_shared<ResampleCommand>(current().id(), 0.5, Resampling::Bilinear));
    expect_size("14 × 6 cells");
    UndoRedoPresentation::instance()->undo();
    expect_size("7 × 3 cells");
    UndoRedoPresentation::instance()->undo();
    expect_size("20 × 15 cells");
    UndoRedoPresentation::instance()->redo();
    expect_size("7 × 3 cells");
}

TEST_F(WindowReshapeTest, ANewSizeLeavesTheTitleAndTheOtherDocumentsAlone)
{
    open_terrain_file("a.tif");
    const housekeeping::DocumentId first = current().id();
    open_terrain_file("b.tif");
    const QString title = window->windowTitle();
    run(boost::make_shared<CropCommand>(current().id(), CellRange{1, 7, 2, 4}));
    EXPECT_EQ(window->windowTitle(), title);
    QListWidget& list = window->home().documents();
    EXPECT_TRUE(list.item(0)->text().contains("20 × 15 cells"));
    EXPECT_TRUE(list.item(1)->text().contains("7 × 3 cells"));
    EXPECT_EQ(list.currentRow(), 1);
    housekeeping::DocumentManager::instance().current_document(first);
    EXPECT_EQ(quick_help_text(), "20 × 15 cells");
}

TEST_F(WindowReshapeTest, WhileTheCommandRunsTheSizeOfBeforeIsTold)
{
    terrain::Gate gate{40};
    runner().report_also_to(&gate);
    open_terrain_file("a.tif");
    gate.close();
    ASSERT_TRUE(
        runner().start(boost::make_shared<ResampleCommand>(current().id(), 0.1, Resampling::Bilinear)));
    ASSERT_TRUE(support::wait_until([&gate] { return gate.holds(); }));
    open_terrain_file("b.tif"); // which lists the documents anew
    EXPECT_EQ(home_text(), "20 × 15 cells");
    gate.open();
    runner().wait();
    EXPECT_EQ(home_text(), "200 × 150 cells");
    runner().report_also_to(nullptr);
}

TEST_F(WindowReshapeTest, TheMapReadsTheNewCells)
{
    open_terrain_file("a.tif");
    run(boost::make_shared<CropCommand>(current().id(), CellRange{3, 9, 2, 8}));
    window->view()->fit();
    const auto found = window->view()->reading(window->view()->widget_position({0.5, 0.5}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->column, 0);
    EXPECT_EQ(found->row, 0);
    const double height = current().terrain().raster().cell(0, 0);
    EXPECT_EQ(bits({found->height}), bits({height}));
    EXPECT_FALSE(window->view()->reading(window->view()->widget_position({7.5, 0.5})));
    EXPECT_FALSE(window->view()->grab().toImage().isNull());
    UndoRedoPresentation::instance()->undo();
    EXPECT_TRUE(window->view()->reading(window->view()->widget_position({19.5, 14.5})));
}

TEST_F(WindowReshapeTest, ADocumentThatWasChosenMeanwhileIsLeftAlone)
{
    open_terrain_file("a.tif");
    const housekeeping::DocumentId first = current().id();
    open_terrain_file("b.tif");
    DialogDriver dialogs;
    dialogs.answer([first](QDialog& dialog) {
        housekeeping::DocumentManager::instance().current_document(first);
        number(dialog, 0).setValue(4);
        dialog.accept();
    });
    tools().crop_action()->trigger();
    EXPECT_FALSE(runner().is_running());
    EXPECT_EQ(current().document_history().undoSize(), 0u);
}
