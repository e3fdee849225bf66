#pragma once

#include "documents/Raster.h"

#include <tarqa/housekeeping/AbstractCommand.h>

#include <pkBase/AbstractProgress.h>

#include <boost/make_shared.hpp>

#include <functional>
#include <string>
#include <vector>

namespace terrain {
class TerrainDocument;
}

namespace host_test {

namespace housekeeping = tarqa::housekeeping;

const double N = terrain::no_data; // short, for rasters that are written out

/// A raster without a place on the Earth.
terrain::Raster make_raster(int columns, int rows, const std::vector<double>& cells);
/// Heights of all kinds, integers and fractions, both zeros, a tenth without data.
terrain::Raster mixed_raster(int columns, int rows);

/// A new document that holds @p raster.
terrain::TerrainDocument& make_document(terrain::Raster raster);
/// The cells of a document, bit by bit.
std::vector<unsigned long long> bits(const terrain::TerrainDocument& document);
/// The same, with the size and the place on the Earth in front.
std::vector<unsigned long long> all_bits(const terrain::TerrainDocument& document);
/// As bits(), of heights.
std::vector<unsigned long long> bits(const std::vector<double>& cells);

/// A sink that notes what it is told and does what the test says at each report.
class RecordingProgress : public pkBase::AbstractProgress
{
public:
    void open_run(unsigned int start) override { runs.push_back("open " + std::to_string(start)); }
    void set_percentage(unsigned int percentage) override
    {
        percentages.push_back(percentage);
        if (on_report) {
            on_report(percentage);
        }
    }
    void set_text(const QString&) override { }
    void close_run() override { runs.push_back("close"); }

    std::vector<std::string> runs;
    std::vector<unsigned int> percentages;
    std::function<void(unsigned int)> on_report;
};

/// Hands a command to the command manager, which runs it.
void insert(const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command);
void undo(const terrain::TerrainDocument& document);
void redo(const terrain::TerrainDocument& document);

/**
 * Does, undoes and redoes a command, twice over, and expects exactly the same raster each time; then cancels
 * a do run at each of its reports, one after the other, and expects the raster untouched; and a redo after
 * that as before.
 * @param make_command a new command for a document
 */
void expect_exact_history(const terrain::Raster& raster,
    const std::function<boost::shared_ptr<housekeeping::AbstractCommand>(
        const terrain::TerrainDocument& document)>& make_command);

} // namespace host_test
