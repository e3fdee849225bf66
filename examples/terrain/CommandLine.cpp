#include "CommandLine.h"

#include <QtCore/QObject>

#include <algorithm>

namespace terrain {

namespace {

bool is_option(const std::string& argument)
{
    return argument.size() > 1 && argument.front() == '-';
}

} // namespace

std::optional<CommandLine> CommandLine::parse(const std::vector<std::string>& all_arguments)
{
    CommandLine line;
    std::vector<std::string> arguments = all_arguments;
    if (!arguments.empty() && arguments[0] == "--language") {
        if (arguments.size() < 2 || arguments[1].empty() || is_option(arguments[1])) {
            return std::nullopt;
        }
        line.language = arguments[1];
        arguments.erase(arguments.begin(), arguments.begin() + 2);
    }
    const std::string option = !arguments.empty() && is_option(arguments[0]) ? arguments[0] : "";
    const auto files_from = [&](std::size_t first) {
        line.files.assign(arguments.begin() + static_cast<std::ptrdiff_t>(first), arguments.end());
        return std::none_of(line.files.begin(), line.files.end(), &is_option);
    };
    bool good = false;
    if (option.empty()) {
        good = files_from(0);
    } else if (option == "--help" || option == "--version") {
        line.task = option == "--help" ? Task::Help : Task::Version;
        good = arguments.size() == 1;
    } else if (option == "--batch" && arguments.size() >= 2) {
        line.task = Task::Batch;
        line.script = arguments[1];
        files_from(2); // whatever they are called
        good = true;
    } else if (option == "--tour" && arguments.size() >= 2 && !is_option(arguments[1])) {
        line.task = Task::Tour;
        line.folder = arguments[1];
        good = files_from(2) && line.files.size() <= 1;
    }
    return good ? std::optional<CommandLine>(line) : std::nullopt;
}

std::string CommandLine::usage()
{
    return QObject::tr(
        "Usage: tarq-terrain [FILE...]\n"
        "       tarq-terrain --batch SCRIPT [FILE...]\n"
        "       tarq-terrain --tour DIR [FILE]\n"
        "       tarq-terrain --help | --version\n"
        "       tarq-terrain --language LANG ...\n"
        "\n"
        "Shows the elevation rasters FILE... in a window.\n"
        "\n"
        "With --language in front of all else it speaks LANG: de (German), en (English) or pseudo (for\n"
        "tests: other letters, from right to left). Without it the window and this text speak the\n"
        "language of the system, batch and tour English.\n"
        "\n"
        "With --tour it leads through the window by itself, with FILE or with a sample that it makes,\n"
        "and leaves pictures and a list of them, tour.json, in the folder DIR.\n"
        "\n"
        "With --batch it shows nothing, and needs no display: it opens FILE..., then carries out the\n"
        "lines of SCRIPT (\"-\": of the standard input) on the raster that was opened last:\n"
        "\n"
        "  open FILE        opens a raster\n"
        "  smooth R         mean over the cells around each one, up to R cells away\n"
        "  fill-sinks       fills hollows up to where water would flow out of them\n"
        "  clamp LO HI      brings heights into the range from LO to HI\n"
        "  scale F          multiplies heights by F\n"
        "  crop C1 C2 R1 R2 keeps the columns from C1 to C2 and the rows from R1 to R2, counted from 0\n"
        "  resample F [M]   makes cells F times as wide and high, from 0.1 to 10; by the method M:\n"
        "                   nearest, bilinear or average (bilinear)\n"
        "  triangulate T    makes a surface of triangles from which no height is further away than T\n"
        "  clean-up         clamps to what occurs on the Earth, fills sinks, smooths by 1\n"
        "  raise C R A H    raises the cells up to A cells away from column C and row R, by H there and\n"
        "                   smoothly less around; the centre of the first cell is at 0.5 and 0.5\n"
        "  lower C R A H    lowers them\n"
        "  flatten H C R... gives the cells in the polygon with corners at the columns C and rows R the\n"
        "                   height H, or their mean height (\"mean\")\n"
        "  undo [N]         undoes the last N commands (1)\n"
        "  redo [N]         redoes the last N undone commands (1)\n"
        "  info             prints facts about the raster, and a checksum of its cells\n"
        "  export FILE [D]  writes the raster as GeoTIFF (FILE.tif) or ASCII grid (FILE.asc), or its\n"
        "                   contour lines, D apart, as GeoPackage (FILE.gpkg), or its triangulation as\n"
        "                   FILE.ply, FILE.obj, FILE.off or FILE.stl\n"
        "\n"
        "Empty lines and what follows a \"#\" are passed over; names with blanks stand in double\n"
        "quotes.\n"
        "\n"
        "Exit status: 0 all was done, 1 something failed (the rest of a script or a tour was not\n"
        "carried out), 2 wrong usage, 130 interrupted.\n")
        .toStdString();
}

} // namespace terrain
