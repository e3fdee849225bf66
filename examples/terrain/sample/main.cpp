#include "io/RasterWriter.h"
#include "sample/FractalTerrain.h"

#include <tarqa/utilities/Exception.h>

#include <charconv>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

const char* const s_usage
    = "Usage: tarq-terrain-sample FILE.tif [--size N] [--seed S]\n"
      "\n"
      "Writes a made-up elevation raster of N x N cells (512, at most 16384) as GeoTIFF.\n"
      "The same seed (1) gives the same raster.\n";

const int s_max_size = 16384; ///< two gigabytes of heights, and as much for making them

struct Arguments
{
    std::string file;
    int size = 512;
    unsigned long long seed = 1;
};

template <class Number>
bool parse(const std::string& text, Number& number)
{
    const char* const p_end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), p_end, number);
    return result.ec == std::errc() && result.ptr == p_end;
}

std::optional<Arguments> parse(const std::vector<std::string>& words)
{
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string value = i + 1 < words.size() ? words[i + 1] : "";
        if (words[i] == "--size" && parse(value, arguments.size)) {
            ++i;
        } else if (words[i] == "--seed" && parse(value, arguments.seed)) {
            ++i;
        } else if (words[i].rfind("--", 0) != 0 && arguments.file.empty()) {
            arguments.file = words[i];
        } else {
            return {};
        }
    }
    const bool good = !arguments.file.empty() && arguments.size >= 1 && arguments.size <= s_max_size;
    return good ? std::optional<Arguments>(arguments) : std::nullopt;
}

} // namespace

int main(int argc, char** argv)
{
    const auto arguments = parse(std::vector<std::string>(argv + 1, argv + argc));
    if (!arguments) {
        std::cerr << s_usage;
        return 2;
    }
    try {
        terrain::write_raster(terrain::fractal_terrain(arguments->size, arguments->seed), arguments->file);
        return 0;
    } catch (const tarqa::Exception& exception) {
        std::cerr << "tarq-terrain-sample: " << exception.what() << '\n';
    } catch (const std::exception& exception) {
        std::cerr << "tarq-terrain-sample: " << exception.what() << '\n';
    }
    return 1;
}
