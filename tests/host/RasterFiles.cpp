#include "RasterFiles.h"

#include "support/PrivateHome.h"

#include <cpl_string.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace host_test {

namespace fs = std::filesystem;

std::string scratch(const std::string& name)
{
    return support::PrivateHome::scratch_directory() + "/" + name;
}

void write_text(const std::string& path, const std::string& text)
{
    std::ofstream stream(path, std::ios::binary);
    stream << text;
}

std::string read_text(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void cut_file(const std::string& path, unsigned long long bytes)
{
    fs::resize_file(path, bytes);
}

std::vector<std::string> names_in(const std::string& directory)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string make_directory(const std::string& name)
{
    const std::string path = scratch(name);
    fs::create_directory(path);
    return path;
}

void make_tiff(const std::string& path, int columns, int rows, GDALDataType type,
    const std::vector<double>& cells, const Decoration& decorate, const std::vector<std::string>& options,
    int bands)
{
    GDALAllRegister();
    CPLStringList list;
    for (const std::string& option : options) {
        list.AddString(option.c_str());
    }
    const GDALDatasetH dataset
        = GDALCreate(GDALGetDriverByName("GTiff"), path.c_str(), columns, rows, bands, type, list.List());
    if (!dataset) {
        throw std::runtime_error("GDAL does not make " + path);
    }
    const GDALRasterBandH band = GDALGetRasterBand(dataset, 1);
    if (decorate) {
        decorate(dataset, band);
    }
    std::vector<double> copy = cells;
    if (!copy.empty()
        && GDALRasterIO(band, GF_Write, 0, 0, columns, rows, copy.data(), columns, rows, GDT_Float64, 0, 0)
            != CE_None) {
        throw std::runtime_error("GDAL does not write " + path);
    }
    GDALClose(dataset);
}

std::string make_terrain_file(const std::string& name)
{
    std::vector<double> cells;
    for (int i = 0; i < 20 * 15; ++i) {
        cells.push_back(i % 29 == 0 ? -9999 : (i * 7919) % 500);
    }
    const std::string path = scratch(name);
    make_tiff(path, 20, 15, GDT_Float32, cells,
        [](GDALDatasetH, GDALRasterBandH band) { GDALSetRasterNoDataValue(band, -9999); });
    return path;
}

} // namespace host_test
