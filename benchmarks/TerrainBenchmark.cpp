// What the operations of the terrain host cost on rasters of up to 4,000 x 4,000 cells: smoothing, filling
// sinks, shading. On all cores.

#include "HeapCount.h"
#include "PlainOperations.h"
#include "RatioReporter.h"

#include "commands/FillSinksCommand.h"
#include "commands/SmoothCommand.h"
#include "commands/WindowMeans.h"
#include "documents/OpenTerrain.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/GdalMessages.h"
#include "parallel/Workers.h"
#include "sample/FractalTerrain.h"
#include "views/Footprint.h"
#include "views/HillShade.h"
#include "views/Shading.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>
#include <gdal_priv.h>
#include <gdal_utils.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <thread>

namespace {

using tarqa::housekeeping::CommandManager;
using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::DocumentManager;
using terrain::Raster;

const int s_radius = 2; ///< the dialog's first proposal
const QSizeF s_pixel(1, 1); ///< square cells

/// The operations as the commands compute them, without the command manager around them.
class Smoothing : public terrain::SmoothCommand
{
public:
    Smoothing()
        : SmoothCommand(DocumentId::null(), s_radius)
    { }
    using SmoothCommand::new_cells;
};

class SinkFilling : public terrain::FillSinksCommand
{
public:
    SinkFilling()
        : FillSinksCommand(DocumentId::null())
    { }
    using FillSinksCommand::new_cells;
};

/// Mountains with pits and a corner without data. Kept: the same for ours and the peer.
const Raster& mountains(const benchmark::State& state)
{
    static std::map<int, Raster> s_rasters;
    const int side = static_cast<int>(state.range(0));
    const auto found = s_rasters.find(side);
    return found != s_rasters.end()
        ? found->second
        : s_rasters.emplace(side, terrain::fractal_terrain(side, 1)).first->second;
}

/// Ends the program if ours and the peer do not do the same.
void expect_equal(bool equal, const char* what)
{
    if (!equal) {
        std::fprintf(stderr, "%s: ours and the peer give different results\n", what);
        std::exit(1);
    }
}

bool are_close(const std::vector<double>& one, const std::vector<double>& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
        [](double a, double b) { return std::isnan(a) ? std::isnan(b) : std::abs(a - b) < 1e-9; });
}

// --- smooth

void smooth(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    const Smoothing command;
    for (auto _ : state) {
        benchmark::DoNotOptimize(command.new_cells(raster));
    }
}
BENCHMARK(smooth)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

/// The same without help: what the cores alone are worth.
void smooth_on_one_core(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    terrain::Workers alone(1);
    for (auto _ : state) {
        benchmark::DoNotOptimize(terrain::window_means(raster, s_radius, alone, [](int) {}));
    }
}
BENCHMARK(smooth_on_one_core)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

void smooth_plainly(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    if (state.range(0) == 500) {
        expect_equal(are_close(Smoothing().new_cells(raster), plain::smoothed(raster, s_radius)), "smooth");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(plain::smoothed(raster, s_radius));
    }
}
BENCHMARK(smooth_plainly)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

// --- fill sinks

void fill_sinks(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    const SinkFilling command;
    for (auto _ : state) {
        benchmark::DoNotOptimize(command.new_cells(raster));
    }
}
BENCHMARK(fill_sinks)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

void flood_by_priority(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    if (state.range(0) == 500) {
        expect_equal(are_close(SinkFilling().new_cells(raster), plain::filled(raster)), "fill sinks");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(plain::filled(raster));
    }
}
BENCHMARK(flood_by_priority)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

// --- hill shade

terrain::Shading shading_of(const Raster& raster)
{
    terrain::Shading shading{1e300, -1e300, 1};
    for (const double cell : raster.cells) {
        if (!std::isnan(cell)) {
            shading.lowest = std::min(shading.lowest, cell);
            shading.highest = std::max(shading.highest, cell);
        }
    }
    shading.exaggeration = exaggeration(raster, shading, s_pixel);
    return shading;
}

/// The light of a map on which a pixel stands for a cell.
void hill_shade(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    const terrain::Shading shading = shading_of(raster);
    for (auto _ : state) {
        benchmark::DoNotOptimize(light_on(raster, shading, s_pixel));
    }
}
BENCHMARK(hill_shade)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

/// All that a map makes when it is opened: range, means where it is drawn smaller, light, colours.
void map_picture(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    const terrain::Footprint footprint(raster);
    for (auto _ : state) {
        benchmark::DoNotOptimize(terrain::HillShade(raster, footprint));
    }
}
BENCHMARK(map_picture)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

/// A raster as GDAL has it in memory, as 32-bit numbers, which are the fastest for it. The heights are those
/// that ours are before the light falls on them: from 0 to 1.
GDALDatasetUniquePtr dataset_of(const Raster& raster, const terrain::Shading& shading)
{
    const terrain::GdalMessages drivers;
    GDALDatasetUniquePtr dataset(GetGDALDriverManager()->GetDriverByName("MEM")->Create(
        "", raster.columns, raster.rows, 1, GDT_Float32, nullptr));
    std::vector<float> heights;
    for (const double cell : raster.cells) {
        heights.push_back(static_cast<float>((cell - shading.lowest) / (shading.highest - shading.lowest)));
    }
    std::array<double, 6> geotransform = {0, s_pixel.width(), 0, 0, 0, -s_pixel.height()};
    dataset->SetGeoTransform(geotransform.data());
    GDALRasterBand& band = *dataset->GetRasterBand(1);
    band.SetNoDataValue(terrain::no_data);
    expect_equal(band.RasterIO(GF_Write, 0, 0, raster.columns, raster.rows, heights.data(), raster.columns,
                     raster.rows, GDT_Float32, 0, 0, nullptr)
            == CE_None,
        "hill shade");
    return dataset;
}

void gdal_hill_shade(benchmark::State& state)
{
    const Raster& raster = mountains(state);
    const terrain::Shading shading = shading_of(raster);
    const GDALDatasetUniquePtr source = dataset_of(raster, shading);
    const std::string factor = std::to_string(shading.exaggeration);
    CPLStringList words;
    for (const char* word :
        {"-of", "MEM", "-compute_edges", "-az", "315", "-alt", "45", "-z", factor.c_str()}) {
        words.AddString(word);
    }
    const std::unique_ptr<GDALDEMProcessingOptions, decltype(&GDALDEMProcessingOptionsFree)> options(
        GDALDEMProcessingOptionsNew(words.List(), nullptr), &GDALDEMProcessingOptionsFree);
    for (auto _ : state) {
        const GDALDatasetUniquePtr shaded(GDALDataset::FromHandle(GDALDEMProcessing(
            "", GDALDataset::ToHandle(source.get()), "hillshade", nullptr, options.get(), nullptr)));
        benchmark::DoNotOptimize(shaded.get());
    }
}
BENCHMARK(gdal_hill_shade)->Arg(500)->Arg(1000)->Arg(2000)->Arg(4000)->UseRealTime();

// --- memory

/// What the cells of a raster take from the heap, as a document stores them: 8 bytes each.
std::size_t stored_size(const Raster& raster)
{
    const HeapCount heap;
    const std::vector<double> cells = raster.cells;
    benchmark::DoNotOptimize(cells.data());
    return heap.peak();
}

/// The most that a command takes from the heap while it runs and is put into the history, beyond what the
/// program had before. As the peer: what it may take, the raster, once more as it is stored, and the undo
/// copy, which is what the run leaves behind: the old cells in the command, its texts and its entry in the
/// history.
template <class MakeCommand>
void run_command(benchmark::State& state, MakeCommand make_command, bool is_peer)
{
    const Raster& raster = mountains(state);
    const std::size_t stored = stored_size(raster);
    for (auto _ : state) {
        const auto& document = terrain::open_terrain({"mountains", raster, false, {}, 1, ""});
        const auto sp_command = make_command(document.id());
        {
            const HeapCount heap;
            CommandManager::instance().insert(sp_command, false);
            const auto kept = static_cast<std::size_t>(std::max(heap.held(), 0LL));
            state.counters["bytes"] = static_cast<double>(is_peer ? stored + kept : heap.peak());
        }
        DocumentManager::instance().destroy_document(document.id(), true, false, false, DocumentId::null());
    }
}

boost::shared_ptr<terrain::RasterCommand> make_smoothing(const DocumentId& id)
{
    return boost::make_shared<terrain::SmoothCommand>(id, s_radius);
}

boost::shared_ptr<terrain::RasterCommand> make_sink_filling(const DocumentId& id)
{
    return boost::make_shared<terrain::FillSinksCommand>(id);
}

void memory_of_smooth(benchmark::State& state)
{
    run_command(state, make_smoothing, false);
}
BENCHMARK(memory_of_smooth)->Arg(4000)->Iterations(1)->UseRealTime();

void allowed_of_smooth(benchmark::State& state)
{
    run_command(state, make_smoothing, true);
}
BENCHMARK(allowed_of_smooth)->Arg(4000)->Iterations(1)->UseRealTime();

void memory_of_fill_sinks(benchmark::State& state)
{
    run_command(state, make_sink_filling, false);
}
BENCHMARK(memory_of_fill_sinks)->Arg(4000)->Iterations(1)->UseRealTime();

void allowed_of_fill_sinks(benchmark::State& state)
{
    run_command(state, make_sink_filling, true);
}
BENCHMARK(allowed_of_fill_sinks)->Arg(4000)->Iterations(1)->UseRealTime();

/// Faster by the number of cores times 0.8.
const double s_reach_of_cores = 1 / (0.8 * std::max(1u, std::thread::hardware_concurrency()));

// The plain loop adds up without care for what rounding takes off; ours keeps it, which is several times as
// much to reckon.
const Ratio s_smooth("smoothing 4,000 x 4,000 cells on all cores / a plain loop on one", "smooth/4000",
    "smooth_plainly/4000", s_reach_of_cores);
const Ratio s_smooth_small(
    "smoothing 500 x 500 cells on all cores / a plain loop on one", "smooth/500", "smooth_plainly/500");
const Ratio s_smooth_cores(
    "smoothing 4,000 x 4,000 cells on all cores / the same on one", "smooth/4000", "smooth_on_one_core/4000");
const Ratio s_shade(
    "the light on a map of 4,000 x 4,000 / GDAL's hill shade", "hill_shade/4000", "gdal_hill_shade/4000", 1);
const Ratio s_picture("a map's picture of 4,000 x 4,000 cells, colours and all / the same",
    "map_picture/4000", "gdal_hill_shade/4000");
const Ratio s_fill("filling the sinks of 4,000 x 4,000 cells / the plain priority-flood", "fill_sinks/4000",
    "flood_by_priority/4000", 1);
// A thousandth more counts as reached: the objects that threads and counters take while a command runs are
// some dozens of bytes, beside 256 million.
const Ratio s_smooth_memory("memory while Smooth runs / raster and undo copy", "memory_of_smooth/4000",
    "allowed_of_smooth/4000", 1.001, "bytes");
const Ratio s_fill_memory("memory while Fill Sinks runs / raster and undo copy", "memory_of_fill_sinks/4000",
    "allowed_of_fill_sinks/4000", 1.001, "bytes");

} // namespace
