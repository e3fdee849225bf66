#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

namespace terrain {

struct Raster;

class TerrainDocument;

/// What is told of a document's cells, which nobody reads while the document is busy. A plain value.
struct RasterFacts
{
    RasterFacts() = default;
    explicit RasterFacts(const Raster& raster);

    QString size; ///< for example "20 × 15 cells"
    QString data_type;
    QString reference_system; ///< its name; empty if it has none
};

/// A fact and its name, for people.
struct Fact
{
    QString name;
    QString text;
};

inline bool operator==(const Fact& one, const Fact& other)
{
    return one.name == other.name && one.text == other.text;
}

/// Where a document comes from: a file, or whatever else GDAL opens. UTF-8 is told.
QString source_of(const TerrainDocument& document);

/// What is special about a document, a few words each: that it is modified, or busy, and so on. Empty for one
/// that is just as its file.
QStringList states_of(const TerrainDocument& document);

/// All there is to know of where a document comes from, how its numbers are meant, and where it is saved.
std::vector<Fact> facts_of(const TerrainDocument& document, const RasterFacts& raster);

} // namespace terrain
