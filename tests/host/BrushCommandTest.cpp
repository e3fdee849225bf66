#include "commands/BrushCommand.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "commands/ScaleCommand.h"
#include "documents/Mesh.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

using namespace host_test;
using terrain::Brush;
using terrain::BrushCommand;
using terrain::TerrainDocument;

namespace {

const double s_infinity = std::numeric_limits<double>::infinity();
const Brush s_raise{Brush::Direction::Raise, 3, 5};
const Brush s_lower{Brush::Direction::Lower, 3, 5};

boost::shared_ptr<BrushCommand> stroke(
    const TerrainDocument& document, const BrushCommand::Path& path, const Brush& brush = s_raise)
{
    return boost::make_shared<BrushCommand>(document.id(), brush, path);
}

terrain::Raster flat_raster(int columns, int rows, double height = 100)
{
    return raster_of(columns, rows, [height](int, int) { return height; });
}

unsigned long long steps(const TerrainDocument& document)
{
    return document.document_history().undoSize();
}

double height_at(const TerrainDocument& document, int column, int row)
{
    return document.terrain().raster().cell(column, row);
}

/// The distance to the nearest of many places on the path, and what that makes of a height: another way to
/// compute what the command does.
double expected_height(double before, const QPointF& cell, const BrushCommand::Path& path, const Brush& brush)
{
    double nearest = s_infinity;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const QPointF& from = path[i == 0 ? 0 : i - 1];
        for (int k = 0; k <= 2000; ++k) {
            const QPointF place = from + (path[i] - from) * (k / 2000.0);
            nearest = std::min(nearest, std::hypot(place.x() - cell.x(), place.y() - cell.y()));
        }
    }
    if (nearest >= brush.radius) {
        return before;
    }
    const double rest = 1 - nearest * nearest / brush.radius / brush.radius;
    const double sign = brush.direction == Brush::Direction::Raise ? 1 : -1;
    return before + sign * brush.height * rest * rest;
}

void expect_failure(const Brush& brush, const BrushCommand::Path& path, const std::string& failure)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(flat_raster(9, 9));
    const auto untouched = bits(document);
    const auto sp_command = stroke(document, path, brush);
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), failure);
    EXPECT_EQ(bits(document), untouched);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    EXPECT_TRUE(log.take(failure));
    log.take_all();
}

/// Runs a command and cancels it when it reports for the second time.
void insert_and_cancel(const boost::shared_ptr<BrushCommand>& sp_command)
{
    RecordingProgress progress;
    progress.on_report = [&](unsigned int) {
        if (progress.percentages.size() == 2) {
            sp_command->request_cancel();
        }
    };
    sp_command->setProgress(&progress);
    insert(sp_command);
    sp_command->setProgress(nullptr);
}

} // namespace

// --- one stroke

TEST(BrushCommand, RaisesMostInTheMiddleAndSmoothlyLessAround)
{
    TerrainDocument& document = make_document(flat_raster(11, 11));
    insert(stroke(document, {{5.5, 5.5}}));
    EXPECT_DOUBLE_EQ(height_at(document, 5, 5), 105);
    EXPECT_GT(height_at(document, 6, 5), height_at(document, 7, 5));
    EXPECT_GT(height_at(document, 7, 5), 100);
    EXPECT_EQ(height_at(document, 8, 5), 100) << "at the radius there is nothing left";
    EXPECT_EQ(height_at(document, 6, 5), height_at(document, 5, 4)) << "the same in all directions";
    EXPECT_EQ(height_at(document, 0, 0), 100);
}

TEST(BrushCommand, LowersByAsMuchAsItRaises)
{
    TerrainDocument& document = make_document(flat_raster(11, 11, 0));
    insert(stroke(document, {{4, 5}, {7, 5}}));
    const std::vector<double> raised = document.terrain().raster().cells;
    undo(document);
    insert(stroke(document, {{4, 5}, {7, 5}}, s_lower));
    for (std::size_t i = 0; i < raised.size(); ++i) {
        EXPECT_EQ(document.terrain().raster().cells[i], raised[i] == 0 ? 0 : -raised[i]);
    }
}

TEST(BrushCommand, FollowsAnyPath)
{
    const BrushCommand::Path path = {{3, 4}, {15.2, 6.7}, {15.2, 18}, {4, 9}, {12, 9}};
    TerrainDocument& document = make_document(flat_raster(22, 20));
    insert(stroke(document, path));
    for (int row = 0; row < 20; ++row) {
        for (int column = 0; column < 22; ++column) {
            EXPECT_NEAR(height_at(document, column, row),
                expected_height(100, {column + 0.5, row + 0.5}, path, s_raise), 0.01)
                << column << " " << row;
        }
    }
}

TEST(BrushCommand, CountsOnceWhereAStrokeComesByTwice)
{
    TerrainDocument& once = make_document(flat_raster(20, 9));
    insert(stroke(once, {{4, 4}, {16, 4}}));
    TerrainDocument& twice = make_document(flat_raster(20, 9));
    insert(stroke(twice, {{4, 4}, {16, 4}, {4, 4}}));
    for (std::size_t i = 0; i < 180; ++i) {
        EXPECT_NEAR(once.terrain().raster().cells[i], twice.terrain().raster().cells[i], 1e-9);
    }
}

TEST(BrushCommand, RaisesDepthsTowardsTheSky)
{
    TerrainDocument& document = make_document(flat_raster(5, 5));
    const auto sp_source = boost::make_shared<housekeeping::DataSource>();
    sp_source->z_sign(housekeeping::DataSource::Depth);
    document.datasource(sp_source);
    insert(stroke(document, {{2.5, 2.5}}));
    EXPECT_DOUBLE_EQ(height_at(document, 2, 2), 95) << "a smaller depth";
    insert(stroke(document, {{2.5, 2.5}}, s_lower));
    EXPECT_DOUBLE_EQ(height_at(document, 2, 2), 100);
}

TEST(BrushCommand, LeavesCellsWithoutDataAlone)
{
    terrain::Raster raster = flat_raster(5, 5);
    raster.cells[12] = N;
    TerrainDocument& document = make_document(raster);
    insert(stroke(document, {{2.5, 2.5}}));
    EXPECT_TRUE(terrain::is_no_data(height_at(document, 2, 2)));
    EXPECT_GT(height_at(document, 1, 2), 100);
}

TEST(BrushCommand, IsCutOffAtTheBorders)
{
    TerrainDocument& document = make_document(flat_raster(6, 4));
    insert(stroke(document, {{-1, -1}, {0, 0}, {1e12, 2}}));
    EXPECT_GT(height_at(document, 0, 0), 100);
    EXPECT_GT(height_at(document, 5, 0), 100);
    undo(document);
    const auto untouched = bits(document);
    const auto sp_beside = stroke(document, {{-4, -4}, {-4, 80}});
    insert(sp_beside);
    EXPECT_EQ(sp_beside->failure(), "");
    EXPECT_EQ(sp_beside->details().description(), "radius 3, height 5; 1 stroke, 0 cells changed");
    EXPECT_EQ(bits(document), untouched);
}

TEST(BrushCommand, TellsUnitAndChangedCells)
{
    TerrainDocument& document = make_document(flat_raster(1, 1));
    document.datasource(boost::make_shared<housekeeping::DataSource>());
    const auto sp_command = stroke(document, {{0.5, 0.5}}, s_lower);
    insert(sp_command);
    EXPECT_EQ(sp_command->name(), "Lower");
    EXPECT_EQ(sp_command->details().description(), "radius 3, height 5 metres; 1 stroke, 1 cell changed");
    EXPECT_EQ(height_at(document, 0, 0), 95);
}

TEST(BrushCommand, LeavesOutPositionsThatAreNotFinite)
{
    TerrainDocument& document = make_document(flat_raster(9, 9));
    insert(stroke(document, {{N, 2}, {4.5, 4.5}, {4.5, s_infinity}}));
    EXPECT_DOUBLE_EQ(height_at(document, 4, 4), 105);
    EXPECT_EQ(height_at(document, 4, 8), 100);
}

TEST(BrushCommand, FailsWithParametersThatMakeNoSense)
{
    const BrushCommand::Path path = {{4, 4}};
    const auto raise = Brush::Direction::Raise;
    expect_failure({raise, 0.4, 5}, path, "The radius must be from 0.5 to 500 cells");
    expect_failure({raise, 501, 5}, path, "The radius must be from 0.5 to 500 cells");
    expect_failure({raise, N, 5}, path, "The radius must be from 0.5 to 500 cells");
    expect_failure({raise, 3, 0}, path, "The height of the brush must be above 0");
    expect_failure({raise, 3, -1}, path, "The height of the brush must be above 0");
    expect_failure({raise, 3, s_infinity}, path, "The height of the brush must be above 0");
    expect_failure({raise, 3, N}, path, "The height of the brush must be above 0");
    expect_failure({raise, 3, 5}, {}, "The stroke leads nowhere");
    expect_failure({raise, 3, 5}, {{N, N}}, "The stroke leads nowhere");
}

TEST(BrushCommand, FailsWhenAHeightGetsTooLarge)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(flat_raster(3, 3, 1.5e308));
    const auto untouched = bits(document);
    const auto sp_command = stroke(document, {{1.5, 1.5}}, {Brush::Direction::Raise, 1, 1e308});
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), "The result in column 1 and row 1 is too large for a number");
    EXPECT_EQ(bits(document), untouched);
    EXPECT_TRUE(log.take("too large"));
    log.take_all();
}

TEST(BrushCommand, UndoRedoAndCancelGiveExactlyTheSameCells)
{
    expect_exact_history(mixed_raster(33, 27), [](const TerrainDocument& document) {
        return stroke(document, {{3, 3}, {20, 9}, {25, 30}}, {Brush::Direction::Lower, 4.5, 1.0 / 3});
    });
    expect_exact_history(mixed_raster(20, 10), [](const TerrainDocument& document) {
        return stroke(document, {{1, 1}, {2, 2}}, {Brush::Direction::Raise, 500, 7});
    });
}

TEST(BrushCommand, KeepsNoMoreThanWhatItChanged)
{
    TerrainDocument& document = make_document(flat_raster(1000, 1000, 0.1));
    const auto sp_command = stroke(document, {{500, 500}});
    insert(sp_command);
    EXPECT_LE(sp_command->undo_bytes(), 1000u);
    undo(document);
    EXPECT_LE(sp_command->undo_bytes(), 200u);
}

// --- merging

TEST(BrushCommand, MergesIntoTheOlderStroke)
{
    TerrainDocument& document = make_document(mixed_raster(40, 30));
    const auto untouched = bits(document);
    const auto sp_older = stroke(document, {{5, 5}, {20, 12}});
    insert(sp_older);
    insert(stroke(document, {{20, 5}, {8, 20}}));
    insert(stroke(document, {{33.3, 25}}));
    const auto done = bits(document);
    EXPECT_EQ(steps(document), 1u);
    EXPECT_EQ(sp_older->details().description().find("radius 3, height 5; 3 strokes, "), 0u);
    for (int round = 0; round < 3; ++round) {
        undo(document);
        EXPECT_EQ(bits(document), untouched);
        redo(document);
        EXPECT_EQ(bits(document), done);
    }
}

TEST(BrushCommand, MergesAgainAfterUndoAndRedo)
{
    TerrainDocument& document = make_document(mixed_raster(40, 30));
    const auto untouched = bits(document);
    insert(stroke(document, {{5, 5}}));
    insert(stroke(document, {{7, 5}}));
    undo(document);
    redo(document);
    insert(stroke(document, {{9, 6}}));
    const auto done = bits(document);
    EXPECT_EQ(steps(document), 1u);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    redo(document);
    EXPECT_EQ(bits(document), done);
}

TEST(BrushCommand, MergesOnlyWithTheSameBrush)
{
    TerrainDocument& document = make_document(flat_raster(40, 30));
    insert(stroke(document, {{5, 5}}));
    insert(stroke(document, {{5, 5}}, s_lower));
    EXPECT_EQ(steps(document), 2u);
    insert(stroke(document, {{5, 5}}, {Brush::Direction::Lower, 3.5, 5}));
    EXPECT_EQ(steps(document), 3u);
    insert(stroke(document, {{5, 5}}, {Brush::Direction::Lower, 3.5, 6}));
    EXPECT_EQ(steps(document), 4u);
    insert(stroke(document, {{9, 9}}, {Brush::Direction::Lower, 3.5, 6}));
    EXPECT_EQ(steps(document), 4u);
}

TEST(BrushCommand, DoesNotMergeIntoStrokesThatChangedVeryManyCells)
{
    const Brush wide{Brush::Direction::Raise, 500, 5};
    TerrainDocument& document = make_document(flat_raster(1300, 1000));
    const auto untouched = bits(document);
    insert(stroke(document, {{300, 500}}, wide));
    insert(stroke(document, {{1000, 500}}, wide));
    EXPECT_EQ(steps(document), 1u) << "both of them have more, one alone has less";
    const auto both = bits(document);
    insert(stroke(document, {{400, 500}}, wide));
    EXPECT_EQ(steps(document), 2u);
    insert(stroke(document, {{500, 500}}, wide));
    EXPECT_EQ(steps(document), 2u) << "the new one is small";
    undo(document);
    EXPECT_EQ(bits(document), both);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
}

TEST(BrushCommand, DoesNotMergeAcrossAnotherCommand)
{
    TerrainDocument& document = make_document(flat_raster(40, 30));
    insert(stroke(document, {{5, 5}}));
    insert(boost::make_shared<terrain::ScaleCommand>(document.id(), 2));
    insert(stroke(document, {{5, 5}}));
    EXPECT_EQ(steps(document), 3u);
}

TEST(BrushCommand, DoesNotMergeWithAStrokeThatWasCancelledOrFailed)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(flat_raster(40, 30));
    insert_and_cancel(stroke(document, {{5, 5}}));
    insert(stroke(document, {{5, 5}}));
    EXPECT_EQ(steps(document), 2u);
    const Brush none{Brush::Direction::Raise, 3, 0};
    insert(stroke(document, {{5, 5}}, none));
    insert(stroke(document, {{5, 5}}, none));
    EXPECT_EQ(steps(document), 4u);
    log.take_all();
}

TEST(BrushCommand, ANewerStrokeThatIsCancelledLeavesNoTrace)
{
    TerrainDocument& document = make_document(mixed_raster(40, 30));
    const auto untouched = bits(document);
    const auto sp_older = stroke(document, {{5, 5}, {20, 12}});
    insert(sp_older);
    const auto done = bits(document);
    const std::string description = sp_older->details().description();
    insert_and_cancel(stroke(document, {{10, 8}, {30, 20}}));
    EXPECT_EQ(bits(document), done);
    EXPECT_EQ(steps(document), 1u);
    EXPECT_EQ(sp_older->details().description(), description);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    redo(document);
    EXPECT_EQ(bits(document), done);
    insert(stroke(document, {{10, 8}}));
    EXPECT_EQ(steps(document), 1u) << "the older one is as good as before";
    undo(document);
    EXPECT_EQ(bits(document), untouched);
}

TEST(BrushCommand, ANewerStrokeThatFailsLeavesNoTrace)
{
    support::LogCapture log;
    terrain::Raster raster = flat_raster(40, 30);
    raster.cells[raster.index(30, 20)] = 1.7e308;
    TerrainDocument& document = make_document(raster);
    const auto untouched = bits(document);
    const Brush brush{Brush::Direction::Raise, 3, 1e308};
    insert(stroke(document, {{5, 5}}, brush));
    const auto done = bits(document);
    const auto sp_newer = stroke(document, {{5, 6}, {30.5, 20.5}}, brush);
    insert(sp_newer);
    EXPECT_NE(sp_newer->failure(), "");
    EXPECT_EQ(bits(document), done);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    redo(document);
    EXPECT_EQ(bits(document), done);
    log.take_all();
}

TEST(BrushCommand, ARedoThatIsCancelledCanBeDoneAgain)
{
    TerrainDocument& document = make_document(mixed_raster(40, 30));
    const auto untouched = bits(document);
    const auto sp_older = stroke(document, {{5, 5}, {20, 12}});
    insert(sp_older);
    insert(stroke(document, {{8, 8}}));
    const auto done = bits(document);
    undo(document);
    RecordingProgress progress;
    progress.on_report = [&](unsigned int) {
        if (progress.percentages.size() == 3) {
            sp_older->request_cancel();
        }
    };
    sp_older->setProgress(&progress);
    redo(document);
    EXPECT_EQ(bits(document), untouched);
    insert(stroke(document, {{20, 20}}));
    EXPECT_EQ(steps(document), 2u) << "nothing becomes part of what is not there";
    undo(document);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    sp_older->setProgress(nullptr);
    redo(document);
    EXPECT_EQ(bits(document), done);
}

TEST(BrushCommand, BringsTheTriangulationOfBeforeTheFirstStrokeBack)
{
    TerrainDocument& document = make_document(flat_raster(20, 20));
    const auto sp_mesh = boost::make_shared<const terrain::Mesh>();
    document.terrain().mesh(sp_mesh);
    insert(stroke(document, {{-50, -50}})); // changes nothing, so the triangulation stays
    EXPECT_EQ(document.terrain().mesh(), sp_mesh);
    insert(stroke(document, {{5, 5}}));
    insert(stroke(document, {{6, 5}}));
    EXPECT_EQ(document.terrain().mesh(), nullptr);
    EXPECT_EQ(steps(document), 1u);
    undo(document);
    EXPECT_EQ(document.terrain().mesh(), sp_mesh);
    redo(document);
    EXPECT_EQ(document.terrain().mesh(), nullptr);
    insert_and_cancel(stroke(document, {{6, 6}}));
    undo(document);
    EXPECT_EQ(document.terrain().mesh(), sp_mesh);
}

TEST(BrushCommand, ManyStrokesTakeNoMoreMemoryThanTheCells)
{
    TerrainDocument& document = make_document(flat_raster(60, 50, 0.1));
    const auto untouched = bits(document);
    const auto sp_older = stroke(document, {{30, 25}});
    insert(sp_older);
    std::mt19937 engine(5);
    for (int i = 0; i < 999; ++i) {
        insert(stroke(document, {{engine() % 600 / 10.0, engine() % 500 / 10.0}}));
    }
    EXPECT_EQ(steps(document), 1u);
    EXPECT_NE(sp_older->details().description().find("1000 strokes, 3000 cells changed"), std::string::npos)
        << sp_older->details().description();
    EXPECT_LE(sp_older->undo_bytes(), 3000 * sizeof(double) + 400);
    const auto done = bits(document);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    redo(document);
    EXPECT_EQ(bits(document), done);
}

TEST(BrushCommand, AnyHistoryLeadsThroughTheSameCells)
{
    std::mt19937 engine(11);
    TerrainDocument& document = make_document(mixed_raster(30, 25));
    std::vector<std::vector<unsigned long long>> snapshots{bits(document)}; // after so many steps
    std::size_t now = 0;
    const auto after_command = [&] {
        const auto count = static_cast<std::size_t>(steps(document));
        ASSERT_TRUE(count == now || count == now + 1);
        snapshots.resize(count + 1);
        snapshots[count] = bits(document);
        now = count;
    };
    for (int i = 0; i < 600; ++i) {
        switch (engine() % 8) {
        case 0:
            insert(boost::make_shared<terrain::ScaleCommand>(document.id(), engine() % 2 ? 1.1 : 0.9));
            after_command();
            break;
        case 1:
            undo(document);
            now = now > 0 ? now - 1 : 0;
            break;
        case 2:
            if (document.document_history().redoSize() > 0) {
                redo(document);
                ++now;
            }
            break;
        case 3: {
            const auto before = bits(document);
            // Into the stroke before, if there is one, or as a step of its own: no cells change.
            insert_and_cancel(stroke(document, {{3, 3}, {4, 4}}));
            ASSERT_EQ(bits(document), before) << "after " << i;
            after_command();
            break;
        }
        default:
            insert(stroke(document,
                {{engine() % 300 / 10.0, engine() % 250 / 10.0},
                    {engine() % 300 / 10.0, engine() % 250 / 10.0}},
                engine() % 4 ? s_raise : s_lower));
            after_command();
        }
        ASSERT_EQ(bits(document), snapshots[now]) << "after " << i;
    }
    while (now > 0) {
        undo(document);
        ASSERT_EQ(bits(document), snapshots[--now]);
    }
}
