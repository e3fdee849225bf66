#include "CommandFixture.h"
#include "commands/ClampCommand.h"
#include "commands/RunningCommand.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <new>

using namespace host_test;
using terrain::ClampCommand;
using terrain::RunningCommand;
using terrain::ScaleCommand;
using terrain::SmoothCommand;
using terrain::TerrainDocument;

namespace {

/// Runs out of memory half-way.
class GreedyCommand : public terrain::TerrainCommand
{
public:
    explicit GreedyCommand(housekeeping::DocumentId document_id)
        : TerrainCommand(document_id, "Greedy")
    { }

protected:
    std::vector<double> new_cells(const terrain::Raster&) const override { throw std::bad_alloc(); }
    QString parameters() const override { return "much"; }
};

std::string last_protocol(const housekeeping::AbstractCommand& command, bool succeeded)
{
    return command.protocol("DO>", succeeded);
}

} // namespace

TEST(ClampCommand, BringsHeightsIntoTheRange)
{
    TerrainDocument& document = make_document(make_raster(5, 1, {-7, 1.5, N, 12, 3}));
    const auto sp_command = boost::make_shared<ClampCommand>(document.id(), -0.5, 10);
    insert(sp_command);
    EXPECT_EQ(bits(document), bits({-0.5, 1.5, N, 10, 3}));
    EXPECT_EQ(last_protocol(*sp_command, true), "DO>\tClamp: -0.5 to 10, 2 cells changed - Succeeded.\n");
}

TEST(ClampCommand, AcceptsARangeOfOneHeight)
{
    TerrainDocument& document = make_document(make_raster(2, 1, {1, 2}));
    insert(boost::make_shared<ClampCommand>(document.id(), 4, 4));
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{4, 4}));
}

TEST(ClampCommand, FailsWhenTheBoundsAreCrossed)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(make_raster(2, 1, {1, 2}));
    const auto sp_command = boost::make_shared<ClampCommand>(document.id(), 5, 4);
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), "The lower bound is above the upper one");
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{1, 2}));
    EXPECT_TRUE(log.take("The lower bound is above the upper one"));
    log.take_all();
}

TEST(ClampCommand, UndoRedoAndCancelGiveExactlyTheSameCells)
{
    expect_exact_history(mixed_raster(23, 17), [](const TerrainDocument& document) {
        return boost::make_shared<ClampCommand>(document.id(), -50, 700);
    });
}

TEST(ScaleCommand, MultipliesHeights)
{
    TerrainDocument& document = make_document(make_raster(4, 1, {-7, 1.5, N, 0}));
    const auto sp_command = boost::make_shared<ScaleCommand>(document.id(), 0.1);
    insert(sp_command);
    EXPECT_EQ(bits(document), bits({-7 * 0.1, 1.5 * 0.1, N, 0}));
    EXPECT_EQ(last_protocol(*sp_command, true), "DO>\tScale: factor 0.1, 2 cells changed - Succeeded.\n");
}

TEST(ScaleCommand, UndoIsExactThoughNoFactorLeadsBack)
{
    TerrainDocument& document = make_document(make_raster(3, 1, {1, 5e-324, 1e300}));
    const auto untouched = bits(document);
    insert(boost::make_shared<ScaleCommand>(document.id(), 0));
    EXPECT_EQ(bits(document), bits({0, 0, 0}));
    undo(document);
    EXPECT_EQ(bits(document), untouched);
}

TEST(ScaleCommand, FailsWhenAHeightGetsTooLarge)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(make_raster(2, 2, {1, 2, 3, 1e300}));
    const auto untouched = bits(document);
    const auto sp_command = boost::make_shared<ScaleCommand>(document.id(), 1e10);
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), "The result in column 1 and row 1 is too large for a number");
    EXPECT_EQ(bits(document), untouched);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    EXPECT_TRUE(log.take("The result in column 1 and row 1 is too large for a number"));
    log.take_all();
}

TEST(ScaleCommand, UndoRedoAndCancelGiveExactlyTheSameCells)
{
    expect_exact_history(mixed_raster(23, 17), [](const TerrainDocument& document) {
        return boost::make_shared<ScaleCommand>(document.id(), 1.0 / 3);
    });
}

TEST(TerrainCommand, RunningOutOfMemoryIsAFailureThatIsRolledBack)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(make_raster(2, 1, {1, 2}));
    const auto sp_command = boost::make_shared<GreedyCommand>(document.id());
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), "There is not enough memory for the result");
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{1, 2}));
    EXPECT_EQ(last_protocol(*sp_command, false), "DO>\tGreedy: much - Failed.\n");
    EXPECT_TRUE(log.take("There is not enough memory for the result"));
    log.take_all();
}

TEST(TerrainCommand, FailureIsForgottenAtTheNextRun)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(make_raster(2, 1, {1e300, 2}));
    const auto sp_command = boost::make_shared<ScaleCommand>(document.id(), 1e10);
    insert(sp_command);
    log.take_all();
    EXPECT_FALSE(sp_command->failure().empty());
    EXPECT_EQ(terrain::failure_of(*sp_command), sp_command->failure());
    undo(document);
    document.terrain().raster(make_raster(2, 1, {1, 2}));
    redo(document);
    EXPECT_EQ(sp_command->failure(), "");
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{1e10, 2e10}));
}

TEST(TerrainCommand, CancelledRunIsNoFailure)
{
    TerrainDocument& document = make_document(mixed_raster(9, 9));
    const auto untouched = bits(document);
    RecordingProgress progress;
    progress.on_report = [](unsigned int) { RunningCommand::request_cancel(); };
    const auto sp_command = boost::make_shared<SmoothCommand>(document.id(), 1);
    sp_command->setProgress(&progress);
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), "");
    EXPECT_EQ(bits(document), untouched);
    EXPECT_EQ(sp_command->details().description(), "radius 1");
    EXPECT_EQ(progress.percentages.size(), 1u);
}

TEST(TerrainCommand, RequestWithoutARunningCommandIsForNobody)
{
    RunningCommand::request_cancel();
    TerrainDocument& document = make_document(make_raster(2, 1, {1, 3}));
    RecordingProgress progress;
    const auto sp_command = boost::make_shared<SmoothCommand>(document.id(), 1);
    sp_command->setProgress(&progress);
    insert(sp_command);
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{2, 2}));
}

TEST(TerrainCommand, HoldsTheOldHeightsOnlyWhileItIsDone)
{
    TerrainDocument& document = make_document(make_raster(100, 100, std::vector<double>(10000, 0.5)));
    const auto sp_command = boost::make_shared<ScaleCommand>(document.id(), 3);
    const std::size_t nothing = sp_command->undo_bytes();
    insert(sp_command);
    EXPECT_GE(sp_command->undo_bytes(), 10000 * sizeof(float));
    EXPECT_LE(sp_command->undo_bytes(), 10000 * sizeof(float) + 200);
    undo(document);
    EXPECT_EQ(sp_command->undo_bytes(), nothing);
    redo(document);
    EXPECT_GE(sp_command->undo_bytes(), 10000 * sizeof(float));
}

TEST(TerrainCommand, MarksTheDocumentAsModified)
{
    TerrainDocument& document = make_document(make_raster(2, 1, {1, 3}));
    EXPECT_FALSE(document.is_modified());
    insert(boost::make_shared<ScaleCommand>(document.id(), 3));
    EXPECT_TRUE(document.is_modified());
    EXPECT_FALSE(document.is_busy());
}

TEST(TerrainCommand, UndoAndRedoMarkADocumentThatWasSavedMeanwhile)
{
    TerrainDocument& document = make_document(make_raster(2, 1, {1, 3}));
    insert(boost::make_shared<ScaleCommand>(document.id(), 3));
    document.set_modified(false);
    undo(document);
    EXPECT_TRUE(document.is_modified());
    document.set_modified(false);
    redo(document);
    EXPECT_TRUE(document.is_modified());
}
