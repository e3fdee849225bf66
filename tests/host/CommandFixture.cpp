#include "CommandFixture.h"

#include "support/Controllers.h"

#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace host_test {

terrain::Raster make_raster(int columns, int rows, const std::vector<double>& cells)
{
    terrain::Raster raster;
    raster.columns = columns;
    raster.rows = rows;
    raster.cells = cells;
    return raster;
}

terrain::Raster mixed_raster(int columns, int rows)
{
    std::mt19937_64 engine(7);
    std::vector<double> cells;
    for (int i = 0; i < columns * rows; ++i) {
        const auto height = static_cast<double>(engine() % 2000);
        switch (engine() % 10) {
        case 0:
            cells.push_back(N);
            break;
        case 1:
            cells.push_back(height / 7 - 100);
            break;
        case 2:
            cells.push_back(engine() % 2 ? 0.0 : -0.0);
            break;
        default:
            cells.push_back(height - 500);
        }
    }
    return make_raster(columns, rows, cells);
}

terrain::TerrainDocument& make_document(terrain::Raster raster)
{
    support::init_controllers();
    auto& document = dynamic_cast<terrain::TerrainDocument&>(
        housekeeping::DocumentManager::instance().create_document());
    document.terrain().raster(std::move(raster));
    return document;
}

std::vector<unsigned long long> bits(const terrain::TerrainDocument& document)
{
    return bits(document.terrain().raster().cells);
}

std::vector<unsigned long long> all_bits(const terrain::TerrainDocument& document)
{
    const terrain::Raster& raster = document.terrain().raster();
    std::vector<double> all{static_cast<double>(raster.columns), static_cast<double>(raster.rows)};
    if (raster.geotransform) {
        all.insert(all.end(), raster.geotransform->begin(), raster.geotransform->end());
    }
    all.insert(all.end(), raster.cells.begin(), raster.cells.end());
    return bits(all);
}

std::vector<unsigned long long> bits(const std::vector<double>& cells)
{
    std::vector<unsigned long long> bits(cells.size());
    if (!cells.empty()) {
        std::memcpy(bits.data(), cells.data(), cells.size() * sizeof(double));
    }
    return bits;
}

void insert(const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command)
{
    housekeeping::CommandManager::instance().insert(sp_command, false);
}

void undo(const terrain::TerrainDocument& document)
{
    housekeeping::CommandManager::instance().undo(document.id());
}

void redo(const terrain::TerrainDocument& document)
{
    housekeeping::CommandManager::instance().redo(document.id());
}

void expect_exact_history(const terrain::Raster& raster,
    const std::function<boost::shared_ptr<housekeeping::AbstractCommand>(
        const terrain::TerrainDocument& document)>& make_command)
{
    terrain::TerrainDocument& document = make_document(raster);
    const auto untouched = all_bits(document);
    RecordingProgress progress;
    const auto sp_command = make_command(document);
    sp_command->setProgress(&progress);

    insert(sp_command);
    const auto done = all_bits(document);
    EXPECT_NE(done, untouched) << "the command does nothing, and the test shows nothing";
    EXPECT_EQ(progress.runs, (std::vector<std::string>{"open 0", "close"}));
    EXPECT_EQ(progress.percentages.front(), 0u);
    EXPECT_EQ(progress.percentages.back(), 100u);
    EXPECT_TRUE(std::is_sorted(progress.percentages.begin(), progress.percentages.end()));
    for (int round = 0; round < 2; ++round) {
        undo(document);
        EXPECT_EQ(all_bits(document), untouched);
        redo(document);
        EXPECT_EQ(all_bits(document), done);
    }
    undo(document);

    // A request that comes with the last report comes too late.
    const std::size_t reports = progress.percentages.size() / 3;
    ASSERT_GE(reports, 3u);
    for (std::size_t at = 1; at < reports; ++at) {
        std::size_t report = 0;
        progress.on_report = [&](unsigned int) {
            if (++report == at) {
                sp_command->request_cancel();
            }
        };
        redo(document);
        ASSERT_EQ(all_bits(document), untouched) << "cancelled at report " << at;
        undo(document); // the history does not know that it was rolled back
        ASSERT_EQ(all_bits(document), untouched);
    }
    progress.on_report = nullptr;
    redo(document);
    EXPECT_EQ(all_bits(document), done);
}

} // namespace host_test
