#include "documents/RasterSummary.h"

#include "documents/Raster.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cstring>

namespace terrain {

namespace {

/// The bits of a cell, the lowest byte first, and the same for every NaN.
quint64 canonical_bits(double cell)
{
    if (is_no_data(cell)) {
        cell = no_data;
    }
    quint64 bits = 0;
    std::memcpy(&bits, &cell, sizeof bits);
    return qToLittleEndian(bits);
}

void add(QCryptographicHash& hash, const std::vector<quint64>& numbers)
{
    hash.addData(
        reinterpret_cast<const char*>(numbers.data()), static_cast<int>(numbers.size() * sizeof(quint64)));
}

} // namespace

RasterSummary::RasterSummary(const std::vector<double>& cells)
{
    // The mean is kept up to date instead of a sum, which might overflow.
    for (const double cell : cells) {
        if (is_no_data(cell)) {
            ++without_data;
            continue;
        }
        minimum = valid == 0 ? cell : std::min(minimum, cell);
        maximum = valid == 0 ? cell : std::max(maximum, cell);
        ++valid;
        const double n = static_cast<double>(valid);
        mean += cell / n - mean / n;
    }
}

std::string checksum(const Raster& raster)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    add(hash,
        {qToLittleEndian(static_cast<quint64>(raster.columns)),
            qToLittleEndian(static_cast<quint64>(raster.rows))});
    std::vector<quint64> row_bits(static_cast<std::size_t>(raster.columns));
    for (int row = 0; row < raster.rows; ++row) {
        const auto begin = raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(0, row));
        std::transform(begin, begin + raster.columns, row_bits.begin(), canonical_bits);
        add(hash, row_bits);
    }
    return hash.result().toHex().toStdString();
}

} // namespace terrain
