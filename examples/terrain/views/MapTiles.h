#pragma once

#include <QtCore/QCache>
#include <QtCore/QRect>
#include <QtGui/QImage>

namespace terrain {

struct Raster;

class HillShade;

/**
 * The parts of a large raster's map in more detail than its picture has, made where they are looked at:
 * tiles, each for a square of the map, with some number of cells for a pixel. They have the colours and the
 * light of the whole picture. The ones that were looked at last are kept, at least those of a part that is
 * seen at once. Main thread.
 */
class MapTiles
{
public:
    static constexpr int side = 256; ///< pixels
    static constexpr int most_kept = 256; ///< tiles, unless one part has more

    /// What a part of a map is made from.
    struct Source
    {
        const HillShade& whole; ///< stands in for tiles that are missing
        const Raster* p_raster; ///< null if nobody may look at the cells now
        int most_made; ///< how many tiles may be made now
    };

    /// A part of a map.
    struct Part
    {
        QImage picture;
        bool has_all_tiles;
    };

    /// Forgets all tiles; the cells or the look are not as they were.
    void clear() { m_tiles.clear(); }

    /// Forgets the tiles on which some cells are seen, or their light. @param cells of the map
    void forget(const QRect& cells);

    /// @param pixels the part, at this step, inside of the map @param step how many cells, along a side, a
    /// pixel stands for
    /// @throws housekeeping::HousekeepingException if GDAL cannot shade
    Part part(const QRect& pixels, int step, const Source& source);

    /// How many tiles are kept.
    int count() const { return m_tiles.count(); }

private:
    struct Key
    {
        int step;
        int column;
        int row;

        friend bool operator==(const Key& one, const Key& other)
        {
            return one.step == other.step && one.column == other.column && one.row == other.row;
        }
        friend uint qHash(const Key& key, uint seed)
        {
            return ::qHash((static_cast<quint64>(key.column) << 32) + static_cast<quint64>(key.row), seed)
                + static_cast<uint>(key.step);
        }
    };

    const QImage* tile(const Key& key, const Source& source, int& made);

    QCache<Key, QImage> m_tiles{most_kept};
};

} // namespace terrain
