#pragma once

#include <QtCore/QString>

#include <vector>

namespace boreholes {

/// A hole in the ground. Lengths are in metres, whatever the user prefers to read: only what is shown is
/// converted.
struct Borehole
{
    QString name;
    double x = 0; ///< to the east
    double y = 0; ///< to the north
    double depth = 0; ///< of the bottom below the ground
};

typedef std::vector<Borehole> Boreholes;

inline bool operator==(const Borehole& one, const Borehole& other)
{
    return one.name == other.name && one.x == other.x && one.y == other.y && one.depth == other.depth;
}

} // namespace boreholes
