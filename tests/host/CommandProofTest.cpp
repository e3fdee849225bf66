// Every command of the host goes through the proof: done, undone, redone, cancelled and failing at each of
// its reports, in company and merged; each time the document is compared in all that it holds.

#include "CommandFixture.h"
#include "TerrainText.h"
#include "commands/BrushCommand.h"
#include "commands/ClampCommand.h"
#include "commands/CleanUpCommand.h"
#include "commands/CropCommand.h"
#include "commands/FillSinksCommand.h"
#include "commands/FlattenCommand.h"
#include "commands/ResampleCommand.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "commands/TriangulateCommand.h"
#include "commands/Triangulation.h"
#include "documents/Mesh.h"
#include "documents/RasterInformation.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/App.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/testkit/RoundTripProof.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <string>

using namespace host_test;
using housekeeping::AbstractDocument;
using housekeeping::DataSource;
using housekeeping::testkit::Promise;
using housekeeping::testkit::RoundTripProof;
using terrain::Brush;
using terrain::BrushCommand;
using terrain::Resampling;
using terrain::TerrainDocument;

namespace {

const int s_columns = 13;
const int s_rows = 11;
const std::size_t s_many = 1000000; ///< vertices
const Brush s_raise{Brush::Direction::Raise, 3, 5};

/// Heights of all kinds, some far too high, with all that a document can hold besides.
terrain::Raster full_raster()
{
    terrain::Raster raster = mixed_raster(s_columns, s_rows);
    for (std::size_t i = 0; i < raster.cells.size(); i += 7) {
        raster.cells[i] *= 100;
    }
    raster.geotransform = {500000.25, 30, 0.125, 5400000.5, -0.125, -30};
    raster.reference_system = "LOCAL_CS[\"of its own\"]";
    raster.area_or_point = "Point";
    raster.unit = "ft";
    raster.data_type = "Float64";
    raster.file_no_data = -9999;
    return raster;
}

TerrainDocument& full_document()
{
    TerrainDocument& document = make_document(full_raster());
    document.datasource(boost::make_shared<DataSource>(
        std::string("file:///hills.tif"), boost::make_shared<terrain::RasterInformation>()));
    document.datasource()->z_units(DataSource::Feet);
    return document;
}

/// With a triangulation, which goes when the heights change, and must come back.
AbstractDocument& triangulated_document()
{
    TerrainDocument& document = full_document();
    document.terrain().mesh(boost::make_shared<terrain::Mesh>(
        terrain::triangulate(document.terrain().raster(), 300, s_many, [](double) {}).mesh));
    return document;
}

template <class Command, class... Arguments>
RoundTripProof::MakeCommand maker(const Arguments&... arguments)
{
    return
        [=](AbstractDocument& document) { return boost::make_shared<Command>(document.id(), arguments...); };
}

/// Where a stroke is drawn depends on what was done before, so that the strokes of a series differ.
RoundTripProof::MakeCommand strokes(const Brush& brush)
{
    return [brush](AbstractDocument& document) {
        const auto nth = static_cast<double>(document.document_history().undoSize());
        return boost::make_shared<BrushCommand>(
            document.id(), brush, BrushCommand::Path{{2, 2 + nth}, {6, 4}, {9, 5 + nth}});
    };
}

class CommandProof : public testing::Test
{
protected:
    CommandProof()
    {
        m_proof.modified([](AbstractDocument& document) {
            return dynamic_cast<const TerrainDocument&>(document).is_modified();
        });
        m_proof.in_worker(); // where the host runs them
    }

    RoundTripProof& command(const char* label, const RoundTripProof::MakeCommand& make_command)
    {
        return m_proof.command(label, make_command);
    }

    void expect_all_promises_kept()
    {
        support::LogCapture log;
        EXPECT_EQ(text_of(m_proof.run()), "");
        EXPECT_GT(m_proof.reports(), 1) << "nothing was cancelled, and nothing failed";
        log.take_all(); // the proof makes commands fail, and judges what that logs by itself
    }

    /// How often the last proof answered a composite's question.
    int questions() const { return m_proof.questions(); }

private:
    RoundTripProof m_proof{triangulated_document, text_of};
};

} // namespace

TEST_F(CommandProof, Brush)
{
    command("Raise", strokes(s_raise));
    expect_all_promises_kept();
}

TEST_F(CommandProof, BrushesThatTakeTurns)
{
    command("Raise", strokes(s_raise)).command("Lower", strokes({Brush::Direction::Lower, 2, 0.3}));
    expect_all_promises_kept();
}

TEST_F(CommandProof, Clamp)
{
    command("Clamp", maker<terrain::ClampCommand>(0.0, 900.0));
    expect_all_promises_kept();
}

TEST_F(CommandProof, CleanUp)
{
    const support::App app; // it may ask whether to go on
    command("Clean up", maker<terrain::CleanUpCommand>());
    expect_all_promises_kept();
    EXPECT_GT(questions(), 0);
}

TEST_F(CommandProof, Crop)
{
    command("Crop", [](AbstractDocument& document) {
        const terrain::Raster& raster = dynamic_cast<TerrainDocument&>(document).terrain().raster();
        const terrain::CellRange range{1, raster.columns - 2, 1, raster.rows - 2}; // one less at each side
        return boost::make_shared<terrain::CropCommand>(document.id(), range);
    });
    expect_all_promises_kept();
}

TEST_F(CommandProof, FillSinks)
{
    command("Fill sinks", maker<terrain::FillSinksCommand>());
    expect_all_promises_kept();
}

TEST_F(CommandProof, Flatten)
{
    const terrain::FlattenCommand::Polygon polygon{{1, 1}, {9, 2}, {7, 9}};
    command("Flatten", maker<terrain::FlattenCommand>(polygon, std::optional<double>(777)));
    expect_all_promises_kept();
}

TEST_F(CommandProof, FlattenToTheMean)
{
    const terrain::FlattenCommand::Polygon polygon{{1, 1}, {9, 2}, {7, 9}};
    command("Flatten", maker<terrain::FlattenCommand>(polygon, std::optional<double>()));
    expect_all_promises_kept();
}

TEST_F(CommandProof, ResampleToSmallerCells)
{
    command("Nearest", maker<terrain::ResampleCommand>(0.7, Resampling::Nearest));
    command("Bilinear", maker<terrain::ResampleCommand>(0.6, Resampling::Bilinear));
    expect_all_promises_kept();
}

TEST_F(CommandProof, ResampleToLargerCells)
{
    command("Average", maker<terrain::ResampleCommand>(1.5, Resampling::Average));
    expect_all_promises_kept();
}

TEST_F(CommandProof, Scale)
{
    command("Scale", maker<terrain::ScaleCommand>(1.1));
    expect_all_promises_kept();
}

TEST_F(CommandProof, Smooth)
{
    command("Smooth", maker<terrain::SmoothCommand>(2));
    expect_all_promises_kept();
}

TEST_F(CommandProof, Triangulate)
{
    command("Triangulate", maker<terrain::TriangulateCommand>(50.0));
    expect_all_promises_kept();
}

TEST_F(CommandProof, AllOneAfterTheOther)
{
    command("Clean up", maker<terrain::CleanUpCommand>());
    command("Triangulate", maker<terrain::TriangulateCommand>(50.0));
    command("Raise", strokes(s_raise));
    command("Scale", maker<terrain::ScaleCommand>(1.1));
    command("Resample", maker<terrain::ResampleCommand>(1.5, Resampling::Average));
    expect_all_promises_kept();
}

TEST(CommandProofDigest, SeesEverythingThatACommandMayChange)
{
    auto& document = dynamic_cast<TerrainDocument&>(triangulated_document());
    const auto expect_seen = [&document, before = text_of(document)](
                                 const char* what) { EXPECT_NE(text_of(document), before) << what; };
    const terrain::Raster raster = full_raster();
    const auto with = [&](const char* what, const std::function<void(terrain::Raster&)>& change) {
        terrain::Raster other = raster;
        change(other);
        const boost::shared_ptr<const terrain::Mesh> sp_mesh = document.terrain().mesh();
        document.terrain().swap(other);
        document.terrain().mesh(sp_mesh);
        expect_seen(what);
        document.terrain().swap(other);
        document.terrain().mesh(sp_mesh);
    };
    const std::string before = text_of(document);
    with("a cell", [](terrain::Raster& other) { other.cells.back() = 0.5; });
    with("the sign of a nought", [](terrain::Raster& other) {
        const auto nought = std::find(other.cells.begin(), other.cells.end(), 0.0);
        ASSERT_NE(nought, other.cells.end());
        *nought = std::copysign(0.0, std::signbit(*nought) ? 1.0 : -1.0);
    });
    with("the size", [](terrain::Raster& other) { std::swap(other.columns, other.rows); });
    with("the place", [](terrain::Raster& other) { other.geotransform.reset(); });
    with("the reference system", [](terrain::Raster& other) { other.reference_system.clear(); });
    with("area or point", [](terrain::Raster& other) { other.area_or_point.clear(); });
    with("the unit", [](terrain::Raster& other) { other.unit.clear(); });
    with("the data type", [](terrain::Raster& other) { other.data_type.clear(); });
    with("the mark of no data", [](terrain::Raster& other) { other.file_no_data.reset(); });
    EXPECT_EQ(text_of(document), before);
    document.datasource()->z_units(DataSource::Metres);
    expect_seen("the units of the source");
    document.datasource()->z_units(DataSource::Feet);
    EXPECT_EQ(text_of(document), before);
    document.terrain().mesh(nullptr);
    expect_seen("the triangulation");
}
