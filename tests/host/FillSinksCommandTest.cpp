#include "commands/FillSinksCommand.h"
#include "CommandFixture.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

using namespace host_test;
using terrain::FillSinksCommand;
using terrain::Raster;
using terrain::TerrainDocument;

namespace {

/// Water covers everything and sinks, cell by cell, to the lowest level that its neighbours allow. Slow and
/// simple.
class SlowDrain
{
public:
    explicit SlowDrain(const Raster& ground)
        : m_ground(ground)
        , m_water(ground)
    {
        for (double& level : m_water.cells) {
            level = terrain::is_no_data(level) ? level : std::numeric_limits<double>::infinity();
        }
        while (sink()) { }
    }
    const std::vector<double>& levels() const { return m_water.cells; }

private:
    bool sink()
    {
        bool changed = false;
        for (int row = 0; row < m_ground.rows; ++row) {
            for (int column = 0; column < m_ground.columns; ++column) {
                double& level = m_water.cells[m_water.index(column, row)];
                const double lower = std::max(m_ground.cell(column, row), lowest_around(column, row));
                if (!terrain::is_no_data(level) && lower < level) {
                    level = lower;
                    changed = true;
                }
            }
        }
        return changed;
    }

    double lowest_around(int column, int row) const
    {
        double lowest = std::numeric_limits<double>::infinity();
        for (int y = row - 1; y <= row + 1; ++y) {
            for (int x = column - 1; x <= column + 1; ++x) {
                const bool inside = x >= 0 && y >= 0 && x < m_ground.columns && y < m_ground.rows;
                const bool outlet = !inside || terrain::is_no_data(m_water.cell(x, y));
                lowest = std::min(
                    lowest, outlet ? -std::numeric_limits<double>::infinity() : m_water.cell(x, y));
            }
        }
        return lowest;
    }

    const Raster& m_ground;
    Raster m_water;
};

std::vector<double> filled(const Raster& raster)
{
    TerrainDocument& document = make_document(raster);
    insert(boost::make_shared<FillSinksCommand>(document.id()));
    return document.terrain().raster().cells;
}

} // namespace

TEST(FillSinksCommand, FillsAHollowToItsOutlet)
{
    const std::vector<double> cells = {9, 9, 9, 9, 9, //
        9, 2, 3, 1, 9, //
        9, 9, 9, 9, 5, //
        9, 9, 9, 9, 9};
    const std::vector<double> expected = {9, 9, 9, 9, 9, //
        9, 5, 5, 5, 9, // water leaves across the corner
        9, 9, 9, 9, 5, //
        9, 9, 9, 9, 9};
    EXPECT_EQ(filled(make_raster(5, 4, cells)), expected);
}

TEST(FillSinksCommand, CellsWithoutDataAreOutlets)
{
    const std::vector<double> cells = {9, 9, 9, 9, //
        9, 1, N, 9, //
        9, 9, 9, 9};
    EXPECT_EQ(bits(filled(make_raster(4, 3, cells))), bits(cells));
}

TEST(FillSinksCommand, BorderCellsStayAsTheyAre)
{
    const std::vector<double> cells = {1, 8, 2, 9, 5, 3, 4, 7, 6};
    EXPECT_EQ(filled(make_raster(3, 3, cells)), cells);
}

TEST(FillSinksCommand, FillsNestedHollowsEachToItsLevel)
{
    const std::vector<double> cells = {9, 9, 9, 9, 9, 9, 9, //
        9, 1, 4, 2, 7, 0, 8, //
        9, 9, 9, 9, 9, 9, 9};
    const std::vector<double> expected = {9, 9, 9, 9, 9, 9, 9, //
        9, 8, 8, 8, 8, 8, 8, //
        9, 9, 9, 9, 9, 9, 9};
    EXPECT_EQ(filled(make_raster(7, 3, cells)), expected);
}

TEST(FillSinksCommand, EqualsASlowDrain)
{
    std::mt19937_64 engine(3);
    for (int round = 0; round < 30; ++round) {
        std::vector<double> cells;
        for (int i = 0; i < 16 * 11; ++i) {
            cells.push_back(engine() % 40 == 0 ? N : static_cast<double>(engine() % 20));
        }
        const Raster raster = make_raster(16, 11, cells);
        ASSERT_EQ(bits(filled(raster)), bits(SlowDrain(raster).levels())) << "round " << round;
    }
    const Raster mixed = mixed_raster(30, 20);
    const std::vector<double> levels = SlowDrain(mixed).levels();
    const std::vector<double> cells = filled(mixed);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        EXPECT_TRUE(terrain::is_no_data(cells[i]) ? terrain::is_no_data(levels[i]) : cells[i] == levels[i])
            << i;
    }
}

TEST(FillSinksCommand, ASecondRunChangesNothing)
{
    TerrainDocument& document = make_document(mixed_raster(30, 20));
    insert(boost::make_shared<FillSinksCommand>(document.id()));
    const auto sp_again = boost::make_shared<FillSinksCommand>(document.id());
    insert(sp_again);
    EXPECT_EQ(sp_again->details().description(), "0 cells changed");
}

TEST(FillSinksCommand, TinyAndEmptyTerrainStaysAsItIs)
{
    EXPECT_EQ(filled(make_raster(1, 1, {3})), std::vector<double>{3});
    EXPECT_EQ(bits(filled(make_raster(2, 1, {N, N}))), bits({N, N}));
}

TEST(FillSinksCommand, TellsHowManyCellsChanged)
{
    TerrainDocument& document = make_document(make_raster(3, 3, {5, 5, 5, 5, 1, 5, 5, 5, 5}));
    const auto sp_command = boost::make_shared<FillSinksCommand>(document.id());
    insert(sp_command);
    EXPECT_EQ(sp_command->name(), "Fill sinks");
    EXPECT_EQ(sp_command->details().description(), "1 cell changed");
}

TEST(FillSinksCommand, UndoRedoAndCancelGiveExactlyTheSameCells)
{
    expect_exact_history(mixed_raster(23, 17),
        [](const TerrainDocument& document) { return boost::make_shared<FillSinksCommand>(document.id()); });
}
