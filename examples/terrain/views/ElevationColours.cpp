#include "views/ElevationColours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace terrain {

namespace {

struct Stop
{
    double fraction;
    std::array<double, 3> colour;
};

const std::array<Stop, 6> s_stops = {{
    {0.00, {72, 132, 104}},
    {0.20, {138, 178, 120}},
    {0.45, {224, 212, 158}},
    {0.70, {190, 146, 104}},
    {0.88, {162, 138, 130}},
    {1.00, {248, 247, 245}},
}};

QRgb between(const Stop& low, const Stop& high, double fraction)
{
    const double part = (fraction - low.fraction) / (high.fraction - low.fraction);
    const auto channel = [&](std::size_t i) {
        return static_cast<int>(std::lround(low.colour[i] + part * (high.colour[i] - low.colour[i])));
    };
    return qRgb(channel(0), channel(1), channel(2));
}

} // namespace

QRgb elevation_colour(double fraction)
{
    const double inside = std::clamp(fraction, 0.0, 1.0);
    const auto high = std::find_if(s_stops.begin() + 1, s_stops.end() - 1,
        [inside](const Stop& stop) { return inside <= stop.fraction; });
    return between(*(high - 1), *high, inside);
}

} // namespace terrain
