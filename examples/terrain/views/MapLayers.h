#pragma once

namespace terrain {

/// What a map shows, and how. A plain value.
struct MapLayers
{
    bool colours = true; ///< for heights; without them the map is grey
    bool relief = true; ///< the shading by a light in the north-west
    bool triangulation = true; ///< its edges, if there is one
    bool contours = false;
    double contour_interval = 0; ///< in the document's units; 0 for one that suits the heights
    bool legend = true;
    bool scale_bar = true;
};

inline bool operator==(const MapLayers& one, const MapLayers& other)
{
    return one.colours == other.colours && one.relief == other.relief
        && one.triangulation == other.triangulation && one.contours == other.contours
        && one.contour_interval == other.contour_interval && one.legend == other.legend
        && one.scale_bar == other.scale_bar;
}

inline bool operator!=(const MapLayers& one, const MapLayers& other)
{
    return !(one == other);
}

} // namespace terrain
