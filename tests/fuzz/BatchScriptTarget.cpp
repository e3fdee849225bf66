#include "Check.h"
#include "FuzzApplication.h"
#include "LogWatch.h"
#include "Targets.h"

#include "batch/Batch.h"
#include "batch/Script.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterMemory.h"
#include "support/Controllers.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fuzz {

namespace fs = std::filesystem;
namespace housekeeping = tarqa::housekeeping;

using housekeeping::DocumentManager;
using terrain::Batch;
using terrain::Raster;
using terrain::TerrainDocument;

namespace {

// So that a run takes no time: what resampling makes of a raster has at most some thousand cells.
const int s_most_lines = 24;
const std::size_t s_longest_line = 400;
const std::size_t s_longest_name = 40;
const double s_memory = 200000;

const char* const s_grid
    = "ncols 6\nnrows 5\nxllcorner 440000\nyllcorner 5400000\ncellsize 30\n"
      "NODATA_value -9999\n"
      "5 5 5 5 5 5\n5 2 2.5 -9999 9 5\n5 2 -1 1000.25 9 5\n5 -0.0 3 3 9 5\n5 5 5 5 5 -9999\n";

std::string folder()
{
    return support::PrivateHome::scratch_directory() + "/batch";
}

/// A new folder with one raster; that is all that scripts can reach.
std::string make_folder()
{
    fs::remove_all(folder());
    fs::create_directory(folder());
    const std::string file = folder() + "/grid.asc";
    std::ofstream(file) << s_grid;
    return file;
}

/// A file in that folder, or the folder itself; paths are handed to GDAL as they are, so no other may stay.
std::string path_inside(const std::string& word)
{
    std::string name;
    bool only_dots = true;
    for (const char c : word.substr(0, s_longest_name)) {
        if (std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '_' || c == '-') {
            name += c;
            only_dots = only_dots && c == '.';
        }
    }
    return folder() + "/" + (only_dots ? std::string() : name);
}

/// The line as it may be carried out.
std::string harmless(const std::string& line)
{
    std::vector<std::string> words;
    try {
        words = terrain::words_of(line);
    } catch (const terrain::ScriptError&) {
        return line; // which will not be carried out
    }
    if (words.size() < 2 || (words[0] != "open" && words[0] != "export")) {
        return line;
    }
    words[1] = path_inside(words[1]);
    std::string made;
    for (const std::string& word : words) {
        made += '"' + word + "\" ";
    }
    return made;
}

std::string make_script(const std::string& input)
{
    const std::string path = folder() + ".script";
    std::ofstream script(path, std::ios::binary | std::ios::trunc);
    std::istringstream lines(input);
    std::string line;
    for (int i = 0; i < s_most_lines && std::getline(lines, line); ++i) {
        script << harmless(line.substr(0, s_longest_line)) << '\n';
    }
    return path;
}

bool same(const std::vector<double>& a, const std::vector<double>& b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

bool same(const Raster& a, const Raster& b)
{
    return a.columns == b.columns && a.rows == b.rows && a.geotransform == b.geotransform
        && same(a.cells, b.cells);
}

void check_raster(const Raster& raster)
{
    check(raster.columns > 0 && raster.rows > 0 && raster.cells.size() == raster.index(0, raster.rows),
        "another number of cells than columns and rows");
    check(
        std::none_of(raster.cells.begin(), raster.cells.end(), [](double cell) { return std::isinf(cell); }),
        "a height is infinite");
}

/// Goes back to the file and returns.
void check_history(TerrainDocument& document, const Raster& original)
{
    const Raster edited = document.terrain().raster();
    check_raster(edited);
    auto& commands = housekeeping::CommandManager::instance();
    unsigned long long undone = 0;
    for (; document.document_history().undoSize() > 0; ++undone) {
        commands.undo(document.id());
    }
    check(same(document.terrain().raster(), original), "undoing everything does not give back the file");
    for (; undone > 0; --undone) {
        commands.redo(document.id());
    }
    check(same(document.terrain().raster(), edited), "redoing everything gives something else");
}

void check_result(
    Batch::ExitCode code, const std::string& out, const std::string& error, const std::string& script)
{
    check(code == Batch::Done || code == Batch::Failed, "the exit status is another");
    check((code == Batch::Done) == error.empty(), "exit status and message differ: " + error);
    check(error.empty() || error.rfind(script + ":", 0) == 0, "the message does not tell the line: " + error);
    check(error.find("fatal error") == std::string::npos, error);
    check(out.find("error log: ") != std::string::npos, "the error log is not told");
}

void check_no_leftovers()
{
    for (const auto& entry : fs::directory_iterator(folder())) {
        check(entry.path().string().find(".part") == std::string::npos,
            "half a file is left: " + entry.path().string());
    }
}

void close_documents()
{
    auto& manager = DocumentManager::instance();
    for (const housekeeping::DocumentId& id : manager.current_documents()) {
        manager.destroy_document(id, true, false, false, housekeeping::DocumentId::null());
    }
    QCoreApplication::processEvents();
}

/// Closes all documents at its end, also where a check fails.
class Documents
{
public:
    Documents() = default;
    ~Documents() { close_documents(); }
    Documents(const Documents&) = delete;
    Documents& operator=(const Documents&) = delete;
};

} // namespace

void batch_script(const std::string& input)
{
    make_application_without_windows();
    support::init_controllers();
    terrain::memory_limit(s_memory);
    const LogWatch log;
    const Documents documents;
    const std::string grid = make_folder();
    const std::string script = make_script(input);
    std::ostringstream out;
    std::ostringstream error;
    Batch batch(out, error, nullptr);
    check(batch.run("/dev/null", {grid}) == Batch::Done, "the raster is not opened");
    auto& document = dynamic_cast<TerrainDocument&>(DocumentManager::instance().current_document());
    const Raster original = document.terrain().raster();

    const Batch::ExitCode code = batch.run(script, {});
    check_result(code, out.str(), error.str(), script);
    check_no_leftovers();
    check_history(document, original);
    log.check_assertions({});
}

} // namespace fuzz
