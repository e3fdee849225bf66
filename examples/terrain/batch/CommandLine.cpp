#include "batch/CommandLine.h"

#include <QtCore/QObject>

namespace terrain {

std::optional<CommandLine> CommandLine::parse(const std::vector<std::string>& arguments)
{
    CommandLine line;
    if (arguments.size() == 1) {
        line.help = arguments[0] == "--help";
        line.version = arguments[0] == "--version";
    }
    if (line.help || line.version) {
        return line;
    }
    if (arguments.size() < 2 || arguments[0] != "--batch") {
        return {};
    }
    line.script = arguments[1];
    line.files.assign(arguments.begin() + 2, arguments.end());
    return line;
}

std::string CommandLine::usage()
{
    return QObject::tr(
        "Usage: tarq-terrain --batch SCRIPT [FILE...]\n"
        "       tarq-terrain --help | --version\n"
        "\n"
        "Opens the elevation rasters FILE..., then carries out the lines of SCRIPT (\"-\": of the\n"
        "standard input) on the raster that was opened last:\n"
        "\n"
        "  open FILE        opens a raster\n"
        "  smooth R         mean over the cells around each one, up to R cells away\n"
        "  fill-sinks       fills hollows up to where water would flow out of them\n"
        "  clamp LO HI      brings heights into the range from LO to HI\n"
        "  scale F          multiplies heights by F\n"
        "  clean-up         clamps to what occurs on the Earth, fills sinks, smooths by 1\n"
        "  undo [N]         undoes the last N commands (1)\n"
        "  redo [N]         redoes the last N undone commands (1)\n"
        "  info             prints facts about the raster, and a checksum of its cells\n"
        "  export FILE.tif  writes the raster as GeoTIFF\n"
        "\n"
        "Empty lines and what follows a \"#\" are passed over; names with blanks stand in double\n"
        "quotes. Exit status: 0 all was done, 1 something failed (the rest of the script was not\n"
        "carried out), 2 wrong usage, 130 interrupted.\n")
        .toStdString();
}

} // namespace terrain
